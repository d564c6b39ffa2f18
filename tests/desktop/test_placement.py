"""The island under any window manager: one still window at the top centre, above the windows in
use and in no task bar, painting nothing around the island and letting clicks there through."""

import unittest

from desktop_rig import (BLACK, CLOSED, NOTCH_HEIGHT, SCREEN_WIDTH, SOON, WINDOW,
                         DesktopTestCase, read_line, wait_until)

# Inside the island's window, well beside the closed island.
BESIDE = ((SCREEN_WIDTH - WINDOW[0]) // 2 + 20, 100)


class PlacementTest(DesktopTestCase):

    def test_the_island_hangs_from_the_top_centre_above_the_window_in_use(self):
        _, window = self.desktop.start_helper("window")
        other = int(window)
        self.assertTrue(self.desktop.activate(other))
        island = self.desktop.start_kelo().window()
        self.assertStill(island)
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED), CLOSED)

        properties = self.desktop.properties(island, "WM_CLASS", "_NET_WM_STATE")
        self.assertIn('WM_CLASS(STRING) = "kelo", "kelo"', properties)
        for state in ("_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"):
            self.assertIn(state, properties)
        # Appearing must not take the keyboard from the application in use.
        self.assertEqual(self.desktop.active_window(), other)

        # A click into the application in use brings it to the front, but not over the island.
        x, y, width, height = self.desktop.geometry(other)
        self.desktop.run(["xdotool", "mousemove", str(x + width // 2), str(y + height // 2),
                          "click", "1"])
        self.assertTrue(wait_until(lambda: self.desktop.active_window() == other))
        self.assertTrue(self.desktop.is_above(island, other))
        self.assertStill(island)

    def test_nothing_around_the_island_is_painted(self):
        # Some compositors paint the root black themselves: a white desktop shows what is black.
        self.desktop.start_helper("backdrop")
        island = self.desktop.start_kelo().window()
        left, _, width, _ = self.desktop.wait_for_island(island, CLOSED)
        self.assertTrue(wait_until(lambda: self.desktop.screen_pixel(SCREEN_WIDTH // 2, 12) == BLACK),
                        "the island is not drawn")
        # Inside the island's window: beside the closed island, beside the body's straight
        # sides, and in its rounded bottom corners.
        for x, y in (BESIDE, (left + 1, NOTCH_HEIGHT // 2), (left + 1, NOTCH_HEIGHT - 2),
                     (left + width - 2, NOTCH_HEIGHT - 2)):
            self.assertNotEqual(self.desktop.screen_pixel(x, y), BLACK, "painted at %d, %d" % (x, y))

    def test_clicks_beside_the_island_reach_the_window_below(self):
        backdrop, _ = self.desktop.start_helper("backdrop")
        island = self.desktop.start_kelo().window()
        self.desktop.wait_for_island(island, CLOSED)
        self.desktop.run(["xdotool", "mousemove", str(SCREEN_WIDTH // 2), "12", "click", "1"])
        self.desktop.run(["xdotool", "mousemove", *map(str, BESIDE), "click", "1"])
        # The click on the island reaches the island alone, so the first click the window below
        # hears is the one beside it.
        self.assertEqual(read_line(backdrop.stdout, SOON), "button %d %d" % BESIDE)

if __name__ == "__main__":
    unittest.main()
