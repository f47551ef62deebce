"""try_package.py ROOT: an ordinary user of the fresh Debian under ROOT starts the client from its menu entry and holds a
class with it. The desktop and the practice server are this computer's."""
import pathlib
import subprocess
import sys

from client import Client, until
from desktop import Desktop
from places import ROOT, SERVER
from practice import Practice
from stage import CODE_FIELD, EMAIL_FIELD, END_SCREEN, LOCKDOWN_COMPLETE, NAME_FIELD, SERVER_FIELD, Stage

ENTRY = "/usr/share/applications/biz.quorrin.vantrel.desktop"
FOLDER = ROOT / "build/package"
DISPLAY = (1440, 900)


class InsideClient(Client):
    """Started by the menu entry, as the user persona."""

    def __init__(self, fresh, desktop, log):
        environment = [f"{name}={value}" for name, value in (
            ("HOME", "/home/persona"), ("USER", "persona"), ("DISPLAY", desktop.display), ("LC_ALL", "C.UTF-8"),
            ("PATH", "/usr/bin:/bin"))]
        super().__init__("/usr/bin/env", desktop, fresh / "tmp", log,
                         ["chroot", "--userspec=persona:persona", fresh])
        self._command += ["-i", *environment, "gio", "launch", ENTRY]


def check(what, held):
    print(f"  {'ok' if held else 'FAILED'}  {what}", flush=True)
    if not held:
        raise SystemExit(1)


def processes(fresh):
    """What the user persona still runs of the client and the browser. What has ended and was not asked for by whoever
    started it does not count."""
    user = str((fresh / "home/persona").stat().st_uid)
    found = subprocess.run(["ps", "-u", user, "-o", "stat=,comm="], capture_output=True, text=True, check=False)
    running = [line.split() for line in found.stdout.splitlines()]
    return [words[1] for words in running if words[0][0] != "Z" and words[1].startswith(("vantrel", "chrom"))]


def main(fresh):
    with Desktop(ROOT) as desktop, Practice(SERVER, "--session", "PROVA=Prova del pacchetto") as practice:
        with InsideClient(fresh, desktop, FOLDER / "client.log") as client:
            stage = Stage(desktop, client, FOLDER, check)
            check("the menu entry starts the client", client.wait_for("[APP] Vantrel avviato"))
            for field, text in ((SERVER_FIELD, practice.address), (CODE_FIELD, "PROVA"), (NAME_FIELD, "Maria Bianchi"),
                                (EMAIL_FIELD, "maria@example.com")):
                stage.fill(field, text)
            stage.picture("join-screen")
            desktop.key("Return")
            check("the lockdown is complete", client.wait_for(LOCKDOWN_COMPLETE, 60))
            check("the meeting is in full screen", "[FULLSCREEN] ✅ Fullscreen attivato via AX" in client.lines)
            check("its page has opened there, and fills the display", until(
                lambda: any((report.get("width"), report.get("height")) == DISPLAY for report in practice.reports()), 30))
            stage.picture("class")
            desktop.key("super+Tab")
            check("a key is swallowed", client.wait_for("[HOOK] 🚫 Bloccato: Cmd+Tab"))
            stage.open_status_menu()
            stage.choose_the_end()
            desktop.key("Return")
            check("the end screen comes", client.wait_for(END_SCREEN, 30))
            stage.picture("end-screen")
            check("the browser has been closed", "[SESSION] Browser terminato" in client.lines)
            check("the server has been told", until(
                lambda: any(heartbeat["disconnecting"] for heartbeat in practice.heartbeats())))
            check("the end screen has the keyboard", stage.has_keyboard())
            desktop.key("ctrl+q")
            gone = until(lambda: not processes(fresh), 15)
            check("neither client nor browser is left" if gone else f"these are left: {processes(fresh)}", gone)


main(pathlib.Path(sys.argv[1]))
