"""The pictures of the documentation are those that script/pictures makes from an unattended run, small and shown."""
import importlib.machinery
import importlib.util
import pathlib
import re
import struct
import subprocess
import tempfile

import pages

MOST_BYTES = 150_000


def table():
    loader = importlib.machinery.SourceFileLoader("pictures_script", str(pages.ROOT / "script/pictures"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("pictures_script", loader))
    loader.exec_module(module)
    return {name: source for name, (source, _) in module.PICTURES.items()}


def chunks(data):
    """(kind, content) of each part of a PNG file."""
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError("it is no PNG file")
    place = 8
    while place < len(data):
        length, = struct.unpack(">I", data[place:place + 4])
        yield data[place + 4:place + 8], data[place + 8:place + 8 + length]
        place += 12 + length


def source_of(path):
    """What the file says it was made from."""
    return dict(content.split(b"\0", 1) for kind, content in chunks(path.read_bytes()) if kind == b"tEXt").get(b"Source", b"").decode()


def taken():
    """The names of the pictures that an unattended run takes."""
    code = "".join(path.read_text(encoding="utf-8") for path in sorted((pages.ROOT / "script/unattended").glob("*.py")))
    return {f"{name}.png" for name in re.findall(r'\.picture\(f?"([^"]+)"', code)} | \
        set(re.findall(r'\.picture\(RUN / "([^"]+)"', code))


def shown():
    """The names of the pictures that the pages show."""
    names = set()
    for page in pages.every():
        found = re.findall(r'!\[[^\]]*\]\(([^)]+)\)|<img src="([^"]+)"', pages.read(page))
        names |= {pathlib.PurePath(one or other).name for one, other in found}
    return names


def check(images, made_from, taken_by_run, shown_by_pages):
    there = {path.name: path for path in sorted(images.iterdir())}
    wrong = pages.sets_differ("docs/images, by script/pictures", set(there), set(made_from))
    wrong += pages.sets_differ("docs/images, by the pages", set(there), shown_by_pages)
    for name, path in there.items():
        if path.stat().st_size >= MOST_BYTES:
            wrong += f"{name} has {path.stat().st_size} bytes\n"
        if source_of(path) != made_from.get(name):
            wrong += f"{name} was made from {source_of(path)!r} and not from {made_from.get(name)!r}\n"
    for source in sorted(set(made_from.values()) - taken_by_run):
        wrong += f"no unattended run takes {source}\n"
    return wrong


def pictures_hold():
    return check(pages.ROOT / "docs/images", table(), taken(), shown())


def run_script(*arguments):
    return subprocess.run([pages.ROOT / "script/pictures", *arguments], capture_output=True, text=True, check=False)


def the_script_makes_them():
    """From a desktop with a window on each of its displays the script makes every picture, the same again each time."""
    with tempfile.TemporaryDirectory() as folder:
        run, images, again = (pathlib.Path(folder, name) for name in ("run", "images", "again"))
        run.mkdir()
        drawn = ["convert", "-size", "2880x900", "xc:#5b6f82", "-fill", "#eeeeee", "-draw", "rectangle 500,200 939,649",
                 "-fill", "#202020", "-draw", "rectangle 540,240 700,260"]
        for source in set(table().values()):
            subprocess.run([*drawn, run / source], check=True)
        results = [run_script(run, images), run_script(run, again)]
        if any(result.returncode for result in results):
            return "".join(result.stderr for result in results)
        wrong = check(images, table(), taken(), set(table()))
        for path in images.iterdir():
            if path.read_bytes() != (again / path.name).read_bytes():
                wrong += f"{path.name} is another one the second time\n"
        sizes = {struct.unpack(">II", next(chunks(path.read_bytes()))[1][:8]) for path in images.iterdir()}
        if (440, 450) not in sizes:
            wrong += f"no window was cut out: {sizes}\n"
        (run / "7-end-screen.png").unlink()
        without = run_script(run, images)
        if without.returncode != 1 or "7-end-screen.png" not in without.stderr:
            wrong += f"nothing is said of a missing picture: {without}\n"
    return wrong


def objects():
    images, good = pages.ROOT / "docs/images", (table(), taken(), shown())
    if check(images, *good):
        return "the pictures themselves are wrong\n"
    name, source = next(iter(good[0].items()))
    mistakes = {
        "a picture that the script does not make": ({key: value for key, value in good[0].items() if key != name}, *good[1:]),
        "a picture made from another": ({**good[0], name: "4-lockdown.png"}, *good[1:]),
        "a picture that no run takes": (good[0], good[1] - {source}, good[2]),
        "a picture that no page shows": (*good[:2], good[2] - {name}),
        "a picture that is not there": (*good[:2], good[2] | {"other.png"}),
    }
    return "".join(f"{what}: nothing is said\n" for what, bent in mistakes.items() if not check(images, *bent))


TESTS = {
    "documentation.the-pictures-are-small-shown-and-made-by-the-script": pictures_hold,
    "documentation.the-script-makes-the-pictures-from-a-run": the_script_makes_them,
    "documentation.the-check-of-pictures-objects": objects,
}
