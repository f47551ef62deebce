"""A file system of a few pages that can be filled: the client's settings are on it."""

import errno
import os
import subprocess


class SmallDisk:
    def __init__(self, folder):
        self._folder, self._mounted = folder, False

    def __enter__(self):
        self._folder.mkdir(parents=True, exist_ok=True)
        while self._folder.is_mount():  # A run that was killed left it.
            subprocess.run(["umount", "--lazy", self._folder], check=True)
        # Only root may, and not in every container.
        self._mounted = os.geteuid() == 0 and subprocess.run(
            ["mount", "-t", "tmpfs", "-o", "size=64k", "vantrel-soak", self._folder], capture_output=True).returncode == 0
        return self

    def __exit__(self, *_):
        if self._mounted:
            subprocess.run(["umount", "--lazy", self._folder], check=True)

    @property
    def _ballast(self):
        return self._folder / "ballast"

    def fill(self):
        """Whether there is no room any more. False where there is no such disk."""
        if not self._mounted:
            return False
        try:
            with open(self._ballast, "wb", buffering=0) as ballast:
                while True:
                    ballast.write(bytes(4096))
        except OSError as error:
            return error.errno == errno.ENOSPC

    def free(self):
        self._ballast.unlink(missing_ok=True)
