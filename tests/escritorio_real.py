#!/usr/bin/env python3
"""Drives the built program in a real window against the simulated board on a pseudo-terminal.

Usage: escritorio_real.py PROGRAM_DIRECTORY. Needs Xvfb, openbox, xdotool, xprop and ImageMagick's import. On a failure
a picture of the screen stays in the current directory."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

BUTTON_X, BUTTON_Y = [24, 65, 106, 147, 188, 229], 43  # middles of the toolbar buttons, from the window's corner
MENU_X = {"Ver": 79, "Memoria Flash": 226, "Upload": 306}


def wait(what, condition):
    end = time.monotonic() + 60.0
    while time.monotonic() < end:
        if found := condition():
            return found
        time.sleep(0.02)
    raise AssertionError(f"waited a minute in vain for {what}")


def image_of(path):
    """What the chip must hold after programming this S-record file, reckoned without the program's code."""
    flash = bytearray(b"\xff" * 0x40000)
    for line in (line for line in path.read_text().split() if line[1] in "123"):
        width = 2 + 2 * int(line[1])
        address, data = int(line[4:4 + width], 16), bytes.fromhex(line[4 + width:-2])
        flash[address:address + len(data)] = data
    flash[0x400:0x420] = bytes(32)
    return bytes(flash)


class Bench:
    def __init__(self, source):
        self.started, self.dir = [], pathlib.Path(tempfile.mkdtemp(prefix="morvane-"))
        self.home, self.trace, self.flash = (self.dir / name for name in ("programa", "linea.txt", "flash.bin"))
        shutil.copytree(source, self.home, ignore=shutil.ignore_patterns("COM*"))
        (self.home / "SETTINGS.TXT").write_bytes(b'"115200","n","8","1"\r\n"COM1"\r\n')

    def begin(self):
        screen = self.start(["Xvfb", "-displayfd", "1", "-screen", "0", "1024x768x24"], subprocess.PIPE)
        os.environ.update(DISPLAY=":" + screen.stdout.readline().decode().strip(), XDG_RUNTIME_DIR=str(self.dir),
                          HOME=str(self.dir), QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8")
        self.start(["openbox"])
        wait("the window manager", lambda: "id" in self.ask("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))
        port = self.home / "puertos/COM1"
        self.start([self.home / "puente", "--enlace", port, "--baudios", "115200", "--flash", self.flash, "--traza",
                    self.trace])
        wait("the board's link", port.exists)
        self.program = self.start([self.home / "morvane"])
        self.main = wait("the main window", lambda: self.windows("Morvane"))[0]

    def start(self, command, out=subprocess.DEVNULL):
        self.started.append(subprocess.Popen(command, stdout=out, stderr=subprocess.DEVNULL))
        return self.started[-1]

    def close(self):
        for process in reversed(self.started):
            process.terminate()
            process.wait(10)
        shutil.rmtree(self.dir)

    @staticmethod
    def ask(*command):
        return subprocess.run(list(map(str, command)), capture_output=True, text=True).stdout.split()

    def xdotool(self, *arguments):
        return self.ask("xdotool", *arguments)

    def windows(self, title):
        return self.xdotool("search", "--onlyvisible", "--name", f"^{title}$")

    def commands(self):
        return [line.split("<STX>")[1].split("<ETX>")[0][:-2] for line in self.trace.read_text().splitlines()
                if " > <STX>" in line]

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
    assert groups == ["g%06X%s" % (a, flash[a:a + 4].hex().upper()) for a in range(0, 0x13B2, 4)]
    journal = (bench.home / "unidades/c/Datos/TORVAX-m68k/memoria.txt").read_bytes().split(b"\r\n")
    assert [line[1:-3].decode() for line in journal[:-1]] == groups
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


bench = Bench(pathlib.Path(sys.argv[1]).resolve())
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
