#!/usr/bin/env python3
"""Drives the built program in a real window against the simulated board on a pseudo-terminal.

Usage: escritorio_real.py PROGRAM_DIRECTORY. Needs Xvfb, openbox, xdotool, xprop and ImageMagick's import. On a failure
a picture of the screen stays in the current directory."""
import pathlib
import subprocess
import sys
import time

from apoyo.mesa import Bench, groups_of, image_of, wait

BUTTON_X, BUTTON_Y = [24, 65, 106, 147, 188, 229], 43  # middles of the toolbar buttons, from the window's corner
MENU_X = {"Ver": 79, "Memoria Flash": 226, "Upload": 306}


class MouseBench(Bench):
    """A bench whose program is driven with mouse and keyboard."""

    def begin(self):
        self.begin_display()
        self.begin_board("--baudios", "115200")
        self.begin_program()
        self.main = wait("the main window", lambda: self.windows("Morvane"))[0]

    def xdotool(self, *arguments):
        return self.ask("xdotool", *arguments)

    def windows(self, title):
        return self.xdotool("search", "--onlyvisible", "--name", f"^{title}$")

    def press(self, button):
        self.xdotool("mousemove", "--window", self.main, BUTTON_X[button - 1], BUTTON_Y, "click", 1)

    def choose(self, x, y, entry, click=1):
        """Opens a menu with the mouse and takes its n-th entry."""
        self.xdotool("mousemove", "--window", self.main, x, y, "click", click)
        time.sleep(0.3)
        self.xdotool("key", *["Down"] * entry, "Return")

    def look_at(self, title):
        window = self.in_front(title)
        self.xdotool("key", "alt+F4")
        wait(f"{title} to close", lambda: window not in self.windows(title))

    def in_front(self, title):
        """Waits until a window with this title, other than the main one, is in front."""
        box = wait(f"a box titled {title}", lambda: [w for w in self.windows(title) if w != self.main])
        wait("the box to be in front", lambda: self.xdotool("getactivewindow")[:1] == box[:1])
        return box[0]

    def answer(self, title, button=None, key="Return"):
        """Presses a button of the toolbar, if one is given, and a key in the box that comes up."""
        if button:
            self.press(button)
        box = self.in_front(title)
        self.xdotool("key", key)
        wait("the box to close", lambda: box not in self.windows(title))

    def open_file(self, name):
        self.press(1)
        self.in_front("Abrir")
        self.xdotool("type", "--delay", 1, str(self.home / "muestras" / name))
        self.answer("Abrir")
        self.answer("Morvane")


def scenario(bench):
    wait("the probe", lambda: bench.commands() == ["A", "D"])

    bench.answer("Atención", button=3)
    assert bench.commands() == ["A", "D"], "nothing goes out without a program"

    sample = bench.home / "muestras/demo-s1.s19"
    bench.open_file(sample.name)
    bench.answer("Morvane", button=3)
    wait("the closing D", lambda: bench.commands()[-1] == "D")
    flash, groups = image_of(sample), [c for c in bench.commands() if c[0] == "g"]
    assert groups == groups_of(flash, 0x13B1)
    assert bench.journal_lines() == groups
    wait("the chip's flash on the disk", lambda: bench.flash.exists() and bench.flash.read_bytes() == flash)

    bench.answer("Atención", button=4)
    wait("the looks at the sums", lambda: bench.commands()[-3:] == ["C000000000400", "C000000007FFF", "D"])
    bench.choose(MENU_X["Upload"], 9, 1)
    bench.answer("Morvane")
    wait("the closing D", lambda: bench.commands()[-1] == "D")
    assert [c for c in bench.commands() if c[0] == "e"] == ["e%06X20" % a for a in range(0, 0x13B3 + 32, 32)]
    for entry, title in ((1, "Buffer de Entrada"), (2, "Buffer de Salida")):
        bench.choose(MENU_X["Ver"], 9, entry)
        bench.look_at(title)
    bench.choose(300, 180, 1, click=3)
    bench.answer("Atención")
    bench.look_at("Resultado Comparación de buffer")

    bench.answer("Atención", button=2)
    wait("the erased flash on the disk", lambda: bench.flash.read_bytes() == b"\xff" * 0x40000)
    bench.choose(MENU_X["Memoria Flash"], 9, 2)
    bench.answer("Atención")
    assert [c for c in bench.commands() if c == "C040000007FFF"], "the last look at an erased flash"
    bench.press(5)
    wait("the reset", lambda: bench.commands()[-2:] == ["j", "D"])

    bench.answer("Atención", button=1, key="n")
    bench.answer("Abrir", key="Escape")
    bench.open_file("completa-256k.s19")
    before = len(bench.commands())
    bench.press(3)
    wait("the run", lambda: len(bench.commands()) > before + 300)
    bench.answer("Morvane", button=6)
    wait("the closing D after the stop", lambda: bench.commands()[-1] == "D")

    bench.press(3)
    wait("another run", lambda: bench.commands()[-1][0] == "g")
    bench.xdotool("windowactivate", "--sync", bench.main, "key", "alt+F4")
    assert bench.program.wait(5) == 0, "closing in mid-run ends the program in good order"
    wait("the D before the end", lambda: bench.commands()[-1] == "D")


bench = MouseBench(pathlib.Path(sys.argv[1]).resolve())
try:
    bench.begin()
    scenario(bench)
except BaseException:
    subprocess.run(["import", "-window", "root", "escritorio_real.png"], check=False)
    if bench.trace.exists():
        print("the board took:", " ".join(bench.commands()[-30:]))
    raise
finally:
    bench.close()
