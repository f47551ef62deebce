"""Three sessions whose client a person takes off the screen, as xkill does: its cover, its hidden window, and its cover
while the browser does not answer."""

import os
import re
import signal
import time

from browser import FAKE_DEVICES, Browser, check_nothing_is_left
from checks import in_order
from client import Client, until
from desktop import Desktop
from places import PROGRAM, ROOT, RUN, SERVER, save_settings
from practice import Practice
from stage import CODE_FIELD, LOCKDOWN_COMPLETE, Stage

CODES = {"VIA001": "Una copertura uccisa", "VIA002": "La finestra nascosta uccisa", "VIA003": "Un browser che non risponde"}
FOLDER = RUN / "off-the-screen"
CLOSED = "La finestra di Meet è stata chiusa"


def kill_the_cover(desktop, client):
    desktop.run("xdotool", "windowkill", desktop.windows("Vantrel overlay")[0].identifier)


def kill_the_hidden_window(desktop, client):
    found = re.search(r'^\s*(0x[0-9a-f]+) "Vantrel": ', desktop.run("xwininfo", "-root", "-tree"), re.MULTILINE)
    desktop.run("xdotool", "windowkill", int(found[1], 16))


def kill_the_cover_beside_a_stopped_browser(desktop, client):
    started = [line for line in client.lines if line.startswith("[BROWSER] Google Chrome PID ")][-1]
    os.kill(int(started.rpartition(" ")[2]), signal.SIGSTOP)
    kill_the_cover(desktop, client)


# The server is told after the browser's end. One that does not answer is waited for, so the last has no five seconds.
ATTACKS = [("VIA001", "a cover to xkill", kill_the_cover, 5),
           ("VIA002", "the hidden window to xkill", kill_the_hidden_window, 5),
           ("VIA003", "a cover to xkill while the browser hangs", kill_the_cover_beside_a_stopped_browser, 20)]


def play(check):
    home = FOLDER / "home"
    home.mkdir(parents=True)
    browser = Browser(home, FOLDER)
    browser.install(*FAKE_DEVICES)
    sessions = [argument for code, title in CODES.items() for argument in ("--session", f"{code}={title}")]
    with Desktop(ROOT) as desktop, Practice(SERVER, *sessions) as practice:
        save_settings(home, {"vt_serverURL": practice.address, "vt_fullName": "Maria Bianchi",
                             "vt_email": "maria.bianchi@example.com"})
        for attack in ATTACKS:
            play_one(desktop, practice, browser, home, check, *attack)


def play_one(desktop, practice, browser, home, check, code, what, deed, patience):
    print(f"A session whose client loses {what}", flush=True)
    with Client(PROGRAM, desktop, home, RUN / "client-off-the-screen.log") as client:
        stage = Stage(desktop, client, RUN, check)
        stage.fill(CODE_FIELD, code)
        desktop.key("Return")
        check("the lockdown is complete", client.wait_for(LOCKDOWN_COMPLETE, 30))
        time.sleep(2)
        before = time.monotonic()
        deed(desktop, client)
        told = lambda: [body["disconnecting"] for body in practice.heartbeats() if body["sessionCode"] == code]
        in_time = until(lambda: told().count(True) == 1 and told()[-1], patience)
        check(f"the server is told within {patience} s, here after {time.monotonic() - before:.1f} s", in_time)
        check("the client ends", client.ended() == 0)
        check("the session ended as one whose window is gone", in_order(client.lines, [
            "[SESSION] Fine sessione: " + CLOSED, "[HOOK] Hook tastiera disattivato", "[BLACKOUT] Overlay deattivato",
            "[SESSION] Browser terminato", "[HEARTBEAT] Disconnessione inviata: " + CLOSED]))
        check("no display is covered", not desktop.windows("Vantrel overlay"))
        check("the desktops are as before", desktop.run("xdotool", "get_num_desktops").strip() == "4")
        check_nothing_is_left(browser, client, check, locks_too=deed is not kill_the_cover_beside_a_stopped_browser)
