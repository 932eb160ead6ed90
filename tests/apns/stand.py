"""The program `stand`, provider tokens for it, and an HTTP/2 client whose every frame can be chosen."""

import json
import queue
import socket
import ssl
import subprocess
import threading
import time

import h2.config
import h2.connection
import h2.events
import jwt
from cryptography.hazmat.primitives import serialization
from cryptography.hazmat.primitives.asymmetric import ec

TOPIC = "com.example.app"
TOKEN = "00fc13adff785122b4ad28809a3420982341241421348097878e577c991de8f0"
OLD_TOKEN = "ff" * 32
OLD_TOKEN_ENDED = 1700000000123
KEY_ID = "ABC123DEFG"
TEAM = "DEF123GHIJ"
PATIENCE = 60


def check(holds, otherwise):
    if not holds:
        raise AssertionError(otherwise)


class Key:
    """A provider's key on P-256."""

    def __init__(self):
        self.key = ec.generate_private_key(ec.SECP256R1())
        self.private = self.key.private_bytes(serialization.Encoding.PEM, serialization.PrivateFormat.PKCS8,
                                              serialization.NoEncryption()).decode()
        self.public = self.key.public_key().public_bytes(
            serialization.Encoding.PEM, serialization.PublicFormat.SubjectPublicKeyInfo).decode()

    def token(self, age=0, kid=KEY_ID, team=TEAM, algorithm="ES256", key=None, crit=None, **claims):
        return jwt.encode({"iss": team, "iat": int(time.time()) - age} | claims, key or self.private,
                          algorithm=algorithm, headers={"kid": kid} | ({"crit": crit} if crit else {}))


class Stand:
    def __init__(self, program, folder, **options):
        self.authority = str(folder / "authority.pem")
        words = [f"{name}={value}" for name, value in options.items()]
        self.process = subprocess.Popen([program, self.authority, TOPIC, TOKEN, OLD_TOKEN, *words], text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.lines = queue.Queue()
        self.port = json.loads(self.process.stdout.readline())["port"]
        self.reader = threading.Thread(target=self._read)
        self.reader.start()

    def _read(self):
        for line in self.process.stdout:
            self.lines.put(json.loads(line))

    def next(self):
        return self.lines.get(timeout=PATIENCE)

    def order(self, *faults):
        """Gives what came before."""
        lines = []
        self.process.stdin.write(json.dumps({"faults": faults}) + "\n")
        self.process.stdin.flush()
        while "ordered" not in (line := self.next()):
            lines.append(line)
        check(line["ordered"] == "", f"{faults}: {line}")
        return lines

    def memory(self):
        """Bytes that are its own now."""
        with open(f"/proc/{self.process.pid}/statm", encoding="ascii") as statm:
            return int(statm.read().split()[1]) * 4096

    def stop(self):
        """Gives what came and was not asked for."""
        self.process.stdin.close()
        check(self.process.wait(PATIENCE) == 0, f"the service ended with {self.process.returncode}")
        self.reader.join()
        lines = []
        while not self.lines.empty():
            lines.append(self.lines.get())
        return lines

    def __enter__(self):
        return self

    def __exit__(self, *failure):
        if self.process.poll() is None:
            self.process.stdin.close()
            self.process.wait(PATIENCE)
            self.reader.join()


class Client:
    """One connection. Without ALPN unless it is asked for."""

    def __init__(self, stand, token, protocols=(), small_buffer=False):
        context = ssl.create_default_context(cafile=stand.authority)
        if protocols:
            context.set_alpn_protocols(protocols)
        plain = socket.socket()
        if small_buffer:
            plain.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 4096)
        plain.settimeout(PATIENCE)
        plain.connect(("127.0.0.1", stand.port))
        plain.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self.wire = context.wrap_socket(plain, suppress_ragged_eofs=False, server_hostname="api.push.apple.com")
        self.token = token
        self.http = h2.connection.H2Connection(
            h2.config.H2Configuration(header_encoding="utf-8", validate_outbound_headers=False,
                                      normalize_outbound_headers=False))
        self.http.initiate_connection()
        self.answers = {}  # stream: (headers, body)
        self.events = []
        self.closed = self.is_cut = False
        self.flush()

    def flush(self):
        try:
            self.wire.sendall(self.http.data_to_send())
        except (BrokenPipeError, ConnectionResetError, ssl.SSLEOFError):
            self.is_cut = True  # `read` finds the end

    def headers(self, **changed):
        fields = {":method": "POST", ":scheme": "https", ":path": "/3/device/" + TOKEN, "host": "api.push.apple.com",
                  "authorization": "bearer " + self.token, "apns-topic": TOPIC}
        fields |= {name.replace("__", ":").replace("_", "-"): value for name, value in changed.items()}
        return sorted(((name, value) for name, value in fields.items() if value is not None),
                      key=lambda field: not field[0].startswith(":"))

    def begin(self, headers=None, ended=False):
        stream = self.http.get_next_available_stream_id()
        self.http.send_headers(stream, headers or self.headers(), end_stream=ended)
        return stream

    def post(self, body=b'{"aps":{"alert":{"body":"b"}}}', **headers):
        """Queues a request; `flush` sends it."""
        stream = self.begin(self.headers(**headers), ended=not body)
        if body:
            self.http.send_data(stream, body, end_stream=True)
        return stream

    def read(self):
        """Handles what comes next; False at the end of the connection."""
        try:
            bytes_read = self.wire.recv(65536)
        except ssl.SSLZeroReturnError:
            bytes_read = b""
        except (ConnectionResetError, ssl.SSLError) as error:
            # Python's version decides which class of error an end without a farewell is.
            if getattr(error, "reason", None) not in (None, "UNEXPECTED_EOF_WHILE_READING"):
                raise
            bytes_read, self.is_cut = b"", True
        if not bytes_read:
            self.closed = True
            return False
        for event in self.http.receive_data(bytes_read):
            self.events.append(event)
            stream = getattr(event, "stream_id", None)
            if isinstance(event, h2.events.ResponseReceived):
                self.answers[stream] = [dict(event.headers), b"", [event]]
            elif isinstance(event, h2.events.DataReceived):
                self.answers[stream][1] += event.data
                self.answers[stream][2].append(event)
                self.http.acknowledge_received_data(event.flow_controlled_length, stream)
            elif isinstance(event, h2.events.StreamEnded):
                self.answers[stream].append("ended")
        self.flush()
        return True

    def answer(self, stream):
        """(status, reason, headers) of a request that was sent, or None when the connection ended before."""
        while len(self.answers.get(stream, ())) < 4:
            if not self.read():
                return None
        headers, body = self.answers[stream][:2]
        return int(headers[":status"]), json.loads(body)["reason"] if body else "", headers

    def exchange(self, *arguments, **headers):
        stream = self.post(*arguments, **headers)
        self.flush()
        return self.answer(stream)

    def until_end(self):
        """The reason of the GOAWAY that came, once the connection has ended."""
        while self.read():
            pass
        away = [event for event in self.events if isinstance(event, h2.events.ConnectionTerminated)]
        return json.loads(away[-1].additional_data)["reason"] if away and away[-1].additional_data else None

    def close(self):
        self.wire.close()
