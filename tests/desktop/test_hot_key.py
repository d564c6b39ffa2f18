"""Ctrl+Alt+T on a real X server: it opens the island with the keyboard, and closing hands the
keyboard back to the application that had it."""


from desktop_rig import CLOSED, OPEN, DesktopTestCase, saw, wait_until


class HotKeyTest(DesktopTestCase):

    def test_each_way_of_closing_hands_the_keyboard_back(self):
        other, window = self.start_other_application()
        island = self.desktop.start_kelo().window()
        self.desktop.key("Caps_Lock")  # which must not stop the hot key
        self.open_with_hot_key(island)
        self.desktop.key("Caps_Lock", "Escape")
        # The shape keeps the open island while the view animates down.
        self.assertIsland(island, OPEN)
        for close in (None, lambda: self.desktop.key("ctrl+alt+t"),
                      lambda: self.desktop.activate(window)):
            if close:
                self.open_with_hot_key(island)
                close()
            self.assertTrue(wait_until(lambda: self.desktop.active_window() == window),
                            "the keyboard did not go back")
            self.desktop.key("x")
            self.assertTrue(saw(other, "keysym 0x78, x"), "the application receives no keys")
            self.assertIsland(island, CLOSED)
            self.assertStill(island)
        self.assertStaysClosed(island, "the island opened again")

    def test_closing_lets_go_of_the_keyboard_when_no_application_had_it(self):
        kelo = self.desktop.start_kelo()
        island = kelo.window()
        self.assertIsNone(self.desktop.active_window())
        self.open_with_hot_key(island)
        self.desktop.key("Escape")
        # With no window to hand back to, the window manager may leave _NET_ACTIVE_WINDOW as it
        # was; the input focus shows where the keyboard went.
        focus = lambda: self.desktop.run(["xdotool", "getwindowfocus"], check=False).strip()
        self.assertTrue(wait_until(lambda: focus() != str(island)), "the island kept the keyboard")
        # Letting go unmaps and maps the window again; it must come back as the same panel.
        self.assertEqual(kelo.window(), island)
        self.assertIsland(island, CLOSED)
        self.assertStill(island)
        properties = self.desktop.properties(island, "_NET_WM_STATE", "_NET_WM_DESKTOP")
        for state in ("_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR",
                      "_NET_WM_STATE_SKIP_PAGER"):
            self.assertIn(state, properties)
        self.assertIn("_NET_WM_DESKTOP(CARDINAL) = 4294967295", properties)

