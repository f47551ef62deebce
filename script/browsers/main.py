"""main.py [NAME ...]: see script/record-browser."""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

from accessible import Accessible
from browser import FLAGS, FLAGS_AS_ROOT, Browser
from client import Client, until
from desktop import Desktop
from pages import Pages
from places import PROGRAM, ROOT, SERVER, save_settings
from practice import Practice
from situations import SITUATIONS
from stage import CODE_FIELD, END_SCREEN, LOCKDOWN_COMPLETE, Stage
from watching import Watcher

RECORDINGS = ROOT / "tests/browsers"


def end(stage, client):
    """Ends the session as a person does, unless it has ended. Whether the end screen came."""
    if END_SCREEN not in client.lines:
        stage.open_status_menu()
        stage.choose_the_end()
        stage.desktop.key("Return")
    return client.wait_for(END_SCREEN, 30)


def record(situation, folder):
    """The looks at that situation, and how it ended."""
    home = folder / "home"
    home.mkdir()
    browser = Browser(home, folder)
    browser.install("--force-renderer-accessibility", *situation.flags)
    browser.profile = folder / "profile"
    classes = folder / "classes.yaml"
    with Pages(situation.page) as pages, Desktop(ROOT) as desktop, Accessible(desktop):
        classes.write_text(f"sessions: [{{code: PROVA, title: Lezione, meet-link: '{pages.address}'}}]\n")
        with Practice(SERVER, "--config", classes) as practice:
            save_settings(home, {"vt_serverURL": practice.address, "vt_fullName": "Maria Bianchi",
                                 "vt_email": "maria.bianchi@example.com"})
            situation.before(browser, desktop)
            with Client(PROGRAM, desktop, home, folder / "client.log") as client:
                stage = Stage(desktop, client, folder, lambda *_: None)
                stage.flags = [*FLAGS, *(FLAGS_AS_ROOT if os.geteuid() == 0 else []),
                               f"--user-data-dir={browser.profile}"]
                stage.fill(CODE_FIELD, "PROVA")
                with Watcher(desktop, client) as watcher:
                    watcher.note("joins")
                    desktop.key("Return")
                    complete = client.wait_for(LOCKDOWN_COMPLETE, 30)
                    time.sleep(2)
                    situation.act(stage, watcher)
                    desktop.picture(ROOT / "build/browsers" / f"{situation.name}.png")
                    watcher.note("the session is ended" if END_SCREEN not in client.lines else "looks at the end screen")
                    ended = end(stage, client)
                    time.sleep(2)
                left = bool(until(lambda: not browser.processes(), 5)) is False
                client.process.terminate()
        for process in browser.processes():
            os.kill(process, 9)
    return {"title": situation.title, "lockdown": complete, "ended": ended, "browser-left": left,
            "looks": watcher.looks}


def main(names):
    known = {situation.name: situation for situation in SITUATIONS}
    if wrong := [name for name in names if name not in known]:
        print(f"record-browser: there is no {', '.join(wrong)}; there are {', '.join(known)}", file=sys.stderr)
        return 2
    (ROOT / "build/browsers").mkdir(parents=True, exist_ok=True)
    version = subprocess.run(["chromium", "--version"], capture_output=True, text=True, check=True).stdout.split()
    for name in names or known:
        print(name, flush=True)
        with tempfile.TemporaryDirectory() as folder:
            found = record(known[name], pathlib.Path(folder))
        found = {"browser": " ".join(version[:2]), **found}
        text = json.dumps(found, ensure_ascii=False, indent=1)
        (RECORDINGS / f"{name}.json").write_text(text + "\n", encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
