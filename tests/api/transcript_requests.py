"""The requests in a rehearsal's transcript, to be checked against the page. docs/rehearsals.md describes the format."""
import re
from typing import NamedTuple

from server_api import Request

ENTRY = re.compile(r" *\d+\.\d{3}  (.{11})  (.*)")
FURTHER = re.compile(r" {24}\|(?: (.*))?")
HEADER = re.compile(r"([A-Za-z0-9-]+): (.*)")
CUT = re.compile(r"… \(\d+ bytes\)$")
# The version check's server while no address has been entered.
DEFAULT_SERVER = "https://server.vantrel.example"


class Found(NamedTuple):
    # Counted from 1.
    line: int
    address: str
    # Without its base address. None if the address belongs to no server that the client knows.
    request: Request | None
    # The transcript contains only the beginning of a body.
    is_cut: bool


def requests(text, bases=()):
    """Every request of the client, in order. Requests that follow a redirect are the platform's and left out. `bases`
    are the addresses that the client knows before."""
    found, bases = [], set(bases)
    for line, kind, lines in entries(text):
        bases |= _bases(kind, lines)
        if kind == "request":
            found.append(_found(line, lines, bases or {DEFAULT_SERVER}))
    return found


def bases(text):
    """The addresses of servers that the client knows in the end."""
    return set().union(*(_bases(kind, lines) for _, kind, lines in entries(text)))


def prelude(text):
    """What the transcript begins with, preludes/NAME, or None."""
    _, kind, lines = next(entries(text), (0, "", [""]))
    return lines[0] if kind == "prelude" else None


def _bases(kind, lines):
    typed = re.fullmatch(r'(?:serverUrlField: |types into serverUrlField: |vt_serverURL = )"(.*)"', lines[0])
    return {typed[1].removesuffix("/")} if kind in ("text", "participant", "setting") and typed else set()


def entries(text):
    """(line, kind, lines) of each entry, lines counted from 1."""
    entry = None
    for number, line in enumerate(text.splitlines(), 1):
        further = FURTHER.fullmatch(line)
        if further:
            entry[2].append(further[1] or "")
            continue
        if entry:
            yield entry
        match = ENTRY.fullmatch(line)
        if not match:
            raise ValueError(f"line {number} is no line of a transcript: {line!r}")
        entry = (number, match[1].strip(), [match[2]])
    if entry:
        yield entry


def _found(line, lines, bases):
    method, _, address = lines[0].partition(" ")
    headers, rest = [], lines[1:]
    while rest and HEADER.fullmatch(rest[0]):
        headers.append(HEADER.fullmatch(rest.pop(0)).groups())
    body = "\n".join(rest)
    base = next((base for base in bases if address.startswith(base + "/api/")), None)
    request = None if base is None else Request(method, address.removeprefix(base), headers, body.encode())
    return Found(line, address, request, bool(CUT.search(body)))
