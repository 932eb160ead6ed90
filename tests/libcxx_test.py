#!/usr/bin/python3
"""Compiles every source of the tool with clang and libc++, the library of a Mac, and without a Mac goes no further than
that: Debian's C++ libraries, which the tool links, are libstdc++'s. libcxx_test.py WORK_FOLDER"""
import json
import os
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[1]


def commands(work):
    subprocess.run(["cmake", "-S", SOURCES, "-B", work, "-G", "Ninja", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
                    "-DCMAKE_C_COMPILER=clang", "-DCMAKE_CXX_COMPILER=clang++", "-DCMAKE_CXX_FLAGS=-stdlib=libc++",
                    "-DQUORVANTIS_CCACHE=", f"-DCMAKE_COMPILE_WARNING_AS_ERROR={os.environ.get('CI', '')}",
                    "-DBUILD_TESTING=OFF"], check=True, stdout=subprocess.DEVNULL, timeout=200)
    for entry in json.loads((work / "compile_commands.json").read_text()):
        source = Path(entry["file"])
        if not source.is_relative_to(work):
            yield source.relative_to(SOURCES), shlex.split(entry["command"])


def problem(work, source, command):
    """What the compiler says against the source; empty when it compiles."""
    where = command.index("-o")
    run = subprocess.run([*command[:where], "-fsyntax-only", *command[where + 2:]], cwd=work, capture_output=True,
                         text=True)
    return f"{source}:\n{run.stderr}" if run.returncode else ""


def main():
    work = Path(sys.argv[1]).resolve()
    found = list(commands(work))
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        problems = [text for text in pool.map(lambda one: problem(work, *one), found) if text]
    print("\n".join(problems))
    print(f"{len(found)} sources, {len(problems)} do not compile")
    if problems or not found:
        sys.exit(1)


main()
