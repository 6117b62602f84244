"""The program's windows over the accessibility bus: what stands in them can be read and pressed without a mouse."""
import os
import sys

try:
    from gi.repository import Gio, GLib
except ImportError:
    # python3-gi belongs to the distribution's own interpreter.
    if sys.executable == "/usr/bin/python3":
        raise
    os.execv("/usr/bin/python3", ["/usr/bin/python3", *sys.argv])

from apoyo.mesa import PATIENCE, Bench, wait

ROOT = "/org/a11y/atspi/accessible/root"
SPI = "org.a11y.atspi."
ENABLED, SHOWING = 8, 25

ERASED, WRITTEN = "¡Ha terminado de borrar!", "¡Ha terminado de grabar!"
LOADED, RIGHT = "Ha terminado de cargar el archivo", "El programa de la Flash ha sido verificado, está correcto"
BROKEN = "La comunicación se ha interrumpido y la operación no ha terminado. Debe repetirla"
QUESTION = ("No hay respuesta del Dispositivo, verifique la conexión con el puerto.\n"
            "Desea intentar conectarse?, si pulsa No, se saldrá del sistema")


class Control:
    """One thing in a window. It may be gone by the time it is asked; it then has no name, no role and no children."""

    def __init__(self, bus, name, path):
        self.bus, self.owner, self.path = bus, name, path

    def call(self, interface, method, arguments=None, reply=None):
        try:
            return self.bus.call_sync(self.owner, self.path, interface, method, arguments,
                                      reply and GLib.VariantType(reply), Gio.DBusCallFlags.NONE, 5000, None).unpack()
        except GLib.Error:
            return None

    def name(self):
        asked = GLib.Variant("(ss)", (SPI + "Accessible", "Name"))
        found = self.call("org.freedesktop.DBus.Properties", "Get", asked)
        return found[0] if found else ""

    def role(self):
        found = self.call(SPI + "Accessible", "GetRoleName")
        return found[0] if found else ""

    def has(self, *states):
        low, high = (self.call(SPI + "Accessible", "GetState") or [[0, 0]])[0]
        return all((high << 32 | low) >> state & 1 for state in states)

    def children(self):
        found = self.call(SPI + "Accessible", "GetChildren")
        return [Control(self.bus, name, path) for name, path in found[0]] if found else []

    def below(self, *roles):
        """All in it, however deep, that play one of the roles."""
        for child in self.children():
            if child.role() in roles:
                yield child
            yield from child.below(*roles)

    def can_be_pressed(self):
        return bool((self.call(SPI + "Action", "GetActions") or [[]])[0])

    def press(self):
        """Presses it and does not wait: what it does may end only with a box that it opens."""
        self.bus.call(self.owner, self.path, SPI + "Action", "DoAction", GLib.Variant("(i)", (0,)), None,
                      Gio.DBusCallFlags.NONE, 1, None, None)
        self.bus.flush_sync(None)

    def value(self):
        asked = GLib.Variant("(ss)", (SPI + "Value", "CurrentValue"))
        found = self.call("org.freedesktop.DBus.Properties", "Get", asked)
        return found[0] if found else 0

    def write(self, text):
        self.call(SPI + "EditableText", "SetTextContents", GLib.Variant("(s)", (text,)))


class Box:
    """An open message box."""

    def __init__(self, window):
        self.window, self.title = window, window.name()
        self.text = "".join(label.name() for label in window.below("label"))
        self.buttons = {button.name(): button for button in window.below("push button")}

    def answer(self, button=None):
        """Presses a button, the first one if none is named, and waits until the box is gone."""
        (self.buttons[button] if button else next(iter(self.buttons.values()))).press()
        wait(f"the box {self.text!r} to close", lambda: not self.window.has(SHOWING))


class AccessibleBench(Bench):
    """A bench whose program is read and driven over the accessibility bus."""

    def begin_bus(self):
        session, _ = self.start_and_hear(["dbus-daemon", "--session", "--nofork", "--print-address"])
        os.environ.update(DBUS_SESSION_BUS_ADDRESS=session, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.start(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"])
        launcher = Control(self.connect(session), "org.a11y.Bus", "/org/a11y/bus")
        self.bus = self.connect(wait("the bus", lambda: launcher.call("org.a11y.Bus", "GetAddress"))[0])

    @staticmethod
    def connect(address):
        flags = Gio.DBusConnectionFlags
        return Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)

    def begin_program(self, *before, **how):
        super().begin_program(*before, **how)
        self.controls = {}
        self.root = wait("the program on the bus", self.find_root)

    def find_root(self):
        daemon = Control(self.bus, "org.freedesktop.DBus", "/org/freedesktop/DBus")
        for name in daemon.call("org.freedesktop.DBus", "ListNames")[0]:
            owner = daemon.call("org.freedesktop.DBus", "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)))
            if name.startswith(":") and owner == (self.program.pid,):
                return Control(self.bus, name, ROOT)
        return None

    def begin(self, *options):
        """Starts board and program, instead of those that run, and waits for the probe of the board."""
        self.kill()
        self.begin_board(*options)
        self.begin_program()
        wait("the probe", lambda: self.commands() == ["A", "D"] and self.idle())

    def kill(self):
        for process in (self.program, self.board):
            if process in self.started:
                self.end(process, "kill")

    def control(self, name, *roles):
        """The control of the main window whose name is this or begins so; a button or a menu entry, if no role is said."""
        if name not in self.controls:
            found = [c for c in self.main().below(*roles or ("push button", "menu item")) if c.name().startswith(name)]
            self.controls[name] = min(found, key=lambda control: len(control.name()))
        return self.controls[name]

    def main(self):
        return wait("the main window", lambda: next((w for w in self.windows() if w.role() == "frame"), None))

    def windows(self):
        return [window for window in self.root.children() if window.has(SHOWING)]

    def boxes(self):
        return [Box(window) for window in self.windows() if window.role() == "alert message"]

    def press(self, name):
        self.control(name).press()

    def box(self, text=None, patience=PATIENCE):
        """Waits for a box, and checks what it says."""
        found = wait(f"a box {text or ''}", self.boxes, patience)[0]
        assert text in (None, found.text), f"a box says {found.text!r} instead of {text!r}"
        return found

    def idle(self):
        windows = [window.role() for window in self.windows()]
        return ("frame" in windows and not {"alert message", "dialog"} & set(windows) and not self.port_is_open() and
                self.control("Borrar Flash").has(ENABLED))

    def do(self, name, text, answer=None):
        """Presses a control, answers the one box that comes, and waits for the end."""
        self.press(name)
        self.box(text).answer(answer)
        wait(f"the end of {name}", self.idle)

    def load(self):
        """Loads the first file of the history."""
        self.do("1 ", LOADED)
