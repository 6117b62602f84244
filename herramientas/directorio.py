#!/usr/bin/env python3
"""A program's directory with simulated boards at its ports: made, and used for as long as a command runs.

    directorio.py [--de ORIGEN] DIRECTORIO [COMn[=OPTIONS]...] -- COMMAND...

With --de the directory is a fresh copy of ORIGEN. Then a board (`puente`) is started at each port named, with its own
options, and the command runs; the boards end with it."""
import pathlib
import shlex
import shutil
import signal
import subprocess
import sys

SETTINGS = b'"115200","n","8","1"\r\n"COM1"\r\n'
# What belongs to one place and its users, and not to the program.
OF_ITS_USERS = shutil.ignore_patterns("COM*", "simulada.txt", "SETTINGS.TXT", "MENU.TXT", "memoria.txt", "puente.*")


def make(source, home):
    """A program's directory like `source`, with nothing at its ports, no list of files, and settings of 115,200 baud."""
    home = pathlib.Path(home)
    shutil.copytree(source, home, ignore=OF_ITS_USERS)
    (home / "SETTINGS.TXT").write_bytes(SETTINGS)
    return home


def board(home, port="COM1", *options, program="puente", start=subprocess.Popen):
    """A board at a port of the directory, once it stands there, and what it has said. `start` is called as Popen is."""
    home = pathlib.Path(home)
    process = start(list(map(str, (home / program, "--enlace", home / "puertos" / port, *options))),
                    stdout=subprocess.PIPE)
    with process.stdout as out:
        said = out.readline().decode().strip()
    if not said:
        raise RuntimeError(f"the simulated board did not start: {process.wait(10)}")
    return process, said


def main(arguments):
    cut = arguments.index("--")
    where, command = arguments[:cut], arguments[cut + 1:]
    if where[0] == "--de":
        shutil.rmtree(where[2], ignore_errors=True)
        make(where[1], where[2])
        where = where[2:]
    home, started = where[0], []
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    try:
        for port, _, options in (one.partition("=") for one in where[1:]):
            started.append(board(home, port, *shlex.split(options))[0])
        started.append(subprocess.Popen(command))
        return started[-1].wait()
    except KeyboardInterrupt:
        return 130
    except (RuntimeError, OSError) as failure:
        print(failure, file=sys.stderr)
        return 1
    finally:
        for process in reversed(started):
            process.terminate()
            process.wait(10)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
