"""docs/server-api.md is what script/server-page makes from the description and the transcripts."""
import difflib
import subprocess
import tempfile
import pathlib
import shutil

import pages


def made(root):
    run = subprocess.run([root / "script/server-page", "--print"], capture_output=True, text=True, check=False)
    return run.stdout if run.returncode == 0 else run.stderr


def page_is_made():
    kept, now = pages.read("docs/server-api.md").splitlines(), made(pages.ROOT).splitlines()
    return "\n".join(difflib.unified_diff(kept, now, "docs/server-api.md", "script/server-page --print", lineterm=""))


def follows():
    """A changed description, field or transcript changes the page; a description without its example makes none."""
    with tempfile.TemporaryDirectory(prefix="la casa è qui ") as folder:
        root = pathlib.Path(folder)
        shutil.copytree(pages.ROOT / "script", root / "script")
        shutil.copytree(pages.ROOT / "tests/scenarios", root / "tests/scenarios")
        (root / "docs").mkdir()
        description = root / "docs/server-api.yaml"
        transcript = root / "tests/scenarios/end/the-server-ends-the-session.transcript"
        wrong, good = "", pages.read("docs/server-api.yaml")
        for what, bent, path in (
                ("a description", good.replace("Joined. A body", "In. A body"), description),
                ("a field", good.replace("meetConnected: { type: boolean }", "meetOpen: { type: boolean }"), description),
                ("an exchange", good.replace("/api/heartbeat:", "/api/beat:"), description),
                ("a transcript", transcript.read_text(encoding="utf-8").replace("08:00:21Z", "08:00:22Z"), transcript)):
            description.write_text(good, encoding="utf-8")
            path.write_text(bent, encoding="utf-8")
            if made(root) == pages.read("docs/server-api.md"):
                wrong += f"{what} has changed, and the page has not\n"
    return wrong


TESTS = {
    "documentation.the-servers-page-is-what-the-script-makes": page_is_made,
    "documentation.the-servers-page-follows-what-it-is-made-from": follows,
}
