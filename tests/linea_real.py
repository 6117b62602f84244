#!/usr/bin/env python3
"""Breaks the serial line under the built program in every way that a pseudo-terminal allows, and looks whether the user
is back at an idle window after one box, with the processor at rest and the repetition working.

Usage: linea_real.py PROGRAM_DIRECTORY. Needs Xvfb, openbox, dbus-daemon, at-spi2-core and python3-gi."""
import fcntl
import os
import pathlib
import signal
import sys
import termios
import time
import unittest

from apoyo.accesible import BROKEN, ERASED, QUESTION, WRITTEN, AccessibleBench
from apoyo.mesa import image_of, wait

SOURCE = pathlib.Path(sys.argv.pop(1)).resolve()
NO_PORT = "Es probable que el puerto no exista, verifique en su Sistema Operativo los puertos existentes"
BUSY = "El puerto ya ha sido utilizado por otra aplicación"


class Line(unittest.TestCase):
    def setUp(self):
        self.bench = AccessibleBench(SOURCE)
        self.addCleanup(self.bench.close)
        self.sample = self.bench.home / "muestras/demo-s1.s19"
        (self.bench.home / "MENU.TXT").write_text(f'"{self.sample}"\r\n')
        self.bench.begin_display()
        self.bench.begin_bus()

    def rests(self, seconds=0.6):
        """An idle program computes next to nothing, whatever happened to its line."""
        before = self.bench.processor_time()
        time.sleep(seconds)
        self.assertLess(self.bench.processor_time() - before, 0.1 * seconds)

    def repeats(self, *options):
        """With a good board under the same link everything works again."""
        self.bench.begin_board("--sin-ritmo", *options)
        self.bench.do("Borrar Flash", ERASED)

    def test_a_port_that_cannot_be_opened_has_its_box_and_its_cause_on_standard_error(self):
        bench = self.bench
        bench.begin("--sin-ritmo")
        os.mkfifo(bench.home / "tubo")
        (bench.home / "archivo").write_text("x")
        bench.port.unlink()
        other = os.open(bench.line, os.O_RDWR | os.O_NOCTTY)
        self.addCleanup(os.close, other)
        fcntl.flock(other, fcntl.LOCK_EX)
        fcntl.ioctl(other, termios.TIOCEXCL)
        here = pathlib.Path("/proc/self/comm").read_text().strip()
        for target, text, cause in (
                ("../archivo", NO_PORT, f"{bench.home}/archivo no es un dispositivo serie"),
                ("..", NO_PORT, f"{bench.home} no es un dispositivo serie"),
                ("../tubo", NO_PORT, f"{bench.home}/tubo no es un dispositivo serie"),
                ("nada", NO_PORT, f"el enlace {bench.port} lleva a nada, que no existe"),
                ("/dev/null", BUSY, "/dev/null: no es un dispositivo serie"),
                (bench.line, BUSY, f"{bench.line}: ocupado por {here} (pid {os.getpid()})")):
            with self.subTest(target):
                bench.port.symlink_to(target)
                before = bench.errors.read_text()
                bench.do("Borrar Flash", text)
                self.assertEqual(bench.errors.read_text(), before + f"morvane: COM1: {cause}\n")
                bench.port.unlink()
        self.rests()

    def test_a_board_that_vanishes_ends_the_command_with_one_box(self):
        bench = self.bench
        bench.begin("--sin-ritmo")

        bench.end(bench.board, "kill")
        self.rests()
        bench.do("Borrar Flash", NO_PORT)

        bench.begin_board("--sin-ritmo", "--calla-en", "6")
        bench.press("Borrar Flash")
        wait("the frame without a reply", lambda: len(bench.commands()) == 6)
        bench.end(bench.board, "kill")
        bench.box(BROKEN, 4).answer()
        wait("the end", bench.idle)
        self.repeats()
        bench.end(bench.board)

        bench.begin_board()
        bench.load()
        bench.press("Programar dispositivo")
        wait("the run", lambda: len(bench.commands()) > 30)
        bench.end(bench.board, "kill")
        bench.box(BROKEN, 4).answer()
        wait("the end", bench.idle)
        self.rests()

    def test_a_board_that_vanishes_under_an_open_box_is_noticed_when_it_closes(self):
        bench = self.bench
        bench.begin("--sin-ritmo")
        bench.press("Borrar Flash")
        box = bench.box(ERASED)
        bench.end(bench.board, "kill")
        self.rests()
        box.answer()
        wait("the end", bench.idle)
        self.repeats("--calla-en", "40")
        bench.end(bench.board)

        for answer in ("Sí", "Cancelar"):
            bench.begin_board("--sin-ritmo", "--calla-en", "6")
            bench.press("Borrar Flash")
            question = bench.box(QUESTION)
            bench.end(bench.board, "kill")
            self.rests()
            question.answer(answer)
            bench.box(BROKEN, 4).answer()
            wait("the end", bench.idle)
            self.repeats()
            bench.end(bench.board)

    def test_a_peer_that_does_not_read_is_asked_about_and_left(self):
        bench = self.bench
        bench.begin()
        bench.load()
        bench.press("Programar dispositivo")
        wait("the run", lambda: len(bench.commands()) > 30)
        bench.board.send_signal(signal.SIGSTOP)
        bench.box(QUESTION).answer("Cancelar")
        bench.box(BROKEN, 4).answer()
        wait("the end", bench.idle)
        self.rests()
        bench.board.send_signal(signal.SIGCONT)
        bench.do("Programar dispositivo", WRITTEN)
        bench.end(bench.board)
        self.assertEqual(bench.flash.read_bytes(), image_of(self.sample))


unittest.main(verbosity=2)
