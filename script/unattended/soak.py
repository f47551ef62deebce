"""Lockdowns back to back, with faults, and what each leaves behind. See script/soak."""

import argparse
import os
import pathlib
import random
import re
import shutil
import signal
import subprocess
import sys
import time

from places import PROGRAM, ROOT, SERVER, save_settings

sys.path.insert(0, str(ROOT / "tests/practice"))

from browser import FAKE_DEVICES, Browser
from checks import Checks
from client import Client, until
from desktop import Desktop
from practice import Practice
from stage import CODE_FIELD, END_SCREEN, LOCKDOWN_COMPLETE, NEW_SESSION_BUTTON, Stage

FOLDER = ROOT / "build/soak"
CODE = "PROVA1"


def children(process):
    text = subprocess.run(["pgrep", "-P", str(process)], capture_output=True, text=True).stdout
    return [int(child) for child in text.split()]


def named(process, name):
    try:
        return pathlib.Path(f"/proc/{process}/comm").read_text().strip() == name
    except OSError:
        return False


def memory(process):
    """Megabytes that the process has in memory."""
    found = re.search(r"^VmRSS:\s+(\d+)", pathlib.Path(f"/proc/{process}/status").read_text(), re.MULTILINE)
    return int(found[1]) // 1024


class Run:
    def __init__(self, desktop, practice, browser, home, check, chance):
        self.desktop, self.practice, self.browser, self.home = desktop, practice, browser, home
        self.check, self.chance, self.client, self.lockdowns = check, chance, None, 0
        self.guards_seen = set()

    @property
    def process(self):
        return self.client.process.pid

    def guards(self):
        found = {child for child in children(self.process) if named(child, "vantrel-guard")}
        self.guards_seen |= found
        return found

    def covered(self):
        return self.desktop.windows("Vantrel overlay")

    # Faults that a class survives.

    def stop_the_client(self):
        os.kill(self.process, signal.SIGSTOP)
        self.check("a stopped client covers nothing", until(lambda: not self.covered(), 3))
        os.kill(self.process, signal.SIGCONT)

    def kill_a_guard(self):
        self.harm_a_guard(signal.SIGKILL)

    def stop_a_guard(self):
        self.harm_a_guard(signal.SIGSTOP)

    def harm_a_guard(self, number):
        victim = self.chance.choice(sorted(self.guards()))
        os.kill(victim, number)
        self.check("the guard is replaced", until(lambda: len(self.guards()) == 2 and victim not in self.guards(), 8))

    def cut_the_network(self):
        self.practice.change_reply(path="/api/heartbeat", times=2, dropConnection=True)

    def take_a_display_away(self):
        self.desktop.run("xrandr", "--delmonitor", "Destro")
        self.check("no cover is left where no display is", until(lambda: not self.covered(), 8))
        self.desktop.run("xrandr", "--setmonitor", "Destro", "1440/366x900/229+1440+0", "none")
        self.check("the display is covered again", until(self.covered, 8))

    def flood_with_keys(self):
        self.desktop.run("xdotool", "key", "--delay", "1", *["super+Tab", "b", "ctrl+Left"] * 100)

    def fill_the_disk(self):
        # What the client writes from now on does not fit anywhere.
        subprocess.run(["prlimit", "--pid", str(self.process), "--fsize=0"], check=True)

    # Ends. Each says whether the client goes on to the end screen, and whether it closes the browser.

    def end_from_the_menu(self):
        stage = self.stage
        stage.open_status_menu()
        stage.choose_the_end()
        self.desktop.key("Return")
        return True

    def kill_the_browser(self):
        started = [line for line in self.client.lines if line.startswith("[BROWSER] Google Chrome PID ")][-1]
        os.kill(int(started.rpartition(" ")[2]), signal.SIGKILL)
        return True

    def leave_the_space(self):
        self.desktop.run("xdotool", "set_desktop", 0)
        return True

    def kill_the_cover(self):
        self.desktop.run("xdotool", "windowkill", until(self.covered)[0].identifier)
        self.check("the client ends", self.client.ended() == 0)
        return False

    def kill_the_client(self):
        os.kill(self.process, signal.SIGKILL)
        self.client.ended()
        # It cannot close its browser.
        for process in self.browser.processes():
            try:
                os.kill(process, signal.SIGKILL)
            except ProcessLookupError:
                pass
        return False

    FAULTS = [stop_the_client, kill_a_guard, stop_a_guard, cut_the_network, take_a_display_away, flood_with_keys,
              fill_the_disk]
    ENDS = [end_from_the_menu, kill_the_browser, leave_the_space, kill_the_cover, kill_the_client]

    def play(self, ends):
        faults = self.chance.sample(self.FAULTS, 3)
        end = self.chance.choice(ends)
        print("A class: " + ", ".join(deed.__name__.replace("_", " ") for deed in [*faults, end]), flush=True)
        self.lockdowns += 1
        before = len(self.client.lines)
        fresh = lambda line: line in self.client.lines[before:]
        self.stage.fill(CODE_FIELD, CODE)
        self.desktop.key("Return")
        if not self.check("the lockdown is complete", until(lambda: fresh(LOCKDOWN_COMPLETE), 30)):
            return False
        time.sleep(2)
        self.check("two guards watch", until(lambda: len(self.guards()) == 2))
        for fault in faults:
            fault(self)
            time.sleep(1)
        goes_on = end(self)
        if goes_on:
            goes_on = self.check("the end screen comes", until(lambda: fresh(END_SCREEN), 20))
        self.look_what_is_left()
        if goes_on:
            self.stage.click(NEW_SESSION_BUTTON)
        return goes_on

    def look_what_is_left(self):
        self.check("no process of the browser is left", until(lambda: not self.browser.processes(), 8))
        self.check("no guard is left", until(lambda: not any(named(one, "vantrel-guard") for one in self.guards_seen), 8))
        self.check("no display is covered", not self.covered())
        self.check("the status item is gone", until(lambda: not self.desktop.windows("Vantrel status"), 5))
        self.check("the desktops are as before",
                   until(lambda: self.desktop.run("xdotool", "get_num_desktops").strip() == "4", 5))
        self.check("keys are nobody's but the desktop's", self.keys_pass())
        left = [path.name for path in (self.home / ".config/vantrel").iterdir() if path.name != "defaults.json"]
        self.check(f"no file is left {left or ''}", not left)

    def keys_pass(self):
        tester = subprocess.Popen(["xev", "-event", "keyboard", "-name", "Tasti"], env=self.desktop.environment,
                                  stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
        try:
            until(lambda: self.desktop.windows("Tasti"), 5)
            self.desktop.activate(self.desktop.windows("Tasti")[0])
            until(lambda: self.desktop.focused() == "Tasti", 3)
            self.desktop.key("super+q", "x")
            time.sleep(0.5)
        finally:
            tester.terminate()
        said = tester.communicate()[0]
        return "keysym 0x71, q" in said and "keysym 0x78, x" in said

    def play_until(self, deadline):
        while time.monotonic() < deadline:
            with Client(PROGRAM, self.desktop, self.home, FOLDER / "client.log") as self.client:
                self.stage = Stage(self.desktop, self.client, FOLDER, self.check)
                self.stage.window()
                first, descriptors = memory(self.process), len(os.listdir(f"/proc/{self.process}/fd"))
                while self.play(self.ENDS if time.monotonic() < deadline else self.ENDS[:1]):
                    now, open_now = memory(self.process), len(os.listdir(f"/proc/{self.process}/fd"))
                    print(f"  the client has {now} MB in memory ({first} at first), {open_now} files open ({descriptors})",
                          flush=True)
                    if time.monotonic() > deadline:
                        break
                check = self.check
                crashes = [line for line in self.client.complaints if "terminate called" in line or "ASSERT" in line]
                check(f"nothing failed inside {crashes or ''}", not crashes)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--minutes", type=float, default=10)
    parser.add_argument("--seed", type=int, default=random.randrange(10**6))
    wanted = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    print(f"seed {wanted.seed}", flush=True)
    shutil.rmtree(FOLDER, ignore_errors=True)
    home = FOLDER / "home"
    home.mkdir(parents=True)
    browser = Browser(home, FOLDER)
    browser.install(*FAKE_DEVICES)
    check = Checks()
    with Desktop(ROOT) as desktop, Practice(SERVER, "--session", f"{CODE}=Una prova lunga") as practice:
        save_settings(home, {"vt_serverURL": practice.address, "vt_fullName": "Maria Bianchi",
                             "vt_email": "maria.bianchi@example.com"})
        run = Run(desktop, practice, browser, home, check, random.Random(wanted.seed))
        run.play_until(time.monotonic() + wanted.minutes * 60)
    print(f"{run.lockdowns} lockdowns, {check.failures} checks failed", flush=True)
    return 1 if check.failures else 0


sys.exit(main())
