"""Ctrl+Alt+T on a real X server: it opens the island with the keyboard, and closing hands the
keyboard back to the application that had it."""

import unittest

from desktop_rig import CLOSED, SETTLE, DesktopTestCase, read_line, wait_until


class HotKeyTest(DesktopTestCase):

    def setUp(self):
        super().setUp()
        self.helper, window = self.desktop.start_helper("window")
        self.other = int(window)
        self.assertTrue(self.desktop.activate(self.other))

    def open_with_hot_key(self, kelo):
        island = kelo.window()
        self.desktop.key("ctrl+alt+t")
        self.open_size = self.desktop.wait_until_open(island)
        self.assertIsNotNone(self.open_size, "the island did not open")
        self.assertTopCentre(self.desktop.geometry(island), self.open_size)
        self.assertTrue(wait_until(lambda: self.desktop.active_window() == island),
                        "the open island did not take the keyboard")
        return island

    def assertKeyboardBackWithTheOtherApplication(self):
        self.assertTrue(wait_until(lambda: self.desktop.active_window() == self.other),
                        "the keyboard did not go back")
        self.desktop.key("x")
        line = read_line(self.helper.stdout, 5)
        self.assertIsNotNone(line, "the other application receives no keys")
        self.assertTrue(line.startswith("key "))

    def test_escape_closes_and_hands_the_keyboard_back(self):
        island = self.open_with_hot_key(self.desktop.start_kelo())
        self.desktop.key("Escape")
        self.assertKeyboardBackWithTheOtherApplication()
        # The frame keeps the open size while the view animates down, then shrinks.
        self.assertEqual(self.desktop.size(island), self.open_size)
        self.assertEqual(self.desktop.wait_for_size(island, CLOSED), CLOSED)
        self.assertTopCentre(self.desktop.geometry(island), CLOSED)

    def test_the_hot_key_again_closes(self):
        island = self.open_with_hot_key(self.desktop.start_kelo())
        self.desktop.key("ctrl+alt+t")
        self.assertKeyboardBackWithTheOtherApplication()
        self.assertEqual(self.desktop.wait_for_size(island, CLOSED), CLOSED)

    def test_the_hot_key_works_with_caps_lock_on(self):
        kelo = self.desktop.start_kelo()
        self.desktop.key("Caps_Lock")
        self.addCleanup(self.desktop.key, "Caps_Lock")
        self.open_with_hot_key(kelo)

    def test_clicking_into_another_application_closes(self):
        island = self.open_with_hot_key(self.desktop.start_kelo())
        self.assertTrue(self.desktop.activate(self.other))
        self.assertEqual(self.desktop.wait_for_size(island, CLOSED), CLOSED)
        self.assertFalse(wait_until(lambda: self.desktop.size(island) != CLOSED, bound=SETTLE),
                         "the island opened again")

    def test_a_hot_key_held_by_another_program_is_logged_and_the_island_stays(self):
        _, answer = self.desktop.start_helper("grab")
        self.assertEqual(answer, "grabbed")
        kelo = self.desktop.start_kelo()
        island = kelo.window()
        line = "Kelo: could not register ⌃⌥T (10). Click the notch instead."
        self.assertTrue(wait_until(lambda: line in kelo.log()), kelo.log())
        self.assertEqual(self.desktop.size(island), CLOSED)
        self.assertIsNone(kelo.process.poll())


class HotKeyWithNothingToHandBackToTest(DesktopTestCase):

    def test_closing_lets_go_of_the_keyboard_and_the_island_stays_a_panel(self):
        kelo = self.desktop.start_kelo()
        island = kelo.window()
        self.assertIsNone(self.desktop.active_window())
        self.desktop.key("ctrl+alt+t")
        self.assertIsNotNone(self.desktop.wait_until_open(island))
        self.assertTrue(wait_until(lambda: self.desktop.active_window() == island))

        self.desktop.key("Escape")
        # With no window to hand back to, openbox leaves _NET_ACTIVE_WINDOW as it was; the
        # input focus shows where the keyboard went.
        self.assertTrue(wait_until(lambda: self.desktop.focused_window() != island),
                        "the island kept the keyboard")
        # Letting go unmaps and maps the window again; it must come back as the same panel.
        self.assertEqual(kelo.window(), island)
        self.assertEqual(self.desktop.wait_for_size(island, CLOSED), CLOSED)
        self.assertTopCentre(self.desktop.geometry(island), CLOSED)
        properties = self.desktop.properties(island, "_NET_WM_STATE", "_NET_WM_DESKTOP")
        for state in ("_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR",
                      "_NET_WM_STATE_SKIP_PAGER"):
            self.assertIn(state, properties)
        self.assertIn("_NET_WM_DESKTOP(CARDINAL) = 4294967295", properties)


if __name__ == "__main__":
    unittest.main()
