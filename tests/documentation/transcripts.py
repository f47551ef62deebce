"""What the client showed, logged, saved and sent in all scenarios."""
import functools
import sys

from pages import ROOT

sys.path.insert(0, str(ROOT / "tests/api"))

import transcript_requests


@functools.cache
def entries():
    """(transcript's path, kind, text) of each entry of each transcript. Lines of one entry are joined."""
    found = []
    for path in sorted((ROOT / "tests/scenarios").rglob("*.transcript")):
        for _, kind, lines in transcript_requests.entries(path.read_text(encoding="utf-8")):
            found.append((path, kind, "\n".join(lines)))
    if not found:
        raise ValueError("there is no transcript")
    return found


def texts(kind):
    return [text for _, found, text in entries() if found == kind]


def shown(control):
    """Every text that the control has shown, but the empty one."""
    prefix = control + ': "'
    return {text.removeprefix(prefix).removesuffix('"') for text in texts("text") if text.startswith(prefix)} - {""}
