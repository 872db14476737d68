"""A screen of its own in memory, with a window manager, and the game running on it."""

import os
import re
import signal
import subprocess
import threading
import time

from picture import Picture

WINDOW_TITLE = "Brinewhirl"

PATIENCE = 90.0  # seconds to wait for what comes within a few on most machines; only a failure costs them


def wait_until(condition, timeout, what):
    """Waits for the condition and returns its value, or raises TimeoutError that names it."""
    deadline = time.monotonic() + timeout
    while time.monotonic() < deadline:
        value = condition()
        if value:
            return value
        time.sleep(0.05)
    raise TimeoutError(f"waited {timeout} s in vain for {what}")


def stop(process):
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(10)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


class VirtualDisplay:
    """Use as a context: Xvfb on a free display number, with openbox unless told otherwise; both end with the context.

    Without a manager a window keeps the size it asks for and is never minimised.
    """

    def __init__(self, width, height, managed=True):
        self.screen = f"{width}x{height}x24"
        self.managed = managed
        self.processes = []

    def __enter__(self):
        try:
            self._start_server()
            if self.managed:
                self._start_manager()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            stop(process)

    def _start_server(self):
        reading, writing = os.pipe()
        server = ["Xvfb", "-displayfd", str(writing), "-screen", "0", self.screen, "-nolisten", "tcp"]
        self.processes.append(subprocess.Popen(server, pass_fds=[writing], stderr=subprocess.DEVNULL))
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()  # comes when the server is ready; empty when it died
        if not number:
            raise RuntimeError("Xvfb did not start")
        self.environment = {**os.environ, "DISPLAY": f":{number}", "LIBGL_ALWAYS_SOFTWARE": "1",
                            "SDL_AUDIODRIVER": "dummy", "SDL_VIDEODRIVER": "x11"}
        self.environment.pop("WAYLAND_DISPLAY", None)

    def _start_manager(self):
        """Starts it until it answers: about one start in forty hangs."""
        for _ in range(4):
            manager = self.start(["openbox"])
            try:
                return wait_until(lambda: "window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"), 4,
                                  "the window manager")
            except TimeoutError:
                stop(manager)
        raise RuntimeError("openbox did not start")

    def start(self, command, **options):
        options = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, **options}
        process = subprocess.Popen(command, env=self.environment, **options)
        self.processes.append(process)
        return process

    def run(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True, timeout=PATIENCE).stdout

    def find_window(self, title):
        """The ID of the window with this title, or None."""
        found = re.search(rf'(0x\w+) "{title}"', self.run("xwininfo", "-root", "-tree"))
        return found and found[1]

    def focus(self, window):
        if self.managed:
            self.run("xdotool", "windowactivate", window)
        self.run("xdotool", "windowfocus", window)

    def hold_key(self, key, seconds):
        self.run("xdotool", "keydown", key)
        time.sleep(seconds)
        self.run("xdotool", "keyup", key)

    def take_picture(self):
        # The server refuses a picture of the root window while a window on it comes or goes.
        for _ in range(10):
            dump = subprocess.run(["xwd", "-root", "-silent"], env=self.environment, capture_output=True, timeout=PATIENCE)
            if dump.returncode == 0:
                return Picture.from_xwd(dump.stdout)
            time.sleep(0.2)
        raise RuntimeError("no picture of the display: " + dump.stderr.decode(errors="replace"))


class Game:
    """The program on a virtual display, its lines of standard output gathered as they come. Ends with the display."""

    def __init__(self, display, program, *arguments):
        self.display = display
        self.lines = []
        self.process = display.start([str(program), *arguments], cwd="/", stdout=subprocess.PIPE, text=True, errors="replace")
        self.started = time.monotonic()
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()

    def _read(self):
        with self.process.stdout as lines:
            for line in lines:
                self.lines.append(line.rstrip("\n"))

    @property
    def output(self):
        return "\n".join(self.lines)

    def wait_for_window(self):
        window = wait_until(lambda: self._is_running() and self.display.find_window(WINDOW_TITLE), PATIENCE, "the window")
        self.started = time.monotonic()
        return window

    def _is_running(self):
        if self.process.poll() is not None:
            raise RuntimeError(f"the program ended with {self.process.returncode}:\n{self.output}")
        return True

    def wait_for_line(self, text, after=0, meanwhile=lambda: None):
        """Waits for a line with this text beyond the first `after` lines; calls `meanwhile` until it has come."""

        def has_come():
            meanwhile()
            return self._is_running() and any(text in line for line in self.lines[after:])

        wait_until(has_come, PATIENCE, f'the line "{text}"')

    def gain_focus(self, window, after=0):
        """Gives the window the keyboard and waits until the game says so beyond the first `after` lines."""
        # Asked for again and again: a window that is not shown yet cannot take it.
        self.wait_for_line("Focus GAINED", after, meanwhile=lambda: self.display.focus(window))

    def reach_title(self):
        """Waits for the window and holds Return until the title stands; lets go then and returns the window."""
        window = self.wait_for_window()
        self.gain_focus(window)
        self.display.run("xdotool", "keydown", "Return")
        self.wait_for_line("Title Created")
        self.display.run("xdotool", "keyup", "Return")
        time.sleep(0.3)
        return window

    def reach_match(self):
        """Goes through the start-up screens into a match, whose beginning counts as the start; returns the window."""
        window = self.reach_title()
        self.leave_title()
        return window

    def leave_title(self):
        self.display.hold_key("Return", 0.3)
        self.started = time.monotonic()

    def lose_focus(self):
        """Opens another window, gives it the keyboard and returns its process."""
        lines = len(self.lines)
        other = self.display.start(["xlogo", "-geometry", "60x60+0+0"])
        window = wait_until(lambda: self.display.find_window("xlogo"), PATIENCE, "the other window")
        self.wait_for_line("Focus Lost", lines, meanwhile=lambda: self.display.focus(window))
        return other

    def sleep_until(self, seconds):
        """Sleeps until this long after the window came or the match began."""
        time.sleep(max(0.0, self.started + seconds - time.monotonic()))

    def quit(self):
        """Asks the program to end by SIGTERM and returns its exit code."""
        self.process.send_signal(signal.SIGTERM)
        return self.wait_for_end()

    def wait_for_end(self):
        code = self.process.wait(PATIENCE)
        self._reader.join(5)
        return code
