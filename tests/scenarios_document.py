#!/usr/bin/python3
"""Plays the scenarios of docs/scenarios.md, and holds its events to the transcripts of scenarios/.

scenarios_document.py TOOL
"""
import json
import re
import subprocess
import sys
from pathlib import Path

TESTS = Path(__file__).resolve().parent
DOCUMENT = (TESTS.parent / "docs" / "scenarios.md").read_text("utf-8")
NEVER_SEEN = {"completed"}  # the library calls none of these handlers


def problems_of_samples(tool):
    blocks = re.findall(r"^```(\w*)\n((?:(?!```).*\n)*)^```$", DOCUMENT, re.M)
    samples = [(text, following) for (kind, text), following in zip(blocks, [*blocks[1:], ("", "")]) if kind == "jsonl"]
    if len(samples) < 2:
        yield "there are no samples"
    for scenario, (kind, text) in samples:
        transcript = text if kind == "transcript" else ""
        run = subprocess.run([tool, "run", "-"], input=scenario, capture_output=True, text=True, timeout=300)
        if run.returncode != 0 or run.stdout != transcript:
            yield f"{scenario}prints\n{run.stdout}{run.stderr}"


def problems_of_events():
    events = DOCUMENT.partition('\n| "event" | Other keys | When |\n')[2]
    documented = {name: set(re.findall(r'"(\w+)"', keys))
                  for name, keys in re.findall(r'^\| "(\w+)" \|(.*?)\|', events, re.M)}
    seen = set()
    for file in sorted((TESTS / "scenarios").glob("*.transcript")):
        for line in filter(None, file.read_text("utf-8").split("\n")):
            event = json.loads(line)
            seen.add(event["event"])
            if documented.get(event["event"]) != set(event) - {"event"}:
                yield f"{file.name} has {line}, the document {documented.get(event['event'])}"
    for name in set(documented) - seen - NEVER_SEEN:
        yield f"nothing prints {name}"


if __name__ == "__main__":
    found = [*problems_of_samples(sys.argv[1]), *problems_of_events()]
    print("\n".join(found[:10]))
    sys.exit(1 if found else 0)
