"""Rows about work done in the processor: instructions, growth, loading."""
import json
import os
import pathlib
import re
import subprocess
import tempfile

import contar
from aparatos import BIN, ROOT, SAMPLE, Row, at_most, median

KEPT = ROOT / "medidas/instrucciones.json"
NAMES = {"palabra": "word programmed", "bloque": "block read", "byte_cargado": "byte loaded",
         "fila_de_volcado": "row of a dump", "fila_de_comparacion": "row of a comparison"}


def compiler():
    """Name and version, as the build knows them."""
    found = sorted((ROOT / "build/CMakeFiles").glob("*/CMakeCXXCompiler.cmake"))[-1].read_text()
    return " ".join(re.search(rf'CMAKE_CXX_COMPILER_{what} "(.*)"', found)[1] for what in ("ID", "VERSION"))


def instructions(keep):
    found, kept, version = contar.units(BIN / "instrucciones"), json.loads(KEPT.read_text()), compiler()
    if keep:
        kept[version] = {name: round(value) for name, value in found.items()}
        KEPT.write_text(json.dumps(kept, indent=2) + "\n")
    rows = []
    for name, value in found.items():
        wanted = kept.get(version, {}).get(name)
        good = None if wanted is None else abs(value / wanted - 1) <= contar.LEEWAY
        target = f"{wanted} ± 5 %" if wanted else "none kept"
        rows.append(Row(f"instructions: {name}", f"{value:.0f}", target, good, version))
    return rows


def growth():
    return [at_most(f"growth from 16 to 256 KiB: {NAMES[name]}", max(costs) / min(costs), 1.05, "{:.3f}",
                    ", ".join(f"{cost:.1f}" for cost in costs) + " instructions")
            for name, costs in contar.growth(BIN / "instrucciones").items()]


def processor_time(command):
    """Seconds of processor time of a whole process, and what it printed."""
    read, write = os.pipe()
    process = subprocess.Popen(list(map(str, command)), stdout=write, stderr=subprocess.DEVNULL)
    os.close(write)
    with os.fdopen(read) as out:
        printed = out.read()
    _, status, used = os.wait4(process.pid, 0)
    process.returncode = status
    assert status == 0, f"{command[0]} has failed"
    return used.ru_utime + used.ru_stime, printed


def large_file(path):
    """80 MB of the sample's data lines, over and over."""
    lines = b"".join(line for line in SAMPLE.read_bytes().splitlines(True) if line.startswith(b"S2"))
    path.write_bytes(lines * (80_000_000 // len(lines) + 1))


def against_others(times):
    with tempfile.TemporaryDirectory(prefix="morvane-medidas-") as name:
        work = pathlib.Path(name)
        large, empty, out = work / "grande.s19", work / "vacio.s19", work / "imagen.bin"
        large_file(large)
        empty.write_bytes(b"")
        commands = {"us": [BIN / "carga", large],
                    "objcopy": ["objcopy", "-I", "srec", "-O", "binary", large, out],
                    "srec_cat": ["srec_cat", "-disable_sequence_warning", "-redundant_bytes=ignore",
                                 "-contradictory_bytes=ignore", large, "-motorola", "-o", out, "-binary"]}
        taken = {who: [] for who in commands}
        for _ in range(times):
            for who, command in commands.items():
                seconds, printed = processor_time(command)
                taken[who].append(seconds)
                if who == "us":
                    ours = int(printed)
        more = (ours - int(processor_time([BIN / "carga", empty])[1])) / 1024
    medians = {who: median(seconds) for who, seconds in taken.items()}
    rows = [Row(f"loading 80 MB: {who} ÷ this program", f"{medians[who] / medians['us']:.1f}", f"≥ {least}",
                medians[who] / medians["us"] >= least, f"{medians[who]:.3f} s against {medians['us']:.3f} s")
            for who, least in (("objcopy", 2), ("srec_cat", 8))]
    return [*rows, at_most("loading 80 MB: memory above an empty file (MB)", more, 16, "{:.1f}")]


def rows(length, keep):
    return [*instructions(keep), *growth(), *against_others((1, 3, 7)[length])]
