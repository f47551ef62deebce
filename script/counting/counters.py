"""Which lines and branches programs execute that were built with LLVM's counters."""

import collections
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

# Seconds.
LONGEST = 120


def execute(number, words, environment, folder):
    """What went wrong; nothing if all is well. A process writes its counters (%c) while it runs."""
    variables = {**os.environ, **environment, "LLVM_PROFILE_FILE": str(folder / f"{number}-%p%c.profraw")}
    try:
        done = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False, timeout=LONGEST,
                              env=variables)
    except subprocess.TimeoutExpired:
        return f"{words[-1]} {environment}: not over after {LONGEST} seconds"
    if not list(folder.glob(f"{number}-*")):
        return f"{words[-1]}: nothing was counted"
    return f"{words[-1]} {environment}: status {done.returncode}\n{done.stdout.decode()[-2000:]}" if done.returncode else ""


def counted(runs, programs, sources, page=None):
    """Runs everything (words and environments). Returns what LLVM counted in these sources, in the format of lcov, and what
    went wrong. `page` is a folder for pages that show the sources with their counts."""
    with tempfile.TemporaryDirectory() as name, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        folder = pathlib.Path(name)
        wrong = list(pool.map(lambda run: execute(run[0], *run[1], folder), enumerate(runs)))
        merged = folder / "all.profdata"
        subprocess.run(["llvm-profdata-22", "merge", "-o", merged, *folder.glob("*.profraw")], check=True)
        objects = [programs[0], *(f"--object={program}" for program in programs[1:])]
        report = subprocess.run(["llvm-cov-22", "export", "--format=lcov", f"--instr-profile={merged}", *objects, *sources],
                                check=True, capture_output=True, text=True).stdout
        if page:
            subprocess.run(["llvm-cov-22", "show", "--format=html", "--show-branches=count", "--show-instantiations=false",
                            f"--output-dir={page}", f"--instr-profile={merged}", *objects, *sources],
                           check=True, stdout=subprocess.DEVNULL)
    return report, [each for each in wrong if each]


def read(report, root):
    """By file: how often each line was executed, and how often each way of each condition was taken: line, place, way and
    count. A template's conditions are there once, whatever it is made for."""
    lines, ways, file = collections.defaultdict(dict), {}, None
    for row in report.splitlines():
        kind, _, rest = row.partition(":")
        if kind == "SF":
            file = pathlib.Path(rest).relative_to(root)
            ways[file] = collections.Counter()
        elif kind == "DA":
            line, count = rest.split(",")[:2]
            lines[file][int(line)] = int(count)
        elif kind == "BRDA":
            line, place, way, count = rest.split(",")
            ways[file][int(line), place, int(way)] += 0 if count == "-" else int(count)
    return lines, ways


def says_something(text):
    """Not a brace alone."""
    return re.search(r"\w", text) is not None


def share(part, whole):
    return f"{part} of {whole} ({100 * part / whole:.1f} %)"


def totals(lines, ways):
    """Of some files: both shares as words."""
    counts = [count for each in lines.values() for count in each.values()]
    taken = [count for file in lines for count in ways[file].values()]
    return f"{share(sum(map(bool, counts)), len(counts))} lines and {share(sum(map(bool, taken)), len(taken))} branches"


def tell_missed(lines, ways, root, with_branches):
    """Prints each line that nothing executes and, if wanted, each condition that only went one way."""
    for file in sorted(lines):
        text = (root / file).read_text(encoding="utf-8").splitlines()
        missed = [line for line, count in sorted(lines[file].items()) if not count and says_something(text[line - 1])]
        for line in missed:
            print(f"{file}:{line}: {text[line - 1].strip()}")
        for (line, _, way), count in sorted(ways[file].items()) if with_branches else []:
            if not count and line not in missed:
                print(f"{file}:{line}: never {'false' if way % 2 else 'true'}: {text[line - 1].strip()}")


def built(root, preset, programs):
    """The exit status of the build."""
    names = [program.name for program in programs]
    return subprocess.run([root / "script/build", preset, *names], check=False).returncode


def ended(wrong):
    """Prints what went wrong. Returns the exit status."""
    for each in wrong:
        print(each, file=sys.stderr)
    return 1 if wrong else 0
