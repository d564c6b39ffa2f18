"""The drawn island on a real X server, used with the pointer as a person would: a click opens
it, the island's menu quits Kelo, and an alert's Done completes its task in the data file."""

import time
import unittest

from desktop_rig import (ALERT, CLOSED_WITH_TASKS, OPEN, SCREEN_WIDTH, SETTLE, SOON,
                         DesktopTestCase, minute_now_utc, read_tasks, task, today_utc, wait_until)


class IslandViewsTest(DesktopTestCase):

    def test_a_click_opens_the_closed_island_and_its_menu_quits_kelo(self):
        data = self.desktop.write("todos.json", [task("water the plants", day=today_utc())])
        kelo = self.desktop.start_kelo(data)
        island = kelo.window()
        self.assertIsland(self.desktop.wait_for_island(island, CLOSED_WITH_TASKS),
                          CLOSED_WITH_TASKS)
        self.desktop.click(SCREEN_WIDTH // 2, 10)
        self.assertIsland(self.desktop.wait_for_island(island, OPEN), OPEN)

        self.desktop.click(SCREEN_WIDTH // 2, 10, button=3)
        menu = wait_until(lambda: len(self.desktop.run(
            ["xdotool", "search", "--onlyvisible", "--pid", str(kelo.process.pid), "--class",
             "^kelo$"], check=False).split()) > 1)
        self.assertTrue(menu, "no menu appeared")
        # The menu is keyboard navigable: upwards from the top wraps to "Quit Kelo".
        self.desktop.key("Up", "Return")
        self.assertEqual(kelo.process.wait(timeout=SOON), 0)

    def test_done_in_an_alert_completes_the_task(self):
        minute = minute_now_utc()
        if minute == 1439:
            self.skipTest("the day ends within the minute")
        data = self.desktop.write("todos.json",
                                       [task("call the plumber", day=today_utc(), minute=minute)])
        island = self.desktop.start_kelo(data).window()
        self.assertIsland(self.desktop.wait_for_island(island, ALERT), ALERT)
        # The island's shape takes the alert's size at once; the drawing springs into it.
        time.sleep(SETTLE)
        # "Done" sits at the right end of the alert's second row.
        width, height = ALERT
        self.desktop.click((SCREEN_WIDTH + width) // 2 - 40, height - 30)

        self.assertTrue(wait_until(lambda: "doneAt" in read_tasks(data)[0]),
                        "the data file does not show the task done")


if __name__ == "__main__":
    unittest.main()
