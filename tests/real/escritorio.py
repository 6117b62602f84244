"""The main job with mouse and keyboard alone, on a line as slow as the real one. Whatever the keyboard reaches has a
name."""
import time

from accesible import ACTIVE, FOCUSABLE, SHOWING, Control
from mesa import BLANK, groups_of
from textos import CLEAN, ERASED, LOADED, READ, RIGHT, WRITTEN


def scenario(bench):
    def click(control, button=1):
        where = bench.wait("something to click on", control.middle)
        bench.ask("xdotool", "mousemove", *where, "click", button)

    def key(title, name):
        """Presses a key in a window that it closes, with this title and other than the main one."""
        window = bench.wait(f"{title} in front", lambda: next((w for w in bench.windows() if w.has(ACTIVE) and
                            w.name() == title and (title, w.role()) != ("Morvane", "frame")), None))
        for part in window.below():
            # A file may have no size.
            if part.has(FOCUSABLE) and part.has(SHOWING) and part.role() != "tree item":
                assert part.name().strip(), f"a nameless {part.role()} in {title}"
        if window.role() == "alert message":
            # At first it takes no key.
            time.sleep(0.55)
        bench.ask("xdotool", "key", name)
        bench.wait(f"{title} to close", lambda: not window.has(SHOWING))

    def do(names, text=None, title="Atención", name="Return"):
        """Clicks on one control or one after the other, and answers with a key the box that comes."""
        for each in names:
            bench.press(each)
        if text:
            assert (found := bench.box(text).title) == title, f"{text!r} stands under {found!r}"
            key(title, name)

    def choose_file(path, name="Return"):
        dialog = bench.wait("the dialog", lambda: bench.windows("dialog"))[0]
        next(dialog.below("text")).write(str(path))
        key("Abrir", name)

    def closed_after(*last):
        bench.wait(f"{last} and D", lambda: tuple(bench.commands()[-1 - len(last):]) == (*last, "D"))

    Control.press = click
    bench.put_firmware(0x13B2, 0x40000)
    bench.history.unlink()
    bench.begin("--baudios 115200")
    do(["Abrir"])
    choose_file(bench.files[0])
    do((), LOADED, "Morvane")
    do(["Programar dispositivo"], WRITTEN, "Morvane")
    closed_after()
    assert bench.commands("g") == bench.journal_lines() == groups_of(bench.images[0]), "not what was loaded"
    bench.wait("the flash on the disk", lambda: bench.flash.exists() and bench.flash.read_bytes() == bench.images[0])
    do(["Chequear lo Programado"], RIGHT)
    closed_after("C000000000400", "C000000007FFF")
    do(["Upload", "Leer de la flash"], READ, "Morvane")
    assert bench.commands("e") == ["e%06X20" % a for a in range(0, 0x13B3 + 32, 32)], "other reads"

    for menu, entry, title in (("Ver", "Buffer de E", "Buffer de Entrada"), ("Ver", "Buffer de S", "Buffer de Salida"),
                               ("Opciones", "Puerto", "Opciones del puerto serial")):
        do([menu, entry])
        key(title, "alt+F4")
    do(["COM1 · placa simulada · "])
    key("Opciones del puerto serial", "Escape")
    bench.activate("key", "F1")
    key("Manual de Morvane", "Escape")
    click(bench.control("Mapa de la flash", "chart"), 3)
    bench.wait("the menu", lambda: bench.ask("xdotool", "search", "--onlyvisible", "--name", "contextual$"))
    bench.ask("xdotool", "key", "Down", "Return")
    do((), "Ha finalizado la comparación de los buffer de entrada y salida")
    key("Resultado Comparación de buffer", "alt+F4")

    do(["Borrar Flash"], ERASED)
    bench.wait("the erased flash on the disk", lambda: bench.flash.read_bytes() == BLANK)
    do(["Memoria Flash", "Verificar Borrado"], CLEAN)
    assert bench.commands("C")[-1] == "C040000007FFF", "the last look at an erased flash"
    do(["Reset procesador"])
    closed_after("j")

    do(["Abrir"], "Desea cargar el mismo proyecto?", name="n")
    choose_file(bench.files[0], "Escape")
    do(["Abrir"])
    choose_file(bench.files[1])
    do((), LOADED, "Morvane")
    bench.end(bench.program)
    bench.begin_program()
    do(["Archivo", "1 "], LOADED, "Morvane")
    do(["Programar dispositivo"], WRITTEN, "Morvane")
    assert bench.journal_lines() == groups_of(bench.images[0]), "not the file from before the restart"
