#!/usr/bin/env python3
"""Measures the built program and prints one table. Usage: medir.py [--corto | --largo] [--anotar] [PART...], where PART
is trabajo, vista, hilo or ordenes; all of them without one. --largo takes more blocks and pairs; --corto takes fewer, and measures
a part again at the usual length if a row of it fails; --anotar keeps the counted instructions for this compiler. Ends with
1 if a row fails its target."""
import os
import sys
import time

import hilo
import ordenes
import trabajo
import vista
from aparatos import LONG, SHORT, USUAL, judged_in_rest

PARTS = {"trabajo": trabajo.rows, "vista": lambda length, _: vista.rows(length), "hilo": lambda length, _: hilo.rows(length), "ordenes": lambda length, _: ordenes.rows(length)}


def measured(name, length, keep):
    rows = judged_in_rest(lambda: PARTS[name](length, keep))
    if length == SHORT and any(row.good is False for row in rows):
        failed = ", ".join(row.name for row in rows if row.good is False)
        print(f"measured again at the usual length, for in the short one there failed: {failed}")
        return judged_in_rest(lambda: PARTS[name](USUAL, keep))
    return rows


def show(rows):
    for row in rows:
        print(f"{row.name:<58}{row.figure:>9}  {row.target:<14}{row.verdict:<6} {row.note}", flush=True)


def main():
    os.environ.setdefault("QT_QPA_PLATFORM", "offscreen")
    os.environ["QT_LOGGING_RULES"] = "*.debug=false;*.warning=false"
    length = SHORT if "--corto" in sys.argv else LONG if "--largo" in sys.argv else USUAL
    wanted = [name for name in sys.argv[1:] if not name.startswith("--")] or list(PARTS)
    begin, bad = time.monotonic(), 0
    print(f"{'row':<58}{'figure':>9}  {'target':<14}")
    for name in wanted:
        rows = measured(name, length, "--anotar" in sys.argv)
        show(rows)
        bad += sum(row.good is False for row in rows)
    print(f"{time.monotonic() - begin:.0f} s, load average {os.getloadavg()[0]:.1f} on {os.cpu_count()} processors; "
          f"{bad} rows fail")
    sys.exit(1 if bad else 0)


main()
