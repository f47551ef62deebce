"""reported_violation_test.py SERVER CLIENT PICTURE: a violation that the client reports over real HTTP is on the
trainer's page."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "practice"))
import headless_chromium


def main(server_program, client_program, picture):
    if headless_chromium.find() is None:
        print("SKIPPED: there is no Chromium on this machine")
        return 77
    server = subprocess.Popen([server_program, "--port", "0", "--exit-with-stdin", "--session", "PROVA=Antincendio"],
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    address = server.stdout.readline().rsplit(" ", 1)[1].strip()
    client = None
    try:
        with tempfile.TemporaryDirectory() as home:
            settings = pathlib.Path(home) / "vantrel/defaults.json"
            settings.parent.mkdir()
            settings.write_text(json.dumps({"vt_serverURL": address}))
            client = subprocess.Popen([client_program, "prova"], env={**os.environ, "XDG_CONFIG_HOME": home})
            with headless_chromium.HeadlessChromium(1280, 800) as page:
                page.open(address + "/")
                page.wait_for("document.querySelectorAll('section[data-code=PROVA] li').length===2")
                texts = page.value("[...document.querySelectorAll('section[data-code=PROVA] li')].map(n=>n.innerText)")
                page.picture(pathlib.Path(picture))
            assert "Anteprima <b>" in texts[0] and "Ada Neri" in texts[0], texts
            assert "Cmd+Tab" in texts[1], texts
    finally:
        if client is not None:
            client.terminate()
            client.wait()
        server.stdin.close()
        server.wait()
    return 0


sys.exit(main(*sys.argv[1:]))
