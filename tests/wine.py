"""A directory of Wine's own whose serial ports are pseudo-terminals, never those of this machine."""
import contextlib
import os
import pathlib
import subprocess
import time


class Wine:
    def __init__(self, program, prefix):
        self.program = os.path.abspath(program)
        self.prefix = os.path.abspath(prefix)

    @property
    def env(self):
        return {"WINEDEBUG": "-all", **os.environ, "WINEPREFIX": self.prefix}

    def server(self, option):
        """Of this prefix alone, which nobody else uses."""
        folders = [pathlib.Path(self.program).parent, pathlib.Path("/usr/lib/wine"), pathlib.Path("/usr/bin")]
        found = [f / "wineserver" for f in folders if (f / "wineserver").exists()]
        subprocess.run([found[0], option], env=self.env, timeout=60, check=False, stderr=subprocess.DEVNULL)

    def registry(self, key, name, value):
        subprocess.run([self.program, "reg", "add", key, "/v", name, "/d", value, "/f"], env=self.env, timeout=120, check=True,
                       stdout=subprocess.DEVNULL)

    def fonts(self):
        """The system's own font is one that this host has; without it Wine takes any, with serifs."""
        for name in ("MS Shell Dlg", "MS Shell Dlg 2", "Tahoma", "Segoe UI"):
            self.registry(r"HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes", name, "DejaVu Sans")
        self.registry(r"HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes", "Courier New", "DejaVu Sans Mono")

    def ports(self, terminals):
        """COM1 on; the others of the first four lead nowhere, as the machine's own lines must not be touched."""
        for number in range(1, 5):
            path = terminals[number - 1] if number <= len(terminals) else "/nonexistent"
            self.registry(r"HKLM\Software\Wine\Ports", f"COM{number}", path)
        # The ports are looked at when the server starts.
        self.server("-w")

    def start(self, words, **more):
        return subprocess.Popen([self.program, *words], env=self.env, **more)

    def run(self, words, limit, **more):
        return subprocess.run([self.program, *words], env=self.env, timeout=limit, check=False, **more)


@contextlib.contextmanager
def boards(wine, program, folder, *options):
    """Simulated boards at COM1 and on, one for each list of options. Gives their processes."""
    started = []
    try:
        for each in options:
            started.append(subprocess.Popen([os.path.abspath(program), *each], cwd=folder, text=True, stdout=subprocess.PIPE))
        wine.ports([board.stdout.readline().split()[1] for board in started])
        yield started
    finally:
        for board in started:
            board.terminate()
            board.communicate()
        wine.server("-w")


@contextlib.contextmanager
def screen(size="1280x900x24"):
    """A screen of its own with a window manager; its name goes to DISPLAY."""
    read, write = os.pipe()
    with subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", size], pass_fds=[write],
                          stderr=subprocess.DEVNULL) as server:
        os.close(write)
        with os.fdopen(read) as number:
            os.environ["DISPLAY"] = ":" + number.readline().strip()
        with subprocess.Popen(["openbox"], stderr=subprocess.DEVNULL) as manager:
            time.sleep(0.5)
            try:
                yield
            finally:
                manager.terminate()
                manager.wait(10)
                server.terminate()
