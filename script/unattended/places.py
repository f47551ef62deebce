"""Paths."""

import json
import os
import pathlib

ROOT = pathlib.Path(__file__).resolve().parents[2]
# The window manager of the desktops, and what the runs under it leave behind.
MANAGER = os.environ.get("VANTREL_WINDOW_MANAGER", "openbox")
RUN = ROOT / ("build/run" if MANAGER == "openbox" else f"build/run-{MANAGER}")
RUN_NAME = RUN.relative_to(ROOT)
PROGRAM = ROOT / "build/release/src/app/vantrel"
SERVER = ROOT / "build/release/practice/vantrel-practice"


def save_settings(home, settings):
    """Writes the client's settings before its start. Returns their file."""
    path = home / ".config/vantrel/defaults.json"
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(json.dumps(settings))
    return path
