#!/usr/bin/env python3
"""Holds our declarations of Apple's interfaces against facts.txt, which was taken from the real SDK."""
import re
import sys
from pathlib import Path

from declared import declared
from take_facts import LEFT_OUT, NOT_TOLD


def read_facts():
    names, values = {}, {}
    for line in Path(__file__).with_name("facts.txt").read_text().splitlines():
        if found := re.fullmatch(r"constant (\w+) (-?\d+)", line):
            values[found.group(1)] = int(found.group(2))
        elif found := re.fullmatch(r"(\w+ [\w:]+) \((.*)\) (\w+) (\S+)", line):
            names[found.group(1)] = ([kind for kind in found.group(2).split(", ") if kind], found.group(3))
    return names, values


def main():
    facts, fact_values = read_facts()
    names, values = declared()
    wrong = []
    for name, kinds in sorted(names.items()):
        if not LEFT_OUT.search(name) and facts.get(name) != kinds:
            wrong.append(f"{name}: declared with {kinds}, the SDK has {facts.get(name, 'no such thing')}")
    for name, value in sorted(values.items()):
        if name not in NOT_TOLD and fact_values.get(name) != value:
            wrong.append(f"{name}: declared as {value}, the SDK has {fact_values.get(name, 'no such constant')}")
    print("\n".join(wrong) or f"{len(names)} names and {len(values)} constants as the SDK has them")
    sys.exit(1 if wrong else 0)


main()
