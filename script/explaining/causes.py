"""What may have caused an entry of the log: ways of changing the scenario, the likeliest first."""
import browsing
import joining
import lockdown
from place import NEAR

THEMES = (joining.updates, joining.late_update, joining.joins, joining.heartbeats, joining.permissions, joining.refusals, browsing.chosen,
          browsing.starts, browsing.ends_meanwhile, browsing.fullscreen, browsing.kills, lockdown.keys, lockdown.ends,
          lockdown.focus, lockdown.geometry, lockdown.visibility, lockdown.spaces, lockdown.displays)


# How many orders of the same events are tried.
ORDERS = 24


def candidates(place):
    for theme in THEMES:
        yield from theme(place)
    yield from orders(place)


def orders(place):
    """Another order of what is due at the same moment, as on two threads."""
    if place.text in place.following and place.instead in place.wanted[place.reached:place.reached + NEAR]:
        for seed in range(1, ORDERS + 1):
            yield lambda scenario, seed=seed: scenario.mac.update({"seed": seed})
