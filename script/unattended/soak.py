"""Lockdowns back to back, with faults, and what each leaves behind. See script/soak."""

import argparse
import collections
import os
import random
import shutil
import signal
import statistics
import sys
import time

import remains
from browser import FAKE_DEVICES, Browser
from checks import Checks
from client import Client, until
from desktop import Desktop
from harm import ENDS, FAULTS, PATIENCE, Harm, send
from places import MANAGER, PROGRAM, ROOT, SERVER, save_settings
from practice import Practice
from small_disk import SmallDisk
from stage import CODE_FIELD, END_SCREEN, LOCKDOWN_COMPLETE, NEW_SESSION_BUTTON, Stage

FOLDER = ROOT / "build/soak"
CODE = "PROVA1"

# Every kill and stop once, in as few classes as that takes.
KILLS_AND_STOPS = [
    ("stop_the_client kill_a_guard stop_the_browser", "kill_the_browser"),
    ("stop_a_guard stop_the_client_and_kill_a_guard", "kill_the_cover"),
    ("kill_both_guards", "kill_the_client_and_its_guards"),
    ("stop_both_guards", "kill_the_client"),
]


class Plan:
    """What happens in each class: drawn from a seed until the time is over, or each kill and stop once."""

    def __init__(self, seed, minutes, short):
        self._chance = random.Random(seed)
        self._deadline = time.monotonic() + minutes * 60
        self._rest = list(KILLS_AND_STOPS) if short else None
        self._repeats_left = 3

    @property
    def is_over(self):
        if self._repeats_left < 0:
            return True
        return not self._rest if self._rest is not None else time.monotonic() > self._deadline

    def next(self):
        if self._rest is not None:
            faults, end = self._rest.pop(0)
            return faults.split(), end
        faults = self._chance.sample(FAULTS, 3)
        # A client goes through some classes; the ends after which it goes on are the more frequent ones.
        weights = [3 if end.goes_on else 1 for end in ENDS]
        end = self._chance.choices(ENDS, weights)[0]
        return [fault.__name__ for fault in faults], end.__name__

    def repeat(self, faults, end):
        """Has a class that did not come about played again. False if that was tried too often."""
        if self._rest is None:
            return True
        self._rest.insert(0, (" ".join(faults), end))
        self._repeats_left -= 1
        return self._repeats_left >= 0


class Run:
    def __init__(self, harm, home, check, plan):
        self.harm, self.desktop, self.home, self.check, self.plan = harm, harm.desktop, home, check, plan
        self.deeds, self.clients = collections.Counter(), []
        self.lockdowns = self.too_slow = 0

    def play(self):
        faults, end = self.plan.next()
        print("A class: " + ", ".join(deed.replace("_", " ") for deed in [*faults, end]), flush=True)
        before = len(self.client.lines)
        fresh = lambda line: line in self.client.lines[before:]
        self.stage.fill(CODE_FIELD, CODE)
        self.desktop.key("Return")
        if not self.check("the lockdown is complete", until(lambda: fresh(LOCKDOWN_COMPLETE), PATIENCE)):
            return False
        self.lockdowns += 1
        self.harm.disk.free()
        if not self.stands(fresh):
            # As the rules say: a browser that needs that long for its window has none.
            print("  the browser was too slow, and the session has ended by itself", flush=True)
            self.too_slow += 1
            remains.look(self.harm, self.home, self.check, desktops_too=True)
            self.stage.click(NEW_SESSION_BUTTON)
            return self.plan.repeat(faults, end) or self.check("the browser is quick enough for a class", False)
        time.sleep(1)
        self.check("two guards watch", until(lambda: len(self.harm.guards()) == 2, PATIENCE))
        for fault in faults:
            getattr(self.harm, fault)()
            self.deeds[fault] += 1
            time.sleep(1)
        deed = getattr(self.harm, end)
        deed()
        self.deeds[end] += 1
        goes_on = deed.goes_on and self.check("the end screen comes", until(lambda: fresh(END_SCREEN), PATIENCE))
        remains.look(self.harm, self.home, self.check, desktops_too=deed.gives_desktops_back)
        if goes_on:
            self.stage.click(NEW_SESSION_BUTTON)
        return goes_on

    def stands(self, fresh):
        """Whether the meeting came to its full screen before the session ended."""
        full = ("[FULLSCREEN] ✅ Fullscreen attivato via AX", "[MONITOR] Fullscreen già confermato all'avvio")
        until(lambda: fresh(END_SCREEN) or any(map(fresh, full)), PATIENCE)
        return not fresh(END_SCREEN)

    def play_all(self):
        empty = None
        while not self.plan.is_over:
            with Client(PROGRAM, self.desktop, self.home, FOLDER / "client.log") as self.client:
                self.play_with_one_client()
            # What a failed class has left must not be taken for the next one's.
            send(signal.SIGKILL, self.harm.browser.processes())
            windows = lambda: remains.windows(self.desktop)
            # The window manager makes some of its own at the first class.
            if empty is not None:
                self.check("no window is left", until(lambda: windows() <= empty, PATIENCE))
            empty = max(empty or 0, windows())

    def play_with_one_client(self):
        self.harm.client = self.client
        self.stage = self.harm.stage = Stage(self.desktop, self.client, FOLDER, self.check)
        self.stage.window(seconds=PATIENCE)
        self.check("the desktops are as before", until(lambda: remains.desktops(self.desktop) == 4, PATIENCE))
        costs = [remains.cost(self.client.process.pid)]
        while self.play():
            costs.append(remains.cost(self.client.process.pid))
            print(f"  the client has {costs[-1].memory} MB in memory ({costs[0].memory} at first), "
                  f"{costs[-1].files} files open ({costs[0].files}), {costs[-1].threads} threads", flush=True)
            if self.plan.is_over:
                break
        self.clients.append(costs)
        crashes = [line for line in self.client.complaints if "terminate called" in line or "ASSERT" in line]
        self.check(f"nothing failed inside {crashes or ''}", not crashes)

    def sum_up(self):
        print(f"\n{self.lockdowns} lockdowns of {len(self.clients)} clients under {MANAGER}:")
        if self.too_slow:
            print(f"  {self.too_slow:4}  ended by themselves, because the browser was too slow")
        for deed, times in sorted(self.deeds.items()):
            print(f"  {times:4}  {deed.replace('_', ' ')}")
        several = [costs for costs in self.clients if len(costs) > 1]
        if several:
            grown = [costs[-1].memory - costs[0].memory for costs in several]
            longest = max(several, key=len)
            print(f"  memory from a client's start to its last class: {statistics.median(grown):+.0f} MB in the median, "
                  f"{max(grown):+} at most")
            print(f"  the longest one, {len(longest) - 1} classes: {' '.join(str(cost.memory) for cost in longest)} MB")
            print(f"  files open more at the end than at the start: at most {max(c[-1].files - c[0].files for c in several)}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--minutes", type=float, default=10)
    parser.add_argument("--seed", type=int, default=random.randrange(10**6))
    parser.add_argument("--short", action="store_true")
    wanted = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    print("each kill and stop once" if wanted.short else f"seed {wanted.seed}", flush=True)
    shutil.rmtree(FOLDER, ignore_errors=True)
    home = FOLDER / "home"
    home.mkdir(parents=True, exist_ok=True)
    browser = Browser(home, FOLDER)
    browser.install(*FAKE_DEVICES)
    check = Checks()
    with Desktop(ROOT) as desktop, Practice(SERVER, "--session", f"{CODE}=Una prova lunga") as practice, \
            SmallDisk(home / ".config/vantrel") as disk:
        save_settings(home, {"vt_serverURL": practice.address, "vt_fullName": "Maria Bianchi",
                             "vt_email": "maria.bianchi@example.com"})
        harm = Harm(desktop, practice, browser, disk, check, random.Random(wanted.seed))
        run = Run(harm, home, check, Plan(wanted.seed, wanted.minutes, wanted.short))
        run.play_all()
        run.sum_up()
    print(f"{run.lockdowns} lockdowns, {check.failures} checks failed", flush=True)
    return 1 if check.failures else 0


sys.exit(main())
