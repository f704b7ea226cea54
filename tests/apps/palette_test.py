#!/usr/bin/env python3
"""The palette as a user works with it: in the program's window, by mouse and keys, and what is in the saved drawing."""

import shutil
import unittest

from display import WindowCase

RED, GREEN, BLACK = (0, 0, 255), (0, 255, 0), (0, 0, 0)  # as on the screen
FACE = (200, 208, 212)

# A filled square of 10, in a colour that its thumbnail and its icon show, with an attribute.
SQUARE = """CECOLOR {colour}
PLINE 0,5 W 10 10 10,5

ATTDEF

MODEL
Model
{value}
1,11 2 0
ZOOM -5,-5 15,15
SAVEAS 2000 {path}
"""

# Places in the palette at its first size, docked left.
DWGS, BLOCKS, FOLDERS, UP = (25, 69), (67, 69), (60, 95), (104, 95)
LIST = (9, 112, 138, 680)
ROW, FIRST_ROW = 17, 119
GRIPPER = (90, 49)
CANVAS = (150, 50, 1270, 680)


def count(rows, colour):
    """How many pixels of a picture's rows have that colour."""
    wanted = bytes(colour)
    return sum(row[x:x + 3] == wanted for row in rows for x in range(0, len(row), 4))


class PaletteTest(WindowCase):
    def setUp(self):
        super().setUp()
        self.library = self.folder / "library"
        (self.library / "more" / "Küche").mkdir(parents=True)
        self.square("library/chair.dwg", 1, "swivel")
        self.square("library/more/Tür 1.DWG", 3, "oak")
        self.batch("LINE 0,0 120,0 120,60 0,60 C\nZOOM E\nSAVEAS 2000 room.dwg\n")
        self.room = self.folder / "room.dwg"
        self.profile.write_text("[Vondrake]\nDoNotShow=1\nDirectory=L:\\\n")

    def square(self, path, colour, value):
        self.batch(SQUARE.format(colour=colour, value=value, path=path))

    def open(self, *arguments):
        self.program = self.start(str(self.room), *arguments, "--drive", f"L={self.library}")
        self.window = self.find_window(self.program)
        # The tab's face is there as soon as the palette is.
        tab = (15, 60, 95, 76)
        def comes():
            self.enter("BLOCKS")
            return count(self.part(self.window, tab), FACE) > 100
        self.eventually("the palette comes up", comes)

    def inks(self, colour, box=LIST):
        return count(self.part(self.window, box), colour)

    def shows(self, colour, box=LIST, least=100):
        return self.eventually(f"{colour} is in {box}", lambda: self.inks(colour, box) >= least)

    def shows_no(self, colour, box=LIST):
        self.eventually(f"{colour} goes from {box}", lambda: self.inks(colour, box) == 0)

    def press(self, place, button=1, times=1):
        self.click(self.window, place, button, times)

    def row(self, number):
        """Middle of a thin row's text."""
        return (50, FIRST_ROW + ROW * number)

    def pick(self, entry, place=None):
        """An entry of the context menu, by the key or by the right button at a place; entries count from 1."""
        if place:
            self.press(place, button=3)
        else:
            self.keys("shift+F10")
        self.keys(*["Down"] * entry)
        self.keys("Return")

    def setting(self, key):
        text = self.profile.read_bytes().decode("cp1252")
        lines = [line for line in text.splitlines() if line.startswith(key + "=")]
        return lines[0].partition("=")[2] if lines else None

    def saved(self, references):
        """The references of the drawing once that many are in its file."""
        def written():
            self.keys("ctrl+s")
            found = self.facts(self.room)["references"]
            return found if len(found) == references else None
        return self.eventually(f"{references} references are saved", written)

    def leave(self):
        """Saves and quits; a change of the docked palette's tab brings the keyboard back to the command line."""
        self.press(DWGS)
        self.press(BLOCKS)
        self.keys("ctrl+s")
        self.quit(self.program)

    def test_drawing_and_block_are_inserted_by_double_click(self):
        self.open()
        self.shows(RED)
        self.assertLess(self.inks(BLACK), 500)  # letters: the ground is black in the drawing's file alone
        chair = (60, FIRST_ROW + ROW + 40)
        # Escape at the prompt: nothing comes of it.
        self.press(chair, times=2)
        self.keys("Escape")
        self.press(chair, times=2)
        self.press((500, 400))
        self.enter("Aero 7")
        self.shows(RED, CANVAS)
        first = self.saved(1)[0]
        self.assertEqual(first["original_name"], "chair")
        self.assertEqual([(a["tag"], a["text"]) for a in first["attributes"]], [("MODEL", "Aero 7")])

        self.press(BLOCKS)
        self.shows(RED)
        self.press((32, 128), times=2)
        self.press((800, 300))
        second = self.saved(2)[1]
        self.assertEqual(second["block"], "chair")
        self.assertEqual([a["text"] for a in second["attributes"]], ["swivel"])
        # To the right of the other and above it, in the proportion of the clicks.
        right, up = (second["position"][i] - first["position"][i] for i in range(2))
        self.assertGreater(up, 0)
        self.assertAlmostEqual(right / up, 3, delta=0.1)
        self.leave()

    def test_folders_are_walked_by_rows_tree_and_button(self):
        self.open()
        self.shows(RED)
        self.press(self.row(0))
        self.shows(GREEN)
        self.assertEqual(self.setting("Directory"), "L:\\more")
        self.assertEqual(self.inks(RED), 0)
        self.press(self.row(0))
        self.shows_no(GREEN)
        self.assertEqual(self.setting("Directory"), "L:\\more\\Küche")
        self.press(UP)
        self.shows(GREEN)
        self.press(UP)
        self.shows(RED)
        self.assertIn("more\\", self.setting("Directory"), "the button keeps nothing")

        # The tree has scrolled to the library, the folders below it and the root behind them; the home folder is above.
        self.press(FOLDERS)
        self.press((73, 132))
        self.eventually("the home folder is on show", lambda: self.setting("Directory") == "C:\\")
        self.press(FOLDERS)
        self.keys("Escape")
        self.assertEqual(self.setting("Directory"), "C:\\")
        self.press(FOLDERS)
        self.press((73, 164))
        self.eventually("the library is on show", lambda: self.setting("Directory") == "L:\\")
        self.shows(RED)
        # The box has the keyboard now. Enter closes nothing.
        self.keys("Return")
        self.keys("Up")
        self.eventually("the drive before is on show", lambda: self.setting("Directory") == "C:\\")
        self.leave()

    def test_context_menu_acts_by_mouse_and_key(self):
        self.open()
        self.shows(RED)
        chair = self.row(1)
        self.pick(5, chair)
        self.shows_no(RED)
        self.assertEqual(self.setting("ShowPreviews"), "0")
        self.press(chair)
        self.pick(5)
        self.shows(RED)
        self.assertEqual(self.setting("ShowPreviews"), "1")

        # Insert as Intelligent Block.
        self.press(chair)
        self.pick(3)
        self.press((500, 400))
        self.enter("")
        self.assertEqual([a["text"] for a in self.saved(1)[0]["attributes"]], ["swivel"])
        # Insert as Xref, from the folder below.
        self.press(self.row(0))
        self.shows(GREEN)
        door = self.row(1)
        self.pick(4, door)
        self.press((700, 300))
        self.shows(GREEN, CANVAS)
        xref = self.saved(2)[1]
        self.assertEqual((xref["block"], xref["attributes"]), ("Tür 1", []))
        # Open Drawing: a second tab, which has the canvas.
        self.pick(2, door)
        self.shows_no(RED, CANVAS)
        self.shows(GREEN, CANVAS, 10000)
        self.leave()
        # The next program finds the Xref, and tells of it when it has gone.
        self.open()
        self.shows(GREEN, CANVAS)
        self.leave()
        (self.library / "more" / "Tür 1.DWG").unlink()
        told = self.batch("REGEN\n", self.room, "--drive", f"L={self.library}").stdout
        self.assertRegex(told, r"T.r 1\.DWG was not found")

    def test_bar_docks_floats_and_stays_where_it_was(self):
        for number in range(9):
            shutil.copy(self.library / "more" / "Tür 1.DWG", self.library / f"door {number}.dwg")
        self.open()
        self.shows(RED)
        # The wheel turns the list under the mouse, which has no keyboard, and the drawing under it when the list has.
        self.press((60, 300), button=5, times=9)
        self.shows_no(RED)
        self.press((60, 300), button=4, times=9)
        self.shows(RED)
        self.press(self.row(1))
        empty = self.part(self.window, CANVAS)
        self.press((700, 300), button=5, times=3)
        self.assertNotEqual(self.part(self.window, CANVAS), empty)
        small = self.inks(RED)
        self.assertGreater(small, 100)
        # Wider by the edge, then over to the right.
        self.drag(self.window, (146, 300), (180, 300), (260, 300))
        self.eventually("the thumbnail grows", lambda: self.inks(RED, (9, 112, 252, 680)) > 2 * small)
        self.drag(self.window, GRIPPER, (400, 200), (1000, 300), (1275, 300))
        self.shows(RED, (1020, 112, 1280, 680))
        self.shows_no(RED, (0, 50, 1000, 680))
        self.assertRegex(self.settings(), r"=right 26\d ")
        # A double click lets it float, a second one on the caption docks it again.
        self.press((1150, 49), times=2)
        self.assertRegex(self.settings(), r"=float")
        self.press((1130, 85), times=2)
        self.shows(RED, (1020, 112, 1280, 680))
        self.drag(self.window, (1150, 49), (700, 200), (300, 250), (12, 300))
        self.shows(RED, (9, 112, 252, 680))
        self.leave()
        self.open()
        self.eventually("it stands as wide in the next program", lambda: self.inks(RED, (9, 112, 252, 680)) > 2 * small)
        self.leave()

    def test_blocks_are_those_of_the_drawing_in_front(self):
        other = self.folder / "other.dwg"
        self.batch("SAVEAS 2000 other.dwg\n")
        self.batch(f"INSERT {self.library}/chair.dwg 50,20 1 1 0 \nERASE ALL \nSAVEAS 2000 room2.dwg\n")
        self.room = self.folder / "room2.dwg"
        self.open()
        self.press(BLOCKS)
        self.shows(RED)
        self.enter(f"OPEN {other}")
        self.shows_no(RED)
        self.keys("ctrl+Tab")
        self.shows(RED)
        self.enter("PURGE B * N")
        self.shows_no(RED)
        self.enter("INSERT L:\\chair.dwg 20,20 1 1 0")
        self.shows(RED)
        self.leave()


if __name__ == "__main__":
    unittest.main()
