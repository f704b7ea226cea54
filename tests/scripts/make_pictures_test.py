"""Files that make_pictures draws, byte by byte where it counts, and what it says of faulty pictures."""

import struct
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
import make_pictures  # noqa: E402

# (text, words of the expected fault)
FAULTS = [
    ("icon 4\nsize 2 1\nimage 0 0\nKKK\n", ":4: the row leaves"),
    ("icon 4\nsize 2 1\nimage 0 0\nKK\nKK\n", ":5: the row leaves"),
    ("icon 4\nsize 2 1\nimage 0 0\nK!\n", ":4: no colour is named '!'"),
    ("icon 4\nsize 2 1\nKK\n", ":3: a row before any image"),
    ("icon 4\nimage 0 0\n", "size is missing"),
    ("icon 5\nsize 2 1\n", "bits per pixel"),
    ("cursor 1\nsize 2 1\n", "a cursor has a hot spot"),
    ("icon 4\nsize 2 1\nhotspot 0 0\n", "nothing else has one"),
    ("cursor 1\nsize 2 1\nhotspot 2 0\n", "the hot spot lies outside"),
    ("icon 4\nsize 300 1\n", "too large"),
    ("cursor 1\nsize 2 1\nhotspot 0 0\nimage 0 0\nRR\n", "more colours than 1 bits"),
]


class MakePicturesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = Path(folder.name) / "sample.txt"

    def picture(self, text):
        self.path.write_text(text, encoding="ascii")
        return make_pictures.Picture(self.path)

    def test_cursor_has_hot_spot_colours_and_mask(self):
        data = make_pictures.icon_file(self.picture("cursor 1\nsize 3 2\nhotspot 2 1\nimage 0 0\nKW.\n.WK\n"))
        self.assertEqual(struct.unpack_from("<HHH", data), (0, 2, 1))
        self.assertEqual(struct.unpack_from("<BBBBHHII", data, 6), (3, 2, 2, 0, 2, 1, len(data) - 22, 22))
        self.assertEqual(struct.unpack_from("<IiiHH", data, 22), (40, 3, 4, 1, 1))
        # From the bottom row up, the colours, then the mask.
        self.assertEqual(data[70:], b"\x40\0\0\0" b"\x40\0\0\0" b"\x80\0\0\0" b"\x20\0\0\0")

    def test_icon_takes_the_sixteen_colours(self):
        data = make_pictures.icon_file(self.picture("icon 4\nsize 3 1\nimage 0 0\ndsW\n"))
        self.assertEqual(data[62 + 4 * 7 : 62 + 4 * 9], b"\x80\x80\x80\0\xc0\xc0\xc0\0")
        self.assertEqual(data[126:], b"\x78\xf0\0\0" b"\0\0\0\0")

    def test_bitmap_joins_images_on_black(self):
        text = "bitmap 24\nsize 3 1\ncolour x 102030\nimage 0 0\nx\nimage 2 0\nR\n"
        data = make_pictures.bitmap_file(self.picture(text))
        self.assertEqual(data[:2] + data[2:6], b"BM" + struct.pack("<I", len(data)))
        self.assertEqual(data[54:], b"\x30\x20\x10" b"\0\0\0" b"\0\0\xff" b"\0\0\0")

    def test_faults_are_told(self):
        for text, expected in FAULTS:
            with self.subTest(text), self.assertRaises(make_pictures.PictureError) as caught:
                make_pictures.icon_file(self.picture(text))
            self.assertIn(expected, str(caught.exception))


if __name__ == "__main__":
    unittest.main()
