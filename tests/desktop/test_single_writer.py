"""One Kelo per data file, and Kelos on different files side by side."""

import os
import unittest

from desktop_rig import CLOSED, SOON, DesktopTestCase, wait_until


class SingleWriterTest(DesktopTestCase):

    def test_a_second_kelo_on_the_same_file_is_refused_until_the_first_is_gone(self):
        # A relative path names the same file as the absolute one.
        first = self.desktop.start_kelo("lists/todos.json")
        first.window()
        data_file = os.path.join(self.desktop.scratch, "lists", "todos.json")
        self.assertTrue(os.path.exists(data_file + ".lock"))
        second = self.desktop.start_kelo(data_file)
        self.assertEqual(second.process.wait(timeout=SOON), 1)
        self.assertEqual(second.log().strip(), "Kelo: already running with %s." % data_file)
        self.assertIsNone(first.process.poll())

        first.process.kill()
        first.process.wait()
        third = self.desktop.start_kelo(data_file)
        third.window()
        self.assertIsNone(third.process.poll())

    def test_different_data_files_run_side_by_side_and_the_second_does_without_the_hot_key(self):
        first = self.desktop.start_kelo(os.path.join(self.desktop.scratch, "a.json"))
        first.window()
        second = self.desktop.start_kelo(os.path.join(self.desktop.scratch, "b.json"))
        island = second.window()
        self.assertNotEqual(first.window(), island)
        # Ctrl+Alt+T is the first Kelo's, as it would be any other program's that held it.
        line = "Kelo: could not register ⌃⌥T (10). Click the notch instead."
        self.assertTrue(wait_until(lambda: line in second.log()), second.log())
        self.assertNotIn(line, first.log())
        self.assertIsland(self.desktop.island(island), CLOSED)
        self.assertIsNone(first.process.poll())
        self.assertIsNone(second.process.poll())


if __name__ == "__main__":
    unittest.main()
