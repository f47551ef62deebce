"""The tests that mutants are run against: which mutants each executes, and whether a mutant fails one."""

import concurrent.futures
import contextlib
import dataclasses
import json
import math
import os
import pathlib
import re
import resource
import signal
import subprocess
import tempfile
import threading

# Seconds here are those of the processor where nothing else is said: other work on the machine must not fail a test.
# A test that is slower than this is run after the others.
SLOW = 0.1
# How much longer than without a mutant a test may take, and all tests of a run; and how long a run may take in any case.
TIMES_LONGER, RUN_TIMES_LONGER, SECONDS = 10, 2, 3
# Of real time, for threads that wait for each other and so use no processor.
REAL_SECONDS = 300
# A mutant that never ends may ask for memory all the time.
MEMORY = 4 << 30


# The random classes that a mutant is run against, and how many of them make one test.
CLASSES, CLASSES_AT_ONCE = 200, 20


@dataclasses.dataclass
class Test:
    suite: object
    name: str
    seconds: float = 0.0
    # A byte for each mutant.
    record: bytes = b""

    def reaches(self, mutant):
        return mutant < len(self.record) and self.record[mutant] != 0


@dataclasses.dataclass
class Allowance:
    """How long each process of a run may take, and how long all of them took."""
    seconds: float
    used: float = 0.0


def run(command, environment, folder, allowance):
    """Exit status and output; no status if it was not over in time."""
    with tempfile.TemporaryFile() as output:
        process = subprocess.Popen(command, cwd=folder, env={**os.environ, **environment}, stdin=subprocess.DEVNULL,
                                   stdout=output, stderr=subprocess.DEVNULL, start_new_session=True)
        limit_resources(process.pid, math.ceil(allowance.seconds))
        watch = threading.Timer(REAL_SECONDS, kill_group, [process.pid])
        watch.start()
        _, status, used = os.wait4(process.pid, 0)
        watch.cancel()
        process.returncode = os.waitstatus_to_exitcode(status)
        allowance.used += used.ru_utime + used.ru_stime
        output.seek(0)
        ended_by_a_limit = process.returncode in (-signal.SIGXCPU, -signal.SIGKILL)
        return None if ended_by_a_limit else process.returncode, output.read()


def limit_resources(process, seconds):
    # Not before it begins: that would copy this process each time.
    with contextlib.suppress(ProcessLookupError):
        resource.prlimit(process, resource.RLIMIT_CPU, (seconds, seconds + 1))
        resource.prlimit(process, resource.RLIMIT_AS, (MEMORY, MEMORY))
        resource.prlimit(process, resource.RLIMIT_CORE, (0, 0))


def kill_group(process):
    with contextlib.suppress(ProcessLookupError):
        os.killpg(process, signal.SIGKILL)


class GoogleTests:
    """An executable whose tests run in one process, up to the first that fails."""

    def __init__(self, name, command, environment, folder=None, whole=False):
        self.name, self.command, self.environment, self.folder = name, command, environment, folder
        self.whole = whole

    def tests(self):
        if self.whole:
            return [Test(self, "*")]
        listed = subprocess.run([*self.command, "--gtest_list_tests"], capture_output=True, text=True, check=True,
                                env={**os.environ, **self.environment}).stdout
        names, suite = [], ""
        for line in listed.splitlines():
            word = line.split("#")[0].strip()
            if line.startswith(" "):
                names.append(suite + word)
            else:
                suite = word
        return [Test(self, name) for name in names]

    def passes(self, tests, variables, allowance):
        """What failed; nothing if all passed."""
        filters = "--gtest_filter=" + ":".join(test.name for test in tests)
        status, output = run([*self.command, filters, "--gtest_fail_fast"], {**self.environment, **variables}, self.folder, allowance)
        if status == 0:
            return None
        lines = output.decode(errors="replace").splitlines()
        # After a failure the others are named, too, as they are skipped. A test that does not end has no result.
        named = ([re.split(r", where | \(", line.split("] ", 1)[1])[0] for line in lines if line.startswith("[  FAILED")][:1] or
                 [line.split("] ", 1)[1] for line in lines if line.startswith("[ RUN ")][-1:])
        how = "hung" if status is None else "failed" if status == 1 else f"ended with {status}"
        return " ".join([self.name, *named, how])


class Scenarios:
    """Scenarios with their transcripts."""

    name = "scenario"

    def __init__(self, player, folder):
        self.player, self.folder = player, folder

    def tests(self):
        return [Test(self, str(file)) for file in sorted(self.folder.glob("*/*.yaml"))
                if file.with_suffix(".transcript").exists()]

    def passes(self, tests, variables, allowance):
        for test in tests:
            status, output = run([str(self.player), test.name], variables, None, allowance)
            file = pathlib.Path(test.name)
            if status != 0 or output != file.with_suffix(".transcript").read_bytes():
                how = "hung" if status is None else "failed"
                return f"{self.name} {file.parent.name}.{file.stem} {how}"
        return None


class RandomClasses:
    """Random classes, judged by a model of the rules. They are no tests of one rule, and run after all others."""

    name = "random class"
    comes_last = True

    def __init__(self, program):
        self.program = program

    def tests(self):
        return [Test(self, f"{first}..{first + CLASSES_AT_ONCE - 1}") for first in range(1, CLASSES + 1, CLASSES_AT_ONCE)]

    def passes(self, tests, variables, allowance):
        for test in tests:
            status, output = run([str(self.program), "--seeds", test.name, "--shrink", "0"], variables, None, allowance)
            if status == 0:
                continue
            lines = [line.strip() for line in output.decode(errors="replace").splitlines()]
            broken = [f"{lines[place].split()[1]} {lines[place + 1]}" for place in range(len(lines) - 1)
                      if lines[place].startswith("class ")]
            return f"{self.name} {broken[0] if broken else test.name + ' hung' if status is None else test.name + ' failed'}"
        return None


def of_the_rules(build, root):
    """The rules' own tests, as the build's list has them, the scenarios, and random classes."""
    modules = [build / "tests" / module for module in ("server", "browser", "lockdown", "session", "app")]
    entries = json.loads((build / "named-tests.json").read_text(encoding="utf-8"))
    found = [GoogleTests(entry["name"], entry["command"], dict(word.split("=", 1) for word in entry["environment"]),
                         entry["folder"], entry["whole"])
             for entry in entries if pathlib.Path(entry["folder"]) in modules]
    return [*found, Scenarios(build / "rehearsal/vantrel-rehearse", root / "tests/scenarios"),
            RandomClasses(build / "tests/simulation/program/vantrel-simulate")]


def comes_last(test):
    return getattr(test.suite, "comes_last", False)


def is_by_classes(killer):
    """Whether nothing but a random class has killed a mutant, from what Bench.killer says."""
    return killer.startswith(RandomClasses.name)


class Bench:
    """All tests, with what each of them reaches."""

    def __init__(self, suites, folder, jobs):
        self.tests = [test for suite in suites for test in suite.tests()]
        self.folder, self.jobs = folder, jobs

    def measure(self):
        """Runs each test without a mutant. Returns what failed."""
        self.folder.mkdir(parents=True, exist_ok=True)
        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            return [wrong for wrong in pool.map(self.measure_one, enumerate(self.tests)) if wrong]

    def measure_one(self, numbered):
        number, test = numbered
        record = self.folder / f"reached-{number}"
        record.unlink(missing_ok=True)
        allowance = Allowance(600)
        wrong = test.suite.passes([test], {"VANTREL_MUTANTS_REACHED": str(record)}, allowance)
        test.seconds = allowance.used
        if record.exists():
            test.record = record.read_bytes().rstrip(b"\0")
            record.unlink()
        return wrong

    def batches(self, mutant):
        """Of the tests that reach it: the fast before the slow, of each suite together; last the random classes."""
        by_stage = {}
        for test in sorted((test for test in self.tests if test.reaches(mutant)), key=lambda test: test.seconds):
            stage = 2 if comes_last(test) else 1 if test.seconds >= SLOW else 0
            by_stage.setdefault(stage, {}).setdefault(test.suite, []).append(test)
        for stage in sorted(by_stage):
            yield from sorted(by_stage[stage].values(), key=lambda batch: sum(test.seconds for test in batch))

    def killer(self, mutant):
        """What tells the mutant from the original; None if nothing does."""
        for batch in self.batches(mutant):
            seconds = [test.seconds for test in batch]
            allowance = Allowance(SECONDS + max(TIMES_LONGER * max(seconds), RUN_TIMES_LONGER * sum(seconds)))
            wrong = batch[0].suite.passes(batch, {"VANTREL_MUTANT": str(mutant)}, allowance)
            if wrong:
                return wrong
        return None

    def is_reached(self, mutant):
        return any(test.reaches(mutant) for test in self.tests)
