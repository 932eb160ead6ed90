#!/usr/bin/python3
"""publish.py FOLDER DOCS: puts one run of scripts/bench, which left its files in FOLDER, into DOCS/performance.md
and draws DOCS/performance-keys.svg.

The document holds the run between the lines `<!-- NAME -->` and `<!-- end -->`; the rest of it is written by hand.
"""

import pathlib
import re
import sys

import table

PHONES = 100_000_000
COLOURS = {"library": "#1f6feb", "nlohmann, plain": "#b35900", "limit": "#6e7781"}
LABELS = {"library": "the library", "nlohmann, plain": "plain, on nlohmann::json", "limit": "walking and copying"}


def amount(value, units):
    for unit, size in units:
        if value >= size:
            return f"{value / size:.3g} {unit}"
    return f"{value:.3g} {units[-1][0]}"


def fleet(folder):
    """What one launch costs a fleet, in requests, bytes and server work."""
    counts = table.figures(folder, "effects.txt")
    cpu = counts["server's CPU microseconds: launch, token changed"]
    bytes_units = (("TB", 1e12), ("GB", 1e9), ("MB", 1e6), ("bytes", 1))
    yield "| Token | Requests a phone | Bytes up and down a phone | Requests | Bytes | Server's processor time |"
    yield "|---|---|---|---|---|---|"
    for token in ("unchanged", "new", "changed"):
        requests = counts[f"requests: launch, token {token}"]
        up, down = (counts[f"bytes {way}: launch, token {token}"] for way in ("up", "down"))
        hours = requests * cpu * PHONES / 1e6 / 3600
        yield (f"| {token} | {requests} | {up} and {down} | {requests * PHONES // 10**6} million | "
               f"{amount((up + down) * PHONES, bytes_units)} | {hours:.3g} hours |")


def counted(folder, file):
    yield "| What | Count |"
    yield "|---|---|"
    for name, value in table.figures(folder, file).items():
        yield f"| {name} | {value} |"


def cost_per_key(folder):
    """{variant: [(keys, nanoseconds per key)]}"""
    curves = {}
    for row, variants in table.times(folder).items():
        keys = re.match(r"Notification handled: silent, (\d+) keys", row)
        if keys:
            for variant, time in variants.items():
                curves.setdefault(variant, []).append((int(keys[1]), time / int(keys[1])))
    return curves


def picture(curves):
    width, height, left, bottom, right, top = 640, 320, 50, 40, 190, 20
    most = max(y for points in curves.values() for _, y in points) * 1.1
    def place(keys, cost):
        return (left + keys / 400 * (width - left - right), height - bottom - cost / most * (height - top - bottom))
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" font-family="sans-serif" '
             'font-size="12">', '<rect width="100%" height="100%" fill="#fff"/>']
    x0, y0 = place(0, 0)
    x1, y1 = place(400, most)
    parts.append(f'<path d="M{x0:.0f} {y1:.0f}V{y0:.0f}H{x1:.0f}" fill="none" stroke="#24292f"/>')
    for keys in (6, 25, 100, 200, 400):
        parts.append(f'<text x="{place(keys, 0)[0]:.0f}" y="{y0 + 16:.0f}" text-anchor="middle">{keys}</text>')
    for cost in range(50, int(most), 50):
        y = place(0, cost)[1]
        parts.append(f'<path d="M{x0:.0f} {y:.0f}H{x1:.0f}" stroke="#d0d7de"/>')
        parts.append(f'<text x="{x0 - 6:.0f}" y="{y + 4:.0f}" text-anchor="end">{cost}</text>')
    parts.append(f'<text x="{(x0 + x1) / 2:.0f}" y="{height - 6}" text-anchor="middle">keys in "aps"</text>')
    parts.append(f'<text x="{x0 + 4:.0f}" y="{y1 + 4:.0f}">nanoseconds a key</text>')
    for variant, points in curves.items():
        points = sorted(points)
        line = " ".join("{:.1f},{:.1f}".format(*place(*point)) for point in points)
        x, y = place(*points[-1])
        parts.append(f'<polyline points="{line}" fill="none" stroke="{COLOURS[variant]}" stroke-width="2"/>')
        parts.append(f'<text x="{x + 8:.0f}" y="{y + 4:.0f}" fill="{COLOURS[variant]}">{LABELS[variant]}</text>')
    return "\n".join(parts + ["</svg>"]) + "\n"


def main():
    folder, docs = sys.argv[1], pathlib.Path(sys.argv[2])
    sections = {
        "machine": [table.machine()],
        "table": table.lines(folder),
        "effects": counted(folder, "effects.txt"),
        "fleet": fleet(folder),
        "provider": table.provider(folder),
        "files": counted(folder, "files.txt"),
        "page": counted(folder, "page.txt"),
        "page under load": counted(folder, "page_load.txt"),
    }
    document = docs / "performance.md"
    text = document.read_text()
    for name, lines in sections.items():
        block = f"<!-- {name} -->\n" + "\n".join(lines) + "\n<!-- end -->"
        text = re.sub(rf"<!-- {name} -->\n.*?<!-- end -->", lambda _: block, text, flags=re.DOTALL)
    document.write_text(text)
    (docs / "performance-keys.svg").write_text(picture(cost_per_key(folder)))


if __name__ == "__main__":
    main()
