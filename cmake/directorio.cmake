# Lays out the program's directory, build/morvane, at each build. What the user may have changed there is left alone.
if(NOT MORVANE_DESKTOP)
  return()
endif()
add_custom_target(
  directorio ALL
  COMMAND ${CMAKE_COMMAND} -DDESTINO=${CMAKE_BINARY_DIR}/morvane -DMORVANE=$<TARGET_FILE:morvane>
          -DPUENTE=$<TARGET_FILE:puente> -DMUESTRAS=${PROJECT_SOURCE_DIR}/samples -P
          ${PROJECT_SOURCE_DIR}/cmake/disponer.cmake
  DEPENDS morvane puente
  COMMENT "Laying out build/morvane")
