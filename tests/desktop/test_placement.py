"""The island under any window manager: one still window at the top centre, above the windows in
use and in no task bar, painting nothing around the island and letting clicks there through."""


from desktop_rig import (BLACK, CLOSED, NOTCH_HEIGHT, SCREEN_WIDTH, WINDOW, DesktopTestCase, saw,
                         wait_until)

# Inside the island's window, well beside the closed island.
BESIDE = ((SCREEN_WIDTH - WINDOW[0]) // 2 + 20, 100)
ISLAND_TOP = (SCREEN_WIDTH // 2, 12)


class PlacementTest(DesktopTestCase):

    def test_the_island_hangs_from_the_top_centre_above_the_window_in_use(self):
        # The application lies under the island's window, so the click below reaches it there.
        other, window = self.start_other_application("600x400+300+0")
        island = self.desktop.start_kelo().window()
        self.assertStill(island)
        self.assertIsland(island, CLOSED)
        properties = self.desktop.properties(island, "WM_CLASS", "_NET_WM_STATE")
        self.assertIn('WM_CLASS(STRING) = "kelo", "kelo"', properties)
        for state in ("_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"):
            self.assertIn(state, properties)
        # Appearing must not take the keyboard from the application in use.
        self.assertEqual(self.desktop.active_window(), window)

        # A click beside the island reaches the application and raises it, but not over the island.
        self.desktop.point(*BESIDE, click=1)
        self.assertTrue(saw(other, "root:(%d,%d)" % BESIDE), "the click did not get through")
        self.assertTrue(wait_until(lambda: self.desktop.screen_pixel(*ISLAND_TOP) == BLACK),
                        "the island is under the application")
        self.assertStill(island)

    def test_nothing_around_the_island_is_painted(self):
        self.desktop.start_white_desktop()
        island = self.desktop.start_kelo().window()
        self.assertIsland(island, CLOSED)
        left, _, width, _ = self.desktop.island(island)
        self.assertTrue(wait_until(lambda: self.desktop.screen_pixel(*ISLAND_TOP) == BLACK),
                        "the island is not drawn")
        # Beside the closed island, beside the body's straight sides, in its rounded corners.
        for x, y in (BESIDE, (left + 1, NOTCH_HEIGHT // 2), (left + 1, NOTCH_HEIGHT - 2),
                     (left + width - 2, NOTCH_HEIGHT - 2)):
            self.assertNotEqual(self.desktop.screen_pixel(x, y), BLACK, "painted at %d, %d" % (x, y))

