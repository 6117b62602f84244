# Lays out the program's directory, build/morvane, next to the binaries of this build.
set(MORVANE_DIR ${CMAKE_BINARY_DIR}/morvane)
