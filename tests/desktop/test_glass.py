"""The glass island on the screen: translucent where a compositor runs, the standard black island
where none does."""

import os
import time
import unittest

from desktop_rig import OPEN, SCREEN_WIDTH, SETTLE, DesktopTestCase, wait_until

GLASS = b"[General]\ntheme=glass\nglassLook=dark\n"


class GlassTest(DesktopTestCase):

    def open_glass_island(self):
        folder = os.path.join(self.desktop.scratch, "config", "Kelo")
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, "Kelo.conf"), "wb") as f:
            f.write(GLASS)
        island = self.desktop.start_kelo().window()
        self.desktop.key("ctrl+alt+t")
        self.assertIsland(self.desktop.wait_for_island(island, OPEN), OPEN)
        time.sleep(SETTLE)
        x, _, width, height = self.desktop.island(island)
        # Inside the body near its bottom left corner, where nothing is drawn on it.
        return self.desktop.screen_pixel(x + 30, height - 6)

    def test_with_a_compositor_the_desktop_shows_through(self):
        self.desktop.spawn(["xcompmgr"], env=self.desktop.env)
        self.assertTrue(wait_until(self.desktop.compositing), "xcompmgr did not start")
        red, green, blue = self.open_glass_island()
        # Dark glass over the white desktop: grey, neither black nor white.
        self.assertTrue(40 < red < 200 and 40 < green < 200 and 40 < blue < 200,
                        (red, green, blue))

    def test_without_one_the_glass_theme_draws_the_black_island(self):
        self.assertFalse(self.desktop.compositing())
        self.assertEqual(self.open_glass_island(), (0, 0, 0))


if __name__ == "__main__":
    unittest.main()
