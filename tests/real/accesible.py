"""The program's windows over the accessibility bus: what stands in them can be read and pressed without a mouse."""
from gi.repository import Gio, GLib

SPI = "org.a11y.atspi."
ACTIVE, ENABLED, FOCUSABLE, SHOWING = 1, 8, 11, 25


class Control:
    """One thing in a window. It may be gone by the time it is asked; it then has no name, no role and no children."""

    def __init__(self, bus, owner, path):
        self.bus, self.owner, self.path = bus, owner, path

    def call(self, interface, method, kinds="", *arguments, default=None):
        """The first thing of the reply, or the default if there is none."""
        try:
            return self.bus.call_sync(self.owner, self.path, interface, method, GLib.Variant(f"({kinds})", arguments),
                                      None, Gio.DBusCallFlags.NONE, 5000, None).unpack()[0]
        except GLib.Error:
            return default

    def name(self):
        return self.call("org.freedesktop.DBus.Properties", "Get", "ss", SPI + "Accessible", "Name", default="")

    def role(self):
        return self.call(SPI + "Accessible", "GetRoleName", default="")

    def has(self, state):
        low, high = self.call(SPI + "Accessible", "GetState", default=(0, 0))
        return bool((high << 32 | low) >> state & 1)

    def children(self):
        return [Control(self.bus, *child) for child in self.call(SPI + "Accessible", "GetChildren", default=[])]

    def below(self, *roles):
        """All in it, however deep; of that what plays one of the roles if any is said."""
        for child in self.children():
            if not roles or child.role() in roles:
                yield child
            yield from child.below(*roles)

    def middle(self):
        """The point of the screen in its middle; None while it cannot be seen."""
        x, y, width, height = self.call(SPI + "Component", "GetExtents", "u", 0, default=(0, 0, 0, 0))
        return (x + width // 2, y + height // 2) if self.has(SHOWING) and width and height else None

    def can_be_pressed(self):
        return bool(self.call(SPI + "Action", "GetActions"))

    def press(self):
        """Presses it and does not wait: what it does may end only with a box that it opens."""
        self.bus.call(self.owner, self.path, SPI + "Action", "DoAction", GLib.Variant("(i)", (0,)), None,
                      Gio.DBusCallFlags.NONE, 1, None, None)
        self.bus.flush_sync(None)

    def write(self, text):
        self.call(SPI + "EditableText", "SetTextContents", "s", text)


def connect(address):
    flags = Gio.DBusConnectionFlags
    return Gio.DBusConnection.new_for_address_sync(
        address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)


def root_of(bus, process):
    """What holds the windows of a process; None if it is not on the bus."""
    daemon = Control(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus")
    for name in daemon.call(daemon.owner, "ListNames"):
        if name[0] == ":" and daemon.call(daemon.owner, "GetConnectionUnixProcessID", "s", name) == process:
            return Control(bus, name, "/org/a11y/atspi/accessible/root")
    return None
