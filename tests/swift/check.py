#!/usr/bin/python3
"""check.py FOLDER SWIFTC...: Swift's compiler sees what a host in Swift sees of the library, in language modes 5 and 6.

FOLDER is made anew; the command SWIFTC is run in it, and all paths that it gets are relative to it. Apple's frameworks are
our own declarations: those that the Objective-C side is compiled against, and what overlays/ adds for Swift. Nothing is
linked or run.

  the sample hosts, with UIKit and with SwiftUI, the parts that the documents quote besides, hosts/: no word of the compiler
  the sample host in UIKit: it has the methods of the one in Objective-C, by the names that the system calls
  refused/: refused with the words in the file's first line, in the modes that it names
  packaging/Package.swift"""
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
# Objective-C as on a phone, on Linux.
OPTIONS = """-parse-as-library -target x86_64-pc-linux-gnu -sdk / -module-cache-path cache -enable-objc-interop
-disable-objc-attr-requires-foundation-module -Xcc -fobjc-runtime=ios-15.0 -Xcc -fblocks -Xcc -Isdk
-Xcc -fmodule-map-file=sdk/module.modulemap -F . -I overlays""".split()
MANIFEST_OPTIONS = """-parse-as-library -target x86_64-pc-linux-gnu -sdk / -module-cache-path cache -package-description-version 5.5.0
-I /usr/lib/swift/pm/ManifestAPI""".split()


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
    """Swift's compiler takes a misspelt method for the host's own: so hold the methods' names against the other host's."""
    objective_c = set().union(*(selectors((HOST / name).read_text(), r"^-", r"\{") for name in ("AppDelegate.m", "SceneDelegate.m")))
    swift = selectors((compiler.folder / header).read_text(), r"^-", r";$")
    called_by_itself = {"becomeCenterDelegate", "forgetUnconfirmedToken", "showLink:ofNotification:"}
    if swift - {"init"} != objective_c - called_by_itself:
        compiler.wrong.append(f"the hosts' methods differ: {sorted((swift - {'init'}) ^ (objective_c - called_by_itself))}")


def main():
    folder, command = Path(sys.argv[1]).resolve(), sys.argv[2:]
    lay_out(folder)
    compiler = Compiler(command, folder)
    for name in OVERLAYS:
        compiler.accepts(name, "-emit-module", "-module-name", name, "-o", f"overlays/{name}.swiftmodule", "-swift-version", "5",
                         *OPTIONS, f"overlays/{name}.swift")
    programs = {"the sample host": ["sample-host/AppDelegate.swift", "sample-host/SceneDelegate.swift"],
                "the sample host in SwiftUI": [f"sample-host/swiftui/{name}.swift" for name in ("AppDelegate", "TheApplication")]}
    for part in [*sorted(HOST.glob("parts/*.swift")), *sorted(HERE.glob("hosts/*.swift"))]:
        place = "sample-host/parts" if part.is_relative_to(HOST) else "hosts"
        programs[part.name] = [f"{place}/{part.name}"]
    for mode in MODES:
        check = ["-typecheck", "-swift-version", mode, "-module-name", "Host", *OPTIONS]
        for number, (what, sources) in enumerate(programs.items()):
            compiler.accepts(f"{what}, mode {mode}", *check, "-emit-objc-header-path", f"{number}-{mode}.h", *sources)
        if not compiler.wrong:
            compare_hosts(compiler, f"0-{mode}.h")
        for path in sorted(HERE.glob("refused/*.swift")):
            modes, words = re.match(r"// Refused in (.*?): (.*)", path.read_text()).groups()
            if mode in modes:
                compiler.refuses(f"{path.name}, mode {mode}", words, *check, f"refused/{path.name}")
    compiler.accepts("Package.swift", "-typecheck", "-module-name", "Package", *MANIFEST_OPTIONS, "Package.swift")
    print("\n".join(compiler.wrong) or f"{len(programs)} programs in modes {' and '.join(MODES)}, no warning")
    return 1 if compiler.wrong else 0


if __name__ == "__main__":
    sys.exit(main())
