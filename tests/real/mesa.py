"""A bench for the built program: a display, the accessibility bus, the board and the program, each a process of its own
in a directory of their own."""
import contextlib
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import time

from accesible import ENABLED, SHOWING, Control, connect, root_of

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "herramientas"))
import directorio  # noqa: E402

BLANK = b"\xff" * 0x40000
MARKS = "✓", "⚠", "✗"


def groups_of(flash):
    """The commands that write `flash` up to the last byte that is not blank."""
    return ["g%06X%s" % (a, flash[a:a + 4].hex().upper()) for a in range(0, len(flash.rstrip(b"\xff")), 4)]


def record(address, data):
    body = bytes([len(data) + 4]) + address.to_bytes(3, "big") + data
    return f"S2{body.hex().upper()}{~sum(body) & 0xFF:02X}\n"


class Box:
    """An open message box."""

    def __init__(self, bench, window):
        self.bench, self.window, self.title = bench, window, window.name()
        labels = [label.name() for label in window.below("label")]
        # What is known beside the text stands under it, behind a mark.
        self.text = "".join(label for label in labels if not label.startswith(MARKS))
        self.details = "".join(label for label in labels if label.startswith(MARKS))
        self.buttons = {button.name(): button for button in window.below("push button")}

    def answer(self, button=None):
        """Presses a button, the first one if none is named, and waits until the box is gone."""
        self.buttons[button or next(iter(self.buttons))].press()
        self.bench.wait(f"the box {self.text!r} to close", lambda: not self.window.has(SHOWING))


class Bench:
    """Its own copy of the program's directory `source`; what is started in it ends with it."""

    def __init__(self, source, name):
        self.name, self.started, self.waited = name, [], {}
        self.dir = pathlib.Path(tempfile.mkdtemp(prefix="morvañe-"))
        self.home, self.trace, self.flash = (self.dir / name for name in ("programa", "linea.txt", "flash.bin"))
        self.port, self.errors = self.home / "puertos/COM1", self.dir / "errores.txt"
        self.history, self.journal = self.home / "MENU.TXT", self.home / "unidades/c/Datos/TORVAX-m68k/memoria.txt"
        self.board = self.program = None
        directorio.make(source, self.home)

    def put_firmware(self, *lengths):
        """Puts files of so many bytes into the history, and keeps what the chip must hold after each."""
        self.files, self.images = [self.dir / f"{number}.s19" for number in range(len(lengths))], []
        for file, length in zip(self.files, lengths):
            data = random.Random(length).randbytes(length)
            rows = (data[a:a + 32] for a in range(0, length, 32))
            file.write_text("".join(record(32 * number, row) for number, row in enumerate(rows)))
            image = bytearray(data + BLANK[length:])
            image[0x400:0x420] = bytes(32)
            self.images.append(bytes(image))
        self.history.write_bytes("".join(f'"{file}"\r\n' for file in self.files).encode())

    def __enter__(self):
        return self

    def __exit__(self, failure, *_):
        if failure and "DISPLAY" in os.environ:
            self.ask("import", "-window", "root", f"{self.name}_real.png")
            print("the board took:", *self.commands()[-30:])
        for process in reversed(list(self.started)):
            try:
                self.end(process)
            except subprocess.TimeoutExpired:
                process.kill()
        shutil.rmtree(self.dir)

    def begin_windows(self):
        """A display with a window manager, and the buses."""
        display = self.hear("Xvfb", "-noreset", "-displayfd", "1", "-screen", "0", "1024x768x24")
        session = self.hear("dbus-daemon", "--session", "--nofork", "--print-address")
        os.environ.update(DISPLAY=":" + display, XDG_RUNTIME_DIR=str(self.dir), HOME=str(self.dir), LC_ALL="C.UTF-8",
                          QT_QPA_PLATFORM="xcb", DBUS_SESSION_BUS_ADDRESS=session, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.start("openbox")
        self.start("/usr/libexec/at-spi-bus-launcher", "--launch-immediately")
        self.wait("the window manager", lambda: "id" in self.ask("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))
        launcher = Control(connect(session), "org.a11y.Bus", "/org/a11y/bus")
        self.bus = connect(self.wait("the bus", lambda: launcher.call("org.a11y.Bus", "GetAddress")))

    def begin_board(self, options="--sin-ritmo"):
        self.board, said = directorio.board(self.home, "COM1", "--flash", self.flash, "--traza", self.trace,
                                            *options.split(), start=lambda command, **how: self.start(*command, **how))
        self.line = said.split()[1]
        return said

    def begin_program(self, probes=True):
        """Starts it, and waits until it has probed the board if that is a good one."""
        before = len(self.commands())
        with open(self.errors, "ab") as errors:
            self.program, self.controls = self.start(self.home / "morvane", stderr=errors), {}
        self.root = self.wait("the program on the bus", lambda: root_of(self.bus, self.program.pid))
        assert "WARNING" not in self.errors.read_text(), self.errors.read_text()
        if probes:
            self.wait("the probe", lambda: self.commands()[before:] == ["A", "D"] and self.idle())

    def begin(self, options="--sin-ritmo"):
        """Board and program, instead of those that run, with an erased chip."""
        for process in (self.program, self.board):
            if process in self.started:
                self.end(process, "kill")
        self.flash.unlink(missing_ok=True)
        self.begin_board(options)
        self.begin_program()

    def start(self, *command, **how):
        how = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, "stdin": subprocess.DEVNULL} | how
        self.started.append(subprocess.Popen(list(map(str, command)), **how))
        return self.started[-1]

    def hear(self, *command):
        """Starts a process and gives the first line that it says."""
        with self.start(*command, stdout=subprocess.PIPE).stdout as out:
            return out.readline().decode().strip()

    def end(self, process, how="terminate"):
        """Ends one of the started processes and gives its return code."""
        if process.poll() is None:
            getattr(process, how)()
        self.started.remove(process)
        return process.wait(10)

    def ask(self, *command):
        return subprocess.run(list(map(str, command)), capture_output=True, text=True).stdout.split()

    def clock(self):
        """Seconds, without those in which a process of the bench, or the driver, waited for a processor."""
        for pid in (os.getpid(), *(process.pid for process in self.started)):
            for account in pathlib.Path("/proc").glob(f"{pid}/task/*/schedstat"):
                with contextlib.suppress(OSError):
                    self.waited[account] = int(account.read_text().split()[1]) / 1e9
        return time.monotonic() - sum(self.waited.values())

    def wait(self, what, condition, patience=60.0):
        end = self.clock() + patience
        while not (found := condition()):
            assert self.clock() < end, f"waited {patience:.1f} s in vain for {what}"
            time.sleep(0.02)
        return found

    def exchange(self):
        """What passed on the line since the board began, as ('>' or '<', text without frame and checksum)."""
        text = self.trace.read_text(errors="replace") if self.trace.exists() else ""
        return re.findall(r"^ *\S+ ([<>]) .*<STX>(.*)..<ETX>", text, re.MULTILINE)

    def commands(self, first=""):
        """What the board got; of that what begins so."""
        return [text for direction, text in self.exchange() if direction == ">" and text.startswith(first)]

    def journal_lines(self):
        """The commands in the journal; a line that is not whole is not among them."""
        text = self.journal.read_bytes() if self.journal.exists() else b""
        return [line[1:-3].decode() for line in text.split(b"\r\n")[:-1]]

    def rests(self, seconds=0.6):
        """An idle program computes next to nothing, whatever has happened."""
        account = pathlib.Path(f"/proc/{self.program.pid}/schedstat")
        before = int(account.read_text().split()[0])
        time.sleep(seconds)
        assert int(account.read_text().split()[0]) - before < 1e8 * seconds, "an idle program computes"

    def windows(self, *roles):
        return [w for w in self.root.children() if w.has(SHOWING) and (not roles or w.role() in roles)]

    def control(self, name, *roles):
        """What in the main window is called so or begins so; a button, else a menu entry, if no role is said."""
        if name not in self.controls:
            main = self.wait("the main window", lambda: self.windows("frame"))[0]
            found = [c for c in main.below(*roles or ("push button", "menu item")) if c.name().startswith(name)]
            self.controls[name] = min(found, key=lambda c: (len(c.name()), c.role() == "menu item"))
        return self.controls[name]

    def press(self, name):
        self.control(name).press()

    def activate(self, *then):
        window = self.ask("xdotool", "search", "--onlyvisible", "--name", "^Morvane$")[0]
        self.ask("xdotool", "windowactivate", "--sync", window, *then)

    def close_window(self):
        self.activate("key", "alt+F4")

    def boxes(self):
        return [Box(self, window) for window in self.windows("alert message")]

    def box(self, text, patience=60.0):
        """Waits for a box, and checks what it says."""
        box = self.wait(f"the box {text!r}", self.boxes, patience)[0]
        assert box.text == text, f"a box says {box.text!r} instead of {text!r}"
        return box

    def idle(self):
        """The main window alone is open, it takes commands, and no terminal is open."""
        files = pathlib.Path(f"/proc/{self.program.pid}/fd").iterdir()
        return ({w.role() for w in self.windows()} == {"frame"} and self.control("Borrar Flash").has(ENABLED) and
                not any(os.path.realpath(file).startswith("/dev/pts/") for file in files))

    def do(self, name, text):
        """Presses something, answers the one box that comes, and waits for the end."""
        self.press(name)
        self.box(text).answer()
        self.wait(f"the end of {name}", self.idle)
