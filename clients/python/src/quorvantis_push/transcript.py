"""A phone's lines as a person reads them."""

import json
from collections.abc import Iterable, Mapping
from typing import Any

_LONGEST_VALUE = 120
_KINDS = {"do": "step", "phone": "act", "event": "event", "screen": "screen"}


def readable(entries: Iterable[Mapping[str, Any]]) -> str:
    """One row for each of the interface's entries: number, kind, name, and what else the line has."""
    return "\n".join(_row(entry["id"], entry["line"]) for entry in entries)


def _row(number: int, line: Mapping[str, Any]) -> str:
    kind = next((kind for kind in _KINDS if kind in line), "")
    words = [f"{number:6}  {_KINDS.get(kind, '?'):6}", str(line.get(kind, ""))]
    words += [f"{name}={_abridged(value)}" for name, value in line.items() if name != kind]
    return " ".join(words)


def _abridged(value: Any) -> str:
    text = json.dumps(value, ensure_ascii=False)
    return text if len(text) <= _LONGEST_VALUE else text[:_LONGEST_VALUE] + "…"
