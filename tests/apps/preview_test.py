#!/usr/bin/env python3
"""The preview window as a user works with it: opened from the palette, by mouse and keys, and what came of it."""

import unittest
from collections import Counter

from display import WindowCase

# A yellow slab of 40 x 30 high above a smaller red one, so that from straight above only the yellow one is seen.
SLABS = """CECOLOR 1
THICKNESS 4
PLINE 2,15 W 26 26 38,15

CECOLOR 2
ELEVATION 20
PLINE 0,15 W 30 30 40,15

ZOOM E
SAVEAS 2000 library/slabs.dwg
"""

# A green square of 8 as a block, in a white room of 120 x 60.
ROOM = """CECOLOR 3
PLINE 0,0 8,0 8,8 0,8 C
-BLOCK CHAIR 0,0 ALL

CECOLOR 7
LINE 0,0 120,0 120,60 0,60 C
ZOOM E
SAVEAS 2000 room.dwg
"""

PLACE = (300, 220, 500, 400)  # left, top, width, height of the preview
FRAME, CAPTION = 4, 23  # what lies between the window's corner and its inside
GREEN = (0, 255, 0)

# In the palette at its first size, docked left.
TAB_DWGS, TAB_BLOCKS, TAB = (25, 69), (67, 69), (15, 60, 95, 76)
FOLDER, DRAWING, BLOCK, PREVIEW = (65, 119), (65, 160), (32, 125), (128, 94)
AWAY = (1100, 150)  # where the mouse is in nobody's picture
CHOSEN = (900, 560)  # a point within the room
AROUND = (CHOSEN[0] - 10, CHOSEN[1] - 70, CHOSEN[0] + 70, CHOSEN[1] + 10)


def yellow(pixel):
    blue, green, red = pixel
    return blue == 0 and red > 0 and red == green


def red_only(pixel):
    blue, green, red = pixel
    return blue == 0 and green == 0 and red > 0


class PreviewTest(WindowCase):
    def setUp(self):
        super().setUp()
        (self.folder / "library").mkdir()
        self.batch(SLABS)
        self.batch(ROOM)
        self.room = self.folder / "room.dwg"
        self.place = PLACE
        self.profile.write_text("[Vondrake]\nDoNotShow=1\nDirectory=L:\\\nnTopLeftX3=%d\nnTopLeftY3=%d\n"
                                "sizeWidth3=%d\nsizeHeight3=%d\n" % PLACE)

    # Where things stand.

    def inside(self, x, y):
        """A place of the preview's inside, from its right edge for a negative x, from its bottom for a negative y."""
        left, top, width, height = self.place
        return (left + (FRAME + x if x >= 0 else width - FRAME + x),
                top + (CAPTION + y if y >= 0 else height - FRAME + y))

    def picture(self):
        """The box of the picture, without its edge and the rectangle that marks the focus."""
        return (*self.inside(10, 12), *self.inside(-88, -32))

    def middle(self):
        left, top, right, bottom = self.picture()
        return ((left + right) // 2, (top + bottom) // 2)

    def buttons(self):
        return (*self.inside(-73, 5), *self.inside(-4, 86))

    # What is seen.

    def pixels(self, box):
        self.move(self.window, AWAY)
        return [[row[x:x + 3] for x in range(0, len(row), 4)] for row in self.steady(self.window, box)]

    def colours(self, box):
        return Counter(tuple(pixel) for row in self.pixels(box) for pixel in row)

    def extent(self, wanted):
        """Left, top, right and bottom of the pixels of the picture for which `wanted` holds."""
        found = [(x, y) for y, row in enumerate(self.pixels(self.picture())) for x, pixel in enumerate(row)
                 if wanted(pixel)]
        self.assertTrue(found, "nothing of it is seen")
        across, down = zip(*found)
        return (min(across), min(down), max(across), max(down))

    def has_gadget(self):
        return self.colours(self.picture())[GREEN] > 100

    # What the user does.

    def open(self):
        self.program = self.start(str(self.room), "--drive", f"L={self.folder / 'library'}")
        self.window = self.find_window(self.program)

        def comes():
            self.enter("BLOCKS")
            return self.changed(self.window, TAB, bare)

        self.move(self.window, AWAY)
        bare = self.steady(self.window, TAB)
        self.eventually("the palette comes", comes)

    def choose(self, what):
        if what == "block":
            self.click(self.window, TAB_BLOCKS)
        self.click(self.window, DRAWING if what == "drawing" else BLOCK)
        self.behind = self.without_preview()

    def without_preview(self):
        self.move(self.window, AWAY)
        return self.steady(self.window, self.buttons())

    def preview(self):
        self.click(self.window, PREVIEW)
        self.comes()

    def comes(self):
        self.move(self.window, AWAY)
        self.eventually("the preview comes", lambda: self.changed(self.window, self.buttons(), self.behind))

    def goes(self):
        self.move(self.window, AWAY)
        self.eventually("the preview goes", lambda: self.part(self.window, self.buttons()) == self.behind)

    def push(self, name):
        places = {"open": (-38, 17), "close": (-38, 47), "zoom": (-62, 75), "pan": (-39, 75), "orbit": (-16, 75)}
        self.click(self.window, self.inside(*places[name]))

    def setting(self, name, value):
        self.eventually(f"{name}={value} is kept", lambda: f"{name}={value}\n" in self.settings())

    # The cases.

    def test_drawing_is_looked_at_from_all_sides(self):
        self.open()
        self.choose("drawing")
        self.preview()
        flat = self.extent(yellow)
        self.assertEqual([c for c in self.colours(self.picture()) if red_only(c)], [], "red lies below yellow")
        self.assertFalse(self.has_gadget(), "it begins with zooming")

        # In the mode for zooming a drag upwards comes closer, the wheel does in every mode.
        x, y = self.middle()
        self.drag(self.window, (x, y), (x, y - 8), (x, y - 12))
        closer = self.extent(yellow)
        self.assertGreater(closer[3] - closer[1], flat[3] - flat[1])
        self.push("orbit")
        self.setting("nInterfaceMode", 1)
        self.assertTrue(self.has_gadget())
        before = self.extent(yellow)
        self.move(self.window, (x, y))
        self.xdo("click", "5", "click", "5", "click", "5", "click", "5")
        after = self.extent(yellow)
        self.assertAlmostEqual((after[3] - after[1]) / (before[3] - before[1]), 0.9 ** 4, delta=0.02)

        # The middle button pans.
        self.drag(self.window, (x, y), (x + 20, y - 10), (x + 40, y - 15), button=2)
        panned = self.extent(yellow)
        for now, then, way in zip(panned, after, (40, -15, 40, -15)):
            self.assertAlmostEqual(now, then + way, delta=1)
        self.drag(self.window, (x, y), (x - 40, y + 15), button=2)

        # A drag over the ball tilts the slabs: the red one comes to light, and sides are darker than tops.
        self.drag(self.window, (x, y), (x + 10, y - 20), (x + 15, y - 50), (x + 15, y - 80))
        shown = self.colours(self.picture())
        self.assertGreater(sum(n for c, n in shown.items() if red_only(c)), 50)
        shades = [c for c, n in shown.items() if yellow(c) and n > 50]
        self.assertGreaterEqual(len(shades), 2, shades)
        self.assertTrue(self.has_gadget())

        self.push("close")
        self.goes()
        # By the context menu. The mode is that of the last time; the picture begins anew.
        self.click(self.window, DRAWING, button=3)
        self.click(self.window, (DRAWING[0] + 60, DRAWING[1] + 11))
        self.comes()
        self.assertTrue(self.has_gadget())
        self.assertEqual(self.extent(yellow), flat)
        self.push("open")
        self.eventually("the drawing is open", lambda: self.xdo("search", "--name", r"slabs\.dwg - vondrake$"))
        self.quit(self.program)

    def test_block_is_inserted_from_its_preview(self):
        self.open()
        self.choose("block")
        empty = self.part(self.window, AROUND)
        self.preview()
        self.assertGreater(self.colours(self.picture())[GREEN], 200)
        self.push("open")
        self.goes()
        self.click(self.window, CHOSEN)
        self.comes()
        self.eventually("the block is seen while the preview is open",
                        lambda: self.changed(self.window, AROUND, empty))
        # Escape at the prompt brings the preview back, and nothing else.
        self.push("open")
        self.goes()
        self.keys("Escape")
        self.comes()
        # The second one, typed.
        self.push("open")
        self.goes()
        self.enter("10,20")
        self.comes()
        self.keys("Escape")
        self.goes()
        self.keys("ctrl+s")
        self.eventually("two are saved", lambda: len(self.facts(self.room)["references"]) == 2)
        first, second = [reference["position"] for reference in self.facts(self.room)["references"]]
        self.assertTrue(60 < first[0] < 110 and 0 < first[1] < 40, first)
        self.assertEqual(second, [10, 20, 0])
        self.quit(self.program)

    def test_nothing_chosen_and_a_folder(self):
        (self.folder / "library" / "more").mkdir()
        self.open()
        self.behind = self.without_preview()
        for tab in (None, TAB_BLOCKS):
            if tab:
                self.click(self.window, tab)
            self.click(self.window, PREVIEW)
            self.assertEqual(self.without_preview(), self.behind)
        # The next click, with something chosen, opens it.
        self.choose("block")
        self.preview()
        self.keys("Escape")
        self.goes()
        # A right click chooses a folder's row. It can't be loaded, and the preview comes up empty.
        self.click(self.window, TAB_DWGS)
        self.click(self.window, FOLDER, button=3)
        middle = (560, 360, 720, 450)  # where the two messages stand
        bare = self.part(self.window, middle)
        self.click(self.window, (FOLDER[0] + 60, FOLDER[1] + 11))
        first = self.eventually("it is told", lambda: self.changed(self.window, middle, bare))
        self.keys("Return")
        self.eventually("and which one", lambda: self.changed(self.window, middle, first))
        self.keys("Return")
        self.comes()
        self.assertEqual(set(self.colours(self.picture())), {(0, 0, 0)})
        self.push("close")
        self.goes()
        self.quit(self.program)

    def test_size_and_place_are_kept(self):
        self.open()
        self.choose("block")
        left, top, width, height = PLACE
        self.preview()
        # By the caption, then by the corner: only the second is kept.
        self.drag(self.window, (left + 100, top + 12), (left + 90, top + 12), (left + 60, top - 8))
        left, top = left - 40, top - 20
        corner = (left + width - 8, top + height - 8)
        self.drag(self.window, corner, (corner[0] + 40, corner[1] + 30), (corner[0] + 120, corner[1] + 80))
        self.place = (left, top, width + 120, height + 80)
        for name, value in zip(("nTopLeftX3", "nTopLeftY3", "sizeWidth3", "sizeHeight3"), self.place):
            self.setting(name, value)
        # The block fills the larger window.
        box = self.extent(lambda pixel: tuple(pixel) == GREEN)
        whole = (left, top, left + self.place[2], top + self.place[3])
        self.move(self.window, AWAY)
        shown = self.steady(self.window, whole)
        self.push("close")
        self.move(self.window, AWAY)
        gone = self.eventually("it is gone", lambda: self.changed(self.window, whole, shown))
        self.click(self.window, PREVIEW)
        self.eventually("it is back", lambda: self.changed(self.window, whole, gone))
        self.assertEqual(self.extent(lambda pixel: tuple(pixel) == GREEN), box)
        self.quit(self.program)


if __name__ == "__main__":
    unittest.main()
