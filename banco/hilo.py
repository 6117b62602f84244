"""Rows about the line: the program against a loop that does the least for the same frames, in alternating blocks."""
import subprocess

from aparatos import BIN, Row, at_most, board, median, output_of, program_directory

# Characters on the wire, both ways, for one unit: a word is "a" and "g" with their replies, a block one "e".
WIRE = {"grabar": 34, "leer": 82}
NAMES = {"grabar": "programming", "leer": "reading"}
SINCE_REPLY, SINCE_FRAME = 1, 2
# A bare loop that loses this share of the wire has waited for a processor. Its pair of blocks does not count, and with
# more than half of the pairs gone the row says nothing of the program.
BUSY = 0.10


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


def pairs(work, baud, blocks, frames, column):
    """Medians of a block of the program and of its neighbour of the bare loop, in microseconds."""
    medians = [median(per_unit(block, work, column)) for block in stamps(work, baud, blocks, frames)]
    pair = [medians[i:i + 2] for i in range(0, len(medians) - 1, 2)]
    return [p if i % 2 == 0 else p[::-1] for i, p in enumerate(pair)]


def share(work, baud, blocks):
    found = pairs(work, baud, blocks, 200 if work == "grabar" else 64, SINCE_REPLY)
    wire = WIRE[work] * 10e6 / baud
    calm = [pair for pair in found if pair[1] <= BUSY * wire]
    name = f"share of the wire, {NAMES[work]} at {baud:,} baud"
    if len(calm) * 2 < len(found):
        return Row(name, "-", "≤ 1.0200", None, "the machine is too busy to judge")
    more = median(program - bare for program, bare in calm)
    note = f"{more:+.1f} µs on {wire:.0f} µs; bare {median(b for _, b in calm):.0f} µs; {len(calm)} of {len(found)} pairs"
    return at_most(name, 1 + more / wire, 1.02, "{:.4f}", note)


def unpaced(work, blocks):
    found = pairs(work, 0, blocks, 200 if work == "grabar" else 64, SINCE_FRAME)
    program, bare = median(p for p, _ in found), median(b for _, b in found)
    ratio = median(p / b for p, b in found)
    return at_most(f"without pace, {NAMES[work]}, ÷ bare loop", ratio, 1.5, note=f"{program:.0f} µs against {bare:.0f} µs")


def alive():
    """The 99.9th percentile of the stretches between two passes of the pump while it programs and reads."""
    rows = []
    for work in WIRE:
        with program_directory() as home, board(home, "cronista", 115200):
            lines = output_of(BIN / "linea", home, work, 3, 200, "pasadas")
        long = sorted((int(value) / 1e6 for kind, value in lines if kind == "l"), reverse=True)
        passes = next(int(value) for kind, value in lines if kind == "n")
        longest = [*long, 0.1]  # shorter ones are not listed
        note = f"{passes} passes, the longest {longest[0]:.1f} ms"
        value = longest[min(passes // 1000, len(long))]
        rows.append(at_most(f"between two passes while {NAMES[work]}, 99.9 % (ms)", value, 20, "{:.1f}", note))
    return rows


def rows(long):
    found = []
    for baud in (57600, 115200):
        for work in WIRE:
            found.append(share(work, baud, 40 if long else 10))
    for work in WIRE:
        found.append(unpaced(work, 400 if long else 100))
    return found + alive()


