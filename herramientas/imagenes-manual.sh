#!/usr/bin/env bash
# imagenes-manual.sh [DIRECTORY]: renews the pictures of docs/imagenes, or makes them in DIRECTORY, from the guided tour,
# which goes through the program in a directory of always the same name, since paths stand in the pictures. Look at them
# before you commit them.
set -euo pipefail
destino=$(realpath -m "${1:-"$(dirname "$0")/../docs/imagenes"}")
cd "$(dirname "$0")/.."
. herramientas/paquetes.sh
# shellcheck disable=SC2086
asegurar_paquetes $paquetes_programa imagemagick
cmake --build build --target directorio recorrido

programa=/tmp/morvane
[ ! -e "$programa" ] || { echo "$programa is in the way" >&2; exit 1; }
fotos=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$programa" "$fotos"' EXIT

cp -a build/morvane "$programa"
rm -f "$programa"/puertos/*
printf '"115200","n","8","1"\r\n"COM1"\r\n' >"$programa/SETTINGS.TXT"
"$programa/puente" --enlace "$programa/puertos/COM1" --baudios 115200 >/dev/null &
"$programa/puente" --enlace "$programa/puertos/COM2" --muda-desde 1 >/dev/null &
until [ -e "$programa/puertos/COM1" ] && [ -e "$programa/puertos/COM2" ]; do sleep 0.05; done
QT_LOGGING_RULES=default.warning=false QT_QPA_PLATFORM=offscreen build/bin/recorrido "$programa" "$fotos"

mkdir -p "$destino"
for foto in docs/imagenes/*.png; do
  nombre=$(basename "$foto")
  convert "$fotos"/[0-9][0-9]-"$nombre" -strip +dither -colors 64 "PNG8:$destino/$nombre"
done
