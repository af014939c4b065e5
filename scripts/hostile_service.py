"""A service of ill will. It stands between the client and the demo service, counts every request and, as an ordeal wants it,
passes it on or spoils the answer."""

import http.client
import http.server
import json
import threading
import time
import urllib.parse
import zlib

JSON = "Content-Type: application/json; charset=utf-8\r\n"


class HostileService:
    """On that port of loopback. `spoil` gets the name of an endpoint ("live", "tiles") and gives the function that answers
    in place of the demo service; or nothing."""

    def __init__(self, port, demo_port):
        self.demo_port = demo_port
        self.requests = []  # (moment, endpoint, Authorization)
        self.changed = 0  # answers of the demo service that were passed on otherwise than they came
        self.healed = threading.Event()
        self.heal()
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", int(port)), Handler)
        self.server.daemon_threads = True
        self.server.service = self
        self.port = self.server.server_address[1]
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def spoil_with(self, answer, *endpoints):
        """Every answer of those endpoints; without any, all but the tiles and the sign-in."""
        wanted = endpoints or ("vehicles", "live", "map", "route", "info", "user")
        self.healed.clear()
        self.spoil = lambda endpoint: answer if endpoint in wanted else None

    def heal(self):
        self.spoil = lambda endpoint: None
        self.healed.set()

    def count(self, endpoint=None, since=0.0):
        """Requests of that endpoint, or of all but the tiles."""
        return sum(moment >= since and (name == endpoint if endpoint else name != "tiles")
                   for moment, name, _ in self.requests)


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    timeout = 300

    def handle(self):
        try:
            super().handle()
        except OSError:  # the client ends as it likes
            pass

    def do_GET(self):
        service = self.server.service
        self.body = self.rfile.read(int(self.headers.get("Content-Length") or 0))
        endpoint = urllib.parse.urlsplit(self.path).path.split("/")[1]
        service.requests.append((time.monotonic(), endpoint, self.headers.get("Authorization")))
        answer = service.spoil(endpoint)
        try:
            if answer:
                self.close_connection = True
                answer(self)
            else:
                self.pass_on()
        except (OSError, http.client.HTTPException):  # the client has gone, or the demo service cut its answer short
            self.close_connection = True

    do_POST = do_GET

    def pass_on(self, change=None):
        demo = http.client.HTTPConnection("127.0.0.1", self.server.service.demo_port, timeout=60)
        try:
            plain = {"Accept-Encoding": "identity"} if change else {}
            demo.request(self.command, self.path, self.body, dict(self.headers) | plain)
            answer = demo.getresponse()
            self.wfile.write(f"HTTP/1.1 {answer.status} {answer.reason}\r\n".encode())
            body, headers = answer.read(), answer.getheaders()
            if change:
                body = change(body)
                headers = [("Content-Type", "application/json; charset=utf-8"), ("Content-Length", len(body))]
            self.write("".join(f"{name}: {value}\r\n" for name, value in headers) + "\r\n")
            self.write(body)
            self.server.service.changed += change is not None
        finally:
            demo.close()

    def write(self, text):
        self.wfile.write(text.encode() if isinstance(text, str) else text)

    def log_message(self, *_):
        pass


def trickle(handler):
    """A byte a second."""
    handler.write(f"HTTP/1.1 200 OK\r\n{JSON}Content-Length: 100000\r\n\r\n")
    while not handler.server.service.healed.wait(1):
        handler.write(" ")


def status(code, after=0.0):
    def answer(handler):
        time.sleep(after)
        handler.write(f"HTTP/1.1 {code} Spoiled\r\n{JSON}Content-Length: 2\r\n\r\n{{}}")
    return answer


def redirect(to):
    def answer(handler):
        handler.write(f"HTTP/1.1 302 Found\r\nLocation: {to(handler) if callable(to) else to}\r\nContent-Length: 0\r\n\r\n")
    return answer


def with_total(total):
    """The demo service's list, with that in place of its total; or without any."""
    def change(body):
        answer = json.loads(body)
        answer.pop("total")
        if total is not None:
            answer["total"] = total
        return json.dumps(answer).encode()
    return lambda handler: handler.pass_on(change)


def packed_zeros(times, block=1 << 20):
    """A gzip body of that many blocks of zeros, without its end."""
    packer = zlib.compressobj(9, zlib.DEFLATED, 31)
    first = packer.compress(bytes(block)) + packer.flush(zlib.Z_FULL_FLUSH)
    other = packer.compress(bytes(block)) + packer.flush(zlib.Z_FULL_FLUSH)
    return first + other * (times - 1)


BOMB = packed_zeros(10_000)


def bomb(handler):
    """10 MB that unpack to 10 GB."""
    handler.write(f"HTTP/1.1 200 OK\r\n{JSON}Content-Encoding: gzip\r\nContent-Length: {len(BOMB)}\r\n\r\n")
    handler.write(BOMB)


def endless(head, part):
    """Sends the part again and again, as fast as it is taken."""
    def answer(handler):
        handler.write(f"HTTP/1.1 200 OK\r\n{JSON}{head}")
        while not handler.server.service.healed.is_set():
            handler.write(part)
    return answer


FLOODS = {
    "body": endless("Transfer-Encoding: chunked\r\n\r\n", b"10000\r\n" + b" " * 65536 + b"\r\n"),
    "head": endless("", b"X-More: " + b"x" * 4000 + b"\r\n"),
    "chunk extension": endless("Transfer-Encoding: chunked\r\n\r\n1;", b"x" * 65536),
    "list": endless("Transfer-Encoding: chunked\r\n\r\n", b"10000\r\n" + b"[" * 65536 + b"\r\n"),
    "4 GiB announced": endless(f"Content-Length: {4 << 30}\r\n\r\n", b" " * 65536),
}
