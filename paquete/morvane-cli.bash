# Completion of morvane-cli for bash.

_morvane_cli() {
  local reponer
  COMPREPLY=()
  reponer=$(shopt -p extglob)
  shopt -s extglob
  _morvane_cli_palabras
  $reponer
}

_morvane_cli_palabras() {
  local actual=${COMP_WORDS[COMP_CWORD]} previa=${COMP_WORDS[COMP_CWORD - 1]} palabra orden="" i
  local ordenes="puertos estado plan borrar grabar verificar leer identificar convertir reset proteger medir comprobar"
  local comunes="--puerto --velocidad --directorio --json --traza -q -h --ayuda --help --version"
  local archivos='*.@(s19|s28|s37|srec|mot|hex|elf|axf|out|bin|S19|S28|S37|SREC|MOT|HEX|ELF|AXF|OUT|BIN)'
  for ((i = 1; i < COMP_CWORD; i++)); do
    palabra=${COMP_WORDS[i]}
    case $palabra in
      --puerto | --velocidad | --directorio | --traza | --certificado | --prueba | --desde | --hasta | --en) ((i++)) ;;
      -*) ;;
      *) [ -n "$orden" ] || orden=$palabra ;;
    esac
  done
  case $previa in
    --prueba) mapfile -t COMPREPLY < <(compgen -W "sumas lectura" -- "$actual"); return ;;
    --velocidad) mapfile -t COMPREPLY < <(compgen -W "9600 19200 38400 57600 115200 230400 460800 921600" -- "$actual"); return ;;
    --puerto)
      mapfile -t COMPREPLY < <(compgen -W "COM1 COM2 COM3 COM4 COM5 COM6 COM7 COM8 COM9" -- "$actual"
        compgen -G "${actual:-/dev/serial/by-id/}*"
        compgen -G "/dev/tty@(USB|ACM)*" -- "$actual")
      return ;;
    --directorio) compopt -o dirnames; return ;;
    --traza | --certificado) compopt -o default; return ;;
    --desde | --hasta | --en) return ;;
  esac
  if [ -z "$orden" ]; then
    mapfile -t COMPREPLY < <(compgen -W "$ordenes $comunes" -- "$actual")
    return
  fi
  local propias=""
  case $orden in
    grabar) propias="--prueba --certificado --todo --en" ;;
    verificar) propias="--prueba --certificado --en" ;;
    plan | identificar | convertir | comprobar) propias="--en" ;;
    leer) propias="--desde --hasta" ;;
    proteger) propias="--si" ;;
  esac
  if [[ $actual == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$propias $comunes" -- "$actual")
    return
  fi
  case $orden in
    plan | grabar | verificar | identificar | convertir | leer | comprobar)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -d -- "$actual"; compgen -f -X "!$archivos" -- "$actual")
      [ "$orden" != comprobar ] || mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -f -X '!*.json' -- "$actual") ;;
  esac
}
complete -F _morvane_cli morvane-cli
