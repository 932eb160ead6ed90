"""The process of `quorvantis-push phone`: started, drained, and ended with the test run, however that ends."""

import collections
import json
import os
import subprocess
import threading
from collections.abc import Iterable, Sequence
from typing import Any

from .errors import PhoneError

_PATIENCE = 10  # seconds, for the process to end
_KEPT_LINES = 40  # of what it said on standard error, for messages


class Tool:
    """A running tool. `facts` is its first line: how to reach the phone.

    The process ends when its standard input does, so it also ends when this one is killed. Any thread.
    """

    def __init__(self, program: str | os.PathLike[str] | None, arguments: Sequence[str]):
        name = os.fspath(program or os.environ.get("QUORVANTIS_PUSH") or "quorvantis-push")
        try:
            self._process = subprocess.Popen([name, "phone", "--no-page", "--until-eof", *arguments], text=True,
                                             encoding="utf-8", errors="replace", stdin=subprocess.PIPE,
                                             stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        except OSError as error:
            raise PhoneError(f"{name} can't be started ({error.strerror}): install the package quorvantis-push, or "
                             "name the program in the variable QUORVANTIS_PUSH") from error
        self._said: collections.deque[str] = collections.deque(maxlen=_KEPT_LINES)
        self._drains = [threading.Thread(target=self._said.extend, args=(self._process.stderr,), daemon=True)]
        self._drains[0].start()
        first = self._process.stdout.readline()
        self._drains.append(threading.Thread(target=_discard, args=(self._process.stdout,), daemon=True))
        self._drains[1].start()
        if not first:
            status = self.stop()
            raise PhoneError(f"{name} has ended with status {status}:\n{self.said()}")
        self.facts: dict[str, Any] = json.loads(first)

    @property
    def status(self) -> int | None:
        """The exit status; None while it runs."""
        return self._process.poll()

    def said(self) -> str:
        """The last of what it has said on standard error."""
        return "".join(self._said)

    def stop(self) -> int:
        """Ends it, if it still runs, and gives its exit status."""
        try:
            self._process.stdin.close()
        except BrokenPipeError:
            pass  # it has ended already
        for end in (self._process.terminate, self._process.kill):
            try:
                self._process.wait(_PATIENCE)
                break
            except subprocess.TimeoutExpired:
                end()
        status = self._process.wait()
        for drain in self._drains:
            drain.join()
        self._process.stdout.close()
        self._process.stderr.close()
        return status


def _discard(lines: Iterable[str]) -> None:
    for _ in lines:
        pass
