"""Sessions with the real client on separate desktops, as a person would use them.

Leaves under build/run/ one picture for each stage, client.log and other records of the sessions. Exits with status 0
if all checks passed. With names of scenarios, plays only those. Under another window manager than openbox, a class, or that none begins.
"""

import os
import pathlib
import shutil
import signal
import sys

from places import MANAGER, PROGRAM, ROOT, RUN, RUN_NAME

sys.path.insert(0, str(ROOT / "tests/practice"))

import a_class
import browser_open_before
import endings
import off_the_screen
import refused
import two_sessions
from checks import Checks

SCENARIOS = {"two-sessions": two_sessions.play, "browser-open-before": browser_open_before.play,
             "a-class": a_class.play, "endings": endings.play,
             "off-the-screen": off_the_screen.play}
# What is played under which other window manager, if not the class.
ELSEWHERE = {"i3": {"refused": refused.play}}


def clients():
    """The processes of this project's client, and not of another copy's on the same computer."""
    program = str(PROGRAM)
    found = set()
    for folder in pathlib.Path("/proc").iterdir():
        try:
            if folder.name.isdigit() and os.readlink(folder / "exe").removesuffix(" (deleted)") == program:
                found.add(folder.name)
        except OSError:
            continue
    return found


def main(names):
    # When this is stopped, everything that it started is stopped too.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    shutil.rmtree(RUN, ignore_errors=True)
    RUN.mkdir(parents=True)
    check = Checks()
    before = clients()
    known = SCENARIOS | ELSEWHERE.get(MANAGER, {})
    for name in names or (SCENARIOS if MANAGER == "openbox" else ELSEWHERE.get(MANAGER, ["a-class"])):
        known[name](check)
    check("no process of the client is left", clients() <= before)

    if check.failures:
        print(f"{check.failures} checks failed; see the logs and pictures under {RUN_NAME}/.")
        return 1
    print(f"All of it held; the logs and pictures are under {RUN_NAME}/.")
    return 0


sys.exit(main(sys.argv[1:]))
