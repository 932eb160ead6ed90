#!/usr/bin/python3
"""What the documents quote of the sample host stands there to the letter, and all of its pieces are quoted.

A quote is a code block behind a line "<!-- FILE PIECE -->"; a piece stands between "// [PIECE]" and "// [/PIECE]"."""
import re
import sys
from pathlib import Path

DOCS = Path(__file__).resolve().parents[2] / "docs"
HOST = DOCS / "sample-host"
QUOTE = re.compile(r"^<!-- (\S+) (\w+) -->\n```\w+\n(.*?)^```$", re.MULTILINE | re.DOTALL)
PIECE = re.compile(r"^ *// \[(\w+)\]\n(.*?)^ *// \[/\1\]$", re.MULTILINE | re.DOTALL)


def main():
    pieces = {(path.name, name): text for path in HOST.iterdir() if path.suffix in (".m", ".swift")
              for name, text in PIECE.findall(path.read_text())}
    quoted, wrong = set(), []
    for path in DOCS.glob("*.md"):
        for file, name, text in QUOTE.findall(path.read_text()):
            quoted.add((file, name))
            if pieces.get((file, name)) != text:
                wrong.append(f"{path.name}: the quote of {name} is not what stands in {file}")
    wrong += [f"no document quotes {name} of {file}" for file, name in sorted(set(pieces) - quoted)]
    print("\n".join(wrong) or f"{len(quoted)} pieces quoted as they stand")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
