#!/usr/bin/python3
"""What the scripts refuse, and how. They are used by hand and in scripts/test itself; what is not refused here would
pass there by having done nothing."""
import os
import subprocess
import unittest
from pathlib import Path

SCRIPTS = Path(__file__).resolve().parents[1] / "scripts"


def refusal(*words, user=None):
    run = subprocess.run([SCRIPTS / words[0], *words[1:]], capture_output=True, text=True, timeout=60, user=user)
    return run.returncode, run.stdout, run.stderr.replace(str(SCRIPTS), "scripts")


class Scripts(unittest.TestCase):
    def test_unknown_words_are_refused(self):
        for words in (("setup", "everything"), ("test", "relase"), ("bench", "--bref"), ("check-system", "--nwe")):
            with self.subTest(words):
                status, _, said = refusal(*words)
                self.assertEqual(status, 2, said)
                self.assertIn(words[1], said)

    def test_a_system_is_only_checked_by_root(self):
        nobody = 65534 if os.geteuid() == 0 else None
        status, printed, said = refusal("check-system", "trixie", user=nobody)
        self.assertEqual((status, printed), (1, ""), said)
        self.assertIn("only root", said)


if __name__ == "__main__":
    unittest.main()
