#!/usr/bin/env python3
"""check_orderings.py PROGRAM FOLDER [SEEDS]: plays every scenario with many seeds, preludes with what begins with
them. Whatever the order of what is due at the same moment, the client must not misuse its platform, a seed must replay
itself, a lockdown must end at most once and with one notice, and an end must leave nothing behind. If different things
are due at the same moment, the seeds must show more than one order."""
import concurrent.futures
import pathlib
import re
import sys

from player import difference, play

LOCKDOWN = "🔒 ATTIVAZIONE LOCKDOWN"
END_SCREEN = "[SESSION] Schermata fine visibile"
NOTICE = '"disconnecting":true'
# In these scenarios different things are due at the same moment: seeds that have an effect give more than one
# transcript.
WITH_TIES = [
    "updates/a-version-prompt-comes-with-the-result-of-a-join.yaml",
    "spaces/a-browser-given-back-already-is-not-killed.yaml",
    "spaces/a-browser-that-quits-at-once-is-gone-before-it-is-killed.yaml",
    "spaces/leaving-the-meetings-space-kills-the-browser.yaml",
    "end/the-reply-to-the-notice-comes-as-the-wait-for-it-ends.yaml",
]
# A client that shows a screen has these.
MAY_STAY = {"windows", "visible windows", "alerts"}


def entries(transcript):
    """The transcript's entries, each with its further lines."""
    return re.split(r"\n(?= {0,8}\d+\.\d{3}  )", transcript.rstrip("\n"))


def problems(transcript):
    """The rules that are broken."""
    end_screens = notices = 0
    lockdown = False
    for entry in entries(transcript):
        kind = entry[11:].split("  ", 1)[0]
        if kind == "log" and LOCKDOWN in entry:
            lockdown = True
            end_screens = notices = 0
        elif kind == "request" and NOTICE in entry:
            notices += 1
            if notices > 1:
                yield "a second notice for one lockdown: " + entry
        elif kind == "log" and END_SCREEN in entry:
            end_screens += 1
            lockdown = False
            if end_screens > 1:
                yield "a second end screen for one lockdown: " + entry
        elif kind == "end":
            left = re.search(r"\| left: (.*)", entry)
            if not left:
                yield "the end tells nothing of what is left"
            elif not lockdown and left[1] != "nothing":
                for part in left[1].split(", "):
                    name, _, count = part.rpartition(" ")
                    if name not in MAY_STAY or int(count) != 1:
                        yield "left without a lockdown: " + part
    if " end  " not in transcript:
        yield "the transcript has no end"


def lacking_orders(orderings):
    """The scenarios with ties whose transcripts (a set for each name) are all the same."""
    return [name for name in WITH_TIES if len(orderings.get(name, ())) < 2]


def check(program, scenario, seed):
    # With the prelude's lines: a lockdown that has begun there ends in the scenario.
    options = ("--whole", "--seed", str(seed))
    status, transcript, messages = play(program, scenario, *options)
    found = list(problems(transcript))
    if status != 0:
        found.append(f"exit status {status}: {messages}{transcript[-300:]}")
    if seed % 5 == 0:
        again = play(program, scenario, *options)[1]
        diff = difference(transcript, again, f"seed {seed}")
        if diff:
            found.append("a second run differs\n" + diff)
    return [f"{scenario} --seed {seed}: {problem}" for problem in found], transcript


def main():
    program, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    seeds = int(sys.argv[3]) if len(sys.argv) > 3 else 20
    scenarios = sorted(file for file in folder.glob("*/*.yaml") if file.parent.name != "preludes")
    jobs = [(scenario, seed) for scenario in scenarios for seed in range(seeds)]
    found = []
    orderings = {}
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        results = pool.map(lambda job: check(program, *job), jobs)
        for (scenario, _), (wrong, transcript) in zip(jobs, results):
            found += wrong
            orderings.setdefault(scenario.relative_to(folder).as_posix(), set()).add(transcript)
    found += [f"{name}: the seeds show one order only" for name in lacking_orders(orderings)]
    for problem in found:
        print(problem)
    print(f"{len(jobs)} runs, {sum(len(different) for different in orderings.values())} different transcripts")
    if not jobs:
        print("there are no scenarios")
    return 1 if found or not jobs else 0


if __name__ == "__main__":
    sys.exit(main())
