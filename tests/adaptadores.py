#!/usr/bin/env python3
"""What the program says of adapters that are not here: their description lies in a mocked /sys and /dev.
Arguments: morvane-cli. Ends with 77 where umockdev is missing."""
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

CLI = sys.argv.pop(1)
UP = "../" * 8
HUB = "/devices/pci0000:00/0000:00:14.0/usb1"
# USB numbers, maker, product, serial number, driver, kind of line, lines: as their makers have them.
ADAPTERS = [
    ("0403:6001", "FTDI", "FT232R USB UART", "A50285BI", "ftdi_sio", "USB", 1),
    ("0403:6010", "FTDI", "Dual RS232-HS", "", "ftdi_sio", "USB", 2),
    ("0403:6011", "FTDI", "Quad RS232-HS", "FT5A1B2C", "ftdi_sio", "USB", 4),
    ("0403:6014", "FTDI", "Single RS232-HS", "FT1PVXYZ", "ftdi_sio", "USB", 1),
    ("0403:6015", "FTDI", "FT231X USB UART", "DN00QWER", "ftdi_sio", "USB", 1),
    ("1a86:7523", "", "USB2.0-Serial", "", "ch341", "USB", 1),
    ("1a86:5523", "", "USB Serial", "", "ch341", "USB", 1),
    ("1a86:55d3", "", "USB Single Serial", "5434012345", "cdc_acm", "ACM", 1),
    ("1a86:55d4", "", "USB Single Serial", "54D2033210", "cdc_acm", "ACM", 1),
    ("10c4:ea60", "Silicon Labs", "CP2102 USB to UART Bridge Controller", "0001", "cp210x", "USB", 1),
    ("10c4:ea70", "Silicon Labs", "CP2105 Dual USB to UART Bridge Controller", "01A2B3C4", "cp210x", "USB", 2),
    ("10c4:ea71", "Silicon Labs", "CP2108 Quad USB to UART Bridge Controller", "", "cp210x", "USB", 4),
    ("067b:2303", "Prolific Technology Inc. ", "USB-Serial Controller ", "", "pl2303", "USB", 1),
    ("067b:23a3", "Prolific Technology Inc.", "USB-Serial Controller", "", "pl2303", "USB", 1),
    ("2341:0043", "Arduino (www.arduino.cc)", "", "85436323631351F0A1B2", "cdc_acm", "ACM", 1),
    ("0483:374b", "STMicroelectronics", "STM32 STLink", "0669FF514951775087", "cdc_acm", "ACM", 1),
    ("04d8:00dd", "Microchip Technology Inc.", "MCP2221 USB-I2C/UART Combo", "", "cdc_acm", "ACM", 1),
    ("2e8a:000c", "Raspberry Pi", "Debug Probe (CMSIS-DAP)", "E6614C311B4A1A2F", "cdc_acm", "ACM", 1),
    ("110a:1110", "Moxa Technologies Co., Ltd.", "UPort 1110", "MOX00001", "ti_usb_3410_5052", "USB", 1),
    ("6547:0232", "", "", "", "ark3116", "USB", 1),
]


def device(path, lines):
    return "\n".join([f"P: {path}", *lines, "", ""])


def description():
    """The machine's own line, a hub with a name of its own, and every adapter behind that."""
    text = device(HUB, ["E: SUBSYSTEM=usb", "A: idVendor=1d6b\\n", "A: idProduct=0002\\n",
                        "A: product=xHCI Host Controller\\n", "A: manufacturer=Linux 6.1.0 xhci-hcd\\n"])
    own = "/devices/pnp0/00:04/00:04:0/00:04:0.0"
    text += device("/devices/pnp0/00:04", ["E: SUBSYSTEM=pnp", "L: driver=../../../bus/pnp/drivers/serial"])
    text += device(own, ["E: SUBSYSTEM=serial-base", "L: driver=../../../../../bus/serial-base/drivers/port"])
    text += device(own + "/tty/ttyS12", ["N: ttyS12", "E: SUBSYSTEM=tty", "E: DEVNAME=/dev/ttyS12", "A: type=4\\n",
                                        "L: device=../../../00:04:0.0"])
    count = {"USB": 20, "ACM": 20}  # no port leads there by itself
    for place, (numbers, maker, product, serial, driver, kind, lines) in enumerate(ADAPTERS, 1):
        here = f"{HUB}/1-{place}"
        vendor, model = numbers.split(":")
        told = {"idVendor": vendor, "idProduct": model, "manufacturer": maker, "product": product, "serial": serial}
        text += device(here, ["E: SUBSYSTEM=usb", "E: DEVTYPE=usb_device"] +
                       [f"A: {name}={value}\\n" for name, value in told.items() if value])
        for line in range(lines):
            name = f"tty{kind}{count[kind]}"
            count[kind] += 1
            interface = f"{here}/1-{place}:1.{line}"
            text += device(interface, ["E: SUBSYSTEM=usb", f"L: driver={UP}bus/usb/drivers/{driver}"])
            port = interface
            if kind == "USB":
                port = f"{interface}/{name}"
                timer = ["A: latency_timer=16\\n"] if driver == "ftdi_sio" else []
                text += device(port, ["E: SUBSYSTEM=usb-serial", f"L: driver={UP}bus/usb-serial/drivers/{driver}"] + timer)
            stable = f"usb-{vendor}_{model}_{serial or place}-if{line:02}-port0"
            text += device(f"{port}/tty/{name}", [f"N: {name}", f"S: serial/by-id/{stable}", "E: SUBSYSTEM=tty",
                                                  f"E: DEVNAME=/dev/{name}",
                                                  f"L: device=../../../{port.split('/')[-1]}"])
    return text


class Doctor(unittest.TestCase):
    def ask(self, *words):
        with tempfile.TemporaryDirectory() as folder:
            home = pathlib.Path(folder) / "morvane"
            home.mkdir()
            table = pathlib.Path(folder) / "adaptadores"
            table.write_text(description())
            done = subprocess.run(["umockdev-run", "-d", table, "--", CLI, "--directorio", home, *words, "puertos"], text=True,
                                  capture_output=True, timeout=60)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def test_each_adapter_has_its_own_name_and_driver_and_never_that_of_its_hub(self):
        every = json.loads(self.ask("--json").splitlines()[-1])["puertos"]
        ports = {p["dispositivo"]: p for p in every if "estable" in p}  # the machine's real COM1 may be there too
        own = ports.pop("/dev/ttyS12")["adaptador"]
        self.assertEqual((own["conductor"], own["producto"]), ("serial", ""))
        seen = [(a["identidad"], a["fabricante"], a["producto"], a["serie"], a["conductor"])
                for a in (p["adaptador"] for p in ports.values())]
        wanted = [(numbers, maker.strip(), product.strip(), serial, driver)
                  for numbers, maker, product, serial, driver, _, lines in ADAPTERS for _ in range(lines)]
        self.assertCountEqual(seen, wanted)
        self.assertEqual([p["dispositivo"] for p in ports.values() if "serial/by-id" not in p["estable"]], [])
        self.assertEqual({p["adaptador"]["conductor"] for p in ports.values() if "retencion_ms" in p["adaptador"]},
                         {"ftdi_sio"})

    def test_in_words_with_the_rule_that_is_missing(self):
        said = self.ask()
        self.assertIn("/dev/ttyUSB20; FT232R USB UART (FTDI); conductor ftdi_sio; ningún COM lleva a él", said)
        self.assertIn("adaptador USB 6547:0232; conductor ark3116", said)
        self.assertIn("adaptador USB 2341:0043; conductor cdc_acm", said)
        self.assertIn('    SUBSYSTEM=="usb-serial", DRIVER=="ftdi_sio", ATTR{latency_timer}="1"', said)


if __name__ == "__main__":
    if shutil.which("umockdev-run") is None:
        print("SKIPPED: umockdev is missing")
        sys.exit(77)
    unittest.main(verbosity=2)
