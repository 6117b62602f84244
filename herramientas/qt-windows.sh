#!/usr/bin/env bash
# Builds Qt (Core, Gui, Widgets) for Windows from Debian's own source package, which has no binary one of it. Once: what
# is built is kept outside the tree, by default in ~/.cache/morvane/qt-windows, or in the folder that is given; `cmake
# --preset windows` takes it from there. A build that was cut off goes on where it stopped. Needs about 2 GB while it
# builds, 60 MB afterwards. Prints the folder of Qt last.
set -euo pipefail
cd "$(dirname "$0")/.."
. herramientas/paquetes.sh
. herramientas/fuente-debian.sh

# The source as it was published, whatever a mirror gives out.
declare -A sumas=(
  [6.4.2+dfsg]=4f14b89a9463a540fd84a6718b8519a2297119b454ef547721015a9e9019ae9e
)
opciones=(
  -DCMAKE_BUILD_TYPE=Release -DQT_HOST_PATH=/usr
  -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DFEATURE_sql=OFF -DFEATURE_network=OFF -DFEATURE_dbus=OFF
  -DFEATURE_testlib=OFF -DFEATURE_printsupport=OFF -DFEATURE_concurrent=OFF -DFEATURE_xml=OFF -DINPUT_opengl=no
  -DFEATURE_vulkan=OFF -DFEATURE_tabletevent=OFF -DFEATURE_androiddeployqt=OFF
)
aqui=${1:-${XDG_CACHE_HOME:-$HOME/.cache}/morvane/qt-windows}

# shellcheck disable=SC2086
asegurar_paquetes $paquetes_programa $paquetes_windows dpkg-dev xz-utils

version=$(dpkg-query -W -f='${Version}' qt6-base-dev-tools)
hechura=$version-$(printf '%s\n' "${opciones[@]}" | cat - cmake/mingw.cmake | sha256sum | cut -c1-12)
mkdir -p "$aqui"
aqui=$(cd "$aqui" && pwd)
exec 9>"$aqui/turno"
flock -n 9 || { echo "Another build of Qt is at work in $aqui; waiting for it"; flock 9; }
if [ "$(cat "$aqui/hecho" 2>/dev/null)" = "$hechura" ]; then
  echo "$aqui/qt"
  exit 0
fi

comprobar_fuente() {
  local original=${version%-*} suma
  suma=${sumas[$original]:-}
  [ -n "$suma" ] || { echo "No sum is kept for the source of qt6-base $original" >&2; return 1; }
  sha256sum --quiet -c <<<"$suma  $aqui/qt6-base_$original.orig.tar.xz"
}

desplegar_fuente() {
  rm -rf "$aqui/fuente" "$aqui/obra"
  # The package's signature was seen to by apt, which holds it against its lists.
  dpkg-source --no-check -x "$aqui/qt6-base_$version.dsc" "$aqui/fuente" >/dev/null
}

inicio=$SECONDS
if [ "$(cat "$aqui/empezado" 2>/dev/null)" != "$hechura" ]; then
  [ -f "$aqui/qt6-base_$version.dsc" ] || traer_fuente qt6-base "$version" "$aqui"
  comprobar_fuente
  desplegar_fuente
  echo "$hechura" >"$aqui/empezado"
fi
comodidades=()
if [ -n "$(command -v ccache)" ]; then comodidades=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache); fi
cmake -G Ninja -S "$aqui/fuente" -B "$aqui/obra" -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw.cmake" \
  -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)/cmake" \
  -DCMAKE_INSTALL_PREFIX="$aqui/qt" "${opciones[@]}" "${comodidades[@]}" >"$aqui/configuracion.txt" 2>&1 ||
  { tail -n 30 "$aqui/configuracion.txt" >&2; exit 1; }
cmake --build "$aqui/obra"
rm -rf "$aqui/qt"
cmake --install "$aqui/obra" --strip >/dev/null
echo "$hechura" >"$aqui/hecho"
rm -rf "$aqui/obra" "$aqui/fuente" "$aqui/empezado"
echo "Qt for Windows built in $((SECONDS - inicio)) s"
echo "$aqui/qt"
