"""A bench for the built program: a display, the board and the program, each a process in a directory of its own."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import time

PATIENCE = 60.0


def wait(what, condition, patience=PATIENCE):
    end = time.monotonic() + patience
    while time.monotonic() < end:
        if found := condition():
            return found
        time.sleep(0.02)
    raise AssertionError(f"waited {patience:.0f} s in vain for {what}")


def image_of(path):
    """What the chip must hold after programming this S-record file, reckoned without the program's code."""
    flash = bytearray(b"\xff" * 0x40000)
    for line in (line for line in path.read_text().split() if line[1] in "123"):
        width = 2 + 2 * int(line[1])
        address, data = int(line[4:4 + width], 16), bytes.fromhex(line[4 + width:-2])
        flash[address:address + len(data)] = data
    flash[0x400:0x420] = bytes(32)
    return bytes(flash)


def groups_of(flash, last):
    """The commands that write `flash` up to the address `last`."""
    return ["g%06X%s" % (a, flash[a:a + 4].hex().upper()) for a in range(0, last + 1, 4)]


class Bench:
    """Its own copy of the program's directory `source`; what is started in it ends with it."""

    def __init__(self, source):
        self.started, self.dir = [], pathlib.Path(tempfile.mkdtemp(prefix="morvane-"))
        self.home, self.trace, self.flash = (self.dir / name for name in ("programa", "linea.txt", "flash.bin"))
        self.port, self.errors = self.home / "puertos/COM1", self.dir / "errores.txt"
        self.journal = self.home / "unidades/c/Datos/TORVAX-m68k/memoria.txt"
        self.board = self.program = None
        shutil.copytree(source, self.home, ignore=shutil.ignore_patterns("COM*", "MENU.TXT", "memoria.txt"))
        (self.home / "SETTINGS.TXT").write_bytes(b'"115200","n","8","1"\r\n"COM1"\r\n')

    def begin_display(self):
        display, _ = self.start_and_hear(["Xvfb", "-displayfd", "1", "-screen", "0", "1024x768x24"])
        os.environ.update(DISPLAY=":" + display, XDG_RUNTIME_DIR=str(self.dir), HOME=str(self.dir),
                          QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8")
        self.start(["openbox"])
        wait("the window manager", lambda: "id" in self.ask("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))

    def begin_board(self, *options):
        said, self.board = self.start_and_hear([self.home / "puente", "--enlace", self.port, "--flash", self.flash,
                                                "--traza", self.trace, *options])
        self.line = said.split()[1]

    def begin_program(self, *before, **how):
        with open(self.errors, "ab") as errors:
            self.program = self.start([*before, self.home / "morvane"], stderr=errors, **how)

    def start(self, command, **how):
        how = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, "stdin": subprocess.DEVNULL} | how
        self.started.append(subprocess.Popen(list(map(str, command)), **how))
        return self.started[-1]

    def start_and_hear(self, command):
        """The first line that a process says, and the process, which says nothing more."""
        process = self.start(command, stdout=subprocess.PIPE)
        with process.stdout as out:
            return out.readline().decode().strip(), process

    def end(self, process, how="terminate"):
        """Ends one of the started processes and gives its return code."""
        if process.poll() is None:
            getattr(process, how)()
        self.started.remove(process)
        return process.wait(10)

    def close(self):
        for process in reversed(list(self.started)):
            try:
                self.end(process)
            except subprocess.TimeoutExpired:
                process.kill()
        shutil.rmtree(self.dir)

    @staticmethod
    def ask(*command):
        return subprocess.run(list(map(str, command)), capture_output=True, text=True).stdout.split()

    def exchange(self):
        """What passed on the line since the board began, as ('>' or '<', text without frame and checksum)."""
        lines = self.trace.read_text(errors="replace").splitlines() if self.trace.exists() else []
        return [(line.split()[1], line.split("<STX>")[-1].split("<ETX>")[0][:-2]) for line in lines if "<ETX>" in line]

    def commands(self):
        return [text for direction, text in self.exchange() if direction == ">"]

    def journal_lines(self):
        """The commands in the journal; a line that is not whole is not among them."""
        text = self.journal.read_bytes() if self.journal.exists() else b""
        return [line[1:-3].decode() for line in text.split(b"\r\n")[:-1]]

    def processor_time(self):
        """Seconds that the program has computed."""
        fields = pathlib.Path(f"/proc/{self.program.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def port_is_open(self):
        """Whether the program holds a terminal open."""
        def target(fd):
            try:
                return os.readlink(fd)
            except FileNotFoundError:
                return ""
        return any(target(fd).startswith("/dev/pts/") for fd in pathlib.Path(f"/proc/{self.program.pid}/fd").iterdir())
