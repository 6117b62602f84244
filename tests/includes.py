#!/usr/bin/env python3
"""Fails on an include that runs upwards between the rooms, on Qt outside the desktop, and on a header of one system where
all systems build."""
import pathlib
import re
import sys

BELOW = {
    "platform": set(),
    "link": {"platform"},
    "image": {"platform"},
    "flash": {"image", "link", "platform"},
    "shell": {"flash", "image", "link", "platform"},
    "desktop": {"shell", "flash", "image", "link", "platform"},
    "bridge": set(),
}
ONE_SYSTEM = re.compile(r"(sys|linux|net)/|(dirent|dlfcn|fcntl|poll|pty|pwd|spawn|termios|unistd|windows)\.h$")
OF_ONE_SYSTEM = re.compile(r"(_posix|_tty|_win32)\.(h|cpp)$")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def faults(root):
    seen = 0
    for path in sorted(root.rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        room = path.relative_to(root).parts[0]
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            if not match:
                continue
            seen += 1
            quoted, name = match.group(1) == '"', match.group(2)
            target = name.split("/")[0]
            if target in BELOW and target != room and target not in BELOW[room]:
                yield f"{path}:{number}: {room} must not see {target}"
            if room != "desktop" and not quoted and re.match(r"Q[A-Z]|Qt", name):
                yield f"{path}:{number}: only desktop may see Qt"
            if room != "bridge" and ONE_SYSTEM.match(name) and not OF_ONE_SYSTEM.search(path.name):
                yield f"{path}:{number}: {name} is for files of one system, by their names"
            if quoted and "/" not in name and not (path.parent / name).exists():
                yield f"{path}:{number}: {name} is not beside this file"
    if seen == 0:
        yield f"{root}: no includes found, nothing was checked"


found = list(faults(pathlib.Path(sys.argv[1])))
print("\n".join(found) or "all includes run downwards")
sys.exit(1 if found else 0)
