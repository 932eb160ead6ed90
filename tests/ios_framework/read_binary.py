#!/usr/bin/python3
"""read_binary.py FOLDER device|simulator: builds the framework's binary, and reads in it what a phone's runtime will."""
import re
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
LINKED = """AdSupport AudioToolbox CoreFoundation CoreGraphics CoreLocation CoreTelephony Foundation MediaPlayer
QuorvantisRegister QuorvantisUtils Security SystemConfiguration UIKit UserNotifications""".split()
EXPORTED = """_OBJC_CLASS_$_Push _OBJC_CLASS_$_PushRequestData _OBJC_METACLASS_$_Push _OBJC_METACLASS_$_PushRequestData
_QuorvantisPushVersionNumber _QuorvantisPushVersionString""".split()
PUSH_METHODS = """init dealloc appHash setAppHash: deactivateGPS setDeactivateGPS: delegate setDelegate:
activePushNotifications: activePushNotificationsInForegroundApp: registerForRemoteNotificationsWithDeviceToken:
hexadecimalStringFromData: checkAppHash getVersion resetBadge registerFinish onRegisterToken: onUpdateToken: onError:
didReceiveRemoteNotification: application:didRegisterForRemoteNotificationsWithDeviceToken:
application:didFailToRegisterForRemoteNotificationsWithError:
application:didReceiveRemoteNotification:fetchCompletionHandler:
userNotificationCenter:willPresentNotification:withCompletionHandler:
userNotificationCenter:didReceiveNotificationResponse:withCompletionHandler:""".split()
CLIENT_METHODS = """init dealloc delegate setDelegate: userDefaultsPrefix setUserDefaultsPrefix: cancel
sendConnexion:postParameters:url: crearCamposComunes registerForRemoteNotificationsWithDeviceToken:appHash:pushVersion:
downloadFinished:""".split()
PUSH_PROPERTIES = {"appHash": 'T@"NSString",&,N', "deactivateGPS": "TB,N", "delegate": "T@,N",
                   "window": 'T@"UIWindow",&,N'}
INHERITED_PROPERTIES = {"hash", "superclass", "description", "debugDescription"}  # of the protocol NSObject
SWITCH, ANSWER = "v20@0:8B16", "B16@0:8"  # types of a method that takes a BOOL, and of one that gives one
PUSH_SWITCHES = {"activePushNotifications:": SWITCH, "activePushNotificationsInForegroundApp:": SWITCH,
                 "setDeactivateGPS:": SWITCH, "deactivateGPS": ANSWER, "checkAppHash": ANSWER}
CLIENT_PROPERTIES = {"delegate": "T@,&", "userDefaultsPrefix": 'T@"NSString",&,N'}


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def classes(listing):
    """Each class by name: the parts of its listing, its own and its metaclass's."""
    found = {}
    for block in re.split(r"\n(?=[0-9a-f]{16} 0x)", listing):
        parts = block.split("Meta Class")
        name = re.search(r"^\s+name\s+0x\w+ (\w+)", block, re.MULTILINE)
        if name:
            found[name.group(1)] = parts
    return found


def methods(part):
    """Their type encodings by their names."""
    body = re.search(r"baseMethods(.*?)baseProtocols", part, re.DOTALL)
    return dict(re.findall(r"^\s+name\s+0x\w+ (\S+)\n\s+types\s+0x\w+ (\S+)", body.group(1) if body else "",
                           re.MULTILINE))


def properties(part):
    body = part[part.index("baseProperties"):]
    names = re.findall(r"^\s+name\s+0x\w+ (\S+)\n\s+attributes\s+0x\w+ (\S+)", body, re.MULTILINE)
    return dict(names)


def protocols(part):
    body = re.search(r"baseProtocols(.*?)\n\s+ivars", part, re.DOTALL)
    names = re.findall(r"^\t+ +name 0x\w+ (\w+)|^\s+name\s+0x\w+ (UI\w+|UN\w+)", body.group(1) if body else "",
                       re.MULTILINE)
    return {first or second for first, second in names}


def flavour(folder):
    """Which build the library takes itself for: the function that says so returns a constant."""
    code = output("llvm-objdump", "-d", "--no-show-raw-insn", folder / "TargetConditionals.mm.o")
    return {"#0": "device", "#1": "simulator"}.get(re.search(r"mov\s+w0, (#\d)", code).group(1))


def section(binary, symbol):
    """Where the symbol's value is kept."""
    lines = output("llvm-objdump", "--syms", binary).splitlines()
    return next(line.split()[-2] for line in lines if line.endswith(" " + symbol))


def main():
    folder, kind = Path(sys.argv[1]), sys.argv[2]
    subprocess.run([HERE / "link.sh", folder, kind], check=True)
    binary = folder / "QuorvantisPush"
    listing = output("llvm-objdump", "--macho", "--objc-meta-data", binary)
    (folder / "metadata.txt").write_text(listing)
    push, client = (classes(listing)[name] for name in ("Push", "PushRequestData"))
    exported = sorted(line.split()[-1] for line in output("llvm-nm", "-gU", binary).splitlines())
    used = {Path(line.split()[0]).name for line in
            output("llvm-objdump", "--macho", "--dylibs-used", binary).splitlines()[2:]}  # itself comes first
    checks = {
        "exported symbols": (exported, EXPORTED),
        "linked frameworks": (sorted(name for name in used if not name.endswith(".dylib")), LINKED),
        "methods of Push": (sorted(methods(push[0])), sorted(PUSH_METHODS)),
        "switches of Push": ({name: types for name, types in methods(push[0]).items() if "B" in types}, PUSH_SWITCHES),
        "class methods of Push": (methods(push[1]), {"shared": "@16@0:8", "allocWithZone:": "@24@0:8^{_NSZone=}16"}),
        "methods of PushRequestData": (sorted(methods(client[0])), sorted(CLIENT_METHODS)),
        "properties of Push": ({name: value for name, value in properties(push[0]).items()
                                if name not in INHERITED_PROPERTIES}, PUSH_PROPERTIES),
        "constants": ([section(binary, "_QuorvantisPushVersion" + of) for of in ("Number", "String")],
                      ["__TEXT,__const"] * 2),
        "build flavour": (flavour(folder), kind),
        "properties of PushRequestData": (properties(client[0]), CLIENT_PROPERTIES),
        "protocols of Push": (protocols(push[0]), {"UIApplicationDelegate", "UNUserNotificationCenterDelegate"}),
    }
    wrong = {what: pair for what, pair in checks.items() if pair[0] != pair[1]}
    for what, (found, expected) in wrong.items():
        print(f"{what}:\n  found    {found}\n  expected {expected}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
