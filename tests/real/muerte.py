"""Kills the program, or its board, at chosen frames: what comes after is a normal run that brings the chip to the right
contents, with a whole journal."""
from mesa import groups_of
from textos import BROKEN, LOADED, QUESTION, RIGHT, WRITTEN

LENGTH = 0x460
# The frames of the run: "A", the erase from 2 to 12, "c", the write enable from 14 to 17, two a group, and "D".
FIRST_GROUP = 18
CLOSING = FIRST_GROUP + LENGTH // 2
# Who is killed at which frame, which the board has not answered if it is the program or there is a question; the box
# that is open meanwhile and its answer, and what is said then. The closing "D" alone may get lost unsaid.
KILLS = [("program", frame, None, None, None) for frame in (1, 10, 101, CLOSING)] + [
    ("board", 40, None, None, BROKEN), ("board", CLOSING - 1, WRITTEN, None, None), ("board", 8, QUESTION, "Sí", BROKEN),
    ("board", 301, QUESTION, "Cancelar", BROKEN)]


def right_run(bench):
    before = len(bench.commands())
    bench.do("Programar dispositivo", WRITTEN)
    run, groups = bench.commands()[before:], groups_of(bench.images[0])
    assert (run[0], run[FIRST_GROUP:-1:2], run[-1], len(run)) == ("A", groups, "D", CLOSING), "no normal run"
    bench.do("Chequear lo Programado", RIGHT)
    assert bench.journal_lines() == groups, "another journal"
    bench.end(bench.board)
    assert bench.flash.read_bytes() == bench.images[0], "the chip holds something else"


def scenario(bench):
    bench.put_firmware(LENGTH)
    for who, frame, text, button, said in KILLS:
        print(f"  the {who} is killed at frame {frame}")
        # The frame counts from the "A" of the run; two have gone before.
        bench.begin(f"--sin-ritmo --calla-en {frame + 2}" if who == "program" or text == QUESTION else "")
        bench.do("1 ", LOADED)
        bench.press("Programar dispositivo")
        if frame == CLOSING:
            bench.box(WRITTEN).answer()
        bench.wait("the frame", lambda: len(bench.commands()) >= frame + 2)
        box = text and bench.box(text)
        sent = bench.commands("g")
        bench.end(getattr(bench, who), "kill")
        if who == "program":
            assert not sent or bench.journal_lines() == sent, "the journal is not what the board has got"
            bench.begin_program()
            bench.do("1 ", LOADED)
        else:
            bench.rests()
            if box:
                box.answer(button)
            if said:
                bench.box(said, 4).answer()
            bench.wait("the end", bench.idle)
            bench.begin_board()
        right_run(bench)
