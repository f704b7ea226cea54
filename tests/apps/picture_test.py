"""--png: a drawing as a picture."""

import struct
import unittest
import zlib

from support import MAKE_DESK, Case, needs_drawings, real_drawings

WHITE = b"\xff\xff\xff"


def read_png(path):
    """Width, height and the set of colours in a picture whose rows aren't interlaced."""
    data = path.read_bytes()
    assert data[:8] == b"\x89PNG\r\n\x1a\n", path
    position, packed = 8, b""
    while position < len(data):
        length, kind = struct.unpack(">I4s", data[position:position + 8])
        chunk = data[position + 8:position + 8 + length]
        position += 12 + length
        if kind == b"IHDR":
            width, height, depth, color = struct.unpack(">IIBB", chunk[:10])
            assert depth == 8 and color in (2, 6)
        elif kind == b"IDAT":
            packed += chunk
    size = 3 if color == 2 else 4
    rows, above, stride = [], bytearray(width * size), width * size
    raw = zlib.decompress(packed)
    for y in range(height):
        start = y * (stride + 1)
        row = bytearray(raw[start + 1:start + 1 + stride])
        for i in range(stride):
            left = row[i - size] if i >= size else 0
            corner = above[i - size] if i >= size else 0
            row[i] = (row[i] + predict(raw[start], left, above[i], corner)) & 0xFF
        rows.append(row)
        above = row
    return width, height, {bytes(row[x:x + 3]) for row in rows for x in range(0, stride, size)}


def predict(kind, left, above, corner):
    if kind == 4:
        guess = left + above - corner
        return min((abs(guess - left), 0, left), (abs(guess - above), 1, above), (abs(guess - corner), 2, corner))[2]
    return (0, left, above, (left + above) // 2)[kind]


class Pictures(Case):
    def test_draws_what_a_script_made(self):
        self.batch(MAKE_DESK.replace("LINE 0,-3", "-LAYER M RED C 1 RED\n\nLINE 0,-3"))
        before = (self.folder / "plan.dwg").read_bytes()
        done = self.run_program("--png", "plan.png", "--size", "320x200", "plan.dwg")
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        width, height, colors = read_png(self.folder / "plan.png")
        self.assertEqual((width, height), (320, 200))
        self.assertIn(b"\xff\x00\x00", colors)
        self.assertIn(WHITE, colors)
        self.assertEqual((self.folder / "plan.dwg").read_bytes(), before)

    def test_sees_from_the_side_and_shades(self):
        self.batch(MAKE_DESK.replace("LINE 0,-3", "-LAYER M RED C 1 RED\n\nLINE 0,-3"))
        pictures = {}
        for name, options in (("top", ["--view", "top"]), ("front", ["--view", "front"]),
                              ("iso", ["--view=iso", "--shade"])):
            done = self.run_program("--png", name + ".png", *options, "plan.dwg")
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            pictures[name] = read_png(self.folder / (name + ".png"))[2]
            self.assertIn(b"\xff\x00\x00", pictures[name])
        self.assertEqual(len({(self.folder / (name + ".png")).read_bytes() for name in pictures}), 3)

    def test_shows_what_was_seen_when_it_was_saved(self):
        # What the picture's sides cut off of a screen of 4 to 3 is made up for by its height.
        wide = "ZOOM C 0,0 30\nLINE -19,9 19,9\n\nLINE 0,-14 0,14\n\nCECOLOR 1\nLINE 100,0 100,9\n\n"
        self.batch(wide + "SAVEAS\n\nmodel\n")
        drawn = {}
        for name, options in (("own", []), ("narrow", ["--size", "300x900"]), ("top", ["--view", "top"])):
            self.assertEqual(self.run_program("--png", name + ".png", *options, "model.dwg").returncode, 0)
            drawn[name] = read_png(self.folder / (name + ".png"))[2]
        self.assertEqual(drawn["own"], {WHITE, b"\0\0\0"})
        self.assertEqual(drawn["narrow"], {WHITE, b"\0\0\0"})
        self.assertIn(b"\xff\0\0", drawn["top"])
        self.batch("CECOLOR 3\nTILEMODE 0\nLINE 0,0 9,5\n\nQSAVE\n", "model.dwg")
        self.assertEqual(self.run_program("--png", "sheet.png", "model.dwg").returncode, 0)
        self.assertEqual(read_png(self.folder / "sheet.png")[2], {WHITE, b"\0\xff\0"})

    def test_says_what_is_wrong(self):
        self.batch(MAKE_DESK)
        for arguments, status, word in (
                (["--png", "a.png"], 2, "needs a drawing"),
                (["--png", "a.png", "--size", "0x10", "plan.dwg"], 2, "--size"),
                (["--png", "a.png", "--size", "100", "plan.dwg"], 2, "--size"),
                (["--png", "a.png", "--size", "9x9x9", "plan.dwg"], 2, "--size"),
                (["--size", "10x10", "plan.dwg"], 2, "goes with --png"),
                (["--png", "a.png", "--view", "below", "plan.dwg"], 2, "--view"),
                (["--shade", "plan.dwg"], 2, "go with --png"),
                (["--png", "a.png", "--facts", "plan.dwg"], 2, "Only one of"),
                (["--png", "a.png", "none.dwg"], 3, "none.dwg"),
                (["--png", "no/such/folder/a.png", "plan.dwg"], 3, "a.png")):
            with self.subTest(arguments=arguments):
                done = self.run_program(*arguments)
                self.assertEqual(done.returncode, status)
                self.assertIn(word, done.stderr)
                self.assertFalse((self.folder / "a.png").exists())

    @needs_drawings
    def test_draws_real_drawings(self):
        drawn = 0
        for drawing in real_drawings("r2000"):
            with self.subTest(drawing.name):
                done = self.run_program("--png", "real.png", "--size", "200x150", drawing)
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                drawn += read_png(self.folder / "real.png")[2] != {WHITE}
        # Three of the usual set hold nothing but a solid, a helix or a multiline.
        self.assertGreaterEqual(drawn, len(real_drawings("r2000")) - 3)


if __name__ == "__main__":
    unittest.main(verbosity=2)
