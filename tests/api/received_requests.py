"""The requests that the practice server received, to be checked against the page."""
import base64

from server_api import Request

# The headers that URL loading adds by itself.
TRANSPORT_HEADERS = {
    "host", "connection", "content-length", "user-agent", "accept", "accept-encoding", "accept-language", "priority",
}


def is_the_browsers(exchange):
    """A browser, not the client, opens the meeting's page."""
    return exchange["method"] == "GET" and exchange["path"].startswith("/meet/")


def request_of(exchange):
    if "bodyBase64" in exchange:
        body = base64.b64decode(exchange["bodyBase64"])
    else:
        body = exchange["body"].encode()
    headers = [(name, value) for name, value in exchange["headers"] if name.lower() not in TRANSPORT_HEADERS]
    return Request(exchange["method"], exchange["path"], headers, body)
