"""A private X desktop for one desktop test: Xvfb and openbox on a free display, and Kelo run in
scratch folders, driven with xdotool and measured with xwininfo and xprop.

Every wait polls for a state and gives up after a fixed bound; nothing asserts on a measured
time. Only processes started here are stopped, each by its own id.
"""

import datetime
import json
import os
import re
import select
import shutil
import subprocess
import tempfile
import time
import unittest
import uuid

KELO = os.environ.get("KELO_BIN", "kelo")
HELPER = os.environ.get("KELO_X11_HELPER", "x11_helper")

SCREEN_WIDTH, SCREEN_HEIGHT = 1440, 900
# The fallback notch under a bare openbox: 185 wide, 24 high (no top panel).
NOTCH_WIDTH, NOTCH_HEIGHT = 185, 24
CLOSED = (NOTCH_WIDTH + 12, NOTCH_HEIGHT)
CLOSED_WITH_TASKS = (NOTCH_WIDTH + 100, NOTCH_HEIGHT)
PEEK = (NOTCH_WIDTH + 200, NOTCH_HEIGHT + 30)
# The open island with the shadow's 60 x 40; it is as tall as its content.
OPEN_WIDTH = NOTCH_WIDTH + 460 + 60
ALERT = (max(NOTCH_WIDTH + 260, 440), NOTCH_HEIGHT + 54)

# Bounds for waiting on something that is expected to happen.
SOON = 10.0
# Long enough for the island's 0.5 s shrink and its 0.1 s peek delay, with room for a slow run.
SETTLE = 1.5


def read_line(stream, bound):
    """One line from a process's pipe, or None when none came within the bound."""
    deadline = time.monotonic() + bound
    data = b""
    while not data.endswith(b"\n"):
        remaining = deadline - time.monotonic()
        if remaining <= 0 or not select.select([stream], [], [], remaining)[0]:
            return None
        chunk = os.read(stream.fileno(), 1)
        if not chunk:
            return data.decode() or None
        data += chunk
    return data.decode().rstrip("\n")


def wait_until(probe, bound=SOON, step=0.05):
    """Polls probe() until it returns something true; returns that, or the last value."""
    deadline = time.monotonic() + bound
    while True:
        value = probe()
        if value or time.monotonic() >= deadline:
            return value
        time.sleep(step)


def task(title, day=None, minute=None):
    record = {
        "created": "2025-01-01T09:00:00Z",
        "id": str(uuid.uuid4()).upper(),
        "title": title,
    }
    if day is not None:
        record["day"] = day
    if minute is not None:
        record["minute"] = minute
    return record


def today_utc():
    return datetime.datetime.now(datetime.timezone.utc).strftime("%Y-%m-%d")


def minute_now_utc():
    now = datetime.datetime.now(datetime.timezone.utc)
    return now.hour * 60 + now.minute


class Kelo:
    """One running kelo process."""

    def __init__(self, desktop, data_file, env):
        self.desktop = desktop
        self.data_file = data_file
        self.log_path = os.path.join(desktop.scratch, "kelo-%d.log" % len(desktop.processes))
        with open(self.log_path, "wb") as log:
            self.process = desktop.spawn([KELO], env=env, stdout=log, stderr=log)

    def log(self):
        with open(self.log_path, encoding="utf-8", errors="replace") as f:
            return f.read()

    def window(self):
        """The island's window id; fails the test when it does not appear."""
        def find():
            found = self.desktop.run(
                ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.process.pid),
                 "--class", "^kelo$"], check=False).split()
            return int(found[0]) if len(found) == 1 else None
        window = wait_until(find)
        if window is None:
            raise AssertionError("no island window appeared; log:\n" + self.log())
        return window


class Desktop:
    """Xvfb and openbox on a display of their own, with scratch home folders."""

    def __init__(self):
        self.scratch = tempfile.mkdtemp(prefix="kelo-desktop-")
        self.processes = []
        for folder in ("home", "config", "data", "runtime"):
            os.makedirs(os.path.join(self.scratch, folder), mode=0o700)
        try:
            self._start_server()
            self._start_window_manager()
        except BaseException:
            self.close()
            raise

    def _start_server(self):
        # -displayfd lets the server pick a free display and say which; two tests starting at
        # once cannot collide.
        read_end, write_end = os.pipe()
        self.spawn(["Xvfb", "-displayfd", str(write_end), "-screen", "0",
                    "%dx%dx24" % (SCREEN_WIDTH, SCREEN_HEIGHT), "-nolisten", "tcp", "-noreset"],
                   env=dict(os.environ), pass_fds=(write_end,), stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end, "rb", buffering=0) as pipe:
            number = read_line(pipe, 20)
        if not number:
            raise RuntimeError("Xvfb did not start")
        self.display = ":" + number.strip()
        self.env = {
            key: value for key, value in os.environ.items()
            if key not in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "KELO_DATA", "KELO_SELFTEST",
                           "KELO_SNAPSHOT", "SESSION_MANAGER")
        }
        self.env.update({
            "DISPLAY": self.display,
            "HOME": os.path.join(self.scratch, "home"),
            "XDG_CONFIG_HOME": os.path.join(self.scratch, "config"),
            "XDG_DATA_HOME": os.path.join(self.scratch, "data"),
            "XDG_RUNTIME_DIR": os.path.join(self.scratch, "runtime"),
            "TZ": "UTC",
            "LANG": "C.UTF-8",
        })

    def _start_window_manager(self):
        self.spawn(["openbox", "--sm-disable"], env=self.env, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
        managed = wait_until(lambda: "window id" in self.run(
            ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], check=False), bound=20)
        if not managed:
            raise RuntimeError("openbox did not start")

    def spawn(self, command, **options):
        process = subprocess.Popen(command, cwd=self.scratch, **options)
        self.processes.append(process)
        return process

    def run(self, command, check=True):
        result = subprocess.run(command, env=self.env, capture_output=True, text=True, timeout=20)
        if check and result.returncode != 0:
            raise RuntimeError("%s failed: %s" % (" ".join(command), result.stderr))
        return result.stdout

    def close(self):
        # Newest first: Kelo and the helpers before the window manager and the server.
        for process in reversed(self.processes):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(timeout=5)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
        shutil.rmtree(self.scratch, ignore_errors=True)

    # Kelo and the other programs.

    def write_data(self, name, tasks):
        path = os.path.join(self.scratch, name)
        with open(path, "w", encoding="utf-8") as f:
            json.dump(tasks, f)
        return path

    def start_kelo(self, data_file=None, **variables):
        data_file = data_file or os.path.join(self.scratch, "todos.json")
        env = dict(self.env, KELO_DATA=data_file, **variables)
        return Kelo(self, data_file, env)

    def start_helper(self, *arguments):
        """Starts x11_helper; returns the process and the first line it prints."""
        process = self.spawn([HELPER, *arguments], env=self.env, stdout=subprocess.PIPE)
        first = read_line(process.stdout, SOON)
        if first is None:
            raise AssertionError("x11_helper %s did not start" % " ".join(arguments))
        return process, first

    # What the X server says.

    def geometry(self, window):
        info = self.run(["xwininfo", "-id", str(window)])
        value = lambda label: int(re.search(label + r":\s+(-?\d+)", info).group(1))
        return (value("Absolute upper-left X"), value("Absolute upper-left Y"),
                value("Width"), value("Height"))

    def size(self, window):
        return self.geometry(window)[2:]

    def wait_until_open(self, window, bound=SOON):
        """The open window's size, once it is as wide as the open island; None if it never is."""
        opened = wait_until(lambda: self.size(window)[0] == OPEN_WIDTH, bound)
        return self.size(window) if opened else None

    def wait_for_size(self, window, size, bound=SOON):
        """The window's size once it is `size`, or the size it still has after the bound."""
        wait_until(lambda: self.size(window) == size, bound)
        return self.size(window)

    def pixel(self, window, x, y):
        """The window's own pixel at x, y as (alpha, red, green, blue)."""
        return tuple(int(n) for n in self.run([HELPER, "pixel", str(window), str(x), str(y)]).split())

    def active_window(self):
        text = self.run(["xprop", "-root", "_NET_ACTIVE_WINDOW"], check=False)
        match = re.search(r"window id # (0x[0-9a-f]+)", text)
        return int(match.group(1), 16) if match else None

    def focused_window(self):
        """The window that has the X input focus, whatever the window manager reports."""
        text = self.run(["xdotool", "getwindowfocus"], check=False).strip()
        return int(text) if text.isdigit() else None

    def properties(self, window, *names):
        return self.run(["xprop", "-id", str(window), *names])

    def move_pointer(self, x, y):
        self.run(["xdotool", "mousemove", str(x), str(y)])

    def key(self, *keys):
        self.run(["xdotool", "key", *keys])

    def activate(self, window):
        """Gives the window the keyboard, as a click would; true once the window manager did."""
        def attempt():
            # A window that was mapped a moment ago may not be managed yet: ask again.
            self.run(["xdotool", "windowactivate", str(window)], check=False)
            return self.active_window() == window
        return wait_until(attempt, step=0.2)

    def stacking(self):
        """Managed windows from bottom to top."""
        text = self.run(["xprop", "-root", "_NET_CLIENT_LIST_STACKING"])
        return [int(word.rstrip(","), 16) for word in re.findall(r"0x[0-9a-f]+,?", text)]


class DesktopTestCase(unittest.TestCase):
    """A fresh desktop for every test, closed whatever the outcome."""

    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)

    def assertTopCentre(self, geometry, size):
        width, height = size
        self.assertEqual(geometry, ((SCREEN_WIDTH - width) // 2, 0, width, height))
