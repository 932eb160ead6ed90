#!/usr/bin/python3
"""Plays generated scenarios with two builds of the tool: they print the same transcripts, byte for byte.

generated_scenarios.py TOOL OTHER_TOOL [--count N] [--seed N] [--keep FOLDER]

The seed decides every scenario. Those that differ are kept in FOLDER, and their difference is printed. When
OTHER_TOOL has not been built, nothing is played and the status is 77.
"""
import argparse
import difflib
import json
import random
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

SKIPPED = 77
CALLBACKS = ["onGetToken:", "onReceiveNotification:", "onRegisterToken:", "onUpdateToken:", "onError:"]
TYPES = ["pushlib-normal", "pushlib-abrirapp", "pushlib-abrirurl", "pushlib-extras"]
TEXTS = ["", " ", "hola", "ñandú", "日本語", "😀", 'a "quoted" \\ text', "tab\tand\nline", "a&b=c", "error", "si", "(null)",
         "12", "-7x", "\u0001"]
LINKS = ["https://www.example.com/a?b=c#d", "http://example.com/with blank", "", "tel:+123", "path/only",
         "https://example.com/ñ", "a|b", "https://example.com/%20"]
VERSIONS = ["9.3.5", "10.0", "10", "12.4.1", "13.0", "13", "16.7", "17.0", "17.4.1", "100.0", ".5", "10."]
FAULTS = ["refuse", "untrusted", "reset", "truncate"]


class Generator:
    def __init__(self, seed):
        self.random = random.Random(seed)

    def pick(self, *choices):
        return self.random.choice(choices)

    def chance(self, share):
        return self.random.random() < share

    def number(self):
        return self.pick(0, 1, -1, 7, 2**31, 2**53 + 1, 2**63 - 1, -2**63, self.random.randrange(-10**6, 10**6))

    def real(self):
        return self.pick(0.1 + 0.2, 1.0, -0.5, 1e300, 5e-324, 1e16, 1e-5, 123456789.125, 2.0**63, -1e19,
                         self.random.uniform(-1e3, 1e3), self.random.random() * 10.0**self.random.randrange(-20, 20))

    def scalar(self):
        return self.pick(self.number, self.real, lambda: self.pick(True, False), lambda: self.pick(*TEXTS))()

    def value(self, depth=2, null=True):
        if depth == 0 or self.chance(0.7):
            return None if null and self.chance(0.1) else self.scalar()
        count = self.random.randrange(4)
        if self.chance(0.5):
            return [self.value(depth - 1, null) for _ in range(count)]
        return {self.pick("a", "b", "ñ", "key with blank", "Z"): self.value(depth - 1, null) for _ in range(count)}

    def link(self):
        return self.pick(*LINKS) if self.chance(0.9) else self.value()

    def some(self, optional):
        """Some of the entries; each is a function."""
        return {key: make() for key, make in optional.items() if self.chance(0.5)}

    def payload(self):
        if self.chance(0.2):  # as often as a person would tap on a link
            return {"aps": {"alert": self.some({"title": lambda: self.pick(*TEXTS), "body": lambda: self.pick(*TEXTS)}),
                            "type": "pushlib-abrirurl", "urlnoti": self.link()}}
        if self.chance(0.05):
            return self.some({"other": self.value})
        if self.chance(0.05):
            return {"aps": self.value()}
        aps = self.some({
            "badge": self.value, "content-available": lambda: self.pick(1, 1, 0, True, 1.0, "1"), "urlnoti": self.link,
            "extra1": self.value, "extra3": self.value, "extra5": lambda: self.pick(*TEXTS), "sound": self.value})
        if self.chance(0.8):
            aps["alert"] = self.some({"title": lambda: self.pick(*TEXTS), "body": lambda: self.pick(*TEXTS),
                                      "loc-args": self.value})
            if self.chance(0.05):
                aps["alert"] = self.value()
        if self.chance(0.8):
            aps["type"] = self.pick(*TYPES) if self.chance(0.85) else self.value()
        elif self.chance(0.3):
            aps["customType"] = self.value()
        return {"aps": aps, **self.some({"urlnoti": self.link})}

    def answer(self):
        if self.chance(0.2):
            return {"fault": self.pick(*FAULTS)}
        status = self.pick(200, 200, 200, 201, 299, 300, 404, 500, 599)
        if self.chance(0.1):
            return {"status": status, "bodyHex": self.pick("", "ff", "00", "7b7d", "c3a9")}
        if self.chance(0.3):
            return {"status": status, "body": self.pick("", "error", " error", "SI", "not json", "{", "[1]", '"si"', "1")}
        body = self.some({"error": lambda: self.pick("si", "no", "SI", ""), "token": self.value,
                          "errorDescripcion": self.scalar})
        return {"status": status, "body": json.dumps(body, ensure_ascii=self.chance(0.5))}

    def hexadecimal(self):
        return self.pick("", "00", "00ab10", self.random.randbytes(32).hex(), "000102030405060708")

    def step(self):
        text = lambda: self.pick(*TEXTS)
        boolean = lambda: self.pick(True, False)
        kind = self.random.choices(
            ["device", "application", "library", "store", "host", "registration", "authorization", "server",
             "activate", "deliverToken", "call", "notification", "deliver", "settle", "advance", "relaunch", "show"],
            [4, 4, 2, 4, 8, 2, 2, 5, 6, 5, 6, 16, 10, 12, 4, 2, 3])[0]
        step = {"do": kind}
        if kind == "device":
            step |= self.some({
                "systemVersion": lambda: self.pick(*VERSIONS), "name": text, "model": text,
                "country": lambda: self.pick("ES", "US", None), "tokenError": text,
                "languages": lambda: self.pick(None, [], ["es", "en"], ["ca-ES"]),
                "token": lambda: self.pick(None, self.hexadecimal())})
        elif kind == "application":
            step |= self.some({"state": lambda: self.pick("active", "active", "active", "inactive", "background"),
                               "version": lambda: self.pick("1.0", "2.0.1", None), "canOpenURL": boolean})
        elif kind == "library":
            step |= self.some({"version": lambda: self.pick("1.0", "3", None), "loaded": boolean})
        elif kind == "store":
            step |= self.some({
                "set": lambda: self.some({
                    "jsonGeo": self.scalar, "quorvantis_jsonDevice": self.scalar, "quorvantis_jsonAppPush": text,
                    "nc_id": self.scalar, "tokenMovil": lambda: self.pick("", "00ab10", "OLD"),
                    "mine": lambda: self.value(null=False)}),
                "remove": lambda: self.random.sample(["tokenMovil", "deviceUuid", "mine", "jsonGeo"], 2)})
        elif kind == "host":
            step |= self.some({
                "appHash": lambda: self.pick("f00d", "f00d", "", " ", None), "deactivateGPS": boolean,
                "foreground": boolean})
            if self.chance(0.3):
                step["delegate"] = self.pick(None, self.random.sample(CALLBACKS, self.random.randrange(6)))
        elif kind == "registration":
            step |= self.some({"finishes": lambda: self.chance(0.8),
                               "stores": lambda: {"quorvantis_jsonLibreriaPush": self.scalar()}})
        elif kind == "authorization":
            step |= self.some({"granted": boolean, "error": lambda: self.pick(None, None, "denied")})
        elif kind == "server":
            step["answers"] = [self.answer() for _ in range(self.random.randrange(1, 4))]
        elif kind == "activate":
            step["value"] = self.pick(True, True, 1, False, 0, 2, 255)
        elif kind == "deliverToken":
            step["hex"] = self.hexadecimal()
        elif kind == "call":
            step["operation"] = self.pick(
                "checkAppHash", "getVersion", "resetBadge", "registerFinish",
                "application:didRegisterForRemoteNotificationsWithDeviceToken:",
                "application:didFailToRegisterForRemoteNotificationsWithError:")
            if "didRegister" in step["operation"]:
                step["hex"] = self.hexadecimal()
            elif "didFail" in step["operation"]:
                step["error"] = self.pick(*TEXTS)
        elif kind == "notification":
            step |= {"arrives": self.pick("foreground", "background", "tap"), "userInfo": self.payload()}
            if step["arrives"] == "tap" and self.chance(0.3):
                step["action"] = "reply"
        elif kind == "deliver":
            step["userInfo"] = self.payload()
        elif kind == "advance":
            step["seconds"] = self.pick(0, 0.5, 1, 1.0, 0.999999999, 60)
        return step

    def scenario(self):
        steps = [self.step() for _ in range(self.random.randrange(5, 40))]
        if self.chance(0.7):  # most go down the whole road first
            steps = [{"do": "host", "appHash": "f00d"}, {"do": "activate", "value": True}, {"do": "settle"}] + steps
        if self.chance(0.5):  # an alert that is not there ends the scenario, so it comes late
            steps += [{"do": "tapOK", "alert": 1}, {"do": "tapOK", "alert": self.random.randrange(1, 4)}]
        steps += [{"do": "settle"}, {"do": "show"}]
        return "".join(json.dumps(step, ensure_ascii=False) + "\n" for step in steps)


def play(tool, build, scenario):
    run = subprocess.run([tool, "run", "--build", build, "-"], input=scenario.encode(), capture_output=True, timeout=300)
    return run.returncode, run.stdout, run.stderr


def difference(tools, seed, keep):
    """What differs between the two tools' runs of the seed's scenario, as text; empty when nothing does."""
    generator = Generator(seed)
    scenario = generator.scenario()
    build = "simulator" if generator.chance(0.1) else "device"
    first, second = (play(tool, build, scenario) for tool in tools)
    unplayable = first[0] not in (0, 2)
    if first == second and not unplayable:
        return ""
    keep.mkdir(parents=True, exist_ok=True)
    (keep / f"{seed}.{build}.jsonl").write_text(scenario)
    lines = [(out + error).decode("utf-8", "backslashreplace").splitlines() for _, out, error in (second, first)]
    return "\n".join([f"--- seed {seed}, {build} build: status {second[0]} and {first[0]}",
                      *difflib.unified_diff(*lines, *reversed(tools), lineterm="", n=1)])


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("tool")
    arguments.add_argument("other_tool")
    arguments.add_argument("--count", type=int, default=500)
    arguments.add_argument("--seed", type=int, default=1)
    arguments.add_argument("--keep", type=Path, default=Path("differing_scenarios"))
    given = arguments.parse_args()
    if not Path(given.other_tool).exists():
        print(f"skipped: {given.other_tool} is not built; scripts/test release builds it")
        return SKIPPED
    seeds = range(given.seed * 1000000, given.seed * 1000000 + given.count)
    with ThreadPoolExecutor(2) as pool:
        found = list(pool.map(lambda seed: difference((given.tool, given.other_tool), seed, given.keep), seeds))
    different = [text for text in found if text]
    print("\n".join(different[:5]))
    print(f"{given.count} scenarios, {len(different)} differ")
    return 1 if different else 0


if __name__ == "__main__":
    sys.exit(main())
