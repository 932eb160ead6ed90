#!/usr/bin/python3
"""loop_test.py TOOL: the whole loop. A phone registers its token over HTTPS, a backend reads it there and sends to it
with clients in use, unchanged, and the library handles and reports what arrives."""

import functools
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import time

import clients
from stand import KEY_ID, TEAM, Key

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "phone"))
from live_phone import PATIENCE, Phone, check, run, screens, texts  # noqa: E402

TOOL, TOPIC = sys.argv[1], "com.example.loop"
REGISTER = [{"do": "host", "appHash": "f00d"}, {"do": "activate", "value": True}, {"do": "settle"},
            {"do": "authorization", "granted": True}]
ALERT = clients.PAYLOADS["normal"]


class PushServer:
    def __init__(self, folder):
        self.authority = str(folder / "push-authority.pem")
        self.process = subprocess.Popen([TOOL, "serve", "--port", "0", "--authority", self.authority],
                                        stdout=subprocess.PIPE, text=True)
        self.port = re.search(r":(\d+)/", self.process.stdout.readline())[1]

    def token(self):
        """Of the next registration that it prints."""
        for line in self.process.stdout:
            if found := re.match(r" +token +([0-9a-f]+)$", line):
                return found[1]
        raise AssertionError("no token was registered")

    def __enter__(self):
        return self

    def __exit__(self, *failure):
        self.process.kill()
        self.process.communicate()


class Backend:
    """Sends with a client to the phone that it was told of."""

    def __init__(self, phone, authority, key, folder):
        self.port, self.authority, self.key = phone.facts["apns"]["port"], authority, key
        self.provider_token = key.token()
        self.senders = {"curl": clients.by_curl, "httpx": clients.by_httpx, "nghttp": clients.by_nghttp,
                        "aioapns": functools.partial(clients.by_aioapns, key_file=folder / "key.p8", key_id=KEY_ID,
                                                     team=TEAM)}

    def send(self, token, payload, client="httpx", kind="normal", **headers):
        given = clients.headers_for(kind, TOPIC, self.provider_token) | {
            name.replace("_", "-"): value for name, value in headers.items()}
        return self.senders[client](self.port, self.authority, "/3/device/" + token, given, payload)


def after(phone, number):
    return [entry["line"] for entry in phone.json("GET", f"/api/lines?from={number}")[1]["lines"]]


def last(phone):
    return phone.json("GET", "/api/status")[1]["next"]


def waits_for_permission(phone, backend, token):
    """While the permission prompt is on the screen a notification waits."""
    phone.play({"do": "device", "token": "cd" * 32}, {"do": "device", "token": "ef" * 32})
    phone.fresh()
    check(backend.send("cd" * 32, ALERT) == (400, "BadDeviceToken"), "it was another phone's")
    check("prompt" in screens(phone.play(*REGISTER[:3])), "permission is asked for")
    check(backend.send(token, ALERT) == (400, "BadDeviceToken"), "the phone has not registered yet")
    phone.fresh()
    phone.play({"do": "deliverToken", "hex": token}, *REGISTER[:3])
    check(backend.send(token, ALERT)[0] == 200, "the application has got its token, and permission is asked for")
    check(phone.wait(screen="provider", status="200", seconds=PATIENCE)[0] == 200, "it has come")
    check("deliver" not in [line.get("do") for line in phone.lines()], "nobody has answered the prompt yet")
    check({"do": "deliver", "userInfo": ALERT} in phone.play(REGISTER[3]), "it was not lost")


def handled(phone, backend, token):
    """Each client sends each type, in front and behind: what the host is told, and what the system shows."""
    for state in ("active", "background"):
        phone.play({"do": "application", "state": state}, {"do": "settle"})
        for client in backend.senders:
            for kind, payload in clients.PAYLOADS.items():
                where, begun = f"{client}, {kind}, {state}", last(phone)
                found = backend.send(token, payload, client, kind)
                check(found == (200, ""), f"{where}: {found}")
                status, _ = phone.wait(do="settle", **{"from": begun}, seconds=PATIENCE)
                lines = after(phone, begun)
                check(status == 200 and lines[0]["status"] == 200, f"{where}: {lines}")
                check({"do": "deliver", "userInfo": payload} in lines, f"{where}: {lines}")
                told = [line for line in lines if line.get("event") == "callback"]
                is_silent = "content-available" in payload["aps"]
                reaches = state == "active" or is_silent
                check(bool(told or "raised" in str(lines)) == reaches, f"{where}: {lines}")
                check(("listed" in screens(lines)) == (state == "background" and not is_silent), f"{where}: {lines}")
    phone.play({"do": "application", "state": "active"})


def as_a_phone_does(phone, backend, token):
    phone.play({"do": "application", "state": "background"})
    for number in (1, 2):
        check(backend.send(token, ALERT, apns_collapse_id="a")[0] == 200, "taken")
    phone.wait(screen="unlisted", seconds=PATIENCE)
    check(screens(phone.lines()).count("unlisted") == 1, "the earlier one goes")

    begun = last(phone)
    phone.play({"phone": "airplaneMode", "on": True})
    for expiration in ("1", str(int(time.time()) + 900)):
        check(backend.send(token, ALERT, apns_expiration=expiration)[0] == 200, "taken")
    check(phone.wait(phone="arrive", **{"from": begun}, seconds=PATIENCE)[0] == 200, "it arrived")
    phone.wait(expires=expiration, **{"from": begun}, seconds=PATIENCE)
    check("listed" not in screens(after(phone, begun)), "it is kept")
    lines = phone.play({"phone": "airplaneMode", "on": False})
    check(screens(lines) == ["listed", "badge"] and lines[1]["do"] == "deliver", lines)

    begun = last(phone)
    phone.play({"phone": "end"})
    check(backend.send(token, ALERT)[0] == 200, "taken")
    check(phone.wait(screen="listed", **{"from": begun}, seconds=PATIENCE)[0] == 200, "an ended application's")
    phone.play({"do": "relaunch"}, *REGISTER[:3])

    begun = last(phone)
    phone.play({"do": "device", "token": "ab" * 32})
    check(backend.send(token, ALERT) == (410, "Unregistered"), "it has another token now")
    check(backend.send("ab" * 32, ALERT)[0] == 200, "the one that it has")
    refused = phone.wait(screen="provider", status="410", **{"from": begun}, seconds=PATIENCE)[1]["line"]
    check(refused["reason"] == "Unregistered" and refused["detail"], refused)
    phone.play({"do": "device", "token": token})

    for kind, suffix in (("voip", ".voip"), ("liveactivity", ".push-type.liveactivity"), ("widgets", ".push-type.widgets")):
        begun = last(phone)
        broken = {"aps": {"alert": "ends the application"}}
        found = backend.send(token, broken, apns_push_type=kind, apns_topic=TOPIC + suffix)
        check(found == (200, ""), f"{kind}: {found}")
        line = phone.wait(screen="provider", **{"from": begun}, seconds=PATIENCE)[1]["line"]
        check(kind in line["detail"] and "hears nothing" in line["detail"] and "findings" not in line, line)
        check(len(after(phone, begun)) == 1, "no step")

    begun = last(phone)
    phone.play({"phone": "uninstall"})
    check(backend.send(token, ALERT) == (410, "Unregistered"), "nobody has it now")
    phone.play({"phone": "install"}, {"do": "relaunch"})
    token = phone.json("GET", "/api/status")[1]["token"]
    check(backend.send(token, ALERT) == (400, "BadDeviceToken"), "nobody has it yet")
    phone.play(*REGISTER)
    check(backend.send(token, ALERT)[0] == 200, "the next registration's")
    phone.fresh()
    phone.play(*REGISTER)


def load(backend, token, folder, requests, connections):
    """What h2load reports of as many requests."""
    (folder / "silent.json").write_text('{"aps":{"content-available":1}}')
    words = [word for name, value in clients.headers_for("silent", TOPIC, backend.provider_token).items()
             if name != "apns-id" for word in ("--header", f"{name}: {value}")]
    return subprocess.run(["h2load", f"--requests={requests}", f"--clients={connections}", "--max-concurrent-streams=1000",
                           "--data", folder / "silent.json", *words,
                           f"https://localhost:{backend.port}/3/device/{token}"],
                          capture_output=True, text=True, timeout=PATIENCE, check=True).stdout


def many_at_once(phone, backend, token, folder):
    """What was answered 200 is handled, once, though nobody reads what the command prints."""
    behind_all = {"do": "device", "country": "PT"}
    for connections in (1, 50):
        phone.play(behind_all)
        begun = last(phone)
        done = load(backend, token, folder, 1000, connections)
        check("1000 2xx" in done, done)
        phone.play(behind_all)
        lines = after(phone, begun)
        check(len([line for line in lines if line.get("do") == "deliver"]) == 1000, f"{connections}: {len(lines)} lines")
        check(len({line.get("apnsId") for line in lines} - {None}) == 1000, f"{connections}: one each")


def has_limits(authority, key, folder):
    """What waits for the permission prompt's answer is bounded, and so is all that a phone takes."""
    options = "--apns=0", "--apns-authority", authority, "--topic", TOPIC, "--provider-key-id"
    with Phone(TOOL, *options, "OTHERKEY00") as phone:
        found = Backend(phone, authority, key, folder).send(phone.facts["token"], ALERT)
        check(found == (403, "InvalidProviderToken") and phone.json("GET", "/api/status")[1]["apns"]["checksKeyId"], found)
    with Phone(TOOL, *options, KEY_ID) as phone:
        backend, token = Backend(phone, authority, key, folder), phone.facts["token"]
        phone.play({"do": "deliverToken", "hex": token}, *REGISTER[:3])
        done = load(backend, token, folder, 1100, 1)
        taken = int(re.search(r"(\d+) 2xx", done)[1])
        check(taken in (1000, 1001), done)  # one more while another is being handed over
        check(backend.send(token, ALERT) == (429, "TooManyRequests"), "the prompt is not answered")
        phone.play(REGISTER[3])
        check(len([line for line in phone.lines() if line.get("do") == "deliver"]) == taken, "all that was taken came")
        check(backend.send(token, ALERT) == (200, ""), "there is no prompt any more")
    with Phone(TOOL, *options, KEY_ID, "--most-lines", "10") as phone:
        backend, token = Backend(phone, authority, key, folder), phone.facts["token"]
        phone.play({"do": "deliverToken", "hex": token}, *[{"do": "settle"}] * 7)
        while phone.refusal({"do": "settle"})[0] != 507:
            pass
        lines = phone.lines()
        check(backend.send(token, ALERT) == (503, "ServiceUnavailable"), "it is full")
        check(backend.send("ab" * 32, ALERT) == (400, "BadDeviceToken"), "other reasons come first")
        check(phone.lines() == lines and "--most-lines" in phone.said(), "the refusal is printed, and leaves no line")
        phone.fresh()
        phone.play({"do": "deliverToken", "hex": token})
        check(backend.send(token, ALERT) == (200, ""), "a fresh phone")


def two_hundred_but(phone, backend, token):
    phone.play({"do": "application", "state": "active"})
    nested = [functools.reduce(lambda inner, _: [inner], range(depth), 1) for depth in (510, 511)]
    found = [backend.send(token, {"aps": {}, "deep": value}) for value in nested]
    check(found == [(200, ""), (400, "PayloadEmpty")], f"what can be a part of a step, and what can't: {found}")
    phone.wait(screen="provider", reason="PayloadEmpty", seconds=PATIENCE)
    begun = last(phone)
    check(backend.send(token, {"aps": {"alert": "no dictionary"}}) == (200, ""), "the service takes it")
    ended = phone.wait(screen="ended", **{"from": begun}, seconds=PATIENCE)
    check(ended[0] == 200, ended)
    findings = after(phone, begun)[0]["findings"]
    check(any(finding["endsApplication"] and finding["severity"] == "error" for finding in findings), findings)


def misbehaves(phone, backend, token):
    order = {"faults": [{"fault": "answer", "status": 429, "reason": "TooManyRequests", "times": 2}]}
    check(phone.json("POST", "/api/apns/faults", order)[0] == 200, "ordered")
    found = [backend.send(token, ALERT) for _ in range(3)]
    check(found == [(429, "TooManyRequests")] * 2 + [(200, "")], found)
    status, answer = phone.json("POST", "/api/apns/faults", {"faults": [{"fault": "moon"}]})
    check(status == 400 and "goaway" in answer["error"], answer)


def airplane_mode(phone):
    phone.fresh()
    phone.play(*REGISTER, {"phone": "airplaneMode", "on": True}, {"do": "deliverToken", "hex": "aa"}, {"do": "settle"})
    events, shown = texts(phone.lines()), screens(phone.lines())
    check(shown == ["prompt", "sent", "requestFailed"], shown)
    phone.fresh(phone.scenario())
    check(texts(phone.lines()) == events and screens(phone.lines()) == shown[1:], phone.lines())


def main():
    with tempfile.TemporaryDirectory() as name:
        folder, key = pathlib.Path(name), Key()
        (folder / "key.p8").write_text(key.private)
        authority = str(folder / "authority.pem")
        with PushServer(folder) as server, \
                Phone(TOOL, "--apns=0", "--apns-authority", authority, "--topic", TOPIC, "--provider-key", folder / "key.p8",
                      "--strict", "--server", "127.0.0.1:" + server.port, "--authority", server.authority) as phone:
            phone.play(*REGISTER)
            token = server.token()
            check(token == phone.facts["token"], token)
            backend = Backend(phone, authority, key, folder)
            for part in (waits_for_permission, handled, as_a_phone_does, misbehaves):
                part(phone, backend, token)
            many_at_once(phone, backend, token, folder)
            two_hundred_but(phone, backend, token)
            stranger = Backend(phone, authority, Key(), folder)
            check(stranger.send(token, ALERT) == (403, "InvalidProviderToken"), "signed with another key")
            events, scenario = texts(phone.lines()), phone.scenario()
            airplane_mode(phone)
            printed, status = phone.stop()
            out, words = json.dumps(printed), phone.said()
            check(status == 1, "--strict: the library would have ended the application")
            check("alert-is-no" in words or "error" in words, words)
            for secret in (backend.provider_token, stranger.provider_token, key.private.split("\n")[1]):
                check(secret not in out + words + scenario, "a secret was printed")
            replayed = run(TOOL, scenario, "--server", "127.0.0.1:" + server.port, "--authority", server.authority)
            check(replayed == [text for text in events if '"event":"received"' not in text], "no stand-in is needed to replay")

        has_limits(authority, key, folder)
        own = folder / "mine.pem"
        own.write_text("my own\n")
        done = subprocess.run([TOOL, "phone", "--no-page", "--apns=0", "--apns-authority", own], capture_output=True, text=True)
        check(done.returncode == 1 and own.read_text() == "my own\n", done)


main()
