"""What happens to a class: faults that it survives, and ends."""

import os
import pathlib
import signal
import subprocess
import time

from client import until
from places import MANAGER

# Seconds that a check waits for what has to come. How fast it comes, bench/ measures.
PATIENCE = 60


def named(process, name):
    try:
        return pathlib.Path(f"/proc/{process}/comm").read_text().strip() == name
    except OSError:
        return False


def children(process):
    text = subprocess.run(["pgrep", "-P", str(process)], capture_output=True, text=True).stdout
    return [int(child) for child in text.split()]


def send(number, processes):
    for process in processes:
        try:
            os.kill(process, number)
        except ProcessLookupError:
            pass


class Harm:
    def __init__(self, desktop, practice, browser, disk, check, chance):
        self.desktop, self.practice, self.browser, self.disk = desktop, practice, browser, disk
        self.check, self.chance = check, chance
        self.client = self.stage = None
        self.guards_seen = set()

    @property
    def process(self):
        return self.client.process.pid

    def guards(self):
        found = {child for child in children(self.process) if named(child, "vantrel-guard")}
        self.guards_seen |= found
        return found

    def _a_guard(self):
        return self.chance.choice(sorted(until(self.guards, PATIENCE)))

    def covered(self):
        return self.desktop.windows("Vantrel overlay")

    # Faults that a class survives.

    def stop_the_client(self):
        os.kill(self.process, signal.SIGSTOP)
        self._is_freed_and_goes_on()

    def stop_the_client_and_kill_a_guard(self):
        victim = self._a_guard()
        deeds = [(self.process, signal.SIGSTOP), (victim, signal.SIGKILL)]
        self.chance.shuffle(deeds)
        for process, number in deeds:
            os.kill(process, number)
        self._is_freed_and_goes_on()
        self._are_replaced({victim})

    def _is_freed_and_goes_on(self):
        self.check("a stopped client covers nothing", until(lambda: not self.covered(), PATIENCE))
        self.check("it swallows no key", until(self.desktop.keys_pass, PATIENCE))
        os.kill(self.process, signal.SIGCONT)
        self.check("it covers again when it goes on", until(self.covered, PATIENCE))

    def kill_a_guard(self):
        self._harm_guards(signal.SIGKILL, [self._a_guard()])

    def kill_both_guards(self):
        self._harm_guards(signal.SIGKILL, self.guards())

    def stop_a_guard(self):
        self._harm_guards(signal.SIGSTOP, [self._a_guard()])

    def stop_both_guards(self):
        self._harm_guards(signal.SIGSTOP, self.guards())

    def _harm_guards(self, number, victims):
        send(number, victims)
        self._are_replaced(set(victims))

    def _are_replaced(self, victims):
        self.check("the guards are replaced", until(lambda: len(self.guards() - victims) == 2, PATIENCE))
        self.check("the old ones are gone", until(lambda: not any(named(one, "vantrel-guard") for one in victims), PATIENCE))

    def stop_the_browser(self):
        processes = self.browser.processes()
        send(signal.SIGSTOP, processes)
        time.sleep(3)
        send(signal.SIGCONT, processes)

    def cut_the_network(self):
        self.practice.change_reply(path="/api/heartbeat", times=2, dropConnection=True)

    def stop_the_server(self):
        with self.practice.stopped():
            time.sleep(4)

    def take_a_display_away(self):
        self._unplug()
        self.check("no cover is left where no display is", until(lambda: not self.covered(), PATIENCE))
        self._plug_in()
        self.check("the display is covered again", until(self.covered, PATIENCE))

    def plug_a_display_in_and_out(self):
        for _ in range(5):
            self._unplug()
            self._plug_in()
        self.check("the display is covered at last", until(lambda: len(self.covered()) == 1, PATIENCE))

    def _unplug(self):
        if MANAGER == "openbox":
            self.desktop.run("xrandr", "--delmonitor", "Destro")
        else:
            self.desktop.run("xrandr", "--output", "DUMMY1", "--off")

    def _plug_in(self):
        if MANAGER == "openbox":
            self.desktop.run("xrandr", "--setmonitor", "Destro", "1440/366x900/229+1440+0", "none")
        else:
            self.desktop.run("xrandr", "--output", "DUMMY1", "--mode", "1440x900", "--right-of", "DUMMY0")

    def flood_with_keys(self):
        self.desktop.run("xdotool", "key", "--delay", "1", *["super+Tab", "b", "ctrl+Left"] * 100)

    def fill_the_disk(self):
        # It is full until the next lockdown is complete, so the next class cannot save its settings.
        if not self.disk.fill():
            subprocess.run(["prlimit", "--pid", str(self.process), "--fsize=0:"], check=True)

    # Ends.

    def end_from_the_menu(self):
        self.stage.open_status_menu()
        self.stage.choose_the_end()
        self.desktop.key("Return")

    def kill_the_browser(self):
        started = [line for line in self.client.lines if line.startswith("[BROWSER] Google Chrome PID ")][-1]
        os.kill(int(started.rpartition(" ")[2]), signal.SIGKILL)

    def leave_the_space(self):
        # A window manager that is slow to make a desktop leaves the meeting on the one where it was opened.
        here = int(self.desktop.run("xdotool", "get_desktop"))
        self.desktop.run("xdotool", "set_desktop", 1 if here == 0 else 0)

    def kill_the_cover(self):
        self.desktop.run("xdotool", "windowkill", until(self.covered)[0].identifier)
        self.check("the client ends", self.client.ended(60) == 0)

    def kill_the_client(self):
        os.kill(self.process, signal.SIGKILL)
        self._close_its_browser()

    def kill_the_client_and_its_guards(self):
        send(signal.SIGKILL, [*self.guards(), self.process])
        self._close_its_browser()

    def _close_its_browser(self):
        # A client that was killed cannot.
        self.client.ended()
        send(signal.SIGKILL, self.browser.processes())


def ends(deed, goes_on=False, gives_desktops_back=True):
    """`goes_on`: the client shows its end screen. `gives_desktops_back`: somebody is left who can."""
    deed.goes_on, deed.gives_desktops_back = goes_on, gives_desktops_back
    return deed


FAULTS = [Harm.stop_the_client, Harm.stop_the_client_and_kill_a_guard, Harm.kill_a_guard, Harm.kill_both_guards,
          Harm.stop_a_guard, Harm.stop_both_guards, Harm.stop_the_browser, Harm.cut_the_network, Harm.stop_the_server,
          Harm.take_a_display_away, Harm.plug_a_display_in_and_out, Harm.flood_with_keys, Harm.fill_the_disk]
ENDS = [ends(Harm.end_from_the_menu, goes_on=True), ends(Harm.kill_the_browser, goes_on=True),
        ends(Harm.leave_the_space, goes_on=True), ends(Harm.kill_the_cover), ends(Harm.kill_the_client),
        ends(Harm.kill_the_client_and_its_guards, gives_desktops_back=False)]
