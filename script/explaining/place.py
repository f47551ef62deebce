"""Where a log departs from what is played: what a cause is looked up by."""

BUNDLES = {"Google Chrome": "com.google.Chrome", "Microsoft Edge": "com.microsoft.edgemac",
           "Safari": "com.apple.Safari", "Firefox": "org.mozilla.firefox"}
NAMES = {"Google Chrome": "chrome", "Microsoft Edge": "edge", "Safari": "safari", "Firefox": "firefox"}
SELECTED = "[BROWSER] Browser selezionato: "
# How many entries further on are looked at.
NEAR = 12
# Seconds after the last entry that agrees at which a cause may lie.
OFFSETS = (0.01, 0.06, 0.2, 0.45, 0.7, 1.2, 1.8, 2.6, 4.0)


class Place:
    def __init__(self, wanted, reached, played, scenario):
        self.wanted, self.reached, self.scenario = wanted, reached, scenario
        self.text = wanted[reached] if reached < len(wanted) else ""
        # The last entry that agrees and the first that does not; None where nothing follows.
        self.before = played[reached - 1][0] if reached else 0.0
        self.after = played[reached][0] if reached < len(played) else None
        self.instead = played[reached][1] if reached < len(played) else ""
        self.following = [text for _, text in played[reached:reached + NEAR]]

    def moments(self):
        """Where a cause may lie, the nearest first."""
        last = self.scenario.steps[-1]["at"] if self.scenario.steps else 0
        found = [self.before + offset for offset in OFFSETS]
        if self.after is not None:
            found = [moment for moment in found if moment < self.after] or [(self.before + self.after) / 2]
        if last > self.before + 0.001:
            found.insert(0, last + 0.01)
        return found

    def ahead(self, beginning, until=()):
        """The next entry from here on that begins so, before one that begins like `until`. None if there is none."""
        for entry in self.wanted[self.reached:]:
            if entry.startswith(beginning):
                return entry
            if until and entry.startswith(tuple(until)):
                return None
        return None

    def browser(self):
        """The display name of the browser that the log has last chosen."""
        for entry in reversed(self.wanted[:self.reached + 1]):
            if entry.startswith(SELECTED):
                return entry.removeprefix(SELECTED)
        return "Google Chrome"

    def earlier(self):
        """Just before the last entry that agrees, and then where else a cause may lie."""
        return [max(self.before - 0.02, 0.0), *self.moments()]


def quiet(change):
    """A change that explains nothing by itself, but keeps the client from printing what it would have printed."""
    change.is_quiet = True
    return change


def needing(count, change):
    """A change that is worth nothing unless so many more entries agree."""
    change.needs = count
    return change
