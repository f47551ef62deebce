"""Looks for the scenario, one departure after the other."""
import logs
from causes import candidates
from place import Place
from scenarios import Scenario, Unplayable


# Changes on the way to one scenario, quiet ones included.
DEEPEST = 400


class Search:
    def __init__(self, player, wanted, plays):
        """`plays`: after how many scenarios that explain no more the search ends."""
        self._player, self._wanted, self._most = player, wanted, plays
        self.best, self.explained = Scenario(), -1
        self._last = 0

    def run(self):
        """Leaves the best scenario in `best` and how many entries it explains in `explained`."""
        start = Scenario()
        self._from(start, self._reach(start))

    def _reach(self, scenario):
        reached = logs.common(self._wanted, [text for _, text in self._player.play(scenario)])
        if reached > self.explained:
            self.best, self.explained, self._last = scenario, reached, self._player.plays
        return reached

    def _next(self, scenario, reached):
        """What the client prints there. None if nothing."""
        played = self._player.play(scenario)
        return played[reached][1] if reached < len(played) else None

    def _from(self, scenario, reached):
        """Each way of explaining the next entry is followed; the first that explains all of them ends the search."""
        pending = [(scenario, reached, None)]
        while pending and self.explained < len(self._wanted) and self._player.plays - self._last < self._most:
            scenario, reached, ways = pending[-1]
            instead = self._next(scenario, reached)
            if ways is None:
                ways = candidates(Place(self._wanted, reached, self._player.play(scenario), scenario))
                pending[-1] = (scenario, reached, ways)
            change = next(ways, None)
            if change is None:
                pending.pop()
                continue
            try:
                further = scenario.changed(change)
                reached_now = self._reach(further)
            except Unplayable:
                continue
            is_quiet = getattr(change, "is_quiet", False) and len(pending) < DEEPEST
            if reached_now >= reached + getattr(change, "needs", 1) or is_quiet and reached_now == reached and self._next(further, reached) != instead:
                pending.append((further, reached_now, None))
