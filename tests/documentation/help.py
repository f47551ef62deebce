"""Each script answers --help with what it is for, and does nothing else."""
import os
import pathlib
import shutil
import subprocess
import tempfile

import pages

# All that an answer needs. What builds, downloads or starts something is not found.
TOOLS = ["bash", "cat", "dirname", "env", "python3", "sed", "uname"]


def scripts(folder):
    return [path for path in sorted(folder.iterdir()) if path.is_file() and os.access(path, os.X_OK)]


def files(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in sorted(folder.rglob("*")) if path.is_file()}


def wrong_answers(folder):
    """What is wrong with the answers of the scripts in the folder, which is inside a project of its own."""
    wrong = ""
    with tempfile.TemporaryDirectory() as tools:
        for tool in TOOLS:
            os.symlink(shutil.which(tool, path="/usr/bin:/bin"), pathlib.Path(tools) / tool)
        for script in scripts(folder):
            for option in ("--help", "-h"):
                before = files(folder.parent)
                run = subprocess.run([script, option], cwd=folder.parent, env={"PATH": tools, "HOME": tools}, timeout=60,
                                     stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
                if run.returncode or run.stderr or not run.stdout.startswith((script.name + ":", script.name + " ")):
                    wrong += f"{script.name} {option}: status {run.returncode}\n{run.stdout}{run.stderr}\n"
                if files(folder.parent) != before:
                    wrong += f"{script.name} {option} has written something\n"
    return wrong


def every_script_answers():
    with tempfile.TemporaryDirectory(prefix="la casa è qui ") as project:
        copy = pathlib.Path(project) / "script"
        shutil.copytree(pages.ROOT / "script", copy)
        if not scripts(copy):
            return "there is no script\n"
        return wrong_answers(copy)


def objects():
    mistakes = {
        "does not know it": '#!/usr/bin/env bash\n# A: does.\nset -e\n[[ $# -eq 0 ]]\n',
        "says something else": "#!/usr/bin/env bash\necho usage\n",
        "starts something": '#!/usr/bin/env bash\nset -e\necho "a: does"\ncmake --version\n',
        "writes something": '#!/usr/bin/env bash\necho "a: does"\necho x >"$(dirname "$0")/new"\n',
    }
    wrong = ""
    for what, text in mistakes.items():
        with tempfile.TemporaryDirectory() as project:
            script = pathlib.Path(project) / "script" / "a"
            script.parent.mkdir()
            script.write_text(text, encoding="utf-8")
            script.chmod(0o755)
            if not wrong_answers(script.parent):
                wrong += f"a script that {what}: nothing is said\n"
    return wrong


TESTS = {
    "documentation.every-script-answers-help-and-does-nothing-else": every_script_answers,
    "documentation.the-check-of-help-objects": objects,
}
