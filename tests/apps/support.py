"""What the end-to-end tests share: running the programs, real drawings, and a look at a file's objects.

The programs are found in the folder that VONDRAKE_BIN names, real drawings below VONDRAKE_DRAWINGS; tests that need
them are skipped when that isn't set.
"""

import json
import os
import struct
import subprocess
import tempfile
import unittest
from pathlib import Path

PROGRAM = str(Path(os.environ["VONDRAKE_BIN"], "vondrake"))
DRAWINGS = os.environ.get("VONDRAKE_DRAWINGS")
# Sanitizers make everything some ten times slower.
TIME_LIMIT = 240

# A script that makes plan.dwg with an Intelligent Block of two attributes, whose line is at 25,7.
MAKE_DESK = """ATTDEF

NUMBER
Number
1
0,0 1 0
ATTDEF

ROOM
Room
Office
0,5 1 0
LINE 0,-3 10,-3

BLOCK DESK 0,0 ALL

(c:_bInsert "DESK" (list 20 10 0))
SAVEAS 2000 plan.dwg
"""

needs_drawings = unittest.skipUnless(DRAWINGS, "VONDRAKE_DRAWINGS names no folder of real drawings")


def real_drawings(*folders):
    return sorted(path for folder in folders for path in Path(DRAWINGS, folder).glob("*.dwg"))


class Case(unittest.TestCase):
    """A test with a folder of its own that is the user's home while the program runs."""

    maxDiff = 4000

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="vondrake-test-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.environment = dict(os.environ, HOME=str(self.folder), XDG_CONFIG_HOME=str(self.folder / "config"))

    def run_program(self, *arguments, text=None, limit=TIME_LIMIT):
        """Runs vondrake; `text` (str or bytes) is its standard input."""
        given = text.encode() if isinstance(text, str) else text
        done = subprocess.run([PROGRAM, *map(str, arguments)], input=given if given is not None else b"",
                              capture_output=True, timeout=limit, cwd=self.folder, env=self.environment, check=False)
        self.assertIn(done.returncode, (0, 1, 2, 3),
                      f"crashed on {arguments}: {done.stderr.decode(errors='replace')[-3000:]}")
        done.stdout = done.stdout.decode(errors="replace")
        done.stderr = done.stderr.decode(errors="replace")
        return done

    def batch(self, script, drawing=None, *options, status=0):
        """Runs a script from standard input and checks the exit status."""
        arguments = ["--batch", "-", *([drawing] if drawing else []), *options]
        done = self.run_program(*arguments, text=script)
        self.assertEqual(done.returncode, status, f"{done.stdout[-3000:]}\n{done.stderr[-3000:]}")
        return done

    def facts(self, drawing):
        done = self.run_program("--facts", drawing)
        self.assertEqual(done.returncode, 0, done.stderr)
        return json.loads(done.stdout)


def objects_of(path):
    """The framed bytes of every object of a release 15 file, by handle, found through its object map."""
    data = Path(path).read_bytes()
    sections = struct.unpack_from("<L", data, 21)[0]
    locators = [struct.unpack_from("<BLL", data, 25 + 9 * i) for i in range(sections)]
    start, size = next((where, length) for number, where, length in locators if number == 2)
    return {handle: _framed(data, offset) for handle, offset in _map_entries(data, start, start + size)}


def _map_entries(data, position, end):
    while position < end:
        chunk = struct.unpack_from(">H", data, position)[0]
        if chunk <= 2:
            return
        chunk_end = position + chunk
        position += 2
        handle = offset = 0
        while position < chunk_end:
            step, position = _modular(data, position, signed=False)
            handle += step
            step, position = _modular(data, position, signed=True)
            offset += step
            yield handle, offset
        position = chunk_end + 2


def _modular(data, position, signed):
    value = shift = 0
    while True:
        byte = data[position]
        position += 1
        last = not byte & 0x80
        if last and signed:
            value |= (byte & 0x3F) << shift
            return (-value if byte & 0x40 else value), position
        value |= (byte & 0x7F) << shift
        if last:
            return value, position
        shift += 7


def _framed(data, offset):
    size = shift = 0
    position = offset
    while True:
        word = struct.unpack_from("<H", data, position)[0]
        position += 2
        size |= (word & 0x7FFF) << shift
        shift += 15
        if not word & 0x8000:
            return data[offset:position + size + 2]

