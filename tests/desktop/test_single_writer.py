"""One Kelo per data file, and the command line."""

import os
import subprocess
import unittest

from desktop_rig import KELO, SOON, DesktopTestCase, wait_until


class SingleWriterTest(DesktopTestCase):

    def test_a_second_kelo_on_the_same_file_is_refused(self):
        first = self.desktop.start_kelo()
        first.window()
        second = self.desktop.start_kelo(first.data_file)
        self.assertEqual(second.process.wait(timeout=SOON), 1)
        self.assertEqual(second.log().strip(),
                         "Kelo: already running with %s." % first.data_file)
        self.assertIsNone(first.process.poll())

    def test_a_relative_data_file_is_the_same_file(self):
        first = self.desktop.start_kelo("lists/todos.json")
        first.window()
        self.assertTrue(os.path.exists(
            os.path.join(self.desktop.scratch, "lists", "todos.json.lock")))
        second = self.desktop.start_kelo(os.path.join(self.desktop.scratch, "lists",
                                                      "todos.json"))
        self.assertEqual(second.process.wait(timeout=SOON), 1)

    def test_different_data_files_run_side_by_side(self):
        first = self.desktop.start_kelo(os.path.join(self.desktop.scratch, "a.json"))
        second = self.desktop.start_kelo(os.path.join(self.desktop.scratch, "b.json"))
        self.assertNotEqual(first.window(), second.window())
        self.assertIsNone(first.process.poll())
        self.assertIsNone(second.process.poll())

    def test_the_lock_goes_with_the_process(self):
        first = self.desktop.start_kelo()
        first.window()
        first.process.kill()
        first.process.wait()
        second = self.desktop.start_kelo(first.data_file)
        second.window()
        self.assertIsNone(second.process.poll())


class CommandLineTest(unittest.TestCase):
    """Answered without a display."""

    def run_kelo(self, *arguments):
        env = {key: value for key, value in os.environ.items()
               if key not in ("DISPLAY", "WAYLAND_DISPLAY")}
        return subprocess.run([KELO, *arguments], env=env, capture_output=True, text=True,
                              timeout=SOON)

    def test_version(self):
        result = self.run_kelo("--version")
        self.assertEqual(result.returncode, 0)
        self.assertRegex(result.stdout, r"^kelo \d+\.\d+\.\d+\n$")

    def test_help(self):
        result = self.run_kelo("--help")
        self.assertEqual(result.returncode, 0)
        self.assertTrue(result.stdout.startswith("Usage: kelo\n"))
        self.assertIn("Ctrl+Alt+T", result.stdout)


if __name__ == "__main__":
    unittest.main()
