#!/usr/bin/env python3
"""Drives the built program in a real window against the simulated board on a pseudo-terminal.

Usage: escritorio_real.py PROGRAM_DIRECTORY. Needs Xvfb, openbox, xdotool and ImageMagick's import. On a failure a
picture of the screen stays in the current directory.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

# Middle of each toolbar button, in pixels from the window's corner.
BUTTON_X, BUTTON_Y = [24, 65, 106, 147, 188, 229], 43


def wait(what, condition, seconds=20.0):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        found = condition()
        if found:
            return found
        time.sleep(0.02)
    raise AssertionError(f"waited {seconds} s in vain for {what}")


def image_of(path):
    """What the chip must hold after programming this S-record file, reckoned without the program's code."""
    flash, marked = bytearray(b"\xff" * 0x40000), []
    for line in path.read_text().split():
        if line[1] not in "123":
            continue
        width = 2 + 2 * int(line[1])
        address, data = int(line[4:4 + width], 16), bytes.fromhex(line[4 + width:-2])
        data += b"\xff" * (-len(data) % 4)
        flash[address:address + len(data)] = data
        marked += [address, address + len(data) - 1]
    flash[0x400:0x420] = bytes(32)
    return bytes(flash), min(marked) // 4 * 4, max(marked)


class Bench:
    def __init__(self, source):
        self.dir = pathlib.Path(tempfile.mkdtemp(prefix="morvane-"))
        self.home = self.dir / "programa"
        shutil.copytree(source, self.home, ignore=shutil.ignore_patterns("COM*"))
        (self.home / "SETTINGS.TXT").write_bytes(b'"115200","n","8","1"\r\n"COM1"\r\n')
        self.started = []
        self.trace, self.flash = self.dir / "linea.txt", self.dir / "flash.bin"

    def begin(self):
        read, write = os.pipe()
        self.start(["Xvfb", "-displayfd", str(write), "-screen", "0", "1024x768x24"], pass_fds=[write])
        os.close(write)
        os.environ.update(DISPLAY=":" + os.read(read, 16).decode().strip(), XDG_RUNTIME_DIR=str(self.dir),
                          HOME=str(self.dir), QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8")
        self.start(["openbox"])
        wait("the window manager", lambda: "window id" in subprocess.run(
            ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], capture_output=True, text=True).stdout)
        self.start([self.home / "puente", "--enlace", self.home / "puertos/COM1", "--baudios", "115200", "--flash",
                    self.flash, "--traza", self.trace])
        wait("the board's link", (self.home / "puertos/COM1").exists)
        self.program = self.start([self.home / "morvane"])
        self.main = wait("the main window", lambda: self.windows("^Morvane$"))[0]

    def start(self, command, **more):
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **more)
        self.started.append(process)
        return process

    def close(self):
        for process in reversed(self.started):
            process.terminate()
            process.wait(10)
        shutil.rmtree(self.dir)

    @staticmethod
    def xdotool(*arguments):
        return subprocess.run(["xdotool", *map(str, arguments)], capture_output=True, text=True).stdout.split()

    def windows(self, title):
        return self.xdotool("search", "--onlyvisible", "--name", title)

    def commands(self):
        return [line.split("<STX>")[1].split("<ETX>")[0][:-2] for line in self.trace.read_text().splitlines()
                if " > <STX>" in line]

    def press(self, button):
        self.xdotool("mousemove", "--window", self.main, BUTTON_X[button - 1], BUTTON_Y, "click", 1)

    def answer(self, title, seconds=60.0):
        """Waits for a box with this title besides the main window, and presses Enter in it."""
        box = wait(f"a box titled {title}", lambda: [w for w in self.windows(f"^{title}$") if w != self.main], seconds)
        wait("the box to be in front", lambda: self.xdotool("getactivewindow")[:1] == box[:1])
        self.xdotool("key", "Return")
        wait("the box to close", lambda: box[0] not in self.windows(f"^{title}$"))

    def open_file(self, name):
        self.press(1)
        dialog = wait("the open dialog", lambda: self.windows("^Abrir$"))
        wait("the dialog to be in front", lambda: self.xdotool("getactivewindow")[:1] == dialog[:1])
        self.xdotool("type", "--delay", 1, str(self.home / "muestras" / name))
        self.xdotool("key", "Return")
        self.answer("Morvane")


def scenario(bench):
    wait("the probe", lambda: bench.commands() == ["A", "D"])

    bench.press(3)
    bench.answer("Atención")
    assert bench.commands() == ["A", "D"], "nothing goes out without a program"

    sample = bench.home / "muestras/demo-s1.s19"
    bench.open_file(sample.name)
    bench.press(3)
    bench.answer("Morvane")
    wait("the closing D", lambda: bench.commands()[-1] == "D")
    flash, start, top = image_of(sample)
    groups = [c for c in bench.commands() if c[0] == "g"]
    assert groups == ["g%06X%s" % (a, flash[a:a + 4].hex().upper()) for a in range(start, top + 1, 4)]
    journal = (bench.home / "unidades/c/Datos/TORVAX-m68k/memoria.txt").read_bytes().split(b"\r\n")
    assert [line[1:-3].decode() for line in journal[:-1]] == groups
    wait("the chip's flash on the disk", lambda: bench.flash.exists() and bench.flash.read_bytes() == flash)

    bench.press(2)
    bench.answer("Atención")
    wait("the erased flash on the disk", lambda: bench.flash.read_bytes() == b"\xff" * 0x40000)

    bench.press(1)
    wait("the question", lambda: bench.windows("^Atención$"))
    bench.xdotool("key", "n")
    wait("the open dialog", lambda: bench.windows("^Abrir$"))
    bench.xdotool("key", "Escape")
    wait("the dialog to close", lambda: not bench.windows("^Abrir$"))
    bench.open_file("completa-256k.s19")
    before = len(bench.commands())
    bench.press(3)
    wait("the run", lambda: len(bench.commands()) > before + 300)
    bench.press(6)
    bench.answer("Morvane")
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
    print("the program did what it should")
except BaseException:
    subprocess.run(["import", "-window", "root", "escritorio_real.png"], check=False)
    if bench.trace.exists():
        print("the board took:", " ".join(bench.commands()[-30:]))
    raise
finally:
    bench.close()
