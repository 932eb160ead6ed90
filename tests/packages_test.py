#!/usr/bin/python3
"""Packs what was built, twice and differently, and looks into the packages. packages_test.py CPACK BUILD_FOLDER

scripts/check-packages installs and uses them; that takes longer.
"""
import gzip
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[1]
NAMES = ("quorvantis-push", "libquorvantispush-dev", "python3-quorvantis-push", "node-quorvantis-push")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True, timeout=120).stdout


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(scratch.cleanup)
        cls.folder = Path(scratch.name)
        zones = {"first": "UTC", "at another place": "Asia/Tokyo"}
        packing = [
            subprocess.Popen([CPACK, "--config", f"{BUILD}/CPackConfig.cmake", "-B", cls.folder / place],
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, umask=0o022,
                             env=os.environ | {"TZ": zone, "SOURCE_DATE_EPOCH": "1700000000"})
            for place, zone in zones.items()]
        if [process.wait(timeout=200) for process in packing] != [0, 0]:
            raise AssertionError("cpack has failed")
        cls.first, cls.second = (sorted((cls.folder / place).glob("*.deb")) for place in zones)
        for package in cls.first:
            output("dpkg-deb", "--extract", package, cls.folder / package.name.partition("_")[0])

    def field(self, name, field):
        return output("dpkg-deb", "--field", next(p for p in self.first if p.name.startswith(name + "_")), field)

    def test_they_are_the_same_bytes_each_time(self):
        self.assertEqual(sorted(NAMES), [package.name.partition("_")[0] for package in self.first])
        for first, second in zip(self.first, self.second, strict=True):
            self.assertEqual(first.name, second.name)
            self.assertTrue(first.read_bytes() == second.read_bytes(), first.name)

    def test_no_file_knows_where_it_was_built(self):
        for file in (file for name in NAMES for file in (self.folder / name).rglob("*") if file.is_file()):
            content = gzip.decompress(file.read_bytes()) if file.suffix == ".gz" else file.read_bytes()
            for place in (SOURCES, BUILD, self.folder):
                self.assertNotIn(os.fsencode(place), content, file)

    def test_they_depend_on_what_they_need(self):
        needed = self.field("quorvantis-push", "Depends")
        for library in re.findall(r"NEEDED.*\[lib(curl|ssl|sqlite3|nghttp2)\b",
                                  output("readelf", "-d", self.folder / "quorvantis-push/usr/bin/quorvantis-push")):
            self.assertIn(f"lib{library}", needed)
        self.assertNotIn("-dev", needed)
        packaged = self.folder / "libquorvantispush-dev/usr/lib"
        pkg_config = next(packaged.rglob("quorvantispush.pc"))
        required = re.search("^Requires: (.*)", pkg_config.read_text(), re.M)[1].split()
        owners = output("dpkg", "--search", *(f"*/pkgconfig/{name}.pc" for name in required))
        for package in re.findall(r"^([^:]+)", owners, re.M):
            self.assertIn(package, self.field("libquorvantispush-dev", "Depends"))
        self.assertEqual({library.stem.removeprefix("lib") for library in packaged.rglob("*.a")},
                         set(re.findall(r" -l(\S+)", pkg_config.read_text())))

    def test_their_version_says_for_which_release_they_are(self):
        release = re.search(r'^VERSION_ID="?(\d+)', Path("/etc/os-release").read_text(), re.M)
        suffix = f"~deb{release[1]}u1" if release else ""
        self.assertEqual({self.field(name, "Version").strip().partition("-1")[2] for name in NAMES}, {suffix})

    def test_lintian_finds_nothing(self):
        found = subprocess.run(["lintian", "--fail-on", "error,warning", *self.first], capture_output=True, text=True,
                               timeout=200)
        self.assertEqual(found.returncode, 0, found.stdout + found.stderr)


if __name__ == "__main__":
    CPACK, BUILD = sys.argv[1:]
    unittest.main(argv=sys.argv[:1])
