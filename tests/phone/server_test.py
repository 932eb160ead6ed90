#!/usr/bin/python3
"""server_test.py TOOL [PART]: the live phone's interface over HTTP: who is let in, what is refused, who reads what.
With PART many lines are a so-manieth of them."""

import http.client
import json
import os
import pathlib
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time

from live_phone import JSON, PATIENCE, Phone, check, screens, texts

TOOL, PART = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 1
STREAM = "text/event-stream"


def raw(phone, text):
    """The first line of what is answered to a request sent as it is, and whether the connection then ends."""
    with socket.create_connection(("127.0.0.1", phone.port), timeout=PATIENCE) as wire:
        wire.sendall(text.encode("latin-1"))
        wire.shutdown(socket.SHUT_WR)
        answer = b""
        while piece := wire.recv(65536):
            answer += piece
    return answer.split(b"\r\n")[0].decode()


def only_those_with_the_key(phone):
    step = json.dumps({"do": "show"})
    other = f"http://127.0.0.1:{phone.port + 1}"
    for status, headers in ((421, {"Host": "evil.example"}), (421, {"Host": f"127.0.0.1:{phone.port + 1}"}),
                            (421, {"Host": f"127.0.0.1.evil.example:{phone.port}"}), (403, {"Origin": "http://evil.example"}),
                            (403, {"Origin": "null"}), (403, {"Origin": other}),
                            (403, {"Origin": f"https://127.0.0.1:{phone.port}"}), (401, {"Authorization": None}),
                            (401, {"Authorization": "Bearer " + phone.key[:-1]}), (401, {"Authorization": phone.key}),
                            (415, {"Content_Type": "text/plain"}), (415, {"Content_Type": None}),
                            (415, {"Content_Type": "application/x-www-form-urlencoded"}),
                            (415, {"Content_Type": "multipart/form-data; boundary=a"})):
        found, _, body = phone.request("POST", "/api/steps", step, **headers)
        check(found == status and json.loads(body)["error"], f"{headers}: {found} {body}")
        if status != 415:
            check(phone.request("GET", "/api/lines", **headers)[0] == status, headers)
    given = {"Host": f"127.0.0.1:{phone.port}", "Origin": f"http://127.0.0.1:{phone.port}", "Authorization": "Bearer " + phone.key}
    lines = [f"{name}: {value}\r\n" for name, value in given.items()]
    for status, second in (("421", "Host: evil"), ("403", "Origin: null"), ("401", "Authorization: Bearer x")):
        check(status in raw(phone, f"GET /api/lines HTTP/1.1\r\n{''.join(lines)}{second}\r\n\r\n"), f"twice: {second}")
    check(phone.lines() == [], "nothing was played")
    for headers in ({"Host": f"LOCALHOST:{phone.port}"}, {"Origin": f"http://localhost:{phone.port}"},
                    {"Content_Type": "application/json; charset=utf-8"}):
        check(phone.request("POST", "/api/steps", step, **headers)[0] == 200, headers)


def what_is_refused(phone):
    phone.fresh()
    good = {"do": "application", "state": "background"}
    for body, reason, step in (("{", "byte 2", None), ('{"do":"fly"}', "unknown step", 0), ('{"phone":"fly"}', "unknown act", 0),
                               (json.dumps([good, {"do": "advance"}]), '"seconds"', 1), ("[1]", "object", 0),
                               ('{"do":"show","do":"show"}', "", None), ('{"do":"settle","x":1}', "no key", 0),
                               ('{"phone":"end","x":1}', "no key", 0), ('{"phone":"remove","notification":1.0}', "whole", 0),
                               ('{"phone":"arrive"}', "needs", 0), ("[" * 2000, "", None), ('{"do":1}', "string", 0)):
        status, _, answer = phone.request("POST", "/api/steps", body)
        told = json.loads(answer)
        check(status == 400 and reason in told["error"] and told.get("step") == step, f"{body[:50]}: {status} {told}")
    run = subprocess.run([TOOL, "run", "-"], input='{"do":"advance"}', text=True, capture_output=True)
    check(run.stderr.strip().endswith(phone.refusal({"do": "advance"})[1]), "the reason that run gives")
    status, reason, step = phone.refusal(good, {"do": "tapOK", "alert": 7})
    check((status, step) == (400, 1) and "not on screen" in reason, reason)
    check(phone.lines() == [{"do": "application", "state": "background"}], "what can't be done leaves no line")
    for path, body in (("/api/fresh", {"scenario": 1}), ("/api/fresh", {"x": ""}), ("/api/fresh", []), ("/api/lint", {})):
        check(phone.json("POST", path, body)[0] == 400, (path, body))
    status, answer = phone.json("POST", "/api/fresh", {"scenario": '\n# a comment\n{"do":"fly"}\n'})
    check(status == 400 and answer["line"] == 3, answer)
    for query in ("from=x", "from=-1", "seconds=nan", "seconds=601", "from=1e3"):
        check(phone.json("GET", "/api/wait?event=callback&" + query)[0] == 400, query)
    check(phone.json("GET", "/api/wait")[0] == 400, "nothing is waited for")
    for method, path in (("GET", "/api/nothing"), ("POST", "/api/apns/faults")):
        check(phone.json(method, path, {} if method != "GET" else None)[0] == 404, (method, path))
    for method, path, allowed in (("GET", "/api/steps", "POST"), ("PUT", "/api/steps", "POST"), ("POST", "/api/lines", "GET, HEAD")):
        status, headers, _ = phone.request(method, path, None if method == "GET" else "{}")
        check(status == 405 and headers["Allow"] == allowed, (method, path, headers))
    large = json.dumps({"do": "deliver", "userInfo": {"x": "y" * (1 << 20)}})
    check(phone.request("POST", "/api/steps", large)[0] == 413, "over 1 MiB")
    beyond_a_phone = {"do": "deliver", "userInfo": {"aps": {"content-available": 1}, "x": "y" * 100_000}}
    size = len(json.dumps(beyond_a_phone["userInfo"], separators=(",", ":")))
    check({"screen": "oversized", "bytes": size, "largest": 4096} in phone.play(beyond_a_phone), "run plays it, too")
    head = f"GET /api/lines HTTP/1.1\r\nHost: 127.0.0.1:{phone.port}\r\n" + "".join(f"X-{n}: y\r\n" for n in range(10_000))
    check("200" not in raw(phone, head + "\r\n"), "10,000 headers")
    check(phone.lines()[0] == good, "all is as it was")


def waits(phone):
    phone.fresh()
    found = []
    waiting = threading.Thread(target=lambda: found.append(phone.wait(event="badge", number="0", seconds=str(PATIENCE))))
    waiting.start()
    phone.play({"do": "call", "operation": "resetBadge"})
    waiting.join()
    check(found == [(200, {"id": 2, "line": {"event": "badge", "number": 0}})], found)
    status, answer = phone.wait(event="badge", **{"from": 3}, seconds="0")
    check(status == 408 and answer["next"] == 3, answer)
    phone.play({"do": "store", "set": {"a.b": {"c": [1]}}}, {"do": "show"})
    for inner, status in (({"set.a.b.c": "[1]"}, 200), ({"values.a.b.c": "[1]"}, 200), ({"set.a.b": '{"c":[1]}'}, 200),
                          ({"set.a": "1"}, 408), ({"set.a.b.c.d": "1"}, 408), ({"do.x": "store"}, 408)):
        check(phone.wait(**inner, seconds="0")[0] == status, inner)
    waiting = threading.Thread(target=lambda: found.append(phone.wait(do="settle", seconds=str(2 * PATIENCE))))
    waiting.start()
    while waiting.is_alive():
        phone.fresh()
        phone.play({"do": "show"})
        waiting.join(0.1)
    check(found[1][0] == 409 and "fresh" in found[1][1]["error"], found)
    check(phone.json("GET", "/api/lines?from=0") == phone.json("GET", "/api/lines?from=1"), "the first line is 1")


def read_events(phone, last="", **query):
    """A stream of server-sent events: (event, id, data) of each message."""
    wire = socket.create_connection(("127.0.0.1", phone.port), timeout=PATIENCE)
    asked = "&".join(f"{name}={value}" for name, value in query.items())
    wire.sendall(f"GET /api/lines?{asked} HTTP/1.1\r\nHost: localhost:{phone.port}\r\nAccept: {STREAM}\r\n"
                 f"Last-Event-ID: {last}\r\nAuthorization: Bearer {phone.key}\r\n\r\n".encode())
    reader = wire.makefile("rb")
    status = int(reader.readline().split()[1])
    while reader.readline().strip():
        pass

    def messages():
        fields = {}
        while size := reader.readline():
            for line in reader.read(int(size, 16)).decode().split("\n"):
                if line:
                    fields.update([line.split(": ", 1)] if not line.startswith(":") else [])
                elif fields:
                    yield fields.get("event"), fields.get("id"), json.loads(fields["data"])
                    fields = {}
            reader.readline()
    return wire, status, messages()


def streams(phone):
    phone.fresh()
    wire, _, messages = read_events(phone, **{"from": 1})
    event, _, data = next(messages)
    check((event, data["next"]) == ("fresh", 1), data)
    phone.play({"do": "show"})
    check([next(messages)[1:] for _ in range(2)] == [("1", {"do": "show"}), ("2", {"event": "settings", "values": {}})], "")
    for goes_on in (read_events(phone, **{"from": 2}), read_events(phone, "1", **{"from": 1}),
                    read_events(phone, str(2**64 - 1), **{"from": 2})):
        check([next(goes_on[2])[1] for _ in range(2)] == [None, "2"], "a reader that comes back goes on")
        goes_on[0].close()
    phone.fresh()
    event, _, fresh = next(messages)
    check(event == "fresh" and fresh["phone"] != data["phone"], "another phone")
    phone.play({"do": "settle"})
    check(next(messages)[1] == "1", "counted from 1 again")
    wire.close()


def many_streams(phone):
    """64 pages: some read, the others do not, and all the while the phone is used."""
    lazy = [read_events(phone, **{"from": 1}) for _ in range(50)]
    readers = [read_events(phone, **{"from": 1}) for _ in range(14)]
    check(read_events(phone, **{"from": 1})[1] == 503, "the 65th")
    found = []

    def read_all(messages):
        next(messages)  # says which phone it is
        found.append([number for _, number, _ in (next(messages) for _ in range(10_000 // PART))])
    threads = [threading.Thread(target=read_all, args=(messages,)) for _, _, messages in readers]
    for thread in threads:
        thread.start()
    for _ in range(20 // PART):
        phone.play(*[{"do": "application", "version": "z" * 1000}] * 500)
    for thread in threads:
        thread.join()
    check(found == [[str(number) for number in range(1, 10_000 // PART + 1)]] * 14, "each line once, in order")
    del lazy, readers
    again, until = [], time.monotonic() + PATIENCE
    while len(again) < 64:
        check(time.monotonic() < until, "the places of those who left are free again")
        again += [stream for stream in [read_events(phone, **{"from": 1})] if stream[1] == 200]


def many_lines(phone):
    """What a line costs does not grow with their number: counted in what is sent, not in time."""
    phone.fresh()
    many = 100_000 // PART
    for _ in range(20):
        phone.play(*[{"do": "settle"}] * (many // 20))
    check(phone.json("GET", "/api/status")[1]["next"] == many + 1, "all of them")
    status, answer = phone.json("POST", "/api/steps", {"do": "show"})
    check(status == 200 and [entry["id"] for entry in answer["lines"]] == [many + 1, many + 2], answer)
    check(phone.json("GET", f"/api/lines?from={many + 2}")[1]["next"] == many + 3, "from there on")


def long_answers(phone):
    """They are sent in pieces: who does not read costs nothing, and gets the lines of the phone that was asked."""
    phone.fresh()
    many = 3000 // PART
    for _ in range(20):
        phone.play(*[{"do": "application", "version": "z" * 4000}] * (many // 20))
    before, waiting = phone.memory(), []
    for _ in range(16):
        waiting.append(http.client.HTTPConnection("127.0.0.1", phone.port, timeout=PATIENCE))
        waiting[-1].request("GET", "/api/lines", headers={"Authorization": "Bearer " + phone.key})
        check(waiting[-1].sock.recv(4, socket.MSG_PEEK) == b"HTTP", "it begins at once")
    grown = phone.memory() - before
    check(PART > 1 or grown < 16 << 20, f"16 answers of 12 MB cost {grown >> 20} MiB")
    phone.fresh()
    lines = json.loads(waiting[0].getresponse().read())["lines"]
    check([entry["id"] for entry in lines] == list(range(1, many + 1)), f"{len(lines)} lines of the phone that was asked")
    for connection in waiting:
        connection.close()


def begins_anew_or_stays(phone):
    """A scenario that can't be played leaves the phone as it was; one that a phone has saved can be opened."""
    phone.fresh()
    phone.play({"do": "show"})
    before = phone.lines(), phone.scenario(), phone.json("GET", "/api/status")
    status, answer = phone.json("POST", "/api/fresh", {"scenario": '{"do":"settle"}\n{"do":"tapOK","alert":7}\n'})
    check(status == 400 and "not on screen" in answer["error"] and answer["line"] == 2, answer)
    check((phone.lines(), phone.scenario(), phone.json("GET", "/api/status")) == before, "the phone is as before")
    phone.fresh()
    for _ in range(10):
        phone.play(*[{"do": "application", "version": "\"" * 1000}] * 200)
    saved = phone.scenario()
    phone.fresh(saved)
    check(phone.scenario() == saved, f"a saved session of {len(saved)} bytes")


def limits():
    """A phone that is full takes no more, and forgets nothing."""
    settle = {"do": "settle"}
    with Phone(TOOL, "--most-lines", "20") as phone:
        phone.play(*[settle] * 17)
        check(screens(phone.lines()) == [], "there is room")
        phone.play(settle)
        told = phone.lines()[18]
        check((told["screen"], told["lines"], told["mostLines"]) == ("nearlyFull", 18, 20), told)
        status, reason, step = phone.refusal(*[settle] * 3)
        check((status, step) == (507, 1) and "--most-lines" in reason and "fresh" in reason, (status, reason, step))
        check(phone.refusal({"phone": "end"})[0] == 507, "an act")
        room = phone.json("GET", "/api/status")[1]["room"]
        check((room["lines"], room["mostLines"], room["mostBytes"]) == (20, 20, 256 << 20) and room["bytes"] > 300, room)
        before = phone.lines()
        check(phone.json("POST", "/api/fresh", {"scenario": "{\"do\":\"settle\"}\n" * 21})[0] == 507, "a scenario that is too long")
        check(phone.lines() == before, "all is as it was")
        saved = phone.scenario()
        phone.fresh(saved)
        check(phone.scenario() == saved, "it can still be saved and opened")
        phone.fresh()
        phone.play(settle)
    with Phone(TOOL, "--most-mebibytes", "1") as phone:
        phone.play(*[{"do": "application", "version": "z" * 100_000}] * 9)
        check(screens(phone.lines()) == [], "there is room")
        phone.play(*[{"do": "application", "version": "z" * 100_000}] * 2)
        check(screens(phone.lines()) == ["nearlyFull"] and phone.refusal(settle)[0] == 507, "a mebibyte of text")


def ends_in_use():
    """What has not been played yet is refused, and nobody waits for it."""
    with Phone(TOOL) as phone:
        def ask(*request):
            try:
                while phone.request(*request)[0] == 200:
                    pass
            except (OSError, http.client.HTTPException):
                pass  # it has ended
        steps = "POST", "/api/steps", json.dumps([{"do": "settle"}] * 1000)
        phone.fresh()  # alone: the thread sanitizer does not see how the HTTP library guards what it makes at first
        threads = [threading.Thread(target=ask, args=request) for request in
                   [steps] * 8 + [("GET", "/api/wait?event=badge&seconds=600")]]
        threads.append(threading.Thread(target=phone.process.stdout.read))
        for thread in threads:
            thread.start()
        phone.wait(do="settle", **{"from": "20000"})
        phone.process.send_signal(signal.SIGTERM)
        check(phone.process.wait(PATIENCE) == 0, "a clean end")
        for thread in threads:
            thread.join()


def begin_and_end():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        file, settings = folder / "first.jsonl", folder / "settings"
        file.write_text('{"do":"host","appHash":"f00d"}\n{"do":"activate","value":true}\n{"do":"settle"}\n{"do":"show"}\n')
        run = subprocess.run([TOOL, "run", file], capture_output=True, text=True, check=True)
        with Phone(TOOL, "--settings", settings, file) as phone:
            check(texts(phone.lines()) == run.stdout.splitlines(), "a file plays as with run, without a prompt")
            printed, status = phone.stop()
            check(status == 0 and texts(printed) == run.stdout.splitlines(), "all that came was printed")
        with Phone(TOOL, "--settings", settings) as phone:
            values = phone.play({"do": "show"})[1]["values"]
            check(values["pushAppHash"] == "f00d" and phone.lines()[0] == {"screen": "stored", "values": values}, values)
            again = subprocess.run([TOOL, "run", "-"], input=phone.scenario(), capture_output=True, text=True, check=True)
            check(again.stdout.splitlines() == texts(phone.lines()), "what was stored before is in the scenario")
            phone.process.send_signal(signal.SIGTERM)
            check(phone.process.wait(PATIENCE) == 0, "a clean end")
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            port = str(free.getsockname()[1])
        folder = folder / "state" / "of the user"
        os.environ["XDG_STATE_HOME"] = str(folder)
        os.umask(0)
        keys = []
        for _ in range(2):
            with Phone(TOOL, "--port", port) as phone:
                keys.append(phone.key)
                phone.process.send_signal(signal.SIGINT)
                check(phone.process.wait(PATIENCE) == 0, "a clean end")
        kept = list(folder.glob("quorvantis-push/*"))
        check(keys[0] == keys[1] and len(keys[0]) >= 22 and kept[0].stat().st_mode & 0o77 == 0, "an open page comes back")
        for made in (folder, kept[0].parent):
            check(made.stat().st_mode & 0o777 == 0o700, f"{made} is the user's own")
        kept[0].chmod(0o644)
        with Phone(TOOL, "--port", port) as phone:
            check(phone.key != keys[0], "a key that others can read is none")
            check(kept[0].read_text() == phone.key and kept[0].stat().st_mode & 0o77 == 0, "another takes its place")
        del os.environ["XDG_STATE_HOME"]
        os.environ["HOME"] = str(folder / "home")
        with Phone(TOOL, "--port", port) as phone:
            own, = (folder / "home/.local/state/quorvantis-push").iterdir()
            check(own.read_text() == phone.key, "without a state folder of the user's it is at home")
        with Phone(TOOL) as one, Phone(TOOL) as other:
            check(one.key != other.key and one.json("GET", "/api/status")[1]["phone"] != other.json("GET", "/api/status")[1]["phone"],
                  "phones of their own")


def ends_with_its_surroundings():
    """With the program that has started it, and whatever becomes of the reader of its output."""
    with subprocess.Popen([TOOL, "phone", "--no-page", "--until-eof"], stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE) as process:
        process.stdout.readline()
        process.stdin.write(b"more\n" * 10_000)
        process.stdin.flush()
        check(process.poll() is None, "what is written is passed over")
        process.stdin.close()
        check(process.wait(PATIENCE) == 0, "the end of its input is its own")
    big = [{"do": "application", "version": "z" * 1000}] * 200
    with Phone(TOOL) as phone:
        phone.play(*big)
        status, _ = phone.json("POST", "/api/stop", {})
        check(status == 202 and phone.process.wait(PATIENCE) == 1, "nobody reads what it prints")
        check("standard output" in phone.said(), phone.said())
    with Phone(TOOL) as phone:
        phone.process.stdout.close()
        phone.play({"do": "show"})
        check(phone.process.wait(PATIENCE) == 1 and "standard output" in phone.said(), "its reader is gone")


def reads_until_it_is_ended():
    with subprocess.Popen([TOOL, "phone", "--no-page", "-"], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
        time.sleep(0.2)  # until it reads
        process.send_signal(signal.SIGTERM)
        check(process.wait(PATIENCE) == -signal.SIGTERM, "it ends, as run - does")
    with tempfile.TemporaryDirectory() as name:
        link = pathlib.Path(name) / "link"
        link.symlink_to(pathlib.Path(name) / "target")
        done = subprocess.run([TOOL, "phone", "--no-page", "--apns", "0", "--apns-authority", link], capture_output=True, text=True,
                              timeout=PATIENCE)
        check(done.returncode == 1 and "symbolic link" in done.stderr and len(os.listdir(name)) == 1, f"a link is not followed: {done}")


def wrong_arguments():
    for arguments, reason in ((["--listen", "0.0.0.0"], "--public-host"), (["--listen", "here"], "numeric"),
                              (["--strict"], "--apns"), (["/nothing"], "can't be read"),
                              (["--apns", "--provider-key", __file__], __file__),
                              (["--apns", "--provider-key", "/nothing"], "--provider-key"), (["--port", "99999"], "--port"),
                              (["--until-eof", "-"], "standard input"), (["--server", "127.0.0.1:1"], "--authority"), (["--apns", "x"], "--apns")):
        done = subprocess.run([TOOL, "phone", "--no-page", *arguments], capture_output=True, text=True, timeout=PATIENCE)
        check(done.returncode in (1, 2) and reason in done.stderr and not done.stdout, f"{arguments}: {done}")
    with open("/dev/full", "w") as full:
        done = subprocess.run([TOOL, "phone", "--no-page"], stdout=full, stderr=subprocess.PIPE, text=True, timeout=PATIENCE)
        check(done.returncode == 1 and "standard output" in done.stderr, f"nobody could reach it: {done}")
    with Phone(TOOL, "--listen", "127.0.0.2", "--public-host", "phone.example:80") as phone:
        connection = socket.create_connection(("127.0.0.2", phone.port), timeout=PATIENCE)
        connection.sendall(f"GET /api/status HTTP/1.1\r\nHost: phone.example:80\r\nAuthorization: Bearer {phone.key}\r\n\r\n".encode())
        check(b" 200 " in connection.recv(100), "the name that was given")
        connection.close()
        check(phone.facts["address"].startswith("http://phone.example:80/#"), phone.facts)


def main():
    with Phone(TOOL) as phone:
        for part in (only_those_with_the_key, what_is_refused, waits, streams, many_lines, long_answers, begins_anew_or_stays):
            part(phone)
        check(phone.request("GET", "/")[0] == 404, "no page")
        check(phone.stop()[1] == 0, "a clean end")
    with Phone(TOOL) as phone:
        many_streams(phone)
    limits()
    ends_in_use()
    begin_and_end()
    ends_with_its_surroundings()
    reads_until_it_is_ended()
    wrong_arguments()


main()
