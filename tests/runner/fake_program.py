"""Lists and runs tests as a Google Test executable does; a test's name says what becomes of it."""

import os
import signal
import subprocess
import sys
import time

NAMES = ["Suite.Passes", "Suite.Fails", "Suite.IsSkipped", "Suite.Dies", "Suite.Hangs", "Suite.LeavesAChild", "Suite.Speaks",
         "Suite.PassesToo"]


def run(name):
    print(f"[ RUN      ] {name}", flush=True)
    result = "       OK "
    if name.endswith("Fails"):
        print("fake.cpp:7: Failure\nExpected: 1\nActual: 2")
        result = "  FAILED  "
    elif name.endswith("IsSkipped"):
        print("fake.cpp:9: Skipped\nno second display here\n")
        result = "  SKIPPED "
    elif name.endswith("Dies"):
        os.kill(os.getpid(), signal.SIGSEGV)
    elif name.endswith("Hangs"):
        time.sleep(600)
    elif name.endswith("LeavesAChild"):
        with open(os.environ["CHILD"], "w", encoding="utf-8") as file:
            print(subprocess.Popen(["sleep", "600"]).pid, file=file)
    elif name.endswith("Speaks"):
        print("without a newline", end="")
    print(f"[{result}] {name} (3 ms)", flush=True)
    return result != "  FAILED  "


def main():
    picked = [word.partition("=")[2] for word in sys.argv if word.startswith("--gtest_filter=")]
    names = picked[-1].split(":") if picked else NAMES
    if "--gtest_list_tests" in sys.argv:
        print("Suite.  # TypeParam = int\n" + "".join(f"  {name.split('.')[1]}\n" for name in names), end="")
        return 0
    if os.environ.get("ENDS") == "at once":
        return 0
    held = [run(name) for name in names]
    return 3 if os.environ.get("ENDS") == "badly" or not all(held) else 0


sys.exit(main())
