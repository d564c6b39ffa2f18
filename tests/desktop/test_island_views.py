"""The drawn island on a real X server, used as a person would: a click opens it, the island's
menu quits Kelo, an alert's Done completes its task in the data file, a dead key composes in the
add field, and the open island is as tall as its list. (The self-check and the view tests type and
click through Qt; these go through the X server.)"""

import time

from desktop_rig import (ALERT, CLOSED_WITH_TASKS, NOTCH_HEIGHT, OPEN, SCREEN_WIDTH, SETTLE, SOON,
                         DesktopTestCase, now_utc, read_tasks, task, wait_until)

# Where the open island's list starts: below the header, as high as the notch, then 10 apart the
# add field (36 high) and the list.
LIST_TOP = NOTCH_HEIGHT + 10 + 36 + 10
ROW = 30


class IslandViewsTest(DesktopTestCase):

    def test_a_click_opens_the_closed_island_and_its_menu_quits_kelo(self):
        data = self.desktop.write("todos.json", [task("water the plants", day=now_utc()[0])])
        kelo = self.desktop.start_kelo(data)
        island = kelo.window()
        self.assertIsland(island, CLOSED_WITH_TASKS)
        self.desktop.point(SCREEN_WIDTH // 2, 10, click=1)
        self.assertIsland(island, OPEN)

        self.desktop.point(SCREEN_WIDTH // 2, 10, click=3)
        self.assertTrue(wait_until(lambda: len(kelo.windows()) > 1), "no menu appeared")
        # The menu is keyboard navigable: upwards from the top wraps to "Quit Kelo".
        self.desktop.key("Up", "Return")
        self.assertEqual(kelo.process.wait(timeout=SOON), 0)

    def test_done_in_an_alert_completes_the_task(self):
        today, minute = now_utc()
        if minute == 1439:
            self.skipTest("the day ends within the minute")
        data = self.desktop.write("todos.json", [task("call the plumber", day=today, minute=minute)])
        island = self.desktop.start_kelo(data).window()
        self.assertIsland(island, ALERT)
        # The island's shape takes the alert's size at once; the drawing springs into it.
        time.sleep(SETTLE)
        # "Done" sits at the right end of the alert's second row.
        self.desktop.point((SCREEN_WIDTH + ALERT[0]) // 2 - 40, ALERT[1] - 30, click=1)

        self.assertTrue(wait_until(lambda: "doneAt" in read_tasks(data)[0]),
                        "the data file does not show the task done")

    def open_with_tasks(self, tasks=()):
        data = self.desktop.write("todos.json", list(tasks))
        island = self.desktop.start_kelo(data).window()
        self.open_with_hot_key(island)
        time.sleep(SETTLE)
        return data, island

    def test_a_dead_key_composes_in_the_field(self):
        # On the US international layout the apostrophe key is a dead acute: ' then e types é.
        # (xdotool asked for "apostrophe" would map a spare key to a plain one.)
        self.desktop.run(["setxkbmap", "-layout", "us", "-variant", "intl"])
        data, _ = self.open_with_tasks()
        self.desktop.key("dead_acute", "e", "c", "a", "f", "dead_acute", "e", "Return")
        self.assertTrue(wait_until(lambda: [task["title"] for task in read_tasks(data)] == [
            "écafé"]), read_tasks(data))

    def test_the_open_island_is_as_tall_as_its_list_up_to_the_limit(self):
        heights = []
        for count in (3, 6, 30):
            _, island = self.open_with_tasks([task("idea %d" % n) for n in range(count)])
            self.desktop.key("ctrl+3")
            seen = [None, None]  # its height, until three looks in a row agree
            wait_until(lambda: seen.append(self.desktop.island(island)[3]) or
                       seen[-1] == seen[-2] == seen[-3], step=0.3)
            heights.append(seen[-1])
            self.desktop.close()
            self.setUp()
        # Three more rows of 30 with 2 between; then at most 330 of list, and 14 below it.
        self.assertEqual(heights[1] - heights[0], 3 * (ROW + 2))
        self.assertEqual(heights[2], LIST_TOP + 330 + 14)

