# Lays out the program's directory, build/morvane, at each build. What the user may have changed there is left alone.
if(NOT MORVANE_DESKTOP)
  return()
endif()
# The board as a program does not exist on every system.
if(TARGET puente)
  set(placa -DPUENTE=$<TARGET_FILE:puente>)
endif()
add_custom_target(
  directorio ALL
  COMMAND ${CMAKE_COMMAND} -DDESTINO=${CMAKE_BINARY_DIR}/morvane -DMORVANE=$<TARGET_FILE:morvane> ${placa}
          -DMUESTRAS=${PROJECT_SOURCE_DIR}/samples -P ${PROJECT_SOURCE_DIR}/cmake/disponer.cmake
  COMMENT "Laying out build/morvane")
add_dependencies(directorio morvane)
if(TARGET puente)
  add_dependencies(directorio puente)
endif()
