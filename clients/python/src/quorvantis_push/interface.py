"""The phone's interface over HTTP: a request, its answer, and a refusal as an exception."""

import http.client
import json
import urllib.parse
from collections.abc import Mapping
from typing import Any

from .errors import PhoneError, Refused
from .tool import Tool

_PATIENCE = 60  # seconds, beyond those that a request itself may take


class Interface:
    """Asks the phone that a tool runs. Any thread: each request has a connection of its own."""

    def __init__(self, tool: Tool):
        self._tool = tool
        self._headers = {"Authorization": "Bearer " + tool.facts["key"]}

    def get(self, path: str, query: Mapping[str, str] | None = None, seconds: float = 0) -> Any:
        """The answer's JSON. `seconds`: how long the phone itself may take."""
        words = "?" + urllib.parse.urlencode(query) if query else ""
        return json.loads(self._ask("GET", path + words, None, self._headers, seconds))

    def text(self, path: str) -> str:
        return self._ask("GET", path, None, self._headers, 0)

    def post(self, path: str, body: Any) -> Any:
        headers = self._headers | {"Content-Type": "application/json"}
        return json.loads(self._ask("POST", path, json.dumps(body).encode(), headers, 0))

    def _ask(self, method: str, path: str, body: bytes | None, headers: Mapping[str, str], seconds: float) -> str:
        port = self._tool.facts["port"]
        connection = http.client.HTTPConnection("127.0.0.1", port, timeout=_PATIENCE + seconds)
        try:
            connection.request(method, "/api/" + path, body, headers)
            answer = connection.getresponse()
            text = answer.read().decode()
        except (OSError, http.client.HTTPException) as error:
            raise PhoneError(f"the phone can't be reached: {error or type(error).__name__}{self._end()}") from error
        finally:
            connection.close()
        if answer.status >= 400:
            raise Refused(answer.status, json.loads(text)["error"])
        return text

    def _end(self) -> str:
        status = self._tool.status
        return "" if status is None else f"; quorvantis-push has ended with status {status}:\n{self._tool.said()}"
