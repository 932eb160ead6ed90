#!/usr/bin/python3
"""fold_test.py TOOL PAGE: the page's fold, in Chromium, against what the lines of a phone say.

What the page shows of a phone is worked out a second time here, by questions to its lines, for every scenario and
after each of its steps. What is stored is what "show" says then, which the fold does not get to see.
"""

import json
import random
import sys
from itertools import accumulate
from pathlib import Path

from browser import chromium, served
from live_phone import Phone, check

TOOL, PAGE = sys.argv[1:]
HERE = Path(__file__).resolve().parent
SCENARIOS = sorted((HERE.parent / "scenarios").glob("*.jsonl"))
SHOW = {"do": "show"}
RELAUNCH, ENDED = ("do", "relaunch"), ("screen", "ended")
LATEST = 50
HOST = {"appHash": None, "foreground": False, "deactivateGPS": False,
        "delegate": ["onGetToken:", "onReceiveNotification:", "onRegisterToken:", "onUpdateToken:", "onError:"]}
LIVE = "a live session"

NOTE = {"aps": {"alert": {"title": "T", "body": "B"}, "badge": 4, "type": "pushlib-normal"}}
SETTLE, BEHIND, IN_FRONT = ({"do": "settle"}, {"do": "application", "state": "background"},
                            {"do": "application", "state": "active"})
ARRIVES = {"phone": "arrive", "userInfo": NOTE}
LINK = {"aps": {"alert": {"title": "T"}, "type": "pushlib-abrirurl", "urlnoti": "https://example.com/"}}
LINK_IN_FRONT = {"do": "notification", "arrives": "foreground", "userInfo": LINK}
ACTIVATE = {"do": "activate", "value": True}
SESSION = [
    [{"do": "host", "appHash": "f00d", "foreground": True}, ACTIVATE, SETTLE],
    [{"do": "authorization", "granted": True}],
    [ARRIVES], [{"phone": "remove", "notification": 1}], [ARRIVES], [{"do": "advance", "seconds": 5}],
    [LINK_IN_FRONT], [LINK_IN_FRONT], [{"do": "tapOK", "alert": 2}], [ARRIVES],
    [{"phone": "airplaneMode", "on": True}],
    [{"do": "server", "answers": [{"fault": "refuse"}, {"fault": "reset"}, {"status": 500, "body": ""},
                                  {"fault": "untrusted"}, {"status": 200, "body": "{}"}]}],
    *[[{"do": "deliverToken", "hex": f"0{number}"}] for number in range(3)],
    [SETTLE],
    [{"phone": "airplaneMode", "on": False}],
    *[[{"do": "deliverToken", "hex": f"1{number}"}, SETTLE] for number in range(4)],
    [{"do": "deliverToken", "hex": "20"}], [ARRIVES], [{"do": "relaunch"}],
    [{"do": "registration", "stores": {"late": 1.0}}, ACTIVATE, {"do": "relaunch"}, {"do": "host", "foreground": True}],
    [SETTLE], [ACTIVATE, {"do": "advance", "seconds": 0.5}], [LINK_IN_FRONT],
    [BEHIND, ARRIVES], [ARRIVES], [{"phone": "remove", "notification": 4}],
    [{"phone": "end"}], [ARRIVES], [{"do": "relaunch"}, IN_FRONT],
    [{"do": "notification", "arrives": "background", "userInfo": {"aps": {"alert": {}, "type": 1}}}],
]
GOES_ON_AFTER_THE_END = "".join(f"{line}\n" for line in (
    *map(json.dumps, [{"do": "call", "operation": "registerFinish"}, {"do": "host", "foreground": True}]),
    json.dumps(LINK_IN_FRONT),
    '#phone {"phone":"end"}', *map(json.dumps, [BEHIND, {"do": "deliverToken", "hex": "00"}])))
TOLD_BY_NOBODY = [{"screen": "provider", "status": 400, "reason": "BadDeviceToken", "apnsId": "a"},
                  {"screen": "settingsFailed", "reason": "the disk is full"}]

TEXTS = [
    '{"a":1.0,"b":1,"c":-0,"d":-0.0,"e":12345678901234567890,"f":1e400,"g":[0.1,true,null,{}]}',
    '{"":"\\u0000\\b\\u001f\\"\\\\/\u2028é😀","__proto__":{"x":1},"a":"1.0"}',
    '["9007199254740993",9007199254740993,-9223372036854775808,1E5]',
]


def all_of(lines, *wanted, of):
    """A member of each line that has one of the wanted members, or several of them as an object."""
    found = [line for line in lines if any(line.get(key) == value for key, value in wanted)]
    return [line[of] if isinstance(of, str) else {key: line[key] for key in of} for line in found]


def since(lines, *marks):
    """The lines after the last that has one of these members."""
    at = [i for i, line in enumerate(lines) if any(line.get(key) == value for key, value in marks)]
    return lines[at[-1] + 1:] if at else lines


def last(values, otherwise=None):
    return values[-1] if values else otherwise


def uncovered(lines, shown, *covers):
    """The last of what is shown, unless something has covered it since."""
    at = [i for i, line in enumerate(lines) if any(line.get(key) == value for key, value in (shown, *covers))]
    at += [i for i, line in enumerate(lines) if line.get("do") == "application" and "state" in line]
    top = lines[max(at)] if at else {}
    return top if top.get(shown[0]) == shown[1] else None


def server_after(lines):
    """The queued answers that are left, how many requests wait, and the body that was read last."""
    turns = [line.get("event") == "received" or
             line.get("screen") == "requestFailed" and before.get("event") != "received"
             for before, line in zip([{}, *lines], lines)]
    offline = [line.get("reason") == "airplane mode is on" for line in lines]
    queued = all_of(lines, ("do", "server"), of="answers")
    # However many were there before, no more are left than have come since then and have not been taken.
    growth = [len(line.get("answers", ())) - (turn and not lost) for line, turn, lost in zip(lines, turns, offline)]
    left = max(accumulate(reversed(growth), initial=0))
    launch = since(lines, RELAUNCH)
    waiting = len(all_of(launch, ("event", "request"), of="event")) - sum(turns[len(lines) - len(launch):])
    return sum(queued, [])[len(sum(queued, [])) - left:], waiting, last(all_of(lines, ("event", "received"), of="body"))


def phone_after(lines):
    """What a phone is like after these lines, but for what is stored."""
    launch = since(lines, RELAUNCH)
    runs = "ended" not in all_of(since(lines, RELAUNCH, ("screen", "goesOn")), ENDED, of="screen")
    hidden = all_of(launch, ("event", "alertHidden"), of="alert")
    alerts = all_of(launch, ("event", "alertShown"), of=("alert", "title", "message", "buttons"))
    unlisted = all_of(lines, ("screen", "unlisted"), of="notification")
    entries = all_of(lines, ("screen", "listed"), ("screen", "banner"), of=("notification", "userInfo"))
    entries = [entry for entry in entries if entry["notification"] not in unlisted]
    banner = uncovered(lines, ("screen", "banner"), ENDED, RELAUNCH, ("do", "advance"))
    card = uncovered(lines, ("event", "opened"), ENDED, RELAUNCH, ("event", "alertShown"), ("screen", "banner"))
    since_moved = since(lines, *((key, line[key]) for line in lines for key in ("do", "phone")
                                 if line.get(key, "settle") != "settle"))
    configured = [line for line in launch if line.get("do") in ("host", "activate")]
    host = {key: value for line in launch if line.get("do") == "host" for key, value in line.items() if key != "do"}
    code = {"activate" if key == "value" else key: line[key] for line in configured for key in line if key != "do"}
    facts = {key: value for line in lines if line.get("do") in ("device", "application") for key, value in line.items()}
    return {
        "running": runs,
        "badge": last(all_of(lines, ("event", "badge"), ("screen", "badge"), of="number"), 0),
        "alerts": [alert for alert in alerts if alert["alert"] not in hidden] if runs else [],
        "opened": all_of(lines, ("event", "opened"), of="url")[-LATEST:],
        "card": card and {"url": card["url"]},
        "told": all_of(launch, ("event", "callback"), of=("selector", "argument"))[-LATEST:],
        "log": all_of(lines, ("event", "log"), of=("tag", "message"))[-LATEST:],
        "raised": last(all_of(launch, ("event", "raised"), of="selector")),
        "list": entries,
        "banner": last([entry for entry in entries if banner and banner["notification"] == entry["notification"]]),
        "prompt": "prompt" in all_of(since(lines, ("do", "authorization")), ("screen", "prompt"), of="screen"),
        "vibrated": "vibrated" in all_of(since_moved, ("event", "vibrated"), of="event"),
        "airplane": last(all_of(lines, ("phone", "airplaneMode"), of="on"), False),
        "clock": float(sum(round(seconds * 1e9) for seconds in all_of(lines, ("do", "advance"), of="seconds"))),
        "host": HOST | host,
        "code": code,
        "facts": {"state": "active", "systemVersion": "17.0", "country": "US"} | {
            key: value for key, value in facts.items() if key in ("state", "systemVersion", "country")},
        "server": server_after(lines),
    }


def phone_of(state):
    """The same of a state of the page."""
    server = state["server"]
    facts = state["device"] | state["application"]
    return {key: state[key] for key in phone_after([]) if key in state} | {
        "clock": float(state["clock"]),
        "facts": {key: facts[key] for key in ("state", "systemVersion", "country")},
        "server": (server["answers"], len(server["waiting"]), server["last"] and server["last"]["body"]),
    }


def same(one, other):
    return json.dumps(one, sort_keys=True) == json.dumps(other, sort_keys=True)


class Session:
    """All lines of a phone. `shows` are the indices of the steps that ask what is stored; at the moments in `unasked`
    nobody could."""

    def __init__(self, name, answer, shows, unasked=()):
        self.name, self.answer = name, answer
        self.lines = [entry["line"] for entry in json.loads(answer)["lines"]]
        asked = {index for show in shows for index in (show, show + 1)}
        self.kept = [index for index in range(len(self.lines)) if index not in asked]
        stored = [(show, {"settings": self.lines[show + 1]["values"]}) for show in shows]
        looks = sorted([*stored, *((moment, {}) for moment in unasked)], key=lambda look: look[0])
        self.moments = [sum(index < at for index in self.kept) for at, _ in looks]
        self.stored = [settings for _, settings in looks]

    def check_states(self, states):
        lines = [self.lines[index] for index in self.kept]
        for moment, stored, text in zip(self.moments, self.stored, states, strict=True):
            state = json.loads(text)
            found = phone_of(state) | {"settings": state["settings"]}
            for key, value in (phone_after(lines[:moment]) | stored).items():
                check(same(found[key], value), f"{self.name}, after line {moment} {lines[moment - 1]}: {key} is "
                                               f"{found[key]}, not {value}")


def answer_of(phone):
    return phone.request("GET", "/api/lines?from=1")[2].decode()


def played(phone, name, scenario):
    show = "\n" + json.dumps(SHOW)
    lines = scenario.splitlines()
    phone.fresh("\n".join(line + (show if line and not line.startswith("#") else "") for line in lines))
    answer = answer_of(phone)
    done = [i for i, entry in enumerate(json.loads(answer)["lines"]) if "do" in entry["line"]]
    return Session(name, answer, done[1::2])


def lived(phone):
    """A session with what no scenario can say."""
    phone.fresh()
    shows, unasked = [], []
    for post in SESSION:
        played_lines = phone.play(*post)
        at = len(phone.lines())
        if played_lines[-1] == {"screen": "prompt"}:
            unasked.append(at)
        else:
            shows.append(at)
            phone.play(SHOW)
    return Session(LIVE, answer_of(phone), shows, unasked)


def sessions():
    found = []
    for build in ("device", "simulator"):
        with Phone(TOOL, "--build", build) as phone:
            found += [played(phone, scenario.name, scenario.read_text()) for scenario in SCENARIOS
                      if scenario.stem.endswith(".simulator") == (build == "simulator")]
            if build == "device":
                found += [lived(phone), played(phone, "going on", GOES_ON_AFTER_THE_END)]
                steps = {row["name"] for row in phone.json("GET", "/api/schema")[1]["steps"]}
    check(steps <= {line.get("do") for session in found for line in session.lines}, "a step that no scenario has")
    return found


def check_json(ask, answers):
    check(ask("changed", TEXTS + answers) == [], "a JSON text is another one when it has been read and written")
    shuffled = '{"10":1,"9":2,"\ue000":3,"😀":4,"é":5,"B\\u0000":0,"B":{"b":[],"a":1}}'
    written = json.dumps(json.loads(shuffled), sort_keys=True, separators=(",", ":"), ensure_ascii=False)
    check(ask("written", shuffled) == written, ask("written", shuffled))


def check_words(ask, answers):
    by_nobody = json.dumps({"lines": [{"line": line} for line in TOLD_BY_NOBODY]})
    check(ask("wordless", [*answers, by_nobody]) == [], ask("wordless", [*answers, by_nobody]))
    stored = [{"event": "stored", "key": key, "value": 1} for key in ("a", "b")]
    check(ask("inWordsTogether", stored) == {"from": "Library", "to": "System", "text": "stores a, b"}, "together")
    for alert, texts in (("B", ["", "", "B"]), ({"title": "T", "subtitle": 3, "loc-key": "K"}, ["T", "", "K"]),
                         ({"title": "", "title-loc-key": "K"}, ["K", "", ""]),
                         ({"body": ""}, ["", "", ""]), (None, ["", "", ""]), ([1], ["", "", ""])):
        found = ask("textsOf", {"aps": {"alert": alert}})
        check([found[key] for key in ("title", "subtitle", "body")] == texts, (alert, found))
    for user_info in (None, {}, {"aps": "text"}, {"aps": None}):
        check(not any(ask("textsOf", user_info).values()), user_info)


def check_requests(ask, bodies, session):
    odd = "&tarea=pushlibRegistrarToken&token=a=b&c&jsonApp={}&jsonDevice=&tarea=x&jsonLibreria=&jsonGeo=&token=z"
    check(ask("torn", [*bodies, odd]) == [], ask("torn", [*bodies, odd]))
    values = dict(ask("fields", odd))
    check(values["token"] == "a=b&c" and values["jsonGeo"] == "&token=z" and len(values) == 6, values)
    for none_of_ours in ("", "tarea=1", odd.replace("&jsonGeo", "&geo"), odd.replace("pushlib", "")):
        check(ask("fields", none_of_ours) == [["body", none_of_ours]], none_of_ours)
    # The server's own answer is what the library then reports.
    first = all_of(session.lines, ("event", "received"), of="body")[0]
    reported = all_of(session.lines, ("selector", "onRegisterToken:"), of="argument")[0]
    check(json.loads(ask("ownAnswer", first)) == {"error": "no", "token": reported}, ask("ownAnswer", first))
    change = first.replace("RegistrarToken&token=", "CambioToken&tokenAntiguo=old&tokenNuevo=")
    check(json.loads(ask("ownAnswer", change))["token"] == reported, "the new token is the one that is answered")


def check_elsewhere(ask):
    """A push server that runs elsewhere tells nothing: what was sent to it no longer waits, and may fail."""
    asked = [{"event": "request", "task": "t", "url": "u", "body": body} for body in "abc"]
    failed = [{"screen": "requestFailed", "reason": reason} for reason in ("late", "airplane mode is on")]
    lines = [*asked, {"screen": "sent"}, failed[0], {"screen": "sent"}, {"phone": "airplaneMode", "on": True}, failed[1]]
    states = ask("states", json.dumps({"lines": [{"line": line} for line in lines]}), list(range(len(lines))), [4, 5, 8])
    servers = [json.loads(state)["server"] for state in states]
    found = [(server["last"]["body"], server["last"]["failure"], len(server["waiting"])) for server in servers]
    check(found == [("a", None, 2), ("a", "late", 2), ("b", None, 0)], found)


def check_history(ask, answers):
    moments = [random.randrange(1 << 20) for _ in range(100)]
    check(ask("misremembered", answers, moments, 37) == [], f"a history at moments {moments}")
    lines = [{"event": "stored", "key": "a", "value": 1}, {"event": "settings", "values": {"b": 2}}]
    [state] = ask("states", json.dumps({"lines": [{"line": line} for line in lines]}), [0, 1], [2])
    check(json.loads(state)["settings"] == {"b": 2}, "what is stored is what the phone says")
    line = json.dumps({"event": "vibrated", "sound": 4095})
    check(ask("followed", line) == [[2, True], [1, False], [4, True], [0, False], [0, True], 7], ask("followed", line))
    # What a phone is like has a size of its own, however long it lives.
    lines = [{"event": "opened", "url": "u"}, {"event": "log", "tag": "t", "message": "m"},
             {"event": "callback", "selector": "onError:", "argument": "a"}]
    check(ask("sizeAfter", lines, 10000) == ask("sizeAfter", lines, 100), "a state that grows")


def check_cost(ask):
    for kind in ("listed", "alerts", "requests", "answers"):
        made = [ask("madeByOneMore", kind, count) for count in (10, 5000)]
        check(made[1] < made[0] + 20, f"{kind}: a line makes {made[0]} objects at first, and then {made[1]}")
    texts = [json.dumps({"event": "badge", "number": number}, separators=(",", ":")) for number in range(300)]
    check(ask("readEndFirst", texts, 20) == [[300, texts[-1], True], [300, texts[-1], True], [300, texts[-1], False]], "its end first")


def check_sequences(ask):
    operations, held, expected, following = [], {}, [], 0
    for _ in range(3000):
        name = random.choice(["with", "with", "append", "without", "withoutFirst"])
        number = random.choice([following + random.randrange(40), random.randrange(following + 1)])
        if name == "append":
            number = following
        elif name == "withoutFirst":
            number = min(held, default=0)
        operations.append([name, number])
        expected.append([held[key] for key in sorted(held)])
        if name in ("with", "append"):
            held[number] = number
            following = max(following, number + 1)
        else:
            held.pop(number, None)
    expected.append([held[key] for key in sorted(held)])
    found = ask("sequences", operations)
    for i, (wanted, (members, *rest)) in enumerate(zip(expected, found, strict=True)):
        check(members == wanted, f"after {operations[:i][-1:]}: {members}, not {wanted}")
        check(rest == [len(wanted), *(wanted[:1] or [None]), *(wanted[-1:] or [None]), wanted[-3:-1]], rest)


def main():
    found = sessions()
    answers = [session.answer for session in found]
    bodies = [line["body"] for session in found for line in session.lines
              if line.get("event") in ("request", "received") and line["body"] is not None]
    with served(PAGE, HERE) as address, chromium() as driver:
        driver.get(address + "fold_in_page.js")

        def ask(function, *arguments):
            result, failure = driver.execute_async_script(
                """const [name, given, done] = arguments;
                   import("/fold_in_page.js").then((page) => done([page[name](...given), null]))
                     .catch((error) => done([null, error.stack]));""", function, arguments)
            check(failure is None, f"{function}: {failure}")
            return result

        for session in found:
            session.check_states(ask("states", session.answer, session.kept, session.moments))
        check_json(ask, answers)
        check_words(ask, answers)
        check_requests(ask, bodies, next(session for session in found if session.name == LIVE))
        check_elsewhere(ask)
        check_history(ask, answers)
        check_cost(ask)
        check_sequences(ask)
    print(f"{len(found)} sessions, {sum(len(session.moments) for session in found)} states")


if __name__ == "__main__":
    main()
