#!/usr/bin/env python3
"""take_facts.py TYPINGS: writes facts.txt anew, what the real SDK says of all that we declare.

TYPINGS is the folder lib/ios/objc-x86_64 of the npm package @nativescript/types-ios, which is generated from the SDK.
Run it when a declaration is added: npm install @nativescript/types-ios, somewhere else than here."""
import re
import sys
from pathlib import Path

from declared import declared

# The typings leave out what a script has no use for: memory, and what every object answers. Of UIApplicationMain they
# say that it never returns, in place of its result.
LEFT_OUT = re.compile(r"^NSObject |^NSFastEnumeration |^NSConstantString |^NSException |stringWithFormat:|appendFormat:"
                      r"|^NSString initWithBytes:|^NSMutableString |^NSDictionary dictionaryWithObjects|^NSData bytes"
                      r"|^function (UIApplicationMain|dispatch|NSLog|NSStringFromClass|objc|sel)")

# Constants whose values the typings do not tell.
NOT_TOLD = {"NSUTF8StringEncoding", "UNNotificationPresentationOptionNone", "vibrateSystemSoundID"}


def read_typings(folder):
    """Each class's or protocol's members, the functions, and the enumerations' constants, as the typings have them."""
    owners, bases, functions, enumerations = {}, {}, {}, {}
    for path in sorted(Path(folder).glob("*.d.ts")):
        owner = since = None
        for line in path.read_text().splitlines():
            if found := re.match(r"(?:declare class|interface) (\w+)(?:<.*?>)?(?: extends (\w+))?", line):
                owner, since = owners.setdefault(found.group(1), {}), None
                bases[found.group(1)] = found.group(2)
            elif found := re.match(r"declare const enum (\w+) \{", line):
                owner, since = enumerations.setdefault(found.group(1), {}), None
            elif found := re.match(r"declare function (\w+)\((.*)\): (.*);", line):
                functions[found.group(1)] = (found.group(2), found.group(3), since)
                since = None
            elif line == "}":
                owner = None
            elif found := re.search(r"@since ([\d.]+)", line):
                since = found.group(1)
            elif owner is not None and (found := re.match(r"\t(\w+) = (-?\d+),?$", line)):
                owner[found.group(1)] = int(found.group(2))
            elif owner is not None and (found := re.match(r"\t(?:static )?(?:readonly )?(\w+)\??(?:\((.*)\))?: (.*?);", line)):
                owner.setdefault(found.group(1), (found.group(2), found.group(3), since))
                since = None
    for name, members in owners.items():
        base = bases.get(name)
        while base in owners:
            for member, fact in owners[base].items():
                members.setdefault(member, fact)
            base = bases.get(base)
    return owners, functions, enumerations


def split(parameters):
    """The types of a list of parameters."""
    types, depth, start = [], 0, 0
    for at, character in enumerate(parameters + ","):
        depth += (character in "(<{[") - (character in ")}]" or (character == ">" and parameters[at - 1] != "="))
        if character == "," and depth == 0 and parameters[start:at].strip():
            types.append(parameters[start:at].split(":", 1)[1].strip())
            start = at + 1
    return types


def kind_of(text, enumerations):
    text = re.sub(r" \| null$", "", text)
    if "=>" in text:
        return "block"
    if text == "void":
        return "nothing"
    if text == "number" or text in enumerations:
        return "number"
    if text == "boolean":
        return "boolean"
    if text.startswith("CG"):
        return "structure"
    if text.startswith("interop."):
        return "pointer"
    return "object"


def main():
    owners, functions, enumerations = read_typings(sys.argv[1])
    names, values = declared()
    missing, lines = [], []
    for name, (arguments, _) in sorted(names.items()):
        if LEFT_OUT.search(name):
            continue
        owner, member = name.split(" ")
        parts = member.split(":")
        script_name = parts[0] + "".join(part[0].upper() + part[1:] for part in parts[1:] if part)
        found = functions.get(member) if owner == "function" else owners.get(owner, {}).get(script_name)
        if found is None:
            missing.append(name)
            continue
        kinds = [kind_of(text, enumerations) + ("?" if text.endswith(" | null") else "")
                 for text in split(found[0] or "")]
        lines.append(f"{name} ({', '.join(kinds)}) {kind_of(found[1], enumerations)} {found[2] or '-'}")
    known = {(enumeration, enumeration + constant): value for enumeration, constants in enumerations.items()
             for constant, value in constants.items()}
    by_name = {}
    for (enumeration, whole), value in known.items():
        for name in (whole, whole.replace("Options", "Option", 1), "NS" + whole.removeprefix(enumeration),
                     whole.replace("Ordered", ""), enumeration.replace("Options", "") + whole.removeprefix(enumeration)):
            by_name.setdefault(name, value)
    for name in sorted(values):
        if name in by_name:
            lines.append(f"constant {name} {by_name[name]}")
        else:
            missing.append("constant " + name)
    Path(__file__).with_name("facts.txt").write_text(
        "# What the phone's SDK says: name, kinds of arguments (?: may be nil), kind of result, since which iOS; constants with their values.\n"
        "# Written by take_facts.py.\n" + "\n".join(lines) + "\n")
    print(f"{len(lines)} facts; not in the typings: {', '.join(missing) or 'none'}", file=sys.stderr)


if __name__ == "__main__":
    main()
