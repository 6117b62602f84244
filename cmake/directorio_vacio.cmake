# Part of the installation: the directories that are empty at first, and the settings where there are none yet. DESTINO
# is the program's directory.
file(MAKE_DIRECTORY ${DESTINO}/puertos ${DESTINO}/unidades/c/Datos/TORVAX-m68k)
if(NOT EXISTS ${DESTINO}/SETTINGS.TXT)
  file(WRITE ${DESTINO}/SETTINGS.TXT "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n")
endif()
