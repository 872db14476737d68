"""A headless browser with a page of its own, driven over the DevTools protocol, and a plain server of static files."""

import base64
import functools
import http.server
import json
import subprocess
import tempfile
import threading
import time
from pathlib import Path

import websocket

PATIENCE = 180.0  # seconds to wait for what comes within a few on most machines; only a failure costs them

# Without a graphics card: WebGL in software. The sandbox needs rights that not every machine gives.
OPTIONS = ["--headless=new", "--no-sandbox", "--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--no-first-run",
           "--disable-background-networking", "--disable-extensions", "--remote-debugging-port=0",
           "--remote-allow-origins=*", "--hide-scrollbars"]

KEYS = {"Enter": 13, "Escape": 27, "F1": 112, "ArrowLeft": 37, "ArrowUp": 38, "ArrowRight": 39, "ArrowDown": 40}


def serve(folder):
    """Serves it on a free port of this machine in a thread; the server and its address."""
    class Quiet(http.server.SimpleHTTPRequestHandler):
        def log_message(self, *_):
            pass

    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), functools.partial(Quiet, directory=folder))
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server, f"http://127.0.0.1:{server.server_port}/"


class Chromium:
    """Use as a context. `messages` are the lines of the page's console, `errors` those that tell of a fault."""

    def __init__(self, width=1280, height=720, options=()):
        self.size = (width, height)
        self.options = [*OPTIONS, *options]
        self.messages, self.errors, self.replies = [], [], {}
        self.next_id = 0

    def __enter__(self):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        width, height = self.size
        self.process = subprocess.Popen(
            ["chromium", *self.options, f"--window-size={width},{height}", f"--user-data-dir={self.profile.name}",
             "about:blank"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            self._connect()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.process.terminate()
        try:
            self.process.wait(20)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        self.profile.cleanup()

    def _connect(self):
        file = Path(self.profile.name) / "DevToolsActivePort"
        port, path = self.wait(lambda: file.exists() and file.read_text().split(), "the browser")
        self.socket = websocket.create_connection(f"ws://127.0.0.1:{port}{path}", timeout=PATIENCE)
        self.session = None
        targets = self.call("Target.getTargets")["targetInfos"]
        page = next(target for target in targets if target["type"] == "page")
        self.session = self.call("Target.attachToTarget", targetId=page["targetId"], flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log"):
            self.call(f"{domain}.enable")
        width, height = self.size
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, screenWidth=width,
                  screenHeight=height, deviceScaleFactor=1, mobile=False)

    def call(self, method, **parameters):
        self.next_id += 1
        message = {"id": self.next_id, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        self.socket.send(json.dumps(message))
        while True:
            reply = json.loads(self.socket.recv())
            if reply.get("id") == self.next_id:
                if "error" in reply:
                    raise RuntimeError(f"{method}: {reply['error']['message']}")
                return reply["result"]
            self._hear(reply)

    def _hear(self, event):
        parameters = event.get("params", {})
        if event.get("method") == "Runtime.consoleAPICalled":
            text = " ".join(str(part.get("value", part.get("description", ""))) for part in parameters["args"])
            self.messages.append(text)
            if parameters["type"] in ("error", "assert"):
                self.errors.append(text)
        elif event.get("method") == "Runtime.exceptionThrown":
            self.errors.append(json.dumps(parameters["exceptionDetails"]))
        elif event.get("method") == "Log.entryAdded" and parameters["entry"]["level"] == "error":
            self.errors.append(parameters["entry"]["text"])

    def run(self, script):
        """The value of an expression in the page; a promise is waited for."""
        result = self.call("Runtime.evaluate", expression=script, awaitPromise=True, returnByValue=True)
        if "exceptionDetails" in result:
            raise RuntimeError(f"{script}: {result['exceptionDetails']}")
        return result["result"].get("value")

    def before_page(self, script):
        self.call("Page.addScriptToEvaluateOnNewDocument", source=script)

    def go(self, address):
        self.call("Page.navigate", url=address)

    def wait(self, condition, what, patience=PATIENCE):
        deadline = time.monotonic() + patience
        while time.monotonic() < deadline:
            value = condition()
            if value:
                return value
            time.sleep(0.05)
        raise TimeoutError(f"waited {patience} s in vain for {what}; the page said: {self.messages[-20:]}")

    def wait_for(self, script, what=None):
        """Until the expression is true; one that cannot be reckoned yet is not."""
        return self.wait(lambda: self.run(f"(() => {{ try {{ return {script}; }} catch (_) {{ return null; }} }})()"),
                         what or script)

    def key(self, name, down):
        code = KEYS.get(name, ord(name[0].upper()))
        text = {"Enter": "\r"}.get(name, name if len(name) == 1 else "")
        parameters = {"type": "keyDown" if down else "keyUp", "key": name, "windowsVirtualKeyCode": code,
                      "code": name if len(name) > 1 else f"Key{name.upper()}"}
        if down and text:
            parameters["text"] = text
        self.call("Input.dispatchKeyEvent", **parameters)

    def press(self, name, frames=6):
        """Holds a key for that many frames of the game."""
        self.key(name, True)
        self.frames(frames)
        self.key(name, False)
        self.frames(2)

    def click(self, x, y):
        for kind in ("mouseMoved", "mousePressed", "mouseReleased"):
            button = {} if kind == "mouseMoved" else {"button": "left", "clickCount": 1}
            self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, **button)
            self.frames(2)

    def frames(self, count):
        """Waits for frames that the browser draws."""
        self.run(f"new Promise((done) => {{ let left = {count};"
                 " const step = () => { left-- > 0 ? requestAnimationFrame(step) : done(true); }; step(); })")

    def shoot(self, path):
        picture = base64.b64decode(self.call("Page.captureScreenshot", format="png")["data"])
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(picture)
        return path
