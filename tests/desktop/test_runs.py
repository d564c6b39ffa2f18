"""The self-check run and the snapshot run, started as a person or CI would start them, and what
they must not do: touch the user's preferences, or run the self-check on the real data file."""

import os
import pathlib
import struct
import subprocess
import zlib

from desktop_rig import KELO, SOON, WINDOW, DesktopTestCase, now_utc, task, wait_until

# The self-check's script runs 24 steps 0.8 s apart; the snapshot run 13 states 1.2 s apart.
RUN_BOUND = 60
SNAPSHOTS = ["1-closed", "2-peek", "3-today", "4-draft", "5-upcoming", "6-backlog", "7-schedule",
             "8-alert", "9-glass-dark", "10-glass-light", "11-settings", "12-glass-settings",
             "13-glass-light-settings"]
PREFERENCES = "[General]\ntheme=glass\nglassLook=dark\nreminderSound=false\n"


def read_png(path):
    """Width, height and whether anything is drawn, of a PNG image."""
    data, pixels, position = pathlib.Path(path).read_bytes(), b"", 8
    while position < len(data):
        length, kind = struct.unpack(">I4s", data[position:position + 8])
        pixels += data[position + 8:position + 8 + length] if kind == b"IDAT" else b""
        position += 12 + length
    width, height = struct.unpack(">II", data[16:24])
    rows = zlib.decompress(pixels)
    stride = len(rows) // height
    # Every row starts with its filter's number. The first byte that is not zero in an image is
    # predicted from zeros, whatever the filter, so a drawn image has a filtered byte not zero.
    return width, height, any(any(rows[y * stride + 1:(y + 1) * stride]) for y in range(height))


class RunsTest(DesktopTestCase):

    def test_the_self_check_passes_and_leaves_the_preferences_alone(self):
        preferences = self.desktop.write("config/Kelo/Kelo.conf", PREFERENCES)
        kelo = self.desktop.start_kelo(KELO_SELFTEST="1")
        status, log = kelo.process.wait(timeout=RUN_BOUND), kelo.log()
        lines = log.splitlines()
        self.assertEqual(sum(line.startswith("PASS ") for line in lines), 18, log)
        self.assertIn("ALL PASS", lines, log)
        self.assertTrue(any(line.startswith("INFO  key window: ") for line in lines), log)
        self.assertEqual(status, 0, log)
        self.assertEqual(pathlib.Path(preferences).read_text(encoding="utf-8"), PREFERENCES)

    def test_without_a_scratch_data_file_the_self_check_refuses(self):
        env = dict(self.desktop.env, KELO_SELFTEST="")
        result = subprocess.run([KELO], env=env, capture_output=True, text=True, timeout=SOON)
        self.assertEqual(result.stdout, "KELO_SELFTEST needs KELO_DATA=<scratch file>. It never "
                                        "runs on your real list.\n")
        self.assertEqual(result.returncode, 2)
        self.assertFalse(os.path.exists(os.path.join(self.desktop.scratch, "data", "Kelo",
                                                     "todos.json")), "the real list was written")

    def test_the_snapshot_run_draws_thirteen_states(self):
        self.desktop.spawn(["xcompmgr"], env=self.desktop.env)
        self.assertTrue(wait_until(self.desktop.compositing), "xcompmgr did not start")
        folder = os.path.join(self.desktop.scratch, "shots")
        today, minute = now_utc()
        data = self.desktop.write("todos.json", [
            task("standup", day=today, minute=min(minute + 30, 1439)),
            task("water the plants", day=today), task("learn Rust")])
        kelo = self.desktop.start_kelo(data, KELO_SNAPSHOT=folder)
        status, log = kelo.process.wait(timeout=RUN_BOUND), kelo.log()
        self.assertEqual(status, 0, log)
        self.assertEqual(sorted(os.listdir(folder)), sorted(name + ".png" for name in SNAPSHOTS))
        for name in SNAPSHOTS:
            width, height, drawn = read_png(os.path.join(folder, name + ".png"))
            self.assertEqual((width, height), WINDOW, name)
            self.assertTrue(drawn, name + " is blank")
        # Whether the glass shows the desktop through is checked on the screen (test_island_frames).

