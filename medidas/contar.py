#!/usr/bin/env python3
"""Instructions that the program executes for its smallest pieces of work, counted by valgrind's callgrind.

Usage: contar.py PROGRAM KEPT.json COMPILER [--keep]. PROGRAM is `instrucciones`. Its functions `medida_...` count but
for what runs inside of `aparte_...`, the simulated board's share: both toggle the collection. What costs once falls out
of the difference between two sizes. Ends with 1 if a figure is more than 5 % off the one kept for this COMPILER, with 77
(skipped) without valgrind; --keep writes the figures down instead."""
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

MEASURES = ["grabar", "leer", "cargar", "volcado", "comparacion"]
LEEWAY = 0.05
IDLE_LOOKS = 8  # by which the two last runs of `unidad` differ, in each of two waits for a word


def run(program, what):
    """Name, units and instructions of each measure, in order."""
    with tempfile.TemporaryDirectory() as work:
        out = pathlib.Path(work) / "out"
        command = ["valgrind", "--tool=callgrind", f"--callgrind-out-file={out}", "--collect-atstart=no",
                   "--toggle-collect=medida_*", "--toggle-collect=aparte_*"]
        command += [f"--dump-after=medida_{name}" for name in MEASURES]
        done = subprocess.run([*command, program, what], capture_output=True, text=True, check=True)
        measures = []
        for number, line in enumerate(done.stdout.splitlines(), 1):
            name, units = line.split()
            cost = re.search(r"^totals: (\d+)", pathlib.Path(f"{out}.{number}").read_text(), re.M)
            measures.append((name, int(units), int(cost[1])))
        return measures


def units(program):
    """Instructions for one word, one block read, and one pass of a wait that finds nothing."""
    small_word, small_block, word, block, few, many = run(program, "unidad")

    def slope(small, large):
        return (large[2] - small[2]) / (large[1] - small[1])
    return {"word": slope(small_word, word), "block": slope(small_block, block),
            "idle pass": (many[2] - few[2]) / (many[1] * 2 * IDLE_LOOKS)}


def growth(program):
    """By name, the instructions for one unit at 16, 64 and 256 KiB."""
    sizes = {}
    for name, count, cost in run(program, "crecimiento"):
        sizes.setdefault(name, []).append(cost / count)
    return sizes


def compare(found, kept):
    """Pairs of a sentence and whether it holds, one for each figure."""
    return [(f"{name}: {value:.0f} instructions, kept {kept[name]}", abs(value / kept[name] - 1) <= LEEWAY)
            for name, value in found.items()]


def main():
    program, path, compiler = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3]
    if not shutil.which("valgrind"):
        sys.exit(77)
    found, kept = units(program), json.loads(path.read_text()) if path.exists() else {}
    if "--keep" in sys.argv:
        kept[compiler] = {name: round(value) for name, value in found.items()}
        path.write_text(json.dumps(kept, indent=2) + "\n")
    if compiler not in kept:
        print(f"nothing kept for {compiler}:", {name: round(value) for name, value in found.items()})
        return
    verdicts = compare(found, kept[compiler])
    for sentence, _ in verdicts:
        print(sentence)
    sys.exit(0 if all(good for _, good in verdicts) else 1)


if __name__ == "__main__":
    main()
