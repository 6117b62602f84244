#!/usr/bin/env python3
"""Reads the sample firmware with a parser of its own and checks that it is what samples/README.md says."""
import pathlib
import sys

ADDRESS_BYTES = {"S0": 2, "S1": 2, "S2": 3, "S3": 4, "S5": 2, "S7": 4, "S8": 3, "S9": 2}


def read(path):
    """The bytes by address, the types of the records and the line end."""
    raw, cells, types = path.read_bytes(), {}, set()
    for number, line in enumerate(raw.decode("ascii").splitlines(), 1):
        kind, body = line[:2], bytes.fromhex(line[2:])
        where, width = f"{path.name}:{number}", ADDRESS_BYTES[kind]
        assert body[0] == len(body) - 1, f"{where}: the count does not fit the line"
        assert sum(body) & 0xFF == 0xFF, f"{where}: wrong checksum"
        if kind in ("S1", "S2", "S3"):
            types.add(kind)
            address, data = int.from_bytes(body[1:1 + width], "big"), body[1 + width:-1]
            assert not any(address + i in cells for i in range(len(data))), f"{where}: an address comes twice"
            cells.update((address + i, value) for i, value in enumerate(data))
    lines, pairs = raw.count(b"\n"), raw.count(b"\r")
    return cells, types, {0: "LF", lines: "CR LF"}.get(pairs)


def text(cells, start, end):
    return bytes(cells[a] for a in range(start, end))


def check(folder):
    demo = read(folder / "demo-s1.s19")[0]
    for name, data_type, line_end in ("demo-s1", "S1", "CR LF"), ("demo-s2", "S2", "LF"), ("demo-s3", "S3", "CR LF"):
        assert read(folder / f"{name}.s19") == (demo, {data_type}, line_end), f"{name}: other bytes, types or line ends"
    assert (min(demo), max(demo)) == (0, 0x13B1), "the demo covers another range"
    assert any(text(demo, 0x400, 0x420)), "the configuration field is all zero"
    assert text(demo, 4, 8) == b"\x00\x00\x04\x20", "the start vector does not lead behind the field"
    assert text(demo, 0x1000, 0x1008) == b"Morvane:", "no text at 0x1000"
    assert not any(a in demo for a in range(0x4F8, 0x1000)), "no gap in front of 0x1000"
    assert len(demo) % 4 != 0, "the demo fills the last group of four bytes"
    full = read(folder / "completa-256k.s19")[0]
    assert set(full) == set(range(0x40000)), "completa-256k: does not cover exactly 256 KiB"
    assert full.items() >= demo.items(), "completa-256k: does not hold the demo"
    assert text(full, 0x3C100, 0x3C110) == b"[03C100] Morvane", "completa-256k: a text line is not where it says"
    assert len(set(text(full, 0x3E000, 0x3F000))) > 200, "completa-256k: no noise at 0x3E000"


check(pathlib.Path(sys.argv[1]))
print("all samples are as described")
