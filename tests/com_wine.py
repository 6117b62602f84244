#!/usr/bin/env python3
"""Runs the program for Windows under Wine, its COM1 a pseudo-terminal with the board as a program at the far end.

Usage: com_wine.py WINE TESTS.EXE BOARD SAMPLE PREFIX. Ends with 77 where there is no board to talk to.
"""
import os
import pathlib
import subprocess
import sys
import tempfile

import muestras

WINE, TESTS, BOARD, SAMPLE, PREFIX = map(os.path.abspath, sys.argv[1:])
ENV = dict(os.environ, WINEPREFIX=PREFIX, WINEDEBUG="-all")


def server(option):
    """Of this prefix alone, which nobody else uses."""
    folders = [pathlib.Path(WINE).parent, pathlib.Path("/usr/lib/wine"), pathlib.Path("/usr/bin")]
    found = [f / "wineserver" for f in folders if (f / "wineserver").exists()]
    subprocess.run([found[0], option], env=ENV, timeout=60, check=False, stderr=subprocess.DEVNULL)


def run(folder, test, *options):
    with subprocess.Popen([BOARD, *options], cwd=folder, text=True, stdout=subprocess.PIPE) as board:
        try:
            terminal = board.stdout.readline().split()[1]
            subprocess.run([WINE, "reg", "add", r"HKLM\Software\Wine\Ports", "/v", "COM1", "/d", terminal, "/f"],
                           env=ENV, timeout=120, check=True, stdout=subprocess.DEVNULL)
            # The ports are looked at when the server starts.
            server("-w")
            tests = [WINE, TESTS, f"--gtest_filter=*{test}*"]
            return subprocess.run(tests, env=ENV, timeout=180, check=False).returncode
        finally:
            board.terminate()
            server("-w")


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
