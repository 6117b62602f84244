# Read by CPack for each kind of package: which components go where in it.
list(GET CPACK_BUILD_SOURCE_DIRS 1 construido)
if(CPACK_GENERATOR STREQUAL "DEB")
  set(CPACK_PACKAGING_INSTALL_PREFIX "/")
  set(CPACK_INSTALL_CMAKE_PROJECTS "${construido};morvane;directorio;/usr/lib/morvane" "${construido};morvane;sistema;/usr")
else()
  set(CPACK_INSTALL_CMAKE_PROJECTS "${construido};morvane;directorio;/")
endif()
