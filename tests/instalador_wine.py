#!/usr/bin/env python3
"""The installer under Wine: what it lays out runs, is used with keyboard and mouse, and goes again but for what is the
user's.

Usage: instalador_wine.py WINE TREE BOARD PREFIX. Ends with 77 where there is no board.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

import muestras
from wine import Wine, boards, screen

PROGRAM, TREE, BOARD, PREFIX = map(os.path.abspath, sys.argv[1:])
DRIVE = pathlib.Path(PREFIX) / "drive_c"
HOME = DRIVE / "Program Files/Morvane"
SAMPLE = pathlib.Path(TREE) / "samples/demo-s1.s19"


def until(what, holds, limit=30):
    end = time.monotonic() + limit
    while not (found := holds()):
        assert time.monotonic() < end, f"waited {limit} s for {what}"
        time.sleep(0.2)
    return found


def keys(*names):
    for name in names:
        subprocess.run(["xdotool", "key", name], check=True)
        time.sleep(0.3)


def window(title):
    """Of the windows in sight, one with exactly this title, in front."""
    def found():
        seen = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"], text=True, capture_output=True)
        return seen.stdout.split()
    number = until(f"the window {title}", found)[-1]
    # A box takes no key at first.
    time.sleep(0.8)
    return number


def at(number, x, y):
    subprocess.run(["xdotool", "mousemove", "--window", number, str(x), str(y), "click", "1"], check=True)


def a_job(wine, flash):
    """Opens a sample by the keyboard, writes and verifies it by the mouse, and closes the program by the keyboard."""
    with wine.start([r"C:\Program Files\Morvane\morvane.exe"], cwd=HOME) as program:
        try:
            main = window("Morvane")
            keys("alt+a", "a")
            window("Abrir")
            subprocess.run(["xdotool", "type", "--delay", "30", r"C:\muestra de año.s19"], check=True)
            keys("Return")
            window("Morvane")
            keys("Return")
            at(main, 115, 45)
            image = muestras.read(SAMPLE)[0] | dict.fromkeys(range(0x400, 0x420), 0)
            until("the sample in the flash", lambda: flash.exists() and
                  all(flash.read_bytes()[a] == b for a, b in image.items()), 60)
            time.sleep(1)
            keys("Return")
            at(main, 148, 45)
            until("the first block's sum", lambda: "C000000000400" in (flash.parent / "traza.txt").read_text())
            time.sleep(2)
            subprocess.run(["import", "-window", "root", str(pathlib.Path(PREFIX) / "verificado.png")], check=True)
            keys("Return", "alt+a", "s")
            assert program.wait(30) == 0
        except BaseException:
            subprocess.run(["import", "-window", "root", str(pathlib.Path(PREFIX) / "fallo.png")], check=False)
            program.kill()
            raise


def main():
    if not os.path.exists(BOARD):
        print(f"skipped: there is no {BOARD}; build the preset \"release\" first")
        return 77
    shutil.rmtree(DRIVE / "Program Files/Morvane", ignore_errors=True)
    with tempfile.TemporaryDirectory() as folder, screen():
        subprocess.run([pathlib.Path(TREE) / "herramientas/paquete-windows.sh", folder], check=True)
        [installer] = pathlib.Path(folder).glob("*.exe")
        wine = Wine(PROGRAM, PREFIX)
        wine.fonts()
        assert wine.run([str(installer), "/S"], 120).returncode == 0
        wine.server("-w")
        for name in ("morvane.exe", "Qt6Core.dll", "platforms/qwindows.dll", "SETTINGS.TXT", "desinstalar.exe"):
            assert (HOME / name).exists(), f"{name} was not installed"
        assert (DRIVE / "Datos/TORVAX-m68k").is_dir()
        shutil.copy(SAMPLE, DRIVE / "muestra de año.s19")
        with boards(wine, BOARD, folder, ["--baudios", "57600", "--flash", "f.bin", "--traza", "traza.txt"]):
            a_job(wine, pathlib.Path(folder, "f.bin"))
        assert (DRIVE / "Datos/TORVAX-m68k/memoria.txt").stat().st_size > 1000, "nothing in the journal"
        assert wine.run([str(HOME / "desinstalar.exe"), "/S", "_?=C:\\Program Files\\Morvane"], 120).returncode == 0
        wine.server("-w")
        left = sorted(str(p.relative_to(HOME)) for p in HOME.rglob("*") if p.is_file())
        assert set(left) <= {"SETTINGS.TXT", "MENU.TXT", "desinstalar.exe"} and "SETTINGS.TXT" in left, left
    return 0


sys.exit(main())
