"""The self-check run and the snapshot run, started as a person or CI would start them, and what
they must not do: touch the user's preferences, or run the self-check on the real data file."""

import os
import struct
import subprocess
import unittest
import zlib

from desktop_rig import KELO, SOON, WINDOW, DesktopTestCase, minute_now_utc, task, today_utc, \
    wait_until

# The self-check's script runs 24 steps 0.8 s apart; the snapshot run 13 states 1.2 s apart.
RUN_BOUND = 60
SNAPSHOTS = ["1-closed", "2-peek", "3-today", "4-draft", "5-upcoming", "6-backlog", "7-schedule",
             "8-alert", "9-glass-dark", "10-glass-light", "11-settings", "12-glass-settings",
             "13-glass-light-settings"]
PREFERENCES = "[General]\ntheme=glass\nglassLook=dark\nreminderSound=false\n"


def read_png(path):
    """Width, height and rows of (red, green, blue, alpha) of an 8-bit RGBA PNG."""
    with open(path, "rb") as f:
        data = f.read()
    chunks, position = {}, 8
    while position < len(data):
        length, kind = struct.unpack(">I4s", data[position:position + 8])
        chunks[kind] = chunks.get(kind, b"") + data[position + 8:position + 8 + length]
        position += 12 + length
    width, height, depth, colour = struct.unpack(">IIBB", chunks[b"IHDR"][:10])
    assert (depth, colour) == (8, 6), "%s is not 8-bit RGBA" % path
    raw, stride, rows, above = zlib.decompress(chunks[b"IDAT"]), width * 4, [], bytearray(width * 4)
    for y in range(height):
        kind, line = raw[y * (stride + 1)], bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for i in range(stride):
            a, b, c = line[i - 4] if i >= 4 else 0, above[i], above[i - 4] if i >= 4 else 0
            if kind == 4:
                p = a + b - c
                a = min((abs(p - a), 0, a), (abs(p - b), 1, b), (abs(p - c), 2, c))[2]
            line[i] = (line[i] + (0, a, b, (a + b) // 2, a)[kind]) & 0xFF
        rows.append([tuple(line[x * 4:x * 4 + 4]) for x in range(width)])
        above = line
    return width, height, rows


class RunsTest(DesktopTestCase):

    def finish(self, kelo):
        kelo.process.wait(timeout=RUN_BOUND)
        return kelo.process.returncode, kelo.log()

    def test_the_self_check_passes_and_leaves_the_preferences_alone(self):
        preferences = self.desktop.write_preferences(PREFERENCES)
        kelo = self.desktop.start_kelo(KELO_SELFTEST="1")
        status, log = self.finish(kelo)
        lines = log.splitlines()
        self.assertEqual(sum(line.startswith("PASS ") for line in lines), 18, log)
        self.assertIn("ALL PASS", lines, log)
        self.assertTrue(any(line.startswith("INFO  key window: ") for line in lines), log)
        self.assertEqual(status, 0, log)
        with open(preferences, encoding="utf-8") as f:
            self.assertEqual(f.read(), PREFERENCES)

    def test_without_a_scratch_data_file_the_self_check_refuses(self):
        env = dict(self.desktop.env, KELO_SELFTEST="")
        result = subprocess.run([KELO], env=env, capture_output=True, text=True, timeout=SOON)
        self.assertEqual(result.stdout, "KELO_SELFTEST needs KELO_DATA=<scratch file>. It never "
                                        "runs on your real list.\n")
        self.assertEqual(result.returncode, 2)
        self.assertFalse(os.path.exists(os.path.join(self.desktop.scratch, "data", "Kelo",
                                                     "todos.json")), "the real list was written")

    def test_the_snapshot_run_draws_thirteen_states_with_glass_under_a_compositor(self):
        self.desktop.spawn(["xcompmgr"], env=self.desktop.env)
        self.assertTrue(wait_until(self.desktop.compositing), "xcompmgr did not start")
        folder = os.path.join(self.desktop.scratch, "shots")
        minute = min(minute_now_utc() + 30, 1439)
        data = self.desktop.write_data("todos.json", [
            task("standup", day=today_utc(), minute=minute), task("water the plants",
                                                                  day=today_utc()),
            task("learn Rust")])
        status, log = self.finish(self.desktop.start_kelo(data, KELO_SNAPSHOT=folder))
        self.assertEqual(status, 0, log)
        self.assertEqual(sorted(os.listdir(folder)), sorted(name + ".png" for name in SNAPSHOTS))
        images = {}
        for name in SNAPSHOTS:
            width, height, rows = read_png(os.path.join(folder, name + ".png"))
            self.assertEqual((width, height), WINDOW, name)
            self.assertTrue(any(pixel[3] > 0 for row in rows for pixel in row), name + " is blank")
            images[name] = rows
        # Inside the open island, below its header: black for the standard theme, translucent for
        # glass.
        x, y = WINDOW[0] // 2, 30
        self.assertEqual(images["3-today"][y][x][3], 255)
        self.assertLess(images["9-glass-dark"][y][x][3], 250)
        self.assertLess(images["10-glass-light"][y][x][3], 250)
        self.assertGreater(images["10-glass-light"][y][x][0], 128, "light glass is light")

    def test_both_runs_start_when_both_are_asked_for(self):
        folder = os.path.join(self.desktop.scratch, "shots")
        kelo = self.desktop.start_kelo(KELO_SNAPSHOT=folder, KELO_SELFTEST="1")
        status, log = self.finish(kelo)
        self.assertTrue(any(line.startswith(("PASS ", "FAIL ")) for line in log.splitlines()), log)
        self.assertTrue(os.path.exists(os.path.join(folder, "1-closed.png")), log)


if __name__ == "__main__":
    unittest.main()
