#!/usr/bin/env python3
"""check_symbols.py LIST OBJECT ...: checks that all undefined symbols of the objects are in the list. (The compiler's
optimisation decides which of them it needs, so the list may contain more.)

Names of the project and of the Objective-C classes are not listed: if a stand-in lacks one, linking fails. Nor are those
of the C++ library's that only compute: memory, exceptions, strings and trees.
"""
import pathlib
import re
import subprocess
import sys

NOT_LISTED = re.compile(r"_ZNK?7vantrel|_ZT[VI]N7vantrel|_ZTVN10__cxxabiv1|_ZT[VI]St|_Zn[wa]|_Zd[la]|_ZSt7nothrow|_ZSt9terminate|"
                        r"_ZNK?Sa|_ZNK?St9exception|_ZNK?St7__cxx1112basic_string|_ZSt[0-9]+__throw_|_ZSt[0-9]+_Rb_tree_|"
                        r"OBJC_CLASS_|OBJC_METACLASS_|OBJC_EHTYPE_|_GLOBAL_OFFSET_TABLE_")


def undefined(path):
    listing = subprocess.run(["nm", "--undefined-only", "--format=just-symbols", path], capture_output=True, text=True,
                             check=True).stdout
    return {name for name in listing.split() if not NOT_LISTED.match(name)}


def main():
    found = set().union(*map(undefined, sys.argv[2:]))
    lines = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8").splitlines()
    listed = {line for line in lines if line and not line.startswith("#")}
    for name in sorted(found - listed):
        print(f"{name} is new: say in {pathlib.Path(sys.argv[1]).name} what it does, or wrap it")
    return 0 if found <= listed else 1


if __name__ == "__main__":
    sys.exit(main())
