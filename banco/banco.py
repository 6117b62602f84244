#!/usr/bin/env python3
"""Measures the built program and prints one table. Usage: banco.py [--largo] [--anotar] [PART...], where PART is
trabajo, vista or hilo; all of them without one. --largo takes more blocks and pairs; --anotar keeps the counted
instructions for this compiler. Ends with 1 if a row fails its target."""
import os
import sys
import time

import hilo
import trabajo
import vista

PARTS = {"trabajo": lambda long, keep: trabajo.rows(long, keep), "vista": lambda long, _: vista.rows(long),
         "hilo": lambda long, _: hilo.rows(long)}


def show(rows):
    for row in rows:
        print(f"{row.name:<58}{row.figure:>9}  {row.target:<14}{row.verdict:<6} {row.note}", flush=True)


def main():
    os.environ.setdefault("QT_QPA_PLATFORM", "offscreen")
    os.environ["QT_LOGGING_RULES"] = "*.debug=false;*.warning=false"
    long, keep = "--largo" in sys.argv, "--anotar" in sys.argv
    wanted = [name for name in sys.argv[1:] if not name.startswith("--")] or list(PARTS)
    begin, bad = time.monotonic(), 0
    print(f"{'row':<58}{'figure':>9}  {'target':<14}")
    for name in wanted:
        rows = PARTS[name](long, keep)
        show(rows)
        bad += sum(row.good is False for row in rows)
    print(f"{time.monotonic() - begin:.0f} s, load average {os.getloadavg()[0]:.1f} on {os.cpu_count()} processors; "
          f"{bad} rows fail")
    sys.exit(1 if bad else 0)


main()
