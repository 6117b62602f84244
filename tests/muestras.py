#!/usr/bin/env python3
"""Reads the sample firmware with a parser of its own and checks that it is what samples/README.md says."""
import pathlib
import sys

ADDRESS_BYTES = {"S0": 2, "S1": 2, "S2": 3, "S3": 4, "S5": 2, "S7": 4, "S8": 3, "S9": 2}
CONFIG = range(0x400, 0x420)


class Sample:
    """The bytes of one file by address; raises ValueError on a line that is wrong."""

    def __init__(self, path):
        self.raw = path.read_bytes()
        self.cells, self.types = {}, set()
        for number, line in enumerate(self.raw.decode("ascii").splitlines(), 1):
            try:
                self.take(line)
            except ValueError as error:
                raise ValueError(f"{path.name}:{number}: {error}") from error

    def take(self, line):
        kind, body = line[:2], bytes.fromhex(line[2:])
        width = ADDRESS_BYTES[kind]
        if body[0] != len(body) - 1:
            raise ValueError("the count does not fit the line")
        if sum(body) & 0xFF != 0xFF:
            raise ValueError("wrong checksum")
        self.types.add(kind)
        if kind not in ("S1", "S2", "S3"):
            return
        address = int.from_bytes(body[1:1 + width], "big")
        for offset, value in enumerate(body[1 + width:-1]):
            if address + offset in self.cells:
                raise ValueError(f"address {address + offset:#x} comes twice")
            self.cells[address + offset] = value

    def text(self, start, end):
        return bytes(self.cells[a] for a in range(start, end))

    def line_ends(self):
        lines, pairs = self.raw.count(b"\n"), self.raw.count(b"\r\n")
        return {0: "LF", lines: "CR LF"}.get(pairs if b"\r" in self.raw else 0, "mixed")


def check_demo(name, sample, data_type, line_end):
    first, last = min(sample.cells), max(sample.cells)
    yield first == 0 and last == 0x13B1, f"{name}: covers {first:#x} to {last:#x}"
    yield sample.types & {"S1", "S2", "S3"} == {data_type}, f"{name}: holds {sample.types}, not only {data_type}"
    yield sample.line_ends() == line_end, f"{name}: its lines do not end with {line_end}"
    config = [sample.cells.get(a) for a in CONFIG]
    yield None not in config and any(config), f"{name}: the configuration field is missing or all zero"
    yield sample.text(4, 8) == b"\x00\x00\x04\x20", f"{name}: the start vector does not lead behind the field"
    yield sample.text(0x1000, 0x1008) == b"Morvane:", f"{name}: no text at 0x1000"
    yield not any(a in sample.cells for a in range(0x4F8, 0x1000)), f"{name}: no gap in front of 0x1000"
    yield len(sample.cells) % 4 != 0, f"{name}: fills the last group of four bytes"


def checks(folder):
    expected = {"demo-s1": ("S1", "CR LF"), "demo-s2": ("S2", "LF"), "demo-s3": ("S3", "CR LF")}
    demos = {name: Sample(folder / f"{name}.s19") for name in expected}
    for name, demo in demos.items():
        yield from check_demo(name, demo, *expected[name])
        yield demo.cells == demos["demo-s1"].cells, f"{name}: other bytes than demo-s1"
    full = Sample(folder / "completa-256k.s19")
    yield set(full.cells) == set(range(0x40000)), "completa-256k: does not cover exactly 256 KiB"
    demo = demos["demo-s1"].cells
    yield all(full.cells.get(a) == demo[a] for a in demo), "completa-256k: does not hold the demo"
    yield full.text(0x3C100, 0x3C110) == b"[03C100] Morvane", "completa-256k: a text line is not where it says"
    yield len(set(full.text(0x3E000, 0x3F000))) > 200, "completa-256k: no noise at 0x3E000"


def main():
    try:
        faults = [fault for good, fault in checks(pathlib.Path(sys.argv[1])) if not good]
    except (OSError, ValueError, KeyError) as error:
        faults = [str(error)]
    print("\n".join(faults) or "all samples are as described")
    sys.exit(1 if faults else 0)


main()
