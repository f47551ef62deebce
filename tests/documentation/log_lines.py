"""The technicians' guide explains every line that the client can log, to the letter, and no other; and the applications
that may be in front, the saved settings and the words on standard error."""
import functools
import re

import pages
import transcripts

GUIDE = "docs/guida-tecnico.md"
HEADINGS = ["Avvio e versione", "Ingresso", "Attivazione", "Browser", "Durante la sessione", "Fine"]
RULES = ["app", "session", "server", "browser", "lockdown"]
# What a Mac's client consists of besides the rules.
MAC = ["platform/macos", "platform/portable"]
# In the same folder as a Mac's.
LINUX = {"main-linux.cpp", "main-linux-guard.cpp", "main-record-linux.cpp"}
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
OPENING = re.compile(r"\[[A-Z]+\] |🔒 |✅")
# Texts that begin like a line and are none: the screen's title and the status item's, and the end of a line.
NO_LINES = {"🔒 Vantrel", "✅ OK"}


@functools.cache
def logged_lines():
    return frozenset(transcripts.texts("log"))


@functools.cache
def sources(*folders):
    """(name, its texts) of each source. Texts that follow one another are one."""
    found = []
    for folder in folders:
        for path in sorted((pages.ROOT / "src" / folder).rglob("*")):
            if path.suffix in (".cpp", ".h", ".mm"):
                code = re.sub(r"^\s*//.*$", "", path.read_text(encoding="utf-8"), flags=re.MULTILINE)
                found.append((path.name, LITERAL.findall(re.sub(r'"\s*\n\s*"', "", code))))
    return found


def pieces(row):
    return [piece for piece in row.split("…") if piece]


def rows(guide):
    return [row for heading in HEADINGS for row in pages.first_cells(guide, heading)]


def lines_by_source(guide):
    """Every text that opens a line begins a row, and what no scenario logs is made of one source's texts."""
    shown, wrong = rows(guide), ""
    for name, texts in sources(*RULES):
        for text in texts:
            if OPENING.match(text) and text not in NO_LINES and not any(row.startswith(text) for row in shown):
                wrong += f"{name}: {text!r} begins no row\n"
    logged = logged_lines()
    for row in shown:
        if not any(pages.fits(row, line) for line in logged) and not is_made_by_one_source(row):
            wrong += f"{row!r} is logged in no scenario and by no source\n"
    return wrong


def is_made_by_one_source(row):
    return any(all(any(piece in text for text in texts) for piece in pieces(row)) for _, texts in sources(*RULES))


def lines_by_scenarios(guide):
    logged = logged_lines()
    known = [row for row in rows(guide) if any(pages.fits(row, line) for line in logged)]
    unseen = set(rows(guide)) - set(known)
    if len(unseen) > 2:
        return f"no scenario logs {sorted(unseen)}\n"
    return pages.matches_differ("log", known, logged)


def standard_error(guide):
    shown = pages.first_cells(guide, "Sullo standard error")
    written = {name: [re.sub(r"%(?:\.\*)?s", "…", text).replace("\\n", "") for text in texts]
               for name, texts in sources(*MAC, "app") if name not in LINUX}
    wrong = ""
    for name, texts in written.items():
        for text in texts:
            whole = re.match(r"vantrel: .|DispatchGroup: |Fatal error: ", text)
            # What follows a name that stands by itself.
            part = "vantrel: " in texts and " " in text
            if (whole or part) and not any(row.startswith(text) or part and text in row for row in shown):
                wrong += f"standard error: {text!r} of {name} stands in no row\n"
    for row in shown:
        if not any(all(any(piece in text for text in texts) for piece in pieces(row)) for texts in written.values()):
            wrong += f"standard error: {row!r} is written by no source\n"
    return wrong


def spans(guide, heading, opening):
    """What stands in backquotes in the heading's paragraph that begins with the opening."""
    paragraph = re.search(re.escape(opening) + r"(.*?)(?=\n- |\n\n|\Z)", pages.section(guide, heading), re.DOTALL)
    return set(re.findall(r"`([^`]*)`", paragraph[1]))


def applications(guide):
    code = pages.read("src/lockdown/SystemProcessWhitelist.h")
    listed = set(LITERAL.findall(code[code.index("systemProcessWhitelist"):]))
    return pages.sets_differ("applications", spans(guide, "Limiti noti", "**Applicazioni che non contano"), listed)


def settings(guide):
    saved = {text.partition(" = ")[0] for text in transcripts.texts("setting")}
    wrong = pages.sets_differ("settings", set(pages.first_cells(guide, "L'indirizzo del server")), saved)
    bundle = re.search(r'"(biz\.[^"]+)"', pages.read("src/app/AppDelegate.cpp"))[1]
    command = re.search(r"defaults write (\S+) (\S+) -string", guide)
    if not command or command.groups() != (bundle, "vt_serverURL"):
        wrong += f"the command does not write the server's address of {bundle}\n"
    return wrong


CHECKS = [lines_by_source, lines_by_scenarios, standard_error, applications, settings]


def objects():
    """A row that is missing, added or changed is found, and so is a changed application or setting."""
    guide, wrong = pages.read(GUIDE), ""
    if any(check(guide) for check in CHECKS):
        return "the guide itself is wrong\n"
    table = [line for line in guide.splitlines() if line.startswith("| `")]
    for heading in [*HEADINGS, "Sullo standard error", "L'indirizzo del server"]:
        for row in pages.first_cells(guide, heading):
            line = next(line for line in table if line.startswith(f"| `{row}` |"))
            changed = row[:-2] + "#" + row[-1] if not row.endswith("…") else row[:3] + "#" + row[4:]
            for what, other in (("missing", ""), ("changed", line.replace(row, changed, 1) + "\n"),
                                ("added", f"{line}\n| `{row} extra` | |\n")):
                bent = guide.replace(line + "\n", other, 1)
                if not any(check(bent) for check in CHECKS):
                    wrong += f"{row!r} is {what} and nothing is said\n"
    for old, new in (("`Spotlight`, ", ""), ("`Dock`", "`Finder`"), ("defaults write biz", "defaults write com")):
        if not any(check(guide.replace(old, new, 1)) for check in CHECKS):
            wrong += f"{old!r} becomes {new!r} and nothing is said\n"
    return wrong


TESTS = {
    "documentation.the-technicians-guide-has-every-log-line-of-the-sources": lambda: lines_by_source(pages.read(GUIDE)),
    "documentation.the-technicians-guide-has-every-log-line-of-the-scenarios": lambda: lines_by_scenarios(pages.read(GUIDE)),
    "documentation.the-technicians-guide-has-what-a-mac-writes-on-standard-error": lambda: standard_error(pages.read(GUIDE)),
    "documentation.the-technicians-guide-has-the-applications-that-may-be-in-front": lambda: applications(pages.read(GUIDE)),
    "documentation.the-technicians-guide-has-the-settings": lambda: settings(pages.read(GUIDE)),
    "documentation.the-check-of-log-lines-objects": objects,
}
