"""What the measures share: a table row, a program directory, a board, a screen."""
import contextlib
import dataclasses
import os
import pathlib
import signal
import statistics
import subprocess
import sys
import tempfile
import time

from pantalla import Screen

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.append(str(ROOT / "herramientas"))
import directorio  # noqa: E402

BIN = ROOT / "build/bin"
SAMPLE = ROOT / "samples/completa-256k.s19"
median = statistics.median
# How long to measure; an index into triples of how often.
SHORT, USUAL, LONG = range(3)
# Processors that others may take while times are judged.
REST = 0.3


@dataclasses.dataclass
class Row:
    """`good` is None where there is nothing to judge; `note` then may say why. `timed`: others on the machine change it."""
    name: str
    figure: str
    target: str
    good: bool | None
    note: str = ""
    timed: bool = False

    @property
    def verdict(self):
        return {True: "pass", False: "FAIL", None: "noted"}[self.good]


def at_most(name, value, limit, form="{:.2f}", note="", timed=False):
    return Row(name, form.format(value), "≤ " + form.format(limit), value <= limit, note, timed)


def used_by_others():
    """Seconds of processor time since the machine's start, but for this process and those it has waited for."""
    user, nice, system, _, _, *rest = map(int, pathlib.Path("/proc/stat").read_text().split("\n")[0].split()[1:9])
    return (user + nice + system + sum(rest)) / os.sysconf("SC_CLK_TCK") - sum(os.times()[:4])


def judged_in_rest(measure):
    """The rows of a measure. Where others kept too much of the machine meanwhile, no time counts as a failure."""
    begin, used = time.monotonic(), used_by_others()
    rows = measure()
    others = (used_by_others() - used) / (time.monotonic() - begin)
    for row in rows:
        if others > REST and row.timed and row.good is False:
            row.good, row.note = None, f"the machine is too busy to judge: others take {others:.1f} processors; {row.note}"
    return rows


@contextlib.contextmanager
def running(command, **options):
    """A process that is ended by SIGTERM when the block is left."""
    process = subprocess.Popen(list(map(str, command)), stderr=subprocess.DEVNULL, **options)
    try:
        yield process
    finally:
        process.send_signal(signal.SIGTERM)
        try:
            process.wait(10)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


@contextlib.contextmanager
def program_directory():
    """A directory of the program's own for one run, without a port."""
    with tempfile.TemporaryDirectory(prefix="morvane-medidas-") as name:
        yield directorio.make(ROOT / "build/morvane", pathlib.Path(name) / "programa")


def wait_for(what, condition, seconds=30):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain for {what}")
        time.sleep(0.01)


@contextlib.contextmanager
def board(home, program, *options, **popen):
    """A board as COM1 of a program directory."""
    port = home / "puertos/COM1"
    where = {"cronista": [port], "puente": ["--enlace", port]}[program]
    popen.setdefault("stdout", subprocess.DEVNULL)
    with running([BIN / program, *where, *options], **popen) as process:
        try:
            wait_for("the board", lambda: os.path.lexists(port))
            yield process
        finally:
            if os.path.lexists(port):
                port.unlink()


@contextlib.contextmanager
def screen():
    """An X display of its own, without a window manager, for which the environment is then set."""
    before = dict(os.environ)
    with running(["Xvfb", "-displayfd", "1", "-screen", "0", "1024x768x24"], stdout=subprocess.PIPE) as server:
        name = ":" + server.stdout.readline().decode().strip()
        os.environ.update(DISPLAY=name, QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8")
        try:
            yield Screen(name)
        finally:
            os.environ.clear()
            os.environ.update(before)


def output_of(*command, seconds=300):
    """Lines of a program that must succeed, split into words."""
    done = subprocess.run(list(map(str, command)), capture_output=True, text=True, timeout=seconds)
    assert done.returncode == 0, f"{command[0]}: {done.stderr[-500:]}"
    return [line.split() for line in done.stdout.splitlines()]
