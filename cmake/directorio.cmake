# Lays out the program's directory, build/morvane, at each build. What the user may have changed there is left alone.
# Which programs there are depends on the system, and on whether windows are built.
set(programas "")
foreach(programa morvane morvane-cli puente)
  if(TARGET ${programa})
    list(APPEND programas ${programa})
  endif()
endforeach()
if(NOT programas)
  return()
endif()
list(TRANSFORM programas REPLACE "(.+)" "$<TARGET_FILE:\\1>" OUTPUT_VARIABLE ficheros)
add_custom_target(
  directorio ALL
  COMMAND ${CMAKE_COMMAND} -DDESTINO=${CMAKE_BINARY_DIR}/morvane "-DPROGRAMAS=${ficheros}"
          -DMUESTRAS=${PROJECT_SOURCE_DIR}/samples -P ${PROJECT_SOURCE_DIR}/cmake/disponer.cmake
  VERBATIM
  COMMENT "Laying out build/morvane")
add_dependencies(directorio ${programas})
