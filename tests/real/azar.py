"""Random operations, with random answers, against boards with random faults. After each operation the user must be back
at an idle window, and whatever the boxes said must be true of the chip. Arguments: SEED and COUNT."""
from itertools import pairwise
import random
import signal
import threading
import time

from accesible import ENABLED, SHOWING
from mesa import BLANK, groups_of
from textos import CLEAN, ERASED, LOADED, QUESTION, RIGHT, WRITTEN

# A user who has waited this long stops the run, and an operation that has not ended by then has hung.
IMPATIENT, HUNG, BOXES = 20.0, 120.0, 15
DIES, STOPS = "dies", "stops for a while"
# What the board draws by lot, by the words that follow on it: replies that are no replies, words that do not arrive.
SPOILS = ("RESET suelto", "muchos RESET", "ruido", "balbuceo", "duplicada", "suelta", "saluda", "carácter")
KEEPS_NOT = "sin grabar", "bit pegado"
COMMANDS = ("Borrar Flash", "Programar dispositivo", "Chequear lo Programado", "Reset procesador", "Verificar Borrado",
            "Leer de la flash", "Leer de la flash (Rango)")


class Chance:
    def __init__(self, bench, seed):
        self.bench, self.dice, self.said = bench, random.Random(seed), []

    def draw_board(self):
        """A good board, one with a fault, or one that something happens to meanwhile."""
        lot, seed = self.dice.random(), self.dice.randrange(10**6)
        options = ("--baudios 9600" if lot < 0.2 else "--protegida --sin-ritmo" if lot < 0.25 else
                   "--sin-ritmo" if lot < 0.4 else f"--sin-ritmo --averia {seed}")
        self.fault = self.bench.begin_board(options).partition("avería: ")[2]
        self.befalls = self.dice.choice((DIES, STOPS)) if lot < 0.4 and self.dice.random() < 0.4 else ""
        print(f"  the board: {options} {self.fault} {self.befalls}")

    def draw_control(self):
        """A command more often than not, else anything that can be pressed in the main window."""
        if self.dice.random() < 0.7:
            return self.bench.control(self.dice.choice(COMMANDS))
        return self.dice.choice([c for c in self.bench.windows("frame")[0].below("push button", "menu item") if c.has(
            ENABLED) and c.can_be_pressed() and (c.role() == "menu item" or c.has(SHOWING))])

    def press(self, control):
        print(f"    {control.name()}")
        control.press()
        if control.name() == COMMANDS[-1]:
            for box in "Dirección desde:", "Dirección hasta:":
                self.bench.control(box, "text").write("%06X" % self.dice.choice((0, 0x20, 0x123, 0x1000, 0x3FFFF)))
            self.bench.wait("the panel", self.bench.control("Leer").middle)
            self.bench.press("Leer")
        time.sleep(0.3)

    def answer(self, box):
        button = self.dice.choice(list(box.buttons))
        if box.text == QUESTION:
            button = self.dice.choices(("Sí", "Cancelar", "No"), (40, 50, 10))[0]
        print(f"      {box.text!r} {button}")
        self.said.append(box.text)
        assert len(self.said) <= BOXES, "a storm of boxes"
        box.answer(button)

    def choose(self, dialog):
        """Opens one of the files, or none; other dialogs go by themselves."""
        parts = {part.name(): part for part in dialog.below("push button", "text")}
        if "Nombre de archivo:" in parts and "Cancelar" in parts and "Abrir" in parts:
            parts["Nombre de archivo:"].write(str(self.dice.choice(self.bench.files)))
            parts[self.dice.choice(("Abrir", "Cancelar"))].press()
            self.bench.wait("the dialog to close", lambda: not dialog.has(SHOWING))

    def ended(self):
        return self.bench.program.poll() is not None

    def idles(self):
        """For a moment: the port is closed just before the last box opens."""
        return self.bench.idle() and (time.sleep(0.1) or self.bench.idle())

    def settle(self):
        """Answers what comes up until the program is idle, or has ended because that was wished."""
        begun, impatient = self.bench.clock(), False
        while not self.ended() and not self.idles():
            for dialog in self.bench.windows("dialog"):
                self.choose(dialog)
            for box in self.bench.boxes():
                self.answer(box)
            if not impatient and self.bench.clock() > begun + IMPATIENT:
                self.press(self.bench.control("Detener"))
                impatient = True
            assert self.bench.clock() < begun + HUNG, "the operation hangs"

    def operation(self):
        self.draw_board()
        self.said = []
        if self.bench.program not in self.bench.started:
            self.bench.begin_program(probes=False)
            self.settle()
        if self.ended():
            return
        self.press(self.draw_control())
        if self.befalls == DIES:
            time.sleep(self.dice.random() / 2)
            self.bench.end(self.bench.board, "kill")
            self.bench.begin_board()
        if self.befalls == STOPS:
            self.bench.board.send_signal(signal.SIGSTOP)
            threading.Timer(self.dice.choice((1, 7)), self.bench.board.send_signal, (signal.SIGCONT,)).start()
        if self.dice.random() < 0.15 and not self.ended() and not self.bench.boxes():
            self.press(self.dice.choice((self.bench.control("Detener"), self.draw_control())))
        if self.dice.random() < 0.03:
            self.bench.program.terminate()
        self.settle()

    def check(self):
        """Whether what was said is true of the chip, and of one of the files; after a stop an image can be empty."""
        exchange, groups = self.bench.exchange(), self.bench.commands("g")
        self.bench.board.send_signal(signal.SIGCONT)
        assert self.bench.end(self.bench.board) == 0, "the board has crashed"
        flash, images = self.bench.flash.read_bytes(), self.bench.images
        erase_refused = any(command == (">", "i") and reply[0] == "<" and reply[1] != "0"
                            for command, reply in pairwise(exchange))
        spoilt, kept = self.fault.startswith(SPOILS), not self.fault.startswith(KEEPS_NOT)
        for text, true in (
                (ERASED, flash == BLANK or erase_refused or not kept), (CLEAN, flash == BLANK or spoilt),
                ("La Flash contiene datos, no está borrada", flash != BLANK or spoilt),
                # Nothing may be loaded, and an erased chip is as empty.
                (RIGHT, spoilt or flash == BLANK or any(flash.startswith(image.rstrip(b"\xff")) for image in images)),
                (WRITTEN, not groups or any(self.bench.journal_lines() == groups_of(image) for image in images))):
            assert true or self.befalls == DIES or text not in self.said, f"a false word: {text}"

    def good_round(self):
        """With a good board everything works, whatever has gone before."""
        self.bench.begin_board()
        # A stop asked for while nothing ran lets the next load end before its first line.
        for name, text in (("2 ", LOADED), ("2 ", LOADED), ("Programar dispositivo", WRITTEN),
                           ("Chequear lo Programado", RIGHT)):
            self.bench.do(name, text)
        self.bench.end(self.bench.board)
        assert self.bench.flash.read_bytes() == self.bench.images[1], "the chip holds something else"


def scenario(bench, seed="3", count="10"):
    bench.put_firmware(0x460, 0x1400, 0x8200)
    chance = Chance(bench, int(seed))
    for number in range(int(count)):
        print(f"{number}, with seed {seed}")
        chance.operation()
        chance.check()
        if chance.ended():
            assert bench.end(bench.program) == 0, "the program has crashed"
            continue
        bench.rests(0.3)
        if number % 4 == 3:
            chance.good_round()
    print("on standard error:", set(bench.errors.read_text().splitlines()))
