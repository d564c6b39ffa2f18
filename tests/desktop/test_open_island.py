"""The open island on a real X server, used as a person would: typing with a dead key, the tabs'
keys, a row's buttons under the pointer, the toast's Undo, and an island as tall as its list. (The
self-check and the view tests type and click through Qt; these go through the X server.)"""

import time
import unittest

from desktop_rig import (NOTCH_HEIGHT, SCREEN_WIDTH, SETTLE, DesktopTestCase, read_tasks, task,
                         wait_until)

# Where the open island's parts are, from its top left corner: 20 points of padding, the header
# as high as the notch, then 10 apart the add field (36 high) and the list.
PADDING = 20
LIST_TOP = NOTCH_HEIGHT + 10 + 36 + 10
ROW = 30
ISLAND_WIDTH = 185 + 460


class OpenIslandTest(DesktopTestCase):

    def setUp(self):
        super().setUp()
        self.start_other_application()

    def open(self, tasks=()):
        self.data = self.desktop.write("todos.json", list(tasks))
        self.island = self.desktop.start_kelo(self.data).window()
        self.open_with_hot_key(self.island)
        time.sleep(SETTLE)

    def tasks(self):
        return read_tasks(self.data)

    def wait_for_tasks(self, probe):
        self.assertTrue(wait_until(lambda: probe(self.tasks())), self.tasks())

    def click(self, x, y):
        """Points at x, y from the island's top left corner, as a person would, then clicks."""
        left = (SCREEN_WIDTH - ISLAND_WIDTH) // 2
        self.desktop.move_pointer(left + x, y)
        time.sleep(0.3)
        self.desktop.run(["xdotool", "click", "1"])

    def settled_height(self):
        """The open island's height once it has stopped changing."""
        heights = [None, None]

        def still():
            heights.append(self.desktop.island(self.island)[3])
            return heights[-1] == heights[-2] == heights[-3]
        wait_until(still, step=0.3)
        return heights[-1]

    def test_a_dead_key_composes_in_the_field(self):
        # On the US international layout the apostrophe key is a dead acute: ' then e types é.
        # (xdotool asked for "apostrophe" would map a spare key to a plain one.)
        self.desktop.run(["setxkbmap", "-layout", "us", "-variant", "intl"])
        self.open()
        self.desktop.key("dead_acute", "e", "c", "a", "f", "dead_acute", "e", "Return")
        self.wait_for_tasks(lambda tasks: [task["title"] for task in tasks] == ["écafé"])

    def test_delete_then_undo_brings_the_task_back(self):
        original = task("learn Rust")
        self.open([original])
        self.desktop.key("ctrl+3")
        time.sleep(SETTLE)
        # The row's buttons show under the pointer; Delete is the last.
        self.click(ISLAND_WIDTH - PADDING - 10 - 12, LIST_TOP + ROW // 2)
        self.wait_for_tasks(lambda tasks: tasks == [])
        # The toast is the last thing in the island: Undo at its right end.
        island_height = self.settled_height()
        self.click(ISLAND_WIDTH - PADDING - 12 - 14, island_height - 14 - 15)
        self.wait_for_tasks(lambda tasks: tasks == [original])

    def test_the_island_is_as_tall_as_its_list_up_to_the_limit(self):
        heights = []
        for count in (3, 6, 30):
            self.open([task("idea %d" % n) for n in range(count)])
            self.desktop.key("ctrl+3")
            heights.append(self.settled_height())
            self.desktop.close()
            self.setUp()
        # Three more rows of 30 with 2 between; then at most 330 of list, and 14 below it.
        self.assertEqual(heights[1] - heights[0], 3 * (ROW + 2))
        self.assertEqual(heights[2], LIST_TOP + 330 + 14)


if __name__ == "__main__":
    unittest.main()
