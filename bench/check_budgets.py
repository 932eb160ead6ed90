#!/usr/bin/python3
"""check_budgets.py BUDGETS COUNTS_PROGRAM CORE_ARCHIVE [--write]

Compares what repeats exactly with the file of budgets: instructions (callgrind), allocations, the core's size,
and that the first `shared` opens nothing (strace). Fails when a figure is more than 3 % over its budget.
--write puts the figures of this run into the file instead.
"""

import argparse
import pathlib
import re
import subprocess
import sys
import tempfile

TOLERANCE = 0.03


def figures_of(output):
    return {name: int(value) for value, name in (line.split(" ", 1) for line in output.splitlines())}


def run(*command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} ended with {done.returncode}:\n{done.stderr}")
    return done


def instructions(program):
    with tempfile.TemporaryDirectory() as folder:
        out = pathlib.Path(folder, "counts")
        run("valgrind", "--tool=callgrind", "--collect-atstart=no", f"--callgrind-out-file={out}", program, "exact")
        figures = {}
        for file in pathlib.Path(folder).iterdir():
            text = file.read_text()
            work = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.MULTILINE)
            total = re.search(r"^(?:totals|summary): (\d+)", text, re.MULTILINE)
            if work and total:
                figures["instructions: " + work[1]] = int(total[1])
        return figures


def opened_by_first_shared(program):
    trace = run("strace", "-f", "-e", "trace=%file,%network", program, "exact").stderr
    between = trace.split("/first-shared-begins", 1)[1].split("/first-shared-ends", 1)[0]
    return {"files and sockets opened: first shared": len(re.findall(r"\b(?:open|openat|creat|socket)\(", between))}


def measure(program, archive):
    figures = instructions(program)
    figures.update(figures_of(run(program, "exact").stdout))
    figures.update(opened_by_first_shared(program))
    figures.update(figures_of(run(pathlib.Path(__file__).with_name("core_size.sh"), archive).stdout))
    return figures


def read(file):
    lines = (line for line in file.read_text().splitlines() if line and not line.startswith("#"))
    return {name.strip(): int(value) for name, value in (line.rsplit(None, 1) for line in lines)}


def write(file, figures):
    head = [line for line in file.read_text().splitlines() if line.startswith("#")]
    width = max(map(len, figures)) + 2
    lines = [f"{name:<{width}}{value:>8}" for name, value in sorted(figures.items())]
    file.write_text("\n".join(head + [""] + lines) + "\n")


def compare(budgets, figures):
    faults = 0
    for name in sorted(budgets.keys() | figures.keys()):
        old, new = budgets.get(name), figures.get(name)
        if old is None or new is None:
            print(f"FAIL  {name}: {'no budget' if old is None else 'not measured any more'}")
            faults += 1
        elif new > old * (1 + TOLERANCE):
            print(f"FAIL  {name}: {old} -> {new}")
            faults += 1
        elif new < old * (1 - TOLERANCE):
            print(f"lower {name}: {old} -> {new}; the budget can follow")
        else:
            print(f"ok    {name}: {old} -> {new}")
    return faults


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("budgets", type=pathlib.Path)
    parser.add_argument("program")
    parser.add_argument("archive")
    parser.add_argument("--write", action="store_true")
    arguments = parser.parse_args()

    figures = measure(arguments.program, arguments.archive)
    if arguments.write:
        write(arguments.budgets, figures)
        return
    faults = compare(read(arguments.budgets), figures)
    if faults:
        sys.exit(f"{faults} of the figures are more than {TOLERANCE:.0%} over their budgets in {arguments.budgets}")


if __name__ == "__main__":
    main()
