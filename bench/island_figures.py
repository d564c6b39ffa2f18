#!/usr/bin/python3
"""Whole-process figures of the drawn island, with 1,000 tasks (300 today, 400 upcoming,
300 backlog), on a private Xvfb with openbox and a session bus:

  first frame        from exec to the first frame drawn (median of 5 starts)
  open               from Ctrl+Alt+T to the open island's first frame, and until it has settled
  frames             the work of each frame while the island opens and closes, while the tabs
                     switch and while the list scrolls (p50, p99; Qt logs whole milliseconds)
  idle               frames drawn in 5 s with nothing moving, after opening and closing once
  memory             resident memory closed (after opening and closing once) and open

Frame times come from Qt's own render-loop log (qt.scenegraph.time.renderloop), with wall-clock
stamps. Figures are printed, never checked: compare them with the aims by eye.

Usage: bench/island_figures.py [build folder]   (default: build beside this folder)
"""

import datetime
import json
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
import uuid

HERE = os.path.dirname(os.path.abspath(__file__))
BUILD = sys.argv[1] if len(sys.argv) > 1 else os.path.join(HERE, "..", "build")
KELO = os.path.join(BUILD, "shell", "kelo")
FRAME = re.compile(r"^(\S+) Frame rendered with '\w+' renderloop in (\d+)ms")


def tasks():
    now = datetime.datetime.now(datetime.timezone.utc)
    today, minute = now.date(), now.hour * 60 + now.minute
    made = []
    for n in range(1000):
        task = {"created": "2025-01-01T09:00:00Z", "id": str(uuid.uuid4()).upper(),
                "title": "task number %d with a title of ordinary length" % n}
        if n < 300:
            task["day"] = today.isoformat()
            if n % 2 == 0:
                # Timed, but none due during the run: an alert would not be idling.
                task["minute"] = min(minute + 30 + n // 10, 1439)
        elif n < 700:
            task["day"] = (today + datetime.timedelta(days=1 + n % 40)).isoformat()
        made.append(task)
    return made


def read_line(descriptor):
    """What a starting server writes on the pipe, up to its line's end; closes the pipe."""
    data = b""
    with os.fdopen(descriptor, "rb", buffering=0) as pipe:
        while not data.endswith(b"\n"):
            chunk = pipe.read(1)
            if not chunk:
                break
            data += chunk
    return data.decode().strip()


class Desktop:
    def __init__(self):
        self.scratch = tempfile.mkdtemp(prefix="kelo-figures-")
        self.processes = []
        for folder in ("home", "config", "data", "runtime"):
            os.makedirs(os.path.join(self.scratch, folder), mode=0o700)
        read_end, write_end = os.pipe()
        self.spawn(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1440x900x24",
                    "-nolisten", "tcp", "-noreset", "-wr"], pass_fds=(write_end,))
        os.close(write_end)
        number = read_line(read_end)
        if not number:
            sys.exit("Xvfb did not start")
        self.env = {key: value for key, value in os.environ.items()
                    if not key.startswith(("KELO_", "QT_", "QSG_", "WAYLAND"))}
        self.env.update(DISPLAY=":" + number, TZ="UTC", LANG="C.UTF-8", NO_AT_BRIDGE="1",
                        HOME=os.path.join(self.scratch, "home"),
                        XDG_CONFIG_HOME=os.path.join(self.scratch, "config"),
                        XDG_DATA_HOME=os.path.join(self.scratch, "data"),
                        XDG_RUNTIME_DIR=os.path.join(self.scratch, "runtime"))
        read_end, write_end = os.pipe()
        self.spawn(["dbus-daemon", "--session", "--nofork", "--print-address=%d" % write_end],
                   pass_fds=(write_end,))
        os.close(write_end)
        self.env["DBUS_SESSION_BUS_ADDRESS"] = read_line(read_end)
        self.spawn(["openbox", "--sm-disable"])
        time.sleep(1.5)
        self.data = os.path.join(self.scratch, "tasks.json")
        with open(self.data, "w", encoding="utf-8") as f:
            json.dump(tasks(), f)

    def spawn(self, command, **options):
        options.setdefault("env", getattr(self, "env", dict(os.environ)))
        process = subprocess.Popen(command, stdout=options.pop("stdout", subprocess.DEVNULL),
                                   stderr=options.pop("stderr", subprocess.DEVNULL), **options)
        self.processes.append(process)
        return process

    def key(self, *keys):
        subprocess.run(["xdotool", "key", *keys], env=self.env, check=True)

    def start_kelo(self, log):
        env = dict(self.env, KELO_DATA=self.data,
                   QT_LOGGING_RULES="qt.scenegraph.time.renderloop=true",
                   QT_MESSAGE_PATTERN="%{time yyyy-MM-ddTHH:mm:ss.zzz} %{message}")
        with open(log, "wb") as out:
            return self.spawn([KELO], env=env, stdout=out, stderr=out)

    def close(self):
        for process in reversed(self.processes):
            if process.poll() is None:
                process.terminate()
                process.wait()
        shutil.rmtree(self.scratch, ignore_errors=True)


def frames(log, since=0.0, until=float("inf")):
    """(wall time, milliseconds of work) of every frame drawn between the two wall times."""
    found = []
    with open(log, encoding="utf-8", errors="replace") as f:
        for line in f:
            match = FRAME.match(line)
            if match:
                stamp = datetime.datetime.fromisoformat(match.group(1)).replace(
                    tzinfo=datetime.timezone.utc).timestamp()
                if since <= stamp <= until:
                    found.append((stamp, int(match.group(2))))
    return found


def percentiles(work):
    if not work:
        return "no frames"
    ordered = sorted(work)
    p99 = ordered[min(len(ordered) - 1, int(round(0.99 * (len(ordered) - 1))))]
    return "p50 %d ms, p99 %d ms, max %d ms over %d frames" % (
        statistics.median(ordered), p99, ordered[-1], len(ordered))


def resident(pid):
    with open("/proc/%d/status" % pid, encoding="utf-8") as f:
        return int(re.search(r"VmRSS:\s+(\d+)", f.read()).group(1)) / 1024


def main():
    if not os.access(KELO, os.X_OK):
        sys.exit("missing %s: build Kelo first" % KELO)
    desktop = Desktop()
    try:
        log = os.path.join(desktop.scratch, "kelo.log")
        starts = []
        for _ in range(5):
            begun = time.time()
            kelo = desktop.start_kelo(log)
            time.sleep(2)
            first = frames(log)
            starts.append((first[0][0] - begun) * 1000 if first else float("nan"))
            kelo.terminate()
            kelo.wait()
        print("first frame      %.0f ms median (%s)" % (
            statistics.median(starts), ", ".join("%.0f" % s for s in starts)))

        kelo = desktop.start_kelo(log)
        time.sleep(3)
        opened = time.time()
        desktop.key("ctrl+alt+t")
        time.sleep(1.5)
        drawn = [stamp for stamp, _ in frames(log, opened)]
        # The opening animation is the first run of frames; the add field's blinking cursor
        # draws on its own afterwards.
        settled = drawn[0]
        for stamp in drawn[1:]:
            if stamp - settled > 0.1:
                break
            settled = stamp
        print("open             first frame %.0f ms after Ctrl+Alt+T, settled after %.0f ms" % (
            (drawn[0] - opened) * 1000, (settled - opened) * 1000))
        print("memory open      %.1f MB resident" % resident(kelo.pid))
        desktop.key("ctrl+alt+t")
        time.sleep(1.5)
        print("frames           open and close: %s" % percentiles(
            [work for _, work in frames(log, opened)]))
        quiet = time.time()
        time.sleep(5)
        print("idle             %d frames in 5 s, closed" % len(frames(log, quiet)))
        print("memory closed    %.1f MB resident after opening and closing once" %
              resident(kelo.pid))

        desktop.key("ctrl+alt+t")
        time.sleep(1.5)
        switching = time.time()
        for _ in range(6):
            for digit in "231":
                desktop.key("ctrl+" + digit)
                time.sleep(0.3)
        print("frames           switching tabs: %s" % percentiles(
            [work for _, work in frames(log, switching)]))
        scrolling = time.time()
        subprocess.run(["xdotool", "mousemove", "720", "250"], env=desktop.env, check=True)
        for button in ["5"] * 20 + ["4"] * 20:
            subprocess.run(["xdotool", "click", button], env=desktop.env, check=True)
            time.sleep(0.05)
        time.sleep(0.5)
        print("frames           scrolling: %s" % percentiles(
            [work for _, work in frames(log, scrolling)]))
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
