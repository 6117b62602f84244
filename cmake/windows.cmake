# For Windows, with the windows of the program where herramientas/qt-windows.sh has built Qt, and with the program of the
# command line where herramientas/sodium-windows.sh has built libsodium; without them otherwise.
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
if(DEFINED ENV{XDG_CACHE_HOME})
  set(guardado $ENV{XDG_CACHE_HOME}/morvane)
else()
  set(guardado $ENV{HOME}/.cache/morvane)
endif()
set(MORVANE_QT_WINDOWS $ENV{MORVANE_QT_WINDOWS})
if(NOT MORVANE_QT_WINDOWS)
  set(MORVANE_QT_WINDOWS ${guardado}/qt-windows)
endif()
# herramientas/sodium-windows.sh builds it.
set(MORVANE_SODIUM_WINDOWS ${guardado}/sodium-windows)
if(EXISTS ${MORVANE_QT_WINDOWS}/hecho)
  list(APPEND CMAKE_FIND_ROOT_PATH ${MORVANE_QT_WINDOWS}/qt)
  # The tools that run while building are this system's, of the same version.
  set(QT_HOST_PATH /usr)
  execute_process(COMMAND uname -m OUTPUT_VARIABLE maquina OUTPUT_STRIP_TRAILING_WHITESPACE)
  set(QT_HOST_PATH_CMAKE_DIR /usr/lib/${maquina}-linux-gnu/cmake)
elseif(NOT DEFINED CACHE{MORVANE_DESKTOP})
  set(MORVANE_DESKTOP OFF)
endif()
