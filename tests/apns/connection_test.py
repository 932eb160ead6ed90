#!/usr/bin/python3
"""connection_test.py STAND: what a connection must stand: odd clients, many requests, slow, broken and idle ones."""

import itertools
import json
import pathlib
import socket
import ssl
import sys
import tempfile
import threading
import uuid

import h2.events
from stand import PATIENCE, TOKEN, TOPIC, Client, Key, Stand, check

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
        sent = [client.post(numbered(number)) for number in range(1000)]
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
    with Stand(program, folder) as stand:
        client = Client(stand, key.token())
        for extra, expected in (([("apns-priority", "10")] * 10000, (400, "DuplicateHeaders")),
                                ([(f"x-{number}", "y") for number in range(10000)], (431, "RequestHeaderFieldsTooLarge")),
                                ([(f"x-{number}", "y") for number in range(500)], (200, ""))):
            client = Client(stand, key.token())
            stream = client.begin(client.headers() + extra)
            client.http.send_data(stream, GOOD, end_stream=True)
            client.flush()
            found = client.answer(stream)
            check(found and found[:2] == expected, f"{expected}: {found}")
            is_quick(stand, key)
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
        for test in (oddities, floods, cuts, slowness, headers, misbehaviour):
            test(program, pathlib.Path(name), key)
        authority(program, pathlib.Path(name))


main()
