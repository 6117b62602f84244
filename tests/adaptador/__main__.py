#!/usr/bin/env python3
"""The programs at the kernel's own drivers: an FTDI adapter (ftdi_sio) and one of the ACM class (cdc-acm), in a machine
in emulation. The far end is the simulated board. Arguments: the folder with the programs, the prober, the folder to work
in. Prints the guest's console last. Ends with 77, and says why, where there is no emulator."""
import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time
import unittest

import maquina

HERE = pathlib.Path(__file__).resolve().parent
TREE = HERE.parent.parent
PROGRAMS, PROBER, WORK = (pathlib.Path(word).resolve() for word in sys.argv[1:4])
KEPT = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache")) / "morvane" / "nucleo"
SAMPLE = TREE / "samples" / "demo-s1.s19"
CLI = "/morvane/morvane-cli --directorio /morvane --json"


def missing():
    tools = ("qemu-system-x86_64", "cpio", "depmod", "apt-get", "dpkg-deb")
    lacking = [tool for tool in tools if shutil.which(tool, path=os.environ["PATH"] + ":/sbin:/usr/sbin") is None]
    if not pathlib.Path("/bin/busybox").exists():
        lacking.append("/bin/busybox")
    return lacking


class Laboratory(unittest.TestCase):
    """One guest for all; each test leaves the adapter plugged in under ttyUSB0."""

    @classmethod
    def setUpClass(cls):
        WORK.mkdir(parents=True, exist_ok=True)
        cls.addClassCleanup(cls.report)
        kernel, initramfs = maquina.build_root(
            WORK, KEPT, [PROGRAMS / "morvane-cli", PROGRAMS / "puente", PROBER], [SAMPLE], TREE / "paquete/70-morvane.rules")
        link = WORK / "placa"
        cls.board = subprocess.Popen([PROGRAMS / "puente", f"--enlace={link}", "--baudios=115200", "--ligada"], text=True,
                                     stdin=subprocess.PIPE, stdout=subprocess.PIPE, cwd=WORK)
        cls.addClassCleanup(cls.board.communicate)
        cls.addClassCleanup(cls.board.kill)
        if not cls.board.stdout.readline():
            raise maquina.Trouble("the simulated board does not start")
        cls.guest = maquina.Machine(WORK, kernel, initramfs, os.path.realpath(link))
        cls.addClassCleanup(cls.guest.end)
        cls.guest.ask("mkdir -p /morvane/puertos; cd /tmp; echo '\"115200\",\"n\",\"8\",\"1\"' >/morvane/SETTINGS.TXT")
        cls.guest.plug()
        cls.guest.wait_for("test -c /dev/ttyUSB0")
        cls.guest.ask("udevadm settle")

    @classmethod
    def report(cls):
        console = WORK / "consola.txt"
        if console.exists():
            print(console.read_text(errors="replace"), flush=True)

    def result(self, order, code, port="/dev/ttyUSB0", user=None, limit=90):
        line = f"{CLI} --puerto {port} {order}"
        got, said = self.guest.order(f"su {user} -c '{line}'" if user else line, limit)
        self.assertEqual(got, code, said)
        return json.loads(said.splitlines()[-1])

    def in_background(self, line, name):
        self.guest.ask(f"({line}; echo code $?) >/tmp/{name} 2>&1 & echo $! >/tmp/{name}.pid")

    def end_of(self, name, limit=30):
        self.guest.wait_for(f"grep -q '^code ' /tmp/{name}", limit)
        return self.guest.ask(f"cat /tmp/{name}")

    def replug(self):
        self.guest.plug()
        self.guest.wait_for("test -c /dev/ttyUSB0")
        self.guest.ask("udevadm settle")

    def last(self):
        """The last address of the sample, once it stands in /tmp/a.bin."""
        return "%X" % (int(self.guest.ask("wc -c </tmp/a.bin")) - 1)

    def chip_says(self):
        """What the adapter's chip has been told so far."""
        return re.findall(r"^usb_serial_set_(?!xonxoff)\w+ dev \S+ (.*)$", (WORK / "circuito.txt").read_text(), re.M)

    def a_whole_job(self, port):
        """Programmed, proved, and read back to the very bytes."""
        began = time.monotonic()
        self.assertTrue(self.result(f"grabar /morvane/{SAMPLE.name}", 0, port)["palabras"])
        self.result(f"verificar /morvane/{SAMPLE.name}", 0, port)
        self.result(f"convertir /morvane/{SAMPLE.name} /tmp/a.bin", 0, port)
        self.result("leer /tmp/b.bin --desde 0 --hasta " + self.last(), 0, port)
        self.guest.ask("cmp /tmp/a.bin /tmp/b.bin")
        print(f"{port}: programmed, proved, read: {time.monotonic() - began:.1f} s", flush=True)

    def test_ftdi_by_its_name_and_by_the_rule(self):
        node = "udevadm info -q property -n /dev/ttyUSB0"
        told = self.guest.ask(f"{node}; udevadm info -q property -p $(udevadm info -q path -n /dev/ttyUSB0)/../../../..")
        for wanted in ("ID_USB_DRIVER=ftdi_sio", "ID_MM_PORT_IGNORE=1", "ID_MM_DEVICE_IGNORE=1", ":uaccess:"):
            self.assertIn(wanted, told)
        self.assertEqual(self.guest.ask("cat /sys/bus/usb-serial/devices/ttyUSB0/latency_timer").strip(), "1")
        stable = self.guest.ask("ls /dev/serial/by-id").strip()
        self.guest.ask(f"ln -sf /dev/serial/by-id/{stable} /morvane/puertos/COM1")
        [port] = [p for p in self.result("puertos", 0)["puertos"] if p["puerto"] == "COM1"]
        self.assertEqual(port["dispositivo"], "/dev/ttyUSB0")
        self.assertIn("USB SERIAL", port["adaptador"]["producto"])
        self.assertEqual((port["adaptador"]["conductor"], port["adaptador"]["retencion_ms"]), ("ftdi_sio", 1))
        self.a_whole_job("COM1")

    def test_ftdi_takes_each_setting_and_gives_it_back(self):
        """As the driver reports it, and as the adapter's chip was told it."""
        self.guest.ask("stty -F /dev/ttyUSB0 9600 cs7 parenb hupcl -clocal; udevadm settle")
        closing = " hupcl"
        for speed, parity, bits, stop in ((57600, "n", 8, 1), (115200, "e", 8, 1), (38400, "o", 8, 1), (19200, "n", 7, 2)):
            told = len(self.chip_says())
            form = f"{parity}{bits}{stop}"
            self.assertEqual(self.guest.ask(f"/morvane/sonda ajustes /dev/ttyUSB0 {speed}{form}").splitlines(),
                             [f"antes 9600e71{closing} dtr rts -latencia",
                              f"abierto {speed}{form} -hupcl dtr rts latencia",
                              "despues 9600e71 -hupcl dtr rts -latencia"])
            closing = " -hupcl"
            heard = self.chip_says()[told:]
            here = heard.index(f"parity {parity.upper()}, data bits {bits}, stop bits {stop}")
            self.assertAlmostEqual(int(re.fullmatch(r"baud rate (\d+)", heard[here + 1]).group(1)), speed,
                                   delta=speed / 100)
            back = ["parity E, data bits 7, stop bits 1", "baud rate 9600", "flow control 4"]
            self.assertIn(back, [heard[i:i + 3] for i in range(here + 2, len(heard))])

    def test_a_second_program_and_a_user_outside_the_group(self):
        self.in_background("su tecnico -c '/morvane/sonda tener /dev/ttyUSB0 8000'", "primero")
        self.guest.wait_for("grep -q abierto /tmp/primero")
        for user in ("tecnico", "root"):
            refused = self.result("estado", 4, user=user)
            self.assertIn("sonda (pid ", refused["texto"] + str(refused), user)
        self.assertEqual(self.end_of("primero").splitlines()[1:2], ["sigue"])
        refused = self.result("estado", 4, user="visita")
        self.assertIn("dialout", refused["texto"] + str(refused))
        self.result("estado", 0, user="tecnico")

    def test_unplugged_while_idle_and_while_the_board_is_silent(self):
        self.in_background("/morvane/sonda tener /dev/ttyUSB0 20000", "ociosa")
        self.guest.wait_for("grep -q abierto /tmp/ociosa")
        self.guest.unplug()
        opened, lost, closing, end = self.end_of("ociosa").splitlines()
        self.assertEqual((opened, lost, end), ("abierto", "perdido", "code 0"))
        self.assertLess(int(closing.split()[1]), 1000)
        self.guest.wait_for("test ! -e /dev/ttyUSB0")
        self.assertEqual(self.result("estado", 4)["desenlace"], "puerto")
        self.replug()
        self.board.send_signal(signal.SIGSTOP)
        self.addCleanup(self.board.send_signal, signal.SIGCONT)
        self.in_background(f"{CLI} --puerto /dev/ttyUSB0 estado", "espera")
        time.sleep(3)
        self.guest.unplug()
        began = time.monotonic()
        self.assertEqual(json.loads(self.end_of("espera").splitlines()[-2])["desenlace"], "linea")
        self.assertLess(time.monotonic() - began, 3)
        self.board.send_signal(signal.SIGCONT)
        self.replug()
        self.result("estado", 0)

    def test_unplugged_in_mid_write_and_back_under_another_name(self):
        stable = self.guest.ask("ls /dev/serial/by-id").strip()
        self.guest.ask(f"ln -sf /dev/serial/by-id/{stable} /morvane/puertos/COM2; echo otro >/tmp/otro.bin;"
                       "seq 9000 >/tmp/largo.bin")
        self.in_background(f"{CLI} --puerto COM2 grabar /tmp/largo.bin", "corte")
        self.guest.wait_for("""grep -q '"fase":"grabar","hechos":[1-9]' /tmp/corte""", 60)
        # A program that keeps the old device open keeps its name, too.
        self.in_background("exec 5<>/dev/ttyUSB0; exec sleep 600", "guarda")
        self.guest.unplug()
        broken = json.loads(self.end_of("corte").splitlines()[-2])
        self.assertEqual((broken["desenlace"], broken["codigo"]), ("linea", 6), broken)
        self.guest.plug()
        self.guest.wait_for("test -c /dev/ttyUSB1")
        self.guest.wait_for(f"test -e /dev/serial/by-id/{stable}")
        self.assertEqual(self.guest.ask(f"readlink -f /dev/serial/by-id/{stable}").strip(), "/dev/ttyUSB1")
        self.result("grabar /tmp/largo.bin", 0, "COM2", limit=120)
        self.guest.ask("kill $(cat /tmp/guarda.pid)")
        self.guest.unplug()
        self.guest.wait_for("test ! -e /dev/ttyUSB1")
        self.replug()
        self.result("verificar /tmp/largo.bin", 0, "COM2")

    def test_what_measuring_foretells_is_what_it_takes(self):
        """On a machine that others use: one of three attempts is enough."""
        self.guest.ask("seq 2200 >/tmp/medio.bin")
        seen = []
        for _ in range(3):
            told = self.result("medir", 0)["medida"]
            began = time.monotonic()
            words = self.result("grabar /tmp/medio.bin", 0)["palabras"]
            taken = time.monotonic() - began
            seen.append(taken / (told["flash_entera_s"] * words / 65536))
            print(f"foretold {taken / seen[-1]:.2f} s, taken {taken:.2f} s: {seen[-1]:.3f}; {told}", flush=True)
            if abs(seen[-1] - 1) <= 0.05:
                return
        self.fail(f"taken, by what was foretold: {seen}")

    def test_acm_with_its_far_end_in_the_guest(self):
        self.guest.ask("modprobe g_serial; udevadm settle")
        self.addCleanup(self.guest.order, "kill $(pidof puente) $(pidof cat); sleep 0.5; rmmod g_serial")
        self.guest.wait_for("test -c /dev/ttyACM0 -a -c /dev/ttyGS0")
        self.in_background("/morvane/puente --enlace=/tmp/placa --sin-ritmo", "placa_acm")
        self.guest.wait_for("test -e /tmp/placa")
        self.guest.ask("stty -F /dev/ttyGS0 raw -echo; stty -F /tmp/placa raw -echo;"
                       "(cat /dev/ttyGS0 >/tmp/placa) & (cat /tmp/placa >/dev/ttyGS0) &")
        self.a_whole_job("/dev/ttyACM0")
        said = self.guest.ask("/morvane/sonda ajustes /dev/ttyACM0 38400e82").splitlines()
        self.assertIn("abierto 38400e82 -hupcl dtr rts", said[1])
        self.in_background("/morvane/sonda tener /dev/ttyACM0 20000", "acm")
        self.guest.wait_for("grep -q abierto /tmp/acm")
        self.guest.ask("kill $(pidof cat) $(pidof puente); sleep 0.5; rmmod g_serial")
        self.assertEqual(self.end_of("acm").splitlines()[1], "perdido")


def main():
    lacking = missing()
    if lacking:
        print(f"laboratory: SKIPPED, missing: {' '.join(lacking)}; nothing is proved about real drivers")
        sys.exit(77)
    try:
        maquina.fetch(maquina.kernel_package(), KEPT)
        maquina.fetch("udev", KEPT)
    except maquina.Trouble as trouble:
        print(f"laboratory: SKIPPED, no kernel to be had: {trouble}; nothing is proved about real drivers")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1] + sys.argv[4:], verbosity=2)


if __name__ == "__main__":
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    main()
