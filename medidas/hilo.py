"""Rows about the line: the program against a loop that does the least for the same frames, in alternating blocks."""
import subprocess

from aparatos import BIN, at_most, board, median, output_of, program_directory

# Characters on the wire, both ways, for one unit: a word is "a" and "g" with their replies, a block one "e".
WIRE = {"grabar": 34, "leer": 82}
NAMES = {"grabar": "programming", "leer": "reading"}
SINCE_REPLY, SINCE_FRAME = 1, 2
# Whoever takes longer than this to answer, in microseconds, has waited for a processor that others held: such units are
# left out on both sides. With fewer than half of them left a row says nothing of the program.
STARVED, ENOUGH = 1000, 0.5


def stamps(work, baud, blocks, frames):
    """By block, the board's stamps: letter, microseconds since its last reply, and since the frame before."""
    with program_directory() as home:
        with board(home, "cronista", baud, stdout=subprocess.PIPE, text=True) as process:
            output_of(BIN / "linea", home, work, blocks, frames)
            process.terminate()
            lines = process.communicate()[0].splitlines()
    found = []
    for line in lines:
        letter, since_reply, since_frame = line.split()
        if letter == "A":
            found.append([])
        found[-1].append((letter, int(since_reply) / 1000, int(since_frame) / 1000))
    return found[1:]  # the first opening is the probe at the start


def per_unit(block, work, column):
    """For each unit but the first: the sum of the frames it is made of."""
    if work == "leer":
        return [stamp[column] for stamp in block if stamp[0] == "e"][1:]
    words = [i for i, stamp in enumerate(block) if stamp[0] == "g"]
    return [block[i - 1][column] + block[i][column] for i in words[1:]]


def pairs(work, baud, blocks, column):
    """Medians of a block of the program and of its neighbour of the bare loop, in microseconds, and which part of all
    units they are of."""
    every = [per_unit(block, work, column)
             for block in stamps(work, baud, blocks, 200 if work == "grabar" else 64)]
    kept = [[value for value in block if value < STARVED] for block in every]
    part = sum(map(len, kept)) / sum(map(len, every))
    pair = [kept[i:i + 2] for i in range(0, len(kept) - 1, 2)]
    pair = [p if i % 2 == 0 else p[::-1] for i, p in enumerate(pair)]
    return [(median(program), median(bare)) for program, bare in pair if program and bare], part


def judged(row, part):
    if part < ENOUGH:
        row.good, row.note = None, f"the machine is too busy to judge: {part:.0%} of the units count; " + row.note
    elif part < 0.99:
        row.note += f"; {part:.0%} of the units count"
    return row


def share(work, baud, blocks):
    found, part = pairs(work, baud, blocks, SINCE_REPLY)
    wire = WIRE[work] * 10e6 / baud
    more, bare = median(program - bare for program, bare in found), median(bare for _, bare in found)
    return judged(at_most(f"share of the wire, {NAMES[work]} at {baud:,} baud", 1 + more / wire, 1.02, "{:.4f}",
                          f"{more:+.1f} µs on {wire:.0f} µs; bare {bare:.0f} µs"), part)


def unpaced(work, blocks):
    found, part = pairs(work, 0, blocks, SINCE_FRAME)
    program, bare = median(p for p, _ in found), median(b for _, b in found)
    ratio = median(p / b for p, b in found)
    return judged(at_most(f"without pace, {NAMES[work]}, ÷ bare loop", ratio, 1.5,
                          note=f"{program:.0f} µs against {bare:.0f} µs"), part)


def alive(blocks):
    """The 99.9th percentile of the stretches between two passes of the pump while it programs and reads."""
    rows = []
    for work in WIRE:
        with program_directory() as home, board(home, "cronista", 115200):
            lines = output_of(BIN / "linea", home, work, blocks, 200, "pasadas")
        long = sorted((int(value) / 1e6 for kind, value in lines if kind == "l"), reverse=True)
        passes = next(int(value) for kind, value in lines if kind == "n")
        longest = [*long, 0.1]  # shorter ones are not listed
        note = f"{passes} passes, the longest {longest[0]:.1f} ms"
        value = longest[min(passes // 1000, len(long))]
        rows.append(at_most(f"between two passes while {NAMES[work]}, 99.9 % (ms)", value, 20, "{:.1f}", note, timed=True))
    return rows


def rows(length):
    found = []
    for baud in (57600, 115200):
        for work in WIRE:
            found.append(share(work, baud, (4, 10, 40)[length]))
    for work in WIRE:
        found.append(unpaced(work, (30, 100, 400)[length]))
    return found + alive((1, 3, 3)[length])


