"""Sends one request as the client does and follows redirects as its platform does."""
import http.client
import ssl
import time
import urllib.parse
from typing import NamedTuple, Optional

REDIRECTS = 16
# Bytes of a reply that are read. No reply of the interface needs more.
LONGEST = 1 << 20


class Answer(NamedTuple):
    """What came back. Without a reply `error` says why, and there is nothing else but the seconds."""
    status: Optional[int]
    content_type: str
    body: bytes
    seconds: float
    # METHOD ADDRESS of each redirect that was followed.
    redirects: list
    error: str
    timed_out: bool


class TooLong(Exception):
    pass


def _one(method, address, body, seconds):
    """Status, headers and body of one request without following anything."""
    parts = urllib.parse.urlsplit(address)
    kind = http.client.HTTPSConnection if parts.scheme == "https" else http.client.HTTPConnection
    connection = kind(parts.netloc.rpartition("@")[2], timeout=seconds)
    # From the authority to the fragment, as it stands.
    target = address.split("://", 1)[1].partition("#")[0].removeprefix(parts.netloc)
    if not target.startswith("/"):
        target = "/" + target
    headers = {"Accept-Encoding": "identity"}
    if body is not None:
        headers["Content-Type"] = "application/json"
    try:
        connection.request(method, target, body, headers)
        reply = connection.getresponse()
        text = reply.read(LONGEST + 1)
        if len(text) > LONGEST:
            raise TooLong(f"the body has more than {LONGEST} bytes")
        return reply.status, reply.headers, text
    finally:
        connection.close()


def ask(method, address, body, seconds):
    """`seconds`: how long the client waits for the next byte."""
    begin = time.monotonic()
    redirects = []

    def answer(status=None, content_type="", text=b"", error="", timed_out=False):
        return Answer(status, content_type, text, time.monotonic() - begin, redirects, error, timed_out)

    try:
        while True:
            status, headers, text = _one(method, address, body, seconds)
            location = headers.get("Location")
            if status not in (301, 302, 303, 307, 308) or location is None:
                return answer(status, headers.get("Content-Type") or "", text)
            if len(redirects) == REDIRECTS:
                return answer(error=f"more than {REDIRECTS} redirects")
            if status <= 303 and method == "POST":
                method, body = "GET", None
            address = urllib.parse.urljoin(address, location)
            if urllib.parse.urlsplit(address).scheme not in ("http", "https"):
                return answer(error=f"a redirect to {address}")
            redirects.append(f"{method} {address}")
    except TimeoutError:
        return answer(error=f"nothing came for {seconds} seconds", timed_out=True)
    except (OSError, ssl.SSLError, http.client.HTTPException, UnicodeError, TooLong) as error:
        return answer(error=str(error) or type(error).__name__)
