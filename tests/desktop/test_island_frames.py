"""The island's window on a real X server: where it hangs, how big it is in each mode, and that
showing and hovering it never take the keyboard."""

import unittest

from desktop_rig import (ALERT, CLOSED, CLOSED_WITH_TASKS, PEEK, SCREEN_WIDTH, SETTLE,
                         DesktopTestCase, minute_now_utc, task, today_utc, wait_until)


class IslandFrameTest(DesktopTestCase):

    def start_other_application(self):
        _, window = self.desktop.start_helper("window")
        other = int(window)
        self.assertTrue(self.desktop.activate(other))
        return other

    def test_closed_island_hangs_from_the_top_centre_like_a_panel(self):
        other = self.start_other_application()
        kelo = self.desktop.start_kelo()
        island = kelo.window()
        self.assertTopCentre(self.desktop.geometry(island), CLOSED)

        properties = self.desktop.properties(island, "WM_CLASS", "_NET_WM_STATE",
                                             "_NET_WM_DESKTOP")
        self.assertIn('WM_CLASS(STRING) = "kelo", "kelo"', properties)
        for state in ("_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR",
                      "_NET_WM_STATE_SKIP_PAGER"):
            self.assertIn(state, properties)
        self.assertIn("_NET_WM_DESKTOP(CARDINAL) = 4294967295", properties)
        # Appearing must not take the keyboard from the application in use.
        self.assertEqual(self.desktop.active_window(), other)
        # Nor may the application in use cover it when it comes to the front.
        self.assertTrue(self.desktop.activate(other))
        stacking = self.desktop.stacking()
        self.assertGreater(stacking.index(island), stacking.index(other))

    def test_the_island_is_a_black_notch_on_a_transparent_window(self):
        self.desktop.move_pointer(SCREEN_WIDTH // 2, 600)
        island = self.desktop.start_kelo().window()
        self.assertEqual(self.desktop.wait_for_size(island, CLOSED), CLOSED)
        width, height = CLOSED
        opaque_black, clear = (255, 0, 0, 0), (0, 0, 0, 0)
        self.assertTrue(wait_until(lambda: self.desktop.pixel(island, width // 2, height // 2)
                                   == opaque_black), "the island is not drawn")
        # Flaring out along the screen's top edge; rounded below.
        self.assertEqual(self.desktop.pixel(island, 5, 0), opaque_black)
        self.assertEqual(self.desktop.pixel(island, width - 6, 0), opaque_black)
        self.assertEqual(self.desktop.pixel(island, 0, height - 1), clear)
        self.assertEqual(self.desktop.pixel(island, width - 1, height - 1), clear)

    def test_the_closed_island_is_wider_when_today_has_tasks(self):
        data = self.desktop.write_data("todos.json", [task("water the plants", day=today_utc())])
        island = self.desktop.start_kelo(data).window()
        self.assertEqual(self.desktop.wait_for_size(island, CLOSED_WITH_TASKS), CLOSED_WITH_TASKS)
        self.assertTopCentre(self.desktop.geometry(island), CLOSED_WITH_TASKS)

    def test_hovering_peeks_and_leaving_closes_without_taking_the_keyboard(self):
        other = self.start_other_application()
        self.desktop.move_pointer(SCREEN_WIDTH // 2, 600)
        island = self.desktop.start_kelo().window()
        self.assertEqual(self.desktop.wait_for_size(island, CLOSED), CLOSED)

        self.desktop.move_pointer(SCREEN_WIDTH // 2, 5)
        self.assertEqual(self.desktop.wait_for_size(island, PEEK), PEEK)
        self.assertTopCentre(self.desktop.geometry(island), PEEK)
        self.assertEqual(self.desktop.active_window(), other)

        self.desktop.move_pointer(SCREEN_WIDTH // 2, 600)
        self.assertEqual(self.desktop.wait_for_size(island, CLOSED), CLOSED)
        self.assertTopCentre(self.desktop.geometry(island), CLOSED)
        self.assertEqual(self.desktop.active_window(), other)

    def test_a_pointer_passing_quickly_does_not_peek(self):
        self.desktop.move_pointer(SCREEN_WIDTH // 2, 600)
        island = self.desktop.start_kelo().window()
        self.assertEqual(self.desktop.wait_for_size(island, CLOSED), CLOSED)
        self.desktop.run(["xdotool", "mousemove", str(SCREEN_WIDTH // 2), "5",
                          "mousemove", str(SCREEN_WIDTH // 2), "600"])
        self.assertFalse(wait_until(lambda: self.desktop.size(island) != CLOSED, bound=SETTLE))

    def test_a_task_due_at_launch_alerts_at_once(self):
        minute = minute_now_utc()
        if minute == 1439:
            self.skipTest("the day ends within the minute")
        data = self.desktop.write_data("todos.json",
                                       [task("call the plumber", day=today_utc(), minute=minute)])
        island = self.desktop.start_kelo(data).window()
        # The alert closes by itself after 12 s; the first tick raises it well before.
        self.assertEqual(self.desktop.wait_for_size(island, ALERT), ALERT)
        self.assertTopCentre(self.desktop.geometry(island), ALERT)

    def test_a_top_panel_sets_the_notch_height_and_the_island_follows(self):
        island = self.desktop.start_kelo().window()
        self.assertEqual(self.desktop.wait_for_size(island, CLOSED), CLOSED)
        self.desktop.start_helper("panel", "30")
        taller = (CLOSED[0], 30)
        self.assertEqual(self.desktop.wait_for_size(island, taller), taller)
        # Openbox keeps a tenth of an ordinary window out of a panel's strip and so moves the
        # island down by 3 pixels; only the centring is the island's own here.
        x, _, _, _ = self.desktop.geometry(island)
        self.assertEqual(x, (SCREEN_WIDTH - taller[0]) // 2)


if __name__ == "__main__":
    unittest.main()
