"""Gives a server's reply to the client on the virtual Mac and reads from the transcript what the client makes of it."""
import base64
import json
import re
import subprocess
import tempfile
from pathlib import Path

TARGETS = {
    "version": "GET /api/version/latest*",
    "probe": "GET /api/sessions/PROVA",
    "join": "POST /api/sessions/PROVA/join",
    "heartbeat": "POST /api/heartbeat",
    "notice": "POST /api/heartbeat",
}
REQUESTS = {kind: re.compile(r"(GET|POST) \S*" + pattern) for kind, pattern in {
    "version": r"/api/version/latest\?\S*", "probe": "/api/sessions/PROVA", "join": "/api/sessions/PROVA/join",
    "heartbeat": "/api/heartbeat", "notice": "/api/heartbeat"}.items()}
ENTRY = re.compile(r" {0,10}\d+\.\d{3}  (\S+(?: \S+)*)\s*  (.*)")


class NotPlayed(Exception):
    pass


def rule(kind, answer):
    """The reply rule that answers the client's request with what came from the server."""
    result = {"to": TARGETS[kind]}
    if kind == "heartbeat":
        result["times"] = 1
    if answer.timed_out:
        return {**result, "never-comes": True}
    if answer.error:
        return {**result, "error": answer.error}
    result.update({"status": answer.status, "body-base64": base64.b64encode(answer.body).decode()})
    if answer.seconds >= 1:
        result["delay"] = round(answer.seconds, 1)
    return result


def scenario(kind, answer):
    """A class in which the client meets that reply: it is joined at 3 s, and left at 60 s where the notice is asked for."""
    text = {"title": f"What the client makes of a server's reply: {kind}",
            "server": {"sessions": [{"code": "PROVA"}]}, "timeline": [], "until": 20}
    if kind != "notice":
        text["server"]["replies"] = [rule(kind, answer)]
    if kind == "version":
        return text
    text["until"] = 40
    text["timeline"] = [
        {"at": 2, "type": {"code": "PROVA", "name": "Maria Bianchi", "email": "maria@example.com"}},
        {"at": 3, "press": "Avvia sessione protetta"},
    ]
    if kind == "notice":
        text["until"] = 80
        text["timeline"] += [
            {"at": 59, "do": "open the status menu"}, {"at": 59.5, "choose": "Termina sessione"},
            {"at": 59.9, "reply": rule(kind, answer)}, {"at": 60, "answer": "Termina"},
        ]
    return text


def _entries(transcript):
    """(kind, text, further lines) of each line of the transcript."""
    found = []
    for line in transcript.splitlines():
        match = ENTRY.fullmatch(line)
        if match:
            found.append((match[1], match[2], []))
        elif found:
            found[-1][2].append(line.strip().removeprefix("| "))
    return found


def _shown(kind, entry):
    """What a person would care about in one entry. None for everything else."""
    what, text, more = entry
    if what == "log" and text.startswith(("[SESSION]", "[HEARTBEAT]", "[UPDATE]", "[BROWSER] URL Meet")):
        return None if text.startswith(("[SESSION] GET body", "[HEARTBEAT] Avviato", "[HEARTBEAT] Fermato")) else text
    if what == "text" and text.startswith("errorLabel: ") and text != 'errorLabel: ""':
        return "the join screen says " + text.removeprefix("errorLabel: ")
    if what == "alert":
        return "an alert: " + " / ".join([text.partition(": ")[2], *more])
    if what == "request" and kind == "probe" and REQUESTS["join"].fullmatch(text):
        return "the client sends the join"
    return None


def _begins(kind, entry):
    what, text, more = entry
    if what != "request" or not REQUESTS[kind].fullmatch(text):
        return False
    return kind != "notice" or '"disconnecting":true' in more[-1]


def _stops(kind, entry):
    """Where the next exchange begins to speak."""
    what, text, _ = entry
    if kind == "probe":
        return what == "request" and REQUESTS["join"].fullmatch(text)
    if kind == "join":
        return what == "log" and text.startswith("[BROWSER] Browser selezionato")
    return False


def made_of(program, kind, answer):
    """The lines that tell what the client makes of the reply, without repetitions."""
    with tempfile.TemporaryDirectory() as folder:
        file = Path(folder, "reply.yaml")
        # JSON is YAML.
        file.write_text(json.dumps(scenario(kind, answer), ensure_ascii=False, indent=1), encoding="utf-8")
        run = subprocess.run([program, file], capture_output=True, text=True, check=False)
    if run.returncode != 0:
        raise NotPlayed(f"the client could not be played: status {run.returncode}: {run.stderr.strip()}")
    shown, heard = [], False
    for entry in _entries(run.stdout):
        if heard:
            text = _shown(kind, entry)
            if text and text not in shown:
                shown.append(text)
            if _stops(kind, entry):
                break
        heard = heard or _begins(kind, entry)
    if not heard:
        raise NotPlayed("the client never sent this request")
    return shown
