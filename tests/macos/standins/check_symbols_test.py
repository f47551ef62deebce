#!/usr/bin/env python3
"""check_symbols_test.py LIST OBJECT: the check of the product's symbols objects to what reaches beyond the process, by
the C library and by the C++ library."""
import pathlib
import subprocess
import sys

CHECK = pathlib.Path(__file__).resolve().parent / "check_symbols.py"
MISSED = ("system is new", "unlink is new", "filesystem6removeE", "basic_ofstream")


def main():
    done = subprocess.run([sys.executable, "-B", CHECK, *sys.argv[1:]], capture_output=True, text=True, check=False)
    missed = [each for each in MISSED if each not in done.stdout]
    print(done.stdout + done.stderr)
    for each in missed:
        print(f"the check says nothing of {each}")
    return 1 if missed or done.returncode != 1 else 0


if __name__ == "__main__":
    sys.exit(main())
