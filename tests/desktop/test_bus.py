"""Kelo on the session bus: kelo --toggle and kelo --add, kelo-core add while Kelo runs, the
TasksChanged signal; one Kelo per data file, each on a name of its own. Each desktop has a session
bus of its own."""

import json
import os
import subprocess

from desktop_rig import (CLOSED, CLOSED_WITH_TASKS, KELO, OPEN, SOON, DesktopTestCase, read_line,
                         now_utc, read_tasks, wait_until)

KELO_CORE = os.environ.get("KELO_CORE_BIN", "kelo-core")


def bus_name(data_file):
    """The documented name of the Kelo that holds a data file."""
    value = 0xcbf29ce484222325
    for byte in os.path.realpath(data_file).encode():
        value = ((value ^ byte) * 0x100000001b3) % (1 << 64)
    return "org.kelo.Kelo.d%016x" % value


class BusTest(DesktopTestCase):

    def kelo(self, *arguments, data_file=None):
        return subprocess.run([KELO, *arguments], capture_output=True, text=True, timeout=SOON,
                              env=dict(self.desktop.env, KELO_DATA=data_file or self.data_file))

    def kelo_core_add(self, lines, *options):
        return subprocess.run([KELO_CORE, "add", *options, self.data_file], env=self.desktop.env,
                              input="".join(json.dumps(line) + "\n" for line in lines),
                              capture_output=True, text=True, timeout=SOON)

    def start(self, name="todos.json"):
        self.data_file = os.path.join(self.desktop.scratch, name)
        kelo = self.desktop.start_kelo(self.data_file)
        island = kelo.window()
        self.assertIsland(island, CLOSED)
        return kelo, island

    def test_toggle_opens_and_closes_the_island_and_open_add_gives_it_the_keyboard(self):
        _, island = self.start()
        self.assertEqual(self.kelo("--toggle").returncode, 0)
        self.assertIsland(island, OPEN)
        self.assertEqual(self.kelo("--toggle").returncode, 0)
        self.assertIsland(island, CLOSED)

        self.desktop.run(["dbus-send", "--session", "--print-reply", "--dest=" + bus_name(
            self.data_file), "/org/kelo/Kelo", "org.kelo.Kelo1.OpenAdd"])
        self.assertIsland(island, OPEN)
        self.assertTrue(wait_until(lambda: self.desktop.active_window() == island))

    def test_the_command_line_answers_without_a_display_or_a_running_kelo(self):
        self.data_file = os.path.join(self.desktop.scratch, "todos.json")
        refusal = "Kelo: no Kelo runs with %s.\n" % self.data_file
        del self.desktop.env["DISPLAY"]
        for arguments, status, stdout, stderr in (
                (["--toggle"], 1, r"\A\Z", refusal),
                (["--add", "dentist fri 3pm"], 1, r"\A\Z", refusal),
                (["--version"], 0, r"\Akelo \d+\.\d+\.\d+\n\Z", ""),
                (["--help"], 0, r"\AUsage: kelo\n[\s\S]*Ctrl\+Alt\+T", "")):
            result = self.kelo(*arguments)
            self.assertEqual((result.returncode, result.stderr), (status, stderr), arguments)
            self.assertRegex(result.stdout, stdout)
        self.assertFalse(os.path.exists(self.data_file))

    def test_kelo_add_and_kelo_core_add_reach_the_running_kelo_and_the_signal_at_once(self):
        kelo, island = self.start()
        monitor = self.desktop.spawn(
            ["dbus-monitor", "--session", "type='signal',interface='org.kelo.Kelo1'"],
            env=self.desktop.env, stdout=subprocess.PIPE)
        self.assertIsNotNone(read_line(monitor.stdout, SOON))  # the monitor's own greeting
        self.assertEqual(self.kelo("--add", "water the plants").returncode, 0)
        self.assertEqual(self.kelo("--add", "   ").returncode, 1)
        self.assertIsland(island, CLOSED_WITH_TASKS)
        self.assertTrue(wait_until(lambda: "member=TasksChanged" in (
            read_line(monitor.stdout, 0.2) or "")), "no TasksChanged signal")

        result = self.kelo_core_add(["milk 5pm", "", "dentist fri 3pm"])
        self.assertEqual(result.returncode, 0, result.stderr)
        answers = [json.loads(line) for line in result.stdout.splitlines()]
        self.assertEqual(len(answers), 3)
        self.assertIsNone(answers[1])
        # Each answer is the task as the saved file holds it.
        tasks = read_tasks(self.data_file)
        self.assertEqual([answers[0], answers[2]], tasks[1:])
        today = now_utc()[0]
        self.assertEqual([(task["title"], task["day"], task.get("minute")) for task in tasks[:2]],
                         [("water the plants", today, None), ("milk", today, 1020)])

        # Kelo adds as its Today tab does, so a line meant for another tab is not forwarded.
        refused = self.kelo_core_add(["milk"], "--bucket", "backlog")
        self.assertEqual(refused.returncode, 1)
        self.assertIn("nothing was added", refused.stderr)
        self.assertEqual(len(read_tasks(self.data_file)), 3)
        self.assertIsNone(kelo.process.poll())

        # Without the running Kelo, kelo-core writes the file itself as before.
        kelo.process.terminate()
        kelo.process.wait()
        result = self.kelo_core_add(["bread"])
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual([task["title"] for task in read_tasks(self.data_file)],
                         ["water the plants", "milk", "dentist", "bread"])

    def test_a_second_kelo_on_the_same_file_is_refused_until_the_first_is_gone(self):
        # A relative path names the same file as the absolute one.
        first = self.desktop.start_kelo("lists/todos.json")
        first.window()
        data_file = os.path.join(self.desktop.scratch, "lists", "todos.json")
        self.assertTrue(os.path.exists(data_file + ".lock"))
        second = self.desktop.start_kelo(data_file)
        self.assertEqual(second.process.wait(timeout=SOON), 1)
        self.assertEqual(second.log().strip(), "Kelo: already running with %s." % data_file)
        self.assertIsNone(first.process.poll())
        first.process.kill()
        first.process.wait()
        self.desktop.start_kelo(data_file).window()

    def test_kelos_on_different_files_run_side_by_side_each_on_its_own_name(self):
        first, _ = self.start("a.json")
        first_file, second_file = self.data_file, os.path.join(self.desktop.scratch, "b.json")
        second = self.desktop.start_kelo(second_file)
        island = second.window()
        self.assertNotEqual(first.window(), island)
        # Ctrl+Alt+T is the first Kelo's, as it would be any other program's that held it.
        line = "Kelo: could not register ⌃⌥T (10). Click the notch instead."
        self.assertTrue(wait_until(lambda: line in second.log()), second.log())
        self.assertNotIn(line, first.log())
        self.assertIsland(island, CLOSED)
        names = lambda: self.desktop.run(["dbus-send", "--session", "--print-reply",
                                          "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                                          "org.freedesktop.DBus.ListNames"])
        self.assertTrue(wait_until(lambda: bus_name(second_file) in names()))
        self.assertIn(bus_name(first_file), names())

        self.assertEqual(self.kelo("--add", "only in b", data_file=second_file).returncode, 0)
        self.assertEqual([task["title"] for task in read_tasks(second_file)], ["only in b"])
        self.assertFalse(os.path.exists(first_file))
        self.assertIsNone(first.process.poll())

