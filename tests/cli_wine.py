#!/usr/bin/env python3
"""The program of the command line for Windows under Wine: a whole job over COM1, what it leaves, a stop from the console.

Usage: cli_wine.py WINE CLI.EXE STOPPER.EXE BOARD SAMPLES PREFIX. Ends with 77 where there is no board.
"""
import json
import os
import pathlib
import shutil
import sys
import tempfile

import muestras
from wine import Wine, boards, screen

PROGRAM, CLI, STOPPER, BOARD, SAMPLES, PREFIX = map(os.path.abspath, sys.argv[1:])
HOME = pathlib.Path(PREFIX) / "drive_c/Morvane de año"


def main():
    if not os.path.exists(BOARD):
        print(f"skipped: there is no {BOARD}; build the preset \"release\" first")
        return 77
    wine = Wine(PROGRAM, PREFIX)

    def run(code, *words):
        # Not by a pipe, whose other end what Wine starts beside the program would keep open.
        with open(pathlib.Path(PREFIX) / "dicho.txt", "w+b") as said:
            done = wine.run(["C:\\Morvane de año\\morvane-cli.exe", "--json", *words], 100, stdout=said, cwd=HOME)
            said.seek(0)
            text = said.read().decode()
        assert done.returncode == code, (words, done.returncode, text)
        return json.loads(text.splitlines()[-1]) if text.startswith("{") else text

    shutil.rmtree(HOME, ignore_errors=True)
    wine.run(["wineboot", "--init"], 120)
    HOME.mkdir(parents=True)
    for name in ("demo-s1.s19", "completa-256k.s19"):
        shutil.copy(pathlib.Path(SAMPLES) / name, HOME)
    shutil.copy(CLI, HOME / "morvane-cli.exe")
    (HOME / "SETTINGS.TXT").write_bytes(b'"115200","n","8","1"\r\n"COM1"\r\n')
    with tempfile.TemporaryDirectory() as folder, \
            boards(wine, BOARD, folder, ["--sin-ritmo", "--flash", "f.bin", "--traza", "traza.txt"]):
        assert any(p["puerto"] == "COM1" and p["se_puede_abrir"] for p in run(0, "puertos")["puertos"])
        run(0, "grabar", "demo-s1.s19", "--certificado", "prueba ñ.json", "--traza", "mía.txt")
        run(0, "verificar", "demo-s1.s19", "--prueba", "lectura")
        run(0, "comprobar", "prueba ñ.json", "demo-s1.s19")
        run(9, "verificar", "completa-256k.s19")
        run(0, "leer", "todo.bin", "--hasta", "13FF")
        image = muestras.read(HOME / "demo-s1.s19")[0] | dict.fromkeys(range(0x400, 0x420), 0)
        read = (HOME / "todo.bin").read_bytes()
        assert all(read[a] == b for a, b in image.items()) and len(read) == 0x1400
        assert "<STX>A41<ETX>" in (HOME / "mía.txt").read_text()
        run(3, "verificar", "no está.s19")
        run(4, "estado", "--puerto", "COM9")
        run(2, "grabar")
        # Ctrl-C: the chip is closed, and the exit says so.
        with screen():
            stopped = wine.run([STOPPER, "4000", "C:\\Morvane de año\\morvane-cli.exe", "grabar", "completa-256k.s19"], 60, cwd=HOME)
        assert stopped.returncode == 130, stopped.returncode
        last = [line for line in (pathlib.Path(folder) / "traza.txt").read_text().splitlines() if " > " in line][-1]
        assert "<STX>D44<ETX>" in last, last
    return 0


sys.exit(main())
