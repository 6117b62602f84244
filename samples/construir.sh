#!/bin/sh
# Builds the sample firmware again. Needs binutils-m68k-linux-gnu, srecord and python3; nothing else of Morvane does.
set -eu
cd "$(dirname "$0")"
herramienta=m68k-linux-gnu
obra=$(mktemp -d)
trap 'rm -rf "$obra"' EXIT

$herramienta-as -mcpu=5213 -o "$obra/demo.o" fuente/demo.s
$herramienta-ld -T fuente/demo.ld -o "$obra/demo.elf" "$obra/demo.o"

# objcopy takes the shortest address form and ends lines with CR LF; srec_cat ends them with LF.
$herramienta-objcopy -O srec "$obra/demo.elf" demo-s1.s19
srec_cat demo-s1.s19 -Motorola -o demo-s2.s19 -Motorola -address-length=3
$herramienta-objcopy -O srec --srec-forceS3 --srec-len=32 "$obra/demo.elf" demo-s3.s19

$herramienta-objcopy -O binary --gap-fill 0xff "$obra/demo.elf" "$obra/demo.bin"
python3 fuente/completa.py "$obra/demo.bin" "$obra/completa.bin"
$herramienta-objcopy -I binary -O srec --srec-len=32 "$obra/completa.bin" completa-256k.s19
chmod 644 ./*.s19
