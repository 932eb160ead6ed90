#!/usr/bin/python3
"""The package's plists parse and say what the library does; CMake links what the binary does; and what is published
makes the application link nothing."""
import plistlib
import re
import sys
from pathlib import Path

from read_binary import LINKED

PACKAGING = Path(__file__).resolve().parents[2] / "packaging"
LINKS = re.compile(r"spec\.(librar|frameworks?\b|weak_framework|xcconfig|\w+_xcconfig)|linkerSettings|\.linked")


def plist(name):
    return plistlib.loads((PACKAGING / name).read_bytes())


def words(name, pattern):
    """The capitalised words in the part of the file that the pattern picks."""
    return set(re.findall(r"\b[A-Z]\w+", re.search(pattern, (PACKAGING / name).read_text(), re.DOTALL).group(1)))


def main():
    info, privacy = plist("Info.plist"), plist("PrivacyInfo.xcprivacy")
    collected = privacy["NSPrivacyCollectedDataTypes"]
    accessed = {entry["NSPrivacyAccessedAPIType"]: entry["NSPrivacyAccessedAPITypeReasons"]
                for entry in privacy["NSPrivacyAccessedAPITypes"]}
    checks = {
        "identifier": (info["CFBundleIdentifier"], "com.quorvantis.QuorvantisPush"),
        "manifest's keys": (set(privacy), {"NSPrivacyTracking", "NSPrivacyTrackingDomains", "NSPrivacyCollectedDataTypes",
                                           "NSPrivacyAccessedAPITypes"}),
        "tracking": (privacy["NSPrivacyTracking"], False),
        "collected": ({entry["NSPrivacyCollectedDataType"].removeprefix("NSPrivacyCollectedDataType")
                       for entry in collected}, {"DeviceID", "PreciseLocation", "OtherDataTypes"}),
        "keys of each": ({key for entry in collected for key in entry},
                         {"NSPrivacyCollectedDataType" + end for end in ("", "Linked", "Tracking", "Purposes")}),
        "accessed": (accessed, {"NSPrivacyAccessedAPICategoryUserDefaults": ["CA92.1"]}),
        "CMake's frameworks": (words("CMakeLists.txt", r"foreach\(framework(.*?)\)"), set(LINKED)),
        "linked for the application": (LINKS.findall("".join(
            (PACKAGING / name).read_text() for name in ("QuorvantisPush.podspec", "Package.swift"))), []),
    }
    wrong = {what: pair for what, pair in checks.items() if pair[0] != pair[1]}
    for what, (found, expected) in wrong.items():
        print(f"{what}: {found} is to be {expected}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
