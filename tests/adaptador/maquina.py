"""A machine in emulation with Debian's own kernel, a few of its modules, and the programs under test."""
import gzip
import os
import pathlib
import re
import shutil
import socket
import subprocess
import time

MODULES = ("uhci-hcd", "ftdi_sio", "cdc-acm", "dummy_hcd", "g_serial")
LOADED = ("uhci_hcd", "ftdi_sio", "cdc_acm", "dummy_hcd")
RULES = ("50-udev-default.rules", "60-serial.rules", "73-seat-late.rules", "80-drivers.rules")
INIT = """#!/bin/busybox sh
/bin/busybox --install -s /bin
export PATH=/bin:/morvane
ln -s bin /sbin
mount -t devtmpfs devtmpfs /dev; mkdir -p /dev/pts /proc /sys /run /tmp
mount -t devpts devpts /dev/pts; mount -t proc proc /proc; mount -t sysfs sysfs /sys; mount -t tmpfs tmpfs /run
chmod 1777 /tmp; chmod 666 /dev/ptmx
stty -F /dev/ttyS1 raw -echo
udevd --daemon
for module in %s; do modprobe $module || echo "no $module"; done
udevadm trigger; udevadm settle
echo "guest is up"
exec <>/dev/ttyS1 >&0
echo READY
while IFS= read -r line; do
  eval "$line" </dev/null >/tmp/.said 2>&1
  code=$?
  echo "END $code $(wc -c </tmp/.said)"
  cat /tmp/.said
done
"""
USERS = """root:x:0:0:root:/tmp:/bin/sh
tecnico:x:1000:1000::/tmp:/bin/sh
visita:x:1001:1001::/tmp:/bin/sh
"""
GROUPS = """root:x:0:
tty:x:5:
disk:x:6:
lp:x:7:
kmem:x:15:
dialout:x:20:tecnico
cdrom:x:24:
tape:x:26:
audio:x:29:
video:x:44:
input:x:104:
sgx:x:105:
kvm:x:106:
render:x:107:
tecnico:x:1000:
visita:x:1001:
"""


class Trouble(Exception):
    pass


def run(*words, **more):
    done = subprocess.run(words, text=True, capture_output=True, **more)
    if done.returncode:
        raise Trouble(f"{' '.join(map(str, words))}: {done.stderr.strip()}")
    return done.stdout


def fetch(package, folder):
    """The package unpacked in a folder that is kept; apt holds it against its signed lists."""
    version = run("apt-cache", "show", "--no-all-versions", package)
    version = re.search(r"^Version: (.*)$", version, re.M).group(1)
    tree = folder / f"{package}_{version.replace(':', '%3a')}"
    if not tree.exists():
        folder.mkdir(parents=True, exist_ok=True)
        run("apt-get", "-o", "APT::Sandbox::User=", "download", f"{package}={version}", cwd=folder)
        [archive] = folder.glob(f"{tree.name}_*.deb")
        half = folder / (tree.name + ".half")
        shutil.rmtree(half, ignore_errors=True)
        run("dpkg-deb", "-x", archive, half)
        half.rename(tree)
        archive.unlink()
    return tree


def kernel_package():
    depends = run("apt-cache", "depends", "linux-image-amd64")
    return re.search(r"Depends: (linux-image-\S+)", depends).group(1)


class Root:
    """The guest's files."""

    def __init__(self, folder):
        shutil.rmtree(folder, ignore_errors=True)
        self.folder = folder

    def place(self, source, name, mode=None):
        target = self.folder / name.lstrip("/")
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy2(source, target)
        if mode:
            target.chmod(mode)

    def write(self, name, text, mode=0o644):
        target = self.folder / name.lstrip("/")
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(text)
        target.chmod(mode)

    def program(self, source, name):
        """With the libraries that it asks for, where it looks for them."""
        self.place(source, name, 0o755)
        for library in re.findall(r"(/\S+) \(0x", run("ldd", source)):
            if not (self.folder / library.lstrip("/")).exists():
                self.place(os.path.realpath(library), library)

    def modules(self, tree):
        [home] = (tree / "lib/modules").iterdir()
        names = {path.stem.replace("_", "-"): path for path in home.rglob("*.ko")}
        todo, done = list(MODULES) + ["usb_f_acm", "usb_f_serial", "u_serial"], set()
        while todo:
            path = names.get(todo.pop().replace("_", "-"))
            if path is None or path in done:
                continue  # part of the kernel itself
            done.add(path)
            self.place(path, f"/lib/modules/{home.name}/{path.relative_to(home)}")
            todo += run("modinfo", "-F", "depends", path).strip().split(",")
        for listing in ("modules.builtin", "modules.order", "modules.builtin.modinfo"):
            if (home / listing).exists():
                self.place(home / listing, f"/lib/modules/{home.name}/{listing}")
        run("depmod", "-b", self.folder, home.name)

    def packed(self, target):
        names = subprocess.run(["find", ".", "-print0"], cwd=self.folder, capture_output=True, check=True).stdout
        archive = subprocess.run(["cpio", "--null", "-o", "-H", "newc", "--quiet", "-R", "0:0"], cwd=self.folder,
                                 input=names, capture_output=True, check=True).stdout
        target.write_bytes(gzip.compress(archive, 1))


class Machine:
    """Its log of the serial adapter's chip, its console and its commands' channel lie in `folder`."""

    def __init__(self, folder, kernel, initramfs, line):
        self.folder = folder
        self.console = folder / "consola.txt"
        self.chip = folder / "circuito.txt"
        self.line = line
        self.control = self.monitor = self.process = None
        sockets = {name: folder / name for name in ("ordenes", "monitor")}
        for path in (*sockets.values(), self.console, self.chip):
            path.unlink(missing_ok=True)
        self.process = subprocess.Popen(
            ["qemu-system-x86_64", "-accel", "tcg", "-m", "384", "-nographic", "-nodefaults", "-no-reboot", "-nic", "none",
             "-kernel", kernel, "-initrd", initramfs, "-append", "console=ttyS0 panic=-1 rdinit=/init quiet loglevel=6",
             "-chardev", f"file,id=consola,path={self.console}", "-serial", "chardev:consola",
             "-chardev", f"socket,id=ordenes,path={sockets['ordenes']},server=on,wait=off", "-serial", "chardev:ordenes",
             "-chardev", f"socket,id=monitor,path={sockets['monitor']},server=on,wait=off", "-mon", "monitor",
             "-device", "piix3-usb-uhci,id=uhci", "-D", self.chip, "-trace", "usb_serial_set_*",
             "-trace", "usb_serial_unsupported_*"],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        self.control = self.connect(sockets["ordenes"])
        self.monitor = self.connect(sockets["monitor"])
        self.heard = b""
        self.until(lambda text: b"READY\n" in text, 120, "the guest's start")
        self.heard = b""

    def connect(self, path):
        end = time.monotonic() + 20
        while time.monotonic() < end and self.process.poll() is None:
            channel = socket.socket(socket.AF_UNIX)
            try:
                channel.connect(str(path))
                return channel
            except OSError:
                channel.close()
                time.sleep(0.05)
        raise Trouble("the emulator does not start: " + self.last_words())

    def last_words(self):
        said = self.console.read_text(errors="replace").splitlines()[-25:] if self.console.exists() else []
        if self.process.poll() is not None:
            said.append(self.process.stderr.read().decode(errors="replace"))
        return "\n".join(said)

    def until(self, enough, limit, what):
        end = time.monotonic() + limit
        while not enough(self.heard):
            self.control.settimeout(max(0.01, end - time.monotonic()))
            try:
                more = self.control.recv(65536)
            except TimeoutError:
                more = b""
            if not more:
                raise Trouble(f"{what}: nothing within {limit} s; its console's last lines:\n{self.last_words()}")
            self.heard += more

    def order(self, line, limit=30):
        """The exit code of a shell line in the guest and what it said."""
        self.control.sendall(line.encode() + b"\n")
        head = re.compile(rb"END (\d+) (\d+)\n")
        self.until(head.search, limit, line)
        found = head.search(self.heard)
        end = found.end() + int(found.group(2))
        self.until(lambda text: len(text) >= end, limit, line)
        said = self.heard[found.end():end].decode(errors="replace")
        self.heard = self.heard[end:]
        return int(found.group(1)), said

    def ask(self, line, limit=30):
        code, said = self.order(line, limit)
        if code:
            raise Trouble(f"{line}: code {code}: {said}")
        return said

    def wait_for(self, line, limit=20):
        """Until the shell line succeeds in the guest."""
        self.ask(f"for i in $(seq {limit * 10}); do {line} && break; sleep 0.1; done; {line}", limit + 20)

    def tell(self, line):
        self.monitor.sendall(line.encode() + b"\n")
        said, end = b"", time.monotonic() + 10
        self.monitor.settimeout(10)
        while said.count(b"(qemu) ") < 1 or not said.endswith(b"(qemu) "):
            said += self.monitor.recv(4096)
            if time.monotonic() > end:
                raise Trouble("the emulator's monitor: " + said.decode(errors="replace"))

    def plug(self):
        self.tell(f"chardev-add serial,id=linea,path={self.line}")
        self.tell("device_add usb-serial,id=usb,chardev=linea,always-plugged=on,serial=BANCO1,port=1")

    def unplug(self):
        self.tell("device_del usb")
        self.tell("chardev-remove linea")

    def end(self):
        for channel in (self.control, self.monitor):
            if channel:
                channel.close()
        if self.process:
            self.process.kill()
            self.process.wait()
            self.process.stderr.close()


def build_root(folder, kept, programs, files, rule):
    """The guest's initramfs and its kernel. `programs` and `files` go to /morvane; each under its own name."""
    kernel = fetch(kernel_package(), kept)
    udev = fetch("udev", kept)
    root = Root(folder / "raiz")
    root.place("/bin/busybox", "/bin/busybox", 0o755)
    root.write("/init", INIT % " ".join(LOADED), 0o755)
    root.write("/etc/passwd", USERS)
    root.write("/etc/group", GROUPS)
    root.write("/etc/nsswitch.conf", "passwd: files\ngroup: files\n")
    root.program(udev / "bin/udevadm", "/bin/udevadm")
    os.symlink("udevadm", root.folder / "bin/udevd")
    for name in RULES:
        root.place(udev / "lib/udev/rules.d" / name, f"/lib/udev/rules.d/{name}") \
            if (udev / "lib/udev/rules.d" / name).exists() else None
    root.place(rule, f"/lib/udev/rules.d/{pathlib.Path(rule).name}")
    root.modules(kernel)
    for program in programs:
        root.program(program, f"/morvane/{pathlib.Path(program).name}")
    for file in files:
        root.place(file, f"/morvane/{pathlib.Path(file).name}")
    initramfs = folder / "raiz.cpio.gz"
    root.packed(initramfs)
    [image] = (kernel / "boot").glob("vmlinuz-*")
    return image, initramfs
