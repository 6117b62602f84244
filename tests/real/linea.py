"""Ports that cannot be opened, or no longer: each has its box, and its cause on standard error."""
import fcntl
import os
import pathlib
import shutil
import subprocess
import sys
import termios

import directorio
from textos import ERASED

NO_PORT = "Es probable que el puerto no exista, verifique en su Sistema Operativo los puertos existentes"
BUSY = "El puerto ya ha sido utilizado por otra aplicación"


def refuses(bench, target, text, cause):
    print(f"  a port that leads to {target}")
    bench.port.unlink()
    bench.port.symlink_to(target)
    before = bench.errors.read_text()
    bench.do("Borrar Flash", text)
    said = bench.errors.read_text()[len(before):]
    assert said == f"morvane: COM1: {cause}\n", f"standard error has {said!r}"


def scenario(bench):
    if os.getuid() == 0:
        print("as an ordinary user, since nothing keeps out root")
        bench.dir.chmod(0o755)
        driver = shutil.copytree(pathlib.Path(__file__).parent, bench.dir / "tests/real")
        (bench.dir / "herramientas").mkdir()
        shutil.copy(directorio.__file__, bench.dir / "herramientas")
        return subprocess.run([sys.executable, driver, bench.home, "linea"], user=65534, group=65534, extra_groups=[],
                              check=True)
    bench.begin()
    pipe = bench.dir / "tubo"
    os.mkfifo(pipe)
    refuses(bench, pipe, NO_PORT, f"{pipe} no es un dispositivo serie")
    refuses(bench, "/dev/null", BUSY, "/dev/null: no es un dispositivo serie")

    other = os.open(bench.line, os.O_RDWR | os.O_NOCTTY)
    name = pathlib.Path("/proc/self/comm").read_text().strip()
    busy = f"{bench.line}: ocupado por {name} (pid {os.getpid()})"
    fcntl.flock(other, fcntl.LOCK_EX)
    refuses(bench, bench.line, BUSY, busy)
    fcntl.flock(other, fcntl.LOCK_UN)
    # Nothing but this keeps out one who cares for no locks.
    fcntl.ioctl(other, termios.TIOCEXCL)
    refuses(bench, bench.line, BUSY, f"{busy}, puente (pid {bench.board.pid})")
    fcntl.ioctl(other, termios.TIOCNXCL)
    os.close(other)
    bench.do("Borrar Flash", ERASED)

    bench.end(bench.board, "kill")
    bench.rests()
    refuses(bench, bench.line, NO_PORT, f"el enlace {bench.port} lleva a {bench.line}, que no existe")
    bench.rests()
