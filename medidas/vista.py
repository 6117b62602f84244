"""Rows about what the user sees: windows, the start, rest."""
import collections
import pathlib
import time

from aparatos import BIN, Row, at_most, board, median, output_of, program_directory, running, screen


def showing(times):
    with program_directory() as home, screen():
        found = collections.defaultdict(list)
        for name, value in output_of(BIN / "ventanas", home, times):
            found[name].append(int(value))
    main, dump, comparison = (median(found[name]) / 1e6 for name in ("principal", "volcado", "comparacion"))

    def to_main(name):
        return median(shown / first for shown, first in zip(found[name], found["principal"]))
    return [at_most("full dump painted ÷ main window's first paint", to_main("volcado"), 1,
                    note=f"{dump:.1f} ms against {main:.1f} ms", timed=True),
            at_most("largest comparison painted ÷ main window's", to_main("comparacion"), 3, note=f"{comparison:.1f} ms",
                    timed=True),
            at_most("largest comparison: memory (MB)", max(found["memoria"]) / 1024, 50, "{:.1f}"),
            at_most("between two passes while that list fills (ms)", comparison, 20, "{:.1f}",
                    "from click to paint, taken as one stretch", timed=True)]


def start_time(monitor, command):
    """Milliseconds from the start of a program to its first window, and the window's size."""
    monitor.forget()
    begin = time.monotonic()
    with running(command):
        moment, size = monitor.next_window()
    return (moment - begin) * 1000, size


def start(pairs):
    with program_directory() as home, board(home, "puente", "--sin-ritmo"), screen() as monitor:
        program = [home / "morvane"]
        _, size = start_time(monitor, program)
        empty = [BIN / "vacia", *size]
        found = [(start_time(monitor, program)[0], start_time(monitor, empty)[0]) for _ in range(pairs)]
    ours, bare = (median(column) for column in zip(*found))
    return at_most("start to visible window ÷ empty window", median(a / b for a, b in found), 2.5,
                   note=f"{ours:.0f} ms against {bare:.0f} ms", timed=True)


def switches(pid):
    """How often the threads of a process have been put on a processor."""
    total = 0
    for status in pathlib.Path(f"/proc/{pid}/task").glob("*/status"):
        total += sum(int(line.split()[1]) for line in status.read_text().splitlines() if "ctxt_switches" in line)
    return total


def idle(seconds):
    """Bursts of activity, with rest between them, of the program when nobody does anything."""
    with program_directory() as home, board(home, "puente", "--sin-ritmo"), screen() as monitor:
        with running([home / "morvane"]) as program:
            monitor.next_window()
            time.sleep(3)
            bursts, quiet, before, end = 0, True, switches(program.pid), time.monotonic() + seconds
            while time.monotonic() < end:
                time.sleep(0.05)
                now = switches(program.pid)
                bursts += quiet and now != before
                quiet, before = now == before, now
    # A stretch of n seconds may hold n + 1 of the clock's ticks.
    return Row(f"idle: wake-ups in {seconds} s", str(bursts), f"≤ {seconds + 1}", 0 < bursts <= seconds + 1,
               "the clock's, one a second")


def rows(length):
    return [*showing((10, 20, 20)[length]), start((8, 20, 60)[length]), idle((5, 10, 30)[length])]
