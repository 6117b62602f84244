#!/usr/bin/env bash
# paquete-windows.sh [DIRECTORIO]: the installer and the .zip of what was built in build-windows, into DIRECTORIO (that one
# unless another is given). Prints their sizes.
set -euo pipefail
cd "$(dirname "$0")/.."

version=$(sed -n 's/^project(morvane VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
destino=$(realpath "${1:-build-windows}")
obra=$(mktemp -d)
trap 'rm -rf "$obra"' EXIT
nombre=morvane-$version-windows
# A directory as new: what was tried in the one of the build belongs to nobody else.
build=$PWD/build-windows
mkdir "$obra/$nombre"
cp -a "$build/morvane/." "$obra/$nombre/"
(cd "$obra/$nombre" && rm -rf MENU.TXT SETTINGS.TXT placa_*.flash puertos/* unidades/c/Datos/TORVAX-m68k/*)
printf '"57600","n","8","1"\r\n"COM1"\r\n' >"$obra/$nombre/SETTINGS.TXT"
x86_64-w64-mingw32-strip "$obra/$nombre"/*.exe
(cd "$obra" && rm -f "$destino/$nombre.zip" && python3 -m zipfile -c "$destino/$nombre.zip" "$nombre")
makensis -V2 -WX "-DVERSION=$version" "-DORIGEN=$obra/$nombre" "-DICONO=$build/src/desktop/morvane.ico" \
  "-DSALIDA=$destino/$nombre.exe" paquete/windows/morvane.nsi
du -k "$destino/$nombre.exe" "$destino/$nombre.zip"
