#!/usr/bin/env python3
"""accept.py PROGRAM FILE...: plays the scenarios, shows how their transcripts differ from the kept ones, and keeps the
new ones. Preludes come first, so that scenarios are held against the new ones. docs/rehearsals.md says what accepting
means."""
import os
import pathlib
import sys
from typing import NamedTuple

from player import difference, play

REASONS = {
    1: "the client misuses its platform",
    2: "it cannot be played",
    4: "its prelude is not as it is kept; accept that first",
}


class Outcome(NamedTuple):
    accepted: bool
    removed: int = 0
    added: int = 0


def counts(diff):
    """Removed and added lines of a unified diff."""
    lines = diff.splitlines()[2:]
    return sum(line.startswith("-") for line in lines), sum(line.startswith("+") for line in lines)


def keep(path, text):
    """Whoever reads the file meanwhile finds the old transcript or the new one."""
    new = path.with_name(path.name + ".new")
    new.write_bytes(text.encode())
    os.replace(new, path)


def refuse(scenario, reason):
    print(f"{scenario}: not accepted: {reason}", file=sys.stderr)
    return Outcome(False)


def accept(program, scenario):
    if scenario.suffix != ".yaml":
        return refuse(scenario, "no scenario, which is a .yaml file")
    status, transcript, messages = play(program, scenario)
    sys.stderr.write(messages)
    if status != 0:
        return refuse(scenario, REASONS.get(status, f"exit status {status}"))
    path = scenario.with_suffix(".transcript")
    if not path.exists():
        keep(path, transcript)
        added = len(transcript.splitlines())
        print(f"{path}: new, {added} lines")
        return Outcome(True, 0, added)
    diff = difference(path.read_bytes().decode(), transcript, str(path))
    if not diff:
        print(f"{path}: unchanged")
        return Outcome(True)
    sys.stdout.write(diff)
    keep(path, transcript)
    removed, added = counts(diff)
    print(f"{path}: {removed + added} lines changed, {removed} removed and {added} added")
    return Outcome(True, removed, added)


def main():
    program, files = sys.argv[1], [pathlib.Path(name) for name in dict.fromkeys(sys.argv[2:])]
    if not files:
        print("accept: no file is given", file=sys.stderr)
        return 2
    files.sort(key=lambda file: file.parent.name != "preludes")
    outcomes = [accept(program, file) for file in files]
    if len(outcomes) > 1:
        changed = sum(outcome.removed + outcome.added > 0 for outcome in outcomes)
        lines = sum(outcome.removed + outcome.added for outcome in outcomes)
        print(f"{len(outcomes)} scenarios, transcripts changed: {changed}, lines: {lines}")
    return 0 if all(outcome.accepted for outcome in outcomes) else 1


if __name__ == "__main__":
    sys.exit(main())
