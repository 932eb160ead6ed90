#!/usr/bin/python3
"""check.py FOLDER SWIFTC...: Swift's compiler sees what a host in Swift sees of the library, in modes 5 and 6.

FOLDER is made anew; the command SWIFTC is run in it, and all paths that it gets are relative to it. Apple's
frameworks are our own declarations: those that the Objective-C side is compiled against, and what overlays/
adds for Swift. Nothing is linked or run.

  the sample hosts with UIKit and with SwiftUI, what the documents quote besides, hosts/: no word of the compiler
  the sample host with UIKit: it has the methods of the one in Objective-C, by the names that the system calls
  refused/: refused with the words in the file's first line, in the modes that it names
  packaging/Package.swift: no word"""
import re
import shutil
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[1]
HOST = ROOT / "docs/sample-host"
OVERLAYS = ["Dispatch", "ObjectiveC", "Foundation", "UIKit", "SwiftUI"]  # each after those that it imports
MODES = ["5", "6"]
BASIC = "-parse-as-library -sdk / -module-cache-path cache".split()
# Objective-C as on a phone, on Linux.
OPTIONS = [*BASIC, *"""-enable-objc-interop -disable-objc-attr-requires-foundation-module
-Xcc -fobjc-runtime=ios-15.0 -Xcc -fblocks -Xcc -Isdk -Xcc -fmodule-map-file=sdk/module.modulemap
-F . -I overlays""".split()]
MANIFEST = [*BASIC, "-package-description-version", "5.5.0", "-I", "/usr/lib/swift/pm/ManifestAPI"]
CALLED_BY_THE_HOST = {"becomeCenterDelegate", "forgetUnconfirmedToken", "showLink:ofNotification:"}


class Compiler:
    def __init__(self, command, folder):
        self.command, self.folder, self.wrong = command, folder, []

    def run(self, *arguments):
        """The compiler's status and its words."""
        done = subprocess.run([*self.command, "-frontend", *arguments], cwd=self.folder, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        return done.returncode, done.stdout

    def accepts(self, what, *arguments):
        status, words = self.run(*arguments)
        if status != 0 or words:
            self.wrong.append(f"{what} (status {status}):\n{words}")

    def refuses(self, what, words, *arguments):
        status, said = self.run(*arguments)
        if status == 0 or f"error: {words}" not in said:
            self.wrong.append(f"{what} is to be refused with: {words} (status {status}):\n{said}")


def lay_out(folder):
    """Puts into the folder all that the compiler is to read."""
    shutil.rmtree(folder, ignore_errors=True)
    for part in (ROOT / "tests/ios_framework/sdk", ROOT / "tests/apple_sdk"):
        shutil.copytree(part, folder / "sdk", dirs_exist_ok=True)
    shutil.copy(HERE / "module.modulemap", folder / "sdk")
    framework = folder / "QuorvantisPush.framework"
    shutil.copytree(ROOT / "framework/include/QuorvantisPush", framework / "Headers")
    (framework / "Modules").mkdir()
    shutil.copy(ROOT / "framework/module.modulemap", framework / "Modules")
    for part in ("overlays", "hosts", "refused"):
        shutil.copytree(HERE / part, folder / part)
    shutil.copytree(HOST, folder / "sample-host")
    shutil.copy(ROOT / "packaging/Package.swift", folder)
    # SwiftUI's host has the same delegate, and an entry point of its own.
    text = (HOST / "AppDelegate.swift").read_text()
    (folder / "sample-host/swiftui/AppDelegate.swift").write_text(text.replace("@main\n", "", 1))


def selectors(text, begin, end):
    """The instance methods between two patterns of Objective-C text."""
    found = set()
    for declaration in re.findall(begin + r"(.*?)" + end, text, re.MULTILINE | re.DOTALL):
        without_types = declaration
        while (shorter := re.sub(r"\([^()]*\)", "", without_types)) != without_types:
            without_types = shorter
        found.add("".join(re.findall(r"\w+:", without_types)) or re.search(r"\w+", without_types).group())
    return found


def compare_hosts(compiler, header):
    """Swift takes a misspelt method for one of the host's own: so the names are those of the other host."""
    sources = [(HOST / name).read_text() for name in ("AppDelegate.m", "SceneDelegate.m")]
    expected = set().union(*(selectors(text, r"^-", r"\{") for text in sources)) - CALLED_BY_THE_HOST
    found = selectors((compiler.folder / header).read_text(), r"^-", r";$") - {"init"}
    if found != expected:
        compiler.wrong.append(f"the hosts' methods differ: {sorted(found ^ expected)}")


def programs():
    """The sources of each, in the folder."""
    yield "the sample host", ["sample-host/AppDelegate.swift", "sample-host/SceneDelegate.swift"]
    yield "the sample host in SwiftUI", ["sample-host/swiftui/AppDelegate.swift",
                                         "sample-host/swiftui/TheApplication.swift"]
    for path in sorted(HOST.glob("parts/*.swift")):
        yield path.name, [f"sample-host/parts/{path.name}"]
    for path in sorted(HERE.glob("hosts/*.swift")):
        yield path.name, [f"hosts/{path.name}"]


def check_mode(compiler, mode):
    check = ["-typecheck", "-swift-version", mode, "-module-name", "Host", *OPTIONS]
    header = f"host-{mode}.h"
    for what, sources in programs():
        writes = ["-emit-objc-header-path", header] if what == "the sample host" else []
        compiler.accepts(f"{what}, mode {mode}", *check, *writes, *sources)
    if (compiler.folder / header).exists():
        compare_hosts(compiler, header)
    for path in sorted(HERE.glob("refused/*.swift")):
        modes, words = re.match(r"// Refused in (.*?): (.*)", path.read_text()).groups()
        if mode in modes:
            compiler.refuses(f"{path.name}, mode {mode}", words, *check, f"refused/{path.name}")


def main():
    folder, command = Path(sys.argv[1]).resolve(), sys.argv[2:]
    lay_out(folder)
    compiler = Compiler(command, folder)
    for name in OVERLAYS:
        compiler.accepts(name, "-emit-module", "-module-name", name, "-o", f"overlays/{name}.swiftmodule",
                         "-swift-version", "5", *OPTIONS, f"overlays/{name}.swift")
    for mode in MODES:
        check_mode(compiler, mode)
    compiler.accepts("Package.swift", "-typecheck", "-module-name", "Package", *MANIFEST, "Package.swift")
    print("\n".join(compiler.wrong) or f"{len(list(programs()))} programs in modes {' and '.join(MODES)}, no warning")
    return 1 if compiler.wrong else 0


if __name__ == "__main__":
    sys.exit(main())
