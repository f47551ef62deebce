"""Pages that play the meeting, served on 127.0.0.1."""
import http.server
import threading

HEAD = """<!doctype html><meta charset=utf-8><title>Lezione</title>
<body style="margin:0;background:#245;color:#fff;font:40px sans-serif">
<div id=place style="height:100vh;display:grid;place-items:center">Lezione</div>
<script>"""
VIDEO = """const canvas = document.createElement('canvas'); canvas.width = 640; canvas.height = 360;
const pen = canvas.getContext('2d'); setInterval(() => { pen.fillStyle = '#' + Math.random().toString(16).slice(2, 8);
pen.fillRect(0, 0, 640, 360); }, 200); const video = document.createElement('video'); video.muted = true;
video.srcObject = canvas.captureStream(); document.getElementById('place').append(video); video.play();"""


def page(what, before=""):
    """A page that does `what` when it is clicked, and `before` when it opens."""
    return f"{HEAD}{before}\ndocument.body.addEventListener('click', async () => {{ {what} }});</script>\n"


class Pages:
    """Serves one page at every path."""

    def __init__(self, text):
        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                body = text.encode()
                self.send_response(200)
                self.send_header("Content-Type", "text/html; charset=utf-8")
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.address = f"http://127.0.0.1:{self._server.server_port}/lezione"

    def __enter__(self):
        self._thread = threading.Thread(target=self._server.serve_forever, daemon=True)
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._server.shutdown()
        self._server.server_close()
        self._thread.join()
