#!/usr/bin/python3
"""cut_schema.py FULL > sarif-2.1.0.json: the part of the SARIF 2.1.0 schema that `quorvantis-push payload --sarif` uses.

FULL is sarif-2.1.0.json of the npm package @microsoft/sarif-multitool-linux (5.7.0). What leads to a definition that is
not kept here goes, so that a new member of ours fails the test until its definition is kept, too.
"""
import json
import sys

KEPT = ["artifactChange", "artifactContent", "artifactLocation", "fix", "invocation", "location", "logicalLocation",
        "message", "multiformatMessageString", "notification", "physicalLocation", "region", "replacement",
        "reportingConfiguration", "reportingDescriptor", "result", "run", "tool", "toolComponent"]


def leads_out(node):
    reference = node.get("$ref", "") or node.get("items", {}).get("$ref", "")
    return reference and reference.rsplit("/", 1)[-1] not in KEPT


def cut(schema):
    """A schema without descriptions, and without members that lead out."""
    schema = {key: value for key, value in schema.items() if key != "description"}
    if "properties" in schema:
        schema["properties"] = {name: cut(member) for name, member in schema["properties"].items()
                                if not leads_out(member)}
    for inner in ("items", "additionalProperties"):
        if isinstance(schema.get(inner), dict):
            schema[inner] = cut(schema[inner])
    return schema


full = json.load(open(sys.argv[1], encoding="utf-8"))
full["definitions"] = {name: cut(definition) for name, definition in full["definitions"].items() if name in KEPT}
json.dump(cut(full), sys.stdout, separators=(",", ":"))
print()
