#!/usr/bin/python3
"""Plays every scenario of scenarios/ with the tool and compares the transcripts byte for byte.

run_scenarios.py TOOL [--accept] [NAME...]

NAMEs (without .jsonl) choose scenarios; all of them when left out. A NAME.simulator.jsonl is played with --build
simulator. With --accept what was printed becomes the transcript, and what changed in it is shown.
"""
import argparse
import difflib
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

FOLDER = Path(__file__).resolve().parent / "scenarios"
SECONDS_EACH = 300


def difference(expected, printed):
    lines = [data.decode("utf-8", "backslashreplace").splitlines(keepends=True) for data in (expected, printed)]
    return "".join(line if line.endswith("\n") else line + "\n(no line feed)\n"
                   for line in difflib.unified_diff(*lines, "expected", "printed", n=2))


def play(tool, scenario, accept):
    """What differs in the scenario's run, as text, empty when nothing does; and whether that is a failure."""
    transcript = scenario.with_suffix(".transcript")
    build = "simulator" if scenario.stem.endswith(".simulator") else "device"
    try:
        run = subprocess.run([tool, "run", "--build", build, str(scenario)], capture_output=True,
                             stdin=subprocess.DEVNULL, timeout=SECONDS_EACH)
    except subprocess.TimeoutExpired:
        return f"no end within {SECONDS_EACH} s\n", True
    if run.returncode != 0:
        return f"status {run.returncode}\n{run.stderr.decode('utf-8', 'replace')}", True
    expected = transcript.read_bytes() if transcript.exists() else None
    if run.stdout == expected:
        return "", False
    if accept:
        transcript.write_bytes(run.stdout)
    missing = "" if expected is not None else f"{transcript.name} is missing\n"
    return missing + difference(expected or b"", run.stdout), not accept


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("tool")
    arguments.add_argument("--accept", action="store_true")
    arguments.add_argument("names", nargs="*")
    given = arguments.parse_intermixed_args()
    scenarios = sorted(path for path in FOLDER.glob("*.jsonl") if not given.names or path.stem in given.names)
    orphans = [path.name for path in FOLDER.glob("*.transcript") if not path.with_suffix(".jsonl").exists()]
    with ThreadPoolExecutor(2) as pool:
        played = list(pool.map(lambda scenario: play(given.tool, scenario, given.accept), scenarios))
    for scenario, (text, _) in zip(scenarios, played):
        if text:
            print(f"--- {scenario.name}: {text}")
    for name in orphans:
        print(f"--- {name} has no scenario")
    failures = sum(failed for _, failed in played)
    accepted = sum(bool(text) and not failed for text, failed in played)
    print(f"{len(scenarios)} scenarios, {failures} differ" + (f", {accepted} accepted" if given.accept else ""))
    return 1 if failures or orphans or not scenarios else 0


if __name__ == "__main__":
    sys.exit(main())
