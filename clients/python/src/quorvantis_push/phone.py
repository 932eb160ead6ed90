"""One simulated phone, and what a test does with it."""

import dataclasses
import os
import tempfile
from collections.abc import Mapping, Sequence
from types import TracebackType
from typing import Any, TypeAlias

from .errors import PhoneError, Refused, WaitFailed
from .interface import Interface
from .tool import Tool
from .transcript import readable

Line: TypeAlias = dict[str, Any]
"""What was done to the phone or happened on it: an object with "do", "phone", "event" or "screen"."""

_Path: TypeAlias = str | os.PathLike[str]
_SHOWN_LINES = 60  # the last ones, when a wait fails


@dataclasses.dataclass(frozen=True)
class Apns:
    """Where a backend finds the stand-in for Apple's push service."""

    host: str
    port: int
    topic: str  #: the application's bundle identifier
    authority: str  #: the file with the certificate of the authority that the backend's client must trust


class Phone:
    """A phone with the library and an application on it, in a process of its own.

    Starts the tool `quorvantis-push` (`tool`, else the variable QUORVANTIS_PUSH, else from PATH), which ends with
    `stop()`, with the `with` block, or with this process. To be used by one thread at a time.

    - `apns`: whether a stand-in for Apple's push service runs in front of the phone, at any free port or this one.
      `topic`, `provider_key`, `client_authority` and `strict` are its options of the same names.
    - `server` (HOST:PORT) and `authority` (a file): a push server that runs elsewhere on this machine.
    - `settings`: the file that keeps the phone's settings. `scenario`: a file to play first.
    - `build`: "device" or "simulator". `arguments`: further ones of the command `quorvantis-push phone`.

    Raises PhoneError when the tool does not start; its text holds what the tool said.
    """

    def __init__(self, *, apns: bool | int = False, topic: str | None = None, provider_key: _Path | None = None,
                 client_authority: _Path | None = None, strict: bool = False, server: str | None = None,
                 authority: _Path | None = None, settings: _Path | None = None, scenario: _Path | None = None,
                 build: str | None = None, arguments: Sequence[str] = (), tool: _Path | None = None):
        self._folder = tempfile.TemporaryDirectory(prefix="quorvantis-push-")
        given = {"--topic": topic, "--provider-key": provider_key, "--client-authority": client_authority,
                 "--server": server, "--authority": authority, "--settings": settings, "--build": build}
        words = [word for name, value in given.items() if value is not None for word in (name, os.fspath(value))]
        trusted = os.path.join(self._folder.name, "authority.pem")
        if apns is not False:
            words += ["--apns", "0" if apns is True else str(apns), "--apns-authority", trusted]
        words += ["--strict"] if strict else []
        words += arguments
        words += ["--", os.fspath(scenario)] if scenario is not None else []
        try:
            self._tool = Tool(tool, words)
        except PhoneError:
            self._folder.cleanup()
            raise
        self._interface = Interface(self._tool)
        self._next = 1  # the line that a wait begins with

        facts = self._tool.facts.get("apns")
        #: The stand-in for Apple's push service; None without `apns`.
        self.apns = Apns(facts["host"], facts["port"], facts["topic"], trusted) if facts else None

    def __enter__(self) -> "Phone":
        return self

    def __exit__(self, kind: type[BaseException] | None, error: BaseException | None,
                 traceback: TracebackType | None) -> None:
        status = self.stop()
        if status != 0 and error is None:
            raise PhoneError(f"quorvantis-push has ended with status {status}:\n{self._tool.said()}")

    def stop(self) -> int:
        """Ends the phone, and gives the tool's exit status: with `strict`, 1 after an accepted payload with an error."""
        status = self._tool.stop()
        self._folder.cleanup()
        return status

    @property
    def token(self) -> str | None:
        """The device token in hexadecimal digits; None when the system has none for the application."""
        return self._interface.get("status")["token"]

    @property
    def address(self) -> str:
        """Where the phone's interface is, with its key."""
        return self._tool.facts["address"]

    # What is done to the phone

    def play(self, *lines: Line) -> list[Line]:
        """Plays steps and acts, and gives everything that happened, themselves included.

        Raises Refused: 400 when one can't be read (none was played then), 409 when the phone's state does not allow it.
        """
        return [entry["line"] for entry in self._interface.post("steps", list(lines))["lines"]]

    def register(self, app_hash: str = "f00d", *, granted: bool = True, **host: Any) -> list[Line]:
        """Launches what a host does: it configures the library and switches notifications on, the user answers.

        `host` are further keys of the step "host": `foreground`, `deactivateGPS`, `delegate`.
        """
        return self.play({"do": "authorization", "granted": granted}, {"do": "host", "appHash": app_hash, **host},
                         {"do": "activate", "value": True}, {"do": "settle"})

    def arrive(self, user_info: Mapping[str, Any], **more: Any) -> list[Line]:
        """A remote notification reaches the phone, without a provider."""
        return self.play({"phone": "arrive", "userInfo": dict(user_info), **more})

    def tap(self, notification: int | Line, action: str | None = None) -> list[Line]:
        """The user taps a notification of the list: its number, or the line that showed it.

        Launches an application that has ended, and lets the second pass that the library takes to open a link.
        Raises Refused with 409 when it is not in the list.
        """
        act = {"phone": "tap", "notification": _number_of(notification)}
        return self.play(act if action is None else act | {"action": action})

    def remove(self, notification: int | Line) -> list[Line]:
        """The user removes a notification from the list."""
        return self.play({"phone": "remove", "notification": _number_of(notification)})

    def go_to(self, state: str) -> list[Line]:
        """The application's state is "active", "inactive" or "background" from now on."""
        return self.play({"do": "application", "state": state})

    def end(self) -> list[Line]:
        """The user ends the application."""
        return self.play({"phone": "end"})

    def relaunch(self) -> list[Line]:
        """The application starts again; its host has configured nothing yet."""
        return self.play({"do": "relaunch"})

    def airplane_mode(self, on: bool = True) -> list[Line]:
        """Nothing arrives, and every request fails, until it is turned off."""
        return self.play({"phone": "airplaneMode", "on": on})

    def uninstall(self) -> list[Line]:
        """The application is removed: a provider gets 410 for its device token."""
        return self.play({"phone": "uninstall"})

    def install(self) -> list[Line]:
        """The application is installed anew."""
        return self.play({"phone": "install"})

    def advance(self, seconds: float) -> list[Line]:
        """Lets time pass on the phone's clock, which moves in no other way."""
        return self.play({"do": "advance", "seconds": seconds})

    def fail_next(self, *faults: Mapping[str, Any]) -> None:
        """What the stand-in for Apple's service does with the next requests, in place of what was set before."""
        self._interface.post("apns/faults", {"faults": list(faults)})

    def fresh(self, scenario: str = "") -> None:
        """A fresh phone takes the place of this one, and plays the scenario. Its lines count from 1 again."""
        self._interface.post("fresh", {"scenario": scenario})
        self._next = 1

    # What happened on it

    def wait(self, *, seconds: float = 10, **members: Any) -> Line:
        """Waits for the next line that has all these members, and gives it.

        Begins after the line that the last wait found, at first with the phone's first line. A member that is an
        object names those inside it: `wait(argument={"alert": {"title": "Offers"}})`. Raises WaitFailed.
        """
        query = dict(_flat(members)) | {"from": str(self._next), "seconds": str(seconds)}
        try:
            found = self._interface.get("wait", query, seconds)
        except Refused as refusal:
            if refusal.status != 408:
                raise
            raise WaitFailed(f"{refusal}\n{self._since()}") from None
        self._next = found["id"] + 1
        return found["line"]

    def lines(self) -> list[Line]:
        """All lines since the phone was started afresh."""
        return [entry["line"] for entry in self._interface.get("lines")["lines"]]

    def transcript(self) -> str:
        """All lines as a person reads them."""
        return readable(self._interface.get("lines")["lines"])

    def scenario(self) -> str:
        """What was done so far, as a scenario that `quorvantis-push run` plays."""
        return self._interface.text("scenario")

    def _since(self) -> str:
        entries = self._interface.get("lines", {"from": str(self._next)})["lines"]
        if not entries:
            return f"Nothing happened from line {self._next} on."
        left_out = max(0, len(entries) - _SHOWN_LINES)
        beginning = f"From line {self._next} on" + (f", {left_out} lines left out" if left_out else "")
        return f"{beginning}:\n{readable(entries[left_out:])}"


def _number_of(notification: int | Line) -> int:
    if isinstance(notification, int):
        return notification
    if "notification" not in notification:
        raise TypeError(f"the line shows no notification: {notification}")
    return notification["notification"]


def _flat(members: Mapping[str, Any], prefix: str = "") -> list[tuple[str, str]]:
    pairs: list[tuple[str, str]] = []
    for name, value in members.items():
        if isinstance(value, Mapping):
            pairs += _flat(value, f"{prefix}{name}.")
        else:
            words = {True: "true", False: "false", None: "null"}
            pairs.append((prefix + name, words[value] if value is None or isinstance(value, bool) else str(value)))
    return pairs
