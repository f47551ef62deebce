"""The accessibility bus of a desktop, which a screen reader listens on."""

import subprocess
import time

BUS = "/usr/libexec/at-spi-bus-launcher"


class Accessible:
    def __init__(self, desktop):
        self._desktop = desktop

    def __enter__(self):
        self._process = subprocess.Popen([BUS, "--launch-immediately", "--a11y=1"], env=self._desktop.environment,
                                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        time.sleep(1)

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait()
