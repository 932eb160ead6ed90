#!/usr/bin/python3
"""clients_test.py STAND: clients in use, unchanged, get notifications of every type through, and reasons back."""

import functools
import pathlib
import sys
import tempfile

import clients
from stand import KEY_ID, OLD_TOKEN, TEAM, TOKEN, TOPIC, Key, Stand, check


def main():
    with tempfile.TemporaryDirectory() as name:
        folder, key = pathlib.Path(name), Key()
        (folder / "key.p8").write_text(key.private)
        senders = {"curl": clients.by_curl, "httpx": clients.by_httpx, "nghttp": clients.by_nghttp,
                   "aioapns": functools.partial(clients.by_aioapns, key_file=folder / "key.p8", key_id=KEY_ID, team=TEAM)}
        with Stand(sys.argv[1], folder, key=folder / "key.p8") as stand:
            for client, send in senders.items():
                for kind, payload in clients.PAYLOADS.items():
                    headers = clients.headers_for(kind, TOPIC, key.token())
                    found = send(stand.port, stand.authority, "/3/device/" + TOKEN, headers, payload)
                    line = stand.next()
                    check(found == (200, ""), f"{client}, {kind}: {found}")
                    check((line["payload"], line["id"]) == (payload, headers["apns-id"]), f"{client}, {kind}: {line}")
                for token, change, expected in (
                        (OLD_TOKEN, {}, (410, "Unregistered")), ("00" * 32, {}, (400, "BadDeviceToken")),
                        (TOKEN, {"apns-topic": "com.example.other"}, (400, "DeviceTokenNotForTopic")),
                        (TOKEN, {"apns-priority": "3"}, (400, "BadPriority"))):
                    headers = clients.headers_for("normal", TOPIC, key.token()) | change
                    found = send(stand.port, stand.authority, "/3/device/" + token, headers, clients.PAYLOADS["normal"])
                    check(found == expected and stand.next()["reason"] == expected[1], f"{client}: {found}")
            check(stand.stop() == [], "nothing came that was not sent")


main()
