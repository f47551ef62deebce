"""Causes of what the client says of the browser, its start and its window."""
import re

from place import BUNDLES, NAMES, SELECTED, quiet


def chosen(place):
    if place.text.startswith(SELECTED):
        name = NAMES.get(place.text.removeprefix(SELECTED), "chrome")
        yield lambda scenario: scenario.mac.update({"browsers": [] if name == "safari" else [name]})
        yield lambda scenario: scenario.mac.update({"browsers": [] if name == "safari" else [name], "safari": False})
    if place.text == "[BROWSER] ❌ Nessun browser trovato":
        yield lambda scenario: scenario.mac.update({"browsers": [], "safari": False})


def starts(place):
    name = NAMES.get(place.browser(), "chrome")
    if place.text.startswith("[BROWSER] Chrome già in esecuzione"):
        application = {"name": place.browser(), "bundle-identifier": BUNDLES[place.browser()]}
        for moment in (1.5, 0.1, place.before - 0.02):
            yield lambda scenario, moment=moment: scenario.at(moment, launch=application)
        yield lambda scenario: scenario.mac.setdefault("applications", []).append(application)
    if place.text.startswith("[BROWSER] ❌ Errore lancio: "):
        text = place.text.removeprefix("[BROWSER] ❌ Errore lancio: ")
        yield lambda scenario: scenario.browser(name, cannot_start=text)
    if "PID (fallback)" in place.text or place.text.startswith("[MONITOR] Browser non trovato"):
        for behaviour in ({"starts_in": 2.2}, {"starts_in": 5.0}, {"starts_in": 12.0}, {"ends_in": 1.0}, {"forks": True, "starts_in": 3.0}):
            yield lambda scenario, behaviour=behaviour: scenario.browser(name, **behaviour)
    if "PID recuperato" in place.text or place.text.startswith("[BROWSER] PID aggiornato"):
        for seconds in (3.5, 5.0, 6.5, 8.0, 11.0):
            yield lambda scenario, seconds=seconds: scenario.browser(name, starts_in=seconds)
        yield lambda scenario: scenario.browser(name, forks=True)
        for moment in place.moments():
            yield lambda scenario, moment=moment: scenario.at(
                moment, launch={"name": place.browser(), "bundle-identifier": BUNDLES[place.browser()]})
    if place.text == "[BROWSER] ⚠ Finestra non trovata entro timeout":
        yield lambda scenario: scenario.browser(name, opens_window_in=60)
    if place.text.startswith("[BROWSER] ❌ Errore: "):
        yield lambda scenario: scenario.at(place.before - 0.02, opening="fails")
    if place.text.startswith("[BROWSER] Safari PID") or place.instead.startswith("[BROWSER] Safari PID"):
        for seconds in (0.1, 1.5, 3.0, 6.0):
            yield lambda scenario, seconds=seconds: scenario.browser("safari", answers_in=seconds)


def ends_meanwhile(place):
    """A browser that ends by itself, in the launch as well as later."""
    if "non in esecuzione" in place.text or "SIGKILL diretto" in place.text or "Browser non trovato" in place.text:
        for moment in place.moments():
            yield lambda scenario, moment=moment: scenario.at(moment, exit=place.browser())
    if "SIGKILL diretto" in place.text:
        yield lambda scenario: scenario.browser(NAMES.get(place.browser(), "chrome"), quits_in=0, killed_in=0)


def fullscreen(place):
    name = NAMES.get(place.browser(), "chrome")
    if place.text == "[FULLSCREEN] Nessuna finestra AX — riprovo tra 2s":
        count = 0
        for entry in place.wanted[place.reached:]:
            count += entry == place.text
            if entry.startswith("[FULLSCREEN] ✅"):
                break
        for seconds in (0.6, 1.6, 2.6):
            late = 2.5 * count + seconds
            yield lambda scenario, late=late: scenario.browser(name, opens_window_in=round(late, 2))
        for moment in place.earlier():
            yield lambda scenario, moment=moment: scenario.at(
                moment, fail_elements={"read": "AXWindows", "error": -25204, "times": 1})
    match = re.fullmatch(r"\[FULLSCREEN\] AX fallito \(code: (-?\d+)\) — riprovo tra 2s", place.text)
    if match:
        for moment in place.earlier():
            yield lambda scenario, moment=moment: scenario.at(
                moment, fail_elements={"write": "AXFullScreen", "error": int(match[1]), "times": 1})
    if place.text == "[FULLSCREEN] ✅ Già in fullscreen":
        for moment in (place.before - 0.9, *place.earlier()):
            yield lambda scenario, moment=moment: scenario.at(moment, toggle_full_screen=place.browser())


def kills(place):
    name = NAMES.get(place.browser(), "chrome")
    if "forceTerminate fallito" in place.text:
        yield lambda scenario: scenario.browser(name, refuses_force_quit=True)
    if place.text.startswith("[SESSION]") and "Kill browser: processo" in place.instead:
        yield lambda scenario: scenario.browser(name, killed_in=4, quits_in=4)
    if "confermato terminato" in place.text or place.instead == f"[BROWSER] Kill {place.browser()}":
        yield quiet(lambda scenario: scenario.browser(name, killed_in=0, quits_in=0))
    if place.text == f"[BROWSER] Kill {place.browser()}" or place.text == "[SESSION] Browser terminato":
        yield lambda scenario: scenario.browser(name, quits_in=3)
        yield lambda scenario: scenario.browser(name, killed_in=2)
