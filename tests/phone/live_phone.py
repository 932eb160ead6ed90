"""A phone of `quorvantis-push phone`, as a test in any language would use it: over HTTP."""

import http.client
import json
import os
import subprocess
import tempfile
import urllib.parse

PATIENCE = 60
JSON = "application/json"


def check(holds, otherwise):
    if not holds:
        raise AssertionError(otherwise)


class Phone:
    """Ends with the `with` that it is made in; `arguments` are the command's own."""

    def __init__(self, tool, *arguments, page=False):
        self.words = tempfile.TemporaryFile("w+")
        self.process = subprocess.Popen([tool, "phone", *([] if page else ["--no-page"]), "--json", *arguments],
                                        stdout=subprocess.PIPE, stderr=self.words, text=True)
        line = self.process.stdout.readline()
        check(line, f"phone {arguments} said nothing but: {self.said()}")
        self.facts = json.loads(line)
        self.port, self.key = self.facts["port"], self.facts["key"]

    def __enter__(self):
        return self

    def __exit__(self, *failure):
        self.process.kill()
        self.process.wait(PATIENCE)
        self.process.stdout.close()
        self.words.close()

    def request(self, method, path, body=None, **headers):
        """(status, headers, body) of a request; a header that is None is left out."""
        given = {"Authorization": "Bearer " + self.key} | ({"Content-Type": JSON} if body is not None else {})
        given |= {name.replace("_", "-"): value for name, value in headers.items()}
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=PATIENCE)
        connection.request(method, path, body, {name: value for name, value in given.items() if value is not None})
        answer = connection.getresponse()
        found = answer.status, dict(answer.getheaders()), answer.read()
        connection.close()
        return found

    def json(self, method, path, body=None, **headers):
        status, _, answer = self.request(method, path, body if body is None else json.dumps(body), **headers)
        return status, json.loads(answer)

    def play(self, *lines):
        """The lines that came of it, the posted ones included."""
        status, answer = self.json("POST", "/api/steps", lines)
        check(status == 200, f"{lines}: {status} {answer}")
        return [entry["line"] for entry in answer["lines"]]

    def refusal(self, *lines):
        status, answer = self.json("POST", "/api/steps", lines)
        return status, answer.get("error", ""), answer.get("step")

    def fresh(self, scenario=""):
        status, answer = self.json("POST", "/api/fresh", {"scenario": scenario})
        check(status == 200, answer)

    def wait(self, **wanted):
        return self.json("GET", "/api/wait?" + urllib.parse.urlencode(wanted))

    def lines(self):
        return [entry["line"] for entry in self.json("GET", "/api/lines")[1]["lines"]]

    def scenario(self):
        return self.request("GET", "/api/scenario")[2].decode()

    def memory(self):
        """The bytes of memory that its process has."""
        with open(f"/proc/{self.process.pid}/statm") as file:
            return int(file.read().split()[1]) * os.sysconf("SC_PAGESIZE")

    def said(self):
        """What it has said in words."""
        self.words.seek(0)
        return self.words.read()

    def stop(self):
        """What the command printed since, and its status."""
        self.json("POST", "/api/stop", {})
        printed = [json.loads(line) for line in self.process.stdout]
        return printed, self.process.wait(PATIENCE)


def texts(lines, kind="event"):
    """The lines of a kind as `run` prints them."""
    return [json.dumps(line, sort_keys=True, separators=(",", ":"), ensure_ascii=False)
            for line in lines if kind in line]


def screens(lines):
    return [line["screen"] for line in lines if "screen" in line]


def run(tool, scenario, *arguments):
    played = subprocess.run([tool, "run", *arguments, "-"], input=scenario, capture_output=True, text=True,
                            timeout=PATIENCE)
    check(played.returncode == 0, played.stderr)
    return played.stdout.splitlines()
