#!/usr/bin/env bash
# recorrido.sh DIRECTORIO FOTOS [oscuro]: the guided tour, offscreen unless QT_QPA_PLATFORM says otherwise, in a directory
# of its own with two boards, one of them dumb; with a dark palette on request.
set -euo pipefail
raiz=$(cd "$(dirname "$0")/.." && pwd)
# The offscreen platform warns of everything that only a screen can do.
export QT_LOGGING_RULES=default.warning=false QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"
exec "$raiz/herramientas/directorio.py" --de "$raiz/build/morvane" "$1" \
  COM1="--baudios 115200 --traza $2/linea.txt" COM2="--muda-desde 1" -- "$raiz/build/bin/recorrido" "$@"
