#!/usr/bin/env python3
"""Turns pictures drawn as text into the icons, cursors and bitmaps that a resource script takes.

usage: make_pictures.py OUTPUT_FOLDER PICTURE.txt...

`zoom.txt` becomes `zoom.ico`, `zoom.cur` or `zoom.bmp` in the output folder. A picture is text like this:

    # A remark.
    icon 4            the kind, `icon`, `cursor` or `bitmap`, and its bits per pixel: 1, 4, 8 or 24
    size 16 16        width and height in pixels
    hotspot 9 11      of a cursor: x and y from the top left corner
    colour y FFE080   a letter for a colour (red, green, blue), besides those of COLOURS below
    image 0 0         where the rows that follow stand; several images may lie side by side
    ..KK..            one letter for a pixel; a dot is transparent, which in a bitmap is black

The palette of 4 bits is the platform's sixteen colours, in its order.
"""
import pathlib
import struct
import sys

COLOURS = {
    "K": 0x000000, "r": 0x800000, "g": 0x008000, "o": 0x808000, "n": 0x000080, "m": 0x800080, "c": 0x008080,
    "d": 0x808080, "s": 0xC0C0C0, "R": 0xFF0000, "G": 0x00FF00, "Y": 0xFFFF00, "B": 0x0000FF, "M": 0xFF00FF,
    "C": 0x00FFFF, "W": 0xFFFFFF,
}
TRANSPARENT = "."
SUFFIXES = {"icon": ".ico", "cursor": ".cur", "bitmap": ".bmp"}
MAX_ICON = 255  # width and height are bytes in the file


class PictureError(Exception):
    """What is wrong with a picture, with its file and line."""


class Picture:
    def __init__(self, path):
        self.path = path
        self.kind = None
        self.bits = 0
        self.width = self.height = 0
        self.hotspot = None
        self.colours = dict(COLOURS)
        self.rows = []  # a list of letters for each row, from the top
        self.origin = None  # where the next row of the current image goes
        for number, line in enumerate(path.read_text(encoding="ascii").splitlines(), 1):
            try:
                self._read(line.rstrip())
            except (ValueError, KeyError) as error:
                raise PictureError(f"{path}:{number}: {error}") from error
        self._check()

    def _read(self, line):
        words = line.split()
        if not words or words[0] == "#":
            return
        if words[0] in SUFFIXES:
            self.kind, self.bits = words[0], int(words[1])
        elif words[0] == "size":
            self.width, self.height = int(words[1]), int(words[2])
            self.rows = [[TRANSPARENT] * self.width for _ in range(self.height)]
        elif words[0] == "hotspot":
            self.hotspot = (int(words[1]), int(words[2]))
        elif words[0] == "colour":
            self.colours[words[1]] = int(words[2], 16)
        elif words[0] == "image":
            self.origin = [int(words[1]), int(words[2])]
        else:
            self._read_row(line)

    def _read_row(self, line):
        if self.origin is None:
            raise ValueError(f"a row before any image: {line}")
        x, y = self.origin
        if x + len(line) > self.width or y >= self.height:
            raise ValueError(f"the row leaves the picture of {self.width} x {self.height}")
        for letter in line:
            if letter != TRANSPARENT and letter not in self.colours:
                raise ValueError(f"no colour is named '{letter}'")
        self.rows[y][x : x + len(line)] = line
        self.origin[1] += 1

    def _check(self):
        if self.kind is None or self.bits not in (1, 4, 8, 24) or self.width < 1 or self.height < 1:
            raise PictureError(f"{self.path}: kind, bits per pixel or size is missing or impossible")
        if self.kind != "bitmap" and max(self.width, self.height) > MAX_ICON:
            raise PictureError(f"{self.path}: too large for an {self.kind}")
        if (self.kind == "cursor") != (self.hotspot is not None):
            raise PictureError(f"{self.path}: a cursor has a hot spot, and nothing else has one")
        if self.hotspot and not (0 <= self.hotspot[0] < self.width and 0 <= self.hotspot[1] < self.height):
            raise PictureError(f"{self.path}: the hot spot lies outside")

    def colour(self, letter):
        return 0 if letter == TRANSPARENT else self.colours[letter]

    def palette(self):
        """The colour table; its length is what the bits per pixel can tell apart, nothing for 24."""
        if self.bits == 24:
            return []
        used = {self.colour(letter) for row in self.rows for letter in row}
        if self.bits == 1:
            table = [0x000000, 0xFFFFFF]
        else:
            table = list(COLOURS.values())
        table += sorted(used - set(table))
        if len(table) > 1 << self.bits:
            raise PictureError(f"{self.path}: more colours than {self.bits} bits can tell apart")
        return table + [0] * ((1 << self.bits) - len(table))


def packed(values, bits):
    """Numbers of `bits` each, the first in the highest bits, padded to whole words of 32 bits."""
    if bits == 24:
        data = b"".join(struct.pack("<I", value)[:3] for value in values)
    else:
        number = 0
        for value in values:
            number = number << bits | value
        length = len(values) * bits
        number <<= -length % 8
        data = number.to_bytes((length + 7) // 8, "big")
    return data + b"\0" * (-len(data) % 4)


def pixel_rows(picture, palette):
    """The colours, from the bottom row up."""
    index = {}
    for place, value in enumerate(palette):
        index.setdefault(value, place)
    lookup = (lambda colour: colour) if picture.bits == 24 else index.__getitem__
    return b"".join(packed([lookup(picture.colour(c)) for c in row], picture.bits) for row in reversed(picture.rows))


def info_header(picture, height, palette, size):
    head = struct.pack("<IiiHHIIiiII", 40, picture.width, height, 1, picture.bits, 0, size, 0, 0, len(palette), 0)
    return head + b"".join(struct.pack("<I", value) for value in palette)


def bitmap_file(picture):
    palette = picture.palette()
    pixels = pixel_rows(picture, palette)
    head = info_header(picture, picture.height, palette, len(pixels))
    start = 14 + len(head)
    return struct.pack("<2sIHHI", b"BM", start + len(pixels), 0, 0, start) + head + pixels


def icon_file(picture):
    """An icon or a cursor with one image: the colours, and a mask whose ones let the ground through."""
    palette = picture.palette()
    pixels = pixel_rows(picture, palette)
    mask = b"".join(packed([int(c == TRANSPARENT) for c in row], 1) for row in reversed(picture.rows))
    image = info_header(picture, 2 * picture.height, palette, len(pixels) + len(mask)) + pixels + mask
    cursor = picture.kind == "cursor"
    colours = len(palette) if 0 < len(palette) < 256 else 0
    planes_and_bits = picture.hotspot if cursor else (1, picture.bits)
    directory = struct.pack("<HHH", 0, 2 if cursor else 1, 1)
    entry = struct.pack("<BBBBHHII", picture.width, picture.height, colours, 0, *planes_and_bits, len(image), 22)
    return directory + entry + image


def main(arguments):
    if len(arguments) < 2:
        print(__doc__, file=sys.stderr)
        return 2
    folder = pathlib.Path(arguments[0])
    folder.mkdir(parents=True, exist_ok=True)
    try:
        for path in map(pathlib.Path, arguments[1:]):
            picture = Picture(path)
            data = bitmap_file(picture) if picture.kind == "bitmap" else icon_file(picture)
            (folder / (path.stem + SUFFIXES[picture.kind])).write_bytes(data)
    except (PictureError, OSError) as error:
        print(error, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
