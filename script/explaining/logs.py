"""The client's output as a list of entries, and what of an entry may differ without a difference in what happened."""
import re

# What an entry begins with. Everything else goes on with the entry before: a title or a body may have line breaks.
BEGINNING = re.compile(
    r"\[(APP|SESSION|UPDATE|TCC|BROWSER|FULLSCREEN|HOOK|LOCKDOWN|MONITOR|BLACKOUT|HEARTBEAT)\] |🔒 |✅")
# Processes, windows and how many there are on the screen, and where the server is.
FREE = [
    (re.compile(r"(PID[^:]*: |PID |processo |pid=|PID aggiornato: |→ )-?\d+"), r"\g<1>N"),
    (re.compile(r"^(\[BROWSER\] Finestre prima: )\d+$"), r"\g<1>N"),
    (re.compile(r"^(\[BROWSER\] Nuova finestra #).*$", re.DOTALL), r"\g<1>N"),
    (re.compile(r"^(\[HEARTBEAT\] Avviato \(ogni 15s\) → ).*$", re.DOTALL), r"\g<1>ADDRESS"),
]


def entries(text):
    """The entries of a log, each with the number of its first line. ValueError if the text is no log of the client."""
    found = []
    for number, line in enumerate(text.replace("\r\n", "\n").rstrip("\n").split("\n"), 1):
        if BEGINNING.match(line):
            found.append((number, line))
        elif found:
            found[-1] = (found[-1][0], found[-1][1] + "\n" + line)
        elif line.strip():
            raise ValueError(f"line {number} is none of the client's: {line[:60]!r}")
    if not found:
        raise ValueError("there is no line of the client")
    return found


def comparable(entry):
    for pattern, text in FREE:
        entry = pattern.sub(text, entry)
    return entry


def common(wanted, played):
    """How many entries at the beginning are alike."""
    count = 0
    for ours, theirs in zip(wanted, played):
        # What follows on further lines may be another program's, the browser's for instance.
        if comparable(ours) != comparable(theirs) and not ours.startswith(theirs + "\n"):
            break
        count += 1
    return count
