#!/usr/bin/env python3
"""Random operations on the built program, with random answers, against boards with random faults. After each operation
the user must be back at an idle window, and whatever the boxes said must be true of the chip.

Usage: azar_real.py PROGRAM_DIRECTORY [SEED [COUNT]]. Needs Xvfb, openbox, dbus-daemon, at-spi2-core and python3-gi."""
import collections
from itertools import pairwise
import pathlib
import random
import signal
import sys
import threading
import time

from apoyo.accesible import ENABLED, ERASED, LOADED, QUESTION, RIGHT, SHOWING, WRITTEN, AccessibleBench
from apoyo.mesa import groups_of, image_of, wait

CLEAN = "La Flash ha sido verificada, está borrada"
NOT_CLEAN, WRONG = "La Flash contiene datos, no está borrada", "El programa contenido en la Flash difiere del cargado en el buffer"
READ = "¡Ha terminado de Leer!"
BLANK = b"\xff" * 0x40000
# A user who has waited this long stops the run, and an operation that has not ended by then has hung.
IMPATIENT, HUNG = 20.0, 120.0
BOXES = 15

# Of each fault the options, with the frame at which it begins, and another number of its own.
FAULTS = {
    "silent": "--muda-desde {frame}",
    "no reply": "--calla-en {frame}",
    "cut": "--cortada-en {frame} --cortada-tras {few}",
    "late": "--retrasada-en {frame} --retraso-ms {late}",
    "slow": "--retrasa-todas --retraso-ms {few}",
    "bad sum": "--suma-mala-en {frame}",
    "small letters": "--suma-minuscula-en {frame}",
    "refused": "--error-en {frame} --codigo-error {digit}",
    "reset": "--reset-en {frame}",
    "resets": "--reset-en {frame} --reset-repetido {many}",
    "noise": "--ruido {few}",
    "babble": "--balbuceo-desde {frame}",
    "babble with ends": "--balbuceo-desde {frame} --balbuceo-etx",
    "drip": "--goteo-ms {few}",
    "lost words": "--por-mil-sin-grabar {many}",
    "hang-up": "--cuelga-en {frame}",
    "erase fails": "--falla-borrado",
    "no configuration": "--falla-config",
    "no permission": "--falla-permiso",
    "status FF": "--mudo",
    "protected": "--protegida",
    "long erase": "--sondeos-borrado {many}",
    "slow line": "--baudios 9600",
    "dies": "",
    "stops for a while": "",
}
COMMANDS = ("Borrar Flash", "Programar dispositivo", "Chequear lo Programado", "Reset procesador", "Verificar Borrado",
            "Leer de la flash", "Leer de la flash (Rango)")


def last_of(image):
    return len(image.rstrip(b"\xff")) - 1


class Chance:
    def __init__(self, source, seed):
        self.bench, self.dice = AccessibleBench(source), random.Random(seed)
        self.files, self.chosen, self.said, self.faults = [], None, [], []
        # What the image may hold: a stop that was asked for while nothing ran lets the next load end before its first line.
        self.loaded, self.stopped = [None], False
        self.tally, self.boxes = collections.Counter(), collections.Counter()
        for number, last in enumerate((0x45F, 0x13FF, 0x81FF)):
            self.files.append(self.bench.dir / f"{number}.s19")
            self.files[-1].write_text("".join("S1%02X%04X%s00\n" % (35, a, self.dice.randbytes(32).hex().upper())
                                              for a in range(0, last, 32)))
        (self.bench.home / "MENU.TXT").write_text("".join(f'"{file}"\r\n' for file in self.files))
        self.bench.begin_display()
        self.bench.begin_bus()

    def draw_board(self):
        self.faults = [] if self.dice.random() < 0.2 else self.dice.sample(sorted(FAULTS), self.dice.choice((1, 1, 2)))
        options = [option for fault in self.faults for option in FAULTS[fault].format(
            frame=self.dice.randint(1, self.dice.choice((6, 25, 25, 600))),
            few=self.dice.randint(1, 20), many=self.dice.randint(2, 70), digit=self.dice.choice("123456789AZ"),
            late=self.dice.choice((300, 2000, 7000))).split()]
        self.tally.update(self.faults or ["none"])
        pace = [] if "slow line" in self.faults else ["--sin-ritmo"]
        self.board(*pace, *options, "--semilla", str(self.dice.randint(0, 999)))

    def board(self, *options):
        if self.bench.board in self.bench.started:
            assert self.bench.end(self.bench.board) == 0
        self.bench.begin_board(*options)

    def program(self):
        self.bench.begin_program()
        self.loaded, self.stopped = [None], False
        self.settle()

    def draw_control(self):
        """A command more often than not, else anything that can be pressed in the main window."""
        if self.dice.random() < 0.7:
            return self.bench.control(self.dice.choice(COMMANDS))
        return self.dice.choice([c for c in self.bench.main().below("push button", "menu item") if c.has(ENABLED) and
                                 c.can_be_pressed() and (c.role() == "menu item" or c.has(SHOWING))])

    def press(self, control):
        name = control.name()
        print(f"    {name}", flush=True)
        if name == "Leer de la flash (Rango)":
            for box in ("Dirección desde:", "Dirección hasta:"):
                self.bench.control(box, "text").write("%06X" % self.dice.choice((0, 0x20, 0x123, 0x1000, 0x3FFFF)))
            control.press()
            control = self.bench.control("Leer")
            wait("the panel", lambda: control.has(SHOWING))
        if name[:2] in ("1 ", "2 ", "3 "):
            self.chosen = self.files[int(name[0]) - 1]
        self.stopped = self.stopped or name.startswith("Detener")
        control.press()
        time.sleep(0.3)

    def answer(self, box):
        button = self.dice.choice(list(box.buttons))
        if box.text == QUESTION:
            button = self.dice.choices(("Sí", "Cancelar", "No"), (40, 50, 10))[0]
        print(f"      {box.text!r} {button}", flush=True)
        self.said.append(box.text)
        if box.text == LOADED:
            self.loaded, self.stopped = [self.chosen] + [None] * self.stopped, False
        self.boxes[box.text] += 1
        assert len(self.said) <= BOXES, "a storm of boxes"
        box.answer(button)

    def choose(self, dialog):
        """Opens one of the files, or none."""
        parts = {part.name(): part for part in dialog.below("push button", "text")}
        if not {"Nombre de archivo:", "Abrir", "Cancelar"} <= set(parts):
            return
        if self.dice.random() < 0.5:
            self.chosen = self.dice.choice(self.files)
            parts["Nombre de archivo:"].write(str(self.chosen))
            parts["Abrir"].press()
        else:
            parts["Cancelar"].press()
        wait("the dialog to close", lambda: not dialog.has(SHOWING))

    def ended(self):
        return self.bench.program.poll() is not None

    def idles(self):
        """For a moment: the port is closed just before the last box opens."""
        return self.bench.idle() and (time.sleep(0.1) or self.bench.idle())

    def settle(self):
        """Answers what comes up until the program is idle, or has ended because that was wished."""
        begun, impatient = time.monotonic(), False
        while not self.ended() and not self.idles():
            for window in self.bench.windows():
                if window.role() == "dialog":
                    self.choose(window)
            for box in self.bench.boxes():
                self.answer(box)
            if time.monotonic() - begun > IMPATIENT and not impatient:
                self.press(self.bench.control("Detener"))
                impatient = True
            assert time.monotonic() - begun < HUNG, "the operation hangs"
            time.sleep(0.02)

    def operation(self):
        self.draw_board()
        self.said = []
        if self.bench.program not in self.bench.started:
            self.program()
        if self.ended():
            return
        self.press(self.draw_control())
        if "dies" in self.faults:
            time.sleep(self.dice.random() / 2)
            self.bench.end(self.bench.board, "kill")
            self.bench.begin_board("--sin-ritmo")
        if "stops for a while" in self.faults:
            self.bench.board.send_signal(signal.SIGSTOP)
            threading.Timer(self.dice.choice((1, 7)), self.bench.board.send_signal, (signal.SIGCONT,)).start()
        if self.dice.random() < 0.15 and not self.ended() and not self.bench.boxes():
            self.press(self.dice.choice((self.bench.control("Detener"), self.draw_control())))
        if self.dice.random() < 0.03:
            self.bench.program.terminate()
        self.settle()

    def check(self):
        """Whether what was said is true of the chip."""
        exchange = self.bench.exchange()
        self.bench.board.send_signal(signal.SIGCONT)
        assert self.bench.end(self.bench.board) == 0
        if "dies" in self.faults:
            return
        flash = self.bench.flash.read_bytes()
        refused = any(c == (">", "i") and r[0] == "<" and r[1] != "0" for c, r in pairwise(exchange))
        garbled = {"noise", "babble", "babble with ends"} & set(self.faults)
        reads = [(c[1], r[1]) for c, r in pairwise(exchange) if c[0] == ">" and c[1][:1] == "e"]
        groups = [text for direction, text in exchange if direction == ">" and text[:1] == "g"]
        images = [image_of(file) if file else BLANK for file in self.loaded]
        same = [self.same_sums(flash, image) for image in images]
        for text, true in (
                (ERASED, flash == BLANK or refused), (CLEAN, flash == BLANK), (NOT_CLEAN, flash != BLANK or garbled),
                (RIGHT, any(same)), (WRONG, not all(same) or garbled),
                (WRITTEN, any(groups == groups_of(image, last_of(image)) for image in images)),
                (READ, all(len(self.said) > 1 or (r[:1] == "0" and len(r) == 65) for _, r in reads)),
                (READ, all(int(a[1:7], 16) + 32 == int(b[1:7], 16) for (a, _), (b, _) in pairwise(reads)))):
            assert true or text not in self.said, f"a false word: {text}"

    @staticmethod
    def same_sums(flash, image):
        """What the verification compares: the beginning, and the blocks up to the one with the last byte."""
        blocks = range(0, max(last_of(image), 0) + 1, 0x8000)
        return sum(flash[:0x401]) == sum(image[:0x401]) and all(
            sum(flash[a:a + 0x8000]) == sum(image[a:a + 0x8000]) for a in blocks)

    def rest(self):
        before = self.bench.processor_time()
        time.sleep(0.3)
        assert self.bench.processor_time() - before < 0.1, "an idle program computes"

    def good_round(self):
        """With a good board everything works, whatever has gone before."""
        self.board("--sin-ritmo")
        for _ in range(2):
            self.press(self.bench.control("2 "))
            self.settle()
        self.bench.do("Programar dispositivo", WRITTEN)
        self.bench.do("Chequear lo Programado", RIGHT)
        assert self.bench.end(self.bench.board) == 0
        assert self.bench.flash.read_bytes() == image_of(self.chosen)

    def run(self, count):
        for number in range(count):
            self.operation()
            print(f"  {number}: {', '.join(self.faults) or 'no fault'}", flush=True)
            self.check()
            if self.ended():
                assert self.bench.end(self.bench.program) == 0, "the program has crashed"
                continue
            self.rest()
            if number % 4 == 3:
                self.good_round()
        print("on standard error:", set(self.bench.errors.read_text().splitlines()))
        print(f"{count} operations\nfaults: {dict(self.tally)}\nboxes: {dict(self.boxes)}")


seed, count = map(int, sys.argv[2:4] + ["3", "10"][len(sys.argv) - 2:])
chance = Chance(pathlib.Path(sys.argv[1]).resolve(), seed)
try:
    chance.run(count)
except BaseException:
    print(f"seed {seed}; the board, with {chance.faults}, took:", " ".join(chance.bench.commands()[-30:]))
    print("the boxes said:", chance.said, "and one is open:" if chance.bench.boxes() else "")
    raise
finally:
    chance.bench.close()
