"""What script/mutate tells of mutants is what the tests make of them: tried on a module whose survivors are known."""

import contextlib
import functools
import io
import importlib.machinery
import importlib.util
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
sys.path[:0] = [str(ROOT / "script/mutation"), str(ROOT / "tests/support")]

import named_tests  # noqa: E402
import source  # noqa: E402
import suites  # noqa: E402

COMPILER = sys.argv[1]
FILES = [HERE / "rules/Door.cpp", HERE / "rules/Door.h"]


class House:
    """The module with its mutants, built, and what became of each."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="mutation-"))
        before = [file.read_bytes() for file in FILES]
        instrumenter = source.Instrumenter(FILES, HERE, HERE, [f"-I{HERE}"], "<", self.folder / "copies")
        self.mutants, self.without = instrumenter.write()
        program = self.folder / "door-tests"
        # Not where it stands: it would find the header beside it.
        test = shutil.copy(HERE / "DoorTest.cpp", self.folder)
        subprocess.run([COMPILER, "-std=c++20", "-w", f"-I{self.folder / 'copies'}", test,
                        self.folder / "copies/rules/Door.cpp", "-lgtest_main", "-lgtest", "-lpthread", "-o", program],
                       check=True)
        suite = suites.GoogleTests("door", [str(program)], {}, self.folder)
        self.bench = suites.Bench([suite], self.folder / "reached", 2)
        self.wrong = self.bench.measure()
        self.killers = {mutant: self.bench.killer(mutant.number) for mutant in self.mutants}
        self.is_untouched = before == [file.read_bytes() for file in FILES]

    def killer(self, words):
        """Of the one mutant whose line has these words."""
        found = [killer for mutant, killer in self.killers.items() if words in str(mutant)]
        return found[0] if len(found) == 1 else f"{len(found)} mutants have these words"


source.Mutant.__hash__ = lambda mutant: mutant.number


@functools.cache
def house():
    return House()


def same(actual, expected):
    """Nothing when they are."""
    return None if actual == expected else f"expected: {expected}\nactual:   {actual}"


def without_a_mutant_the_tests_pass():
    return same(house().wrong, [])


def the_sources_are_not_touched():
    return same(house().is_untouched, True)


def what_no_test_notices_survives():
    survivors = [str(mutant).split(": ", 1)[1] for mutant, killer in house().killers.items() if not killer]
    return same(sorted(survivors), sorted(SURVIVORS))


def every_kind_of_mutant_is_there():
    return same(sorted({mutant.kind for mutant in house().mutants}),
                ["arithmetic", "case", "condition", "constant", "increment", "logical", "negation", "order", "relational",
                 "return", "statement", "text"])


def a_mutant_is_killed_by_the_test_that_executes_it():
    return same(house().killer('case Light::green → left out'), "door Door.NamesItsLights failed")


def a_test_that_was_skipped_after_the_failure_is_not_named():
    number = next(mutant.number for mutant in house().mutants if "places: 2 → 3" in str(mutant))
    tests = house().bench.tests
    return same(tests[0].suite.passes(tests, {"VANTREL_MUTANT": str(number)}, suites.Allowance(60)),
                "door Door.LetsInWhoHasATicketUntilTheHouseIsFull failed")


def a_mutant_that_never_ends_is_killed():
    return same(house().killer("coins -= 2; → left out"), "door Door.CountsWhatIsPaid hung")


def time_without_the_processor_fails_nothing():
    allowance = suites.Allowance(1)
    return (same(suites.run(["sleep", "3"], {}, None, allowance), (0, b"")) or
            same(allowance.used < 1, True))


def too_much_processor_time_ends_a_run():
    allowance = suites.Allowance(1)
    return (same(suites.run(["sh", "-c", "echo began; while :; do :; done"], {}, None, allowance), (None, b"began\n")) or
            same(allowance.used > 0.5, True))


def a_run_that_only_waits_is_ended_at_last():
    usual, suites.REAL_SECONDS = suites.REAL_SECONDS, 1
    try:
        return same(suites.run(["sleep", "600"], {}, None, suites.Allowance(1)), (None, b""))
    finally:
        suites.REAL_SECONDS = usual


def a_constant_that_the_compiler_knows_is_mutated():
    return same([house().killer('tickets: "day" → ""'), house().killer("places: 2 → 3")],
                ["door Door.LetsInWhoHasATicketUntilTheHouseIsFull failed"] * 2)


def a_mutant_is_run_against_the_tests_that_execute_it_only():
    number = next(mutant.number for mutant in house().mutants if "case Light::green" in str(mutant))
    return same([[test.name for test in batch] for batch in house().bench.batches(number)], [["Door.NamesItsLights"]])


def what_cannot_be_compiled_is_left_out_and_told():
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "sized.cpp"
        file.write_text("#include <array>\nint f() { std::array<int, 4> four{}; return four[0] + 1; }\n", encoding="utf-8")
        mutants, without = source.Instrumenter([file], file.parent, file.parent, [], "<", file.parent / "copies").write()
        return same(([mutant.before for mutant in without], "4" in [mutant.before for mutant in mutants]), (["4"] * 3, False))


def a_source_that_cannot_be_read_is_an_error():
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "broken.cpp"
        file.write_text("int f() { return }\n", encoding="utf-8")
        try:
            source.Instrumenter([file], file.parent, file.parent, [], "<", file.parent / "copies")
        except RuntimeError as problem:
            return None if "broken.cpp" in str(problem) else str(problem)
        return "it was accepted"


def a_failing_test_stops_the_run_before_any_mutant():
    wrong = suites.Bench([suites.GoogleTests("door", [str(house().folder / "door-tests")], {"VANTREL_MUTANT": str(
        next(mutant.number for mutant in house().mutants if "places: 2 → 3" in str(mutant)))}, house().folder)],
                         house().folder / "reached", 2).measure()
    return same(wrong, ["door Door.LetsInWhoHasATicketUntilTheHouseIsFull failed"])


@functools.cache
def mutate():
    loader = importlib.machinery.SourceFileLoader("mutate", str(ROOT / "script/mutate"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("mutate", loader))
    loader.exec_module(module)
    return module


def a_wrong_command_line_is_refused():
    with contextlib.redirect_stderr(io.StringIO()):
        return same([mutate().main(["src/platform"]), mutate().options(["src/lockdown/", "--jobs", "1"])[0]],
                    [2, ["src/lockdown"]])


def classes_that_say(text, status):
    """In place of the program that plays random classes."""
    program = house().folder / f"classes-{status}"
    program.write_text(f"#!/bin/sh\nprintf '{text}'\nexit {status}\n", encoding="utf-8")
    program.chmod(0o755)
    return suites.RandomClasses(program)


def random_classes_are_run_after_all_tests():
    bench = suites.Bench([classes_that_say("", 0), house().bench.tests[0].suite], house().folder, 1)
    for test in bench.tests:
        test.record = b"\1\1"
    bench.tests[-1].seconds = 2 * suites.SLOW
    batches = [sorted({test.suite.name for test in batch}) for batch in bench.batches(1)]
    return same(batches[-1], ["random class"]) or same(batches.count(["random class"]), 1)


def a_random_class_that_breaks_a_rule_kills_and_is_named():
    suite = classes_that_say("class 7:\\n  One end (line 3 of the transcript): two\\n  again: x\\n", 1)
    killer = suite.passes(suite.tests(), {}, suites.Allowance(10))
    return (same(killer, "random class 7: One end (line 3 of the transcript): two") or
            same([suites.is_by_classes(killer), suites.is_by_classes("scenario ends.by-menu failed")], [True, False]) or
            same(classes_that_say("", 0).passes(suite.tests(), {}, suites.Allowance(10)), None))


def reported(outcomes, explanations):
    """What a report of these says, after its first line, and the report itself."""
    module = mutate()
    with tempfile.TemporaryDirectory(dir=house().folder) as folder:
        module.BUILD, module.EXPLAINED, module.ROOT = (pathlib.Path(folder), pathlib.Path(folder) / "testing.md",
                                                       pathlib.Path(folder))
        module.EXPLAINED.write_text("".join(f"    {line}\n" for line in explanations), encoding="utf-8")
        with contextlib.redirect_stdout(io.StringIO()):
            unexplained = module.Report("src/door").write(outcomes)
        again = module.Report("src/door").last_killers()
        return unexplained, (pathlib.Path(folder) / "door.txt").read_text(encoding="utf-8"), again


def twins():
    """Two mutants of a line that read the same."""
    return [source.Mutant(number, "src/door/Door.cpp", 4, "constant", "0", "1") for number in (3, 5)]


def an_explanation_is_for_one_survivor():
    line = "src/door/Door.cpp: constant: 0 → 1"
    outcomes = [(mutant, None, True) for mutant in twins()]
    return same([reported(outcomes, [line] * times)[0] for times in range(3)], [2, 1, 0])


def what_only_random_classes_killed_is_told_apart():
    killer = "random class 7: One end: two"
    text = reported([(twins()[0], killer, True), (twins()[1], "door Door.Opens failed", True)], [])[1]
    return (same(text.splitlines()[0].split(";")[0], "2 of 2 mutants killed, 1 of them by random classes only") or
            same(f"3: src/door/Door.cpp:4: constant: 0 → 1: {killer}" in text.splitlines(), True))


def twins_of_a_line_are_told_apart_the_next_time():
    again = reported([(twins()[0], None, True), (twins()[1], "door Door.Opens failed", True)], [])[2]
    return same([again[key] for key in mutate().keys(twins())], [None, "door Door.Opens failed"])


# The tests look at neither the order of lines nor all of their texts, at no night, no red light, nor a payment that is just
# enough, and the log outlives the door. The last case only ends the switch.
SURVIVORS = [
    'rules/Door.cpp:8: text: tickets: "night" → ""',
    'rules/Door.cpp:8: text: tickets: "night" → "?" "night"',
    'rules/Door.cpp:22: order: print("in"); print("greeted"); → print("greeted"); print("in");',
    'rules/Door.cpp:23: text: "greeted" → ""',
    'rules/Door.cpp:23: text: "greeted" → "?" "greeted"',
    "rules/Door.cpp:32: condition: const auto log = log_.lock() → true",
    "rules/Door.cpp:39: case: case Light::red → left out",
    'rules/Door.cpp:40: return: return "red"; → return {};',
    'rules/Door.cpp:40: text: "red" → ""',
    'rules/Door.cpp:40: text: "red" → "?" "red"',
    "rules/Door.cpp:41: case: case Light::off → left out",
    "rules/Door.cpp:42: statement: break; → left out",
    "rules/Door.cpp:49: constant: 2 → 3",
    "rules/Door.cpp:49: relational: coins >= 2 → (coins > 2)",
    "rules/Door.cpp:50: constant: 2 → 3",
]

TESTS = [without_a_mutant_the_tests_pass, the_sources_are_not_touched, what_no_test_notices_survives,
         every_kind_of_mutant_is_there, a_mutant_is_killed_by_the_test_that_executes_it,
         a_test_that_was_skipped_after_the_failure_is_not_named, a_mutant_that_never_ends_is_killed,
         time_without_the_processor_fails_nothing, too_much_processor_time_ends_a_run, a_run_that_only_waits_is_ended_at_last,
         a_constant_that_the_compiler_knows_is_mutated, a_mutant_is_run_against_the_tests_that_execute_it_only,
         what_cannot_be_compiled_is_left_out_and_told, a_source_that_cannot_be_read_is_an_error,
         a_failing_test_stops_the_run_before_any_mutant, a_wrong_command_line_is_refused,
         random_classes_are_run_after_all_tests, a_random_class_that_breaks_a_rule_kills_and_is_named,
         an_explanation_is_for_one_survivor, what_only_random_classes_killed_is_told_apart,
         twins_of_a_line_are_told_apart_the_next_time]

if __name__ == "__main__":
    sys.exit(named_tests.main({"Mutation." + test.__name__: test for test in TESTS}, sys.argv[2:]))
