#!/usr/bin/env python3
"""check_scenarios.py PROGRAM SCENARIOS LIST: checks that every scenario, played through the macOS platform, has the
transcript beside it, to the byte, except those in the list. If one of these has become the same, it must leave the
list.

A line of the list is THEME/NAME: REASON.
"""
import concurrent.futures
import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scenarios"))
from player import difference, play  # noqa: E402


def read_list(path):
    """Reasons by scenario."""
    reasons = {}
    for line in path.read_text(encoding="utf-8").splitlines():
        if not line or line.startswith("#"):
            continue
        name, _, reason = line.partition(": ")
        assert reason, f"{path.name}: {line}: without a reason"
        reasons[name] = reason
    return reasons


def differs(program, scenario):
    """The difference when it is played. Empty for none."""
    expected = scenario.with_suffix(".transcript")
    status, actual, messages = play(program, scenario)
    found = difference(expected.read_bytes().decode(), actual, expected.name)
    return found + (messages if found or status != 0 else "") + (f"exit status {status}\n" if status != 0 else "")


def judge(differences, reasons):
    """The mistakes, given the differences found and those in the list."""
    wrong = [f"{name} is different through the macOS platform:\n{found}"
             for name, found in sorted(differences.items()) if found and name not in reasons]
    wrong += [f"{name} is the same by now: take it out of the list" for name in sorted(reasons)
              if differences.get(name) == ""]
    wrong += [f"{name} is in the list, and there is no such scenario" for name in sorted(reasons)
              if name not in differences]
    return wrong


def main():
    program, folder, listed = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    assert judge({"a": "x", "b": ""}, {"b": "because", "c": "because"}) != [] and judge({"a": "x"}, {"a": "y"}) == []
    scenarios = sorted(folder.glob("*/*.yaml"))
    assert scenarios
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        found = list(pool.map(lambda scenario: differs(program, scenario), scenarios))
    differences = {str(scenario.relative_to(folder).with_suffix("")): each
                   for scenario, each in zip(scenarios, found, strict=True)}
    reasons = read_list(listed)
    wrong = judge(differences, reasons)
    print("\n".join(wrong))
    print(f"{sum(not each for each in found)} of {len(scenarios)} scenarios are the same; {len(reasons)} are named as "
          "different")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
