"""A whole class in small: the other display is covered, keys that would leave are swallowed, a window that comes in
front is sent back, and the participant ends the session from the status menu."""

import subprocess
import time

from browser import FAKE_DEVICES, Browser, check_nothing_is_left
from client import Client, until
from desktop import Desktop
from headless_chromium import HeadlessChromium
from places import MANAGER, PROGRAM, ROOT, RUN, RUN_NAME, SERVER, save_settings
from practice import Practice
from stage import CODE_FIELD, END_SCREEN, END_TITLE, LOCKDOWN_COMPLETE, Stage, dark

CODE, TITLE, NAME = "AULA01", "Primo soccorso", "Maria Bianchi"
FOLDER = RUN / "a-class"
FIRST_DISPLAY = (0, 0, 1440, 900)
OTHER_DISPLAY = (1440, 0, 1440, 900)

# (keys as X names them, name in the log). Super stands for a Mac's Command.
LEAVING = [("super+q", "Cmd+Q"), ("super+Tab", "Cmd+Tab"), ("super+shift+Tab", "Cmd+Shift+Tab"),
           ("super+space", "Cmd+Space"), ("super+shift+4", "Cmd+4"), ("ctrl+Left", "Ctrl+Arrow"),
           ("ctrl+Tab", "Ctrl+Tab"), ("super+ctrl+f", "Cmd+Ctrl+F")]


def black(r, g, b):
    return r < 12 and g < 12 and b < 12


def grey(r, g, b):
    return 70 < r < 230 and abs(r - g) < 12 and abs(g - b) < 12


def reported(practice, kind):
    return [report for report in practice.reports() if report["kind"] == kind]


def violations(practice):
    """(type, detail) of all violations that the server received, oldest first."""
    return [(violation["type"], violation["detail"]) for body in practice.heartbeats()
            for violation in body["violations"]]


def check_the_other_display(stage, check):
    picture = stage.picture("20-class-in-lockdown")
    x, y, width, height = OTHER_DISPLAY
    check("the other display is covered in black", stage.desktop.pixels(picture, OTHER_DISPLAY, black) > width * height * 0.95)
    middle = (x + width // 2 - 260, y + height // 2 - 160, 520, 320)
    check("a notice stands in its middle", stage.desktop.pixels(picture, middle, grey) > 500)
    check("the meeting goes on being painted beside it",
          until(lambda: stage.desktop.changed(picture, stage.picture("20-class-goes-on"), FIRST_DISPLAY) > 0))
    check("the client says so", stage.client.wait_for("[BLACKOUT] Coperto monitor Destro (1440.0, 0.0, 1440.0, 900.0)"))


def check_the_devices(practice, check):
    states = lambda: {(report["device"], report["state"]) for report in reported(practice, "device")}
    for device in ("camera", "microphone"):
        check(f"the page has the {device}", until(lambda: (device, "live") in states()))
    check("neither was refused", {state for _, state in states()} == {"granted", "live"})


def check_the_keys(stage, practice, check):
    desktop, client = stage.desktop, stage.client
    check("the page has the focus", until(lambda: any(r["focused"] for r in reported(practice, "opened") + reported(practice, "view"))))
    desktop.run("xdotool", "mousemove", 720, 500)
    desktop.type("prima ")
    for keys, _ in LEAVING:
        desktop.key(keys)
    desktop.type("dopo")
    check("typed text reaches the page, before and after",
          until(lambda: [report["text"] for report in reported(practice, "text")][-1:] == ["prima dopo"]))
    for keys, name in LEAVING:
        check(f"{keys} is swallowed as {name}", client.wait_for("[HOOK] 🚫 Bloccato: " + name, 2))
    held = [report["key"] for report in reported(practice, "key")
            if (report["meta"] or report["ctrl"]) and report["key"] not in ("Meta", "Control", "Shift")]
    check("none of them reached the page", held == [])
    swallowed = [line.rpartition(": ")[2] for line in client.lines if line.startswith("[HOOK] 🚫 Bloccato")]
    check("each was swallowed once, in order", swallowed == [name for _, name in LEAVING])


def check_the_focus(stage, practice, check):
    desktop, client = stage.desktop, stage.client
    terminal = subprocess.Popen(["xterm", "-geometry", "80x24+300+200", "-title", "Appunti", "-e", "sleep", "600"],
                                env=desktop.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)
    try:
        check("a terminal comes up", until(lambda: desktop.windows("Appunti")))
        desktop.activate(desktop.windows("Appunti")[0])
        stage.picture("21-terminal-over-the-meeting")
        check("the browser is brought back", client.wait_for("[MONITOR] Focus su xterm — riporto Google Chrome in primo piano", 5))
        check("it has the keyboard again", until(lambda: "Chromium" in desktop.focused_class(), 3))
        stage.picture("22-browser-brought-back")
    finally:
        terminal.kill()
        terminal.wait()
    check("the server is told of the focus", until(lambda: ("FOCUS_VIOLATION", "xterm") in violations(practice), 20))
    told = violations(practice)
    check("and of each key, in order, and of nothing else",
          [violation for violation in told if violation != ("FOCUS_VIOLATION", "xterm")] ==
          [("KEY_BLOCKED", name) for _, name in LEAVING])
    with HeadlessChromium(1280, 900) as trainer:
        trainer.open(practice.address + "/")
        trainer.wait_for("document.body?.textContent.includes('xterm')")
        trainer.picture(RUN / "23-violations-on-the-trainers-page.png")
        print(f"  picture {RUN_NAME}/23-violations-on-the-trainers-page.png", flush=True)


def end_from_the_menu(stage, browser, check):
    desktop, client = stage.desktop, stage.client
    check("the status item keeps out of the meeting's way", until(lambda: not desktop.windows("Vantrel status"), 3))
    stage.open_status_menu()
    stage.picture("24-status-menu-over-the-meeting")
    stage.choose_the_end()
    desktop.key("Return")
    check("the end screen comes", client.wait_for(END_SCREEN))
    picture = stage.picture("25-class-ended", ("the end's title", END_TITLE, dark, True))
    check("the other display is given back", not desktop.windows("Vantrel overlay"))
    if MANAGER == "openbox":
        # The others paint no background by themselves.
        check("its background is seen again", desktop.pixels(picture, OTHER_DISPLAY, black) < 1000)
    check_nothing_is_left(browser, client, check)
    before = len(client.lines)
    desktop.key("super+q", "ctrl+Tab")
    time.sleep(0.5)
    check("keys are nobody's but the desktop's again",
          not [line for line in client.lines[before:] if line.startswith("[HOOK]")])


def play(check):
    print("A class in small", flush=True)
    home = FOLDER / "home"
    home.mkdir(parents=True)
    browser = Browser(home, FOLDER)
    browser.install(*FAKE_DEVICES)
    with Desktop(ROOT) as desktop, Practice(SERVER, "--session", f"{CODE}={TITLE}") as practice:
        save_settings(home, {"vt_serverURL": practice.address, "vt_fullName": NAME,
                             "vt_email": "maria.bianchi@example.com"})
        with Client(PROGRAM, desktop, home, RUN / "client-a-class.log") as client:
            stage = Stage(desktop, client, RUN, check)
            stage.fill(CODE_FIELD, CODE)
            desktop.key("Return")
            check("the lockdown is complete", client.wait_for(LOCKDOWN_COMPLETE, 30))
            check("the keyboard hook is at work", "[LOCKDOWN] ✅ Keyboard hook verificato e attivo" in client.lines)
            check_the_other_display(stage, check)
            check_the_devices(practice, check)
            check_the_keys(stage, practice, check)
            check_the_focus(stage, practice, check)
            end_from_the_menu(stage, browser, check)
            check("the end screen has the keyboard", stage.has_keyboard())
            desktop.key("ctrl+q")
            check("the client quits with status 0", client.ended() == 0)
        check("nothing was written on standard error", client.complaints == [])
