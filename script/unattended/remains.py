"""What a class left behind."""

import collections
import json
import os
import pathlib
import re
import subprocess

from client import until
from harm import PATIENCE, named

Cost = collections.namedtuple("Cost", "memory files threads")


def cost(process):
    """Megabytes in memory, open files and threads of a process."""
    text = pathlib.Path(f"/proc/{process}/status").read_text()
    value = lambda name: int(re.search(rf"^{name}:\s+(\d+)", text, re.MULTILINE)[1])
    return Cost(value("VmRSS") // 1024, len(os.listdir(f"/proc/{process}/fd")), value("Threads"))


def desktops(desktop):
    return int(desktop.run("xdotool", "get_num_desktops"))


def windows(desktop):
    """How many windows there are on the display, seen or not."""
    return desktop.run("xwininfo", "-root", "-tree").count("\n     ")


def said_of(processes):
    return subprocess.run(["ps", "-ww", "-o", "pid,ppid,pgid,stat,lstart,args", *map(str, processes)], capture_output=True,
                          text=True).stdout


def are_whole(settings):
    try:
        return "vt_serverURL" in json.loads(settings.read_text())
    except (OSError, ValueError):
        return False


def look(harm, home, check, desktops_too):
    desktop = harm.desktop
    if not check("no process of the browser is left", until(lambda: not harm.browser.processes(), PATIENCE)):
        print(said_of(harm.browser.processes()), flush=True)
    check("no guard is left", until(lambda: not any(named(one, "vantrel-guard") for one in harm.guards_seen), PATIENCE))
    check("no display is covered", until(lambda: not harm.covered(), PATIENCE))
    check("the status item is gone", until(lambda: not desktop.windows("Vantrel status"), PATIENCE))
    if desktops_too:
        check("the desktops are as before", until(lambda: desktops(desktop) == 4, PATIENCE))
    check("keys are nobody's but the desktop's", desktop.keys_pass())
    settings = home / ".config/vantrel/defaults.json"
    check("the settings are whole", are_whole(settings))
    left = [path.name for path in settings.parent.iterdir() if path.name not in (settings.name, "ballast")]
    check(f"no file is left {left or ''}", not left)
