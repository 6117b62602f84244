# shellcheck shell=bash
# Sourced: traer_fuente PAQUETE VERSION CARPETA fetches a source package of Debian into CARPETA, by lists of its own, since
# this system's need none of sources. apt holds it against their signature.
traer_fuente() {
  local paquete=$1 version=$2 aqui=$3 lista=$3/apt
  mkdir -p "$lista/lists/partial" "$lista/cache/archives/partial"
  echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]" \
    "${MORVANE_DEBIAN:-http://deb.debian.org/debian} $(. /etc/os-release && echo "$VERSION_CODENAME") main" >"$lista/sources.list"
  local apt=(apt-get -q -o "Dir::Etc::sourcelist=$lista/sources.list" -o Dir::Etc::sourceparts=-
    -o "Dir::State::lists=$lista/lists" -o "Dir::Cache=$lista/cache" -o APT::Sandbox::User=)
  "${apt[@]}" update && (cd "$aqui" && "${apt[@]}" source --download-only "$paquete=$version") && rm -rf "$lista"
}
