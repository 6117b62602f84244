#!/usr/bin/env python3
"""Starts the real board in a directory of its own and talks to it over its terminal."""
import fcntl
import os
import pathlib
import select
import signal
import subprocess
import sys
import struct
import tempfile
import termios
import time
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
GOOD = b"\x02030\x03"
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
        board = self.start("--enlace", "puertos/COM1", "--baudios", "115200", *options)
        line = board.stdout.readline()
        self.assertIn(os.readlink(self.link), line)
        return board

    def open(self):
        line = os.open(self.link, os.O_RDWR | os.O_NOCTTY)
        self.addCleanup(lambda: self.close(line))
        return line

    @staticmethod
    def close(line):
        try:
            os.close(line)
        except OSError:
            pass

    def exchange(self, line, command):
        os.write(line, frame(command))
        reply = b""
        while not reply.endswith(b"\x03"):
            self.assertTrue(select.select([line], [], [], PATIENCE)[0], f"no reply to {command}: {reply}")
            reply += os.read(line, 4096)
        return reply

    def end(self, board, how=signal.SIGTERM):
        board.send_signal(how)
        self.assertEqual(board.wait(PATIENCE), 0)

    def refused(self, *options, code=1):
        board = self.start(*options)
        _, text = board.communicate(timeout=PATIENCE)
        self.assertEqual(board.returncode, code)
        return text

    def write_word(self, line):
        for command in (b"A", b"a", b"d2E", b"a", b"g0000001234ABCD"):
            self.assertEqual(self.exchange(line, command), GOOD)

    def test_exchange_trace_and_clean_end(self):
        for how in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            board = self.start_linked("--traza", "t.txt")
            self.assertEqual(self.exchange(self.open(), b"A"), GOOD)
            lines = (self.dir / "t.txt").read_text().splitlines()
            self.assertEqual([x.split()[1:] for x in lines], [[">", "<STX>A41<ETX>"], ["<", "<STX>030<ETX>"]])
            # Five characters there and five back, at ten bits each.
            times = [float(x.split()[0]) for x in lines]
            self.assertAlmostEqual(times[1] - times[0], 5 * 10 / 115200, places=5)
            self.end(board, how)
            self.assertEqual(os.listdir(self.link.parent), [])

    def test_line_can_be_closed_and_opened_again(self):
        self.start_linked()
        for _ in range(3):
            line = self.open()
            self.assertEqual(self.exchange(line, b"A"), GOOD)
            self.close(line)

    def test_exclusive_opening_ends_with_its_program(self):
        self.start_linked()
        line = self.open()
        fcntl.ioctl(line, termios.TIOCEXCL)
        self.exchange(line, b"A")
        self.close(line)
        deadline = time.monotonic() + PATIENCE
        while self.exclusive():
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.01)

    def exclusive(self):
        try:
            line = self.open()
        except OSError:
            return True
        with os.fdopen(line):
            return struct.unpack("i", fcntl.ioctl(line, TIOCGEXCL, bytes(4)))[0] != 0

    def test_flash_is_kept_between_runs(self):
        board = self.start_linked("--flash", "f.bin")
        self.write_word(self.open())
        flash = self.dir / "f.bin"
        deadline = time.monotonic() + PATIENCE
        while not flash.exists() and time.monotonic() < deadline:
            time.sleep(0.05)
        self.assertEqual(flash.read_bytes(), b"\x12\x34\xAB\xCD" + b"\xFF" * 0x3FFFC, "saved while it runs")
        line = self.open()
        for command in (b"a", b"g00000400000000"):
            self.exchange(line, command)
        self.end(board)
        self.assertEqual(flash.read_bytes()[:8], b"\x12\x34\xAB\xCD\0\0\0\0", "saved at the end")
        self.start_linked("--flash", "f.bin")
        line = self.open()
        self.exchange(line, b"A")
        self.assertEqual(self.exchange(line, b"e00000004"), frame(b"01234ABCD"))
        self.assertEqual(sorted(os.listdir(self.dir)), ["f.bin", "puertos"])

    def test_flash_file_of_another_kind_is_left_alone(self):
        (self.dir / "f.bin").write_bytes(b"short")
        self.assertIn("no es un fichero de 262144 bytes", self.refused("--flash", "f.bin"))
        self.assertEqual((self.dir / "f.bin").read_bytes(), b"short")

    def test_protected_from_the_start(self):
        self.start_linked("--protegida")
        line = self.open()
        self.exchange(line, b"A")
        self.assertEqual(self.exchange(line, b"c"), frame(b"080"))

    def test_second_board_on_one_link_is_refused(self):
        self.start_linked()
        for name in ("puertos/COM1", "puertos/../puertos/./COM1"):
            self.assertIn("otra placa tiene ya el enlace", self.refused("--enlace", name))
        self.assertEqual(self.exchange(self.open(), b"A"), GOOD, "and the first one is as it was")

    def test_killed_board_leaves_a_link_that_the_next_one_takes(self):
        board = self.start_linked()
        board.kill()
        board.wait()
        self.assertTrue(self.link.is_symlink())
        self.start_linked()
        self.assertEqual(self.exchange(self.open(), b"A"), GOOD)

    def test_what_is_not_a_boards_link_stays(self):
        self.link.parent.mkdir()
        self.link.write_text("x")
        self.assertIn("no es un enlace simbólico", self.refused("--enlace", "puertos/COM1"))
        self.assertEqual(self.link.read_text(), "x")
        self.link.unlink()
        self.link.symlink_to("/dev/null")
        self.assertIn("que no es de una placa", self.refused("--enlace", "puertos/COM1"))
        self.assertEqual(os.readlink(self.link), "/dev/null")

    def test_link_that_has_become_anothers_stays(self):
        board = self.start_linked()
        self.link.unlink()
        self.link.symlink_to("/dev/null")
        self.end(board)
        self.assertEqual(os.readlink(self.link), "/dev/null")

    def test_hang_up_ends_line_link_and_board(self):
        board = self.start_linked("--cuelga-en", "2")
        line = self.open()
        self.exchange(line, b"A")
        os.write(line, frame(b"c"))
        self.assertEqual(board.wait(PATIENCE), 0)
        self.assertEqual(os.read(line, 10), b"")
        self.assertFalse(self.link.is_symlink())

    def test_babble_that_nobody_reads_does_not_keep_the_board_from_ending(self):
        board = self.start_linked("--balbuceo-desde", "1")
        os.write(self.open(), frame(b"A"))
        time.sleep(0.5)
        self.end(board)

    def test_idle_board_rests(self):
        board = self.start_linked("--flash", "f.bin")
        self.write_word(self.open())
        time.sleep(1.5)
        before = self.processor_time(board)
        time.sleep(1)
        self.assertLessEqual(self.processor_time(board) - before, 0.02)

    @staticmethod
    def processor_time(board):
        fields = pathlib.Path(f"/proc/{board.pid}/stat").read_text().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def test_help_and_bad_options(self):
        for name in ("--help", "--ayuda"):
            done = subprocess.run([PROGRAM, name], capture_output=True, text=True, timeout=PATIENCE)
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            self.assertIn("--enlace RUTA", done.stdout)
        self.assertIn("opción desconocida: --nada", self.refused("--nada", code=2))


unittest.main(verbosity=2)
