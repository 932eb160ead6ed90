#!/usr/bin/python3
"""payload_files.py TOOL PAYLOADS [--brief]: files per second through `quorvantis-push payload`, beside jq over the same files.

jq only looks whether a file is JSON: once for each file, as a script with a loop does it, and once for all.
"""
import pathlib
import subprocess
import sys
import tempfile
import time

BRIEF = "--brief" in sys.argv[3:]
FILES, REPETITIONS = (50, 1) if BRIEF else (2000, 5)


def main():
    tool, payloads = sys.argv[1:3]
    kinds = [path.read_bytes() for path in sorted(pathlib.Path(payloads).glob("valid.*"))]
    with tempfile.TemporaryDirectory() as folder:
        paths = [pathlib.Path(folder, f"{number:04}.json") for number in range(FILES)]
        for number, path in enumerate(paths):
            path.write_bytes(kinds[number % len(kinds)])

        def per_second(*command, files=FILES):
            best = min(timed(command) for _ in range(REPETITIONS))
            return round(files / best)

        def timed(command):
            start = time.perf_counter()
            subprocess.run(command, stdout=subprocess.DEVNULL, check=True)
            return time.perf_counter() - start

        few = paths[:50]  # a process for each takes its time
        for name, figure in (
                ("explained: payload FOLDER", per_second(tool, "payload", folder)),
                ("explained, as JSON: payload --json FOLDER", per_second(tool, "payload", "--json", folder)),
                ("only checked: payload --sarif FOLDER", per_second(tool, "payload", "--sarif", folder)),
                ("jq empty FILE, for each", per_second("sh", "-c", 'for file; do jq empty "$file"; done', "sh", *few,
                                                       files=len(few))),
                ("jq empty FILE…, once for all", per_second("jq", "empty", *paths))):
            print(figure, "files per second, " + name)


if __name__ == "__main__":
    main()
