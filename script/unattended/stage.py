"""The client's window on its desktop, with the client and its controls where a person finds them."""

import time

from client import until
from places import ROOT

# Centres of the controls, in points from the bottom left of the window's content.
SERVER_FIELD, CODE_FIELD, NAME_FIELD, EMAIL_FIELD = (220, 336), (220, 274), (220, 218), (220, 162)
JOIN_BUTTON, NEW_SESSION_BUTTON = (129, 96), (104, 246)

# Frames of the controls, also from the bottom left, and what they show.
ERROR_LABEL, JOIN_FRAME, TITLE_LABEL, NAME_FRAME, CODE_FRAME, END_TITLE = (
    (24, 122, 392, 18), (24, 80, 210, 32), (24, 408, 392, 34), (28, 210, 384, 16), (28, 266, 384, 16),
    (24, 380, 392, 30))

LOCKDOWN_COMPLETE = "✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅"
END_SCREEN = "[SESSION] Schermata fine visibile, join hidden: true, end hidden: false"


def red(r, g, b):
    return r > 150 and g < 90 and b < 90


def blue(r, g, b):
    return r < 90 and g < 160 and b > 200


def dark(r, g, b):
    return r < 80 and g < 80 and b < 80


class Stage:
    def __init__(self, desktop, client, folder, check):
        self.desktop, self.client, self._folder, self._check = desktop, client, folder, check

    def window(self, name="Vantrel", seconds=10):
        """The newest window with that name."""
        found = until(lambda: self.desktop.windows(name), seconds)
        if not found:
            raise RuntimeError(f"no window {name!r} came up; the client said: {self.client.complaints}")
        return found[0]

    def click(self, place):
        window = self.window()
        self.desktop.click(window.x + place[0], window.y + window.height - place[1])
        time.sleep(0.2)

    def fill(self, field, text):
        self.click(field)
        self.desktop.key("ctrl+a", "BackSpace")
        self.desktop.type(text)
        time.sleep(0.2)

    def picture(self, name, *looks):
        """Takes a picture and compares it with what it must show: (what, frame, colour, whether it is there).
        Returns its file."""
        time.sleep(self.desktop.settling)
        path = self._folder / f"{name}.png"
        self.desktop.picture(path)
        print(f"  picture {path.relative_to(ROOT)}", flush=True)
        for what, frame, colour, there in looks:
            window = self.window()
            x, y, width, height = frame
            area = (window.x + x, window.y + window.height - y - height, width, height)
            pixels = self.desktop.pixels(path, area, colour)
            self._check(f"{what} {'is' if there else 'is not'} on it", (pixels >= 20) == there)
        return path

    def open_status_menu(self):
        # Over a full-screen window the strip appears when the pointer is at the top edge.
        self.desktop.run("xdotool", "mousemove", 700, 0)
        strip = self.window("Vantrel status")
        self.desktop.click(strip.x + strip.width // 2, strip.y + strip.height // 2)
        time.sleep(0.5)

    def choose_the_end(self):
        """Chooses the end in the open status menu. The confirmation is then shown."""
        # The menu's only enabled entry is the last one.
        self.desktop.key("Up", "Return")
        self.window()

    def has_keyboard(self):
        """Whether the client's window gets the keys without a click on it."""
        return until(lambda: self.desktop.focused() == "Vantrel", 3)
