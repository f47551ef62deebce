"""Three short sessions of one client, each ended by something that happens to the browser."""

import os
import signal
import time

from browser import FAKE_DEVICES, Browser, check_nothing_is_left
from checks import in_order
from client import Client, until
from desktop import Desktop
from places import PROGRAM, ROOT, RUN, SERVER, save_settings
from practice import Practice
from stage import CODE_FIELD, END_SCREEN, END_TITLE, LOCKDOWN_COMPLETE, NEW_SESSION_BUTTON, Stage, dark

CODES = {"FINE01": "Una finestra chiusa", "FINE02": "Un altro Space", "FINE03": "Un browser ucciso"}
FOLDER = RUN / "endings"


def close_the_window(desktop, client):
    # Chromium's own key for this here, which does not exist on a Mac and so passes.
    desktop.key("ctrl+w")


def leave_the_space(desktop, client):
    desktop.run("xdotool", "set_desktop", 0)


def kill_the_browser(desktop, client):
    started = [line for line in client.lines if line.startswith("[BROWSER] Google Chrome PID ")][-1]
    os.kill(int(started.rpartition(" ")[2]), signal.SIGKILL)


CLOSED, CRASHED = "La finestra di Meet è stata chiusa", "Il browser si è chiuso inaspettatamente"
AWAY = "[MONITOR] ⚠️ Utente cambiato a Space diverso da Meet — kill browser e fine sessione"
GONE = "[MONITOR] Google Chrome non in esecuzione — fine sessione"

# (what, deed, the line that must come before the end, messages of the end). On Linux Chromium exits with its last
# window, so closing the window ends the browser.
ENDINGS = [
    ("the meeting's window is closed", close_the_window, GONE, CRASHED),
    ("the participant goes to another desktop", leave_the_space, AWAY, CLOSED),
    ("the browser is killed", kill_the_browser, GONE, CRASHED),
]


def play(check):
    home = FOLDER / "home"
    home.mkdir(parents=True)
    browser = Browser(home, FOLDER)
    browser.install(*FAKE_DEVICES)
    sessions = [argument for code, title in CODES.items() for argument in ("--session", f"{code}={title}")]
    with Desktop(ROOT) as desktop, Practice(SERVER, *sessions) as practice:
        save_settings(home, {"vt_serverURL": practice.address, "vt_fullName": "Maria Bianchi",
                             "vt_email": "maria.bianchi@example.com"})
        with Client(PROGRAM, desktop, home, RUN / "client-endings.log") as client:
            stage = Stage(desktop, client, RUN, check)
            for number, (code, ending) in enumerate(zip(CODES, ENDINGS), 1):
                play_one(stage, practice, browser, check, number, code, ending)
            desktop.key("ctrl+q")
            check("the client quits with status 0", client.ended() == 0)
        check("nothing was written on standard error", client.complaints == [])


def play_one(stage, practice, browser, check, number, code, ending):
    desktop, client = stage.desktop, stage.client
    what, deed, line, message = ending
    print(f"A session that ends when {what}", flush=True)
    before = len(client.lines)
    stage.fill(CODE_FIELD, code)
    desktop.key("Return")
    check("the lockdown is complete", until(lambda: client.lines.count(LOCKDOWN_COMPLETE) == number, 30))
    # The monitor still waits for a browser that no tick has seen yet.
    time.sleep(2)
    deed(desktop, client)
    check("the end screen comes", until(lambda: client.lines.count(END_SCREEN) == number))
    check("and says why", in_order(client.lines[before:], [line, "[SESSION] Fine sessione: " + message]))
    stage.picture(f"{29 + number}-{'closed' if number == 1 else 'space-left' if number == 2 else 'browser-killed'}",
                  ("the end's title", END_TITLE, dark, True))
    told = [body["disconnecting"] for body in practice.heartbeats() if body["sessionCode"] == code]
    check("the server is told once", until(lambda: told.count(True) == 1 and told[-1]))
    # A browser that was killed leaves its profile locked. The next one sees that no process holds the lock.
    check_nothing_is_left(browser, client, check, locks_too=deed is close_the_window)
    check("the end screen has the keyboard", stage.has_keyboard())
    stage.click(NEW_SESSION_BUTTON)
