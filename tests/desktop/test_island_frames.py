"""The island's shape on a real X server: how big it is in each mode, that hovering is the
pointer entering its outline and never takes the keyboard, and that it follows a compositor
starting and stopping."""

import os
import unittest

from desktop_rig import (ALERT, CLOSED, CLOSED_WITH_TASKS, NOTCH_HEIGHT, PEEK, SCREEN_WIDTH,
                         SETTLE, WINDOW, DesktopTestCase, island_matches, minute_now_utc, task,
                         today_utc, wait_until)

FAR_BELOW = (SCREEN_WIDTH // 2, 600)


class IslandFrameTest(DesktopTestCase):

    def start_other_application(self):
        _, window = self.desktop.start_helper("window")
        other = int(window)
        self.assertTrue(self.desktop.activate(other))
        return other

    def test_the_closed_island_is_wider_when_today_has_tasks(self):
        data = self.desktop.write_data("todos.json", [task("water the plants", day=today_utc())])
        island = self.desktop.start_kelo(data).window()
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED_WITH_TASKS),
                          CLOSED_WITH_TASKS)

    def test_hovering_the_outline_peeks_and_leaving_closes_without_taking_the_keyboard(self):
        other = self.start_other_application()
        self.desktop.move_pointer(*FAR_BELOW)
        island = self.desktop.start_kelo().window()
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED), CLOSED)

        # Over the island's window, beside the island: nothing happens.
        self.desktop.move_pointer((SCREEN_WIDTH - WINDOW[0]) // 2 + 20, NOTCH_HEIGHT // 2)
        self.assertFalse(wait_until(lambda: not island_matches(self.desktop.island(island), CLOSED),
                                    bound=SETTLE), "the island peeked beside its outline")

        self.desktop.move_pointer(SCREEN_WIDTH // 2, 5)
        self.assertIsland(self.desktop.wait_for_island(island, PEEK), PEEK)
        self.assertEqual(self.desktop.active_window(), other)

        self.desktop.move_pointer(*FAR_BELOW)
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED), CLOSED)
        self.assertEqual(self.desktop.active_window(), other)
        self.assertStill(island)

    def test_a_pointer_passing_quickly_does_not_peek(self):
        self.desktop.move_pointer(*FAR_BELOW)
        island = self.desktop.start_kelo().window()
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED), CLOSED)
        self.desktop.run(["xdotool", "mousemove", str(SCREEN_WIDTH // 2), "5",
                          "mousemove", *map(str, FAR_BELOW)])
        self.assertFalse(wait_until(lambda: not island_matches(self.desktop.island(island), CLOSED),
                                    bound=SETTLE))

    def test_a_task_due_at_launch_alerts_at_once(self):
        minute = minute_now_utc()
        if minute == 1439:
            self.skipTest("the day ends within the minute")
        data = self.desktop.write_data("todos.json",
                                       [task("call the plumber", day=today_utc(), minute=minute)])
        island = self.desktop.start_kelo(data).window()
        # The alert closes by itself after 12 s; the first tick raises it well before.
        self.assertIsland(self.desktop.wait_for_island(island, ALERT), ALERT)

    def test_a_top_panel_sets_the_notch_height_and_the_island_follows(self):
        island = self.desktop.start_kelo().window()
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED), CLOSED)
        self.desktop.start_helper("panel", "30")
        taller = (CLOSED[0], 30)
        self.assertIsland(self.desktop.wait_for_island(island, taller), taller)
        self.assertStill(island)


class CompositorTest(DesktopTestCase):
    """Only with a compositor does the window's alpha show: then the shape also holds the
    island's antialiased edge, and a glass island asks for the blur behind it."""

    def setUp(self):
        super().setUp()
        folder = os.path.join(self.desktop.scratch, "config", "Kelo")
        os.makedirs(folder)
        with open(os.path.join(folder, "Kelo.conf"), "w", encoding="utf-8") as f:
            f.write("[General]\ntheme=glass\n")

    def composited(self, island):
        shape = self.desktop.shape(island)
        return shape["bounding"] != shape["input"]

    def blur_requested(self, island):
        return "_KDE_NET_WM_BLUR_BEHIND_REGION(CARDINAL)" in self.desktop.properties(
            island, "_KDE_NET_WM_BLUR_BEHIND_REGION")

    def test_the_shape_and_the_glass_follow_the_compositor(self):
        self.desktop.move_pointer(*FAR_BELOW)
        island = self.desktop.start_kelo().window()
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED), CLOSED)
        compositor = None
        if not self.desktop.compositing():
            self.assertFalse(self.composited(island))
            compositor = self.desktop.spawn(["xcompmgr"], env=self.desktop.env)
        self.assertTrue(wait_until(lambda: self.composited(island)), "the compositor went unseen")
        # The closed island is always black; a peeking one shows the glass.
        self.assertFalse(self.blur_requested(island))
        self.desktop.move_pointer(SCREEN_WIDTH // 2, 5)
        self.assertIsland(self.desktop.wait_for_island(island, PEEK), PEEK)
        self.assertTrue(wait_until(lambda: self.blur_requested(island)))
        if compositor is None:
            return
        compositor.terminate()
        compositor.wait()
        self.assertTrue(wait_until(lambda: not self.blur_requested(island)))
        self.assertTrue(wait_until(lambda: not self.composited(island)))


if __name__ == "__main__":
    unittest.main()
