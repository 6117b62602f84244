#!/usr/bin/env bash
# Compiles the sources of the desktop for Windows as far as that goes without Qt for Windows: against the headers of this
# system's Qt, which ask for the system where it matters. Nothing is linked.
set -euo pipefail
cd "$(dirname "$0")/.."

qt=/usr/include/$(uname -m)-linux-gnu/qt6
opciones=(-std=c++20 -fsyntax-only -Wall -Wextra -Wshadow -Werror -DUNICODE -DNOMINMAX -Isrc/desktop)
for encabezados in src/*/include src/*/win32/include; do opciones+=("-I$encabezados"); done
for modulo in "" /QtCore /QtGui /QtWidgets; do opciones+=(-isystem "$qt$modulo"); done
git ls-files 'src/desktop/*.cpp' | grep -v /posix/ | xargs -P "$(nproc)" -n 4 x86_64-w64-mingw32-g++-posix "${opciones[@]}"
