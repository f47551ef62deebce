"""Lets a script list and run its tests as a Google Test executable does, so that script/test runs many of them in one
process and still tells of each by its name (vantrel_script_tests in cmake/NamedTests.cmake)."""

import time
import traceback


def main(tests, arguments):
    """`tests` maps names to functions; each returns what is wrong, nothing if the test passed. `arguments` are those of
    the command line that begin with two dashes. Returns the exit status."""
    if "--gtest_list_tests" in arguments:
        print("".join(f"{name.split('.', 1)[0]}.\n  {name.split('.', 1)[1]}\n" for name in tests), end="")
        return 0
    wanted = [word.partition("=")[2].split(":") for word in arguments if word.startswith("--gtest_filter=")]
    names = wanted[-1] if wanted else list(tests)
    unknown = [name for name in names if name not in tests]
    failed = [name for name in names if name not in unknown and not passes(name, tests[name])]
    print(*[f"there is no test {name}" for name in unknown], sep="\n")
    return 1 if failed or unknown or not names else 0


def passes(name, test):
    print(f"[ RUN      ] {name}", flush=True)
    began = time.monotonic()
    try:
        wrong = test()
    except Exception:
        wrong = traceback.format_exc()
    if wrong:
        print(wrong)
    print(f"[{'  FAILED  ' if wrong else '       OK '}] {name} ({(time.monotonic() - began) * 1000:.0f} ms)", flush=True)
    return not wrong
