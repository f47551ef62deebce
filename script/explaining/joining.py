"""Causes of what the client says of updates, joins, permissions and heartbeats."""
import json
import re

from place import quiet

PROBE, JOIN, VERSION = "GET /api/sessions/*", "POST /api/sessions/*", "GET /api/version/latest*"
FORM = {"code": "PROVA", "name": "Maria Bianchi", "email": "maria@example.com"}
# When the reply of the version check comes by itself.
CHECKED = 1.05
PERMISSIONS = {"0": "undecided", "1": "restricted", "2": "refused", "3": "granted"}


def update_rule(place):
    text = place.text
    if match := re.fullmatch(r"\[UPDATE\] Check fallito: (.*)", text, re.DOTALL):
        return {"to": VERSION, "error": match[1] or " "}
    if text == "[UPDATE] Check: risposta non valida":
        return {"to": VERSION, "status": 500, "body": ""}
    if text == "[UPDATE] Check: JSON non parsabile":
        return {"to": VERSION, "status": 200, "body": "x"}
    match = re.fullmatch(r"\[UPDATE\] Disponibile v(.*) \(severity=(.*)\)", text, re.DOTALL)
    if match:
        body = {"updateAvailable": True, "latestVersion": match[1], "severity": match[2]}
        return {"to": VERSION, "status": 200, "body": json.dumps(body, ensure_ascii=False)}
    return None


def updates(place):
    rule = update_rule(place)
    if rule is None:
        return

    def replied(scenario, delay):
        known = [known.get("delay", 0) for known in scenario.replies if known["to"] == VERSION]
        scenario.replies = [known for known in scenario.replies if known["to"] != VERSION]
        delay = delay or (known[0] if known else 0)
        scenario.replies.append({**rule, **({"delay": delay} if delay else {})})

    arrivals = [place.before + late - CHECKED for late in (0.01, 0.03, 0.3, 1)]
    delays = [0, *(round(delay, 3) for delay in arrivals if 0 < delay < 7)]
    for button in ("Più tardi", "Apri pagina download", ""):
        for delay in delays:
            def answered(scenario, button=button, delay=delay):
                replied(scenario, delay)
                if button:
                    scenario.at(place.before + 1.5, answer=button)
            yield answered


def late_update(place):
    """The version's reply comes after what the log has here."""
    if place.instead.startswith("[UPDATE]"):
        def later(scenario, seconds):
            rule = next((rule for rule in scenario.replies if rule["to"] == VERSION), None)
            if rule is None:
                rule = {"to": VERSION}
                scenario.replies.append(rule)
            rule["delay"] = seconds
        for seconds in (0.9, 1.9, 3.2, 4.4, 6.2, 7.9):
            yield lambda scenario, seconds=seconds: later(scenario, seconds)


def probe_rule(place):
    text = place.text
    if text.startswith("[SESSION] GET error: "):
        return {"to": PROBE, "times": 1, "error": text.removeprefix("[SESSION] GET error: ") or " "}
    if text == "[SESSION] GET: risposta non HTTP":
        return {"to": PROBE, "times": 1, "not-http": True}
    status = int(text.removeprefix("[SESSION] GET status HTTP: "))
    body = None
    if place.reached + 1 < len(place.wanted):
        following = place.wanted[place.reached + 1]
        if following.startswith("[SESSION] GET body: "):
            body = following.removeprefix("[SESSION] GET body: ")
    if body == "(non leggibile)":
        return {"to": PROBE, "times": 1, "status": status, "body-base64": "/w=="}
    return {"to": PROBE, "times": 1, "status": status, "body": body or ""}


def join_rule(place):
    rest = place.wanted[place.reached + 1:]
    for entry in rest:
        if entry.startswith(("[SESSION] GET status", "[SESSION] GET error", "[SESSION] GET: ")):
            break
        match = re.fullmatch(r"\[SESSION\] Join OK — (.*), MeetLink: (.*)", entry, re.DOTALL)
        if match:
            body = {"meetLink": match[2], "userToken": "practice-1", "sessionTitle": match[1]}
            return {"to": JOIN, "times": 1, "status": 200, "body": json.dumps(body, ensure_ascii=False)}
    return {"to": JOIN, "times": 1, "status": 500}


def joins(place):
    if not place.text.startswith(("[SESSION] GET error", "[SESSION] GET: ", "[SESSION] GET status HTTP: ")):
        return
    probe, join = probe_rule(place), join_rule(place)
    pressed = [step["at"] for step in place.scenario.steps if "press" in step]

    def press(moment, delay, fills, again):
        def change(scenario):
            if again:
                scenario.at(moment, press="Nuova sessione")
            if fills:
                scenario.at(moment + 0.005, type=FORM)
            scenario.at(moment + 0.01, reply=join)
            scenario.at(moment + 0.01, reply={**probe, **({"delay": round(delay, 3)} if delay else {})})
            scenario.at(moment + 0.015, press="Avvia sessione protetta")
        return change

    if not pressed:
        for moment in (2.0, 0.6, *place.moments()):
            yield press(moment, 0, True, False)
        return
    for moment in place.moments():
        yield press(moment, 0, False, False)
        yield press(moment, 0, True, True)
    # A second press while the first activation is under way, answered only here.
    for after in (0.4, 1.6, 2.6):
        moment = max(pressed) + after
        for late in (0.01, 0.3, 1.0):
            if 0 < place.before + late - moment < 7:
                yield press(moment, place.before + late - moment, False, False)


def refusals(place):
    """The Accessibility permission is missing, and the client says no more of the join."""
    if place.instead.startswith("🔒 ======"):
        def refused(scenario):
            scenario.at(place.before - 0.06, accessibility="refused")
            scenario.at(place.before + 0.3, answer="Annulla")
            scenario.at(place.before + 0.31, accessibility="granted")
        yield quiet(refused)


def permissions(place):
    for medium, name in (("microphone", "Microfono"), ("camera", "Camera")):
        if place.instead.startswith(f"[TCC] {name}: stato") and scenario_has(place, medium, "granted"):
            yield quiet(lambda scenario, medium=medium: scenario.mac.update({medium: "undecided"}))
        if place.instead.startswith(f"[TCC] {name}: stato"):
            yield quiet(lambda scenario, medium=medium: scenario.at(place.before - 0.06, **{medium: "undecided"}))
    match = re.fullmatch(r"\[TCC\] (Microfono|Camera): (.*)", place.text, re.DOTALL)
    if not match:
        return
    medium = "microphone" if match[1] == "Microfono" else "camera"
    decided = re.fullmatch(r"stato già definito \((\d)\)", match[2])
    if decided:
        value = PERMISSIONS.get(decided[1], "granted")
        yield lambda scenario: scenario.mac.update({medium: value})
        yield lambda scenario: scenario.at(place.before - 0.06, **{medium: value})
        return
    for moment in place.moments():
        yield lambda scenario, moment=moment: scenario.at(moment, permission="allow" if "✅" in match[2] else "refuse")


def scenario_has(place, word, value):
    return place.scenario.mac.get(word, "granted") == value


def heartbeats(place):
    match = re.fullmatch(r"\[HEARTBEAT\] Errore \(\d+/20\): (.*)", place.text, re.DOTALL)
    rule = None
    if match:
        rule = {"to": "POST /api/heartbeat", "times": 1, "error": match[1] or " "}
    elif place.text == "[HEARTBEAT] Sessione terminata dal backend":
        rule = {"to": "POST /api/heartbeat", "times": 1, "status": 200, "body": '{"sessionEnded":true}'}
    if rule is None:
        return
    # A little before the last entry, too: the first heartbeat goes out with it.
    later = [place.before + offset for offset in (15.5, 30.5, 45.5, 90.5)]
    for moment in [place.before - 0.01, *place.moments(), *later]:
        for delay in (0, 0.5, 3, 8):
            extra = {"delay": delay} if delay and "error" not in rule else {}
            yield lambda scenario, moment=moment, extra=extra: scenario.at(moment, reply={**rule, **extra})
            if "error" in rule:
                break
