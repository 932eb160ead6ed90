#!/usr/bin/env python3
"""Draws docs/demo.svg from what `quorvantis-push demo` prints on a terminal: its first scene, and one with an alert.

Usage: docs/demo-picture.py TOOL > docs/demo.svg
"""
import fcntl
import os
import pty
import re
import struct
import subprocess
import sys
import termios
from xml.sax.saxutils import escape

COLUMNS = 92
COLOURS = {"32": "#7ec699", "33": "#e6c07b", "34": "#82aaff", "35": "#c792ea", "36": "#66d9ef", "31": "#ff6b6b"}
LINE, CHARACTER, MARGIN = 18, 8.43, 16


def terminal_output(tool):
    ours, theirs = pty.openpty()
    fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 50, COLUMNS, 0, 0))
    environment = {name: value for name, value in os.environ.items() if name != "NO_COLOR"}
    process = subprocess.Popen([tool, "demo"], stdout=theirs, env=environment)
    os.close(theirs)
    chunks = []
    try:
        while chunk := os.read(ours, 65536):
            chunks.append(chunk)
    except OSError:  # the terminal ends with its last writer
        pass
    process.wait()
    return b"".join(chunks).decode().replace("\r", "").split("\n")


def scene(lines, number):
    starts = [i for i, line in enumerate(lines) if re.match(r"\x1b\[1m\d+\. ", line)]
    start = starts[number - 1]
    end = next(i for i in range(start, len(lines)) if "As expected." in lines[i])
    return lines[start:end + 1]


def spans(line):
    style, out = "", []
    for part in re.split(r"(\x1b\[\d+m)", line):
        code = re.fullmatch(r"\x1b\[(\d+)m", part)
        if code:
            number = code.group(1)
            style = {"0": "", "1": ' font-weight="bold" fill="#ffffff"', "2": ' fill="#8a8f98"'}.get(
                number, f' fill="{COLOURS.get(number, "#d5d8de")}"')
        elif part:
            out.append(f"<tspan{style}>{escape(part)}</tspan>")
    return "".join(out)


def main():
    lines = terminal_output(sys.argv[1])
    shown = scene(lines, 1) + [""] + scene(lines, 9)
    width, height = int(COLUMNS * CHARACTER + 2 * MARGIN), LINE * len(shown) + 2 * MARGIN
    print(f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" viewBox="0 0 {width} {height}">')
    print(f'<rect width="{width}" height="{height}" rx="8" fill="#1d2026"/>')
    print('<g font-family="DejaVu Sans Mono, Menlo, Consolas, monospace" font-size="14" fill="#d5d8de">')
    for row, line in enumerate(shown):
        print(f'<text x="{MARGIN}" y="{MARGIN + LINE * row + 13}" xml:space="preserve">{spans(line)}</text>')
    print("</g></svg>")


main()
