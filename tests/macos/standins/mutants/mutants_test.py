#!/usr/bin/env python3
"""mutants_test.py BUILD [--discover] [NAME ...]: makes each mistake of mutants.yaml in a copy of its source, builds the
contracts or the player with it, and checks that what the list names catches it: a contract, a scenario or both. A mistake
that survives everything has a reason instead, and must really survive.

--discover tells what catches each mistake, whatever the list says. Names choose the mistakes that contain them.
"""
import concurrent.futures
import functools
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

import yaml

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[3]
SCENARIOS = ROOT / "tests/scenarios"
PLATFORM = ROOT / "src/platform/macos"
sys.path.insert(0, str(SCENARIOS))
from player import difference, play  # noqa: E402

STANDINS = "tests/macos/standins"
PRODUCT = f"{STANDINS}/product.o"
CONTRACTS, PLAYER = "contracts-macos-here", "vantrel-rehearse-macos"
# May only fall.
MOST_SURVIVORS = 3
# A mistake that lets a test hang is caught as well.
LONGEST = 60


def replaced(command, old, new):
    """The command with another file in place of the one whose path ends so."""
    words = shlex.split(command)
    named = [word == old or word.endswith(f"/{old}") for word in words]
    assert any(named), f"no {old} in {command}"
    return " ".join(word if word == "&&" else shlex.quote(str(new) if is_named else word)
                    for word, is_named in zip(words, named, strict=True))


class Build:
    """The commands of a build folder, for one mistake at a time."""

    def __init__(self, folder):
        self.folder = folder
        entries = json.loads((folder / "compile_commands.json").read_text(encoding="utf-8"))
        # By source: the words of its compilation.
        self.compilations = {entry["file"]: shlex.split(entry["command"]) for entry in entries
                             if "vantrel_macos_objects" in entry["command"]}

    @functools.cache
    def last_command(self, target):
        listed = subprocess.run(["ninja", "-C", self.folder, "-t", "commands", target], capture_output=True, text=True,
                                check=True)
        return listed.stdout.strip().splitlines()[-1]

    def run(self, command):
        done = subprocess.run(command, shell=True, cwd=self.folder, capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise RuntimeError(done.stdout + done.stderr)

    def make(self, file, text, place, programs):
        """Builds the programs with another text of that source."""
        source = place / file.name
        source.write_text(text, encoding="utf-8")
        words = list(self.compilations[str(file)])
        for option, count in (("-MD", 1), ("-MT", 2), ("-MF", 2)):
            if option in words:
                at = words.index(option)
                del words[at:at + count]
        words[words.index("-o") + 1] = str(place / "mutant.o")
        words[words.index("-c") + 1] = str(source)
        self.run(shlex.join([*words, "-w", "-Wno-error", "-O0", "-g0"]))
        product = replaced(self.last_command(PRODUCT), f"{file.relative_to(ROOT)}.o", place / "mutant.o")
        self.run(replaced(product, PRODUCT, place / "product.o"))
        for program in programs:
            link = replaced(self.last_command(program), PRODUCT, place / "product.o")
            self.run(replaced(link, f"{STANDINS}/{program}", place / program))


def failing_contract(place, chosen="*", environment=""):
    """The first contract that fails. Empty for none."""
    variables = dict(word.split("=") for word in environment.split())
    try:
        done = subprocess.run([place / CONTRACTS, f"--gtest_filter={chosen}"], capture_output=True,
                              env={**os.environ, **variables}, timeout=LONGEST, check=False)
        output, status = done.stdout, done.returncode
    except subprocess.TimeoutExpired as expired:
        output, status = expired.stdout or b"", 1
    output = output.decode(errors="replace")
    assert chosen == "*" or "[ RUN      ]" in output, f"there is no contract {chosen}"
    failed = re.search(r"\[  FAILED  \] (\S+) \(", output)
    if failed:
        return failed[1]
    begun = re.findall(r"\[ RUN      \] (\S+)", output)
    return begun[-1] if status != 0 and begun else ""


def different(place, scenario):
    try:
        status, transcript, _ = play(place / PLAYER, scenario)
    except subprocess.TimeoutExpired:
        return True
    expected = scenario.with_suffix(".transcript").read_bytes().decode()
    return status != 0 or difference(expected, transcript, "") != ""


def different_scenario(place):
    """The first scenario with another transcript. Empty for none."""
    for scenario in sorted(SCENARIOS.glob("*/*.yaml")):
        if different(place, scenario):
            return str(scenario.relative_to(SCENARIOS).with_suffix(""))
    return ""


def catchers(place):
    """What catches the mistake, as in the list."""
    found = {}
    for environment in ("", "VANTREL_SYSTEM=13", "VANTREL_FREE_RUNNING=1"):
        contract = failing_contract(place, environment=environment)
        if contract:
            found["contract"] = contract
            if environment:
                found["environment"] = environment
            break
    scenario = different_scenario(place)
    return found | ({"scenario": scenario} if scenario else {})


def judge(mutant, place):
    """What is wrong with the list's entry. Empty if it holds."""
    if "survives" in mutant:
        found = catchers(place)
        return f"it is caught by now: {found}" if found else ""
    if "contract" in mutant and not failing_contract(place, mutant["contract"], mutant.get("environment", "")):
        return f"{mutant['contract']} does not catch it"
    if "scenario" in mutant and not different(place, SCENARIOS / (mutant["scenario"] + ".yaml")):
        return f"{mutant['scenario']} does not catch it"
    return "" if "contract" in mutant or "scenario" in mutant else "the list does not say what catches it"


def programs_for(mutant, examine):
    """What has to run to judge it."""
    if examine is not judge or "survives" in mutant:
        return [CONTRACTS, PLAYER]
    return [program for program, key in ((CONTRACTS, "contract"), (PLAYER, "scenario")) if key in mutant]


def attempt(build, mutant, examine):
    file = PLATFORM / mutant["file"]
    text = file.read_text(encoding="utf-8")
    if text.count(mutant["from"]) != 1:
        return f"its text stands {text.count(mutant['from'])} times in {mutant['file']}"
    with tempfile.TemporaryDirectory() as folder:
        place = pathlib.Path(folder)
        try:
            build.make(file, text.replace(mutant["from"], mutant["to"]), place, programs_for(mutant, examine))
        except RuntimeError as error:
            return f"it cannot be built: {error}"
        return examine(mutant, place)


def main():
    arguments = sys.argv[1:]
    build = Build(pathlib.Path(arguments.pop(0)).resolve())
    examine = judge
    if arguments[:1] == ["--discover"]:
        examine = lambda _, place: str(catchers(place) or "NOTHING")  # noqa: E731
        del arguments[:1]
    mutants = yaml.safe_load((HERE / "mutants.yaml").read_text(encoding="utf-8"))
    survivors = sum("survives" in mutant for mutant in mutants)
    assert len(mutants) - survivors >= 40 and survivors <= MOST_SURVIVORS, f"{survivors} of {len(mutants)} survive"
    chosen = [mutant for mutant in mutants if not arguments or any(word in mutant["name"] for word in arguments)]
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        results = list(pool.map(lambda mutant: attempt(build, mutant, examine), chosen))
    for mutant, result in zip(chosen, results, strict=True):
        if result:
            print(f"{mutant['name']} ({mutant['file']}): {result}")
    print(f"{len(chosen)} of {len(mutants)} mistakes were made; {survivors} of the list survive everything")
    return 1 if any(results) and examine is judge else 0


if __name__ == "__main__":
    sys.exit(main())
