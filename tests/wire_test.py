"""What crosses the wire, seen by other implementations: a TLS server and a JSON Web Encryption of Python's.

    wire_test.py TOOL

A request of `TOOL run --server` is caught and opened; one that is sealed here is understood by `TOOL serve`.
"""

import datetime
import http.client
import http.server
import json
import os
import re
import signal
import ssl
import subprocess
import sys
import tempfile
import threading
from pathlib import Path

from cryptography import x509
from cryptography.hazmat.primitives import hashes, serialization
from cryptography.hazmat.primitives.asymmetric import ec
from jwcrypto import jwe, jwk
from jwcrypto.common import base64url_encode

HOST = "push.quorvantis.com"
PATH = "/apis/api_push_v3.php"
CONTENT_KEY = jwk.JWK(kty="oct", k=base64url_encode(b"k3RtzpWQMS40218@!HVcy!KXNDPLEQ^7"))
SCENARIO = """{"do":"store","set":{"quorvantis_jsonAppPush":"a secret & = ñ"}}
{"do":"host","appHash":"h"}
{"do":"deliverToken","hex":"c0ffee"}
{"do":"settle"}
"""
BODY = "&tarea=pushlibRegistrarToken&token=c0ffee&jsonApp=a secret & = ñ&jsonDevice=(null)&jsonLibreria=(null)&jsonGeo={}"


def make_certificate(folder):
    key = ec.generate_private_key(ec.SECP256R1())
    name = x509.Name([x509.NameAttribute(x509.NameOID.COMMON_NAME, HOST)])
    now = datetime.datetime.utcnow()
    certificate = (x509.CertificateBuilder().subject_name(name).issuer_name(name).public_key(key.public_key())
                   .serial_number(x509.random_serial_number())
                   .not_valid_before(now - datetime.timedelta(hours=1))
                   .not_valid_after(now + datetime.timedelta(days=1))
                   .add_extension(x509.SubjectAlternativeName([x509.DNSName(HOST)]), False)
                   .add_extension(x509.BasicConstraints(ca=True, path_length=None), True)
                   .sign(key, hashes.SHA256()))
    pem = folder / "certificate.pem"
    pem.write_bytes(certificate.public_bytes(serialization.Encoding.PEM))
    private = folder / "key.pem"
    private.write_bytes(key.private_bytes(serialization.Encoding.PEM, serialization.PrivateFormat.PKCS8,
                                          serialization.NoEncryption()))
    return pem, private


def check(condition, what):
    if not condition:
        sys.exit(f"wire_test: {what}")


def catch_a_request(tool, folder):
    caught = []

    class Handler(http.server.BaseHTTPRequestHandler):
        protocol_version = "HTTP/1.1"

        def do_POST(self):
            caught.append((self.path, dict(self.headers), self.rfile.read(int(self.headers["Content-Length"]))))
            answer = b'{"error":"no","token":"from Python"}'
            self.send_response(200)
            self.send_header("Content-Length", str(len(answer)))
            self.end_headers()
            self.wfile.write(answer)

        def log_message(self, *_):
            pass

    pem, private = make_certificate(folder)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(pem, private)
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    server.daemon_threads = True
    server.socket = context.wrap_socket(server.socket, server_side=True)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    run = subprocess.run([tool, "run", "--server", f"127.0.0.1:{server.server_port}", "--authority", pem, "-"],
                         input=SCENARIO, capture_output=True, text=True, timeout=120,
                         env={**os.environ, "SSLKEYLOGFILE": str(folder / "secrets")})
    server.shutdown()
    check(not (folder / "secrets").exists() or not (folder / "secrets").read_bytes(), "the connection's secrets got out")
    check(run.returncode == 0, f"run ended with {run.returncode}: {run.stderr}")
    check('"argument":"from Python","event":"callback","selector":"onRegisterToken:"' in run.stdout,
          "the host was not told of the answer")
    check('"event":"received"' not in run.stdout, "a server elsewhere leaves no received events")

    check(len(caught) == 1, f"{len(caught)} requests in place of one")
    path, headers, sealed = caught[0]
    check(path == PATH, f"the path is {path}")
    check(headers["Content-Type"] == "application/jose" and headers["Host"] == HOST, f"the headers are {headers}")
    check("Accept-Encoding" not in headers and "Expect" not in headers, f"the headers are {headers}")
    check(b"c0ffee" not in sealed and b"secret" not in sealed, "the body shows on the wire")
    token = jwe.JWE(algs=["dir", "A128CBC-HS256"])
    token.deserialize(sealed.decode("ascii"), CONTENT_KEY)
    check(token.payload.decode() == BODY, f"the body is {token.payload}")


class Server:
    """`TOOL serve`, and posts to it."""

    def __init__(self, tool, folder):
        self.pem = folder / "authority.pem"
        self.process = subprocess.Popen([tool, "serve", "--port", "0", "--authority", self.pem],
                                        stdout=subprocess.PIPE, text=True)
        self.port = int(re.search(r"127\.0\.0\.1:(\d+)", self.process.stdout.readline()).group(1))

    def post(self, body, media_type):
        context = ssl.create_default_context(cafile=self.pem)
        connection = http.client.HTTPSConnection("127.0.0.1", self.port, timeout=60)
        connection.sock = context.wrap_socket(http.client.socket.create_connection(("127.0.0.1", self.port)),
                                              server_hostname=HOST)
        connection.request("POST", PATH, body, {"Content-Type": media_type})
        answer = connection.getresponse()
        return answer.status, json.loads(answer.read())

    def stop(self, with_signal):
        self.process.send_signal(with_signal)
        output, _ = self.process.communicate(timeout=60)
        check(self.process.returncode == 0, f"serve ended with {self.process.returncode} after a signal")
        return output


def send_to_serve(tool, folder):
    server = Server(tool, folder)
    sealed = jwe.JWE(BODY.encode(), '{"alg":"dir","enc":"A128CBC-HS256"}')
    sealed.add_recipient(CONTENT_KEY)
    status, answer = server.post(sealed.serialize(compact=True), "application/jose")
    check((status, answer) == (200, {"error": "no", "token": "c0ffee"}), f"serve answered {status} {answer}")
    status, answer = server.post("no.sealed.body.at.all", "application/jose")
    check(status == 400 and answer["errorDescripcion"], f"serve answered {status} {answer} to what does not open")
    in_use = subprocess.run([tool, "serve", "--port", str(server.port)], capture_output=True, text=True, timeout=60)
    check(in_use.returncode == 1 and str(server.port) in in_use.stderr, f"a port in use: {in_use}")
    output = server.stop(signal.SIGTERM)
    check("a secret & = ñ" in output and "Stopped." in output, f"serve printed {output}")
    Server(tool, folder).stop(signal.SIGINT)


def main():
    with tempfile.TemporaryDirectory() as folder:
        catch_a_request(sys.argv[1], Path(folder))
        send_to_serve(sys.argv[1], Path(folder))


main()
