"""Two sessions in a row, as a person would use them: one ended from the status menu, one by the trainer."""

import json
import subprocess
import time

from browser import FAKE_DEVICES, Browser, check_nothing_is_left, meeting_arguments
from checks import in_order
from client import Client, until
from desktop import Desktop
from headless_chromium import HeadlessChromium
from places import PROGRAM, ROOT, RUN, RUN_NAME, SERVER, save_settings
from practice import Practice
from stage import (CODE_FIELD, CODE_FRAME, EMAIL_FIELD, END_SCREEN, END_TITLE, ERROR_LABEL, JOIN_BUTTON, JOIN_FRAME,
                   LOCKDOWN_COMPLETE, NAME_FIELD, NAME_FRAME, NEW_SESSION_BUTTON, SERVER_FIELD, TITLE_LABEL, Stage, blue,
                   dark, red)

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

SEPARATOR = "🔒 ========================================"
LOCKDOWN = [
    "🔒 Demo Mode: false", SEPARATOR, "🔒 VERIFICA ACCESSIBILITY", SEPARATOR, "🔒 AXIsProcessTrusted: true",
    "✅ Accessibility OK - Procedo con lockdown", SEPARATOR, "🔒 ATTIVAZIONE LOCKDOWN", SEPARATOR,
    "🔒 Step 1/4: Fullscreen browser...", "[TCC] Microfono: stato già definito (3)",
    "[TCC] Camera: stato già definito (3)", "✅ Step 1/4: Fullscreen completato",
    "🔒 Step 2/4: Attivazione keyboard hook...", "[HOOK] Hook tastiera attivato",
    "[LOCKDOWN] ✅ Keyboard hook verificato e attivo", "✅ Step 2/4: Keyboard hook attivato",
    "🔒 Step 3/4: Avvio window monitor...", "[MONITOR] Monitoraggio avviato", "✅ Step 3/4: Window monitor avviato",
    "🔒 Step 3.5: Blackout monitor secondari...", "✅ Step 3.5: 1 monitor secondari coperti",
    "🔒 Step 4/4: Setup menu bar...", "✅ Step 4/4: Menu bar configurato", SEPARATOR,
    LOCKDOWN_COMPLETE, SEPARATOR,
]

BROWSER = [
    "[BROWSER] Reset stato per nuova sessione", "[BROWSER] Browser selezionato: Google Chrome",
    "[FULLSCREEN] Tentativo 1/8...", "[FULLSCREEN] ✅ Fullscreen attivato via AX", "✅ Step 1/4: Fullscreen completato",
]


def join_and_end(stage, practice, browser, check):
    desktop, client = stage.desktop, stage.client

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
    practice.change_reply(method="POST", path="/api/sessions/NQRP5D/join", times=1, delaySeconds=2.5)
    stage.fill(CODE_FIELD, CODE)
    desktop.key("Return")
    check("the session is found", client.wait_for('[SESSION] Status parsed: ACTIVE'))
    stage.picture("3-connecting", ("the progress", ERROR_LABEL, red, True),
                  ("an enabled button", JOIN_FRAME, blue, False))
    check("the lockdown is complete", client.wait_for(LOCKDOWN_COMPLETE))
    check("the client's window is hidden", until(lambda: not desktop.windows("Vantrel")))
    check("the first heartbeat is sent", until(lambda: heartbeats(practice)))
    stage.picture("4-lockdown")

    print("Quitting is refused", flush=True)
    client.process.terminate()
    check("the client stays", client.ended(1.5) is None)

    print("The end, from the status menu", flush=True)
    stage.open_status_menu()
    stage.picture("5-status-menu")
    stage.choose_the_end()
    stage.picture("6-end-question")
    desktop.key("Return")
    check("the end screen comes", client.wait_for(END_SCREEN))
    stage.picture("7-end-screen", ("the end's title", END_TITLE, dark, True),
                  ("the join button", JOIN_FRAME, blue, False))
    check("the status item is gone", until(lambda: not desktop.windows("Vantrel status")))
    check("the end screen has the keyboard", stage.has_keyboard())
    check_nothing_is_left(browser, client, check)

    print("Back to the join screen", flush=True)
    stage.click(NEW_SESSION_BUTTON)
    stage.picture("8-join-screen-refilled", ("the name", NAME_FRAME, dark, True), ("a code", CODE_FRAME, dark, False),
                  ("a status", ERROR_LABEL, red, False), ("an enabled button", JOIN_FRAME, blue, True))


def second_session(stage, practice, browser, check):
    desktop, client = stage.desktop, stage.client
    print("A second session, ended by the trainer", flush=True)
    before = len(heartbeats(practice))
    stage.fill(CODE_FIELD, SECOND_CODE)
    desktop.key("Return")
    check("the second lockdown is complete", until(lambda: client.lines.count(LOCKDOWN_COMPLETE) == 2))
    check("a second heartbeat follows the first", until(lambda: len(heartbeats(practice)) == before + 2, 20))
    with HeadlessChromium(1280, 800) as trainer:
        card = f"section[data-code={SECOND_CODE}]"
        trainer.open(practice.address + "/")
        trainer.wait_for(f"document.querySelector('{card} .who')?.textContent==={json.dumps(NAME)}")
        trainer.picture(RUN / "9-trainers-page.png")
        print(f"  picture {RUN_NAME}/9-trainers-page.png", flush=True)
        trainer.click(f"{card} button.end")
        trainer.wait_for("document.getElementById('ask').open")
        trainer.click("#ask-yes")
        check("the next heartbeat ends the session", client.wait_for("[HEARTBEAT] Sessione terminata dal backend", 25))
        trainer.wait_for(f"document.querySelector('{card} tr.left')!==null")
    stage.window()
    check("the end screen comes again", until(lambda: client.lines.count(END_SCREEN) == 2))
    stage.picture("10-ended-by-the-trainer", ("the end's title", END_TITLE, dark, True))
    check("the end screen has the keyboard again", stage.has_keyboard())
    check_nothing_is_left(browser, client, check)
    desktop.key("ctrl+q")
    check("the client quits with status 0", client.ended() == 0)


def heartbeats(practice):
    return [exchange for exchange in practice.received() if exchange["path"] == "/api/heartbeat"]


def check_what_was_sent(practice, check):
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


def check_what_was_logged(lines, check):
    check("the lockdown is activated in its order", in_order(lines, LOCKDOWN))
    check("the session is ended in its order", in_order(lines, [
        "[SESSION] Fine sessione: Sessione terminata dall'utente", "[HOOK] Hook tastiera disattivato",
        "[MONITOR] Monitoraggio fermato", "[BLACKOUT] Overlay deattivato", "[SESSION] Browser terminato",
        "[HEARTBEAT] Disconnessione inviata: Sessione terminata dall'utente", "[HEARTBEAT] Fermato",
        END_SCREEN]))


def check_what_was_kept(settings, address, check):
    kept = json.loads(settings.read_text()) if settings.exists() else {}
    check("server, name and e-mail are kept, the code is not",
          kept == {"vt_serverURL": address + "/", "vt_fullName": NAME, "vt_email": EMAIL})


def check_the_browser(browser, lines, address, check):
    check("the browser was started with exactly the eight arguments, once a session",
          browser.starts() == [meeting_arguments(address, code) for code in ("NQRP5D", SECOND_CODE)])
    check("the meeting is opened and brought to full screen", in_order(lines, BROWSER))
    check("the browser is ended with each session", lines.count("[SESSION] Browser terminato") == 2)


def play(check):
    home = RUN / "home"
    browser = Browser(home, RUN)
    browser.install(*FAKE_DEVICES)
    classes = RUN / "classes.yaml"
    classes.write_text(CLASSES)
    with Desktop(ROOT) as desktop, Practice(SERVER, "--config", str(classes)) as practice:
        # The version check goes to the saved server, one second after the start: nothing leaves this machine.
        settings = save_settings(home, {"vt_serverURL": practice.address})
        with Client(PROGRAM, desktop, home, RUN / "client.log") as client:
            stage = Stage(desktop, client, RUN, check)
            join_and_end(stage, practice, browser, check)
            second_session(stage, practice, browser, check)
        check("nothing was written on standard error", client.complaints == [])
        check_what_was_sent(practice, check)
        check_what_was_logged(client.lines, check)
        check_what_was_kept(settings, practice.address, check)
        check_the_browser(browser, client.lines, practice.address, check)
