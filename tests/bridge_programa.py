#!/usr/bin/env python3
"""Starts the real board in a directory of its own and talks to it over its terminal."""
import fcntl
import os
import pathlib
import resource
import select
import signal
import subprocess
import sys
import tempfile
import termios
import time
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
PATIENCE = 10
TIOCGEXCL = 0x80045440


def frame(command):
    return b"\x02%s%02X\x03" % (command, sum(command) % 256)


class Board(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.dir = pathlib.Path(holder.name)
        self.link = self.dir / "puertos" / "COM1"

    def start(self, *options):
        board = subprocess.Popen([PROGRAM, *options], cwd=self.dir, text=True,
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.addCleanup(board.communicate)
        self.addCleanup(board.kill)
        return board

    def start_linked(self, *options):
        board = self.start("--enlace", "puertos/COM1", *options)
        text = board.stdout.readline()
        self.assertIn(os.readlink(self.link), text)
        return board

    def end(self, board, how=signal.SIGTERM):
        board.send_signal(how)
        self.assertEqual(board.wait(PATIENCE), 0)

    def refused(self, text, *options, code=1):
        board = self.start(*options)
        self.assertIn(text, board.communicate(timeout=PATIENCE)[1])
        self.assertEqual(board.returncode, code)

    def open(self):
        return os.fdopen(os.open(self.link, os.O_RDWR | os.O_NOCTTY), "r+b", 0)

    def play(self, *steps):
        """Opens the line, sends commands and expects "0" as reply, or what stands behind the "="."""
        with self.open() as line:
            fcntl.ioctl(line, termios.TIOCEXCL)
            for step in steps:
                command, _, said = step.partition(b"=")
                line.write(frame(command))
                reply = b""
                while not reply.endswith(b"\x03"):
                    self.assertTrue(select.select([line], [], [], PATIENCE)[0], f"no reply to {command}: {reply}")
                    reply += line.read(4096)
                self.assertEqual(reply, frame(said or b"0"))
        self.wait_for(self.free)

    def wait_for(self, what):
        deadline = time.monotonic() + PATIENCE
        while not what():
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.01)

    def free(self):
        try:
            with self.open() as line:
                return fcntl.ioctl(line, TIOCGEXCL, bytes(4)) == bytes(4)
        except OSError:
            return False

    @staticmethod
    def processor_time():
        return sum(resource.getrusage(resource.RUSAGE_CHILDREN)[:2])

    def test_exchange_trace_and_clean_end_in_the_midst_of_babble(self):
        for how in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            board = self.start_linked("--traza", "t.txt", "--balbuceo-desde", "2")
            self.play(b"A")
            lines = (self.dir / "t.txt").read_text().splitlines()
            self.assertEqual([x.split()[1:] for x in lines], [[">", "<STX>A41<ETX>"], ["<", "<STX>030<ETX>"]])
            with self.open() as line:
                line.write(frame(b"c"))
                time.sleep(0.5)
                self.end(board, how)
            self.assertEqual(os.listdir(self.link.parent), [])

    def test_flash_is_saved_while_it_runs_and_at_the_end_and_read_again(self):
        flash = self.dir / "f.bin"
        used = self.processor_time()
        board = self.start_linked("--flash", "f.bin")
        self.play(b"A", b"a", b"d2E", b"a", b"g0000001234ABCD")
        self.wait_for(flash.exists)
        self.assertEqual(flash.read_bytes(), b"\x12\x34\xAB\xCD" + b"\xFF" * 0x3FFFC)
        self.play(b"a", b"g00000400000000")
        self.end(board)
        self.assertLess(self.processor_time() - used, 0.3, "an idle board rests")
        self.assertEqual(flash.read_bytes()[:8], b"\x12\x34\xAB\xCD\0\0\0\0")
        self.start_linked("--flash", "f.bin", "--protegida")
        self.play(b"A", b"c=080", b"a", b"d2E", b"D", b"A")
        self.assertEqual(sorted(os.listdir(self.dir)), ["f.bin", "puertos"])

    def test_what_is_not_its_own_is_left_alone(self):
        (self.dir / "f.bin").write_bytes(b"short")
        self.refused("no es un fichero de 262144 bytes", "--flash", "f.bin")
        self.assertEqual((self.dir / "f.bin").read_bytes(), b"short")
        self.link.parent.mkdir()
        self.link.write_text("x")
        self.refused("no es un enlace simbólico", "--enlace", "puertos/COM1")
        self.assertEqual(self.link.read_text(), "x")
        self.link.unlink()
        self.link.symlink_to("/dev/null")
        self.refused("que no es de una placa", "--enlace", "puertos/COM1")
        self.link.unlink()
        board = self.start_linked()
        for name in ("puertos/COM1", "puertos/../puertos/./COM1"):
            self.refused("otra placa tiene ya el enlace", "--enlace", name)
        self.play(b"A")
        self.link.unlink()
        self.link.symlink_to("/dev/null")
        self.end(board)
        self.assertEqual(os.readlink(self.link), "/dev/null")

    def test_a_killed_boards_link_is_taken_over_and_a_hang_up_removes_it(self):
        board = self.start_linked()
        board.kill()
        board.wait()
        self.assertTrue(self.link.is_symlink())
        board = self.start_linked("--cuelga-en", "2")
        self.play(b"A")
        with self.open() as line:
            line.write(frame(b"c"))
            self.assertEqual(board.wait(PATIENCE), 0)
            self.assertEqual(line.read(10), b"")
        self.assertFalse(self.link.is_symlink())

    def test_help_and_bad_options(self):
        board = self.start("--help")
        self.assertIn("--enlace RUTA", board.communicate(timeout=PATIENCE)[0])
        self.assertEqual(board.returncode, 0)
        self.refused("opción desconocida: --nada", "--nada", code=2)


unittest.main(verbosity=2)
