#!/usr/bin/python3
"""What the scripts refuse, and how. They are used by hand and in scripts/test itself; what is not refused here would
pass there by having done nothing."""
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

SCRIPTS = Path(__file__).resolve().parents[1] / "scripts"


def refusal(*words, scripts=SCRIPTS, user=None):
    run = subprocess.run([scripts / words[0], *words[1:]], capture_output=True, text=True, timeout=60, user=user)
    return run.returncode, run.stdout, run.stderr


class Scripts(unittest.TestCase):
    def test_unknown_words_are_refused(self):
        for words in (("setup", "everything"), ("test", "relase"), ("bench", "--bref"), ("check-system", "--nwe")):
            with self.subTest(words):
                status, _, said = refusal(*words)
                self.assertEqual(status, 2, said)
                self.assertIn(words[1], said)

    def test_a_system_is_only_checked_by_root(self):
        nobody = 65534 if os.geteuid() == 0 else None
        with tempfile.TemporaryDirectory() as folder:  # which nobody may enter, unlike root's own
            Path(folder).chmod(0o755)
            scripts = shutil.copytree(SCRIPTS, Path(folder) / "scripts")
            status, printed, said = refusal("check-system", "trixie", scripts=scripts, user=nobody)
        self.assertEqual((status, printed), (1, ""), said)
        self.assertIn("only root", said)


if __name__ == "__main__":
    unittest.main()
