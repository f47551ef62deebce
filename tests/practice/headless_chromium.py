"""A Chromium without a window, controlled through a pair of pipes by its debugging protocol; a null byte ends each
message."""
import base64
import contextlib
import json
import os
import select
import shutil
import signal
import subprocess
import tempfile
import time

PATIENCE = 60  # Seconds; long enough that only a hang reaches it.


def find():
    return shutil.which("chromium")


class HeadlessChromium:
    """One browser with one page. Use it in a with statement, which ends it and removes its profile."""

    def __init__(self, width, height, *flags):
        self._folder = tempfile.TemporaryDirectory(prefix="chromium-", ignore_cleanup_errors=True)
        to_browser, self._output = os.pipe()
        self._input, from_browser = os.pipe()
        arguments = [
            find(), "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
            "--disable-background-networking", "--disable-component-update", "--disable-sync",
            f"--user-data-dir={self._folder.name}/profile", "--remote-debugging-pipe", *flags, "about:blank",
        ]
        # The browser reads descriptor 3 and writes 4. Two free ones are used in between, because ours may be 3 and 4
        # swapped.
        command = (f'exec {{in}}<&{to_browser} {{out}}>&{from_browser}; '
                   'exec "$@" 3<&$in 4>&$out {in}<&- {out}>&-')
        self._process = subprocess.Popen(
            ["bash", "-c", command, "bash", *arguments],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            pass_fds=(to_browser, from_browser), start_new_session=True,
            env={**os.environ, "HOME": self._folder.name})
        os.close(to_browser)
        os.close(from_browser)
        self._unread = b""
        self._last = 0
        # (method, parameters) of the browser's own messages.
        self.events = []
        self._page = None
        try:
            target = self._call("Target.createTarget", url="about:blank")["targetId"]
            self._page = self._call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
            self.call("Page.enable")
            self.resize(width, height)
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        os.close(self._output)
        try:
            self._process.wait(10)
        except subprocess.TimeoutExpired:
            os.killpg(self._process.pid, signal.SIGKILL)
            self._process.wait()
        os.close(self._input)
        self._folder.cleanup()

    def call(self, method, **parameters):
        """The page's answer."""
        return self._call(method, self._page, **parameters)

    def open(self, address):
        reply = self.call("Page.navigate", url=address)
        if "errorText" in reply:
            raise RuntimeError(f"{address}: {reply['errorText']}")

    def value(self, expression):
        """The value of a JavaScript expression; for a promise, its result."""
        reply = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in reply:
            raise RuntimeError(f"{expression}: {reply['exceptionDetails']}")
        return reply["result"].get("value")

    def wait_for(self, expression):
        """Waits until the expression is true."""
        end = time.monotonic() + PATIENCE
        while not self.value(expression):
            if time.monotonic() > end:
                text = self.value("document.body.innerText")
                raise TimeoutError(f"{expression} is not true; the page says:\n{text}")
            time.sleep(0.05)

    def click(self, selector):
        """Presses the mouse in the middle of the element. An element above it would get the press."""
        x, y = self.value(
            "(()=>{const box=document.querySelector(" + json.dumps(selector) + ").getBoundingClientRect();"
            "return [box.left+box.width/2,box.top+box.height/2];})()")
        for kind in ("mousePressed", "mouseReleased"):
            self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left", clickCount=1)

    def press(self, key, code, text="", modifiers=0):
        """Presses and releases a key. Modifiers: 1 Alt, 2 Control, 4 Command, 8 Shift."""
        down = {"type": "keyDown", "text": text} if text else {"type": "rawKeyDown"}
        self.call("Input.dispatchKeyEvent", key=key, code=code, modifiers=modifiers, **down)
        self.call("Input.dispatchKeyEvent", type="keyUp", key=key, code=code, modifiers=modifiers)

    def resize(self, width, height):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)

    @contextlib.contextmanager
    def another_page(self):
        """Shows an empty page in front of this one for the duration of the with statement."""
        target = self._call("Target.createTarget", url="about:blank")["targetId"]
        yield
        self._call("Target.closeTarget", targetId=target)

    def picture(self, path):
        path.write_bytes(base64.b64decode(self.call("Page.captureScreenshot", format="png")["data"]))

    def _call(self, method, session=None, **parameters):
        self._last += 1
        message = {"id": self._last, "method": method, "params": parameters}
        if session:
            message["sessionId"] = session
        data = json.dumps(message).encode() + b"\0"
        while data:
            data = data[os.write(self._output, data):]
        end = time.monotonic() + PATIENCE
        while True:
            reply = self._message(end)
            if reply.get("id") != self._last:
                if "method" in reply:
                    self.events.append((reply["method"], reply["params"]))
                continue
            if "error" in reply:
                raise RuntimeError(f"{method}: {reply['error']}")
            return reply["result"]

    def _message(self, end):
        while b"\0" not in self._unread:
            if not select.select([self._input], [], [], max(0, end - time.monotonic()))[0]:
                raise TimeoutError("Chromium does not answer")
            data = os.read(self._input, 1 << 16)
            if not data:
                raise RuntimeError("Chromium has ended")
            self._unread += data
        text, self._unread = self._unread.split(b"\0", 1)
        return json.loads(text)
