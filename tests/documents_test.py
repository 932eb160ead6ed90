#!/usr/bin/python3
"""Runs the commands and samples of README.md and docs/, as they stand there, and compares what they promise.

documents_test.py TOOL

The C++ samples are built by installed_host, those for iOS by the framework's tests, the scenarios by scenarios_document.
"""
import json
import os
import re
import signal
import socket
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
TOOL = sys.argv.pop(1)


def blocks(document, kind=""):
    """The document's blocks of code of that kind."""
    text = (ROOT / document).read_text("utf-8")
    return [body for language, body in re.findall(r"^```(\w*)\n(.*?)^```$", text, re.M | re.S) if language == kind]


def block(document, beginning, kind=""):
    return next(body for body in blocks(document, kind) if body.startswith(beginning))


class Documents(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        for name in ("quorvantis-push", "build/release/quorvantis-push"):
            (self.folder / name).parent.mkdir(parents=True, exist_ok=True)
            (self.folder / name).symlink_to(TOOL)

    def shell(self, script, status=0):
        run = subprocess.run(["sh", "-euc", script], cwd=self.folder, capture_output=True, text=True, timeout=120,
                             env=os.environ | {"PATH": f"{self.folder}:{os.environ['PATH']}"})
        self.assertEqual(run.returncode, status, script + run.stdout + run.stderr)
        return run.stdout

    def test_readme_plays_its_scenario(self):
        events = [json.loads(line) for line in self.shell(block("README.md", "build/release")).splitlines()]
        self.assertEqual(events[0]["event"], "registerUser")
        self.assertIn("onRegisterToken:", [event.get("selector") for event in events])

    def pytest(self, sample):
        (self.folder / "test_sample.py").write_text(sample)
        return self.shell(f"PYTHONPATH={ROOT}/clients/python/src /usr/bin/python3 -B -m pytest -q -p no:cacheprovider "
                          "-p quorvantis_push.pytest_plugin test_sample.py")

    def node(self, sample):
        (self.folder / "node_modules").mkdir()
        (self.folder / "node_modules/quorvantis-push").symlink_to(ROOT / "clients/node")
        (self.folder / "sample.test.mjs").write_text(sample)
        return self.shell("node --test sample.test.mjs")

    def test_the_phones_examples_pass(self):
        self.assertIn("1 passed", self.pytest(blocks("docs/phone.md", "python")[0]))
        self.assertRegex(self.node(blocks("docs/phone.md", "js")[0]), "pass 1\n")

    def test_a_backends_first_tests_pass(self):
        self.shell(block("docs/backend-tests.md", "apt install").splitlines()[1])
        self.assertIn("2 passed", self.pytest(blocks("docs/backend-tests.md", "pytest")[0]))
        (self.folder / "test").mkdir()
        (self.folder / "src").mkdir()
        (self.folder / "src/notifier.js").write_text((ROOT / "tests/clients/notifier.mjs").read_text("utf-8"))
        (self.folder / "package.json").write_text('{"type": "module"}')
        self.assertRegex(self.node(blocks("docs/backend-tests.md", "mjs")[0].replace("'../src", "'./src")), "pass 1\n")

    def test_payloads_are_good_and_its_gate_opens(self):
        samples = blocks("docs/payloads.md", "json")
        self.assertGreater(len(samples), 5)
        (self.folder / "payloads").mkdir()
        for number, sample in enumerate(samples):
            (self.folder / "payloads" / f"{number}.json").write_text(sample)
        gate = block("docs/payloads.md", "quorvantis-push payload --fail-on")
        self.shell(gate)
        (self.folder / "payloads/odd.json").write_text('{"aps":{"alert":{"body":"x"},"type":"plain"}}')
        self.shell(gate, status=1)

    def test_payloads_shows_what_is_printed(self):
        document = (ROOT / "docs/payloads.md").read_text("utf-8")
        command, _, shown = block("docs/payloads.md", "$ ").removeprefix("$ ").partition("\n")
        (self.folder / command.split()[-1]).write_text(re.search(r"^`(\{.*\})` in a file", document, re.M).group(1))
        printed = self.shell(command, status=1)
        for part in shown.split("...\n"):
            self.assertIn(part, printed)

    def test_push_server_opens_its_sealed_body(self):
        sealed = "".join(blocks("docs/push-server.md", "sealed")[0].split())
        opened = blocks("docs/push-server.md", "opened")[0]
        python = block("docs/push-server.md", "from jwcrypto", "python")
        run = subprocess.run(["/usr/bin/python3", "-c", f"body = {sealed!r}\n{python}"], capture_output=True, text=True,
                             check=True)
        self.assertEqual(run.stdout, opened)

    def test_push_server_serves_phones_and_curl(self):
        serve, run = block("docs/push-server.md", "quorvantis-push serve --port").splitlines()
        curl = block("docs/push-server.md", "curl ")
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            port = str(free.getsockname()[1])
        (self.folder / "scenario.jsonl").write_text('{"do":"host","appHash":"f"}\n{"do":"activate","value":true}\n'
                                                    '{"do":"settle"}\n')
        server = subprocess.Popen(serve.replace("8443", port).split(), cwd=self.folder, stdout=subprocess.PIPE, text=True,
                                  executable=TOOL)
        try:
            self.assertIn(f"127.0.0.1:{port}", server.stdout.readline())
            self.assertIn("onRegisterToken:", self.shell(run.replace("8443", port)))
            self.assertEqual(json.loads(self.shell(curl.replace("8443", port))), {"error": "no", "token": "c0ffee"})
            sealed = "".join(blocks("docs/push-server.md", "sealed")[0].split())
            answer = self.shell(f"curl --silent --cacert authority.pem -H 'Content-Type: application/jose' --data '{sealed}' "
                                f"https://localhost:{port}/apis/api_push_v3.php")
            self.assertEqual(json.loads(answer)["error"], "no")
            second = subprocess.run([TOOL, "serve", "--port", "0", "--data", "registrations"], cwd=self.folder,
                                    capture_output=True, text=True, timeout=60)
            self.assertEqual(second.returncode, 1)
            self.assertIn("another server is using the file", second.stderr)
        finally:
            server.send_signal(signal.SIGHUP)
            self.assertEqual(server.wait(60), 0)
            server.stdout.close()

    def test_every_help_and_readme_give_the_same_statuses(self):
        readme = " ".join((ROOT / "README.md").read_text("utf-8").split())
        for command in ("", "demo ", "payload ", "run ", "serve "):
            help_text = " ".join(self.shell(f"quorvantis-push {command}--help").split())
            for status in ("0 on success", "1 on failure or when a problem was found",
                           "2 when the arguments or the input can't be read"):
                self.assertIn(status, help_text, command)
                self.assertIn(status, readme)

    def test_every_command_reports_lost_output(self):
        (self.folder / "s").write_text('{"do":"show"}\n')
        (self.folder / "p").write_text('{"aps":{"content-available":1}}')
        for command in ("demo", "run s", "payload p", "payload --json p"):
            self.shell(f"quorvantis-push {command} >/dev/full", status=1)


if __name__ == "__main__":
    unittest.main()
