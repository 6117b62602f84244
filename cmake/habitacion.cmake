# Within a room, what one system alone can build stands in a folder of its own.
if(WIN32)
  set(sistema win32)
else()
  set(sistema posix)
endif()

# Compiles the sources of a target `cuantas` at a time, which takes a third of the time of one by one.
function(varias_a_la_vez objetivo cuantas)
  set_target_properties(${objetivo} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE ${cuantas})
  # A local of one file may have the name of something that another keeps to itself.
  target_compile_options(${objetivo} PRIVATE -Wno-shadow)
endfunction()

# A room: the library morvane_<name> of src/<name>, which sees its own headers and those of the rooms named after USES.
# With SUELTA its files are compiled one by one in any case.
# The target all_verify_interface_header_sets compiles each public header alone, to see that it includes what it needs.
function(habitacion nombre)
  cmake_parse_arguments(H "SUELTA" "TARGET" "USES" ${ARGN})
  if(NOT H_TARGET)
    set(H_TARGET morvane_${nombre})
  endif()
  set(raiz ${CMAKE_CURRENT_SOURCE_DIR}/${nombre})
  set(bases ${raiz}/include)
  if(EXISTS ${raiz}/${sistema}/include)
    list(APPEND bases ${raiz}/${sistema}/include)
  endif()
  list(TRANSFORM bases APPEND /${nombre}/*.h OUTPUT_VARIABLE donde_cabeceras)
  file(GLOB fuentes CONFIGURE_DEPENDS ${raiz}/*.cpp ${raiz}/${sistema}/*.cpp)
  file(GLOB cabeceras CONFIGURE_DEPENDS ${donde_cabeceras})
  add_library(${H_TARGET} STATIC ${fuentes})
  target_include_directories(${H_TARGET} PRIVATE ${raiz})
  target_sources(${H_TARGET} PUBLIC FILE_SET HEADERS BASE_DIRS ${bases} FILES ${cabeceras})
  set_target_properties(${H_TARGET} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
  target_link_libraries(${H_TARGET} PUBLIC ${H_USES})
  if(MORVANE_UNITY AND NOT H_SUELTA)
    varias_a_la_vez(${H_TARGET} 8)
  endif()
endfunction()

# The test program of one room, made of tests/<name>/*.cpp and what is there for this system, with the libraries it links.
function(prueba nombre)
  file(GLOB fuentes CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${nombre}/*.cpp
                                      ${CMAKE_CURRENT_SOURCE_DIR}/${nombre}/${sistema}/*.cpp)
  if(NOT fuentes)
    return()
  endif()
  add_executable(prueba_${nombre} ${fuentes})
  target_include_directories(prueba_${nombre} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  # Built to be built fast: what is measured is in the libraries.
  target_compile_options(prueba_${nombre} PRIVATE -O0 -g0)
  if(MORVANE_UNITY_TESTS)
    varias_a_la_vez(prueba_${nombre} 6)
  endif()
  target_link_libraries(prueba_${nombre} PRIVATE ${ARGN} GTest::gtest_main)
  if(WIN32)
    # All at once: under an emulator each start costs more than most tests, and the drives are one for all of them.
    add_test(NAME ${nombre} COMMAND prueba_${nombre})
    set_tests_properties(${nombre} PROPERTIES TIMEOUT 600 RESOURCE_LOCK unidades)
  else()
    gtest_discover_tests(prueba_${nombre} TEST_PREFIX ${nombre}. PROPERTIES TIMEOUT 60 ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  endif()
endfunction()
