"""Paths."""

import json
import pathlib

ROOT = pathlib.Path(__file__).resolve().parents[2]
# What the runs leave behind.
RUN = ROOT / "build/run"
PROGRAM = ROOT / "build/release/src/app/vantrel"
SERVER = ROOT / "build/release/practice/vantrel-practice"


def save_settings(home, settings):
    """Writes the client's settings before its start. Returns their file."""
    path = home / ".config/vantrel/defaults.json"
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(json.dumps(settings))
    return path
