"""The optional hook lets a good commit pass and stops each mistake. It checks what is staged, not the work tree."""

import os
import pathlib
import shutil
import subprocess
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOUND = {"src/server/A.cpp": "#include <string>\n\nint a() {\n    return 1;\n}\n", "script/run": "#!/usr/bin/env bash\necho \"$1\"\n"}
MISTAKES = {
    "src/server/B.cpp": ("int b()\n{ return 1; }\n", "clang-format"),
    "src/server/C.cpp": ('#include "session/JoinScreen.h"\n', "server must not know session/JoinScreen.h"),
    "script/careless": ("#!/usr/bin/env bash\nrm -rf $1/x\n", "SC2086"),
}


def git(folder, *arguments):
    environment = {key: value for key, value in os.environ.items() if not key.startswith("GIT_")}
    command = ["git", "-c", "user.name=T", "-c", "user.email=t@t.invalid", "-c", f"core.hooksPath={ROOT}/script/hooks", *arguments]
    return subprocess.run(command, cwd=folder, env=environment, capture_output=True, text=True)


def write(folder, name, text):
    path = folder / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text)


def main():
    with tempfile.TemporaryDirectory(prefix="la casa è qui ") as name:
        folder = pathlib.Path(name)
        git(folder, "init", "-q")
        for file in (".clang-format", "script/check-layers"):
            (folder / file).parent.mkdir(exist_ok=True)
            shutil.copy(ROOT / file, folder / file)
        for file, text in SOUND.items():
            write(folder, file, text)
        git(folder, "add", "-A")
        result = git(folder, "commit", "-qm", "Sound")
        assert result.returncode == 0, result.stderr
        for file, (text, complaint) in MISTAKES.items():
            write(folder, file, text)
            result = git(folder, "commit", "-qm", "Nothing is staged", "--allow-empty")
            assert result.returncode == 0, (file, result.stderr)
            git(folder, "add", file)
            result = git(folder, "commit", "-qm", "Mistake")
            assert result.returncode != 0 and complaint in result.stdout + result.stderr, (file, result.stdout, result.stderr)
            git(folder, "rm", "-qf", file)


main()
