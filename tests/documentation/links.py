"""Links inside the tree lead somewhere, paths that the pages name are there, and commands know the options named with them."""
import ast
import functools
import os
import pathlib
import re

import pages

# What stands for something that the reader fills in, or is made by a build.
OPEN = re.compile(r"[<>…*]|\b(?:NAME|OTHER|FILE|THEME|KEY)\b|^build/")
FOLDERS = r"(?:src|tests|script|docs|packaging|practice|rehearsal|fuzz|bench|cmake|\.ci|\.github)"
COMMAND = re.compile(r"(?<![\w/.-])(script/[\w-]+|vantrel-practice|vantrel-rehearse|vantrel)((?: [^`\n;|)]+)?)")


def prose(page):
    """The page without the blocks and texts that are shown as they are."""
    page = pages.without_blocks(page)
    return re.sub(r"`[^`\n]*`", lambda text: " " * len(text[0]), page)


def anchors(page):
    """The places in a page that a link can lead to, as GitHub names them."""
    found, count = set(), {}
    for heading in re.findall(r"^#+ (.+)$", pages.without_blocks(page), re.MULTILINE):
        name = re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")
        number = count.get(name, 0)
        count[name] = number + 1
        found.add(f"{name}-{number}" if number else name)
    return found


def targets(page):
    return [target.strip("<>") for target in re.findall(r"\]\(([^()\s]*(?:\([^()]*\)[^()\s]*)*)\)", prose(page))] + \
        re.findall(r'<(?:img|a)[^>]* (?:src|href)="([^"]+)"', page)


def wrong_links(name, page):
    wrong = ""
    for target in targets(page):
        if re.match(r"[a-z]+:", target):
            continue
        path, _, anchor = target.partition("#")
        file = (pages.ROOT / name).parent / path if path else pages.ROOT / name
        if not file.exists():
            wrong += f"{name}: {target} leads nowhere\n"
        elif anchor and anchor not in anchors(page if not path else file.read_text(encoding="utf-8")):
            wrong += f"{name}: {target}: there is no such heading\n"
    return wrong


def spans(page):
    """What is shown as it is: in backquotes, in indented blocks and in fenced ones that are commands."""
    shown = re.findall(r"`([^`\n]+)`", pages.without_blocks(page))
    shown += re.findall(r"^    (?! )(.*)$", pages.without_blocks(page), re.MULTILINE)
    for block in re.findall(r"^```(?:sh|bash|console)?\n(.*?)^```$", page, re.MULTILINE | re.DOTALL):
        shown += block.splitlines()
    return [text.partition("  #")[0].strip() for text in shown]


def spread(path):
    """The paths that the shell would make of "a/{b,c}"."""
    found = re.match(r"([^{]*){([^{}]*)}(.*)", path)
    return [path] if not found else [rest for part in found[2].split(",") for rest in spread(found[1] + part + found[3])]


def is_there(name, path):
    if (pages.ROOT / path).exists() or ((pages.ROOT / name).parent / path).exists():
        return True
    # A class or a test without its ending.
    return bool(list((pages.ROOT / path).parent.glob((pages.ROOT / path).name + ".*")))


def wrong_paths(name, page):
    wrong = ""
    for text in spans(page):
        for path in re.findall(rf"(?<![\w./~$@-]){FOLDERS}/[\w./{{}},<>…*-]*", text):
            for one in spread(path.rstrip(".,")):
                if not OPEN.search(one) and not is_there(name, one):
                    wrong += f"{name}: {one} is not there\n"
    return wrong


@functools.cache
def knowledge(program):
    """Everything that a program's own sources and those behind it say; its options are among it."""
    behind = {"script/test": ["script/testing"], "script/rehearse": ["rehearsal/program", "tests/scenarios/accept.py"],
              "script/check-server": ["script/wire"], "script/run": ["script/unattended"], "script/explain": ["script/explaining"],
              "vantrel-practice": ["practice/program"], "vantrel-rehearse": ["rehearsal/program"], "vantrel": ["src/platform/linux/system/CommandLineAnswer.cpp"]}
    places = [pages.ROOT / place for place in behind.get(program, [])]
    if program.startswith("script/"):
        places.append(pages.ROOT / program)
    files = [file for place in places for file in ([place] if place.is_file() else sorted(place.rglob("*")) if place.is_dir() else [])]
    return "".join(file.read_text(encoding="utf-8") for file in files if file.is_file() and file.suffix != ".pyc")


def wrong_commands(name, page):
    wrong = ""
    for text in spans(page):
        for program, rest in COMMAND.findall(text):
            path = pages.ROOT / program
            if program.startswith("script/") and path.is_dir():
                continue
            if program.startswith("script/") and not (path.is_file() and os.access(path, os.X_OK)):
                wrong += f"{name}: there is no command {program}\n"
                continue
            # Options of the program, up to another command; "--" ends them.
            for option in re.findall(r" (--?[a-z][\w-]*)", rest.partition(" -- ")[0].partition(" && ")[0]):
                # Google Benchmark's.
                foreign = program == "script/bench" and option.startswith("--benchmark_")
                if not foreign and option not in knowledge(program):
                    wrong += f"{name}: {program} does not know {option}\n"
    return wrong


def every(check):
    return "".join(check(name, pages.read(name)) for name in pages.every())


def unreachable(start="README.md"):
    """The pages that no link leads to from the first one."""
    found, open_ = set(), [start]
    while open_:
        name = open_.pop()
        found.add(name)
        for target in targets(pages.read(name)):
            file = ((pages.ROOT / name).parent / target.partition("#")[0]).resolve()
            other = str(file.relative_to(pages.ROOT)) if file.is_relative_to(pages.ROOT) else ""
            if other.endswith(".md") and file.is_file() and other not in found:
                open_.append(other)
    return set(pages.every()) - found


def no_page_is_lost():
    return "".join(f"no link leads from README.md to {name}\n" for name in sorted(unreachable()))


def drawn_modules():
    """The arrows between the modules of rules in the architecture's drawing are the ones that are allowed."""
    tree = ast.parse(pages.read("script/check-layers"))
    values = {node.targets[0].id: node.value for node in ast.walk(tree)
              if isinstance(node, ast.Assign) and isinstance(node.targets[0], ast.Name)}
    allowed = {(module, other) for module, others in zip(
        map(ast.literal_eval, values["modules"].keys),
        [set() if isinstance(value, ast.Call) else ast.literal_eval(value) for value in values["modules"].values])
        for other in others}
    drawing = re.search(r"subgraph rules.*?\n(.*?)\n    end", pages.read("docs/architecture.md"), re.DOTALL)[1]
    drawn = set(re.findall(r"(\w+) --> (\w+)", drawing))
    return pages.sets_differ("arrows", {f"{a} --> {b}" for a, b in drawn}, {f"{a} --> {b}" for a, b in allowed})


def objects():
    name = "docs/architecture.md"
    mistakes = [
        (wrong_links, "[a](macos.md#nothing)"), (wrong_links, "[a](nothing.md)"), (wrong_links, "[a](#nothing)"),
        (wrong_links, "[a](../README.md/x)"), (wrong_links, '<img src="images/none.png">'),
        (wrong_paths, "`src/nothing/A.cpp`"), (wrong_paths, "    cat src/{app,nothing}\n"), (wrong_paths, "`tests/nothing/`"),
        (wrong_commands, "`script/nothing`"), (wrong_commands, "    script/run --attended\n"),
        (wrong_commands, "`script/rehearse FILE --sed 3`"), (wrong_commands, "`vantrel-practice --ports 3`"),
        (wrong_commands, "`vantrel --versions`"),
    ]
    right = [
        (wrong_links, "[a](macos.md#building) [b](https://x.example/y) [c](#threads)\n# Threads\n"),
        (wrong_paths, "`src/{app,session}` `src/<theme>/A.h` `build/run/x.png` `src/platform/Computer.h`"),
        (wrong_commands, "    script/run --unattended --desktop xfwm4\n`script/rehearse FILE --seed 3` `vantrel --version`"),
    ]
    return "".join(f"{text!r}: nothing is said\n" for check, text in mistakes if not check(name, text)) + \
        "".join(check(name, text) for check, text in right)


TESTS = {
    "documentation.links-inside-the-tree-lead-somewhere": lambda: every(wrong_links),
    "documentation.paths-that-pages-name-are-there": lambda: every(wrong_paths),
    "documentation.commands-know-the-options-that-pages-name": lambda: every(wrong_commands),
    "documentation.every-page-is-reached-from-the-readme": no_page_is_lost,
    "documentation.the-drawn-modules-are-those-that-are-checked": drawn_modules,
    "documentation.the-check-of-links-objects": objects,
}
