"""Measures the time from the launch of a real Chromium to its confirmed full screen, in ten runs on a desktop of
their own.

Build first: script/build bench browser-launch vantrel-practice
"""

import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[1]
BUILD = ROOT / "build/bench"
sys.path.insert(0, str(ROOT / "script/unattended"))

from browser import Browser
from desktop import Desktop
from practice import Practice

with tempfile.TemporaryDirectory(prefix="browser-launch-", ignore_cleanup_errors=True) as name:
    folder = pathlib.Path(name)
    Browser(folder, folder).install()
    with Desktop(ROOT) as desktop, \
            Practice(BUILD / "practice/vantrel-practice", "--session", "NQRP5D=Sicurezza sul lavoro") as practice:
        sys.exit(subprocess.run([BUILD / "bench/browser-launch", practice.address + "/meet/NQRP5D"],
                                env={**desktop.environment, "HOME": name, "XDG_RUNTIME_DIR": name}).returncode)
