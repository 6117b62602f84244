#!/usr/bin/env bash
# recorrido.sh DIRECTORIO FOTOS: the guided tour, offscreen, in a directory of its own with two boards, one of them dumb.
set -euo pipefail
raiz=$(cd "$(dirname "$0")/.." && pwd)
# The offscreen platform warns of everything that only a screen can do.
export QT_LOGGING_RULES=default.warning=false QT_QPA_PLATFORM=offscreen
exec "$raiz/herramientas/directorio.py" --de "$raiz/build/morvane" "$1" \
  COM1="--baudios 115200 --traza $2/linea.txt" COM2="--muda-desde 1" -- "$raiz/build/bin/recorrido" "$1" "$2"
