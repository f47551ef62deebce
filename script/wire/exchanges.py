"""The exchanges of a class in their order, each with what the client sends and what has to come of it."""
import json
from datetime import datetime, timezone
from typing import Callable, NamedTuple, Optional

VERSION = "2.0-macOS"


class Exchange(NamedTuple):
    name: str
    # Which part of the client is given the reply: version, probe, join, heartbeat or notice.
    kind: str
    method: str
    # Appended to the base address as it stands.
    path: str
    body: Optional[dict]
    # Seconds that the client's request is given, and that the client waits for it at most; None: it does not wait.
    timeout: float
    waits: Optional[float]
    # Whether what the client showed is what this exchange is for.
    fits: Callable[[list], bool]
    wanted: str


def _contains(text):
    return lambda shown: any(text in line for line in shown)


def _without(text):
    return lambda shown: not any(text in line for line in shown)


ENDS = "[HEARTBEAT] Sessione terminata dal backend"


def version():
    return Exchange("version check", "version", "GET", f"/api/version/latest?os=macos&current={VERSION}", None, 8, None,
                    _without("[UPDATE] Check"), "the client understands it")


def probe(code):
    return Exchange("session probe", "probe", "GET", f"/api/sessions/{code.upper()}", None, 8, 10,
                    _contains("sends the join"), "the client goes on to the join")


def unknown_probe(code):
    return Exchange("probe of an unknown code", "probe", "GET", f"/api/sessions/{code.upper()}", None, 8, 10,
                    _contains("Codice sessione non trovato"), "the participant reads that there is no such session")


def ended_probe(code):
    return Exchange("probe of an ended session", "probe", "GET", f"/api/sessions/{code.upper()}", None, 8, 10,
                    _contains("Questa sessione è già terminata"), "the participant reads that the session is over")


def join(code, name, email):
    body = {"fullName": name, "email": email, "platform": "darwin", "clientVersion": VERSION}
    return Exchange("join", "join", "POST", f"/api/sessions/{code.upper()}/join", body, 8, 10,
                    _contains("[SESSION] Join OK"), "the client has joined")


def _heartbeat_body(code, token, violations, leaving):
    now = datetime.now(timezone.utc).strftime("%Y-%m-%dT%H:%M:%SZ")
    records = [{"type": kind, "detail": detail, "at": now} for kind, detail in violations]
    return {"sessionCode": code, "userToken": token, "timestamp": now, "platform": "darwin", "clientVersion": VERSION,
            "lockdownActive": not leaving, "meetConnected": not leaving, "violations": records, "disconnecting": leaving}


def heartbeat(name, code, token, violations=()):
    return Exchange(name, "heartbeat", "POST", "/api/heartbeat", _heartbeat_body(code, token, violations, False), 10,
                    None, _without(ENDS), "the session goes on")


def notice(code, token):
    return Exchange("disconnect notice", "notice", "POST", "/api/heartbeat", _heartbeat_body(code, token, (), True), 5,
                    5, _contains("[HEARTBEAT] Disconnessione inviata"), "the client takes its leave")


def encoded(body):
    return None if body is None else json.dumps(body, ensure_ascii=False, separators=(",", ":")).encode()
