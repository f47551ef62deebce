"""One session with the real client, from the empty join screen to the join screen refilled, as a person would go through it.

Leaves under build/run/ one picture for each stage and client.log; ends with status 0 when all of it held.
"""

import json
import pathlib
import shutil
import subprocess
import sys
import time

from client import Client, until
from desktop import Desktop
from practice import Practice

ROOT = pathlib.Path(__file__).resolve().parents[2]
RUN = ROOT / "build/run"
PROGRAM = ROOT / "build/debug/src/platform/linux/vantrel"
SERVER = ROOT / "build/debug/practice/vantrel-practice"

CODE, TITLE, NAME, EMAIL = "nqrp5d", "Sicurezza sul lavoro", "Maria Bianchi", "maria.bianchi@example.com"

# Centres of the controls, in points from the bottom left of the window's content.
SERVER_FIELD, CODE_FIELD, NAME_FIELD, EMAIL_FIELD = (220, 336), (220, 274), (220, 218), (220, 162)
JOIN_BUTTON, NEW_SESSION_BUTTON = (129, 96), (104, 246)

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

    def picture(self, name):
        time.sleep(0.4)
        path = RUN / f"{name}.png"
        colours = self.desktop.picture(path)
        check(f"picture {path.relative_to(ROOT)}", colours > 50)


def join_and_end(desktop, practice, client):
    stage = Stage(desktop, client)

    check("the client says that it runs", client.wait_for("[APP] Vantrel avviato"))
    stage.window()
    check("the version is checked", client.wait_for("[UPDATE] Versione corrente è l'ultima disponibile"))
    stage.picture("1-empty-join-screen")

    print("A wrong session code", flush=True)
    stage.fill(SERVER_FIELD, practice.address + "/")
    stage.fill(CODE_FIELD, "zzzz99")
    stage.fill(NAME_FIELD, NAME)
    stage.fill(EMAIL_FIELD, EMAIL)
    stage.click(JOIN_BUTTON)
    check("an unknown session is looked up", client.wait_for("[SESSION] GET status HTTP: 404"))
    time.sleep(0.5)
    stage.picture("2-error")

    print("The right one", flush=True)
    practice.bend(method="POST", path="/api/sessions/NQRP5D/join", times=1, delaySeconds=2.5)
    stage.fill(CODE_FIELD, CODE)
    desktop.key("Return")
    check("the session is found", client.wait_for('[SESSION] Status parsed: ACTIVE'))
    stage.picture("3-connecting")
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
    check("the end screen comes", client.wait_for("[SESSION] Schermata fine visibile, join hidden: true, end hidden: false"))
    stage.picture("7-end-screen")
    check("the status item is gone", until(lambda: not desktop.windows("Vantrel status")))

    print("Back to the join screen", flush=True)
    stage.click(NEW_SESSION_BUTTON)
    stage.picture("8-join-screen-refilled")
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
    check("every heartbeat carries the code as typed", bodies and all(body["sessionCode"] == CODE for body in bodies))
    check("one disconnect notice closes the session", [body["disconnecting"] for body in bodies].count(True) == 1
          and bodies[-1]["disconnecting"])


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


def processes_named(name):
    return subprocess.run(["pgrep", "-x", name], capture_output=True, text=True).stdout.split()


def main():
    shutil.rmtree(RUN, ignore_errors=True)
    home = RUN / "home"
    home.mkdir(parents=True)
    before = set(processes_named("vantrel"))
    with Desktop(ROOT) as desktop, Practice(SERVER, "--session", f"{CODE.upper()}={TITLE}") as practice:
        # The version check goes to the saved server, one second after the start: nothing leaves this machine.
        settings = home / ".config/vantrel/defaults.json"
        settings.parent.mkdir(parents=True)
        settings.write_text(json.dumps({"vt_serverURL": practice.address}))
        with Client(PROGRAM, desktop, home, RUN / "client.log") as client:
            join_and_end(desktop, practice, client)
        check("nothing was written on standard error", client.complaints == [])
        check_what_was_sent(practice)
        check_what_was_logged(client.lines)
        check_what_was_kept(settings, practice.address)
    check("no process of the client is left", set(processes_named("vantrel")) <= before)

    if failures:
        print(f"{len(failures)} checks failed; see build/run/client.log and the pictures beside it.")
        return 1
    print("All of it held; the pictures and client.log are under build/run/.")
    return 0


sys.exit(main())
