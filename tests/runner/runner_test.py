"""What script/test tells of a test is what became of it."""

import contextlib
import io
import os
import pathlib
import subprocess
import sys
import tempfile
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "script/testing"), str(ROOT / "tests/support")]

import entries  # noqa: E402
import main  # noqa: E402
import named_tests  # noqa: E402
import progress  # noqa: E402
from outcome import FAILED, PASSED, SKIPPED  # noqa: E402
from running import run_named, run_plain  # noqa: E402
from schedule import Schedule, split  # noqa: E402
from selection import Pattern, chosen, may_hold, names_in  # noqa: E402

PROGRAM = [sys.executable, "-B", str(pathlib.Path(__file__).with_name("fake_program.py"))]


def entry(**properties):
    return entries.Entry(**{"name": "fake", "command": PROGRAM, "folder": "/", "named": True, "prefix": "fake.",
                            "timeout": 60.0, **properties})


def outcomes(names, **properties):
    """What is reported of these tests of the fake program, by their names."""
    reported, begun = [], []
    which = entry(**properties)
    run_named(which, ["Suite." + name for name in names], {**os.environ, **which.environment}, 0, begun.append,
              reported.append)
    return {one.name: one for one in reported}


def results(names, **properties):
    return {name: one.result for name, one in outcomes(names, **properties).items()}


def same(actual, expected):
    """Nothing when they are."""
    return None if actual == expected else f"expected: {expected}\nactual:   {actual}"


def tells_of_each_test_by_its_name():
    return same(results(["Passes", "Fails", "IsSkipped", "PassesToo"]),
                {"fake.Suite.Passes": PASSED, "fake.Suite.Fails": FAILED, "fake.Suite.IsSkipped": SKIPPED,
                 "fake.Suite.PassesToo": PASSED})


def keeps_what_a_failed_test_wrote():
    return same(outcomes(["Passes", "Fails"])["fake.Suite.Fails"].output,
                "fake.cpp:7: Failure\nExpected: 1\nActual: 2\n")


def says_why_a_test_was_skipped():
    return same(outcomes(["IsSkipped"])["fake.Suite.IsSkipped"].reason(), "no second display here")


def a_process_that_dies_takes_one_test_along():
    found = outcomes(["Passes", "Dies", "PassesToo"])
    return same({name: one.result for name, one in found.items()},
                {"fake.Suite.Passes": PASSED, "fake.Suite.Dies": FAILED, "fake.Suite.PassesToo": PASSED}) or same(
                    found["fake.Suite.Dies"].output, "the process ended in it: signal 11, SIGSEGV\n")


def a_test_that_hangs_fails_and_the_others_run():
    return same(results(["Passes", "Hangs", "PassesToo"], timeout=1.0),
                {"fake.Suite.Passes": PASSED, "fake.Suite.Hangs": FAILED, "fake.Suite.PassesToo": PASSED})


def a_process_that_runs_nothing_fails():
    found = results(["Passes", "PassesToo"], environment={"ENDS": "at once"})
    return None if list(found.values()) == [FAILED] else f"reported: {found}"


def a_process_that_ends_badly_after_its_tests_fails():
    return same(results(["Passes"], environment={"ENDS": "badly"}),
                {"fake.Suite.Passes": PASSED, "fake (the process itself)": FAILED})


def a_line_without_its_end_hides_no_result():
    return same(results(["Speaks", "Passes"]), {"fake.Suite.Speaks": PASSED, "fake.Suite.Passes": PASSED})


def lives(process):
    """Not when it has been killed and its new parent has not collected it yet."""
    try:
        status = pathlib.Path(f"/proc/{process}/stat").read_text(encoding="utf-8")
    except FileNotFoundError:
        return False
    return status.rpartition(")")[2].split()[0] != "Z"


def what_a_test_started_ends_with_its_process():
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "child"
        found = results(["LeavesAChild"], environment={"CHILD": str(file)})
        child = int(file.read_text(encoding="utf-8"))
        deadline = time.monotonic() + 60
        while lives(child) and time.monotonic() < deadline:
            time.sleep(0.01)
        return same(found, {"fake.Suite.LeavesAChild": PASSED}) or ("the child lives on" if lives(child) else None)


def plain(script, **properties):
    reported = []
    which = entry(named=False, prefix="", command=["bash", "-c", script], **properties)
    run_plain(which, dict(os.environ), 0, lambda _: None, reported.append)
    return reported[0]


def a_plain_check_passes_with_status_0_only():
    return same([plain("exit 0").result, plain("exit 1").result, plain("kill -9 $$").result], [PASSED, FAILED, FAILED])


def a_plain_check_is_skipped_by_its_status_or_its_words():
    return same([plain("exit 77", skip_status=77).result, plain("exit 77").result,
                 plain("echo 'SKIPPED: no registry'", skip_words=["SKIPPED: "]).reason()],
                [SKIPPED, FAILED, "no registry"])


def a_plain_check_that_hangs_fails():
    return same(plain("sleep 600", timeout=1.0).result, FAILED)


def lists_names_without_comments():
    return same(list(entries.listed("Suite.  # TypeParam = int\n  One\n  Two/0  # GetParam() = 4\nOther.\n  Three\n")),
                ["Suite.One", "Suite.Two/0", "Other.Three"])


def refuses_a_property_that_it_does_not_know():
    try:
        entries.plain_entry({"name": "odd", "properties": [{"name": "WILL_FAIL", "value": True}]})
    except RuntimeError as problem:
        return None if "WILL_FAIL" in str(problem) else str(problem)
    return "it was accepted"


def divides_tests_into_processes():
    jobs = split(entry(at_once=3), list("abcdefg"), lambda name: 2.0)
    return same([(job.names, job.cost) for job in jobs], [(list("abc"), 6.0), (list("def"), 6.0), (["g"], 2.0)])


def runs_everything_once_and_alone_what_has_to_be():
    reporter = progress.Progress(0)
    alone, others = [], []
    with tempfile.TemporaryDirectory() as folder:
        take = f"mkdir '{folder}/lock' && sleep 0.2 && rmdir '{folder}/lock'"
        alone = [entry(name=f"alone.{number}", named=False, command=["bash", "-c", take], alone=True) for number in range(3)]
        others = [entry(name=f"other.{number}", named=False, command=["bash", "-c", "exit 0"]) for number in range(5)]
        jobs = [job for one in alone + others for job in split(one, [one.name], lambda name: 0.0)]
        Schedule(jobs, dict(os.environ), reporter, "no-desktop").run(1)
    reporter.close()
    return same(sorted((one.name, one.result) for one in reporter.outcomes),
                sorted((one.name, PASSED) for one in alone + others))


def begins_nothing_before_what_it_comes_after():
    reporter = progress.Progress(0)
    with tempfile.TemporaryDirectory() as folder:
        first = entry(name="first", named=False, command=["bash", "-c", f"sleep 0.3; touch '{folder}/made'"])
        second = entry(name="second", named=False, command=["test", "-e", f"{folder}/made"], after=["first"], cost=99.0)
        Schedule([job for one in (first, second) for job in split(one, [one.name], lambda name: 0.0)], dict(os.environ),
                 reporter, "no-desktop").run(1)
    reporter.close()
    return same([(one.name, one.result) for one in reporter.outcomes], [("first", PASSED), ("second", PASSED)])


def begins_early_what_a_long_test_waits_for():
    reporter = progress.Progress(0)
    ready = entry(name="ready", named=False, command=["true"], alone=True)
    short = entry(name="short", named=False, command=["true"], alone=True, cost=5.0)
    long = entry(name="long", named=False, command=["true"], alone=True, after=["ready"], cost=99.0)
    Schedule([job for one in (short, ready, long) for job in split(one, [one.name], lambda name: 0.0)], dict(os.environ),
             reporter, "no-desktop").run(1)
    reporter.close()
    return same([one.name for one in reporter.outcomes], ["ready", "long", "short"])


def a_stopped_run_ends_its_processes_and_begins_no_more():
    with tempfile.TemporaryDirectory() as folder:
        begun = pathlib.Path(folder) / "begun"
        script = f"""import os, signal, sys
sys.path[:0] = [{str(ROOT / 'script/testing')!r}]
import entries, main, progress
from schedule import Schedule, split
for number in (signal.SIGINT, signal.SIGTERM):
    signal.signal(number, main.stopped)
jobs = [job for name in "abcdefgh" for job in split(entries.Entry(name=name, folder="/", command=["bash", "-c",
        "echo $$ >> '{begun}'; sleep 600 & wait"]), [name], lambda name: 0.0)]
Schedule(jobs, dict(os.environ), progress.Progress(len(jobs)), "no-desktop").run(1)
"""
        run = subprocess.Popen([sys.executable, "-B", "-c", script], stdout=subprocess.PIPE, text=True)
        deadline = time.monotonic() + 60
        while not begun.exists() and time.monotonic() < deadline:
            time.sleep(0.01)
        run.terminate()
        said, _ = run.communicate(timeout=60)
        processes = begun.read_text(encoding="utf-8").split()
        while any(map(lives, processes)) and time.monotonic() < deadline:
            time.sleep(0.01)
        return same((run.returncode, said, [one for one in processes if lives(one)], len(processes) < 8),
                    (143, "", [], True))


def an_end_counts_every_test():
    failed_one = plain("exit 1")
    with contextlib.redirect_stdout(io.StringIO()) as said:
        held = [progress.summary([plain("exit 0"), plain("exit 77", skip_status=77)]),
                progress.summary([plain("exit 0"), failed_one])]
    last = [line for line in said.getvalue().splitlines() if "tests passed" in line]
    return same((held, last), ([True, False], ["100% tests passed, 0 tests failed out of 2",
                                              "50% tests passed, 1 tests failed out of 2"]))


def one_failure_among_many_is_not_a_hundred_per_cent():
    passed, failed_one = plain("exit 0"), plain("exit 1")
    with contextlib.redirect_stdout(io.StringIO()) as said:
        progress.summary([passed] * 4000 + [failed_one])
    return same(said.getvalue().splitlines()[-1], "99% tests passed, 1 tests failed out of 4001")


def is_never_silent_for_long():
    with contextlib.redirect_stdout(io.StringIO()) as said:
        reporter = progress.Progress(7, silence=0.05, tick=0.02)
        reporter.begins("a long one")
        deadline = time.monotonic() + 60
        while said.getvalue().count("\n") < 3 and time.monotonic() < deadline:
            threading.Event().wait(0.02)
        reporter.close()
    lines = said.getvalue().splitlines()
    return None if len(lines) >= 3 and all("0 of 7" in line and "a long one" in line for line in lines) else lines


def reads_names_from_sources():
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder) / "HeartbeatTest.cpp"
        source.write_text("TEST(Heartbeat, ReportsEveryFifteenSeconds) {}\nTEST_F(Keys, SwallowsTab) {}\n"
                          "TEST_P(Replies, AreRead) {}\nINSTANTIATE_TEST_SUITE_P(All, Replies, Values(1));\n",
                          encoding="utf-8")
        found = names_in(source)
        picked = [chosen(entry(sources=[str(source)]), [*found[:2], "All/Replies.AreRead/0", "Other.One"],
                         [Pattern(ROOT, word)]) for word in ("Keys", "Fifteen", "AreRead", str(source), "fake")]
        return same((found, picked),
                    (["Heartbeat.ReportsEveryFifteenSeconds", "Keys.SwallowsTab", "All/Replies.AreRead"],
                     [["Keys.SwallowsTab"], ["Heartbeat.ReportsEveryFifteenSeconds"], ["All/Replies.AreRead/0"],
                      [*found[:2], "All/Replies.AreRead/0", "Other.One"],
                      [*found[:2], "All/Replies.AreRead/0", "Other.One"]]))


def a_module_of_rules_means_its_tests():
    pattern = Pattern(ROOT, "src/lockdown")
    return same([may_hold(entry(name="x", prefix="", sources=[str(ROOT / path)]), pattern)
                 for path in ("tests/lockdown/KeyboardHookServiceTest.cpp", "tests/app/AppTest.cpp")], [True, False])


def a_computer_means_its_tests_and_the_contracts():
    pattern = Pattern(ROOT, "src/platform/virtual/keyboard")
    return same([may_hold(entry(name="x", prefix="", sources=[str(ROOT / path)]), pattern)
                 for path in ("tests/virtual/KeyboardTest.cpp", "tests/contracts/KeyboardContract.cpp",
                              "tests/linux/KeyboardTest.cpp")], [True, True, False])


def a_folder_means_the_checks_that_it_adds():
    pattern = Pattern(ROOT, "tests/layout")
    return same([may_hold(entries.plain_entry({"name": "x"}, str(ROOT / path)), pattern)
                 for path in ("tests/layout/CMakeLists.txt", "tests/api/CMakeLists.txt")], [True, False])


def required_checks_may_not_be_skipped():
    passed, skipped = plain("exit 0"), plain("exit 77", skip_status=77)
    passed.name, skipped.name = "macos.types", "macos.names"
    return same([main.missing_macos_checks(found) for found in ([passed], [passed, skipped], [])], [False, True, True])


TESTS = [tells_of_each_test_by_its_name, keeps_what_a_failed_test_wrote, says_why_a_test_was_skipped,
         a_process_that_dies_takes_one_test_along, a_test_that_hangs_fails_and_the_others_run,
         a_process_that_runs_nothing_fails, a_process_that_ends_badly_after_its_tests_fails,
         a_line_without_its_end_hides_no_result, what_a_test_started_ends_with_its_process,
         a_plain_check_passes_with_status_0_only, a_plain_check_is_skipped_by_its_status_or_its_words,
         a_plain_check_that_hangs_fails, lists_names_without_comments, refuses_a_property_that_it_does_not_know,
         divides_tests_into_processes, runs_everything_once_and_alone_what_has_to_be,
         begins_nothing_before_what_it_comes_after, begins_early_what_a_long_test_waits_for,
         a_stopped_run_ends_its_processes_and_begins_no_more, an_end_counts_every_test,
         one_failure_among_many_is_not_a_hundred_per_cent, is_never_silent_for_long, reads_names_from_sources,
         a_module_of_rules_means_its_tests, a_computer_means_its_tests_and_the_contracts,
         a_folder_means_the_checks_that_it_adds, required_checks_may_not_be_skipped]

if __name__ == "__main__":
    sys.exit(named_tests.main({"Runner." + test.__name__: test for test in TESTS}, sys.argv[1:]))
