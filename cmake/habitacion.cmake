# What one system alone can build, told by its name: <...>_posix and <...>_tty, or <...>_win32. The others are left out.
if(WIN32)
  set(de_otro_sistema "_(posix|tty)(_test)?\\.(h|cpp)$")
else()
  set(de_otro_sistema "_win32(_test)?\\.(h|cpp)$")
endif()

# A room: the library morvane_<name> of src/<name>, which sees its own headers and those of the rooms named after USES.
# The target all_verify_interface_header_sets compiles each public header alone, to see that it includes what it needs.
function(habitacion nombre)
  cmake_parse_arguments(H "" "TARGET" "USES" ${ARGN})
  if(NOT H_TARGET)
    set(H_TARGET morvane_${nombre})
  endif()
  file(GLOB fuentes CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${nombre}/*.cpp)
  file(GLOB cabeceras CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${nombre}/include/${nombre}/*.h)
  list(FILTER fuentes EXCLUDE REGEX ${de_otro_sistema})
  list(FILTER cabeceras EXCLUDE REGEX ${de_otro_sistema})
  add_library(${H_TARGET} STATIC ${fuentes})
  target_sources(${H_TARGET} PUBLIC FILE_SET HEADERS BASE_DIRS ${CMAKE_CURRENT_SOURCE_DIR}/${nombre}/include
                                    FILES ${cabeceras})
  set_target_properties(${H_TARGET} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
  target_link_libraries(${H_TARGET} PUBLIC ${H_USES})
endfunction()

# The test program of one room, made of tests/<name>/*.cpp, with the libraries it links.
function(prueba nombre)
  file(GLOB fuentes CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${nombre}/*.cpp)
  list(FILTER fuentes EXCLUDE REGEX ${de_otro_sistema})
  if(NOT fuentes)
    return()
  endif()
  add_executable(prueba_${nombre} ${fuentes})
  target_include_directories(prueba_${nombre} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  # Built to be built fast: what is measured is in the libraries. Names of one file may come again in another.
  target_compile_options(prueba_${nombre} PRIVATE -O0 -g0 -Wno-shadow)
  set_target_properties(prueba_${nombre} PROPERTIES UNITY_BUILD ${MORVANE_UNITY} UNITY_BUILD_BATCH_SIZE 6)
  target_link_libraries(prueba_${nombre} PRIVATE ${ARGN} GTest::gtest_main)
  if(WIN32)
    # All at once: under an emulator each start costs more than most tests, and the drives are one for all of them.
    add_test(NAME ${nombre} COMMAND prueba_${nombre})
    set_tests_properties(${nombre} PROPERTIES TIMEOUT 600 RESOURCE_LOCK unidades)
  else()
    gtest_discover_tests(prueba_${nombre} TEST_PREFIX ${nombre}. PROPERTIES TIMEOUT 60 ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  endif()
endfunction()
