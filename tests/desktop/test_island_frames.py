"""The island's shape on a real X server: how big it is in each mode, that hovering is the
pointer entering its outline and never takes the keyboard, and that it follows a top panel and a
compositor starting and stopping."""

import time

from desktop_rig import (BLACK, CLOSED, NOTCH_HEIGHT, PEEK, SCREEN_WIDTH, SETTLE, WINDOW,
                         DesktopTestCase, wait_until)

FAR_BELOW = (SCREEN_WIDTH // 2, 600)


class IslandFrameTest(DesktopTestCase):

    def start_closed(self):
        self.desktop.point(*FAR_BELOW)
        island = self.desktop.start_kelo().window()
        self.assertIsland(island, CLOSED)
        return island

    def test_hovering_the_outline_peeks_and_leaving_closes_without_taking_the_keyboard(self):
        _, other = self.start_other_application()
        island = self.start_closed()
        self.desktop.point((SCREEN_WIDTH - WINDOW[0]) // 2 + 20, NOTCH_HEIGHT // 2)
        self.assertStaysClosed(island, "the island peeked beside its outline")
        self.desktop.point(SCREEN_WIDTH // 2, 5)
        self.assertIsland(island, PEEK)
        self.assertEqual(self.desktop.active_window(), other)
        self.desktop.point(*FAR_BELOW)
        self.assertIsland(island, CLOSED)
        self.assertEqual(self.desktop.active_window(), other)
        self.assertStill(island)

        self.desktop.run(["xdotool", "mousemove", str(SCREEN_WIDTH // 2), "5",
                          "mousemove", *map(str, FAR_BELOW)])
        self.assertStaysClosed(island, "a pointer passing quickly peeked")

    def test_a_top_panel_sets_the_notch_height_and_the_island_follows(self):
        island = self.start_closed()
        _, panel = self.start_other_application("%dx30+0+0" % (SCREEN_WIDTH - 200))
        # It reserves those 30 pixels at the top of the screen, as a panel does.
        self.desktop.run(["xprop", "-id", str(panel), "-f", "_NET_WM_STRUT_PARTIAL", "32c", "-set",
                          "_NET_WM_STRUT_PARTIAL", "0,0,30,0,0,0,0,0,0,%d,0,0" % (SCREEN_WIDTH - 1)])
        self.assertIsland(island, (CLOSED[0], 30))
        self.assertStill(island)


class CompositorTest(DesktopTestCase):
    """Only with a compositor does the window's alpha show: then the shape also holds the
    island's antialiased edge, and the glass island shows the desktop through, blurred."""

    def composited(self, island):
        shape = self.desktop.shape(island)
        return shape["bounding"] != shape["input"]

    def blur_requested(self, island):
        return "_KDE_NET_WM_BLUR_BEHIND_REGION(CARDINAL)" in self.desktop.properties(
            island, "_KDE_NET_WM_BLUR_BEHIND_REGION")

    def open_glass(self, island):
        """The open island's pixel near its bottom left corner, where nothing is drawn on it."""
        self.open_with_hot_key(island)
        time.sleep(SETTLE)
        x, _, _, height = self.desktop.island(island)
        return self.desktop.screen_pixel(x + 30, height - 6)

    def test_the_shape_and_the_glass_follow_the_compositor(self):
        self.desktop.write("config/Kelo/Kelo.conf", "[General]\ntheme=glass\nglassLook=dark\n")
        self.desktop.start_white_desktop()
        self.desktop.point(SCREEN_WIDTH // 2, 600)
        island = self.desktop.start_kelo().window()
        self.assertIsland(island, CLOSED)
        compositor = None
        if not self.desktop.compositing():
            self.assertFalse(self.composited(island))
            self.assertEqual(self.open_glass(island), BLACK)
            self.desktop.key("Escape")
            self.assertIsland(island, CLOSED)
            compositor = self.desktop.spawn(["xcompmgr"], env=self.desktop.env)
        self.assertTrue(wait_until(lambda: self.composited(island)), "the compositor went unseen")
        # The closed island is always black; a peeking one shows the glass.
        self.assertFalse(self.blur_requested(island))
        self.desktop.point(SCREEN_WIDTH // 2, 5)
        self.assertIsland(island, PEEK)
        self.assertTrue(wait_until(lambda: self.blur_requested(island)))
        # Dark glass over the white desktop: grey, neither black nor white.
        self.assertTrue(all(40 < value < 200 for value in self.open_glass(island)))
        if compositor:
            compositor.terminate()
            self.assertTrue(wait_until(lambda: not self.blur_requested(island)))
            self.assertTrue(wait_until(lambda: not self.composited(island)))

