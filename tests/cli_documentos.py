#!/usr/bin/env python3
"""What is written about the command line knows every order and every option that the program has, and no other, and the
shell completes them. Usage: cli_documentos.py PROGRAM SOURCE."""
import pathlib
import re
import subprocess
import sys

PROGRAM, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2]).resolve()
COMPLETION = SOURCE / "paquete" / "morvane-cli.bash"


def help_of(*order):
    return subprocess.run([PROGRAM, *order, "--ayuda"], capture_output=True, text=True, check=True).stdout


def options_in(text):
    return set(re.findall(r"(?<![\w-])--?[a-z]+", text))


def completed(*words):
    script = (f". {COMPLETION}; COMP_WORDS=(morvane-cli \"$@\"); COMP_CWORD=$#; compopt() {{ :; }}; _morvane_cli; "
              'printf "%s\\n" "${COMPREPLY[@]}"')
    return set(subprocess.run(["bash", "-c", script, "x", *words], capture_output=True, text=True, check=True,
                              cwd=SOURCE / "samples").stdout.split())


def check(what, is_there, should):
    if is_there != should:
        sys.exit(f"{what}: missing {sorted(should - is_there)}, too much {sorted(is_there - should)}")


whole = help_of()
orders = re.findall(r"^  (\w+)", whole.split("Órdenes:\n")[1].split("\n\n")[0], re.M)
common = options_in(whole.split("Opciones de todas:\n")[1].split("\n\n")[0])
own = {order: options_in(help_of(order).split("Opciones:\n")[1]) - common for order in orders}
every = common.union(*own.values())

page = (SOURCE / "paquete" / "morvane-cli.1").read_text().replace("\\-", "-")
check("options of the page", options_in(re.sub(r"\\f.|\.SH EJEMPLOS.*|puente --reproducir", " ", page, flags=re.S)), every)
document = (SOURCE / "docs" / "linea-de-ordenes.md").read_text()
for order in orders:
    form = page.split(".SH ÓRDENES")[1].split(".SH OPCIONES")[0]
    if not re.search(rf"^(\.B |\\fB){order}\b", form, re.M):
        sys.exit(f"the page has no {order}")
    if not re.search(rf"^\$ morvane-cli (--json )?{order}\b", document, re.M):
        sys.exit(f"the document has no example of {order}")
    check(f"completed behind {order}", completed(order, "-"), common | own[order])
missing = {option for option in every if option not in document} - {"-h", "--help"}
if missing:
    sys.exit(f"the document does not name {sorted(missing)}")
check("completed at first", completed(""), set(orders) | common)
check("values of --prueba", completed("grabar", "--prueba", ""), {"sumas", "lectura"})
samples = {p.name for p in (SOURCE / "samples").iterdir() if p.suffix in (".s19", ".bin") or p.is_dir()}
check("files", completed("--puerto", "COM2", "grabar", ""), samples)
