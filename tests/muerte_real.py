#!/usr/bin/env python3
"""Kills the built program, and then its board, in the midst of a programming run, at chosen frames: what comes after is
a normal run that brings the chip to the right contents, with settings, history and journal whole.

Usage: muerte_real.py PROGRAM_DIRECTORY [STEP]. With a step, every STEP-th frame instead of the chosen ones. Needs Xvfb, openbox, dbus-daemon, at-spi2-core and python3-gi."""
import pathlib
import sys
import unittest

from apoyo.accesible import BROKEN, RIGHT, WRITTEN, AccessibleBench
from apoyo.mesa import groups_of, image_of, wait

SOURCE = pathlib.Path(sys.argv[1]).resolve()
STEP = int(sys.argv[2]) if len(sys.argv) > 2 else 0
LAST = 0x45F
# The frames of the run: "A", the erase from 2 to 12, "c", the write enable from 14 to 17, two a group, and "D".
FIRST_GROUP, GROUPS = 18, LAST // 4 + 1
CLOSING = FIRST_GROUP + 2 * GROUPS


def frames(*chosen):
    return range(1, CLOSING + 1, STEP) if STEP else chosen


class Kill(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.bench = AccessibleBench(SOURCE)
        cls.addClassCleanup(cls.bench.close)
        cls.firmware = cls.bench.dir / "corto.s19"
        cls.firmware.write_text("".join(
            "S1%02X%04X%s00\n" % (35, a, bytes((a * 7 + k) % 251 for k in range(32)).hex().upper())
            for a in range(0, LAST + 1, 32)))
        cls.image = image_of(cls.firmware)
        cls.groups = groups_of(cls.image, LAST)
        cls.history = f'"{cls.firmware}"\r\n'.encode()
        (cls.bench.home / "MENU.TXT").write_bytes(cls.history)
        cls.settings = (cls.bench.home / "SETTINGS.TXT").read_bytes()
        cls.bench.begin_display()
        cls.bench.begin_bus()

    def right_run(self):
        """Programs and verifies; gives the commands of the run."""
        before = len(self.bench.commands())
        self.bench.do("Programar dispositivo", WRITTEN)
        commands = self.bench.commands()[before:]
        self.bench.do("Chequear lo Programado", RIGHT)
        self.assertEqual(self.bench.journal_lines(), self.groups)
        self.assertEqual((self.bench.home / "SETTINGS.TXT").read_bytes(), self.settings)
        self.assertEqual((self.bench.home / "MENU.TXT").read_bytes(), self.history)
        return commands

    def chip_is_right(self):
        self.bench.end(self.bench.board)
        self.assertEqual(self.bench.flash.read_bytes(), self.image)

    def stuck_at(self, frame, fault):
        """Starts a run that waits for its reply to this frame, counted from its "A"."""
        self.bench.begin("--sin-ritmo", fault, str(frame + 2))
        self.bench.load()
        self.bench.press("Programar dispositivo")
        if frame == CLOSING:
            self.bench.box(WRITTEN).answer()
        wait(f"frame {frame}", lambda: len(self.bench.commands()) == frame + 2)

    def test_the_program_is_killed(self):
        for frame in frames(1, 8, 10, 13, FIRST_GROUP, FIRST_GROUP + 1, 100, CLOSING - 1, CLOSING):
            with self.subTest(frame=frame):
                self.stuck_at(frame, "--calla-en")
                sent = [c for c in self.bench.commands() if c[0] == "g"]
                self.bench.end(self.bench.program, "kill")
                if sent:
                    self.assertEqual(self.bench.journal_lines(), sent, "what the board has got")
                self.bench.begin_program()
                wait("the probe", lambda: self.bench.commands()[frame + 2:] == ["A", "D"] and self.bench.idle())
                self.bench.load()
                run = self.right_run()
                self.assertEqual((run[0], run[FIRST_GROUP:-1:2], run[-1], len(run)), ("A", self.groups, "D", CLOSING))
                self.bench.end(self.bench.program)
                self.chip_is_right()

    def test_the_board_is_killed(self):
        """The program says so once; only a "D" that fails undoes nothing, and nothing is said of it."""
        for frame in frames(8, FIRST_GROUP + 1, 301, CLOSING):
            with self.subTest(frame=frame):
                self.stuck_at(frame, "--calla-en")
                self.bench.end(self.bench.board, "kill")
                if frame < CLOSING:
                    self.bench.box(BROKEN, 4).answer()
                wait("the end", self.bench.idle)
                self.bench.begin_board("--sin-ritmo")
                self.right_run()
                self.bench.end(self.bench.program)
                self.chip_is_right()


unittest.main(argv=sys.argv[:1], verbosity=2)
