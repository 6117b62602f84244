# What `cmake --install` and CPack lay out: the component "directorio" is the program's directory, complete in itself; the
# component "sistema" is what makes a desktop know of it. The .tar.gz holds the directory alone; the .deb puts it into
# /usr/lib/morvane, which users cannot write to, so that the program makes a directory of its own for each.
if(NOT MORVANE_DESKTOP OR WIN32)
  return()
endif()
# The day of the version stands in the changelog.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md)
file(STRINGS CHANGELOG.md entrada REGEX "^## \\[${PROJECT_VERSION}\\] - ")
if(NOT entrada MATCHES "([0-9]+-[0-9]+-[0-9]+)$")
  message(FATAL_ERROR "CHANGELOG.md has no entry for ${PROJECT_VERSION}")
endif()
set(MORVANE_FECHA ${CMAKE_MATCH_1})

install(TARGETS morvane morvane-cli puente RUNTIME DESTINATION . COMPONENT directorio)
install(DIRECTORY samples/ DESTINATION muestras COMPONENT directorio FILES_MATCHING PATTERN "*.s19" PATTERN "*.bin"
        PATTERN fuente EXCLUDE)
install(CODE "
  set(DESTINO \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
  include(\"${PROJECT_SOURCE_DIR}/cmake/directorio_vacio.cmake\")" COMPONENT directorio)

set(sistema COMPONENT sistema EXCLUDE_FROM_ALL)
configure_file(paquete/morvane.metainfo.xml.in paquete/org.morvane.morvane.metainfo.xml @ONLY)
install(FILES paquete/morvane.desktop DESTINATION share/applications ${sistema})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/paquete/org.morvane.morvane.metainfo.xml DESTINATION share/metainfo ${sistema})
install(FILES src/desktop/imagenes/morvane.svg DESTINATION share/icons/hicolor/scalable/apps ${sistema})
install(FILES paquete/copyright DESTINATION share/doc/morvane ${sistema})
execute_process(COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/CHANGELOG.md
                OUTPUT_FILE ${CMAKE_CURRENT_BINARY_DIR}/paquete/changelog.gz)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/paquete/changelog.gz DESTINATION share/doc/morvane ${sistema})
foreach(programa morvane morvane-cli)
  file(CREATE_LINK ../lib/morvane/${programa} ${CMAKE_CURRENT_BINARY_DIR}/paquete/${programa} SYMBOLIC)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/paquete/${programa} DESTINATION bin ${sistema})
endforeach()

# Outside the prefix's share: where udev looks, and beside the program for those who unpack the archive.
install(FILES paquete/70-morvane.rules DESTINATION lib/udev/rules.d ${sistema})
install(FILES paquete/70-morvane.rules DESTINATION linea-de-ordenes COMPONENT directorio)

# Its page of the manual and what the shell completes: for those who unpack the archive too.
set(de_ordenes paquete/morvane-cli.1 paquete/morvane-cli.bash)
install(FILES ${de_ordenes} DESTINATION linea-de-ordenes COMPONENT directorio)
execute_process(COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/paquete/morvane-cli.1
                OUTPUT_FILE ${CMAKE_CURRENT_BINARY_DIR}/paquete/morvane-cli.1.gz)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS paquete/morvane-cli.1)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/paquete/morvane-cli.1.gz DESTINATION share/man/man1 ${sistema})
install(FILES paquete/morvane-cli.bash DESTINATION share/bash-completion/completions RENAME morvane-cli ${sistema})

set(CPACK_GENERATOR TGZ DEB)
set(CPACK_PACKAGE_CONTACT "The Morvane authors <morvane@example.org>")
set(CPACK_PACKAGE_VENDOR "The Morvane authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "programmer for the flash of a microcontroller behind a bridge board")
set(CPACK_PACKAGE_DESCRIPTION
    "Morvane erases, programs, verifies and reads back the 256 KiB flash of a
microcontroller over a serial port and a bridge board. Its windows speak
Spanish. morvane-cli does the same for scripts, with an exit code that is
0 only where it has proved what it says. A simulated board comes with it.")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n, fonts-dejavu-core")
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/cpack.cmake)
include(CPack)
