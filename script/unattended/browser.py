"""Chromium where the client looks for Chrome: under its name, in a home folder of the run's own.

browser.py HOME FOLDER installs it for a client that is started by hand. FOLDER is for its profile and the record of
its arguments.
"""

import os
import pathlib
import shlex
import subprocess
import sys

from client import until

# Adds what keeps Chromium apart from other profiles and away from the network, and records the given arguments. An
# empty line ends the arguments of one start.
WRAPPER = """#!/bin/sh
printf '%s\\n' "$@" '' >>{noted}
exec chromium {flags} --user-data-dir={profile} "$@" 2>>{complaints}
"""
FLAGS = ["--disable-quic", "--disable-background-networking", "--disable-component-update", "--disable-sync",
         "--no-proxy-server", "--password-store=basic"]
# Its sandbox does not run as root.
FLAGS_AS_ROOT = ["--no-sandbox", "--test-type"]

# A camera with a moving picture and a microphone that beeps, and a person who allows both. Only where nobody sits: with
# them a trial by hand would not show its own camera.
FAKE_DEVICES = ["--use-fake-device-for-media-stream", "--use-fake-ui-for-media-stream"]

# The client's arguments after the meeting's address.
OTHER_ARGUMENTS = ["--new-window", "--no-first-run", "--no-default-browser-check", "--disable-extensions",
                   "--disable-tab-strip", "--disable-session-crashed-bubble", "--disable-infobars"]


def meeting_arguments(address, code):
    return [f"--app={address}/meet/{code}", *OTHER_ARGUMENTS]


class Browser:
    def __init__(self, home, folder):
        self._home, self._profile = home, folder / "profile"
        self._noted, self._complaints = folder / "browser-arguments.txt", folder / "browser.log"
        self.program = home / "Applications/Google Chrome.app/Contents/MacOS/Google Chrome"

    def install(self, *more_flags):
        self.program.parent.mkdir(parents=True, exist_ok=True)
        self._noted.unlink(missing_ok=True)
        flags = [*FLAGS, *(FLAGS_AS_ROOT if os.geteuid() == 0 else []), *more_flags]
        self.program.write_text(WRAPPER.format(
            noted=shlex.quote(str(self._noted)), complaints=shlex.quote(str(self._complaints)),
            profile=shlex.quote(str(self._profile)), flags=" ".join(flags)))
        self.program.chmod(0o755)

    def start(self, desktop, *arguments):
        """Opened by the person at the computer, as a separate process."""
        return subprocess.Popen([self.program, *arguments], env={**desktop.environment, "HOME": str(self._home)},
                                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                start_new_session=True)

    def starts(self):
        """The arguments of every start so far."""
        if not self._noted.exists():
            return []
        return [start.split("\n") for start in self._noted.read_text().split("\n\n") if start]

    def is_locked(self):
        """Whether a lock of the profile exists, usually a link to nothing."""
        return any(os.path.lexists(self._profile / name) for name in ("SingletonLock", "SingletonSocket"))

    def processes(self, *groups):
        """The browser's processes that still run: found by its home folder or profile, or because they belong to
        those process groups, as its helpers do under any name. The client is not among them."""
        signs = [f"HOME={self._home}\0".encode(), str(self._profile).encode()]
        found = []
        for folder in pathlib.Path("/proc").iterdir():
            if not folder.name.isdigit():
                continue
            try:
                name, _, rest = (folder / "stat").read_text().rpartition(")")
                state, _, group = rest.split()[:3]
                known = (folder / "environ").read_bytes() + b"\0" + (folder / "cmdline").read_bytes()
            except OSError:
                continue
            ours = int(group) in groups or any(sign in known for sign in signs)
            if ours and state != "Z" and not name.partition("(")[2].startswith("vantrel"):
                found.append(int(folder.name))
        return found


def check_nothing_is_left(browser, client, check, locks_too=True):
    """After an end: the browser, all the processes it started, and its profile's lock are gone."""
    groups = [int(line.rpartition(" ")[2]) for line in client.lines if line.startswith("[BROWSER] Google Chrome PID ")]
    check("no process of the browser is left", groups and until(lambda: not browser.processes(*groups), 5))
    if locks_too:
        check("no lock of the browser's profile is left", not browser.is_locked())


if __name__ == "__main__":
    home, folder = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    Browser(home, folder).install()
