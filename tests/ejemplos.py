#!/usr/bin/env python3
"""Runs the examples of a document. Usage: ejemplos.py DIRECTORY DOCUMENT [--escribir]. DIRECTORY is the program's, of which
a copy is used. In a block of the kind "console" a line "$ COMMAND" is run by a shell, and what follows up to the next one is
what it must say, on either output; times, terminals and keys may differ. A comment "placa: OPTIONS" in front of a block
gives it a new simulated board. --escribir puts what was said into the document instead, for somebody to read it."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

HOME, DOCUMENT = (pathlib.Path(a).resolve() for a in sys.argv[1:3])
WRITE = "--escribir" in sys.argv[3:]
VARIES = ((r"\d+ h \d+ min|\d+ min \d+ s|\d+(,\d+)? (s|ms|µs)\b", "TIME"), (r"/dev/pts/\d+", "TERMINAL"),
          (r'"(segundos\w*)":[\d.e-]+', r'"\1":TIME'), (r"\b[0-9a-f]{64}\b", "HASH"), (r"\b[0-9a-f]{128}\b", "SIGNATURE"),
          (r"\d{4}-\d\d-\d\dT[\d:]+Z", "MOMENT"), (r"\d+ µs", "TIME"),
          (r"Hay \d+ puertos?", "Hay N puertos"), (r"(?m)^/dev/tty.*\n?", ""))  # the machine's own lines


class Board:
    """The simulated board as COM1 of the copied directory."""

    def __init__(self, home):
        self.home, self.process = home, None

    def start(self, *options):
        self.stop()
        pace = () if WRITE else ("--sin-ritmo",)
        self.process = subprocess.Popen([self.home / "puente", "--enlace", "puertos/COM1", *pace, *options], cwd=self.home,
                                        stdout=subprocess.PIPE, text=True)
        self.process.stdout.readline()

    def stop(self):
        if self.process:
            self.process.terminate()
            self.process.communicate()
        self.process = None


def alike(text):
    for pattern, name in VARIES:
        text = re.sub(pattern, name, text)
    return text


def run(command, before, home):
    env = {**os.environ, "PATH": f"{home}:{os.environ['PATH']}", "XDG_CONFIG_HOME": str(home / "config"), "LC_ALL": "C.UTF-8"}
    done = subprocess.run(["bash", "-c", f"(exit {before}); {command}"], cwd=home, env=env, text=True, timeout=120,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return done.returncode, done.stdout.replace(str(home), "/opt/morvane")


def examples(lines):
    """Of each block of examples its first line behind the fence, and the one of its closing fence."""
    begin = None
    for n, line in enumerate(lines):
        if begin is None and line == "```console":
            begin = n + 1
        elif begin is not None and line == "```":
            yield begin, n
            begin = None


def options_of(lines, begin):
    found = re.fullmatch(r"<!-- placa:(.*)-->", lines[begin - 2])
    return found and found[1].split()


def played(block, home):
    """The lines of a block as they turn out now, and the commands that said something else."""
    now, wrong, code = [], [], 0
    for part in re.split(r"^(?=\$ )", "\n".join(block), flags=re.M):
        if not part:
            continue
        command, _, said = part.partition("\n")
        code, really = run(command[2:], code, home)
        now += [command, *really.splitlines()]
        if alike(said.strip("\n")) != alike(really.strip("\n")):
            wrong.append(f"{command}\n--- document\n{said}\n--- now\n{really}")
    return now, wrong


def main():
    lines, wrong, out, copied = DOCUMENT.read_text().split("\n"), [], [], 0
    with tempfile.TemporaryDirectory() as folder:
        home = pathlib.Path(folder) / "morvane"
        shutil.copytree(HOME, home, symlinks=True, ignore=shutil.ignore_patterns("COM*", "morvane", "*.flash"))
        board = Board(home)
        try:
            for begin, end in examples(lines):
                options = options_of(lines, begin)
                if options is not None:
                    board.start(*options)
                now, bad = played(lines[begin:end], home)
                wrong += bad
                out += lines[copied:begin] + now
                copied = end
        finally:
            board.stop()
    if not copied:
        sys.exit("no examples")
    if WRITE:
        DOCUMENT.write_text("\n".join(out + lines[copied:]))
    elif wrong:
        sys.exit("\n\n".join(wrong))


main()
