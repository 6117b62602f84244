"""Rows about the program of the command line: what its orders cost on the wire, and what it adds to them."""
import contextlib
import json
import os
import subprocess

from aparatos import BIN, at_most, board, median, output_of, program_directory
from hilo import STARVED, judged

FLASH = 0x40000
# A program of 4 KiB and another KiB far behind it, without a word that an erased chip holds anyway.
SPARSE = bytes((i * 37 + 1) % 251 for i in range(4096)), 0x3F000, bytes((i * 11 + 3) % 251 for i in range(1024))
WORDS = (len(SPARSE[0]) + len(SPARSE[2])) // 4
# Characters of a word that is written, both ways; of all the rest of a job; and of the orders as a whole.
WORD, REST, VERIFY, FOUND = 34, 1500, 650, 1400
# What a job of the shares goes over, in bytes, and the letter of the frames that are judged.
SHARED = {"grabar": (800, "ag"), "verificar": (800, "C"), "leer": (2048, "e")}
MICRO = 1000
SINCE_REPLY = 1


def hex_record(address, kind, data):
    body = bytes([len(data), address >> 8 & 255, address & 255, kind]) + data
    return f":{body.hex().upper()}{-sum(body) & 255:02X}\n"


def s_record(address, data):
    body = bytes([len(data) + 4]) + address.to_bytes(3, "big") + data
    return f"S2{body.hex().upper()}{~sum(body) & 255:02X}\r\n"


def sparse_file(path):
    near, far, data = SPARSE
    lines = [s_record(base + i, block[i:i + 32]) for base, block in ((0, near), (far, data)) for i in range(0, len(block), 32)]
    path.write_text("".join(lines) + "S804000000FB\r\n")


def order(home, *words):
    """Exit code and result of an order on the board at COM1."""
    done = subprocess.run([BIN / "morvane-cli", "--directorio", home, "--json", *map(str, words)], capture_output=True, text=True,
                          timeout=300)
    return done.returncode, json.loads(done.stdout.splitlines()[-1])


def cost(home, code, *words):
    really, result = order(home, *words)
    assert really == code, result["texto"]
    return result["caracteres"]


@contextlib.contextmanager
def sparse_job():
    """A program's directory with a blank board without a pace, and the sparse file."""
    with program_directory() as home:
        file = home / "disperso.s19"
        sparse_file(file)
        with board(home, "puente", "--sin-ritmo"):
            yield home, file


def costs():
    with sparse_job() as (home, file):
        window = {name: int(value) for name, value in output_of(BIN / "costes", file)}
        program = cost(home, 0, "grabar", file)
        equal = cost(home, 0, "verificar", file)
        known = cost(home, 0, "identificar", *[file] * 100)
        other = home / "otro.bin"
        cost(home, 0, "convertir", file, other)
        image = bytearray(other.read_bytes())
        image[0x3F123] ^= 1
        other.write_bytes(image)
        found = cost(home, 9, "verificar", other)

    def against(name, what, limit, note):
        return at_most(f"characters: {name}", what, limit, "{:d}", note)

    return [against("4 KiB and 1 KiB far behind, programmed and proved", program, WORDS * WORD + REST,
                    f"the window {window['grabar']}, {window['grabar'] / program:.0f} times as many,"),
            against("an equal chip", equal, VERIFY, f"the window's check by sums {window['sumas']}"),
            against("which of 100 files", known, VERIFY, ""),
            against("one byte that differs, found", found, FOUND, f"the window, byte by byte, {window['bytes']}")]


def stamps(home, baud, command):
    """The board's stamps of a run: letter and microseconds since its last reply."""
    with board(home, "cronista", baud, stdout=subprocess.PIPE, text=True) as process:
        command()
        process.terminate()
        lines = process.communicate()[0].splitlines()
    return [(letter, int(since) / MICRO) for letter, since, _ in map(str.split, lines)]


def job_of(home, work):
    """The words of an order, and its file."""
    size, _ = SHARED[work]
    if work == "leer":
        return ["leer", "--hasta", f"{size - 1:X}", home / "leido.bin"]
    file = home / "trabajo.bin"
    file.write_bytes(SPARSE[0][:size])
    return [work, file]


def share(work, baud, blocks):
    """Medians of the program and of a loop that sends the very frames which it sent, in turns."""
    letters, kept, every = SHARED[work][1], {"program": [], "bare": []}, 0
    with program_directory() as home:
        words, trace, port = job_of(home, work), home / "traza.txt", home / "puertos/COM1"
        # On a board that is blank a verification ends with what differs; its sums are what counts.
        stamps(home, 0, lambda: order(home, *words, "--traza", trace))
        turns = {"program": lambda: order(home, *words, "--velocidad", baud),
                 "bare": lambda: output_of(BIN / "repetir", os.path.realpath(port), trace)}
        for _ in range(blocks):
            for who, command in turns.items():
                found = [since for letter, since in stamps(home, baud, command) if letter in letters]
                every += len(found)
                kept[who] += [since for since in found if since < STARVED]
    program, bare = median(kept["program"]), median(kept["bare"])
    part = (len(kept["program"]) + len(kept["bare"])) / every
    wire = median_wire(letters) * 10e6 / baud
    return judged(at_most(f"share of the wire, morvane-cli {work} at {baud:,} baud", 1 + (program - bare) / wire, 1.02, "{:.4f}",
                          f"{program - bare:+.1f} µs on {wire:.0f} µs; bare {bare:.0f} µs"), part)


def median_wire(letters):
    """Characters of an exchange, both ways: half a word, a sum of a block, a reading of 32 bytes."""
    return {"ag": WORD / 2, "C": 32, "e": 82}[letters]


def rows(length):
    return [*costs(), *(share(work, 115200, (2, 5, 20)[length]) for work in SHARED)]
