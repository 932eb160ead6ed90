#!/usr/bin/python3
"""examples_test.py STAND DOCUMENT: the document's examples for curl and Python, run as they stand there but for the port."""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

from stand import TOKEN, Key, Stand, check


def main():
    blocks = re.findall(r"^```(sh|python)\n(.*?)^```", pathlib.Path(sys.argv[2]).read_text(), re.DOTALL | re.MULTILINE)
    check([language for language, _ in blocks] == ["sh", "sh", "python", "python"], "curl, its token, httpx, aioapns")
    curl, token = (text for language, text in blocks if language == "sh")
    programs = [["sh", "-euc", token + curl]]
    programs += [["/usr/bin/python3", "-c", f"device_token = '{TOKEN}'\n{text}"] for language, text in blocks
                 if language == "python"]
    with tempfile.TemporaryDirectory() as name:
        folder, key = pathlib.Path(name), Key()
        (folder / "key.p8").write_text(key.private)
        with Stand(sys.argv[1], folder, key=folder / "key.p8") as stand:
            for program in programs:
                program[-1] = program[-1].replace("8445", str(stand.port))
                done = subprocess.run(program, cwd=folder, env=os.environ | {"DEVICE_TOKEN": TOKEN}, capture_output=True,
                                      text=True, timeout=60, check=False)
                check(done.returncode == 0, f"{program[-1]}\n{done}")
                line = stand.next()
                check(line["status"] == 200 and "aps" in line["payload"], f"{program[-1]}\n{line}")


main()
