"""A session on a computer where the browser is already open: the client must not end it."""

import re
import subprocess

from browser import FAKE_DEVICES, Browser, check_nothing_is_left, meeting_arguments
from checks import in_order
from client import Client, until
from desktop import Desktop
from places import PROGRAM, ROOT, RUN, SERVER, save_settings
from practice import Practice
from stage import CODE_FIELD, END_SCREEN, END_TITLE, LOCKDOWN_COMPLETE, Stage, dark

CODE, TITLE = "NQRP5D", "Sicurezza sul lavoro"
FOLDER = RUN / "browser-open-before"
TRACE = FOLDER / "signals.txt"
# Watches the client and all that it starts, but not what was there before.
WATCHING_SIGNALS = ["strace", "-f", "--seccomp-bpf", "-qq", "-o", TRACE, "-e", "signal=none",
                    "-e", "trace=kill,tkill,tgkill,pidfd_send_signal,rt_sigqueueinfo,rt_tgsigqueueinfo"]


def all_guards():
    """The client starts two for each lockdown and ends them."""
    return subprocess.run(["pgrep", "-f", "/vantrel-guard"], capture_output=True, text=True).stdout.split()


def signals_sent(guards):
    """The calls that sent a signal to any other process. Signal 0 only checks whether a process exists."""
    to_a_guard = rf"\bkill\(({'|'.join(guards)}), "
    return [line for line in TRACE.read_text().splitlines()
            if not re.search(r"\bt?kill\((\d+, )+0\)", line) and not (guards and re.search(to_a_guard, line))]


def play(check):
    print("The browser is open already", flush=True)
    home = FOLDER / "home"
    home.mkdir(parents=True)
    browser = Browser(home, FOLDER)
    browser.install(*FAKE_DEVICES)
    with Desktop(ROOT) as desktop, Practice(SERVER, "--session", f"{CODE}={TITLE}") as practice:
        save_settings(home, {"vt_serverURL": practice.address, "vt_fullName": "Maria Bianchi",
                             "vt_email": "maria.bianchi@example.com"})
        own_arguments = ["--no-first-run", "--no-default-browser-check", practice.address + "/"]
        with browser.start(desktop, *own_arguments) as own:
            try:
                check("its window is there", until(lambda: len(desktop.managed("Chromium")) == 1, 20))
                with Client(PROGRAM, desktop, home, RUN / "client-browser-open-before.log", WATCHING_SIGNALS) as client:
                    guards = join_and_end(Stage(desktop, client, RUN, check), own, check)
                check("nothing was written on standard error", client.complaints == [])
                check("neither the client nor what it started has signalled any process but its own guards",
                      signals_sent(guards) == [])
                check("the browser has left by itself", until(lambda: own.poll() is not None) and own.returncode == 0)
                check_nothing_is_left(browser, client, check)
            finally:
                own.kill()
        check("the browser was started again with exactly the eight arguments",
              browser.starts() == [own_arguments, meeting_arguments(practice.address, CODE)])


def join_and_end(stage, own, check):
    desktop, client = stage.desktop, stage.client
    check("the client says that it runs", client.wait_for("[APP] Vantrel avviato"))
    stage.picture("11-browser-open-before")
    stage.fill(CODE_FIELD, CODE)
    desktop.key("Return")
    check("the lockdown is complete", client.wait_for(LOCKDOWN_COMPLETE))
    check("the browser has a second window", until(lambda: len(desktop.managed("Chromium")) == 2))
    check("the browser that was there is taken for the meeting's", in_order(client.lines, [
        f"[BROWSER] Chrome già in esecuzione, PID pre-launch: {own.pid}",
        f"[BROWSER] Google Chrome PID (pre-existing): {own.pid}", "[FULLSCREEN] ✅ Fullscreen attivato via AX"]))
    guards = all_guards()
    stage.open_status_menu()
    stage.choose_the_end()
    desktop.key("Return")
    check("the end screen comes", client.wait_for(END_SCREEN))
    check("every window of the browser is closed", until(lambda: not desktop.managed("Chromium")))
    check("the client says so", in_order(client.lines, [
        "[BROWSER] Chiudo finestra lockdown (Google Chrome pre-existing, processo non killato)",
        "[SESSION] Browser terminato"]))
    check("the end screen has the keyboard", stage.has_keyboard())
    stage.picture("12-every-window-closed", ("the end's title", END_TITLE, dark, True))
    desktop.key("ctrl+q")
    check("the client quits with status 0", client.ended() == 0)
    return guards
