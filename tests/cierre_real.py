#!/usr/bin/env python3
"""Asks the built program to end, by its window and by SIGTERM, in every state, and takes the time.

Usage: cierre_real.py PROGRAM_DIRECTORY. Needs Xvfb, openbox, xdotool, dbus-daemon, at-spi2-core and python3-gi."""
import os
import pathlib
import subprocess
import sys
import time
import unittest

from apoyo.accesible import ERASED, QUESTION, AccessibleBench
from apoyo.mesa import wait

SOURCE = pathlib.Path(sys.argv.pop(1)).resolve()
# Two seconds on a machine that has a processor to spare, and in proportion on one that has not.
AT_ONCE = 2.0 * max(1.0, os.getloadavg()[0] / os.cpu_count())


class Close(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.bench = AccessibleBench(SOURCE)
        cls.addClassCleanup(cls.bench.close)
        (cls.bench.home / "MENU.TXT").write_text(f'"{cls.bench.home / "muestras/completa-256k.s19"}"\r\n')
        cls.bench.begin_display()
        cls.bench.begin_bus()

    def setUp(self):
        """With an erased chip."""
        self.bench.kill()
        self.bench.flash.unlink(missing_ok=True)

    def by_window(self):
        window = self.bench.ask("xdotool", "search", "--onlyvisible", "--name", "^Morvane$")[0]
        self.bench.ask("xdotool", "windowactivate", "--sync", window, "key", "alt+F4")

    def by_signal(self):
        self.bench.program.terminate()

    def ends(self, ask):
        """Asks, and takes the time until the program has ended in good order."""
        begun = time.monotonic()
        ask(self)
        try:
            self.assertEqual(self.bench.program.wait(AT_ONCE), 0)
        except subprocess.TimeoutExpired:
            self.fail(f"still there {AT_ONCE:.1f} s after the request")
        print(f"\n    {self.id().split('.')[-1]}: {time.monotonic() - begun:.2f} s", end="", file=sys.stderr)

    def run_up_to(self, frames):
        wait(f"frame {frames}", lambda: len(self.bench.commands()) >= frames)

    def idle(self):
        pass

    def other_windows(self):
        for name in ("Buffer de Entrada", "Buffer de Salida", "Puerto Serial"):
            self.bench.press(name)
        wait("the windows", lambda: len(self.bench.windows()) == 4)

    def erase(self):
        self.bench.press("Borrar Flash")
        self.run_up_to(8)

    def write(self):
        self.bench.load()
        self.bench.press("Programar dispositivo")
        self.run_up_to(60)

    def read(self):
        self.bench.press("Leer de la flash (Rango)")
        for box, text in (("Dirección desde:", "000000"), ("Dirección hasta:", "03FFFF")):
            self.bench.control(box, "text").write(text)
        self.bench.press("Leer")
        self.run_up_to(20)

    def verify(self):
        self.bench.press("Verificar Borrado")
        self.run_up_to(11)

    def settling(self):
        """The line after a question that was answered Yes, and one "A" of two that got its reply."""
        self.bench.press("Borrar Flash")
        self.bench.box(QUESTION).answer("Sí")
        self.run_up_to(4)

    def box_open(self):
        self.bench.press("Borrar Flash")
        self.bench.box(ERASED)

    def question_open(self):
        self.bench.press("Borrar Flash")
        self.bench.box(QUESTION)

    def file_dialog(self):
        self.bench.press("Abrir")
        wait("the dialog", lambda: len(self.bench.windows()) == 2)


def answering(state, ask, *options, closed=True):
    def test(self):
        self.bench.begin(*options)
        state(self)
        self.ends(ask)
        if closed:
            self.assertEqual(self.bench.commands()[-1], "D", "the chip is closed")
        if written := [c for c in self.bench.commands() if c[0] == "g"]:
            self.assertEqual(self.bench.journal_lines(), written)
    return test


def silent(state, ask, frame):
    def test(self):
        self.bench.begin("--muda-desde", str(frame))
        state(self)
        ask(self)
        time.sleep(0.2)
        self.assertIsNone(self.bench.program.poll(), "the running wait goes on")
        self.ends(ask)
    return test


for each in (Close.idle, Close.other_windows, Close.erase, Close.write, Close.read, Close.verify):
    slow = ("--sondeos-borrado", "50", "--baudios", "2400") if each in (Close.erase, Close.verify) else ()
    # Reading a range leaves the chip open, whether or not it is stopped.
    setattr(Close, f"test_{each.__name__}_closed_by_its_window",
            answering(each, Close.by_window, *slow, closed=each is not Close.read))
for each in (Close.write, Close.box_open, Close.file_dialog):
    setattr(Close, f"test_{each.__name__}_ended_by_a_signal", answering(each, Close.by_signal))
setattr(Close, "test_settling_closed_by_its_window", answering(Close.settling, Close.by_window, "--calla-en", "3"))
setattr(Close, "test_question_open_ended_by_a_signal",
        answering(Close.question_open, Close.by_signal, "--muda-desde", "8", closed=False))
for each, ask, frame in ((Close.erase, Close.by_window, 8), (Close.write, Close.by_window, 60),
                         (Close.read, Close.by_signal, 20), (Close.verify, Close.by_window, 11),
                         (Close.write, Close.by_signal, 60)):
    setattr(Close, f"test_{each.__name__}_silent_{ask.__name__}", silent(each, ask, frame))

unittest.main(verbosity=2)
