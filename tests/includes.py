#!/usr/bin/env python3
"""Fails on a header of one system where all systems build, and on an include by a path that leaves the room. All other
ways upwards between the rooms do not build, since a room is given the headers of those below it alone."""
import pathlib
import re
import sys

BAD = re.compile(r'\s*#\s*include\s*("\.\.|<((sys|linux|net|netinet|arpa|asm)/|'
                 r"(dirent|dlfcn|fcntl|netdb|poll|pty|pwd|spawn|termios|unistd|windows)\.h))")
OF_ONE_SYSTEM = re.compile("/(posix|win32|bridge)/")
ROOT = pathlib.Path(sys.argv[1])

files = [f for f in ROOT.rglob("*.*") if f.suffix in (".h", ".cpp") and not OF_ONE_SYSTEM.search(str(f))]
found = [f"{file}:{number}: {line}" for file in files
         for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1) if BAD.match(line)]
if found or not files:
    sys.exit("\n".join(found) or f"nothing to check in {ROOT}")
