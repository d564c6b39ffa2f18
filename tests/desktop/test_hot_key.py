"""Ctrl+Alt+T on a real X server: it opens the island with the keyboard, and closing hands the
keyboard back to the application that had it."""

import unittest

from desktop_rig import CLOSED, OPEN, SETTLE, DesktopTestCase, island_matches, read_line, wait_until


class HotKeyTest(DesktopTestCase):

    def setUp(self):
        super().setUp()
        self.helper, window = self.desktop.start_helper("window")
        self.other = int(window)
        self.assertTrue(self.desktop.activate(self.other))

    def open_with_hot_key(self, kelo):
        island = kelo.window()
        self.desktop.key("ctrl+alt+t")
        self.assertIsland(self.desktop.wait_for_island(island, OPEN), OPEN)
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
        # The shape keeps the open island while the view animates down, then shrinks.
        self.assertIsland(self.desktop.island(island), OPEN)
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED), CLOSED)
        self.assertStill(island)

    def test_the_hot_key_again_closes(self):
        island = self.open_with_hot_key(self.desktop.start_kelo())
        self.desktop.key("ctrl+alt+t")
        self.assertKeyboardBackWithTheOtherApplication()
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED), CLOSED)

    def test_the_hot_key_works_with_caps_lock_on(self):
        kelo = self.desktop.start_kelo()
        self.desktop.key("Caps_Lock")
        self.addCleanup(self.desktop.key, "Caps_Lock")
        self.open_with_hot_key(kelo)

    def test_clicking_into_another_application_closes(self):
        island = self.open_with_hot_key(self.desktop.start_kelo())
        self.assertTrue(self.desktop.activate(self.other))
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED), CLOSED)
        self.assertFalse(wait_until(lambda: not island_matches(self.desktop.island(island), CLOSED),
                                    bound=SETTLE), "the island opened again")

    def test_a_hot_key_held_by_another_program_is_logged_and_the_island_stays(self):
        _, answer = self.desktop.start_helper("grab")
        self.assertEqual(answer, "grabbed")
        kelo = self.desktop.start_kelo()
        island = kelo.window()
        line = "Kelo: could not register ⌃⌥T (10). Click the notch instead."
        self.assertTrue(wait_until(lambda: line in kelo.log()), kelo.log())
        self.assertIsland(self.desktop.island(island), CLOSED)
        self.assertIsNone(kelo.process.poll())


class HotKeyWithNothingToHandBackToTest(DesktopTestCase):

    def test_closing_lets_go_of_the_keyboard_and_the_island_stays_a_panel(self):
        kelo = self.desktop.start_kelo()
        island = kelo.window()
        self.assertIsNone(self.desktop.active_window())
        self.desktop.key("ctrl+alt+t")
        self.assertIsland(self.desktop.wait_for_island(island, OPEN), OPEN)
        self.assertTrue(wait_until(lambda: self.desktop.active_window() == island))

        self.desktop.key("Escape")
        # With no window to hand back to, the window manager may leave _NET_ACTIVE_WINDOW as it
        # was; the input focus shows where the keyboard went.
        self.assertTrue(wait_until(lambda: self.desktop.focused_window() != island),
                        "the island kept the keyboard")
        # Letting go unmaps and maps the window again; it must come back as the same panel.
        self.assertEqual(kelo.window(), island)
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED), CLOSED)
        self.assertStill(island)
        properties = self.desktop.properties(island, "_NET_WM_STATE", "_NET_WM_DESKTOP")
        for state in ("_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR",
                      "_NET_WM_STATE_SKIP_PAGER"):
            self.assertIn(state, properties)
        self.assertIn("_NET_WM_DESKTOP(CARDINAL) = 4294967295", properties)


if __name__ == "__main__":
    unittest.main()
