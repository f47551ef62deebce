"""What a screen reader gets of the client: the tree of what is on the screen, the focus, what it is told to speak.

Import it once the environment names the desktop and its session bus: the library keeps the first bus that it finds.
"""

import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


class ScreenReader:
    """Its methods turn the loop that the events arrive in."""

    EVENTS = ("object:state-changed:focused", "object:state-changed:showing")

    def __init__(self, program):
        self._program = program
        # (role, name) of what got the focus, and the texts to be spoken, oldest first.
        self.focused, self.spoken = [], []
        self._source = None
        self._listener = Atspi.EventListener.new(self._hear)
        for event in self.EVENTS:
            self._listener.register(event)

    def _hear(self, event):
        try:
            if not event.detail1 or event.source.get_application().get_name() != self._program:
                return
            role, name = event.source.get_role_name(), event.source.get_name()
        except GLib.Error:
            return  # It is gone already.
        if event.type.endswith("focused"):
            self._source = event.source
            self.focused.append((role, name))
        elif role == "notification":
            self.spoken.append(name)

    @staticmethod
    def turn(seconds):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            while GLib.MainContext.default().iteration(False):
                pass
            time.sleep(0.01)

    def until(self, condition, seconds=10):
        """The condition's first true answer within the time, or its last answer."""
        end = time.monotonic() + seconds
        while True:
            self.turn(0.05)
            answer = condition()
            if answer or time.monotonic() > end:
                return answer

    def shown(self):
        """(role, name, whether it can be used) of everything of the client's that is on the screen, in reading order."""
        found = []
        desktop = Atspi.get_desktop(0)
        for place in range(desktop.get_child_count()):
            try:
                application = desktop.get_child_at_index(place)
                if application is not None and application.get_name() == self._program:
                    self._collect(application, found)
            except GLib.Error:
                continue
        return found

    def _collect(self, element, found):
        for place in range(element.get_child_count()):
            child = element.get_child_at_index(place)
            if child is None:
                continue
            child.clear_cache()
            states = child.get_state_set()
            if not states.contains(Atspi.StateType.SHOWING):
                continue
            found.append((child.get_role_name(), child.get_name(), states.contains(Atspi.StateType.SENSITIVE)))
            self._collect(child, found)

    def named(self):
        """(role, name) of what is on the screen and has a name."""
        return [(role, name) for role, name, _ in self.shown() if name]

    def beside_the_focus(self):
        """The named elements where the focus is: a menu that was popped up hangs from nothing else."""
        found = []
        self._collect(self._source.get_parent(), found)
        return [entry for entry in found if entry[1]]

    def focus(self):
        """(role, name) of what has the focus."""
        return self.focused[-1] if self.focused else None
