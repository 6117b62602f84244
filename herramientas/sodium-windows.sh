#!/usr/bin/env bash
# Builds libsodium for Windows from Debian's source package, once, as herramientas/qt-windows.sh does Qt; kept by default in
# ~/.cache/morvane/sodium-windows. Prints its folder last.
set -euo pipefail
cd "$(dirname "$0")/.."
. herramientas/paquetes.sh
. herramientas/fuente-debian.sh

aqui=${1:-${XDG_CACHE_HOME:-$HOME/.cache}/morvane/sodium-windows}
# shellcheck disable=SC2086
asegurar_paquetes $paquetes_programa $paquetes_windows dpkg-dev make autoconf automake libtool
version=$(dpkg-query -W -f='${Version}' libsodium-dev)
version=${version%+b*}
mkdir -p "$aqui"
aqui=$(cd "$aqui" && pwd)
exec 9>"$aqui/turno"
flock 9
if [ "$(cat "$aqui/hecho" 2>/dev/null)" != "$version" ]; then
  inicio=$SECONDS
  rm -rf "$aqui/fuente" "$aqui/sodium" "$aqui"/libsodium_*
  traer_fuente libsodium "$version" "$aqui"
  # The package's signature was seen to by apt, which holds it against its lists.
  dpkg-source --no-check -x "$aqui/libsodium_$version.dsc" "$aqui/fuente" >/dev/null
  (cd "$aqui/fuente" && autoreconf -fi && ./configure --host=x86_64-w64-mingw32 --prefix="$aqui/sodium" --disable-shared --enable-static \
    --disable-ssp CC=x86_64-w64-mingw32-gcc-posix >configuracion.txt && make -s -j"$(nproc)" && make -s install) >"$aqui/obra.txt" 2>&1 ||
    { tail -n 20 "$aqui/obra.txt" >&2; exit 1; }
  rm -rf "$aqui/fuente"
  echo "$version" >"$aqui/hecho"
  echo "libsodium for Windows built in $((SECONDS - inicio)) s"
fi
echo "$aqui/sodium"
