#!/usr/bin/env python3
"""The guided tour in real windows of the program for Windows, under Wine, with two simulated boards at COM1 and COM2.

Usage: recorrido_wine.py WINE PROGRAM_DIRECTORY TOUR.EXE BOARD PREFIX PICTURES [OPTION-OF-THE-TOUR]. Ends with 77 where
there is no board.
"""
import os
import pathlib
import shutil
import sys

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "herramientas"))
import directorio  # noqa: E402
from wine import Wine, boards, screen  # noqa: E402

PROGRAM, SOURCE, TOUR, BOARD, PREFIX, PICTURES = map(os.path.abspath, sys.argv[1:7])


def main():
    if not os.path.exists(BOARD):
        print(f"skipped: there is no {BOARD}; build the preset \"release\" first")
        return 77
    # On a drive of its own, as on Windows: Wine does not let the root of this host's be read.
    home = pathlib.Path(PREFIX) / "drive_c/Morvane"
    shutil.rmtree(home, ignore_errors=True)
    shutil.rmtree(PICTURES, ignore_errors=True)
    with screen():
        wine = Wine(PROGRAM, PREFIX)
        wine.fonts()
        directorio.make(SOURCE, home)
        (home.parent / "Datos/TORVAX-m68k").mkdir(parents=True, exist_ok=True)
        # Its libraries lie beside the program.
        shutil.copy(TOUR, home / "recorrido.exe")
        try:
            with boards(wine, BOARD, PREFIX, ["--baudios", "115200"], ["--muda-desde", "1"]):
                return wine.run(["C:\\Morvane\\recorrido.exe", "C:\\Morvane", "C:\\Morvane\\fotos", *sys.argv[7:]], 300).returncode
        finally:
            if (home / "fotos").exists():
                shutil.copytree(home / "fotos", PICTURES)


sys.exit(main())
