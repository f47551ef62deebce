"""The page about privacy has every field that the client sends, every setting that it saves and every part of the computer
that it uses, and no other."""
import functools
import json
import re
import urllib.parse

import pages
import transcripts

from transcript_requests import CUT, HEADER

PAGE = "docs/privacy.md"
# The page's headings by the exchange's path and method.
EXCHANGES = {
    ("GET", r"/api/version/latest"): "Controllo della versione",
    ("GET", r"/api/sessions/(?P<code>[^/]*)"): "Domanda sul codice",
    ("POST", r"/api/sessions/(?P<code>[^/]*)/join"): "Ingresso",
    ("POST", r"/api/heartbeat"): "Heartbeat e avviso finale",
}
# Apple's names for what the page says is not read or used.
NOT_USED = re.compile(r"\b(AVCapture(?!Device\b)\w+|AVAudio\w+|CG(?:Window|Display)\w*CreateImage\w*|SCStream\w*|"
                      r"SCScreenshot\w*|NSPasteboard|CLLocation\w*|CNContact\w*)\b")
# These carry a participant's name, address or token.
PERSONAL = {"fullName", "email", "userToken"}


def requests():
    """(path of the transcript, method, address, names of headers, body) of each request."""
    for path, kind, text in transcripts.entries():
        if kind != "request":
            continue
        first, *rest = text.split("\n")
        headers = []
        while rest and HEADER.fullmatch(rest[0]):
            headers.append(HEADER.fullmatch(rest.pop(0))[1])
        yield path, *first.split(" ", 1), headers, "\n".join(rest)


def names_within(value, place=""):
    for name, member in value.items():
        yield place + name
        for item in member if isinstance(member, list) else []:
            yield from names_within(item, f"{place}{name}.")


def fields_of(method, address, body):
    """The heading of the exchange, and the names of what it carries."""
    path, _, query = address.partition("?")
    for (wanted, template), heading in EXCHANGES.items():
        found = method == wanted and re.search(template + "$", path)
        if found:
            names = set(found.groupdict()) | {name for name, _ in urllib.parse.parse_qsl(query, True)}
            return heading, names | set(names_within(json.loads(body)) if body else [])
    return None, set()


@functools.cache
def sent():
    """The fields by the page's heading, and addresses that belong to no exchange."""
    fields = {heading: set() for heading in [*EXCHANGES.values(), "Intestazioni"]}
    foreign = set()
    for _, method, address, headers, body in requests():
        if CUT.search(body):
            continue
        heading, names = fields_of(method, address, body)
        if heading is None:
            foreign.add(address)
        else:
            fields[heading] |= names
            fields["Intestazioni"] |= set(headers)
    return fields, foreign


def check_sent(page):
    fields, foreign = sent()
    wrong = "".join(pages.sets_differ(heading, set(pages.first_cells(page, heading)), names)
                    for heading, names in fields.items())
    return wrong + "".join(f"{address} belongs to no exchange of the page\n" for address in sorted(foreign))


def check_saved(page):
    saved = {text.partition(" = ")[0] for text in transcripts.texts("setting")}
    return pages.sets_differ("saved", set(pages.first_cells(page, "Che cosa viene salvato")), saved)


def check_read(page):
    rows = [line for line in pages.section(page, "Che cosa viene letto").splitlines() if line.startswith("|")][2:]
    named = [name for row in rows for name in re.findall(r"`(\w+)`", row.split("|")[3])]
    header = pages.read("src/platform/Computer.h")
    members = set(re.findall(r"^    \w+& (\w+);$", header, re.MULTILINE))
    twice = {name for name in named if named.count(name) > 1}
    return pages.sets_differ("read", set(named), members) + "".join(f"{name} stands there twice\n" for name in twice)


def personal_values():
    """What the client sent of a person, by transcript, where it says something."""
    values = {}
    for path, _, _, _, body in requests():
        if body and not CUT.search(body):
            found = json.loads(body)
            values.setdefault(path, set()).update(found[name] for name in PERSONAL if len(found.get(name, "")) > 2)
    return values


def nothing_personal_is_logged(entries):
    values, wrong = personal_values(), ""
    if not any(values.values()):
        return "no transcript sends a name\n"
    for path, kind, text in entries:
        for value in values.get(path, ()):
            if kind == "log" and value in text:
                wrong += f"{path.name}: {value!r} is logged: {text}\n"
    return wrong


def what_the_page_denies(sources):
    return "".join(f"{name} uses {word}\n" for name, text in sources for word in NOT_USED.findall(text))


def mac_sources():
    return [(path.name, path.read_text(encoding="utf-8")) for path in sorted((pages.ROOT / "src").rglob("*"))
            if path.suffix in (".h", ".mm", ".cpp")]


def objects():
    page, wrong = pages.read(PAGE), ""
    checks = [check_sent, check_saved, check_read]
    if any(check(page) for check in checks):
        return "the page itself is wrong\n"
    for heading in [*EXCHANGES.values(), "Intestazioni", "Che cosa viene salvato"]:
        begin = page.index(f"# {heading}\n")
        for row in pages.first_cells(page, heading):
            line = next(line for line in page[begin:].splitlines() if line.startswith(f"| `{row}` |"))
            for what, other in (("missing", ""), ("added", f"{line}\n| `{row}More` | |\n")):
                bent = page[:begin] + page[begin:].replace(line + "\n", other, 1)
                if not any(check(bent) for check in checks):
                    wrong += f"{row!r} is {what} and nothing is said\n"
    for old, new in (("`keyboardTaps`", "``"), ("`spaces`", "`spaces`, `contacts`"), ("`log`", "`log`, `json`")):
        if not check_read(page.replace(old, new, 1)):
            wrong += f"{old} becomes {new} and nothing is said\n"
    path = next(path for path, kind, text in transcripts.entries() if kind == "request" and '"fullName"' in text)
    name = next(iter(personal_values()[path]))
    if not nothing_personal_is_logged([(path, "log", f"[SESSION] {name}")]):
        wrong += "a name is logged and nothing is said\n"
    if what_the_page_denies([("A.mm", "[AVCaptureDevice class]")]):
        wrong += "the question for the permission is taken for a use\n"
    if not what_the_page_denies([("A.mm", "[[AVCaptureSession alloc] init]")]):
        wrong += "the camera is opened and nothing is said\n"
    return wrong


TESTS = {
    "documentation.privacy-has-every-field-that-is-sent-and-no-other": lambda: check_sent(pages.read(PAGE)),
    "documentation.privacy-has-every-setting-that-is-saved-and-no-other": lambda: check_saved(pages.read(PAGE)),
    "documentation.privacy-has-every-part-of-the-computer-that-is-used": lambda: check_read(pages.read(PAGE)),
    "documentation.no-name-address-or-token-is-logged": lambda: nothing_personal_is_logged(transcripts.entries()),
    "documentation.no-source-opens-camera-microphone-screen-or-clipboard": lambda: what_the_page_denies(mac_sources()),
    "documentation.the-check-of-privacy-objects": objects,
}
