"""Fetches pinned packages with npm, once; they stay in build/cache. A program that needs one exits with 77 where it cannot be
had."""
import base64
import hashlib
import pathlib
import shutil
import subprocess
import sys
import tempfile

import pages

CACHE = pages.ROOT / "build/cache/npm"


def skip(reason):
    print(f"SKIPPED: {reason}")
    sys.exit(77)


def fetch(package, version, integrity):
    """The package's archive. `integrity` is its SHA-512 in Base64."""
    archive = CACHE / f"{package.rpartition('/')[2]}-{version}.tgz"
    if _is_right(archive, integrity):
        return archive
    if not shutil.which("npm"):
        skip(f"npm is missing, with which {package} is fetched")
    CACHE.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(dir=CACHE) as incoming:
        try:
            run = subprocess.run(["npm", "pack", "--loglevel=error", "--ignore-scripts", "--pack-destination", incoming,
                                  f"{package}@{version}"], capture_output=True, text=True, timeout=120, check=False)
        except subprocess.TimeoutExpired:
            skip(f"{package} could not be fetched with npm in time")
        found = list(pathlib.Path(incoming).glob("*.tgz"))
        if run.returncode or not found:
            # npm 10 changed the word.
            reason = next((line for line in run.stderr.splitlines() if "npm error" in line or "npm ERR!" in line), "no answer")
            skip(f"{package} could not be fetched with npm: {reason}")
        # A wrong checksum is an error, not a reason to skip.
        if not _is_right(found[0], integrity):
            sys.exit(f"{package} {version} does not have the integrity that is pinned")
        found[0].replace(archive)
    return archive


def _is_right(archive, integrity):
    return archive.is_file() and base64.b64encode(hashlib.sha512(archive.read_bytes()).digest()).decode() == integrity
