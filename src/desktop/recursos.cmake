# What a program carries for the shell of Windows: its icon, its version, and what it understands.
enable_language(RC)
find_program(CONVERT convert REQUIRED)
set(MORVANE_ICONO ${CMAKE_CURRENT_BINARY_DIR}/morvane.ico)
set(MORVANE_MANIFIESTO ${PROJECT_SOURCE_DIR}/paquete/windows/morvane.manifest)
set(dibujos "")
foreach(lado 16 24 32 48 64 128 256)
  list(APPEND dibujos ${CMAKE_CURRENT_BINARY_DIR}/imagenes/${lado}/morvane.png)
endforeach()
add_custom_command(OUTPUT ${MORVANE_ICONO} COMMAND ${CONVERT} ${dibujos} ${MORVANE_ICONO} DEPENDS ${dibujos} VERBATIM
                   COMMENT "Drawing morvane.ico")
configure_file(${PROJECT_SOURCE_DIR}/paquete/windows/morvane.rc.in morvane.rc @ONLY)
set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/morvane.rc PROPERTIES OBJECT_DEPENDS
                                                                              "${MORVANE_ICONO};${MORVANE_MANIFIESTO}")
target_sources(morvane PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/morvane.rc)
add_custom_target(icono DEPENDS ${MORVANE_ICONO})
add_dependencies(icono imagenes)
add_dependencies(morvane icono)
