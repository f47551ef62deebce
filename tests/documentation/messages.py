"""The participant's guide explains every message that the client can show, to the letter, and no other."""
import re

import pages
import transcripts

GUIDE = "docs/guida-partecipante.md"
SOURCES = ["src/server/SessionJoin.cpp", "src/session/JoinScreen.cpp", "src/session/MainWindowController.cpp"]
ALERTS = ["src/session/AccessibilityAlert.cpp", "src/session/StatusMenu.cpp", "src/session/UpdatePrompts.cpp",
          "src/app/AppDelegate.cpp"]
TEXT = r'"((?:[^"\\]|\\.)+)"'


def sources(names):
    return "".join(map(pages.read, names))


def join_messages(source):
    """What the join screen's line can say, by the source. A "…" stands for what is not known before."""
    failures = re.findall(rf'VantrelError{{{TEXT}( \+ .*?)?}}', source)
    found = {"❌ " + text + ("…" if more else "") + (")" if more.endswith('")"') else "") for text, more in failures}
    found |= {text for text in re.findall(rf"return {TEXT};", source) if text.startswith("⚠")}
    return found | set(re.findall(rf"showStatus\({TEXT}\)", source))


def alert_titles(source):
    """The first text of an alert that is a value, or its messageText."""
    return set(re.findall(rf"(?:AlertStyle::\w+,|messageText =)\s*{TEXT}", source))


def join_screen(guide):
    rows = pages.first_cells(guide, "La schermata iniziale")
    return pages.sets_differ("by the source", set(rows), join_messages(sources(SOURCES))) + \
        pages.matches_differ("by the scenarios", rows, transcripts.shown("errorLabel"))


def alerts(guide):
    rows = pages.first_cells(guide, "Gli avvisi")
    titles = {text.splitlines()[0].partition(": ")[2] for text in transcripts.texts("alert")}
    return pages.sets_differ("by the source", set(rows), alert_titles(sources(ALERTS))) + \
        pages.matches_differ("by the scenarios", rows, titles)


def reasons(guide):
    rows = pages.first_cells(guide, "La schermata finale")
    return pages.matches_differ("by the scenarios", rows, transcripts.shown("endMessageLabel"))


def quotations(guide):
    """What the guide quotes, each as one text of its lines."""
    found = re.findall(r"(?:^>.*\n)+", guide, re.MULTILINE)
    return ["\n".join(line[1:].strip() for line in text.splitlines()) for text in found]


def quoted(guide):
    """The question for Accessibility and the Mac's own are quoted whole."""
    alert = next(text for text in transcripts.texts("alert") if "Permesso Accessibilità richiesto" in text)
    title, *rest = alert.partition(": ")[2].split("\n")
    # Paragraphs of the guide are parted by an empty line, and the buttons are.
    wanted = {"\n".join([f"**{title}**", "", *rest[:-1], "", rest[-1]])}
    wanted |= set(re.findall(r"<key>NS(?:Microphone|Camera|LocalNetwork)UsageDescription</key>\s*<string>(.*?)</string>",
                             pages.read("packaging/macos/Info.plist.in")))
    return pages.sets_differ("quoted", set(quotations(guide)), wanted) + ("" if len(wanted) == 4 else "a text was not found\n")


def objects():
    """A message that is missing, added or changed by a letter is found."""
    guide, wrong = pages.read(GUIDE), ""
    for check, heading in ((join_screen, "La schermata iniziale"), (alerts, "Gli avvisi"), (reasons, "La schermata finale")):
        if check(guide):
            return "the guide itself is wrong\n"
        for row in pages.first_cells(guide, heading):
            line = next(line for line in guide.splitlines() if line.startswith(f"| `{row}` |"))
            for what, changed in (("missing", ""), ("changed", line.replace(row, row[:-1], 1)),
                                  ("twice", f"{line}\n{line}"), ("added", f"{line}\n| `{row}?` | | |")):
                if not check(guide.replace(line + "\n", changed + "\n" if changed else "", 1)):
                    wrong += f"{row!r} is {what} and nothing is said\n"
    for old in ("> 2. Nella lista", "sorvegliata tu possa essere visto", "> [Apri", "> Vantrel si collega al server"):
        if not quoted(guide.replace(old, old + " x", 1)):
            wrong += f"{old!r} has changed and nothing is said\n"
    return wrong


TESTS = {
    "documentation.the-guide-has-every-message-of-the-join-screen-and-no-other": lambda: join_screen(pages.read(GUIDE)),
    "documentation.the-guide-has-every-alert-and-no-other": lambda: alerts(pages.read(GUIDE)),
    "documentation.the-guide-has-every-reason-of-an-end-and-no-other": lambda: reasons(pages.read(GUIDE)),
    "documentation.the-guide-quotes-the-questions-for-permissions": lambda: quoted(pages.read(GUIDE)),
    "documentation.the-check-of-messages-objects": objects,
}
