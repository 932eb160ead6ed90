#!/usr/bin/python3
"""The manual page and the completions of the shells have the tool's commands and options: all of them, and no other.

options_test.py TOOL MANUAL_PAGE
"""
import re
import subprocess
import sys
import unittest
from pathlib import Path

COMPLETIONS = Path(__file__).resolve().parents[1] / "packaging/completions"
ABOUT = {"--help", "--version"}
OPTION = r"--[a-z][a-z-]*"


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True, timeout=60).stdout


def help_of(*command):
    return output(TOOL, *command, "--help")


def commands():
    return re.findall(r"^  (\w+) ", help_of().partition("Subcommands:")[2], re.M)


def options_of(command):
    """Each option with whether a value follows it: "no", "yes", or "maybe" for one that may be left out."""
    options = {}
    row = rf"^  (?:-h,)?({OPTION})(?:{{false}})?( (?!Needs|Excludes)\S+)?"
    for name, value in re.findall(row, help_of(command), re.M):
        options[name] = "yes" if value else "no"
    if "--apns" in options:
        options["--apns"] = "maybe"
    return options


class Options(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tool = {command: options_of(command) for command in commands()}

    def setUp(self):
        self.assertGreaterEqual(len(self.tool), 5)

    def test_the_manual_page_has_them(self):
        page = Path(PAGE).read_text("utf-8").replace("\\-", "-")
        sections = dict(re.findall(r"^\.SS (\w+)\n(.*?)(?=^\.S[SH])", page, re.M | re.S))
        self.assertEqual(sorted(sections), sorted(self.tool))
        for command, expected in self.tool.items():
            found = {}
            for line in re.findall(r"^\.TP\n(.*)", sections[command], re.M):
                macro, name, value = re.match(rf"\.(\w+) ({OPTION})(.*)", line).groups()
                found[name] = "maybe" if "[" in value else "yes" if value else "no"
            self.assertEqual(found | dict.fromkeys(ABOUT, "no"), expected)
            self.assertIn(f"quorvantis-push {command}\n", page.partition("DESCRIPTION")[0])

    def test_bash_completes_them(self):
        def completed(*words):
            script = f'compopt() {{ COMPREPLY+=(files); }}; . "{COMPLETIONS}/quorvantis-push.bash"; ' \
                     'COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _quorvantis_push; printf "%s\\n" "${COMPREPLY[@]}"'
            return set(output("bash", "-uc", script, "bash", "quorvantis-push", *words).split())

        self.assertEqual(completed(""), set(self.tool) | ABOUT)
        for command, expected in self.tool.items():
            self.assertEqual(completed(command, "-"), set(expected))
            takes_file = re.search(r"^  FILE ", help_of(command), re.M)
            self.assertEqual(completed(command, ""), {"files"} if takes_file else set())
            for option, value in expected.items():
                if value == "yes":
                    self.assertFalse(completed(command, option, "--") & set(expected), option)
        self.assertEqual(completed("run", "--build", "s"), {"simulator"})
        self.assertEqual(completed("serve", "--data", ""), {"files"})

    def test_fish_completes_them(self):
        def completed(line):
            script = f'source {COMPLETIONS}/quorvantis-push.fish; complete -C "quorvantis-push {line}"'
            return {match.split("\t")[0] for match in output("fish", "--no-config", "-c", script).splitlines()}

        self.assertEqual(completed(""), set(self.tool))
        for command, expected in self.tool.items():
            self.assertEqual(completed(f"{command} --"), set(expected))
        self.assertEqual(completed("phone --build s"), {"simulator"})
        text = (COMPLETIONS / "quorvantis-push.fish").read_text("utf-8")
        taking = {"--" + name for name in re.findall(r" -l (\S+) -[rx] ", text)}
        self.assertEqual(taking, {name for options in self.tool.values() for name in options if options[name] == "yes"})

    def test_zsh_completes_them(self):
        for command, expected in self.tool.items():
            script = '_arguments() { print -rl -- "$@" }; words=(quorvantis-push "$1" ""); CURRENT=3; . "$0"'
            found = {}
            for argument in output("zsh", "-fc", script, f"{COMPLETIONS}/_quorvantis-push", command).splitlines():
                if match := re.match(rf"(?:\([^)]*\))?({OPTION})\[.*?\](:?)(:?)", argument):
                    found[match[1]] = "maybe" if match[3] else "yes" if match[2] else "no"
            self.assertEqual(found, expected)
        first = output("zsh", "-fc", '_arguments() { print -r -- "$@" }; words=(quorvantis-push ""); CURRENT=2; . "$0"',
                       f"{COMPLETIONS}/_quorvantis-push")
        self.assertEqual(sorted(re.findall(r"^ +(\w+)\\:", first, re.M)), sorted(self.tool))


if __name__ == "__main__":
    TOOL, PAGE = sys.argv[1:]
    unittest.main(argv=sys.argv[:1])
