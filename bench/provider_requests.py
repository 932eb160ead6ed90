#!/usr/bin/python3
"""provider_requests.py PROGRAM [--brief]: requests a second through h2load, with one silent payload, and what nghttpd does in the
same run with the same requests and an empty file, both on one connection, on 10 and on 100. Prints two figures a line: ours and nghttpd's."""

import base64
import json
import os
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile
import time

TOPIC, TOKEN = "com.example.app", "00fc13ad" * 8
PATH = "3/device/" + TOKEN
PAYLOAD = {"aps": {"content-available": 1, "extra1": "value"}}
BRIEF = "--brief" in sys.argv[2:]
STREAMS = 100
REQUESTS, ROUNDS = (200, 1) if BRIEF else (30000, 5)
CONNECTIONS = (1, 10, 100)


def part(value):
    return base64.urlsafe_b64encode(value).rstrip(b"=").decode()


def provider_token():
    """Of the right form; nobody looks at the signature without a key."""
    header, claims = {"alg": "ES256", "kid": "ABC123DEFG"}, {"iss": "DEF123GHIJ", "iat": int(time.time())}
    return ".".join(part(piece) for piece in (json.dumps(header).encode(), json.dumps(claims).encode(), bytes(64)))


def load(url, connections, *words):
    """Requests a second, all answered 200."""
    done = subprocess.run(["h2load", f"-n{REQUESTS}", f"-c{connections}", f"-m{STREAMS}", "-t1", *words, url],
                          capture_output=True, text=True, check=True).stdout
    if f"{REQUESTS} 2xx" not in done:
        raise SystemExit(f"not all requests were answered 200:\n{done}")
    return float(re.search(r"([\d.]+) req/s", done)[1])


def nghttpd(folder):
    file = pathlib.Path(folder, PATH)
    file.parent.mkdir(parents=True)
    file.touch()
    key, certificate = f"{folder}/key.pem", f"{folder}/certificate.pem"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-keyout",
                    key, "-out", certificate, "-subj", "/CN=localhost"], check=True, capture_output=True)
    port = 20000 + os.getpid() % 20000
    server = subprocess.Popen(["nghttpd", "--address=127.0.0.1", f"--htdocs={folder}", str(port), key, certificate],
                              stdout=subprocess.DEVNULL)
    time.sleep(0.5)
    return server, f"https://127.0.0.1:{port}/{PATH}"


def main():
    with tempfile.TemporaryDirectory() as folder:
        payload = pathlib.Path(folder, "payload.json")
        payload.write_text(json.dumps(PAYLOAD))
        service = subprocess.Popen([sys.argv[1], TOPIC, TOKEN], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        url = f"https://127.0.0.1:{service.stdout.readline().strip()}/{PATH}"
        words = ("-d", str(payload), "-H", f"authorization: bearer {provider_token()}", "-H", f"apns-topic: {TOPIC}",
                 "-H", "apns-push-type: background", "-H", "apns-priority: 5")
        other, file = nghttpd(folder)
        try:
            for connections in CONNECTIONS:
                rounds = [(load(url, connections, *words), load(file, connections, *words)) for _ in range(ROUNDS)]
                service_rate, nghttpd_rate = (statistics.median(rates) for rates in zip(*rounds))
                print(f"{service_rate:.0f} requests a second on {connections} connections")
                print(f"{nghttpd_rate:.0f} nghttpd's requests a second on {connections} connections")
        finally:
            other.terminate()
            handled, _ = service.communicate("")
        if int(handled) != REQUESTS * ROUNDS * len(CONNECTIONS):
            raise SystemExit(f"the library handled {handled.strip()} notifications")


main()
