#!/usr/bin/env python3
"""The real program of the command line on a pseudo-terminal, against the board as a program."""
import json
import os
import pathlib
import pty
import resource
import select
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM, BOARD = (os.path.abspath(sys.argv.pop(1)) for _ in range(2))
PATIENCE = 30
DATA = bytes((i * 7 + 1) % 251 for i in range(8192))


class Case(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.dir = pathlib.Path(holder.name)
        self.firmware = self.dir / "a.bin"
        self.firmware.write_bytes(DATA)
        self.trace = self.dir / "traza.txt"

    def board(self, *options):
        board = subprocess.Popen([BOARD, "--enlace=puertos/COM1", "--flash=f.bin", "--traza=traza.txt", *options],
                                 cwd=self.dir, text=True, stdout=subprocess.PIPE)
        self.addCleanup(board.communicate)
        self.addCleanup(board.kill)
        board.stdout.readline()
        return board

    def start(self, *words, **how):
        how = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **how}
        run = subprocess.Popen([PROGRAM, "--directorio", self.dir, *words], cwd=self.dir, **how)
        self.addCleanup(run.communicate)
        self.addCleanup(run.kill)
        return run

    def result(self, *words):
        """Of a run to its end: exit code and the one result, which is the last line."""
        return self.end_of(self.start(*words, "--json"))

    def end_of(self, run, heard=b""):
        out, err = run.communicate(timeout=PATIENCE)
        lines = [json.loads(line) for line in (heard + out).splitlines()]
        self.assertEqual([line["tipo"] for line in lines].count("resultado"), 1)
        self.assertEqual((lines[-1]["tipo"], lines[-1]["codigo"], err), ("resultado", run.returncode, b""))
        return lines[-1]

    def begun(self, *words, **how):
        """A run that has come to writing, and what it has said."""
        run = self.start(*words, "--json", **how)
        heard = b""
        while b'"fase":"grabar","hechos":1' not in heard:
            heard += run.stdout.readline()
        return run, heard

    def flash(self, board):
        board.terminate()
        board.wait(PATIENCE)
        return (self.dir / "f.bin").read_bytes()

    def commands(self):
        return [line.split("<STX>")[1][0] for line in self.trace.read_text().splitlines() if " > " in line]


class Silent(Case):
    def test_a_silent_board_and_ports_that_are_missing_or_busy(self):
        self.assertEqual(self.result("estado", "--puerto", "COM0")["codigo"], 4)
        self.assertIn("no existe", self.result("estado", "--puerto", self.dir / "no")["texto"])
        self.assertIn("no es un dispositivo", self.result("estado", "--puerto", self.firmware)["texto"])
        self.board("--muda-desde=1")
        silent = self.start("estado", "--json")
        silent.stdout.readline()
        silent.stdout.readline()
        busy = self.result("estado")
        self.assertEqual((busy["codigo"], busy["desenlace"]), (4, "puerto"))
        self.assertIn(f"ocupado por morvane-cli (pid {silent.pid})", busy["texto"])
        first = self.result("puertos")["puertos"][0]
        self.assertEqual((first["puerto"], first["placa_simulada"], first["se_puede_abrir"]), ("COM1", True, False))
        self.assertEqual(first["quien"], f"morvane-cli (pid {silent.pid})")
        self.assertEqual(self.end_of(silent)["codigo"], 5)


class Runs(Case):
    def test_a_signal_ends_a_run_behind_a_closed_chip_and_the_next_run_mends(self):
        board = self.board("--baudios=115200")
        for how, code in ((signal.SIGINT, 130), (signal.SIGTERM, 143), (signal.SIGHUP, 143)):
            run, heard = self.begun("grabar", self.firmware)
            run.send_signal(how)
            end = self.end_of(run, heard)
            self.assertEqual((end["codigo"], end["desenlace"], end["chip_cerrado"]), (code, "detenido", True))
            self.assertEqual(self.commands()[-1], "D")
        run, _ = self.begun("grabar", self.firmware)
        run.kill()
        run.wait()
        self.assertEqual(self.result("grabar", self.firmware)["codigo"], 0)
        self.assertEqual(self.flash(board), DATA + b"\xFF" * (0x40000 - len(DATA)))

    def test_a_second_signal_ends_the_waits(self):
        self.board("--muda-desde=1")
        run = self.start("grabar", self.firmware, "--json")
        while b'"fase":"abrir"' not in run.stdout.readline():
            pass
        run.send_signal(signal.SIGINT)
        time.sleep(0.5)
        self.assertIsNone(run.poll(), "one signal lets the wait for a reply go on")
        before = time.monotonic()
        run.send_signal(signal.SIGINT)
        self.assertEqual(self.end_of(run)["codigo"], 130)
        self.assertLess(time.monotonic() - before, 2)

    def test_a_signal_that_was_to_be_ignored_is(self):
        self.board("--baudios=115200")
        run = self.start("grabar", self.firmware, "--json",
                         preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_IGN))
        run.stdout.readline()
        run.send_signal(signal.SIGINT)
        self.assertEqual(self.end_of(run)["codigo"], 0)

    def test_a_line_that_is_hung_up_in_mid_run(self):
        self.board("--sin-ritmo", "--cuelga-en=400")
        end = self.result("grabar", self.firmware)
        self.assertEqual((end["codigo"], end["desenlace"], end["chip_cerrado"]), (6, "linea", False))
        self.assertIn("El dispositivo ha desaparecido", end["texto"])

    def test_a_device_is_found_by_its_path_too_and_nothing_is_written_in_the_folder(self):
        self.board("--sin-ritmo")
        before = sorted(self.dir.rglob("*"))
        for port in ("COM1", "com1", "puertos/COM1", os.readlink(self.dir / "puertos/COM1")):
            self.assertEqual(self.result("estado", "--puerto", port)["codigo"], 0)
        self.assertEqual(sorted(self.dir.rglob("*")), before)

    def test_an_output_that_is_closed_or_full_stops_no_run_and_is_no_success(self):
        board = self.board("--sin-ritmo")
        run = self.start("grabar", self.firmware, "--json")
        run.stdout.close()
        self.assertEqual(run.wait(PATIENCE), 3)
        self.assertIn("no se puede escribir en la salida", run.stderr.read().decode())
        with open("/dev/full", "wb") as full:
            self.assertEqual(self.start("verificar", self.firmware, stdout=full).wait(PATIENCE), 3)
        closed = self.start("verificar", self.firmware, preexec_fn=lambda: os.close(1))
        self.assertEqual(closed.wait(PATIENCE), 3)
        self.assertEqual(self.flash(board)[:len(DATA)], DATA)

    def test_a_file_that_may_not_grow_is_told_and_leaves_the_old_one(self):
        image = self.dir / "a.hex"
        image.write_text("old")
        before = sorted(self.dir.iterdir())
        run = self.start("convertir", self.firmware, image, "--json",
                         preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096)))
        end = self.end_of(run)
        self.assertEqual((end["codigo"], image.read_text()), (3, "old"))
        self.assertIn("no queda sitio en el disco", end["texto"])
        self.assertEqual(sorted(self.dir.iterdir()), before)

    def test_two_signals_end_a_run_that_nobody_listens_to(self):
        self.board("--sin-ritmo", "--error-en=1")
        reader, writer = os.pipe()
        self.addCleanup(os.close, reader)
        os.set_blocking(writer, False)
        while True:
            try:
                os.write(writer, b"x" * 4096)
            except BlockingIOError:
                break
        os.set_blocking(writer, True)
        run = self.start("grabar", self.firmware, stdout=writer)
        os.close(writer)
        time.sleep(1)
        self.assertIsNone(run.poll())
        for _ in range(2):
            run.send_signal(signal.SIGINT)
            time.sleep(0.2)
        run.wait(PATIENCE)

    def on_a_terminal(self, *words, **environment):
        master, slave = pty.openpty()
        run = self.start(*words, stdout=slave, stderr=slave,
                         env={**os.environ, "TERM": "xterm", "NO_COLOR": "", **environment})
        os.close(slave)
        said = b""
        while select.select([master], [], [], PATIENCE)[0]:
            try:
                said += os.read(master, 4096)
            except OSError:
                break
        os.close(master)
        return run.wait(PATIENCE), said.decode()

    def test_a_terminal_gets_a_bar_and_colour_and_a_file_neither(self):
        self.board("--baudios=115200")
        code, said = self.on_a_terminal("grabar", self.firmware)
        self.assertEqual(code, 0)
        self.assertRegex(said, r"\rGrabando  \[#+\.+\] \d+ %  \d+,\d KiB/s  quedan \d")
        self.assertIn("\x1b[32mGrabado y demostrado por sumas: 2048 palabras", said)
        self.assertNotIn("\x1b", self.on_a_terminal("verificar", self.firmware, NO_COLOR="1")[1])
        out, err = self.start("verificar", self.firmware).communicate(timeout=PATIENCE)
        self.assertEqual((out.count(b"\n"), out.count(b"\r"), out.count(b"\x1b"), err), (1, 0, 0, b""))


unittest.main(verbosity=2)
