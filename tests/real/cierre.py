"""Asks the program to end, by its window and by SIGTERM, in every state: with a board that answers it has ended 2 s
later, and 2 s after a second request with one that is silent."""
import time

from textos import CLOSING, LOADED, QUESTION

# Of each state what is pressed, the frames that the board has got by then, and the windows that are open.
STATES = {
    "other windows": (("Buffer de Entrada", "Buffer de Salida", "Puerto Serial"), 2, 4),
    "erasing": (("Borrar Flash",), 8, 1),
    "writing": (("Programar dispositivo",), 60, 1),
    "looking": (("Verificar Borrado",), 11, 1),
    "settling": (("Borrar Flash", "Sí"), 4, 1),
    "box": (("Borrar Flash",), 12, 2),
    "dialog": (("Abrir",), 2, 2),
}
SLOW = "--sondeos-borrado 50 --baudios 2400"
HALF_DONE = {"erasing": "borrando", "writing": "grabando"}
WINDOW, SIGNAL = "its window", "a signal"
ANSWERING = (("other windows", WINDOW, ""), ("erasing", WINDOW, SLOW), ("writing", WINDOW, ""),
             ("looking", WINDOW, SLOW), ("settling", WINDOW, "--calla-en 3"), ("writing", SIGNAL, ""),
             ("box", SIGNAL, ""), ("dialog", SIGNAL, ""))
SILENT = ("erasing", WINDOW), ("looking", WINDOW), ("writing", SIGNAL)


def reach(bench, state, options):
    print(f"{state} {options}")
    names, frames, windows = STATES[state]
    bench.begin(options)
    bench.do("1 ", LOADED)
    for name in names:
        if name == "Sí":
            bench.box(QUESTION).answer(name)
        else:
            bench.press(name)
    bench.wait(state, lambda: len(bench.commands()) >= frames and len(bench.windows()) == windows)
    if state == "other windows":
        # One that has only just appeared would take the focus, and the key.
        bench.activate("sleep", "0.5")


def ask(bench, how):
    bench.close_window() if how == WINDOW else bench.program.terminate()


def insist(bench, how, state):
    """A chip that would be left half done is worth a question, once, and only to a person."""
    if how == WINDOW and state in HALF_DONE:
        bench.box(CLOSING.format(HALF_DONE[state])).answer("Sí")


def ends(bench, how, state=None):
    begun = bench.clock()
    ask(bench, how)
    insist(bench, how, state)
    bench.wait("the end", lambda: bench.program.poll() is not None, begun + 2 - bench.clock())
    print(f"  ended by {how} in {bench.clock() - begun:.2f} s")
    assert bench.end(bench.program) == 0, "the program did not end in good order"


def scenario(bench):
    bench.put_firmware(0x40000)
    for state, how, options in ANSWERING:
        reach(bench, state, options)
        ends(bench, how, state)
        assert bench.commands()[-1] == "D", "the chip is left open"
        assert not bench.commands("g") or bench.commands("g") == bench.journal_lines(), "the journal is not whole"
    for state, how in SILENT:
        reach(bench, state, f"--muda-desde {STATES[state][1]}")
        ask(bench, how)
        insist(bench, how, state)
        time.sleep(0.2)
        assert bench.program.poll() is None, "the running wait goes on"
        ends(bench, how)
