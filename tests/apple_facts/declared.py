"""What our own declarations of Apple's interfaces say, by the compiler's reading of them: a dictionary from a name to the
kinds of its arguments and of its result, and one from an enumeration's constant to its value."""
import json
import re
import subprocess
from pathlib import Path

TESTS = Path(__file__).resolve().parents[1]
ROOT = TESTS.parent
HEADERS = ["Foundation/Foundation.h", "CoreFoundation/CoreFoundation.h", "AudioToolbox/AudioToolbox.h",
           "dispatch/dispatch.h", "UIKit/UIKit.h", "UserNotifications/UserNotifications.h"]
SEAM_CONSTANT = re.compile(r"inline constexpr [\w ]+? (\w+) = (0x[0-9A-F]+|\d+);")
SEAM_ENUMERATION = re.compile(r"enum class (\w+) : \w+ \{([^}]*)\}")


def kind_of(type_):
    """The kind of a C type, as far as the typings tell kinds apart."""
    text = re.sub(r"_Nullable|_Nonnull|__strong|__autoreleasing|__unsafe_unretained|\bconst\b|\boneway\b", "",
                  type_.get("desugaredQualType", type_["qualType"])).strip()
    if text == "void":
        return "nothing"
    if "(^" in text:
        return "block"
    if text in ("BOOL", "bool", "_Bool") or type_["qualType"].startswith("BOOL"):
        return "boolean"
    if re.fullmatch(r"id(<.*>)?|instancetype|SEL|Class|\w+(<.*>)? \*", text) and not text.startswith(
            ("struct", "void", "unsigned", "char")) or text.startswith("struct objc_selector"):
        return "object"
    if text.startswith(("struct __CF", "struct dispatch_queue_s")):
        return "object"
    if text.endswith(("*", "]")):
        return "pointer"
    if text.startswith("struct"):
        return "structure"
    return "number"


def argument(type_):
    """The kind of an argument, with a question mark where nil may be given: Swift makes an optional of it. Of
    pointers the typings don't tell."""
    kind, outermost = kind_of(type_), re.sub(r"\(\^ ?(\w*)\)\(.*", r"\1", type_["qualType"])
    return kind + ("?" if outermost.endswith("_Nullable") and kind != "pointer" else "")


def members(node, owner, found):
    for member in node.get("inner", []):
        if member.get("isImplicit"):
            continue
        if member["kind"] == "ObjCPropertyDecl":
            found[f"{owner} {member['name']}"] = ([], kind_of(member["type"]))
        elif member["kind"] == "ObjCMethodDecl":
            arguments = [argument(part["type"]) for part in member.get("inner", []) if part["kind"] == "ParmVarDecl"]
            found[f"{owner} {member['name']}"] = (arguments, kind_of(member["returnType"]))


def value_in(node):
    """The value that the compiler has computed for an expression below the node, None without one."""
    for inner in node.get("inner", []):
        if inner["kind"] == "ConstantExpr" and "value" in inner:
            return int(inner["value"])
        if (value := value_in(inner)) is not None:
            return value
    return None


def constants(node, found):
    value = -1
    for constant in node.get("inner", []):
        if constant["kind"] == "EnumConstantDecl":
            given = value_in(constant)
            value = value + 1 if given is None else given
            found[constant["name"]] = value


def declared():
    names, values = {}, {}
    tree = json.loads(subprocess.run(
        ["clang", "-fsyntax-only", "-target", "arm64-apple-ios15.0", "-nostdlibinc", "-isystem",
         TESTS / "ios_framework/sdk", "-isystem", TESTS / "apple_sdk", "-x", "objective-c",
         "-Xclang", "-ast-dump=json", *(part for header in HEADERS for part in ("-include", header)), "/dev/null"],
        check=True, capture_output=True).stdout)
    for node in tree["inner"]:
        if node["kind"] in ("ObjCInterfaceDecl", "ObjCProtocolDecl"):
            members(node, node["name"], names)
        elif node["kind"] == "FunctionDecl":
            arguments = [argument(part["type"]) for part in node.get("inner", []) if part["kind"] == "ParmVarDecl"]
            result = re.sub(r" ?\(.*", "", node["type"]["qualType"])
            names[f"function {node['name']}"] = (arguments, kind_of({"qualType": result}) if "Ref" not in result
                                                 else "object")
        elif node["kind"] == "EnumDecl":
            constants(node, values)
    for header in sorted((ROOT / "platform").glob("*.h")):
        text = header.read_text()
        values |= {name: int(value, 0) for name, value in SEAM_CONSTANT.findall(text)}
        for name, body in SEAM_ENUMERATION.findall(text):
            for constant, value in re.findall(r"(\w+) = (-?\d+)", body):
                values[name + constant.rstrip("_").capitalize()] = int(value)
    return names, values
