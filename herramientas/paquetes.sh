# shellcheck shell=bash disable=SC2034
# Sourced by the scripts of this repository: installs Debian packages that are missing.

paquetes_programa="g++ cmake ninja-build qt6-base-dev librsvg2-bin libgl1-mesa-dev python3 fonts-dejavu-core
  qt6-translations-l10n
  pkg-config libcli11-dev nlohmann-json3-dev libsodium-dev libelf-dev"
paquetes_pruebas="libgtest-dev xvfb openbox xdotool x11-utils imagemagick dbus-daemon at-spi2-core python3-gi valgrind
  umockdev"
paquetes_medidas="binutils srecord"
paquetes_revision="git clang clang-format clang-tidy libclang-rt-14-dev shellcheck pyflakes3 lintian appstream
  desktop-file-utils dpkg-dev binutils-m68k-linux-gnu"
paquetes_windows="g++-mingw-w64-x86-64-posix googletest wine64 fonts-wine nsis
  librsvg2-bin imagemagick xz-utils"
paquetes_laboratorio="qemu-system-x86 busybox-static cpio kmod"

# asegurar_paquetes PAQUETE...: installs those that are missing, or says which ones are and ends.
asegurar_paquetes() {
  local faltan=() paquete como=()
  for paquete in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$paquete" 2>/dev/null)" = installed ] || faltan+=("$paquete")
  done
  [ ${#faltan[@]} -eq 0 ] && return 0
  echo "Missing packages: ${faltan[*]}"
  if [ "$(id -u)" -ne 0 ]; then
    if ! sudo -n true 2>/dev/null; then
      echo "This user may not install them. Please run: sudo apt-get install ${faltan[*]}" >&2
      exit 1
    fi
    como=(sudo -n)
  fi
  "${como[@]}" apt-get update -q || true
  if ! "${como[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${faltan[@]}"; then
    echo "Could not install: ${faltan[*]}" >&2
    exit 1
  fi
}
