#!/usr/bin/python3
"""Gives the tool scenarios that can't be read, and odd ones that can. run_bad_scenarios.py TOOL"""
import re
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

LINES = Path(__file__).resolve().parent / "bad_scenarios" / "lines.txt"
GET_VERSION = b'{"do":"call","operation":"getVersion"}\n'
VERSION = b'{"event":"returned","operation":"getVersion","value":"1.0"}\n'
ALERT = (b'{"do":"notification","arrives":"background","userInfo":{"aps":{"alert":{},'
         b'"type":"pushlib-abrirurl","urlnoti":"https://example.com/"}}}\n')


def cases_of_lines():
    """What it shows, the scenario, the bad line's number (0 when it is good), part of the reason."""
    case = re.compile(r"^== (.*)\n((?:(?!-- ).*\n)*)-- (?:good|(\d+):(.*))\n", re.M)
    for what, scenario, line, reason in case.findall(LINES.read_text("utf-8")):
        yield what, scenario.encode("utf-8"), int(line or 0), reason.strip()


def cases_of_bytes():
    """Those that a file of lines can't hold."""
    yield "no line feed at the end", GET_VERSION.rstrip(), 0, ""
    yield "bad, without a line feed at the end", GET_VERSION + b'{"do":', 2, ""
    yield "invalid UTF-8", GET_VERSION + b'{"do":"device","name":"\xff"}\n', 2, "UTF-8"
    yield "overlong UTF-8", b'{"do":"device","name":"\xc0\xaf"}\n', 1, "UTF-8"
    yield "a surrogate in UTF-8", b'{"do":"device","name":"\xed\xa0\x80"}\n', 1, "UTF-8"
    yield "a NUL in a step", b'{"do":"settle"\0}\n', 1, ""
    yield "a line feed in a step's name", b'{"do":"a\\nb"}\n', 1, r'unknown step "a\nb"'
    yield "a NUL in a key", b'{"do":"settle","a\\u0000b":1}\n', 1, r'no key "a\u0000b"'
    yield "a raw control character in a text", b'{"do":"device","name":"a\x01"}\n', 1, "control"
    yield "nested too deep to be real", b'{"do":"store","set":{"a":' + b"[" * 200000 + b"\n", 1, ""
    yield "an empty file", b"", 0, ""


def check(tool, folder, number, case, as_input=False):
    what, scenario, line, reason = case
    file = folder / f"{number}.jsonl"
    file.write_bytes(scenario)
    name = "-" if as_input else str(file)
    run = subprocess.run([tool, "run", name], capture_output=True, timeout=300,
                         **({"stdin": open(file, "rb")} if as_input else {"stdin": subprocess.DEVNULL}))
    message = run.stderr.decode("utf-8", "replace")
    if not line:
        good = run.returncode == 0 and not message
    else:
        start = f"{name}:{line}: "
        said = message.removeprefix(start).removesuffix("\n")
        good = (run.returncode == 2 and not run.stdout and message == f"{start}{said}\n"
                and said and "\n" not in said and reason in said)
    return "" if good else f"{what}: status {run.returncode}, {message!r}, printed {run.stdout[:200]!r}"


def check_others(tool, folder):
    """A line found bad only when its turn comes, and arguments."""
    scenario = folder / "late.jsonl"

    def run(text, *arguments):
        scenario.write_bytes(text)
        return subprocess.run([tool, "run", *arguments], capture_output=True, input=text, timeout=300)

    off_screen = {
        "never shown": (GET_VERSION + b'{"do":"tapOK","alert":1}\n' + GET_VERSION, 2, VERSION),
        "tapped before": (ALERT + b'#\n{"do":"tapOK","alert":1}\n{"do":"tapOK","alert":1}\n', 4, None),
        "of an earlier launch": (ALERT + b'{"do":"relaunch"}\n{"do":"tapOK","alert":1}\n', 3, None),
        "the second of one": (ALERT + b'{"do":"tapOK","alert":2}\n', 2, None),
        "beyond all counts": (GET_VERSION + b'{"do":"tapOK","alert":9223372036854775807}\n', 2, VERSION),
    }
    for what, (text, line, printed) in off_screen.items():
        for name in (str(scenario), "-"):
            result = run(text, name)
            if (result.returncode != 2 or not result.stderr.startswith(f"{name}:{line}: ".encode())
                    or (result.stdout != printed if printed else b"alertShown" not in result.stdout)):
                yield f"an alert {what}: {result}"
    unreadable = [[str(folder / "is not there")], [str(folder)], [], ["--build", "phone", "-"], ["-", "-"],
                  ["--server", "127.0.0.1:1", "-"], ["--authority", str(scenario), "-"], ["--colour", "-"]]
    for arguments in unreadable:
        result = run(GET_VERSION, *arguments)
        if result.returncode != 2 or result.stdout or result.stderr.count(b"\n") != 1:
            yield f"{arguments}: {result}"
        named = f"quorvantis-push: {arguments[-1]}: can't be read: ".encode() if arguments and len(arguments) == 1 else b""
        if not result.stderr.startswith(named):
            yield f"{arguments}: {result}"
    for redirection in ("<&-", "<."):
        result = subprocess.run(["sh", "-c", f'"$0" run - {redirection}', tool], capture_output=True, timeout=300)
        if result.returncode != 2 or not result.stderr.startswith(b"quorvantis-push: standard input: can't be read: "):
            yield f"run - {redirection}: {result}"
    with open("/dev/full", "wb") as full:
        result = subprocess.run([tool, "run", "-"], input=GET_VERSION, stdout=full, stderr=subprocess.PIPE, timeout=300)
        if result.returncode != 1 or result.stderr.count(b"\n") != 1:
            yield f"a full disk behind standard output: {result}"
    result = run(b'{"do":"settle"}\n{"do":"server","answers":[]}\n', "--server", "127.0.0.1:1", "--authority",
                 str(scenario), str(scenario))
    if result.returncode != 2 or not result.stderr.startswith(f"{scenario}:2: ".encode()):
        yield f"a server step with --server: {result}"


def main():
    tool = sys.argv[1]
    of_lines, of_bytes = list(cases_of_lines()), list(cases_of_bytes())
    cases = of_lines + of_bytes
    if len(of_lines) != LINES.read_text("utf-8").count("\n== "):
        sys.exit(f"{LINES.name} has a case without an end")
    with tempfile.TemporaryDirectory() as name, ThreadPoolExecutor(2) as pool:
        folder = Path(name)
        problems = [*pool.map(lambda numbered: check(tool, folder, *numbered), enumerate(cases))]
        problems += [check(tool, folder, len(cases), case, as_input=True) for case in of_bytes]
        problems += check_others(tool, folder)
    problems = [problem for problem in problems if problem]
    print("".join(f"--- {problem}\n" for problem in problems) + f"{len(cases)} cases, {len(problems)} wrong")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
