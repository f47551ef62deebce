"""Under a window manager that keeps no full screen no class begins: the client says why and ends."""

from client import Client
from desktop import Desktop
from places import PROGRAM, ROOT, RUN

FOLDER = RUN / "refused"
WHY = ["Vantrel richiede un gestore di finestre che mantiene lo schermo intero: quello attivo lo toglie quando "
       "un'altra finestra riceve la tastiera.",
       "Vantrel needs a window manager that keeps full screen: the one that is running takes it away when another window "
       "gets the keyboard."]


def play(check):
    print("A client on a desktop where no class can be held", flush=True)
    home = FOLDER / "home"
    home.mkdir(parents=True)
    with Desktop(ROOT) as desktop:
        with Client(PROGRAM, desktop, home, RUN / "client-refused.log") as client:
            check("the client ends with status 1", client.ended() == 1)
        check("it has said why, in both languages", client.complaints == WHY)
        check("and nothing else", client.lines == [])
