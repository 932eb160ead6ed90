#!/usr/bin/env python3
"""check.py ROOT: holds every include of the tree, and every import of the page's modules, against folders.txt, which
stands beside this file, and the tables in docs/architecture.md against the same; and sees that what a source's "using"
brings is used there, that no two files include each other, and that the largest rooms stay small."""
import pathlib
import posixpath
import re
import sys

HERE = pathlib.Path(__file__).parent
INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s+(?:"([^"]+)"|<(QuorvantisPush)/[^>]+>)', re.MULTILINE)
IMPORT = re.compile(r'^import [^"]*"(\.[^"]+)";$', re.MULTILINE)
AROUND = re.compile(r"^(tests|fuzz|bench|docs)(/|$)|\.cpp$")
USING = re.compile(r"^using (?:\w+::)+(\w+);", re.MULTILINE)
SOURCES = {".h", ".cpp", ".mm", ".m"}
PAGE = "phone/page"
SMALL = ("lint", "report", PAGE)
MOST_FILES = 20
NOT_OURS = ("build/", "tests/apple_sdk/", "tests/ios_framework/sdk/", "platform/ios/declarations/")


def read_table(path):
    table = {}
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        folder, colon, others = line.partition(":")
        if not colon or folder in table:
            sys.exit(f"{path.name}:{number}: a line must be a folder that is not there yet, a colon, folders")
        table[folder] = others.split()
    unknown = {other for others in table.values() for other in others} - set(table)
    if unknown:
        sys.exit(f"{path.name}: not folders of the list: {', '.join(sorted(unknown))}")
    return table


def folder_of(path, table):
    """The longest folder of the list that the path lies in, or the file itself."""
    inside = [folder for folder in table if path == folder or path.startswith(folder + "/")]
    return max(inside, key=len, default=None)


def reachable(folder, table):
    seen, waiting = set(), list(table[folder])
    while waiting:
        other = waiting.pop()
        if other not in seen:
            seen.add(other)
            waiting += table[other]
    return seen


def sources(root):
    for path in sorted(root.rglob("*")):
        name = path.relative_to(root).as_posix()
        if path.suffix in SOURCES and not name.startswith(NOT_OURS) and path.is_file():
            yield name, path


def wrong_includes(root, table):
    for name, path in sources(root):
        own = folder_of(name, table)
        if own is None:
            yield f"{name}: its folder is not in tests/includes/folders.txt"
            continue
        text = path.read_text()
        for match in INCLUDE.finditer(text):
            line = text.count("\n", 0, match.start()) + 1
            included = match.group(1) or "framework/include/QuorvantisPush"
            other = folder_of(included, table)
            if other is None:
                if (path.parent / included).exists():
                    continue
                yield f"{name}:{line}: {included} is not named by its path from the top of the tree"
            elif other != own and other not in table[own]:
                yield f"{name}:{line}: {own}/ may not include {other}/"


def wrong_imports(root, table):
    """The same for the page's modules, which name each other by their path from where they are."""
    for path in sorted((root / PAGE).rglob("*.js")):
        name = path.relative_to(root).as_posix()
        for match in IMPORT.finditer(path.read_text()):
            other = folder_of(posixpath.normpath(f"{posixpath.dirname(name)}/{match.group(1)}"), table)
            if other != folder_of(name, table) and other not in table[folder_of(name, table)]:
                yield f"{name}: {folder_of(name, table)}/ may not import {match.group(1)}"


def mutual_includes(root):
    included = {name: set(match.group(1) for match in INCLUDE.finditer(path.read_text())) for name, path in sources(root)}
    for name, others in included.items():
        for other in others:
            if other is not None and name < other and name in included.get(other, ()):
                yield f"{name} and {other} include each other"


def large_folders(root):
    for room in SMALL:
        for folder in (root / room, *(path for path in (root / room).rglob("*") if path.is_dir())):
            files = sum(path.is_file() for path in folder.iterdir())
            if files > MOST_FILES:
                yield f"{folder.relative_to(root)}/ has {files} files; {MOST_FILES} are the most"


def needless_usings(root):
    for name, path in sources(root):
        text = path.read_text()
        for match in USING.finditer(text):
            if path.suffix != ".h" and len(re.findall(rf"\b{match.group(1)}\b", text)) == 1:
                yield f"{name}: nothing uses {match.group(1)}"


def wrong_table(root, table):
    for folder in table:
        if not AROUND.search(folder) and folder in reachable(folder, table):
            yield f"folders.txt: {folder}/ includes itself by way of others"
    documented = re.findall(r"^\| `([a-z/]+)/` \| [^|]* \|([^|]*)\|$",
                            (root / "docs/architecture.md").read_text(), re.MULTILINE)
    told = {folder: set(re.findall(r"`([a-z/]+)`", others)) for folder, others in documented}
    for folder, others in table.items():
        if AROUND.search(folder):
            continue
        if told.get(folder) != set(others):
            yield (f"docs/architecture.md: {folder}/ must be told to include "
                   f"{', '.join(f'`{other}`' for other in others) or 'nothing'}")


def main():
    root = pathlib.Path(sys.argv[1])
    table = read_table(HERE / "folders.txt")
    wrong = [*wrong_table(root, table), *wrong_includes(root, table), *wrong_imports(root, table),
             *mutual_includes(root), *large_folders(root), *needless_usings(root)]
    print("\n".join(wrong) or f"{len(table)} folders, every include as the list has it")
    sys.exit(1 if wrong else 0)


main()
