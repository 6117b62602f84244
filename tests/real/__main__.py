"""Drives the built program, from outside, in a real window on a pseudo-terminal against the board as a program.

Usage: python3 tests/real PROGRAM_DIRECTORY DRIVER [ARGUMENT...], where each other file here that has a scenario is a
driver. Needs the packages for the tests of herramientas/paquetes.sh, and an interpreter that sees python3-gi, such as
/usr/bin/python3. On a failure a picture of the screen stays in the current directory."""
import importlib
import signal
import sys

from mesa import Bench

source, driver, *arguments = sys.argv[1:]
signal.signal(signal.SIGTERM, lambda *_: sys.exit("ended by SIGTERM"))
sys.stdout.reconfigure(line_buffering=True)
with Bench(source, driver) as bench:
    bench.begin_windows()
    importlib.import_module(driver).scenario(bench, *arguments)
