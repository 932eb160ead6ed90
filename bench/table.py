#!/usr/bin/python3
"""table.py FOLDER: prints the table of one run of scripts/bench, which left its files in FOLDER."""

import json
import pathlib
import platform
import re
import statistics
import subprocess
import sys

# These wait for disks and servers: their wall time counts. For all others it is the processor's time, which a
# busy machine does not stretch.
WAITING = re.compile(r"^(Registration|synchronize)")


def times(folder):
    """{row: {variant: median nanoseconds}} in the order of measuring."""
    samples = {}
    for entry in json.loads(pathlib.Path(folder, "times.json").read_text())["benchmarks"]:
        if entry["run_type"] != "iteration":
            continue
        row, variant = entry["run_name"].split("/iterations")[0].split("|")
        clock = "real_time" if WAITING.match(row) else "cpu_time"
        samples.setdefault(row, {}).setdefault(variant, []).append(entry[clock])
    order = [row for row in samples]
    return {row: {v: statistics.median(s) for v, s in samples[row].items()} for row in sorted(order, key=rank)}


def rank(row):
    kinds = ["Notification", ".apns", "Token", "Request body", "Request sealed", "Answer", "`shared`", "synchronize"]
    place = next((i for i, kind in enumerate(kinds) if row.startswith(kind)), len(kinds))
    keys = re.search(r"(\d+) (?:keys|bytes)", row)
    return place, int(keys[1]) if keys else 0, row


def figures(folder, file):
    lines = pathlib.Path(folder, file).read_text().splitlines()
    return {name: int(value) for value, name in (line.split(" ", 1) for line in lines)}


def shown(nanoseconds):
    for unit, size in (("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def machine():
    cpu = re.search(r"^model name\s*: (.*)$", pathlib.Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    compiler = subprocess.run(["c++", "--version"], stdout=subprocess.PIPE, text=True).stdout.splitlines()[0]
    count = len(re.findall(r"^processor", pathlib.Path("/proc/cpuinfo").read_text(), re.MULTILINE))
    return f"{cpu[1] if cpu else platform.machine()}, {count} processors; {platform.platform()}; {compiler}, -O2"


def lines(folder):
    yield "| Work | Library | Library's time divided by that of |"
    yield "|---|---|---|"
    for row, variants in times(folder).items():
        library = variants["library"]
        ratios = [
            f"{'the limit' if name == 'limit' else name} {library / time:.2f}"
            for name, time in sorted(variants.items(), key=lambda item: (item[0] == "limit", item[0]))
            if name != "library" and time > 0.5
        ]
        yield f"| {row} | {shown(library)} | {'; '.join(ratios)} |"


def provider(folder):
    """Requests of a provider, and how their cost grows with the connections."""
    rates = figures(folder, "provider.txt")
    yield "| Connections | Requests a second | nghttpd's, with an empty file | Ratio |"
    yield "|---|---|---|---|"
    for name, rate in rates.items():
        connections = re.match(r"requests a second on (\d+) connections", name)
        if connections:
            other = rates["nghttpd's " + name]
            yield f"| {connections[1]} | {rate} | {other} | {rate / other:.2f} |"


def main():
    folder = sys.argv[1]
    print(f"Measured on: {machine()}\n")
    print("\n".join(lines(folder)))
    print()
    print("\n".join(provider(folder)))
    print()
    for file in ("effects.txt", "exact.txt", "files.txt", "page.txt"):
        for name, value in figures(folder, file).items():
            print(f"{value:>10}  {name}")


if __name__ == "__main__":
    main()
