"""Kills the program, or its board, at chosen frames: what comes after is a normal run that brings the chip to the right
contents, with settings, history and journal whole."""
from mesa import groups_of
from textos import BROKEN, LOADED, QUESTION, RIGHT, WRITTEN

LENGTH = 0x460
# The frames of the run: "A", the erase from 2 to 12, "c", the write enable from 14 to 17, two a group, and "D".
FIRST_GROUP = 18
CLOSING = FIRST_GROUP + LENGTH // 2
PROGRAM_KILLED_AT = 1, 10, FIRST_GROUP + 1, 100, CLOSING
# Of a board that is killed: the frame, whether it has kept silent about it, the box that is open meanwhile and its
# answer, and what is said then. The closing "D" alone may get lost unsaid.
BOARD_KILLED_AT = (
    (FIRST_GROUP + 1, True, None, None, BROKEN), (40, False, None, None, BROKEN),
    (CLOSING - 1, False, WRITTEN, None, None), (8, True, QUESTION, "Sí", BROKEN),
    (301, True, QUESTION, "Cancelar", BROKEN))


def run_up_to(bench, frame, silent):
    """Starts a run; the frame is counted from its "A"."""
    print(f"  frame {frame}")
    bench.begin(f"--sin-ritmo --calla-en {frame + 2}" if silent else "")
    bench.do("1 ", LOADED)
    bench.press("Programar dispositivo")
    if frame == CLOSING:
        bench.box(WRITTEN).answer()
    bench.wait("the frame", lambda: len(bench.commands()) >= frame + 2)


def right_run(bench):
    before = len(bench.commands())
    bench.do("Programar dispositivo", WRITTEN)
    run, groups = bench.commands()[before:], groups_of(bench.images[0])
    assert (run[0], run[FIRST_GROUP:-1:2], run[-1], len(run)) == ("A", groups, "D", CLOSING), "no normal run"
    bench.do("Chequear lo Programado", RIGHT)
    assert bench.journal_lines() == groups, "another journal"
    bench.end(bench.program)
    bench.end(bench.board)
    assert bench.flash.read_bytes() == bench.images[0], "the chip holds something else"


def scenario(bench):
    bench.put_firmware(LENGTH)
    files = bench.settings.read_bytes(), bench.history.read_bytes()
    print("the program is killed")
    for frame in PROGRAM_KILLED_AT:
        run_up_to(bench, frame, silent=True)
        sent = bench.commands("g")
        bench.end(bench.program, "kill")
        assert not sent or bench.journal_lines() == sent, "the journal is not what the board has got"
        bench.begin_program()
        bench.do("1 ", LOADED)
        right_run(bench)

    print("the board is killed")
    for frame, silent, text, button, said in BOARD_KILLED_AT:
        run_up_to(bench, frame, silent)
        box = text and bench.box(text)
        bench.end(bench.board, "kill")
        bench.rests()
        if box:
            box.answer(button)
        if said:
            bench.box(said, 4).answer()
        bench.wait("the end", bench.idle)
        bench.begin_board()
        right_run(bench)
    assert (bench.settings.read_bytes(), bench.history.read_bytes()) == files, "other settings or history"
