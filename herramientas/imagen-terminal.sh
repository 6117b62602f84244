#!/usr/bin/env bash
# imagen-terminal.sh FILE.png: a session of the command line in a real terminal, as a picture. Look at it before you commit
# it.
set -euo pipefail
imagen=$(realpath -m "$1")
cd "$(dirname "$0")/.."
. herramientas/paquetes.sh
# shellcheck disable=SC2086
asegurar_paquetes $paquetes_programa xvfb xauth xterm imagemagick fonts-dejavu-core
cmake --build build --target directorio

obra=$(mktemp -d)
trap 'rm -rf "$obra"' EXIT
cat >"$obra/sesion" <<'SESION'
cd "$1" || exit 1
haz() {
  printf '\e[1m$ %s\e[0m\n' "$*"
  "$@"
}
PATH=$PWD:$PATH
cp muestras/demo-s1.s19 firmware.s19
haz morvane-cli plan firmware.s19
haz morvane-cli grabar firmware.s19
cp firmware.s19 nuevo.s19
haz morvane-cli convertir firmware.s19 nuevo.bin
printf '\x5A' | dd of=nuevo.bin bs=1 seek=$((0x1004)) conv=notrunc status=none
haz morvane-cli verificar nuevo.bin
haz morvane-cli identificar firmware.s19 nuevo.bin
printf '\e[1m$ \e[0m'
touch "$2"
sleep 60
SESION
# shellcheck disable=SC2016
XDG_CONFIG_HOME=$obra xvfb-run -a -s "-screen 0 1100x900x24" bash -c '
  herramientas/directorio.py --de build/morvane "$1/morvane" COM1="--baudios 115200" -- \
    xterm -fa "DejaVu Sans Mono" -fs 10 -geometry 128x29+0+0 -bg "#16191d" -fg "#e6e6e6" +sb -e bash "$1/sesion" "$1/morvane" "$1/hecho" &
  for _ in $(seq 300); do [ ! -e "$1/hecho" ] || break; sleep 0.1; done
  sleep 1
  import -window root "$1/todo.png"
  kill %1
  wait' imagen "$obra"
convert "$obra/todo.png" -trim +repage -bordercolor "#16191d" -border 8 -strip +dither -colors 64 "PNG8:$imagen"
