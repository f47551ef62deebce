"""Causes of what the client says in a lockdown: keys, windows, Spaces, displays, ends."""
import re

from place import needing

BLOCKED = "[HOOK] 🚫 Bloccato: "
FOCUS = re.compile(r"\[MONITOR\] Focus su (.*) — riporto .* in primo piano", re.DOTALL)
COVERED = re.compile(r"\[BLACKOUT\] Coperto monitor (.*) \((-?[\d.]+), (-?[\d.]+), (-?[\d.]+), (-?[\d.]+)\)", re.DOTALL)


def key_of(name):
    words = {"Cmd": "cmd", "Ctrl": "ctrl", "Shift": "shift", "Arrow": "left", "Up": "up", "Down": "down", "Tab": "tab",
             "Space": "space"}
    return "+".join(words.get(word, word.lower()) for word in name.split("+"))


def keys(place):
    if place.text.startswith(BLOCKED):
        for moment in place.moments():
            yield lambda scenario, moment=moment: scenario.at(moment, key=key_of(place.text.removeprefix(BLOCKED)))
    if place.text.startswith("[HOOK] ⚠ Permessi") or "Impossibile creare" in place.text:
        for moment in (place.before - 0.01, place.before - 1):
            yield lambda scenario, moment=moment: scenario.at(moment, accessibility="refused")
            yield lambda scenario, moment=moment: scenario.at(moment, taps="refused")


def focus(place):
    match = FOCUS.fullmatch(place.text)
    if match:
        name = match[1]
        application = {"name": name or "none", "bundle-identifier": "com.example.other"}
        for moment in place.earlier():
            yield lambda scenario, moment=moment: scenario.at(moment, application=application)

            def beside(scenario, moment=moment):
                scenario.at(moment, application={**application, "window": [100, 100, 600, 400]})
                scenario.at(moment + 0.01, swipe="right")
            yield beside
    if place.text.endswith("frontmost ma finestra sbagliata — ripristino lockdown"):
        for moment in place.earlier():
            yield lambda scenario, moment=moment: scenario.at(moment, open_window={
                "of": place.browser(), "title": "Altra", "frame": [100, 100, 800, 600]})
            yield lambda scenario, moment=moment: scenario.at(moment, toggle_full_screen=place.browser())
    if place.instead.startswith("[MONITOR] Focus su") or "finestra sbagliata" in place.instead:
        for moment in place.earlier():
            yield lambda scenario, moment=moment: scenario.at(moment, application=place.browser())


def geometry(place):
    match = re.fullmatch(r"\[MONITOR\] Finestra spostata pos:\((-?\d+),(-?\d+)\) — ripristino", place.text)
    if match:
        for moment in place.earlier():
            yield lambda scenario, moment=moment: scenario.at(
                moment, move_window={"of": place.browser(), "to": [int(match[1]), int(match[2])]})
    match = re.fullmatch(r"\[MONITOR\] Finestra ridimensionata \((\d+)%×(\d+)%\) — ripristino", place.text)
    if match:
        width, height = place.scenario.mac["displays"][0]["frame"][2:]
        size = [(int(match[1]) + 0.5) * width / 100, (int(match[2]) + 0.5) * height / 100]
        for moment in place.earlier():
            yield lambda scenario, moment=moment: scenario.at(moment,
                                                              resize_window={"of": place.browser(), "to": size})


def visibility(place):
    if place.text.startswith("[MONITOR] Finestra non visibile (1/"):
        closed = place.ahead("[MONITOR] Finestra chiusa", until=["[MONITOR] Finestra su altro", "[HOOK]"])
        words = ("close_window", "minimise_window") if closed else ("minimise_window", "close_window")
        for word in words:
            for moment in place.earlier():
                yield lambda scenario, moment=moment, word=word: scenario.at(moment, **{word: place.browser()})
    if place.text.startswith("[MONITOR] Finestra chiusa"):
        for moment in place.earlier():
            yield lambda scenario, moment=moment: scenario.at(moment, close_window=place.browser())
    if place.instead.startswith("[MONITOR] Finestra"):
        for moment in place.earlier():
            yield lambda scenario, moment=moment: scenario.at(moment, restore_window=place.browser())


def spaces(place):
    if "Utente cambiato a Space diverso" in place.text:
        for direction in ("left", "right"):
            for moment in place.moments():
                yield lambda scenario, moment=moment, direction=direction: scenario.at(moment, swipe=direction)
        note = {"name": "Note", "bundle-identifier": "com.example.notes", "window": [100, 100, 600, 400]}
        for moment in place.moments():
            yield lambda scenario, moment=moment: scenario.at(moment, application=note)

            def in_full_screen(scenario, moment=moment):
                scenario.at(moment, application=note)
                scenario.at(moment + 0.01, toggle_full_screen="Note")
            yield in_full_screen
    if place.text == "[MONITOR] Space cambiato ma Meet è sullo Space corrente — OK":
        yield from same_space(place)


def same_space(place):
    pressed = [step["at"] for step in place.scenario.steps if step.get("press") == "Avvia sessione protetta"]
    # Another application comes to the front on the desktop; the flags of the windows are late.
    following = place.wanted[place.reached + 1] if place.reached + 1 < len(place.wanted) else ""
    named = FOCUS.fullmatch(following)
    for moment in place.moments():
        yield lambda scenario, moment=moment: scenario.at(moment, application={
            "name": named[1] if named and named[1] else "Note", "bundle-identifier": "com.example.other",
            "window": [100, 100, 600, 400]})
    # The full screen that was asked for in the launch comes only now.
    for moment in place.moments():
        def late(scenario, moment=moment):
            scenario.at(max(pressed, default=2) + 0.2, fail_elements={"write": "AXFullScreen", "error": 0, "times": 1})
            scenario.at(moment, toggle_full_screen=place.browser())
        yield late
    for moment in place.moments():
        def there_and_back(scenario, moment=moment):
            scenario.at(moment, swipe="left")
            scenario.at(moment + 0.05, swipe="right")
        yield there_and_back


def covered_from(place):
    """The displays that the next covers are for."""
    found = []
    for entry in place.wanted[place.reached:]:
        match = COVERED.fullmatch(entry)
        if match:
            found.append({"name": match[1], "frame": [float(number) for number in match.groups()[1:]]})
        elif found or "Nessun monitor secondario" in entry or "Attivato" in entry:
            return found
    return found


def displays(place):
    excluded = re.fullmatch(r"\[BLACKOUT\] Attivato — escluso: (.*), coperti: \d+", place.text, re.DOTALL)
    if excluded:
        yield lambda scenario: scenario.mac["displays"][0].update({"name": excluded[1]})
    if COVERED.fullmatch(place.text) and not "Cambio configurazione" in place.wanted[place.reached - 1]:
        yield lambda scenario: scenario.mac.update(
            {"displays": scenario.mac["displays"][:1] + covered_from(place)})
    if "shared spaces" in place.text:
        yield lambda scenario: scenario.mac.update({"separate-spaces": False})
    if place.text.startswith("[BLACKOUT] Cambio configurazione"):
        yield from display_changes(place)


def display_changes(place):
    now = covered_from(place)
    block = 1 + max(len(now), 1)
    known = [display["name"] for display in place.scenario.mac["displays"]]
    known += [step["plug"]["name"] for step in place.scenario.steps if "plug" in step]
    actions = [{"display_notices": {"count": 1, "every": 0.05}}]
    actions += [{word: display} for display in now for word in ("arrange", "plug")]
    actions += [{word: name} for name in reversed(known) for word in ("mirror", "unplug", "unmirror")]
    for moment in place.moments():
        for action in actions:
            yield needing(block, lambda scenario, moment=moment, action=action: scenario.at(moment, **action))


def ends(place):
    if place.text != "[SESSION] Fine sessione: Sessione terminata dall'utente":
        return
    for moment in place.moments():
        def by_the_menu(scenario, moment=moment):
            scenario.at(moment, do="open the status menu")
            scenario.at(moment + 0.01, choose="Termina sessione")
            scenario.at(moment + 0.02, answer="Termina")
        yield by_the_menu
