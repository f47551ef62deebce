"""Every drawing of the documentation renders, in a real browser with Mermaid itself. Exits with 77 where that is not to be
had."""
import json
import pathlib
import re
import sys
import tarfile
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "practice")]

import headless_chromium
import npm_package
import pages

PACKAGE = ("@mermaid-js/tiny", "11.17.2",
           "PmFr1c5cSfNf5AngLLR98DrbvR4U5KeD7I+hQkGqG5w5Veu3QT4dG0qu9f99cpn/sKj2XxRBK0q7EL6hr9NY/A==")
# Of each kind that is drawn; none of them is one.
MISTAKES = ["flowchart TD\n    a -->", "sequenceDiagram\n    a->>b", "sequenceDiagram\n    loop\n    a->>b: c",
            "flowchart TD\n    subgraph a\n    b --> c", "flowchrt TD\n    a --> b"]


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
        npm_package.skip("Chromium is missing")
    with tempfile.TemporaryDirectory() as folder, tarfile.open(npm_package.fetch(*PACKAGE)) as archive:
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
