#!/usr/bin/python3
"""All code in Swift and Objective-C in the documents stands in the sample host to the letter, and all of its pieces are
quoted.

A quote is a code block behind a line "<!-- FILE PIECE -->"; a piece stands between "// [PIECE]" and "// [/PIECE]"."""
import re
import sys
from pathlib import Path

DOCS = Path(__file__).resolve().parents[2] / "docs"
HOST = DOCS / "sample-host"
QUOTE = re.compile(r"^<!-- (\S+) (\w+) -->\n```\w+\n(.*?)^```$", re.MULTILINE | re.DOTALL)
CODE = re.compile(r"^```(swift|objc)$", re.MULTILINE)
PIECE = re.compile(r"^ *// \[(\w+)\]\n(.*?)^ *// \[/\1\]$", re.MULTILINE | re.DOTALL)


def main():
    pieces = {(path.name, name): text for path in HOST.rglob("*") if path.suffix in (".m", ".swift")
              for name, text in PIECE.findall(path.read_text())}
    quoted, wrong = set(), []
    for path in [*DOCS.rglob("*.md"), *DOCS.parent.glob("*.md")]:
        document = path.read_text()
        if CODE.search(QUOTE.sub("", document)):
            wrong.append(f"{path.name}: code in Swift or Objective-C that nothing compiles; quote the sample host")
        for file, name, text in QUOTE.findall(document):
            quoted.add((file, name))
            if pieces.get((file, name)) != text:
                wrong.append(f"{path.name}: the quote of {name} is not what stands in {file}")
    wrong += [f"no document quotes {name} of {file}" for file, name in sorted(set(pieces) - quoted)]
    print("\n".join(wrong) or f"{len(quoted)} pieces quoted as they stand")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
