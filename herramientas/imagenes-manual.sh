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
trap 'rm -rf "$programa" "$fotos"' EXIT
herramientas/recorrido.sh "$programa" "$fotos"

mkdir -p "$destino"
for foto in docs/imagenes/*.png; do
  nombre=$(basename "$foto")
  [ "$nombre" != terminal.png ] || continue
  convert "$fotos"/[0-9][0-9]-"$nombre" -strip +dither -colors 64 "PNG8:$destino/$nombre"
done
herramientas/imagen-terminal.sh "$destino/terminal.png"
