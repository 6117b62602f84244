#!/usr/bin/env python3
"""Starts the real board in a directory of its own and talks to it over its terminal."""
import os
import pathlib
import select
import signal
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
PATIENCE = 10


class Board(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.dir = pathlib.Path(holder.name)
        self.link = self.dir / "puertos" / "COM1"

    def start(self, *options):
        board = subprocess.Popen([PROGRAM, "--enlace=puertos/COM1", *options], cwd=self.dir, text=True,
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.addCleanup(board.communicate)
        self.addCleanup(board.kill)
        board.stdout.readline()
        return board

    def refused(self, text, *options, code=1):
        board = self.start(*options)
        self.assertIn(text, board.communicate(timeout=PATIENCE)[1])
        self.assertEqual(board.returncode, code)

    @staticmethod
    def hear(line, count):
        """What comes within its time, up to `count` characters, which may come one by one."""
        said = b""
        while len(said) < count and select.select([line], [], [], PATIENCE)[0]:
            said += line.read(count - len(said))
        return said

    def play(self, *commands, reply=b"\x02030\x03"):
        with open(self.link, "r+b", 0) as line:
            for command in commands:
                line.write(b"\x02%s%02X\x03" % (command, sum(command) % 256))
                self.assertEqual(self.hear(line, len(reply)), reply)

    def end_at_a_command(self, board, how):
        with open(self.link, "r+b", 0) as line:
            line.write(b"\x02A41\x03")
            select.select([line], [], [], PATIENCE)
            board.send_signal(how)
            self.assertEqual((board.wait(PATIENCE), os.listdir(self.link.parent)), (0, []))

    def test_clean_end_on_each_signal_in_the_midst_of_babble_and_after_a_hang_up(self):
        for how in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            self.end_at_a_command(self.start("--traza", "t.txt", "--balbuceo-desde", "1"), how)
        self.assertIn("> <STX>A41<ETX>", (self.dir / "t.txt").read_text())
        self.end_at_a_command(self.start("--cuelga-en", "1"), 0)

    def test_flash_is_kept_through_a_kill_and_what_is_no_flash_is_left_alone(self):
        flash = self.dir / "f.bin"
        board = self.start("--flash", "f.bin")
        self.play(b"A", b"a", b"d2E", b"a", b"g0000001234ABCD")
        while not flash.exists():
            self.assertIsNone(board.poll(), "it saves while it runs")
        self.assertEqual(flash.read_bytes(), b"\x12\x34\xAB\xCD" + b"\xFF" * 0x3FFFC)
        board.kill()
        board.wait()
        self.start("--flash", "f.bin")
        self.refused("otra placa tiene ya el enlace", "--enlace", "puertos/../puertos/./COM1")
        flash.write_bytes(b"short")
        self.refused("no es un fichero de 262144 bytes", "--flash", "f.bin")
        (self.dir / "otro").symlink_to("/dev/null")
        self.refused("que no es de una placa", "--enlace", "otro")
        self.assertEqual((flash.read_bytes(), os.readlink(self.dir / "otro")), (b"short", "/dev/null"))
        self.refused("opción desconocida: --nada", "--nada", code=2)

    def test_a_trace_is_played_to_the_same_guest_and_another_one_is_told(self):
        board = self.start("--traza", "t.txt", "--altera", "7", "--cuelga-en", "4")
        self.play(b"A")
        with open(self.link, "r+b", 0) as line:
            line.write(b"\x02c63\x03")
            changed = self.hear(line, 7)
            line.write(b"\x02a61\x03\x02D44\x03")
            self.assertEqual(board.wait(PATIENCE), 0)
        board = self.start("--reproducir", "t.txt")
        self.play(b"A")
        with open(self.link, "r+b", 0) as line:
            line.write(b"\x02c63\x03")
            self.assertEqual(self.hear(line, 7), changed)
            line.write(b"\x02a61\x03\x02D44\x03")
            self.assertEqual(board.wait(PATIENCE), 0)
        self.assertIn("se ha reproducido entera", board.stdout.read())
        board = self.start("--reproducir", "t.txt")
        self.play(b"A")
        with open(self.link, "r+b", 0) as line:
            line.write(b"\x02D44\x03")
            self.assertEqual(board.wait(PATIENCE), 3)
        self.assertIn("se esperaba <STX>c63<ETX> y ha llegado <STX>D44<ETX>", board.stderr.read())
        board = self.start("--reproducir", "t.txt")
        board.terminate()
        self.assertEqual(board.wait(PATIENCE), 3)
        self.assertIn("se ha quedado en su línea", board.stderr.read())
        (self.dir / "mala.txt").write_text("nada\n")
        self.refused("mala.txt: línea 1: no es un renglón", "--reproducir", "mala.txt")
        self.refused("no admite más que", "--reproducir", "t.txt", "--mudo", code=2)


unittest.main(verbosity=2)
