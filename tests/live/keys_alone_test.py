"""keys_alone_test.py CLIENT SERVER: a whole session without a mouse, and what a screen reader is told of it: an alert, the
join screen, a wrong code, a lockdown with the status menu and its question, the end screen, the main menu."""

import json
import os
import pathlib
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "script/unattended"), str(ROOT / "tests/practice")]
import headless_chromium
from accessible import Accessible
from browser import FAKE_DEVICES, Browser
from client import Client
from desktop import Desktop
from practice import Practice
from stage import END_SCREEN, LOCKDOWN_COMPLETE

CLASSES = """
sessions: [{code: PROVA, title: Antincendio}]
version: {latest: 2.1-macOS, severity: recommended, download-url: "https://download.vantrel.example/"}
"""
FIELDS = ["Server Vantrel:", "Codice sessione:", "Nome e cognome:", "Email:"]
JOIN, AGAIN, END = "Avvia sessione protetta", "Nuova sessione", "Termina sessione"
JOIN_SCREEN = [
    ("label", "🔒 Vantrel"), ("label", "Inserisci i dati ricevuti dal formatore"), ("label", "Server Vantrel:"),
    ("text", "Server Vantrel:"), ("label", "Codice sessione:"), ("text", "Codice sessione:"),
    ("label", "Nome e cognome:"), ("text", "Nome e cognome:"), ("label", "Email:"), ("text", "Email:"),
    ("push button", JOIN), ("label", "v2.0-macOS — a cura del gruppo Vantrel")]


class Session:
    def __init__(self, desktop, client, reader):
        self.desktop, self.client, self.reader = desktop, client, reader

    def expect(self, what, condition, seconds=10):
        assert self.reader.until(condition, seconds), (
            what, "focus", self.reader.focused[-3:], "spoken", self.reader.spoken, "shown", self.reader.named())
        print(f"  {what}", flush=True)

    def focus_is(self, role, name):
        self.expect(f"the focus is on {name!r}", lambda: self.reader.focus() == (role, name))

    def spoken_is(self, *texts):
        self.expect(f"the screen reader speaks {texts[-1]!r}", lambda: self.reader.spoken == list(texts))

    def shows(self, *wanted):
        self.expect(f"the screen shows {wanted[0][1]!r}", lambda: set(wanted) <= set(self.reader.named()))

    def tab_to(self, role, name):
        self.desktop.key("Tab")
        self.focus_is(role, name)

    def type(self, text):
        self.desktop.key("ctrl+a")
        self.desktop.type(text)
        self.reader.turn(0.2)

    def answer_the_update_prompt(self):
        self.shows(("label", "Aggiornamento Vantrel consigliato"), ("push button", "Apri pagina download"))
        self.focus_is("push button", "Apri pagina download")
        self.tab_to("push button", "Più tardi")
        self.desktop.key("space")
        self.focus_is("text", "Server Vantrel:")

    def go_around_the_join_screen(self):
        content = [entry for entry in self.reader.named() if entry[0] not in ("frame", "window", "menu item")]
        assert content == JOIN_SCREEN, content
        for field in FIELDS[1:]:
            self.tab_to("text", field)
        self.tab_to("push button", JOIN)
        self.tab_to("text", FIELDS[0])
        self.desktop.key("shift+Tab")
        self.focus_is("push button", JOIN)

    def fill_and_fail(self, practice):
        assert self.reader.spoken == [], self.reader.spoken
        self.desktop.key("space")
        self.spoken_is("⚠ Inserisci il codice sessione")
        self.desktop.key("Tab")
        for text, field in zip((practice.address, "zzzz99", "Maria Bianchi", "maria@example.com"), FIELDS):
            self.focus_is("text", field)
            self.type(text)
            self.desktop.key("Tab")
        # A reader asks for the text when it hears of it, and the next one may be there by then.
        practice.change_reply(method="GET", path="/api/sessions/ZZZZ99", times=1, delaySeconds=1.5)
        self.desktop.key("Return")
        self.spoken_is("⚠ Inserisci il codice sessione", "⏳ Connessione al server...",
                       "❌ Codice sessione non trovato")

    def join(self, practice):
        # The button had it, and was disabled meanwhile.
        self.focus_is("text", "Server Vantrel:")
        self.tab_to("text", "Codice sessione:")
        self.type("PROVA")
        practice.change_reply(method="POST", path="/api/sessions/PROVA/join", times=1, delaySeconds=1.5)
        self.desktop.key("Return")
        self.expect("the screen reader speaks of the connection", lambda: self.reader.spoken[3:] == ["⏳ Connessione al server..."])
        self.expect("the lockdown is complete", lambda: LOCKDOWN_COMPLETE in self.client.lines, 40)
        self.expect("the join screen is gone", lambda: ("push button", JOIN) not in self.reader.named())

    def press_keys_of_a_screen_reader(self):
        """Those with arrows are among the keys that are swallowed, as everybody's are; the others pass."""
        self.desktop.key("ctrl+alt+Right", "ctrl+alt+m", "ctrl+alt+space", "Tab")
        self.expect("an arrow with Control is swallowed", lambda: "[HOOK] 🚫 Bloccato: Ctrl+Arrow" in self.client.lines)
        self.reader.turn(0.5)
        held = [line for line in self.client.lines if line.startswith("[HOOK] 🚫")]
        assert len(held) == 1, held

    def open_the_status_menu(self):
        self.desktop.key("ctrl+F8")
        self.focus_is("menu item", END)
        menu = self.reader.beside_the_focus()
        assert menu == [("menu item", "Antincendio [PROVA]", False), ("menu item", END, True)], menu

    def end_from_the_menu(self):
        self.open_the_status_menu()
        self.desktop.key("Return")
        self.shows(("label", "Terminare la sessione?"),
                   ("label", "La sessione verrà registrata come terminata manualmente."))
        self.focus_is("push button", "Termina")
        self.tab_to("push button", "Annulla")
        self.desktop.key("space")
        self.expect("the question is gone", lambda: ("push button", "Termina") not in self.reader.named())
        assert END_SCREEN not in self.client.lines
        self.open_the_status_menu()
        self.desktop.key("Return")
        self.focus_is("push button", "Termina")
        self.desktop.key("Return")
        self.expect("the end screen comes", lambda: END_SCREEN in self.client.lines, 30)

    def leave_the_end_screen(self):
        self.expect("the reason is spoken", lambda: self.reader.spoken[-1] == "Sessione terminata dall'utente")
        self.shows(("label", "Sessione terminata"), ("notification", "Sessione terminata dall'utente"),
                   ("push button", AGAIN))
        # Somebody was still typing in the meeting.
        self.desktop.key("space", "space", "Return")
        self.reader.turn(0.5)
        self.shows(("label", "Sessione terminata"))
        self.tab_to("push button", AGAIN)
        self.desktop.key("space")
        self.focus_is("text", "Server Vantrel:")

    def quit_from_the_main_menu(self):
        self.desktop.key("Alt_L")
        self.focus_is("menu item", "Vantrel")
        self.desktop.key("Down")
        self.focus_is("menu item", "Esci da Vantrel")
        self.desktop.key("Return")
        self.expect("the client ends", lambda: self.client.process.poll() == 0)


def play(desktop, folder, client_program, server_program):
    os.environ.update(desktop.environment)
    from screen_reader import ScreenReader
    home = folder / "home"
    home.mkdir()
    browser = Browser(home, folder)
    browser.install(*FAKE_DEVICES)
    classes = folder / "classes.yaml"
    classes.write_text(CLASSES)
    with Practice(server_program, "--config", classes) as practice:
        settings = home / ".config/vantrel/defaults.json"
        settings.parent.mkdir(parents=True)
        settings.write_text(json.dumps({"vt_serverURL": practice.address}))
        reader = ScreenReader("vantrel")
        with Client(client_program, desktop, home, folder / "client.log") as client:
            session = Session(desktop, client, reader)
            session.answer_the_update_prompt()
            session.go_around_the_join_screen()
            session.fill_and_fail(practice)
            session.join(practice)
            session.press_keys_of_a_screen_reader()
            session.end_from_the_menu()
            session.leave_the_end_screen()
            session.quit_from_the_main_menu()


def main(client_program, server_program):
    if headless_chromium.find() is None:
        print("SKIPPED: there is no Chromium on this machine")
        return 77
    with tempfile.TemporaryDirectory() as folder, Desktop(ROOT) as desktop, Accessible(desktop):
        play(desktop, pathlib.Path(folder), client_program, server_program)
    return 0


sys.exit(main(*sys.argv[1:]))
