"""A private X desktop for one desktop test: Xvfb, a session bus and the window manager
KELO_TEST_WM names, with Kelo in scratch folders, driven with xdotool and measured with xwininfo,
xprop, x11_helper (window shapes, the compositor) and the server's framebuffer. Every wait polls
for a state within a fixed bound. Only processes started here are stopped, each by its own id.
"""

import datetime
import json
import os
import pathlib
import re
import select
import shutil
import struct
import subprocess
import tempfile
import time
import unittest
import uuid

KELO = os.environ.get("KELO_BIN", "kelo")
HELPER = os.environ.get("KELO_X11_HELPER", "x11_helper")

SCREEN_WIDTH, SCREEN_HEIGHT = 1440, 900
# The fallback notch on a desktop without a top panel: 185 wide, 24 high.
NOTCH_WIDTH, NOTCH_HEIGHT = 185, 24
# The island's size in each mode, as a person sees it on the screen.
CLOSED = (NOTCH_WIDTH + 12, NOTCH_HEIGHT)
CLOSED_WITH_TASKS = (NOTCH_WIDTH + 100, NOTCH_HEIGHT)
PEEK = (NOTCH_WIDTH + 200, NOTCH_HEIGHT + 30)
# The open island is as tall as what it shows: any height up to its greatest.
OPEN = (NOTCH_WIDTH + 460, None)
OPEN_MAX_HEIGHT = 480
ALERT = (max(NOTCH_WIDTH + 260, 440), NOTCH_HEIGHT + 54)
# The island's window never changes: it holds the open island at its greatest height, with room
# for the shadow.
WINDOW = (NOTCH_WIDTH + 460 + 60, 480 + 40)
# The outline's flared top corners reach the screen's edge in a point, so the pixels of the top
# row stop short of the island's full width by up to its top radius on each side.
FLARE = 10

BLACK = (0, 0, 0)

# What each window manager is started with, and whether a compositing manager runs with it. Each
# gets a bare configuration in the scratch home.
WINDOW_MANAGERS = {
    "openbox": (["openbox", "--sm-disable"], False),
    "xfwm4": (["xfwm4", "--compositor=off"], False),
    "xfwm4-compositor": (["xfwm4", "--compositor=on"], True),
    "metacity": (["metacity", "--sm-disable"], True),
    "fluxbox": (["fluxbox"], False),
    "i3": (["i3", "-c", "{scratch}/i3.conf"], False),
}
WM = os.environ.get("KELO_TEST_WM", "openbox")

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


def saw(process, text, bound=SOON):
    """Whether a line of the process's output holds `text` within the bound."""
    deadline = time.monotonic() + bound
    while (line := read_line(process.stdout, max(0.0, deadline - time.monotonic()))) is not None:
        if text in line:
            return True
    return False


def read_tasks(path):
    return json.loads(pathlib.Path(path).read_text(encoding="utf-8"))


def task(title, **fields):
    """A task as the data file holds it, with `fields` such as day= and minute=."""
    return {"created": "2025-01-01T09:00:00Z", "id": str(uuid.uuid4()).upper(), "title": title,
            **fields}


def now_utc():
    """Today and the minute of the day, read at one instant so that they agree at midnight."""
    now = datetime.datetime.now(datetime.timezone.utc)
    return now.strftime("%Y-%m-%d"), now.hour * 60 + now.minute


class Kelo:
    def __init__(self, desktop, env):
        self.desktop = desktop
        self.log_path = os.path.join(desktop.scratch, "kelo-%d.log" % len(desktop.processes))
        with open(self.log_path, "wb") as log:
            self.process = desktop.spawn([KELO], env=env, stdout=log, stderr=log)

    def log(self):
        return pathlib.Path(self.log_path).read_text(encoding="utf-8", errors="replace")

    def windows(self):
        """Kelo's visible windows: the island's, and its menu's while that shows."""
        return self.desktop.run(["xdotool", "search", "--all", "--onlyvisible", "--pid",
                                 str(self.process.pid), "--class", "^kelo$"], check=False).split()

    def window(self):
        """The island's window id; fails the test when it does not appear."""
        found = wait_until(lambda: len(self.windows()) == 1) and self.windows()
        assert found, "no island window appeared; log:\n" + self.log()
        return int(found[0])


class Desktop:
    """Xvfb, a session bus and a window manager of their own, with scratch home folders."""

    def __init__(self, window_manager=WM):
        self.scratch = tempfile.mkdtemp(prefix="kelo-desktop-")
        self.processes = []
        for folder in ("home", "config", "data", "runtime", "framebuffer", "bin"):
            os.makedirs(os.path.join(self.scratch, folder), mode=0o700)
        try:
            self._start_servers()
            self._start_window_manager(window_manager)
        except BaseException:
            self.close()
            raise

    def _first_line(self, command, env):
        """Starts a server that says where it listens on the pipe that "{fd}" names."""
        read_end, write_end = os.pipe()
        self.spawn([word.format(fd=write_end) for word in command], env=env,
                   pass_fds=(write_end,), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end, "rb", buffering=0) as pipe:
            line = read_line(pipe, 20)
        if not line:
            raise RuntimeError("%s did not start" % command[0])
        return line.strip()

    def _start_servers(self):
        # -displayfd: the server picks a free display, so tests starting at once cannot collide.
        # A white root, so that black shows where the island paints; the framebuffer is what a
        # person would see, compositor included.
        self.display = ":" + self._first_line(
            ["Xvfb", "-displayfd", "{fd}", "-screen", "0", "%dx%dx24" % (SCREEN_WIDTH, SCREEN_HEIGHT),
             "-nolisten", "tcp", "-noreset", "-wr", "-fbdir",
             os.path.join(self.scratch, "framebuffer")], dict(os.environ))
        self.env = {
            key: value for key, value in os.environ.items()
            if key not in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "KELO_DATA", "KELO_SELFTEST",
                           "KELO_SNAPSHOT", "SESSION_MANAGER", "DBUS_SESSION_BUS_ADDRESS",
                           "XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP")
        }
        folder = lambda name: os.path.join(self.scratch, name)
        # NO_AT_BRIDGE: no accessibility bus, which the window managers built on GTK would start.
        self.env.update(DISPLAY=self.display, HOME=folder("home"), XDG_CONFIG_HOME=folder("config"),
                        XDG_DATA_HOME=folder("data"), XDG_RUNTIME_DIR=folder("runtime"), TZ="UTC",
                        LANG="C.UTF-8", NO_AT_BRIDGE="1")
        # A session bus for this desktop alone: Kelo's name on it cannot meet another Kelo's.
        self.env["DBUS_SESSION_BUS_ADDRESS"] = self._first_line(
            ["dbus-daemon", "--session", "--nofork", "--print-address={fd}"], self.env)

    def _start_window_manager(self, name):
        command, compositing = WINDOW_MANAGERS[name]
        self.write("i3.conf", "# i3 config file (v4)\nfont pango:monospace 8\n")
        # fluxbox sets the wallpaper with fbsetbg, which complains in a window of its own when it
        # finds no program to do it with.
        os.chmod(self.write("bin/fbsetbg", "#!/bin/sh\nexit 0\n"), 0o755)
        env = dict(self.env, PATH=os.path.join(self.scratch, "bin") + ":" + os.environ["PATH"])
        self.spawn([word.format(scratch=self.scratch) for word in command], env=env,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        if not (wait_until(lambda: "window id" in self.run(
                ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], check=False), bound=20) and
                wait_until(lambda: self.compositing() == compositing, bound=20)):
            raise RuntimeError("%s did not start, or not as compositing=%s" % (name, compositing))

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
            with process:  # which closes its pipe and waits for it
                process.terminate()
                try:
                    process.wait(timeout=5)
                except subprocess.TimeoutExpired:
                    process.kill()
        shutil.rmtree(self.scratch, ignore_errors=True)

    def write(self, name, text):
        path = pathlib.Path(self.scratch, name)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text if isinstance(text, str) else json.dumps(text), encoding="utf-8")
        return str(path)

    def start_kelo(self, data_file=None, **variables):
        data_file = data_file or os.path.join(self.scratch, "todos.json")
        return Kelo(self, dict(self.env, KELO_DATA=data_file, **variables))

    def start_white_desktop(self):
        backdrop = self.spawn([HELPER, "backdrop"], env=self.env, stdout=subprocess.PIPE)
        assert read_line(backdrop.stdout, SOON), "x11_helper backdrop did not start"

    def geometry(self, window):
        info = self.run(["xwininfo", "-id", str(window)])
        return tuple(int(re.search(label + r":\s+(-?\d+)", info).group(1)) for label in
                     ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def shape(self, window):
        """The extents of the window's bounding and input regions, in screen coordinates."""
        left, top, _, _ = self.geometry(window)
        return {name: (left + int(x), top + int(y), int(width), int(height)) for name, x, y, width,
                height in map(str.split, self.run([HELPER, "shape", str(window)]).splitlines())}

    def island(self, window):
        """Where the island is on the screen: the extents of its window's input region."""
        return self.shape(window)["input"]

    def compositing(self):
        return self.run([HELPER, "compositor"]).strip() == "yes"

    def screen_pixel(self, x, y):
        """The pixel a person sees at x, y as (red, green, blue): read from the server's
        framebuffer, which holds what the compositor made of the windows when one runs."""
        with open(os.path.join(self.scratch, "framebuffer", "Xvfb_screen0"), "rb") as f:
            header = struct.unpack(">25I", f.read(100))
            header_size, bits_per_pixel, bytes_per_line, colours = (
                header[0], header[11], header[12], header[19])
            f.seek(header_size + colours * 12 + y * bytes_per_line + x * bits_per_pixel // 8)
            blue, green, red = f.read(3)
        return red, green, blue

    def active_window(self):
        text = self.run(["xprop", "-root", "_NET_ACTIVE_WINDOW"], check=False)
        match = re.search(r"window id # (0x[0-9a-f]+)", text)
        # Some window managers write 0 when no window is active, others remove the property.
        return int(match.group(1), 16) or None if match else None

    def properties(self, window, *names):
        return self.run(["xprop", "-id", str(window), *names])

    def point(self, x, y, click=None):
        """Moves the pointer to x, y and, given a button, clicks it there."""
        click = ["click", str(click)] if click else []
        self.run(["xdotool", "mousemove", str(x), str(y), *click])

    def key(self, *keys):
        self.run(["xdotool", "key", *keys])

    def activate(self, window):
        """Gives the window the keyboard, as a click would; true once the window manager did."""
        def attempt():
            # A window that was mapped a moment ago may not be managed yet: ask again.
            self.run(["xdotool", "windowactivate", str(window)], check=False)
            return self.active_window() == window
        return wait_until(attempt, step=0.2)


class DesktopTestCase(unittest.TestCase):
    """A fresh desktop for every test, closed whatever the outcome."""

    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)

    def start_other_application(self, geometry="300x200+100+300"):
        """Another application (xev, white), holding the keyboard and printing the keys and clicks
        it gets: its process and window."""
        process = self.desktop.spawn(["stdbuf", "-oL", "xev", "-geometry", geometry, "-event",
                                      "keyboard", "-event", "button"], env=self.desktop.env,
                                     stdout=subprocess.PIPE)
        window = int(re.search(r"Outer window is (0x[0-9a-f]+)",
                               read_line(process.stdout, SOON) or "").group(1), 16)
        self.assertTrue(self.desktop.activate(window))
        return process, window

    def open_with_hot_key(self, island):
        self.desktop.key("ctrl+alt+t")
        self.assertIsland(island, OPEN)
        self.assertTrue(wait_until(lambda: self.desktop.active_window() == island),
                        "the open island did not take the keyboard")

    def assertStill(self, window):
        """The island's window is where it was mapped, at the size it was mapped with."""
        width, height = WINDOW
        self.assertEqual(self.desktop.geometry(window),
                         ((SCREEN_WIDTH - width) // 2, 0, width, height))

    def assertIsland(self, window, size):
        """The island becomes one of `size` hanging from the top centre within the bound."""
        if not wait_until(lambda: island_matches(self.desktop.island(window), size)):
            self.fail("the island is at %s, not %s at the top centre" %
                      (self.desktop.island(window), size))

    def assertStaysClosed(self, island, message):
        self.assertFalse(wait_until(lambda: not island_matches(self.desktop.island(island), CLOSED),
                                    bound=SETTLE), message)


def island_matches(extents, size):
    """Whether the island's extents are those of an island of `size` hanging from the top centre
    of the screen."""
    x, y, width, height = extents
    left_gap, right_gap = x, SCREEN_WIDTH - x - width
    tall_enough = (NOTCH_HEIGHT < height <= OPEN_MAX_HEIGHT if size[1] is None
                   else height == size[1])
    return (y == 0 and tall_enough and size[0] - FLARE <= width <= size[0]
            and abs(left_gap - right_gap) <= 1)
