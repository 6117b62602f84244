#!/usr/bin/env bash
# Renews the pictures of docs/imagenes from the guided tour, which goes through the program in a directory of always the
# same name, since paths stand in the pictures. Look at them before you commit them.
set -euo pipefail
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

for destino in docs/imagenes/*.png; do
  nombre=$(basename "$destino")
  convert "$fotos"/[0-9][0-9]-"$nombre" -strip +dither -colors 64 "PNG8:$destino"
done
