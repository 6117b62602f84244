#!/usr/bin/env python3
"""Runs the program for Windows under Wine, its COM1 a pseudo-terminal with the board as a program at the far end.

Usage: com_wine.py WINE TESTS.EXE BOARD SAMPLE PREFIX. Ends with 77 where there is no board to talk to.
"""
import os
import pathlib
import sys
import tempfile

import muestras
from wine import Wine, boards

PROGRAM, TESTS, BOARD, SAMPLE, PREFIX = map(os.path.abspath, sys.argv[1:])


def run(folder, test, *options):
    wine = Wine(PROGRAM, PREFIX)
    with boards(wine, BOARD, folder, options):
        return wine.run([TESTS, f"--gtest_filter=*{test}*"], 180).returncode


def main():
    if not os.path.exists(BOARD):
        print(f"skipped: there is no {BOARD}; build the preset \"release\" first")
        return 77
    with tempfile.TemporaryDirectory() as folder:
        if run(folder, "SeGraba", "--flash", "f.bin"):
            return 1
        flash = pathlib.Path(folder, "f.bin").read_bytes()
        # The configuration field is always zeros.
        image = muestras.read(pathlib.Path(SAMPLE))[0] | dict.fromkeys(range(0x400, 0x420), 0)
        wrong = [f"{a:06X}" for a, b in image.items() if flash[a] != b]
        if wrong:
            print("not in the flash:", *wrong[:10])
            return 1
        return run(folder, "SeCuelga", "--cuelga-en", "200")


sys.exit(main())
