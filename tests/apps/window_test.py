#!/usr/bin/env python3
"""The program in a real window: keys that a user presses, through the display server."""

import os
import shutil
import struct
import subprocess
import time
import unittest

from support import Case, MAKE_DESK, PROGRAM, TIME_LIMIT

TOOLS = ("Xvfb", "xdotool")


@unittest.skipUnless(all(shutil.which(tool) for tool in TOOLS), "needs " + " and ".join(TOOLS))
class WindowTest(Case):
    def setUp(self):
        super().setUp()
        # The display server chooses a free number and tells it.
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1300x850x24", "-nolisten", "tcp",
             "-fbdir", str(self.folder)],
            pass_fds=(writing,), stderr=subprocess.DEVNULL)
        os.close(writing)
        self.addCleanup(self.stop, self.server)
        with os.fdopen(reading) as told:
            number = told.readline().strip()
        self.assertTrue(number, "the display server didn't start")
        # The system's libraries behind the window keep memory to the end.
        self.environment.update(DISPLAY=":" + number, SDL_VIDEODRIVER="x11", ASAN_OPTIONS="detect_leaks=0")
        self.profile = self.folder / "settings.ini"

    @staticmethod
    def stop(process):
        process.kill()
        process.wait()

    def start(self, *arguments):
        program = subprocess.Popen([PROGRAM, "--profile", str(self.profile), *arguments], env=self.environment,
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.addCleanup(program.stdout.close)
        self.addCleanup(self.stop, program)
        window = self.eventually("the window opens", lambda: self.find_window(program))
        # There is no window manager that would give it the keyboard.
        self.xdo("windowfocus", window)
        return program

    def xdo(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=self.environment, check=False, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout.split()

    def find_window(self, program):
        if program.poll() is not None:
            self.fail("the program ended early: " + program.stdout.read().decode(errors="replace"))
        found = self.xdo("search", "--onlyvisible", "--name", "vondrake$")
        return found[0] if found else None

    def eventually(self, what, condition, limit=TIME_LIMIT):
        end = time.monotonic() + limit
        while time.monotonic() < end:
            answer = condition()
            if answer:
                return answer
            time.sleep(0.1)
        self.fail("never happened: " + what)

    def screen(self):
        """The rows of the display's picture, each pixel four bytes."""
        data = (self.folder / "Xvfb_screen0").read_bytes()
        header = struct.unpack_from(">25L", data)
        size, height, stride, colours = header[0], header[5], header[12], header[19]
        begin = size + 12 * colours
        return [data[begin + y * stride:begin + (y + 1) * stride] for y in range(height)]

    def part(self, window, box):
        """The pixels of a box (left, top, right, bottom) of the window."""
        place = dict(line.split("=") for line in self.xdo("getwindowgeometry", "--shell", window))
        left, top = int(place["X"]), int(place["Y"])
        rows = self.screen()[top + box[1]:top + box[3]]
        return [row[4 * (left + box[0]):4 * (left + box[2])] for row in rows]

    def settings(self):
        return self.profile.read_text() if self.profile.exists() else ""

    def enter(self, line):
        self.xdo("type", "--delay", "20", "--", line)
        self.xdo("key", "Return")

    def quit(self, program):
        self.enter("QUIT")
        # A key that is lost while a window comes up is no fault of ours: the line is typed again.
        def ended():
            if program.poll() is None:
                self.xdo("key", "Escape")
                self.enter("QUIT")
                time.sleep(1)
            return program.poll() is not None
        self.eventually("QUIT ends the program", ended)
        self.assertEqual(program.returncode, 0, program.stdout.read().decode(errors="replace"))

    def test_tips_greet_once_by_keyboard(self):
        program = self.start()

        def ticked():
            # From OK over the text to the box; the keys wait until the dialog is there.
            if "DoNotShow=1" not in self.settings():
                self.xdo("key", "Tab", "Tab", "space", "Tab")
                time.sleep(0.5)
            return "DoNotShow=1" in self.settings()

        self.eventually("ticking the box is kept", ticked)
        self.xdo("key", "Return")
        self.quit(program)
        self.assertIn("DoNotShow=1", self.settings())
        # The second start goes straight to the command line.
        program = self.start("--scale", "2")
        self.quit(program)
        self.assertIn("DoNotShow=1", self.settings())

    def test_commands_are_typed_and_answered(self):
        self.profile.write_text("[Vondrake]\nDoNotShow=1\n")
        drawing = self.folder / "made.dwg"
        program = self.start()
        time.sleep(2)  # until the module has loaded; typing earlier is kept, but may be cut
        self.enter("CIRCLE 5,5 2")
        self.xdo("key", "ctrl+s")  # it has no name yet: the dialog asks for one
        time.sleep(1)
        self.enter(str(drawing))
        self.eventually("the drawing is saved", drawing.exists)
        self.quit(program)

    def test_attributes_are_edited_by_mouse_and_keys(self):
        self.profile.write_text("[Vondrake]\nDoNotShow=1\n")
        self.batch(MAKE_DESK)
        # The window is as large as the screen that dialogs stand on in batch, so the dialog's place is the same.
        self.batch("DDATTE 25,7\nPICTURE place.png\nCLICK \"Cancel\"\n", "plan.dwg")
        width, height = struct.unpack_from(">2L", (self.folder / "place.png").read_bytes(), 16)
        left, top = (1280 - width) // 2, (800 - height) // 2
        program = self.start(str(self.folder / "plan.dwg"))
        window = self.find_window(program)

        def values():
            return [a["text"] for r in self.facts("plan.dwg")["references"] for a in r["attributes"]]

        def edited():
            # From the first value by Enter to the second, and from there by Enter to OK. Keys that came too early for
            # the dialog have been taken for a command, which Escape leaves.
            self.xdo("key", "Escape")
            self.enter("DDATTE")
            self.enter("25,7")
            time.sleep(1)
            self.xdo("mousemove", "--window", window, str(left + width // 2), str(top + 75), "click", "1")
            self.enter("A 42")
            self.enter("Lab")
            time.sleep(1)
            self.enter("QSAVE")
            time.sleep(1)
            return values() == ["A 42", "Lab"]

        self.eventually("the values are in the drawing", edited)
        self.quit(program)

    def test_block_is_inserted_at_a_point_of_the_mouse(self):
        self.profile.write_text("[Vondrake]\nDoNotShow=1\n")
        self.batch("LINE 0,0 120,0 120,60 0,60 C\nLINE 0,0 8,0 8,8 0,8 C\n-BLOCK CHAIR 0,0 0,4 4,0 8,4 4,8\n\n"
                   "ZOOM E\nSAVEAS 2000 room.dwg\n")
        room = self.folder / "room.dwg"
        program = self.start(str(room))
        window = self.find_window(program)
        middle = (640, 350)
        # The block goes to the right and up from the point, the rest of the room stays as it is.
        around = (middle[0] - 20, middle[1] - 120, middle[0] + 120, middle[1] + 20)
        # Away from it, so that the cross-hair isn't in the picture.
        self.xdo("mousemove", "--window", window, "100", "200")
        time.sleep(2)
        empty = self.part(window, around)
        self.enter("-INSERT")
        self.enter("CHAIR")
        self.xdo("mousemove", "--window", window, str(middle[0]), str(middle[1]), "click", "1")
        time.sleep(1)
        self.xdo("key", "Return", "Return", "Return")
        self.xdo("mousemove", "--window", window, "100", "200")
        inserted = self.eventually("the block is seen", lambda: self.changed(window, around, empty))
        self.xdo("key", "ctrl+z")
        self.eventually("it is taken back", lambda: self.part(window, around) == empty)
        self.xdo("key", "ctrl+y")
        self.eventually("it is there again", lambda: self.part(window, around) == inserted)
        self.xdo("key", "ctrl+s")
        self.eventually("it is saved", lambda: len(self.facts(room)["references"]) == 1)
        place = self.facts(room)["references"][0]["position"]
        self.assertTrue(20 < place[0] < 100 and 10 < place[1] < 50, place)
        self.quit(program)
        program = self.start(str(room))
        window = self.find_window(program)
        self.xdo("mousemove", "--window", window, "100", "200")
        self.eventually("it is seen in the saved drawing", lambda: self.part(window, around) == inserted)
        self.quit(program)

    def changed(self, window, box, former):
        """The box's pixels once they differ and stay so."""
        first = self.part(window, box)
        time.sleep(0.3)
        return first if first != former and self.part(window, box) == first else None


class WithoutDisplayTest(Case):
    def test_says_what_is_missing(self):
        self.environment.pop("DISPLAY", None)
        self.environment.pop("WAYLAND_DISPLAY", None)
        self.environment.update(SDL_VIDEODRIVER="x11", ASAN_OPTIONS="detect_leaks=0")
        done = subprocess.run([PROGRAM], env=self.environment, capture_output=True, text=True, timeout=TIME_LIMIT,
                              check=False)
        self.assertEqual(done.returncode, 2)
        self.assertRegex(done.stderr, "display|SDL")



if __name__ == "__main__":
    unittest.main()
