#!/usr/bin/env python3
"""check_seeds.py DIRECT THROUGH SCENARIOS SEEDS: checks that every scenario, played with each seed from 1 to SEEDS, has
the same transcript through the macOS platform as without it, to the byte.

An opening of an application waits for the main run loop there, which may be busy. So where one is opened, one in a
hundred transcripts may have another order, and is held by the checks that hold for all orders.
"""
import concurrent.futures
import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scenarios"))
from check_orderings import problems  # noqa: E402
from player import difference, play  # noqa: E402

OPENS = "is asked to open"


def compare(direct, through, scenario, seed):
    """The difference, and what is wrong. Each is empty for none."""
    options = ("--whole", "--seed", str(seed))
    status, expected, _ = play(direct, scenario, *options)
    status_through, actual, messages = play(through, scenario, *options)
    name = f"{scenario.stem} --seed {seed}"
    found = difference(expected, actual, name)
    wrong = [f"{name}: {problem}" for problem in problems(actual)] if found else []
    if found and OPENS not in expected:
        wrong.append(found)
    if status_through != status:
        wrong.append(f"{name}: exit status {status_through} instead of {status}: {messages}")
    return found, "\n".join(wrong)


def main():
    direct, through, folder, seeds = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3]), int(sys.argv[4])
    jobs = [(scenario, seed) for scenario in sorted(folder.glob("*/*.yaml")) for seed in range(1, seeds + 1)]
    assert jobs
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda job: compare(direct, through, *job), jobs))
    differences = [found for found, _ in results if found]
    wrong = [text for _, text in results if text]
    if len(differences) * 100 > len(jobs):
        wrong += ["more than one in a hundred have another order", *differences]
    print("\n".join(wrong))
    print(f"{len(jobs) - len(differences)} of {len(jobs)} transcripts are the same")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
