"""Figures of the documentation are those of the code: times, limits, counts and the keys that are held back."""
import re

import pages

PARTICIPANTS, TECHNICIANS, PRIVACY = "docs/guida-partecipante.md", "docs/guida-tecnico.md", "docs/privacy.md"
HEARTBEAT, JOIN, VERSION = (f"src/server/{name}.cpp" for name in ("HeartbeatService", "SessionJoin", "VersionCheck"))
LAUNCHER, WATCH = "src/browser/BrowserLauncher", "src/platform/macos/threads/MainThreadWatch.h"
NUMBERS = {"otto": "8", "venti": "20", "due": "2"}

# Page, what it says around the figure, source, the constant.
FIGURES = [
    (PARTICIPANTS, r"Vantrel riprova ogni (\d+) secondi", HEARTBEAT, "intervalSeconds"),
    (PARTICIPANTS, r"Dopo (\d+) tentativi falliti", HEARTBEAT, "maxConsecutiveErrors"),
    (PARTICIPANTS, r"non ha risposto entro (\d+) secondi", JOIN, "waitSeconds"),
    (TECHNICIANS, r"ogni (\d+) secondi di sessione", HEARTBEAT, "intervalSeconds"),
    (TECHNICIANS, r"(\d+) secondi per ogni richiesta dell'ingresso", JOIN, "joinTimeoutSeconds"),
    (TECHNICIANS, r"attesa al massimo (\d+);", JOIN, "waitSeconds"),
    (TECHNICIANS, r"(\d+) per un heartbeat", HEARTBEAT, "heartbeatTimeout"),
    (TECHNICIANS, r"(\d+) per l'avviso finale", HEARTBEAT, "disconnectTimeout"),
    (TECHNICIANS, r"(\w+)\s+heartbeat falliti", HEARTBEAT, "maxConsecutiveErrors"),
    (TECHNICIANS, r"dopo (\w+) tentativi la finestra", f"{LAUNCHER}.h", "maxFullscreenRetries"),
    (TECHNICIANS, r"in (\d+) secondi non è comparsa", "src/browser/WindowDiscovery.cpp", "timeout"),
    (TECHNICIANS, r"dopo (\w+) secondi a forza\. Uno", "src/browser/BrowserShutdown.cpp", "terminationTimeout"),
    (TECHNICIANS, r"si guarda la finestra ogni ([\d,]+) secondi", "src/lockdown/WindowMonitorService.h", "checkInterval"),
    (TECHNICIANS, r"per (\d+) secondi durante una sessione viene chiuso", WATCH, "patienceSeconds"),
    (PRIVACY, r"Ogni (\d+) secondi da quando", HEARTBEAT, "intervalSeconds"),
    ("docs/macos.md", r"Once nothing has come for (\d+) seconds", WATCH, "patienceSeconds"),
    ("docs/macos.md", r"writes a byte every (\d+) seconds", WATCH, "answersEvery"),
    ("docs/architecture.md", r"The monitor looks every ([\d.]+) seconds", "src/lockdown/WindowMonitorService.h", "checkInterval"),
    ("docs/architecture.md", r"Every (\d+) seconds the covers are raised", "src/lockdown/BlackoutOverlayManager.h", "enforceInterval"),
]


def number(text):
    text = NUMBERS.get(text.lower(), text).replace(",", ".")
    return float(text) if re.fullmatch(r"[\d.]+", text) else text


def wrong_figures(read):
    wrong = ""
    for page, said, source, constant in FIGURES:
        found = re.search(said, read(page))
        value = re.search(rf"\b{constant} = ([\d.]+);", read(source))
        if not found or not value or number(found[1]) != number(value[1]):
            wrong += f"{page}: {said!r} is {found and found[1]}, and {constant} is {value and value[1]}\n"
    return wrong


def sessions_of_a_run(read):
    """How many an unattended run plays under openbox."""
    two = len(re.findall(r"^  - code:", read("script/unattended/two_sessions.py"), re.MULTILINE))
    several = [re.search(r"^CODES = {(.*)}$", read(f"script/unattended/{name}.py"), re.MULTILINE)[1].count(": ")
               for name in ("endings", "off_the_screen")]
    single = sum(len(re.findall(r"^CODE[,\s]", read(f"script/unattended/{name}.py"), re.MULTILINE))
                 for name in ("browser_open_before", "a_class"))
    return two + sum(several) + single


def wrong_sessions(read):
    word = {8: "eight", 9: "nine", 10: "ten", 11: "eleven", 12: "twelve"}.get(sessions_of_a_run(read), "another number of")
    said = {"README.md": f"plays {word} such sessions", "docs/linux.md": f"plays {word} sessions under openbox",
            "script/run": f"{word} sessions are played"}
    return "".join(f"{page}: there is no {text!r}\n" for page, text in said.items() if text not in read(page))


def wrong_counts(read):
    mutants = read("tests/macos/standins/mutants/mutants.yaml")
    made, survive = (len(re.findall(rf"^(?:- |  ){key}: ", mutants, re.MULTILINE)) for key in ("name", "survives"))
    if f"{made - survive} of the {made} in" not in read("docs/macos.md"):
        return f"docs/macos.md: of {made} mistakes {made - survive} are caught\n"
    return ""


def wrong_keys(read):
    """The guide's sentence names every combination of the code."""
    names = set(re.findall(r'"((?:Cmd|Ctrl)\+[^"]+)"', read("src/lockdown/BlockedCombination.cpp")))
    sentence = " ".join(re.search(r"Comando con (.*?)Tutto il resto", read(PARTICIPANTS), re.DOTALL)[1].split())
    command, rest = sentence.split("Controllo con ", 1)
    said = {f"Cmd+{letter}" for letter in re.findall(r"\b([A-Z])\b", command.partition("(")[0])}
    for words, combinations in {
            "Tab,": ["Cmd+Tab", "Cmd+Shift+Tab"], "Spazio": ["Cmd+Space"], "freccia sinistra o destra": ["Cmd+Arrow"],
            "una cifra da 1 a 9": [f"Cmd+{digit}" for digit in range(1, 10)],
            "Comando-Maiuscole-3, -4 e -5": [f"Cmd+Shift+{digit}" for digit in (3, 4, 5)]}.items():
        said |= set(combinations) if words in command else set()
    for words, combinations in {"Tab o con le frecce": ["Ctrl+Tab", "Ctrl+Shift+Tab", "Ctrl+Arrow", "Ctrl+Up", "Ctrl+Down"],
                                "Comando-Controllo-F": ["Cmd+Ctrl+F"]}.items():
        said |= set(combinations) if words in rest else set()
    return pages.sets_differ("keys", said, names)


def objects():
    def bent(page, old, new):
        assert old in pages.read(page), (page, old)
        return lambda name: pages.read(name).replace(old, new) if name == page else pages.read(name)

    caught = re.search(r"\d+ of the \d+(?= in)", pages.read("docs/macos.md"))[0]
    mistakes = [
        (wrong_counts, "docs/macos.md", caught, "1 of the 2"),
        (wrong_counts, "tests/macos/standins/mutants/mutants.yaml", "- name: a menu item's block", "- nme: a menu item's block"),
        (wrong_sessions, "README.md", "ten such", "nine such"), (wrong_sessions, "script/run", "ten sessions", "two sessions"),
        (wrong_sessions, "script/unattended/endings.py", ', "FINE03": "Un browser ucciso"', ""),
        (wrong_keys, PARTICIPANTS, "D, H, L,", "D, H,"), (wrong_keys, PARTICIPANTS, "D, H, L,", "D, E, H, L,"),
        (wrong_keys, PARTICIPANTS, "Comando-Controllo-F", "Comando-Controllo-G"), (wrong_keys, PARTICIPANTS, "da 1 a 9", "da 1 a 8"),
        (wrong_keys, "src/lockdown/BlockedCombination.cpp", '"Cmd+Space"', '"Cmd+Z"'),
    ]
    wrong = "".join(f"{old!r} becomes {new!r} in {page}: nothing is said\n" for check, page, old, new in mistakes
                    if not check(bent(page, old, new)))
    for page, said, source, constant in FIGURES:
        whole = re.search(said, pages.read(page))
        if not wrong_figures(bent(page, whole[0], whole[0].replace(whole[1], "99"))):
            wrong += f"{page}: {whole[0]!r} has changed and nothing is said\n"
        if not wrong_figures(bent(source, f"{constant} = ", f"{constant} = 9")):
            wrong += f"{source}: {constant} has changed and nothing is said\n"
    return wrong


TESTS = {
    "documentation.times-and-limits-are-those-of-the-code": lambda: wrong_figures(pages.read),
    "documentation.counts-are-those-of-the-tree": lambda: wrong_counts(pages.read) + wrong_sessions(pages.read),
    "documentation.the-guide-names-every-combination-that-is-held-back": lambda: wrong_keys(pages.read),
    "documentation.the-check-of-figures-objects": objects,
}
