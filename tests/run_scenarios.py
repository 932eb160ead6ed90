#!/usr/bin/python3
"""Plays every scenario of scenarios/ with the tool and compares the transcripts byte for byte.

run_scenarios.py TOOL [NAME...]    NAMEs (without .jsonl) choose scenarios; all of them when left out.
A NAME.simulator.jsonl is played with --build simulator.
"""
import difflib
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

FOLDER = Path(__file__).resolve().parent / "scenarios"
SECONDS_EACH = 300


def play(tool, scenario):
    """What is wrong with the scenario's run, as text; empty when nothing is."""
    expected_file = scenario.with_suffix(".transcript")
    if not expected_file.exists():
        return f"{expected_file.name} is missing\n"
    build = "simulator" if scenario.stem.endswith(".simulator") else "device"
    try:
        run = subprocess.run([tool, "run", "--build", build, str(scenario)], capture_output=True,
                             stdin=subprocess.DEVNULL, timeout=SECONDS_EACH)
    except subprocess.TimeoutExpired:
        return f"no end within {SECONDS_EACH} s\n"
    expected = expected_file.read_bytes()
    if run.returncode == 0 and run.stdout == expected:
        return ""
    lines = [data.decode("utf-8", "backslashreplace").splitlines(keepends=True)
             for data in (expected, run.stdout)]
    difference = "".join(line if line.endswith("\n") else line + "\n(no line feed)\n"
                         for line in difflib.unified_diff(*lines, "expected", "printed", n=2))
    return f"status {run.returncode}\n{run.stderr.decode('utf-8', 'replace')}{difference}"


def main():
    tool, names = sys.argv[1], sys.argv[2:]
    scenarios = sorted(path for path in FOLDER.glob("*.jsonl") if not names or path.stem in names)
    orphans = [path.name for path in FOLDER.glob("*.transcript") if not path.with_suffix(".jsonl").exists()]
    with ThreadPoolExecutor(2) as pool:
        problems = list(pool.map(lambda scenario: play(tool, scenario), scenarios))
    for scenario, problem in zip(scenarios, problems):
        if problem:
            print(f"--- {scenario.name}: {problem}")
    failed = sum(map(bool, problems))
    for name in orphans:
        print(f"--- {name} has no scenario")
    print(f"{len(scenarios)} scenarios, {failed} differ")
    return 1 if failed or orphans or not scenarios else 0


if __name__ == "__main__":
    sys.exit(main())
