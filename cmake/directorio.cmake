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
# What of Qt has to lie beside a program for Windows: source, and folder in the program's directory.
set(de_qt "")
if(WIN32 AND TARGET morvane)
  cmake_path(SET qt NORMALIZE ${Qt6_DIR}/../../..)
  foreach(biblioteca Core Gui Widgets)
    list(APPEND de_qt ${qt}/bin/Qt6${biblioteca}.dll .)
  endforeach()
  list(APPEND de_qt ${qt}/plugins/platforms/qwindows.dll platforms ${PROJECT_SOURCE_DIR}/paquete/windows/qt.conf .)
  # Qt's own texts, from Debian's package of its translations.
  find_file(MORVANE_QTBASE_ES qtbase_es.qm PATHS /usr/share/qt6/translations NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  if(MORVANE_QTBASE_ES)
    list(APPEND de_qt ${MORVANE_QTBASE_ES} translations)
  endif()
endif()
list(TRANSFORM programas REPLACE "(.+)" "$<TARGET_FILE:\\1>" OUTPUT_VARIABLE ficheros)
add_custom_target(
  directorio ALL
  COMMAND ${CMAKE_COMMAND} -DDESTINO=${CMAKE_BINARY_DIR}/morvane "-DPROGRAMAS=${ficheros}"
          "-DDE_QT=${de_qt}"
          -DMUESTRAS=${PROJECT_SOURCE_DIR}/samples -P ${PROJECT_SOURCE_DIR}/cmake/disponer.cmake
  VERBATIM
  COMMENT "Laying out morvane")
add_dependencies(directorio ${programas})
