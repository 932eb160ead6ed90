#!/usr/bin/python3
"""rules_test.py TOOL [SESSIONS]: what a live phone does around the application, and that what is saved gives the same events."""

import json
import pathlib
import random
import subprocess
import sys
import tempfile
import time

from live_phone import PATIENCE, Phone, check, run, screens, texts

TOOL, SESSIONS = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 100
REGISTER = [{"do": "host", "appHash": "f00d", "foreground": True}, {"do": "activate", "value": True}, {"do": "settle"}]
YES = {"do": "authorization", "granted": True}
BEHIND = {"do": "application", "state": "background"}
ACTIVE = {"do": "application", "state": "active"}
REFUSE = {"fault": "refuse"}


def note(number, **aps):
    return {"aps": {"alert": {"title": f"note {number}"}, "type": "pushlib-normal"} | aps}


def arrives(user_info, **more):
    return {"phone": "arrive", "userInfo": user_info} | more


def registered(phone):
    phone.fresh()
    phone.play(*REGISTER)
    phone.play(YES)


def check_saved(phone, *arguments):
    """A scenario of what was done gives the same events, and so does a phone that plays it."""
    events, saved = texts(phone.lines()), phone.scenario()
    check(run(TOOL, saved, *arguments) == events, f"saved:\n{saved}\nevents:\n" + "\n".join(events))
    return saved


def prompt(phone):
    phone.fresh()
    lines = phone.play(*REGISTER)
    check(lines[-1] == {"screen": "prompt"} and lines[-2]["event"] == "authorizationRequested", lines)
    for line in ({"do": "settle"}, {"phone": "end"}, arrives(note(1))):
        status, reason, step = phone.refusal(line)
        check(status == 409 and "prompt" in reason and step == 0, (line, status, reason, step))
    status, answer = phone.wait(event="callback", seconds="0.1")
    check(status == 408 and "prompt" in answer["error"], answer)
    saved = phone.scenario()
    check('"settle"' not in saved and "permission" in saved, saved)
    lines = phone.play(YES)
    check([line.get("selector") for line in lines].count("onRegisterToken:") == 1, lines)
    phone.play({"do": "advance", "seconds": 1})
    check_saved(phone)

    phone.fresh()
    phone.play({"do": "authorization", "granted": False, "error": "never"})
    check("prompt" not in screens(phone.play(*REGISTER)), "who has decided is not asked")
    check(screens(phone.play(arrives(note(1)), BEHIND, arrives(note(2)))) == [], "what is not permitted is not shown")
    check_saved(phone)
    phone.fresh(json.dumps(BEHIND) + "\n" + json.dumps({"do": "deliver", "userInfo": note(1)}))
    check(screens(phone.lines()) == [], "nor is what nobody was asked for")
    phone.fresh(json.dumps(YES))
    check("prompt" not in screens(phone.play(*REGISTER)), "it was decided in the scenario")
    status, answer = phone.json("POST", "/api/fresh", {"scenario": '\n{"do":"tapOK","alert":1}'})
    check(status == 400 and answer["line"] == 2, answer)
    phone.fresh()
    check("prompt" in screens(phone.play(*REGISTER)), "a phone of its own")

    phone.fresh()
    phone.play(*REGISTER[:2], {"do": "advance", "seconds": 0.5})
    phone.play(YES)
    check_saved(phone)


def list_rules(phone):
    registered(phone)
    lines = phone.play(arrives(note(1, badge=4)))
    check(screens(lines)[:1] == ["banner"] and lines[0]["do"] == "deliver" and {"do": "settle"} in lines, lines)
    lines = phone.play(BEHIND, arrives(note(2, badge=7), collapseId="a"))
    check(screens(lines) == ["listed", "badge"] and lines[3]["number"] == 7, lines)
    lines = phone.play(arrives(note(3), collapseId="a"))
    check([line.get("notification") for line in lines if "screen" in line] == [2, 3], lines)
    check({"phone": "remove", "notification": 2} in lines and "unlisted" in screens(lines), lines)
    lines = phone.play({"do": "deliver", "userInfo": note(5)})
    check(screens(lines) == ["listed"], "one that has no collapse id takes nobody's place")
    for way, shown in (("background", ["listed"]), ("foreground", ["banner"])):
        check(screens(phone.play({"do": "notification", "arrives": way, "userInfo": note(6)})) == shown, way)
    check(screens(phone.play(arrives({"aps": {"content-available": 1, "extra1": "x"}}))) == [], "a silent one is not shown")
    check(phone.refusal({"phone": "remove", "notification": 2})[0] == 409, "it is off the list")
    phone.play({"phone": "remove", "notification": 3})
    lines = phone.play({"do": "host", "foreground": False}, ACTIVE, arrives(note(4)))
    check("banner" not in screens(lines), "the library said no")
    lines = phone.play(BEHIND, {"do": "notification", "arrives": "tap", "userInfo": note(2)}, {"do": "settle"})
    check(screens(lines) == [], "what is tapped was there before")
    check_saved(phone)


def ends(phone):
    registered(phone)
    lines = phone.play(arrives({"aps": {"alert": "no dictionary"}}))
    check(lines[-1] == {"screen": "ended", "selector": "objectForKey:"}, lines)
    for step in ({"do": "settle"}, {"do": "activate", "value": True}, {"do": "advance", "seconds": 1}, {"phone": "end"}):
        check(phone.refusal(step)[0] == 409, step)
    lines = phone.play(arrives(note(1, badge=2)))
    check(lines[0]["phone"] == "arrive" and screens(lines) == ["listed", "badge"], lines)
    check(screens(phone.play(arrives(note(2) | {"x": "y" * 5000}))) == ["oversized", "listed"], "it is told all the same")
    phone.play({"do": "relaunch"}, *REGISTER, {"phone": "end"})
    lines = phone.play({"do": "show"}, {"do": "device", "country": "ES"})
    check("settings" in lines[1]["event"], "what is stored can be seen")
    saved = check_saved(phone)
    check('#phone {"phone":"end"}' in saved, saved)

    before = [line for line in phone.lines() if "screen" in line]
    phone.fresh(saved)
    after = [line for line in phone.lines() if "screen" in line]
    check([line for line in before if line != {"screen": "prompt"}] == after, (before, after))
    check(phone.refusal({"do": "settle"})[0] == 409, "it is the phone that it was")
    raises = [*REGISTER, {"do": "deliver", "userInfo": {"aps": 1}}]
    phone.fresh("\n".join(map(json.dumps, raises)))
    check(phone.refusal({"do": "settle"})[0] == 409 and screens(phone.lines()) == ["ended"], phone.lines())
    phone.fresh("\n".join(map(json.dumps, [*raises, {"do": "relaunch"}])))
    check(screens(phone.lines() + phone.play({"do": "settle"})) == ["ended"], "it was launched again")
    phone.fresh("\n".join(map(json.dumps, [*raises, {"do": "settle"}])))
    check("ended" not in screens(phone.lines() + phone.play({"do": "settle"})), "it went on, as with `run`")
    phone.fresh('#phone {"phone":"end"}\n{"do":"settle"}')
    check(screens(phone.lines()) == ["ended", "goesOn"] and phone.lines()[-1] == {"do": "settle"}, phone.lines())
    check(phone.play({"do": "settle"}) == [{"do": "settle"}], "and from there on it runs")


def airplane(phone):
    registered(phone)
    phone.play({"do": "server", "answers": [{"status": 503, "body": ""}]}, {"phone": "airplaneMode", "on": True})
    check("503" in phone.scenario(), "an answer that is not used yet")
    lines = phone.play(arrives(note(1), expires=int(time.time()) + 900), arrives(note(2)),
                       {"do": "deliverToken", "hex": "ff"}, {"do": "settle"})
    check(screens(lines) == ["requestFailed"] and "deliver" not in [line.get("do") for line in lines], lines)
    lines = phone.play({"phone": "airplaneMode", "on": False})
    check([line["userInfo"] for line in lines if line.get("do") == "deliver"] == [note(2)], "the last one was kept")
    check(len(phone.play({"phone": "airplaneMode", "on": False})) == 1, "and came once")
    phone.play({"do": "deliverToken", "hex": "ee"}, {"do": "settle"})
    saved = check_saved(phone)
    check(saved.index('"refuse"') < saved.index('"status":503'), saved)
    phone.play({"phone": "airplaneMode", "on": True}, arrives(note(3), expires=1), {"phone": "airplaneMode", "on": False})
    check("note 3" not in json.dumps([line for line in phone.lines() if "phone" not in line]), "it had expired")
    phone.play({"phone": "airplaneMode", "on": True})
    events = texts(phone.lines())
    phone.fresh(phone.scenario())
    check(texts(phone.lines()) == events, "nothing is delivered twice when it is opened")
    check("requestFailed" in screens(phone.play({"do": "deliverToken", "hex": "dd"}, {"do": "settle"})), "it is still on")


def expiry(phone):
    """By the phone's clock, from the moment when it was sent."""
    registered(phone)
    for seconds, passes, comes in ((60, 59, True), (60, 3600, False), (0, 0.5, False)):
        in_a_minute = {"expires": int(time.time()) + 1000} if seconds == 60 else {}
        phone.play(BEHIND, {"phone": "airplaneMode", "on": True}, arrives(note(1), expiresIn=seconds, **in_a_minute),
                   {"do": "advance", "seconds": passes})
        lines = phone.play({"phone": "airplaneMode", "on": False})
        check(("listed" in screens(lines)) == comes, (seconds, passes, lines))
    act = phone.play({"phone": "airplaneMode", "on": True}, arrives(note(2), expires=int(time.time()) + 100))[-1]
    check(90 < act["expiresIn"] <= 100, act)
    check(phone.play(arrives(note(3), expires=1))[0]["expiresIn"] == 0, "it had expired when it was sent")
    check_saved(phone)
    # A session as an earlier version saved it, with an application that had ended: only the clock on the wall counts.
    for expires, comes in ((1, False), (int(time.time()) + 900, True)):
        old = [json.dumps(YES), *map(json.dumps, REGISTER), '#phone {"phone":"end"}', '#phone {"on":true,"phone":"airplaneMode"}',
               "#phone " + json.dumps(arrives(note(4), expires=expires)), '#phone {"on":false,"phone":"airplaneMode"}']
        phone.fresh("\n".join(old))
        check(("listed" in screens(phone.lines())) == comes, phone.lines())
        check("expiresIn" not in json.dumps(phone.lines()), "it opens as it did")


def shown(lines):
    return next(line["notification"] for line in lines if line.get("screen") in ("listed", "banner"))


def taps(phone):
    registered(phone)
    link = note(1, type="pushlib-abrirurl", urlnoti="https://www.example.com/offers")
    for before in ([BEHIND], [ACTIVE], [BEHIND, {"phone": "end"}]):
        number = shown(phone.play(*before[:1], arrives(link)))
        phone.play(*before[1:])
        lines = phone.play({"phone": "tap", "notification": number})
        check(lines[0] == {"phone": "tap", "notification": number} and "unlisted" in screens(lines), lines)
        check({"event": "opened", "url": "https://www.example.com/offers"} in lines, lines)
        steps = [line for line in lines if "do" in line]
        check(({"do": "relaunch"} in steps) == (len(before) == 2) and ({**REGISTER[0]} in steps) == (len(before) == 2), steps)
        check(before == [ACTIVE] or ACTIVE in steps, "the application comes to the front")
        check(phone.refusal({"phone": "tap", "notification": number})[0] == 409, "it is off the list")
    phone.play(BEHIND)
    number = shown(phone.play(arrives(note(2))))
    tapped = [line for line in phone.play({"phone": "tap", "notification": number, "action": "reply"}) if "arrives" in line]
    check(tapped[0]["action"] == "reply", tapped)
    check(phone.refusal({"phone": "tap", "notification": 99})[0] == 409, "never listed")
    before = [line for line in phone.lines() if "screen" in line and line["screen"] != "prompt"]
    phone.fresh(check_saved(phone))
    check([line for line in phone.lines() if "screen" in line] == before, "the system shows the same when it is opened")

    phone.fresh()
    phone.play({"do": "authorization", "granted": False}, *REGISTER, BEHIND, arrives(link))
    check(phone.refusal({"phone": "tap", "notification": 1})[0] == 409, "nobody taps what is not permitted")


def reinstalls(phone):
    registered(phone)
    token = phone.json("GET", "/api/status")[1]["token"]
    phone.play(BEHIND, arrives(note(1, badge=3)))
    lines = phone.play({"phone": "uninstall"})
    check(screens(lines) == ["ended", "unlisted", "badge"], lines)
    check(phone.play({"do": "show"})[-1]["values"] == {}, "its settings are gone")
    for line in ({"do": "relaunch"}, {"do": "settle"}, {"phone": "uninstall"}):
        status, reason, _ = phone.refusal(line)
        check(status == 409 and "install" in reason, reason)
    check(screens(phone.play(arrives(note(2)))) == [], "nobody is there to get it")
    phone.play({"phone": "install"})
    check(phone.refusal({"phone": "install"})[0] == 409, "it is there")
    other = phone.json("GET", "/api/status")[1]["token"]
    check(other != token and len(other) == len(token), other)
    check(screens(phone.play({"do": "relaunch"}, *REGISTER))[-1] == "prompt", "permission is asked for again")
    lines = phone.play(YES)
    check({"event": "callback", "selector": "onRegisterToken:", "argument": other} in lines, lines)
    check(screens(phone.play(BEHIND, arrives(note(3)))) == ["listed"], "all is as with a fresh one")
    before = [line for line in phone.lines() if "screen" in line and line["screen"] != "prompt"]
    phone.fresh(check_saved(phone))
    check([line for line in phone.lines() if "screen" in line] == before, "the system shows the same when it is opened")


def settings():
    """They outlive the program; a phone whose file becomes unusable is held on without it, and says why."""
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "settings.sqlite"
        with Phone(TOOL, "--settings", file) as phone:
            registered(phone)
            phone.stop()
        with Phone(TOOL, "--settings", file) as phone:
            check("tokenMovil" in phone.lines()[0]["values"], phone.lines())
            phone.play({"do": "call", "operation": "getVersion"}, YES, *REGISTER)
            check("received" not in [line.get("event") for line in phone.lines()], "the token is registered already")
            check_saved(phone)
            phone.play({"do": "store", "set": {"key": 1}})
            file.unlink()
            file.mkdir()
            check(screens(phone.play({"do": "relaunch"}, *REGISTER, {"do": "settle"})) == ["settingsFailed"], phone.lines())
            status, answer = phone.json("POST", "/api/steps", {"do": "show"})
            check(status == 500 and str(file) in answer["error"], (status, answer))
            phone.fresh()
            check(str(file) in phone.lines()[0]["reason"] and screens(phone.lines()) == ["settingsFailed"], phone.lines())
            phone.play({"do": "store", "set": {"key": 2}})
            check(phone.play({"do": "show"})[-1]["values"] == {"key": 2}, "they go with the phone")
        done = subprocess.run([TOOL, "phone", "--no-page", "--settings", file], capture_output=True, text=True, timeout=PATIENCE)
        check(done.returncode == 1 and str(file) in done.stderr and not done.stdout, done)


def random_sessions(phone):
    """Whatever is done, in whatever order: what is saved gives the same events, here and with `run`."""
    chance = random.Random(7)
    choices = [
        lambda: ACTIVE, lambda: BEHIND, lambda: {"do": "settle"}, lambda: {"do": "advance", "seconds": chance.random()},
        lambda: {"do": "relaunch"}, lambda: chance.choice(REGISTER), lambda: YES, lambda: {"phone": "end"},
        lambda: {"phone": "airplaneMode", "on": chance.random() < 0.5},
        lambda: {"phone": "tap", "notification": chance.randrange(1, 5)},
        lambda: {"phone": chance.choice(["uninstall", "install", "install"])},
        lambda: {"do": "deliverToken", "hex": f"{chance.randrange(256):02x}"},
        lambda: {"do": "server", "answers": [chance.choice([REFUSE, {"status": 500, "body": ""}, {"fault": "reset"}])]},
        lambda: arrives(chance.choice([note(chance.randrange(9), badge=1), {"aps": 1}, {"aps": {"content-available": 1}},
                                       note(0, type="pushlib-abrirurl", urlnoti="https://www.example.com/")]),
                        collapseId=chance.choice("ab"))]
    for _ in range(SESSIONS):
        phone.fresh()
        for _ in range(25):
            phone.json("POST", "/api/steps", chance.choice(choices)())
        if phone.lines() and "permission" in phone.scenario():
            phone.play(YES)
        saved, events = check_saved(phone), texts(phone.lines())
        phone.fresh(saved)
        check(texts(phone.lines()) == events, f"opened again:\n{saved}")


def main():
    with Phone(TOOL) as phone:
        for part in (prompt, list_rules, ends, airplane, expiry, taps, reinstalls, random_sessions):
            part(phone)
    settings()
    with Phone(TOOL, "--build", "simulator") as phone:
        registered(phone)
        phone.play(BEHIND, arrives(note(1)))
        check("--build simulator" in check_saved(phone, "--build", "simulator"), "it is said how to run it")


main()
