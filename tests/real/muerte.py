"""Kills the program, or kills or stops its board, in mid-run: what comes after is a normal run that brings the chip to
the right contents, with a whole journal."""
import signal

from mesa import groups_of
from textos import BROKEN, LOADED, QUESTION, RIGHT, WRITTEN


def run_up_to(bench, frame, silent):
    """Starts a run; the frame is counted from its "A", and a silent board does not answer it."""
    print(f"  frame {frame}")
    bench.begin(f"--sin-ritmo --calla-en {frame + 2}" if silent else "")
    bench.do("1 ", LOADED)
    bench.press("Programar dispositivo")
    bench.wait("the frame", lambda: len(bench.commands()) >= frame + 2)


def gives_up(bench):
    bench.box(BROKEN, 4).answer()
    bench.wait("the end", bench.idle)
    bench.rests()


def right_run(bench):
    bench.do("Programar dispositivo", WRITTEN)
    bench.do("Chequear lo Programado", RIGHT)
    assert bench.journal_lines() == groups_of(bench.images[0]), "another journal"
    bench.end(bench.board)
    assert bench.flash.read_bytes() == bench.images[0], "the chip holds something else"


def scenario(bench):
    bench.put_firmware(0x460)
    # The program in the erase, and behind some of the groups.
    for frame in 10, 101:
        run_up_to(bench, frame, silent=True)
        sent = bench.commands("g")
        bench.end(bench.program, "kill")
        assert not sent or bench.journal_lines() == sent, "the journal is not what the board has got"
        bench.begin_program()
        bench.do("1 ", LOADED)
        right_run(bench)

    # The board at work, and with a question open.
    for frame, answer in (40, None), (301, "Sí"):
        run_up_to(bench, frame, silent=answer)
        box = answer and bench.box(QUESTION)
        bench.end(bench.board, "kill")
        bench.rests()
        if box:
            box.answer(answer)
        gives_up(bench)
        bench.begin_board()
        right_run(bench)

    # A board that reads nothing more.
    run_up_to(bench, 40, silent=False)
    bench.board.send_signal(signal.SIGSTOP)
    bench.box(QUESTION).answer("Cancelar")
    gives_up(bench)
    bench.board.send_signal(signal.SIGCONT)
    # What it still has to say may break off a run that begins meanwhile.
    bench.rests(2)
    right_run(bench)
