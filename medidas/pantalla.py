"""Sees windows appear on an X display, without a tool in between that would take time of its own."""
import ctypes
import select
import time

SUBSTRUCTURE_NOTIFY, MAP_NOTIFY = 1 << 19, 19


class Screen:
    def __init__(self, name):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(name.encode()))
        assert self.display, f"no display {name}"
        root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))
        self.x.XSelectInput(self.display, root, ctypes.c_long(SUBSTRUCTURE_NOTIFY))
        self.x.XSync(self.display, 0)

    def next_window(self, seconds=20):
        """Waits for the next window to appear on the screen; gives the moment and the window's size."""
        event, end = ctypes.create_string_buffer(192), time.monotonic() + seconds
        while time.monotonic() < end:
            if not self.x.XPending(self.display):
                select.select([self.x.XConnectionNumber(self.display)], [], [], 0.5)
                continue
            self.x.XNextEvent(self.display, event)
            now = time.monotonic()
            if ctypes.c_int.from_buffer(event, 0).value == MAP_NOTIFY:
                return now, self.size(ctypes.c_ulong.from_buffer(event, 40))
        raise AssertionError("no window has appeared")

    def size(self, window):
        root, numbers = ctypes.c_ulong(), [ctypes.c_uint() for _ in range(6)]
        self.x.XGetGeometry(self.display, window, ctypes.byref(root), *map(ctypes.byref, numbers))
        return numbers[2].value, numbers[3].value

    def forget(self):
        """Passes over what has happened so far."""
        self.x.XSync(self.display, 1)
