#!/usr/bin/env python3
"""The program in a real window: keys that a user presses, through the display server."""

import signal
import struct
import subprocess
import unittest

from display import WindowCase
from support import Case, MAKE_DESK, PROGRAM, TIME_LIMIT


class WindowTest(WindowCase):
    def test_tips_greet_once_by_keyboard(self):
        program = self.start()

        def ticked():
            # From OK over the text to the box; the keys wait until the dialog is there.
            if "DoNotShow=1" not in self.settings():
                self.keys("Tab", "Tab", "space", "Tab")
            return "DoNotShow=1" in self.settings()

        self.eventually("ticking the box is kept", ticked)
        self.keys("Return")
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
        self.enter("CIRCLE 5,5 2")
        self.keys("ctrl+s")  # it has no name yet: the dialog asks for one
        self.enter(str(drawing))
        self.eventually("the drawing is saved", drawing.exists)
        self.quit(program)

    def test_signals_ask_it_to_close(self):
        self.profile.write_text("[Vondrake]\nDoNotShow=1\n")
        for ending in (signal.SIGINT, signal.SIGTERM):
            program = self.start()
            program.send_signal(ending)
            self.eventually("it ends", lambda: program.poll() is not None)
            self.assertEqual(program.returncode, 0, program.stdout.read().decode(errors="replace"))
        program = self.start()
        self.enter("CIRCLE 5,5 2")
        program.send_signal(signal.SIGTERM)
        self.settle()
        self.assertIsNone(program.poll(), "there is a circle to save")
        self.keys("n")
        self.eventually("it ends", lambda: program.poll() is not None)
        self.assertEqual(program.returncode, 0, program.stdout.read().decode(errors="replace"))

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
            self.keys("Escape")
            self.enter("DDATTE")
            self.enter("25,7")
            self.click(window, (left + width // 2, top + 75))
            self.enter("A 42")
            self.enter("Lab")
            self.enter("QSAVE")
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
        self.move(window, (100, 200))
        self.settle()
        empty = self.part(window, around)
        self.enter("-INSERT")
        self.enter("CHAIR")
        self.click(window, middle)
        self.keys("Return", "Return", "Return")
        self.move(window, (100, 200))
        inserted = self.eventually("the block is seen", lambda: self.changed(window, around, empty))
        self.keys("ctrl+z")
        self.eventually("it is taken back", lambda: self.part(window, around) == empty)
        self.keys("ctrl+y")
        self.eventually("it is there again", lambda: self.part(window, around) == inserted)
        self.keys("ctrl+s")
        self.eventually("it is saved", lambda: len(self.facts(room)["references"]) == 1)
        place = self.facts(room)["references"][0]["position"]
        self.assertTrue(20 < place[0] < 100 and 10 < place[1] < 50, place)
        self.quit(program)
        program = self.start(str(room))
        window = self.find_window(program)
        self.move(window, (100, 200))
        self.eventually("it is seen in the saved drawing", lambda: self.part(window, around) == inserted)
        self.quit(program)


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
