#!/usr/bin/python3
"""reasons_test.py STAND: every reason that a request can cause, by httpx, and which one comes first."""

import pathlib
import ssl
import subprocess
import sys
import tempfile
import time

import httpx
from stand import KEY_ID, OLD_TOKEN, OLD_TOKEN_ENDED, TOKEN, TOPIC, Client, Key, Stand, check

GOOD = b'{"aps":{"alert":{"body":"b"}}}'
DEVICE = "/3/device/"
SUFFIXES = {"alert": "", "background": "", "location": ".location-query", "voip": ".voip", "complication": ".complication",
            "fileprovider": ".pushkit.fileprovider", "liveactivity": ".push-type.liveactivity", "pushtotalk": ".voip-ptt",
            "controls": ".push-type.controls", "widgets": ".push-type.widgets"}


def sized(size):
    return b'{"a":"' + b"x" * (size - 8) + b'"}'


def of_type(name):
    return {"apns-push-type": name, "apns-topic": TOPIC + SUFFIXES[name]}


def cases(key, stranger):
    """status, reason, what the request has in place of what is good."""
    other_key = {"authorization": "bearer "}
    for status, reason, *changes in (
            (400, "BadCollapseId", {"apns-collapse-id": "x" * 65}),
            (400, "BadDeviceToken", {"path": DEVICE + "00" * 32}, {"path": DEVICE + TOKEN[1:]},
             {"path": DEVICE + "xyz"}, {"path": DEVICE + TOKEN + "?a=b"}),
            (400, "BadExpirationDate", {"apns-expiration": "soon"}, {"apns-expiration": "-1"},
             {"apns-expiration": "9" * 40}, {"apns-expiration": "1.5"}, {"apns-expiration": ""}),
            (400, "BadMessageId", {"apns-id": "zz"}, {"apns-id": "x" * 36}, {"apns-id": ""}),
            (400, "BadPriority", {"apns-priority": "7"}, {"apns-push-type": "background", "apns-priority": "10"},
             {"apns-push-type": "background"},
             {"apns-push-type": "liveactivity", "apns-topic": TOPIC + ".push-type.liveactivity", "apns-priority": "1"}),
            (400, "BadTopic", {"apns-topic": "com example"}, {"apns-topic": ""}, {"apns-push-type": "mdm"},
             {"apns-push-type": "mdm", "apns-topic": "com.apple.mgmt.External"}, {"apns-topic": TOPIC + ".voip"},
             *({"apns-push-type": name} for name, suffix in SUFFIXES.items() if suffix),
             {"apns-push-type": "voip", "apns-topic": TOPIC + ".voip-ptt"},
             {"apns-push-type": "background", "apns-priority": "5", "apns-topic": TOPIC + ".push-type.widgets"}),
            (400, "DeviceTokenNotForTopic", {"apns-topic": "com.example.other"}, {"apns-topic": TOPIC + ".watchkitapp"},
             {"apns-topic": "com.example.other.voip", "apns-push-type": "voip"}, {"apns-topic": TOPIC[:-1]}),
            (400, "DuplicateHeaders", {"apns-priority": "10", "again": ("apns-priority", "10")}, {"again": ("apns-topic", TOPIC)}),
            (400, "InvalidPushType", {"apns-push-type": "Alert"},
             *({"apns-push-type": "background", "apns-priority": "5", "body": b'{"aps":{"%s":1}}' % name}
               for name in (b"alert", b"badge", b"sound"))),
            (400, "MissingDeviceToken", {"path": DEVICE}, {"path": DEVICE[:-1]}),
            (400, "MissingTopic", {"apns-topic": None}),
            (400, "PayloadEmpty", {"body": b""}, {"body": b"no JSON"}, {"body": b'{"aps":"\0"}'}, {"body": b"[]"},
             {"body": b"\0"}, {"body": b'{"a":"\xff"}'}, {"body": b"[" * 4096}),
            (403, "ExpiredProviderToken", {"token": key.token(age=3700)}),
            (403, "InvalidProviderToken", {"token": "a.b.c"}, {"token": "no token"}, {"token": key.token(kid="SHORT")},
             {"token": key.token(team="lowercased")}, {"token": key.token(crit=["iat"])}, {"token": key.token(iat="now")}, {"token": key.token(age=-3600)},
             {"token": key.token(algorithm="HS256", key="secret")}, {"token": stranger.token()},
             {"token": key.token(iat=2 ** 63)}, {"token": key.token()[:-5]}, {"token": "x" * 9000}),
            (403, "MissingProviderToken", {"authorization": None}, {"authorization": "basic abc"}, other_key),
            (404, "BadPath", {"path": "/"}, {"path": "/4/device/" + TOKEN}, {"path": "/3/devices/" + TOKEN}),
            (405, "MethodNotAllowed", {"method": "PUT"}),
            (410, "Unregistered", {"path": DEVICE + OLD_TOKEN.upper()}),
            (413, "PayloadTooLarge", {"body": sized(4097)}, {"body": sized(1000000)},
             {"body": sized(5121), **of_type("voip")}),
            (431, "RequestHeaderFieldsTooLarge", {"x-large": "x" * 40000}),
            (200, "", {}, {"body": sized(4096)}, {"body": sized(5120), **of_type("voip")},
             {"path": DEVICE + TOKEN.upper()}, {"apns-expiration": "0"}, {"apns-priority": "1"}, {"apns-collapse-id": "x" * 64},
             *(of_type(name) for name in SUFFIXES if name != "background"),
             of_type("liveactivity") | {"apns-priority": "5"}, {"again": ("x-own", "2"), "x-own": "1"},
             {"apns-push-type": "background", "apns-priority": "5", "body": b'{"aps":{"content-available":1}}'},
             {"token": key.token(age=3500)}, {"token": key.token(iat=time.time() + 0.5)},
             {"authorization": "Bearer " + key.token()})):
        for change in changes:
            yield status, reason, change


def send(stand, key, changes):
    changes = dict(changes)
    method, path = changes.pop("method", "POST"), changes.pop("path", DEVICE + TOKEN)
    body, again = changes.pop("body", GOOD), changes.pop("again", None)
    headers = {"authorization": "bearer " + changes.pop("token", key.token()), "apns-topic": TOPIC} | changes
    fields = [(name, value) for name, value in headers.items() if value is not None] + ([again] if again else [])
    with httpx.Client(http2=True, verify=ssl.create_default_context(cafile=stand.authority)) as client:
        return client.request(method, f"https://localhost:{stand.port}{path}", content=body, headers=fields)


def each_reason(stand, key):
    for status, reason, changes in cases(key, Key()):
        answer = send(stand, key, changes)
        line = stand.next()
        found = answer.json() if answer.content else {}
        what = f"{str(changes)[:200]}: {answer.status_code} {found} {str(line)[:200]}"
        check((answer.status_code, found.get("reason", "")) == (status, reason), what)
        check((line["status"], line["reason"], line["id"]) == (status, reason, answer.headers["apns-id"]), what)
        is_heard = not SUFFIXES.get(changes.get("apns-push-type", "alert"))
        check(("payload" in line) == (status == 200) and bool(line["detail"]) == (status != 200 or not is_heard), what)
        check(answer.headers["apns-id"] == changes.get("apns-id", answer.headers["apns-id"]), what)
        check(found.get("timestamp") == (OLD_TOKEN_ENDED if status == 410 else None), what)


def one_after_the_other(stand, key):
    """All that can be wrong at once is mended step by step: who asks comes before what for, and the payload last."""
    client = Client(stand, key.token())
    good = client.token
    check(client.exchange()[0] == 200, "the connection's first request is taken")
    stand.next()
    other_key = {"authorization": "bearer " + key.token(kid="X" * 10)}
    wrong = {":method": "GET", ":path": "/", "authorization": "bearer " + key.token(age=7200, kid="X" * 10),
             "apns-topic": "a b", "apns-collapse-id": "x" * 65, "apns-expiration": "x", "apns-id": "zz",
             "apns-priority": "7", "apns-push-type": "zz"}
    body, again = b"", True
    for reason, mended in (
            ("MethodNotAllowed", {":method": "POST"}), ("BadPath", {":path": DEVICE + "00"}),
            ("ExpiredProviderToken", {"authorization": "bearer a.b.c"}), ("InvalidProviderToken", {"authorization": None}),
            ("MissingProviderToken", other_key), ("UnrelatedKeyIdInToken", {"authorization": "bearer " + key.token(age=60)}),
            ("TooManyProviderTokenUpdates", {"authorization": "bearer " + good}),
            ("BadTopic", {"apns-topic": "com.other"}), ("DeviceTokenNotForTopic", {"apns-topic": None}),
            ("MissingTopic", {"apns-topic": TOPIC}), ("BadCollapseId", {"apns-collapse-id": "x"}),
            ("BadExpirationDate", {"apns-expiration": "0"}),
            ("BadMessageId", {"apns-id": "0" * 8 + "-0000" * 3 + "-" + "0" * 12}), ("BadPriority", {"apns-priority": "5"}),
            ("DuplicateHeaders", {"x-large": "x" * 40000}), ("InvalidPushType", {"apns-push-type": "background"}),
            ("RequestHeaderFieldsTooLarge", {"x-large": "x"}), ("BadDeviceToken", {":path": DEVICE}),
            ("MissingDeviceToken", {":path": DEVICE + OLD_TOKEN}), ("Unregistered", {":path": DEVICE + TOKEN}),
            ("PayloadEmpty", {}), ("PayloadTooLarge", {}), ("InvalidPushType", None)):
        stream = client.begin(client.headers(**wrong) + ([("apns-id", "zz")] if again else []), ended=not body)
        if body:
            client.http.send_data(stream, body, end_stream=True)
        client.flush()
        status, found, _ = client.answer(stream)
        check(found == reason, f"{found} in place of {reason}")
        check(stand.next()["status"] == status, reason)
        again = again and reason != "DuplicateHeaders"
        body = {"PayloadEmpty": sized(4097), "PayloadTooLarge": b'{"aps":{"alert":"a"}}'}.get(reason, body)
        wrong |= mended or {}
    check(client.exchange(authorization="bearer " + good)[0] == 200, "the first token stays good")
    check(client.exchange(authorization="bearer " + key.token(age=-250))[1] == "TooManyProviderTokenUpdates", "soon")
    client.close()
    client = Client(stand, key.token(age=1500))
    check(client.exchange()[0] == client.exchange(authorization="bearer " + key.token())[0] == 200,
          "a new token after 20 minutes is good")
    client.close()


def without_a_key(program, folder):
    """Signatures are not looked at, all else of a provider token is."""
    with Stand(program, folder) as stand:
        key = Key()
        for token, status in ((key.token(), 200), (key.token(algorithm="HS256", key="secret"), 403),
                              (key.token(crit=["iat"]), 403), (key.token()[:-8], 403)):
            check(send(stand, key, {"token": token}).status_code == status, token)
        stand.stop()


def openssl(*words):
    subprocess.run(["openssl", *words], check=True, capture_output=True)


def certificates(program, folder):
    """Those who come with a client's certificate need no token."""
    for name in ("clients", "strangers"):
        openssl("req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-subj", f"/CN={name}",
                "-keyout", f"{folder}/{name}.key", "-out", f"{folder}/{name}.pem")
        for topic in (TOPIC, "com.example.other", ""):
            own = f"{folder}/{name}-{topic}"
            openssl("req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-keyout", own + ".key",
                    "-subj", "/CN=backend" + (f"/UID={topic}" if topic else ""), "-out", own + ".csr")
            openssl("x509", "-req", "-in", own + ".csr", "-CA", f"{folder}/{name}.pem", "-CAkey", f"{folder}/{name}.key",
                    "-CAcreateserial", "-out", own + ".pem")
    with Stand(program, folder, clients=folder / "clients.pem") as stand:
        url = f"https://localhost:{stand.port}/3/device/{TOKEN}"
        for own, headers, reason in (
                (f"clients-{TOPIC}", {}, ""), (f"clients-{TOPIC}", {"apns-topic": TOPIC}, ""),
                ("clients-", {"apns-topic": TOPIC}, ""), ("clients-", {}, "MissingTopic"),
                (f"clients-{TOPIC}", {"apns-push-type": "voip"}, ""), (f"clients-{TOPIC}", {"apns-push-type": "mdm"}, "BadTopic"),
                ("clients-com.example.other", {"apns-topic": TOPIC}, "TopicDisallowed"),
                (f"strangers-{TOPIC}", {"apns-topic": TOPIC}, "BadCertificate"),
                (None, {"apns-topic": TOPIC}, "MissingProviderToken")):
            trusting = ssl.create_default_context(cafile=stand.authority)
            if own:
                trusting.load_cert_chain(f"{folder}/{own}.pem", f"{folder}/{own}.key")
            with httpx.Client(http2=True, verify=trusting) as client:
                answer = client.post(url, content=GOOD, headers=headers)
            found = answer.json()["reason"] if answer.content else ""
            check(found == reason, f"{own} {headers}: {answer.status_code} {found}")
        stand.stop()


def main():
    with tempfile.TemporaryDirectory() as name:
        folder, key = pathlib.Path(name), Key()
        for half in (key.private, key.public):
            (folder / "key.pem").write_text(half)
            with Stand(sys.argv[1], folder, key=folder / "key.pem") as stand:
                each_reason(stand, key)
                one_after_the_other(stand, key)
                stand.stop()
        without_a_key(sys.argv[1], folder)
        certificates(sys.argv[1], folder)


main()
