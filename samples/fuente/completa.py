#!/usr/bin/env python3
"""Fills the whole flash: the program given as a binary file in front, patterns behind it. Writes a binary file."""
import pathlib
import sys

FLASH = 0x40000
PAGE = 0x1000


def text(address):
    """Each line of a dump tells its own address."""
    return b"".join(b"[%06X] Morvane" % a for a in range(address, address + PAGE, 16))


def ramp(address):
    """Every byte value, shifted from one 256 bytes to the next."""
    return bytes((a + (a >> 8)) & 0xFF for a in range(address, address + PAGE))


def noise(address):
    """No two pages alike; the same on every run."""
    state, out = address | 1, bytearray()
    for _ in range(PAGE):
        state = (state * 1664525 + 1013904223) & 0xFFFFFFFF
        out.append(state >> 24)
    return bytes(out)


def extremes(_):
    """Erased and fully written flash in turns of 256 bytes."""
    return (b"\xFF" * 256 + b"\x00" * 256) * (PAGE // 512)


def main():
    program = pathlib.Path(sys.argv[1]).read_bytes()
    kinds = [text, ramp, noise, extremes]
    flash = b"".join(kinds[page % 4](page * PAGE) for page in range(FLASH // PAGE))
    pathlib.Path(sys.argv[2]).write_bytes(program + flash[len(program):])


main()
