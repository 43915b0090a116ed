"""A service that answers as it is told to: well, badly, or not at all.

A behaviour is a function of an exchange, and does all that happens to that request."""

import json
import socket
import socketserver
import ssl
import struct
import subprocess
import threading
import time

TLS_NAMES = "DNS:acme.orvane.localhost,DNS:www.orvane.localhost"
LINK = "https://acme.orvane.localhost/review/7"


def success(payload):
    return json.dumps({"root": {"status": "success", "payload": payload}})


GOOD = {
    "key": json.dumps({"root": {"status": "success", "apiver": "3", "auth_key": "key"}}),
    "token": success({"token": "token"}),
    "projects": success([{"id": "1", "project_name": "Feature"}]),
    "top": success([{"id": "10", "name": "A", "sub_folders": 1}]),
    "folders": success([{"id": "11", "name": "B", "sub_folders": 0}]),
    "chosen": success([]),
    "upload": success({"link": LINK}),
    "version": "1.1",
}


class Exchange:
    """A request whose head has come, and the way to answer it."""

    def __init__(self, server, connection, rest):
        self.server, self.connection, self._rest = server, connection, rest
        head = self._until(b"\r\n\r\n")
        line, *fields = head.decode("latin-1").split("\r\n")
        self.method, self.path = line.split(" ")[:2]
        headers = {name.lower(): value.strip() for name, _, value in (field.partition(":") for field in fields)}
        self.length, self._expects = int(headers.get("content-length", 0)), "expect" in headers
        self.received = 0  # of the body

    def _until(self, end):
        while end not in self._rest:
            self._receive()
        head, self._rest = self._rest.split(end, 1)
        return head

    def _receive(self):
        more = self.connection.recv(65536)
        if not more:
            raise ConnectionError("the client has gone")
        self._rest += more

    def body(self, share=1.0):
        """Reads so much of the body, and returns it."""
        if self._expects:
            self.send(b"HTTP/1.1 100 Continue\r\n\r\n")
        while len(self._rest) < int(self.length * share):
            self._receive()
        body, self._rest = self._rest[:self.length], self._rest[self.length:]
        self.received = len(body)
        return body

    def send(self, data):
        self.connection.sendall(data)

    def answer(self, body, status=200, headers=()):
        body = body.encode() if isinstance(body, str) else body
        lines = [f"HTTP/1.1 {status} X", f"Content-Length: {len(body)}", *headers, "", ""]
        self.send("\r\n".join(lines).encode() + body)

    def close(self, reset=False):
        if reset:
            self.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
            self.connection.close()
        raise ConnectionError("closed as wanted")


class Handler(socketserver.BaseRequestHandler):
    def handle(self):
        try:
            # TLS begins with its record of a handshake. What begins otherwise is not encrypted, and served as well.
            if self.request.recv(1, socket.MSG_PEEK) == b"\x16":
                self.request = self.server.context.wrap_socket(self.request, server_side=True)
            with self.request as connection:
                rest = b""
                while True:
                    exchange = Exchange(self.server, connection, rest)
                    self.server.conduct(exchange)
                    rest = exchange._rest
        except (OSError, ValueError):
            pass  # the client went away, or was sent away


class Service(socketserver.ThreadingTCPServer):
    """Listens from construction until close(). asked: the requests, as pairs of a kind and a path. stored: how many
    uploads came whole. unencrypted: the requests that came without TLS, as pairs of a kind and whether they had a body.
    interrupted: a file that is there once the person has done what happens meanwhile."""

    daemon_threads = True
    request_queue_size = 50

    def __init__(self, certificate, behaviours, interrupted):
        super().__init__(("127.0.0.1", 0), Handler)
        self.context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        self.context.load_cert_chain(f"{certificate}.pem", f"{certificate}.key")
        self.behaviours, self.asked, self.stored, self.ending = behaviours, [], 0, threading.Event()
        self.unencrypted = []
        self.port, self.interrupted = self.server_address[1], interrupted
        threading.Thread(target=self.serve_forever, args=(0.05,), daemon=True).start()

    def close(self):
        self.ending.set()
        self.shutdown()
        self.server_close()

    def conduct(self, exchange):
        kind = self._kind(exchange)
        self.asked.append((kind, exchange.path[:200]))
        behave = self.behaviours.get(kind)
        if not behave or exchange.path.startswith("/moved/"):
            def behave(exchange):
                exchange.answer(GOOD[kind])
        if kind == "upload" and exchange.method == "POST" and not getattr(behave, "reads_itself", False):
            self.stored += b'name="Filedata"' in exchange.body()
        if not isinstance(exchange.connection, ssl.SSLSocket):
            self.unencrypted.append((kind, exchange.received > 0))
        behave(exchange)

    def _kind(self, exchange):
        if exchange.path.startswith("/moved/"):
            kind = exchange.path.split("/")[2]
            if kind != "upload":
                exchange.body()
            return kind
        if "/upload_file/" in exchange.path:
            return "upload"
        body = exchange.body()
        if "/get_folders/" in exchange.path:
            if b"folder_id=" in body:
                return "folders"
            # The second one after a list of projects is for the folder that was chosen.
            last = next(kind for kind, _ in reversed(self.asked) if kind in ("top", "projects"))
            return "chosen" if last == "top" else "top"
        if "version.txt" in exchange.path:
            return "version"
        if "get_project_list" in exchange.path:
            return "projects"
        return "key" if exchange.method == "GET" else "token"


def make_certificates(folder):
    """Makes an authority (ca.pem), the certificate of a good service (good.pem, good.key) and bad ones."""
    def openssl(*words):
        subprocess.run(["openssl", *words], cwd=folder, check=True, capture_output=True)

    key = ["-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes"]
    names = {"good": TLS_NAMES, "wrong-name": "DNS:elsewhere.orvane.localhost"}
    times = {"expired": ("20200101000000Z", "20200201000000Z"), "not-yet-valid": ("20900101000000Z", "20910101000000Z")}
    for authority in ("ca", "other-ca"):
        openssl("req", "-x509", *key, "-keyout", f"{authority}.key", "-out", f"{authority}.pem", "-subj",
                f"/CN={authority}", "-days", "2")
    openssl("req", "-x509", *key, "-keyout", "self-signed.key", "-out", "self-signed.pem", "-subj", "/CN=self",
            "-days", "2", "-addext", f"subjectAltName={TLS_NAMES}")
    (folder / "index.txt").touch()
    (folder / "ca.cnf").write_text("[ca]\ndefault_ca=d\n[d]\ndatabase=index.txt\nnew_certs_dir=.\nrand_serial=yes\n"
                                   "default_md=sha256\npolicy=p\nunique_subject=no\n[p]\ncommonName=supplied\n")
    yesterday = time.strftime("%Y%m%d000000Z", time.gmtime(time.time() - 86400))
    for name in ("good", "wrong-name", "expired", "not-yet-valid", "wrong-purpose", "unknown-authority"):
        purpose = "clientAuth" if name == "wrong-purpose" else "serverAuth"
        (folder / "ext").write_text(f"subjectAltName={names.get(name, TLS_NAMES)}\nextendedKeyUsage={purpose}\n")
        start, end = times.get(name, (yesterday, "20891231000000Z"))
        openssl("req", "-new", *key, "-keyout", f"{name}.key", "-out", f"{name}.csr", "-subj", f"/CN={name}")
        authority = "other-ca" if name == "unknown-authority" else "ca"
        openssl("ca", "-batch", "-notext", "-config", "ca.cnf", "-cert", f"{authority}.pem", "-keyfile",
                f"{authority}.key", "-in", f"{name}.csr", "-out", f"{name}.pem", "-startdate", start, "-enddate", end,
                "-extfile", "ext")
