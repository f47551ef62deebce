"""A class that is going on, for tests of the pages: sessions, participants, violations. And the ways in which a page is looked
at."""
from practice_server import Server

# Seconds of silence until a participant is lost, instead of the usual 40.
LOST_AFTER = 5
SESSIONS = ("--session", "PROVA=Sicurezza sul lavoro, modulo 1", "--session", "ATTESA-2=Antincendio", "--status",
            "ATTESA-2=WAITING", "--session", "IERI=Primo soccorso", "--status", "IERI=ENDED")
NAMES = ("Anna Però", "Luca D'Amico", "Sara Conti", "Maria Antonietta della Rovere-Castelbarco")
VIOLATIONS = (("KEY_BLOCKED", "Cmd+Tab"), ("KEY_BLOCKED", "Cmd+Q"), ("FOCUS_VIOLATION", "Anteprima"))
LOOKS = [(width, height, scheme) for width, height in ((1280, 800), (390, 844)) for scheme in ("light", "dark")]


def start(program, port=0):
    return Server(program, *SESSIONS, "--lost-after", str(LOST_AFTER), port=port)


def fill(server):
    """Somebody who will be lost, somebody who has left, and those who are there, one of them with more violations than the
    list has room for."""
    silent = server.join("Paolo Greco", "paolo.greco@example.org")
    server.beat(silent, ("FOCUS_VIOLATION", "Anteprima"))
    gone = server.join("Lucia Ferrari", "lucia.ferrari@example.org")
    server.leave(gone)
    tokens = [server.join(name, f"partecipante.{number}@example.org") for number, name in enumerate(NAMES)]
    for token in tokens[:-1]:
        server.beat(token, *VIOLATIONS * 4, meetConnected=token != tokens[0])
    return tokens


def look(browser, width, height, scheme):
    """Gives the page its size and its colours. Nothing moves."""
    browser.resize(width, height)
    browser.call("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme},
                                                         {"name": "prefers-reduced-motion", "value": "reduce"}])
    # A page answers a change of sizes as it is painted: what it does then is part of the next picture.
    browser.value("new Promise(painted=>requestAnimationFrame(()=>requestAnimationFrame(()=>painted(0))))")
