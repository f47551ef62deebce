"""Two sessions with the real client, as a person would go through them: one ended from the status menu, one by the trainer.

Leaves under build/run/ one picture for each stage and client.log; ends with status 0 when all of it held.
"""

import json
import pathlib
import shutil
import signal
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests/practice"))

from client import Client, until
from desktop import Desktop
from headless_chromium import HeadlessChromium
from practice import Practice

RUN = ROOT / "build/run"
PROGRAM = ROOT / "build/debug/src/platform/linux/vantrel"
SERVER = ROOT / "build/debug/practice/vantrel-practice"

CODE, NAME, EMAIL = "nqrp5d", "Maria Bianchi", "maria.bianchi@example.com"

CLASSES = """
sessions:
  - code: NQRP5D
    title: Sicurezza sul lavoro
  - code: ZK7M2A
    title: Antincendio
version:
  latest: "2.1-macOS"
  severity: recommended
  release-notes: "Avvio più rapido della riunione."
  download-url: https://download.vantrel.example/
"""
SECOND_CODE = "ZK7M2A"

# Centres of the controls, in points from the bottom left of the window's content.
SERVER_FIELD, CODE_FIELD, NAME_FIELD, EMAIL_FIELD = (220, 336), (220, 274), (220, 218), (220, 162)
JOIN_BUTTON, NEW_SESSION_BUTTON = (129, 96), (104, 246)

# Frames of the controls, likewise, and what shows in them.
ERROR_LABEL, JOIN_FRAME, TITLE_LABEL, NAME_FRAME, CODE_FRAME = (
    (24, 122, 392, 18), (24, 80, 210, 32), (24, 408, 392, 34), (28, 210, 384, 16), (28, 266, 384, 16))


def red(r, g, b):
    return r > 150 and g < 90 and b < 90


def blue(r, g, b):
    return r < 90 and g < 160 and b > 200


def dark(r, g, b):
    return r < 80 and g < 80 and b < 80


SEPARATOR = "🔒 ========================================"
LOCKDOWN = [
    "🔒 Demo Mode: false", SEPARATOR, "🔒 VERIFICA ACCESSIBILITY", SEPARATOR, "🔒 AXIsProcessTrusted: true",
    "✅ Accessibility OK - Procedo con lockdown", SEPARATOR, "🔒 ATTIVAZIONE LOCKDOWN", SEPARATOR,
    "🔒 Step 1/4: Fullscreen browser...", "[TCC] Microfono: stato già definito (3)",
    "[TCC] Camera: stato già definito (3)", "✅ Step 1/4: Fullscreen completato",
    "🔒 Step 2/4: Attivazione keyboard hook...", "✅ Step 2/4: Keyboard hook attivato",
    "🔒 Step 3/4: Avvio window monitor...", "✅ Step 3/4: Window monitor avviato",
    "🔒 Step 3.5: Blackout monitor secondari...", "✅ Step 3.5: 0 monitor secondari coperti",
    "🔒 Step 4/4: Setup menu bar...", "✅ Step 4/4: Menu bar configurato", SEPARATOR,
    "✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅", SEPARATOR,
]

END_SCREEN = "[SESSION] Schermata fine visibile, join hidden: true, end hidden: false"

BROWSER = [
    "[BROWSER] Reset stato per nuova sessione", "[BROWSER] Browser selezionato: Google Chrome",
    "[FULLSCREEN] Tentativo 1/8...", "[FULLSCREEN] ✅ Fullscreen attivato via AX", "✅ Step 1/4: Fullscreen completato",
]
CHROMIUM_ARGUMENTS = ["--new-window", "--no-first-run", "--no-default-browser-check", "--disable-extensions",
                      "--disable-tab-strip", "--disable-session-crashed-bubble", "--disable-infobars"]

# Where the client looks for Chrome in a home folder. It adds what Chromium needs to run as any user, apart from other
# profiles and without asking the network for anything, and notes what it was given itself.
WRAPPER = """#!/bin/sh
printf '%s\\n' "$@" >>'{noted}'
exec chromium --no-sandbox --test-type --disable-quic --disable-background-networking --disable-component-update \\
    --disable-sync --no-proxy-server --user-data-dir='{profile}' "$@" 2>>'{complaints}'
"""

failures = []


def check(what, held):
    print(f"  {'ok    ' if held else 'FAILED'}  {what}", flush=True)
    if not held:
        failures.append(what)
    return held


def in_order(lines, wanted):
    """Whether the wanted lines stand among the lines, in their order."""
    rest = iter(lines)
    return all(line in rest for line in wanted)


class Stage:
    def __init__(self, desktop, client):
        self.desktop, self.client = desktop, client

    def window(self, name="Vantrel", seconds=10):
        """The window of that name that came up last."""
        found = until(lambda: self.desktop.windows(name), seconds)
        if not found:
            raise RuntimeError(f"no window {name!r} came up; the client said: {self.client.complaints}")
        return found[0]

    def click(self, place):
        window = self.window()
        self.desktop.click(window.x + place[0], window.y + window.height - place[1])
        time.sleep(0.2)

    def fill(self, field, text):
        self.click(field)
        self.desktop.key("ctrl+a", "BackSpace")
        self.desktop.type(text)
        time.sleep(0.2)

    def picture(self, name, *looks):
        """Takes a picture and holds it against what it must show: (what, frame, colour, whether it is there)."""
        time.sleep(0.4)
        path = RUN / f"{name}.png"
        self.desktop.picture(path)
        print(f"  picture {path.relative_to(ROOT)}", flush=True)
        for what, frame, colour, there in looks:
            window = self.window()
            x, y, width, height = frame
            area = (window.x + x, window.y + window.height - y - height, width, height)
            pixels = self.desktop.pixels(path, area, colour)
            check(f"{what} {'is' if there else 'is not'} on it", (pixels >= 20) == there)


def join_and_end(desktop, practice, client):
    stage = Stage(desktop, client)

    check("the client says that it runs", client.wait_for("[APP] Vantrel avviato"))
    stage.window()
    check("a newer version is found", client.wait_for("[UPDATE] Disponibile v2.1-macOS (severity=recommended)"))
    until(lambda: len(desktop.windows("Vantrel")) == 2)
    stage.picture("0-version-prompt")
    # Escape stands for "Più tardi".
    desktop.key("Escape")
    check("the prompt goes away", until(lambda: len(desktop.windows("Vantrel")) == 1))
    stage.picture("1-empty-join-screen", ("the title", TITLE_LABEL, dark, True),
                  ("a status", ERROR_LABEL, red, False), ("an enabled button", JOIN_FRAME, blue, True),
                  ("a name", NAME_FRAME, dark, False))

    print("A wrong session code", flush=True)
    stage.fill(SERVER_FIELD, practice.address + "/")
    stage.fill(CODE_FIELD, "zzzz99")
    stage.fill(NAME_FIELD, NAME)
    stage.fill(EMAIL_FIELD, EMAIL)
    stage.click(JOIN_BUTTON)
    check("an unknown session is looked up", client.wait_for("[SESSION] GET status HTTP: 404"))
    time.sleep(0.5)
    stage.picture("2-error", ("the error", ERROR_LABEL, red, True), ("an enabled button", JOIN_FRAME, blue, True),
                  ("the name", NAME_FRAME, dark, True))

    print("The right one", flush=True)
    practice.bend(method="POST", path="/api/sessions/NQRP5D/join", times=1, delaySeconds=2.5)
    stage.fill(CODE_FIELD, CODE)
    desktop.key("Return")
    check("the session is found", client.wait_for('[SESSION] Status parsed: ACTIVE'))
    stage.picture("3-connecting", ("the progress", ERROR_LABEL, red, True),
                  ("an enabled button", JOIN_FRAME, blue, False))
    check("the lockdown is complete", client.wait_for("✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅"))
    check("the client's window is hidden", until(lambda: not desktop.windows("Vantrel")))
    check("the first heartbeat is sent", until(lambda: heartbeats(practice)))
    stage.picture("4-lockdown")

    print("Quitting is refused", flush=True)
    client.process.terminate()
    check("the client stays", client.ended(1.5) is None)

    print("The end, from the status menu", flush=True)
    strip = stage.window("Vantrel status")
    desktop.click(strip.x + strip.width // 2, strip.y + strip.height // 2)
    time.sleep(0.5)
    stage.picture("5-status-menu")
    # The menu's only enabled entry is the last one.
    desktop.key("Up", "Return")
    stage.window("Vantrel")
    stage.picture("6-end-question")
    desktop.key("Return")
    check("the end screen comes", client.wait_for(END_SCREEN))
    stage.picture("7-end-screen", ("the end's title", (24, 380, 392, 30), dark, True),
                  ("the join button", JOIN_FRAME, blue, False))
    check("the status item is gone", until(lambda: not desktop.windows("Vantrel status")))

    print("Back to the join screen", flush=True)
    stage.click(NEW_SESSION_BUTTON)
    stage.picture("8-join-screen-refilled", ("the name", NAME_FRAME, dark, True), ("a code", CODE_FRAME, dark, False),
                  ("a status", ERROR_LABEL, red, False), ("an enabled button", JOIN_FRAME, blue, True))


def second_session(desktop, practice, client):
    stage = Stage(desktop, client)
    print("A second session, ended by the trainer", flush=True)
    before = len(heartbeats(practice))
    stage.fill(CODE_FIELD, SECOND_CODE)
    desktop.key("Return")
    check("the second lockdown is complete", until(lambda: client.lines.count("✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅") == 2))
    check("a second heartbeat follows the first", until(lambda: len(heartbeats(practice)) == before + 2, 20))
    with HeadlessChromium(1280, 800) as trainer:
        card = f"section[data-code={SECOND_CODE}]"
        trainer.open(practice.address + "/")
        trainer.wait_for(f"document.querySelector('{card} .who')?.textContent==={json.dumps(NAME)}")
        trainer.picture(RUN / "9-trainers-page.png")
        print("  picture build/run/9-trainers-page.png", flush=True)
        trainer.click(f"{card} button.end")
        trainer.wait_for("document.getElementById('ask').open")
        trainer.click("#ask-yes")
        check("the next heartbeat ends the session", client.wait_for("[HEARTBEAT] Sessione terminata dal backend", 25))
        trainer.wait_for(f"document.querySelector('{card} tr.left')!==null")
    stage.window()
    check("the end screen comes again", until(lambda: client.lines.count(END_SCREEN) == 2))
    stage.picture("10-ended-by-the-trainer", ("the end's title", (24, 380, 392, 30), dark, True))
    # On the end screen's free ground: the keyboard is then the window's wherever the browser has left it.
    stage.click((300, 60))
    desktop.key("ctrl+q")
    check("the client quits with status 0", client.ended() == 0)


def heartbeats(practice):
    return [exchange for exchange in practice.received() if exchange["path"] == "/api/heartbeat"]


def check_what_was_sent(practice):
    exchanges = practice.received()
    asked = [(exchange["method"], exchange["path"]) for exchange in exchanges]
    check("an unknown code is asked for in upper case and not joined",
          ("GET", "/api/sessions/ZZZZ99") in asked and ("POST", "/api/sessions/ZZZZ99/join") not in asked)
    joins = [exchange for exchange in exchanges if exchange["path"] == "/api/sessions/NQRP5D/join"]
    check("the session is joined once, after it was found", len(joins) == 1 and
          asked.index(("GET", "/api/sessions/NQRP5D")) < asked.index(("POST", "/api/sessions/NQRP5D/join")))
    check("the join carries the participant", [json.loads(join["body"]) for join in joins] ==
          [{"fullName": NAME, "email": EMAIL, "platform": "darwin", "clientVersion": "2.0-macOS"}])
    bodies = [json.loads(beat["body"]) for beat in heartbeats(practice)]
    for code in (CODE, SECOND_CODE):
        told = [body["disconnecting"] for body in bodies if body["sessionCode"] == code]
        check(f"heartbeats carry {code} as typed, and one disconnect notice closes them",
              len(told) > 1 and told.count(True) == 1 and told[-1])
    check("every request keeps to the server's interface", subprocess.run(
        ["/usr/bin/python3", "-B", ROOT / "tests/api/check_received.py", ROOT / "docs/server-api.yaml",
         practice.address]).returncode == 0)


def check_what_was_logged(lines):
    check("the lockdown is activated in its order", in_order(lines, LOCKDOWN))
    check("the session is ended in its order", in_order(lines, [
        "[SESSION] Fine sessione: Sessione terminata dall'utente",
        "[HEARTBEAT] Disconnessione inviata: Sessione terminata dall'utente", "[HEARTBEAT] Fermato",
        "[SESSION] Schermata fine visibile, join hidden: true, end hidden: false"]))


def check_what_was_kept(settings, address):
    kept = json.loads(settings.read_text()) if settings.exists() else {}
    check("server, name and e-mail are kept, the code is not",
          kept == {"vt_serverURL": address + "/", "vt_fullName": NAME, "vt_email": EMAIL})


def install_browser(home):
    """Chromium under the name and in the folder that the client looks for; the file that notes its arguments."""
    wrapper = home / "Applications/Google Chrome.app/Contents/MacOS/Google Chrome"
    wrapper.parent.mkdir(parents=True)
    noted = RUN / "browser-arguments.txt"
    wrapper.write_text(WRAPPER.format(noted=noted, profile=RUN / "profile", complaints=RUN / "browser.log"))
    wrapper.chmod(0o755)
    return noted


def check_the_browser(noted, lines, address):
    expected = [line for code in ("NQRP5D", SECOND_CODE)
                for line in [f"--app={address}/meet/{code}", *CHROMIUM_ARGUMENTS]]
    check("the browser was started with exactly the eight arguments, once a session",
          noted.exists() and noted.read_text().splitlines() == expected)
    check("the meeting is opened and brought to full screen", in_order(lines, BROWSER))
    check("the browser is ended with each session", lines.count("[SESSION] Browser terminato") == 2)
    check("no browser of this run is left",
          until(lambda: not subprocess.run(["pgrep", "-f", str(RUN / "profile")], capture_output=True).stdout))


def processes_named(name):
    return subprocess.run(["pgrep", "-x", name], capture_output=True, text=True).stdout.split()


def main():
    # Whoever stops this stops all that it started, too.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    shutil.rmtree(RUN, ignore_errors=True)
    home = RUN / "home"
    home.mkdir(parents=True)
    noted = install_browser(home)
    classes = RUN / "classes.yaml"
    classes.write_text(CLASSES)
    before = set(processes_named("vantrel"))
    with Desktop(ROOT) as desktop, Practice(SERVER, "--config", str(classes)) as practice:
        # The version check goes to the saved server, one second after the start: nothing leaves this machine.
        settings = home / ".config/vantrel/defaults.json"
        settings.parent.mkdir(parents=True)
        settings.write_text(json.dumps({"vt_serverURL": practice.address}))
        with Client(PROGRAM, desktop, home, RUN / "client.log") as client:
            join_and_end(desktop, practice, client)
            second_session(desktop, practice, client)
        check("nothing was written on standard error", client.complaints == [])
        check_what_was_sent(practice)
        check_what_was_logged(client.lines)
        check_what_was_kept(settings, practice.address)
        check_the_browser(noted, client.lines, practice.address)
    check("no process of the client is left", set(processes_named("vantrel")) <= before)

    if failures:
        print(f"{len(failures)} checks failed; see build/run/client.log and the pictures beside it.")
        return 1
    print("All of it held; the pictures and client.log are under build/run/.")
    return 0


sys.exit(main())
