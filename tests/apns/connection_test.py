#!/usr/bin/python3
"""connection_test.py STAND: what a connection must stand: odd clients, many requests, slow, broken and idle ones."""

import itertools
import json
import os
import pathlib
import socket
import ssl
import sys
import tempfile
import threading
import uuid

import h2.errors
import h2.events
import hpack
from stand import PATIENCE, TOKEN, TOPIC, Client, Key, Stand, check

CONNECTIONS = 64  # up to 256
GOOD = b'{"aps":{"alert":{"body":"b"}}}'


def numbered(number):
    return json.dumps({"aps": {"alert": {"body": "b"}}, "number": number}).encode()


def numbers(lines):
    return sorted(line["payload"]["number"] for line in lines if line["status"] == 200)


def is_quick(stand, key):
    client = Client(stand, key.token())
    check(client.exchange()[0] == 200, "another client is answered meanwhile")
    client.close()


def oddities(program, folder, key):
    """Each of the ways in which clients in use differ from each other."""
    with Stand(program, folder) as stand:
        for protocols, chosen in (((), None), (("h2",), "h2"), (("h2", "http/1.1"), "h2")):
            client = Client(stand, key.token(), protocols)
            check(client.wire.selected_alpn_protocol() == chosen, f"{protocols}")
            check(client.exchange()[0] == client.exchange(host=None, __authority="api.push.apple.com")[0] == 200,
                  "host and :authority")
            client.close()
        try:
            Client(stand, key.token(), ("http/1.1",))
            check(False, "a client without HTTP/2 got through")
        except ssl.SSLError:
            pass
        client = Client(stand, key.token())
        for identifier in (str(uuid.uuid4()).upper(), str(uuid.uuid4()), "aBcDeF12-0000-0000-0000-00000000fEdC"):
            for body in (GOOD, b""):
                headers = client.exchange(body, apns_id=identifier)[2]
                check(headers["apns-id"] == identifier, f"{identifier} came back as {headers['apns-id']}")
        check(uuid.UUID(client.exchange()[2]["apns-id"]), "an id is made")
        good, bad = client.post(), client.post(b"")
        client.flush()
        check(client.answer(bad)[1] == "PayloadEmpty" and client.answer(good)[0] == 200, "one of each")
        check(client.answers[good][2][0].stream_ended is not None, "200 ends with its headers")
        body = client.answers[bad][2][1:]
        check(len(body) == 1 and body[0].stream_ended is not None, "an error's body is one frame, and the last")
        unfinished = client.begin()
        client.http.ping(b"12345678")
        client.flush()
        while not any(isinstance(event, h2.events.PingAckReceived) for event in client.events):
            check(client.read(), "PING is answered")
        lines = stand.stop()
        check(client.until_end() == "Shutdown", "a client is told that the service stops")
        check(client.answer(unfinished)[:2] == (503, "Shutdown"), "and of what it had begun, too")
        check(key.private.split("\n")[1] not in str(lines) and client.token not in str(lines), "nothing secret shows")


def floods(program, folder, key):
    """Nothing is lost or handled twice, and what one client sends costs no memory in the end."""
    with Stand(program, folder) as stand:
        client = Client(stand, key.token())
        check(client.exchange(numbered(-1))[0] == 200, "the limits are known then")
        sent = [client.post(numbered(number).ljust(4096)) for number in range(1000)]
        client.flush()
        check(all(client.answer(stream)[0] == 200 for stream in sent), "1,000 at once")
        client.close()

        def many(first):
            own = Client(stand, key.token())
            streams = [own.post(numbered(number)) for number in range(first, first + 20)]
            own.flush()
            answered.extend(own.answer(stream)[0] for stream in streams)
            own.close()

        answered = []
        threads = [threading.Thread(target=many, args=(1000 + 20 * i,)) for i in range(50)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        check(answered == [200] * 1000, "20 each on 50 connections")
        check(numbers(stand.stop()) == list(range(-1, 2000)), "each reached the phone once")
    with Stand(program, folder, quiet="") as stand:
        def flood():
            client = Client(stand, key.token())
            check(client.exchange()[0] == 200, "the window is known then")
            for _ in range(5):
                streams = [client.post(b"x" * 5000) for _ in range(500)]
                client.flush()
                check(all(client.answer(stream)[0] == 413 for stream in streams), "too large")
                client.answers.clear()
                client.events.clear()
            client.close()

        flood()
        before = stand.memory()
        flood()
        flood()
        check(stand.memory() - before < 8 << 20, f"{before} bytes became {stand.memory()}")


def cuts(program, folder, key):
    """A connection that ends in the middle of each phase."""
    with Stand(program, folder) as stand:
        plain = socket.create_connection(("127.0.0.1", stand.port))
        plain.sendall(b"\x16\x03\x01")
        plain.close()
        for garbage in (b"", b"PRI * HTT", b"GET / HTTP/1.1\r\nHost: localhost\r\n\r\n", b"\0" * 5000):
            context = ssl.create_default_context(cafile=stand.authority)
            wire = context.wrap_socket(socket.create_connection(("127.0.0.1", stand.port)), server_hostname="localhost")
            wire.sendall(garbage)
            wire.close()
        counter, answered, sent = itertools.count(), [], []
        for cut_at in range(0, 400, 7):
            client = Client(stand, key.token())
            first = next(counter)
            check(client.exchange(numbered(first))[0] == 200, "a request before the cut")
            answered.append(first)
            client.post(numbered(next(counter)))
            sent.append(first + 1)
            client.wire.sendall(client.http.data_to_send()[:cut_at])
            client.wire.close()
        arrived = numbers(stand.stop())
        check(len(set(arrived)) == len(arrived), "none came twice")
        check(set(answered) <= set(arrived) <= set(answered + sent), "none of those answered is lost")


def slowness(program, folder, key):
    """A body that drips, a client that does not read, one that says nothing: none holds up another."""
    with Stand(program, folder, idle=300) as stand:
        check(Client(stand, key.token()).until_end() == "IdleTimeout", "an idle connection is told why it ends")
        stand.stop()
    with Stand(program, folder, request=300, answer=300) as stand:
        dripping = Client(stand, key.token())
        stream = dripping.begin()
        dripping.http.send_data(stream, GOOD[:5])
        dripping.flush()
        is_quick(stand, key)
        status, reason, _ = dripping.answer(stream)
        check((status, reason) == (400, "IdleTimeout"), f"{status} {reason}")
        while not any(isinstance(event, h2.events.StreamReset) for event in dripping.events):
            check(dripping.read(), "a client is told that nobody reads the rest")
        check(dripping.exchange()[0] == 200, "the connection goes on")
        stream = dripping.begin()
        frame = dripping.http.data_to_send()
        dripping.wire.sendall(frame[:4] + b"\0" + frame[5:])  # no END_HEADERS: more of them are to come
        status, reason, _ = dripping.answer(stream)
        check((status, reason) == (400, "IdleTimeout"), f"headers: {status} {reason}")

        deaf = Client(stand, key.token(), small_buffer=True)
        try:
            for _ in range(20):
                for _ in range(300):
                    deaf.http.ping(b"12345678")
                    deaf.post(b"")
                    deaf.http.reset_stream(deaf.http.get_next_available_stream_id() - 2)
                deaf.flush()
        except (OSError, ssl.SSLError):
            pass
        is_quick(stand, key)
        stand.stop()


def headers(program, folder, key):
    """Too many are refused, far too many are not read to their end, and who goes on is sent away."""
    with Stand(program, folder) as stand:
        for extra, expected in (([("apns-priority", "10")] * 900, (400, "DuplicateHeaders")),
                                ([(f"x-{number}", "y") for number in range(1200)], (431, "RequestHeaderFieldsTooLarge")),
                                ([(f"x-{number}", "y") for number in range(500)], (200, ""))):
            client = Client(stand, key.token())
            stream = client.begin(client.headers() + extra)
            client.http.send_data(stream, GOOD, end_stream=True)
            client.flush()
            found = client.answer(stream)
            check(found and found[:2] == expected, f"{expected}: {found}")
            is_quick(stand, key)
        client = Client(stand, key.token())
        stream = client.begin(client.headers() + [(f"x-{number}", "y") for number in range(3000)])
        client.flush()
        while not (resets := [event for event in client.events if isinstance(event, h2.events.StreamReset)]):
            check(client.read(), "the stream is reset, and not the connection")
        check(resets[0].error_code == h2.errors.ErrorCodes.ENHANCE_YOUR_CALM, "at once, not when nothing more comes")
        check(client.exchange(x_large="x" * 3900)[0] == 200, "the connection goes on")
        # POST, https, / and the last field, which is in the table now: a byte unpacks to four thousand.
        streams = itertools.count(101, 2)
        sent_away(client, lambda: b"".join(frame(1, b"\x83\x87\x84" + b"\xbe" * 16000, next(streams), 5) for _ in range(50)))
        is_quick(stand, key)
        stand.stop()


def frame(kind, payload=b"", stream=0, flags=0):
    return len(payload).to_bytes(3, "big") + bytes([kind, flags]) + stream.to_bytes(4, "big") + payload


def sent_away(client, flood):
    """It goes on until the connection ends."""
    for _ in range(20):
        try:
            client.wire.settimeout(PATIENCE)
            client.wire.sendall(flood())
            client.wire.settimeout(0.01)
            while client.wire.recv(65536):
                pass
            return
        except TimeoutError:
            pass
        except (ConnectionError, ssl.SSLError):
            return
    raise AssertionError("a flood is borne")


def frames(program, folder, key):
    """What is no request is borne for a while, of whatever kind it is, and then its sender is sent away."""
    with Stand(program, folder) as stand:
        for name, one in (("empty DATA", frame(0, stream=3)), ("PRIORITY", frame(2, b"\0\0\0\1\x10", 3)),
                          ("WINDOW_UPDATE", frame(8, b"\0\0\0\1", 3)), ("an unknown type", frame(0x20, b"x"))):
            client = Client(stand, key.token())
            check(client.exchange()[0] == 200, name)
            check(client.begin() == 3, "the request of the frames")
            client.flush()
            client.wire.sendall(one * 2000)
            check(client.exchange()[0] == 200, f"a few: {name}")
            sent_away(client, lambda: one * 20000)
        is_quick(stand, key)
        client = Client(stand, key.token())
        streams = []
        for _ in range(500):
            streams.append(client.begin())
            for byte in GOOD:
                client.http.send_data(streams[-1], bytes([byte]))
            client.http.end_stream(streams[-1])
        client.flush()
        check(all(client.answer(stream)[0] == 200 for stream in streams), "bodies byte by byte")
        stand.stop()


def unfinished(program, folder, key):
    """What is begun and never finished costs a bounded amount, by however many, and holds up nobody."""
    fields = [(":method", "POST"), (":scheme", "https"), (":path", "/3/device/" + "ab" * 500), (":authority", "localhost"),
              ("authorization", "bearer " + "x" * 2048), ("apns-topic", "x" * 255), ("apns-collapse-id", "x" * 64)]
    encoder = hpack.Encoder()
    blocks = [encoder.encode(fields) for _ in range(2)]
    check(len(blocks[1]) < 20, "a request in a few bytes")
    flood = b"".join(frame(1, blocks[number > 0], 2 * number + 1, 4) for number in range(1000))
    flood += b"".join(frame(0, b"x" * 4096, 2 * number + 1) for number in range(15))
    with Stand(program, folder, quiet="") as stand:
        before = stand.memory()
        clients = [Client(stand, "") for _ in range(CONNECTIONS)]
        for client in clients:
            client.wire.sendall(flood + frame(6, b"12345678"))
        for client in clients:
            answered = b""
            while frame(6, b"12345678", flags=1) not in answered:
                piece = client.wire.recv(65536)
                check(piece, "what is too much is refused, and the connection goes on")
                answered += piece
        grown = stand.memory() - before
        check(grown < int(os.environ.get("TIMES_THE_MEMORY", "1")) * 96 << 20, f"{grown >> 20} MiB")
        for client in clients:
            client.close()
        client = Client(stand, key.token())
        streams = [client.begin() for _ in range(1000)]
        client.flush()
        for stream in streams:
            body = GOOD + b" " * (4096 - len(GOOD))
            while client.http.local_flow_control_window(stream) < len(body):
                check(client.read(), "the window opens again")
            client.http.send_data(stream, body, end_stream=True)
            client.flush()
        check(all(client.answer(stream)[0] == 200 for stream in streams), "1,000 of 4 KB at once")
        stand.stop()


def texts(program, folder, key):
    """Whatever a header holds, what is written down of it is short, and text."""
    with Stand(program, folder) as stand:
        for name, value, reason in (("apns-push-type", b"\xff\xfe", "InvalidPushType"),
                                    ("apns-push-type", b"x" * 4000, "InvalidPushType"),
                                    ("apns-id", b"\xff" * 36, "BadMessageId"), ("apns-id", b"x" * 4000, "BadMessageId"),
                                    ("apns-collapse-id", b"\xc3", "BadCollapseId")):
            client = Client(stand, key.token())
            fields = [(field.encode(), text.encode()) for field, text in client.headers()] + [(name.encode(), value)]
            client.http.config.header_encoding = None
            stream = client.begin(fields)
            client.http.send_data(stream, GOOD, end_stream=True)
            client.flush()
            while len(client.answers.get(stream, ())) < 4:
                check(client.read(), name)
            answered, body = client.answers[stream][:2]
            check(json.loads(body) == {"reason": reason}, body)
            line = stand.next()  # which can be read at all
            check(line["reason"] == reason and len(line["pushType"]) < 30 and len(line["id"]) < 80, f"{line}")
            check(name != "apns-id" or len(value) > 36 or answered[b"apns-id"] == value, "as it was sent")
        stand.stop()


def misbehaviour(program, folder, key):
    """What is ordered comes, as often as it is ordered, and then all is well again."""
    with Stand(program, folder) as stand:
        client = Client(stand, key.token())
        stand.order({"fault": "answer", "reason": "TooManyRequests", "times": 2},
                    {"fault": "answer", "status": 599, "reason": "OfNoKind"},
                    {"fault": "answer", "reason": "ExpiredToken"}, {"fault": "slow", "seconds": 0.05},
                    {"fault": "silence"})
        streams = [client.post() for _ in range(7)]
        client.flush()
        found = [client.answer(stream)[:2] for stream in streams[:5] + streams[6:]]
        check(found == [(429, "TooManyRequests")] * 2 + [(599, "OfNoKind"), (410, "ExpiredToken"), (200, ""), (200, "")],
              f"{found}")
        check(streams[5] not in client.answers, "silence")
        stand.order()

        client = Client(stand, key.token())
        stand.order({"fault": "answer", "reason": "Forbidden"}, {"fault": "goaway"})
        streams = [client.post(), client.post(), client.post()]
        client.flush()
        check(client.answer(streams[0])[1] == "Forbidden", "what came before GOAWAY is answered")
        check(client.until_end() == "Shutdown" and list(client.answers) == streams[:1], "GOAWAY")
        away = [event for event in client.events if isinstance(event, h2.events.ConnectionTerminated)]
        check(away[0].last_stream_id == streams[0], "the client may send the others elsewhere")
        check([line["reason"] for line in stand.order()] == ["Forbidden"], "the phone knows nothing of them")
        for fault, taken in (("cut", []), ("lost", [2])):
            client = Client(stand, key.token())
            stand.order({"fault": fault})
            check(client.exchange(numbered(2)) is None and client.is_cut, f"{fault}: an answer, or a farewell")
            is_quick(stand, key)
            check([line["payload"].get("number") for line in stand.order()] == taken + [None], fault)
        for wrong in ({"fault": "none"}, {"fault": "answer", "status": 200}, {"fault": "cut", "status": 400}, 1,
                      {"fault": "answer", "reason": "Own"}, {"fault": "cut", "times": 0}, {"fault": "slow", "seconds": -1}):
            stand.process.stdin.write(json.dumps({"faults": [wrong]}) + "\n")
            stand.process.stdin.flush()
            check(stand.next()["ordered"].startswith('entry 1 of "faults" '), f"{wrong} was taken")
        stand.order({"fault": "cut", "times": 1000})
        stand.order()
        is_quick(stand, key)


def authority(program, folder):
    """It can sign for the names of the service and for no others."""
    with Stand(program, folder) as stand:
        pem = pathlib.Path(stand.authority).read_text()
        text = ssl.DER_cert_to_PEM_cert(ssl.PEM_cert_to_DER_cert(pem))
        check("PRIVATE" not in pem and pem.strip() == text.strip(), "one certificate, and no key")
        for name in ("localhost", "127.0.0.1", "api.push.apple.com", "api.sandbox.push.apple.com",
                     "api.development.push.apple.com", "::1"):
            context = ssl.create_default_context(cafile=stand.authority)
            context.wrap_socket(socket.create_connection(("127.0.0.1", stand.port)), server_hostname=name).close()


def main():
    program, key = sys.argv[1], Key()
    with tempfile.TemporaryDirectory() as name:
        for test in (oddities, floods, cuts, slowness, headers, frames, unfinished, texts, misbehaviour):
            test(program, pathlib.Path(name), key)
        authority(program, pathlib.Path(name))


main()
