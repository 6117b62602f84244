#!/usr/bin/env python3
"""Reads the sample firmware with a parser of its own and checks that it is what samples/README.md says."""
import pathlib
import sys

ADDRESS_BYTES = {"S0": 2, "S1": 2, "S2": 3, "S3": 4, "S5": 2, "S7": 4, "S8": 3, "S9": 2}


def read(path):
    """The bytes by address, the types of the data records and the line end."""
    raw, cells, types = path.read_bytes(), {}, set()
    for line in raw.decode("ascii").splitlines():
        kind, body = line[:2], bytes.fromhex(line[2:])
        assert body[0] == len(body) - 1 and sum(body) & 0xFF == 0xFF, f"{path.name}: wrong count or checksum: {line}"
        if kind in ("S1", "S2", "S3"):
            types.add(kind)
            data = body[1 + ADDRESS_BYTES[kind]:-1]
            start = int.from_bytes(body[1:1 + ADDRESS_BYTES[kind]], "big")
            cells.update(zip(range(start, start + len(data)), data, strict=True))
    return cells, types, "CR LF" if raw.count(b"\r\n") == raw.count(b"\n") else "LF"


def check(folder):
    demo = read(folder / "demo-s1.s19")[0]
    for name, data_type, line_end in ("demo-s1", "S1", "CR LF"), ("demo-s2", "S2", "LF"), ("demo-s3", "S3", "CR LF"):
        assert read(folder / f"{name}.s19") == (demo, {data_type}, line_end), f"{name}: other bytes, types or line ends"
    assert (min(demo), max(demo), len(demo) % 4) == (0, 0x13B1, 2), "the demo covers another range"
    assert any(demo[a] for a in range(0x400, 0x420)), "the configuration field is all zero"
    assert set(demo).isdisjoint(range(0x4F8, 0x1000)), "no gap in front of 0x1000"
    full = read(folder / "completa-256k.s19")[0]
    assert set(full) == set(range(0x40000)), "completa-256k: does not cover exactly 256 KiB"
    assert full.items() >= demo.items(), "completa-256k: does not hold the demo"


if __name__ == "__main__":
    check(pathlib.Path(sys.argv[1]))
