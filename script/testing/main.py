"""main.py BUILD [--list] [PATTERN ...]: builds what the tests need and runs them; called by script/test."""

import fcntl
import json
import os
import pathlib
import re
import signal
import subprocess
import sys

import entries
import progress
from outcome import SKIPPED
from schedule import Schedule, split
from selection import Pattern, chosen, may_hold, targets

ROOT = pathlib.Path(__file__).resolve().parents[2]
# Side by side on two processors.
DESKTOPS = int(os.environ.get("VANTREL_DESKTOPS", "3"))


def environment():
    """What the tests find. Their displays are X11, also where this was called on a Wayland desktop."""
    own = dict(os.environ)
    for name in ("WAYLAND_DISPLAY", "XDG_SESSION_TYPE"):
        own.pop(name, None)
    return own


def configure(build):
    """Configures again where that is due."""
    run = subprocess.run(["ninja", "-C", build, "build.ninja"], capture_output=True, text=True, check=False)
    if run.returncode != 0:
        raise RuntimeError("the build cannot be configured\n" + run.stdout + run.stderr)


def build_targets(build):
    listed = subprocess.run(["ninja", "-C", build, "-t", "targets", "all"], capture_output=True, text=True, check=True)
    return {line.rpartition(":")[0] for line in listed.stdout.splitlines()}


def build_for(selected, build, everything):
    """Builds what these entries need."""
    wanted = None if everything else targets(selected, build, build_targets(build))
    if wanted == []:
        return
    what = [] if wanted is None else ["--target", *wanted]
    # script/build waits for the same lock.
    with open(build / "lock", "w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        # Standard output is for names and results.
        subprocess.run([ROOT / "script/with-progress", "building " + build.name, "cmake", "--build", build, *what],
                       check=True, stdout=sys.stderr)


def tests_of(selected, patterns, own):
    """Each entry with those of its tests that are wanted."""
    lists = {}
    for entry in selected:
        if not entry.named:
            yield entry, [entry.name]
            continue
        key = (*entry.command, entry.filter)
        if key not in lists:
            lists[key] = entry.test_names(own)
        names = chosen(entry, lists[key], patterns)
        if names:
            yield entry, names


def select(build, patterns):
    known = entries.read(build)
    if not patterns:
        return known
    picked = [entry for entry in known
              if any(may_hold(entry, pattern) for pattern in patterns)]
    picked += [entry for entry in known if entry not in picked and entry.name in needed_before(picked, known)]
    return picked


def needed_before(picked, known):
    """The names of what has to be over before these can begin."""
    by_name = {entry.name: entry for entry in known}
    needed, open_names = set(), [name for entry in picked for name in entry.after]
    while open_names:
        name = open_names.pop()
        if name in by_name and name not in needed:
            needed.add(name)
            open_names += by_name[name].after
    return needed


def nothing_is_meant(patterns):
    sys.exit("test: no test is called " + " or ".join(pattern.text for pattern in patterns) + ", nor stands there")


def missing_macos_checks(outcomes):
    of_macos = [outcome for outcome in outcomes if outcome.name.startswith("macos.")]
    return not of_macos or any(outcome.result == SKIPPED for outcome in of_macos)


def remembered(path):
    """Seconds by test's name, from the runs before."""
    try:
        return json.loads(path.read_text(encoding="utf-8"))
    except (OSError, ValueError):
        return {}


def main(arguments):
    build = pathlib.Path(arguments[0]).resolve()
    words = arguments[1:]
    patterns = [Pattern(ROOT, word) for word in words if word != "--list"]
    configure(build)
    selected = select(build, patterns)
    if not selected:
        nothing_is_meant(patterns)
    build_for(selected, build, not patterns)
    own = environment()
    wanted = {entry.name for entry in selected}
    # Read again: what was not built had no command.
    tests = list(tests_of([entry for entry in entries.read(build) if entry.name in wanted], patterns, own))
    if not tests:
        nothing_is_meant(patterns)
    if "--list" in words:
        print("\n".join(entry.prefix + name for entry, names in tests for name in names))
        return True

    times_file = build / "test-times.json"
    times = remembered(times_file)
    jobs = [job for entry, names in tests for job in split(entry, names, lambda name: times.get(name, 0.05))]
    total = sum(len(names) for _, names in tests)
    reporter = progress.Progress(total)
    reporter.say(f"{progress.plural(total, 'test', 'tests')} in {progress.plural(len(jobs), 'process', 'processes')}")
    try:
        Schedule(jobs, own, reporter, ROOT / "script/desktop").run(DESKTOPS)
    finally:
        reporter.close()
    times.update({outcome.name: outcome.seconds for outcome in reporter.outcomes})
    times_file.write_text(json.dumps(times), encoding="utf-8")
    held = progress.summary(reporter.outcomes)
    if len(reporter.outcomes) < total:
        held = False
    if os.environ.get("VANTREL_MACOS_CHECKS") == "required" and not patterns and missing_macos_checks(reporter.outcomes):
        print("test: the checks of the macOS client are required here, and some or all of them were not held")
        held = False
    return held


def stopped(number, _):
    raise SystemExit(128 + number)


if __name__ == "__main__":
    for name in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(name, stopped)
    try:
        sys.exit(0 if main(sys.argv[1:]) else 1)
    except subprocess.CalledProcessError as problem:
        sys.exit(problem.returncode)
    except (RuntimeError, re.error) as problem:
        sys.exit(f"test: {problem}")
