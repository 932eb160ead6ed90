#!/usr/bin/python3
"""The tool's `run` with --settings and with --server against its `serve`. run_options.py TOOL"""
import json
import os
import re
import shutil
import signal
import sqlite3
import ssl
import subprocess
import sys
import tempfile
import unittest
import urllib.error
import urllib.request
from pathlib import Path

SECONDS = 300
FAILED = "ENTRA AL ONERROR, error: Error --> registerToken"


def steps(*each):
    return "".join(json.dumps(step) + "\n" for step in each).encode()


def token(text):
    return steps({"do": "host", "appHash": "f00d"}, {"do": "deliverToken", "hex": text}, {"do": "settle"})


SHOW = steps({"do": "show"})


class Options(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.settings = self.folder / "settings.db"
        self.authority = self.folder / "authority.pem"

    def run_tool(self, scenario, *options):
        return subprocess.run([TOOL, "run", *map(str, options), "-"], input=scenario, capture_output=True,
                              timeout=SECONDS)

    def events(self, scenario, *options):
        run = self.run_tool(scenario, *options)
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        return [json.loads(line) for line in run.stdout.splitlines()]

    def of_kind(self, kind, scenario, *options):
        return [event for event in self.events(scenario, *options) if event["event"] == kind]


class Settings(Options):
    def with_settings(self, scenario):
        return self.events(scenario, "--settings", self.settings)

    def refused(self, *words):
        """A run that the settings stop before its first step."""
        run = self.run_tool(SHOW, "--settings", self.settings)
        self.assertEqual((run.returncode, run.stdout), (1, b""))
        message = run.stderr.decode()
        self.assertEqual(message.count("\n"), 1, message)
        for word in (self.settings.name, *words):
            self.assertIn(word, message)

    def test_outlive_the_run_and_keep_their_types(self):
        values = {"b": True, "i": 1, "r": 1.0, "t": "ñ\u0000", "n": {"a": [False, 2.5, {}]}}
        self.with_settings(steps({"do": "store", "set": values}))
        self.assertEqual(json.dumps(self.with_settings(SHOW)[0]["values"], sort_keys=True),
                         json.dumps(values, sort_keys=True))

    def test_make_the_next_run_the_next_launch(self):
        first = self.with_settings(token("01") + SHOW)
        self.assertIn({"event": "stored", "key": "tokenMovil", "value": "01"}, first)
        same = self.with_settings(token("01"))
        self.assertNotIn("request", [event["event"] for event in same])
        self.assertNotIn("deviceUuid", [event.get("key") for event in same])
        body = next(event for event in self.with_settings(token("02")) if event["event"] == "request")["body"]
        self.assertTrue(body.startswith("&tarea=pushlibCambioToken&tokenAntiguo=01&tokenNuevo=02&"), body)
        self.assertEqual(self.with_settings(SHOW)[0]["values"], dict(first[-1]["values"], tokenMovil="02"))

    def test_are_not_touched_by_a_scenario_that_cannot_be_read(self):
        run = self.run_tool(steps({"do": "store", "set": {"a": 1}}) + b"{}\n", "--settings", self.settings)
        self.assertEqual(run.returncode, 2)
        self.assertFalse(self.settings.exists())

    def test_are_left_alone_where_they_cannot_be_read(self):
        self.with_settings(steps({"do": "store", "set": {"a": 1}}))
        good = self.settings.read_bytes()
        for content in (b"no database\n", b"", good[:100], good[:4096] + b"\xff" * (len(good) - 4096)):
            self.settings.write_bytes(content)
            self.refused()
            self.assertEqual(self.settings.read_bytes(), content)
        other = sqlite3.connect(self.folder / "other.db")
        other.execute("CREATE TABLE notes (text)")
        other.close()
        content = (self.folder / "other.db").read_bytes()
        self.settings.write_bytes(content)
        self.refused()
        self.assertEqual(self.settings.read_bytes(), content)

    def test_of_a_newer_format_wait_for_a_newer_program(self):
        self.with_settings(steps({"do": "store", "set": {"a": 1}}))
        database = sqlite3.connect(self.settings)
        database.execute("PRAGMA user_version = 999")
        database.close()
        content = self.settings.read_bytes()
        self.refused("newer", "999")
        self.assertEqual(self.settings.read_bytes(), content)

    def test_in_a_place_that_can_hold_no_file(self):
        self.settings.mkdir()
        self.refused()
        self.settings = self.folder / "missing" / "settings.db"
        self.refused()
        self.assertFalse(self.settings.parent.exists())

    def test_held_by_another_process(self):
        self.with_settings(steps({"do": "store", "set": {"a": 1}}))
        other = sqlite3.connect(self.settings, isolation_level=None)
        other.execute("BEGIN EXCLUSIVE")
        self.refused("another process")
        other.execute("COMMIT")
        other.close()
        self.assertEqual(self.with_settings(SHOW)[0]["values"], {"a": 1})


class Embedded(Options):
    def test_server_reads_a_body_of_any_size(self):
        geo = "x" * 3_500_000
        body, = self.of_kind("received", steps({"do": "store", "set": {"jsonGeo": geo}}) + token("01"))
        self.assertTrue(body["body"].endswith("&jsonGeo=" + geo))

    def test_makes_no_files_that_could_be_left_behind(self):
        nowhere = dict(os.environ, TMPDIR=str(self.folder / "missing"))
        scenario = token("01") + steps({"do": "store", "set": {"a": 1}}, {"do": "relaunch"}) + SHOW
        for arguments, given in ((["run", "-"], scenario), (["payload", "-"], b'{"aps":{"alert":{}}}'), (["demo"], b"")):
            run = subprocess.run([TOOL, *arguments], input=given, env=nowhere, capture_output=True, timeout=SECONDS)
            self.assertEqual((run.returncode, run.stderr), (0, b""), arguments)


class Server(Options):
    def serve(self, *options):
        command = [TOOL, "serve", "--port", "0", "--authority", self.authority, *options]
        process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.addCleanup(process.stdout.close)
        for line in process.stdout:
            if found := re.search(r"https://(127\.0\.0\.1:\d+)/", line):
                return process, found.group(1)
        self.fail("serve ended without saying where it is")

    def stop(self, process, by=signal.SIGTERM):
        """What it printed since it said where it is."""
        process.send_signal(by)
        printed = process.communicate(timeout=SECONDS)[0]
        self.assertEqual(process.returncode, 0)
        return printed

    def outcomes(self, scenario, where, said=""):
        """What the host and the log are told of; `said` is what the run says of a request that failed."""
        run = self.run_tool(scenario, "--server", where, "--authority", self.authority)
        message = said and f"quorvantis-push: a request to {where} failed: {said}\n"
        self.assertEqual((run.returncode, run.stderr.decode()), (0, message))
        return [event.get("message", event.get("argument")) for event in map(json.loads, run.stdout.splitlines())
                if event["event"] == "log" or event.get("selector") in ("onRegisterToken:", "onUpdateToken:")]

    def test_gets_the_requests_of_a_run(self):
        process, where = self.serve()
        mine = self.events(token("01") + token("02"), "--server", where, "--authority", self.authority)
        embedded = self.events(token("01") + token("02"))
        self.assertEqual(mine, [event for event in embedded if event["event"] != "received"])
        unknown = token("03") + steps({"do": "store", "set": {"tokenMovil": "aa"}}) + token("04")
        self.assertEqual(self.outcomes(unknown, where)[0], "03")
        self.assertRegex(self.outcomes(unknown, where)[-1], "^ENTRA AL ONERROR, error: (?!Error -->)")
        printed = self.stop(process)
        for text in ("pushlibRegistrarToken", "pushlibCambioToken", '{"error":"no","token":"02"}', '"si"'):
            self.assertIn(text, printed)
        self.assertEqual(self.outcomes(token("01"), where, "nothing listens at that address"), [FAILED])

    def test_remembers_registrations_in_its_file(self):
        data = self.folder / "registrations.db"
        process, where = self.serve("--data", data)
        self.outcomes(token("01"), where)
        self.stop(process, signal.SIGINT)
        process, where = self.serve("--data", data)
        change = steps({"do": "store", "set": {"tokenMovil": "01"}}) + token("02")
        self.assertEqual(self.outcomes(change, where), ["02"])
        self.stop(process)

    def test_makes_its_file_private_and_leaves_others_alone(self):
        data = self.folder / "registrations.db"
        process, _ = self.serve("--data", data)
        self.stop(process)
        self.assertEqual(data.stat().st_mode & 0o777, 0o600)
        settings = self.folder / "settings.db"
        self.events(steps({"do": "store", "set": {"a": 1}}), "--settings", settings)
        content, authority = settings.read_bytes(), self.authority.read_bytes()
        refused = subprocess.run([TOOL, "serve", "--port", "0", "--data", settings, "--authority", self.authority],
                                 capture_output=True, text=True, timeout=SECONDS)
        self.assertEqual((refused.returncode, refused.stderr.count("\n")), (1, 1))
        self.assertIn(f"{settings} can't be used: the file is another program's database", refused.stderr)
        self.assertEqual((settings.read_bytes(), self.authority.read_bytes()), (content, authority))

    def test_of_another_authority_receives_nothing(self):
        process, _ = self.serve()
        kept = self.authority.read_bytes()
        self.stop(process)
        process, where = self.serve()
        self.authority.write_bytes(kept)
        said = "the server's certificate is not signed by a trusted authority"
        self.assertEqual(self.outcomes(token("01"), where, said), [FAILED])
        self.assertNotIn("pushlib", self.stop(process))

    def test_is_valid_for_loopback_and_names_what_it_refuses(self):
        process, where = self.serve()
        trusting = ssl.create_default_context(cafile=self.authority)
        for host in ("127.0.0.1", "localhost"):
            with self.assertRaises(urllib.error.HTTPError) as refused:
                urllib.request.urlopen(f"https://{host}:{where.partition(':')[2]}/here", context=trusting)
            self.assertEqual(refused.exception.code, 404)
            refused.exception.close()
        self.assertEqual(self.stop(process, signal.SIGHUP).count("GET /here  refused\n  404 "), 2)

    def test_overwrites_no_authority_but_its_own(self):
        process, _ = self.serve()
        self.stop(process)
        own = self.authority.read_bytes()
        for content in (b"a note\n", own + b"and more\n"):
            self.authority.write_bytes(content)
            refused = subprocess.run([TOOL, "serve", "--port", "0", "--authority", self.authority],
                                     capture_output=True, text=True, timeout=SECONDS)
            self.assertEqual((refused.returncode, refused.stderr.count("\n")), (1, 1))
            self.assertTrue(refused.stderr.startswith(f"quorvantis-push: {self.authority}: "), refused.stderr)
            self.assertEqual(self.authority.read_bytes(), content)

    def test_wrong_options(self):
        process, where = self.serve()
        self.stop(process)
        port = where.partition(":")[2]
        for arguments in ([where, self.folder / "missing.pem"], [where, Path(__file__)],
                          [port, self.authority], ["127.0.0.1:", self.authority],
                          ["127.0.0.1:65536", self.authority]):
            run = self.run_tool(SHOW, "--server", arguments[0], "--authority", arguments[1])
            self.assertEqual((run.returncode, run.stdout, run.stderr.count(b"\n")), (2, b"", 1), arguments)


if __name__ == "__main__":
    TOOL = sys.argv.pop(1)
    unittest.main()
