"""The clients that the tests use, each sending one notification in its own way: (status, reason)."""

import asyncio
import json
import re
import ssl
import subprocess
import tempfile
import uuid

import aioapns
import httpx

# What the library tells apart.
PAYLOADS = {
    "normal": {"aps": {"alert": {"title": "t", "body": "b"}, "badge": 3, "sound": "default", "type": "pushlib-normal"}},
    "open the application": {"aps": {"alert": {"title": "t", "body": "b"}, "type": "pushlib-abrirapp"}},
    "open a link": {"aps": {"alert": {"title": "t", "body": "b"}, "type": "pushlib-abrirurl",
                            "urlnoti": "https://www.example.com/a"}},
    "store values": {"aps": {"alert": {"title": "t", "body": "b"}, "type": "pushlib-extras", "extra1": "é", "extra2": 2}},
    "without a type": {"aps": {"alert": {"title": "t", "body": "b"}, "extra1": "order-77"}},
    "silent": {"aps": {"content-available": 1, "extra1": "refresh"}},
}


def headers_for(kind, topic, provider_token):
    is_silent = kind == "silent"
    return {"authorization": "bearer " + provider_token, "apns-topic": topic,
            "apns-push-type": "background" if is_silent else "alert", "apns-priority": "5" if is_silent else "10",
            "apns-id": str(uuid.uuid4())}


def by_curl(port, authority, path, headers, payload):
    words = [word for name, value in headers.items() for word in ("--header", f"{name}: {value}")]
    done = subprocess.run(["curl", "--http2", "--silent", "--show-error", "--cacert", authority, "--data-binary",
                           json.dumps(payload), "--write-out", "\n%{http_version} %{http_code}", *words,
                           f"https://localhost:{port}{path}"], capture_output=True, text=True, timeout=60, check=True)
    body, end = done.stdout.rsplit("\n", 1)
    version, status = end.split()
    assert version == "2", done
    return int(status), json.loads(body)["reason"] if body else ""


def by_httpx(port, authority, path, headers, payload):
    with httpx.Client(http2=True, verify=ssl.create_default_context(cafile=authority)) as client:
        answer = client.post(f"https://localhost:{port}{path}", json=payload, headers=headers)
    assert answer.http_version == "HTTP/2"
    return answer.status_code, answer.json()["reason"] if answer.content else ""


def by_nghttp(port, authority, path, headers, payload):
    """It checks no certificate."""
    words = [word for name, value in headers.items() for word in ("--header", f"{name}: {value}")]
    with tempfile.NamedTemporaryFile("w") as body:
        json.dump(payload, body)
        body.flush()
        done = subprocess.run(["nghttp", "--verbose", "--data", body.name, "--header", ":method: POST", *words,
                               f"https://localhost:{port}{path}"], capture_output=True, text=True, timeout=60, check=True)
    reason = re.search(r'\{"reason":"(\w+)"', done.stdout)
    return int(re.search(r":status: (\d+)", done.stdout)[1]), reason[1] if reason else ""


def by_aioapns(port, authority, path, headers, payload, key_file, key_id, team):
    """It signs its own tokens, and has its host and port in a class."""
    async def send():
        client = aioapns.APNs(key=key_file, key_id=key_id, team_id=team, topic=headers["apns-topic"],
                              ssl_context=ssl.create_default_context(cafile=authority))
        client.pool.protocol_class = type("Here", (client.pool.protocol_class,),
                                          {"APNS_SERVER": "localhost", "APNS_PORT": port})
        result = await asyncio.wait_for(client.send_notification(aioapns.NotificationRequest(
            device_token=path.rsplit("/", 1)[1], message=payload, notification_id=headers["apns-id"],
            priority=int(headers["apns-priority"]), push_type=aioapns.PushType(headers["apns-push-type"]))), 60)
        client.pool.close()
        return int(result.status), result.description or ""
    return asyncio.run(send())
