"""Each case is a small tree with one include in question, and what check_layers has to say about it."""

import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
import check_layers  # noqa: E402

HEADERS = {
    "platform/win32/include/win32/types.h": "",
    "platform/win32/paths/codepage_table.h": "",
    "platform/mfc/include/mfc/afx.h": "",
    "drawing/include/db/object.h": "",
    "drawing/dwg/bit_reader.h": "",
    "objects/include/formula/formula.h": "",
    "objects/formula/parser.h": "",
    "host/include/ed/command.h": "",
    "host/ed/stack.h": "",
    "module/frame/data.h": "",
    "apps/vondrake/options.h": "",
    "tests/support/json.h": "",
}

# (including file, include line, word of the expected fault; None: allowed)
CASES = [
    # Downwards, by public name.
    ("platform/mfc/a.cpp", '#include "win32/types.h"', None),
    ("objects/a.cpp", '#include "db/object.h"', None),
    ("objects/a.cpp", "#include <db/object.h>", None),
    ("host/ed/a.cpp", '#include "db/object.h"', None),
    ("module/frame/a.cpp", '#include "ed/command.h"', None),
    ("module/frame/a.cpp", '#include "mfc/afx.h"', None),
    ("apps/vondrake/a.cpp", '#include "ed/command.h"', None),
    # One's own, private or public, from beside it or from the layer's root.
    ("drawing/dwg/a.cpp", '#include "bit_reader.h"', None),
    ("drawing/db/a.cpp", '#include "dwg/bit_reader.h"', None),
    ("drawing/db/a.cpp", '#include "../dwg/bit_reader.h"', None),
    ("drawing/include/db/line.h", '#include "db/object.h"', None),
    ("module/insertion/a.cpp", '#include "frame/data.h"', None),
    # Upwards or sideways.
    ("platform/win32/a.cpp", '#include "mfc/afx.h"', "must not see platform/mfc"),
    ("drawing/db/a.cpp", '#include "win32/types.h"', "must not see platform/win32"),
    ("drawing/db/a.cpp", '  #  include "ed/command.h"', "must not see host"),
    ("drawing/db/a.cpp", "#include <ed/command.h>", "must not see host"),
    ("objects/a.cpp", '#include "win32/types.h"', "must not see platform/win32"),
    ("objects/a.cpp", '#include "ed/command.h"', "must not see host"),
    ("host/ed/a.cpp", '#include "../../module/frame/data.h"', "must not see module"),
    ("host/ed/a.cpp", '#include "frame/data.h"', "must not see module"),
    ("module/frame/a.cpp", '#include "vondrake/options.h"', "must not see apps"),
    ("apps/vondrake/a.cpp", '#include "../../tests/support/json.h"', "must not see tests"),
    # Private headers of a layer that is seen.
    ("host/ed/a.cpp", '#include "dwg/bit_reader.h"', "private to drawing"),
    ("host/ed/a.cpp", '#include "../../drawing/dwg/bit_reader.h"', "private to drawing"),
    ("module/frame/a.cpp", '#include "formula/parser.h"', "private to objects"),
    ("platform/mfc/a.cpp", '#include "paths/codepage_table.h"', "private to platform/win32"),
    # Public headers by the back door, names that lead nowhere, files outside every layer.
    ("host/ed/a.cpp", '#include "../../drawing/include/db/object.h"', "by its public name"),
    ("host/ed/a.cpp", '#include "db/objekt.h"', "in no layer"),
    ("host/ed/a.cpp", '#include "vector"', "in no layer"),
    ("host/ed/a.cpp", "#include HEADER_NAME", "computed include"),
    ("tools/a.cpp", '#include "db/object.h"', "in no layer"),
    # Tests, fuzz targets and benchmarks see everything.
    ("tests/drawing/a.cpp", '#include "dwg/bit_reader.h"', None),
    ("tests/drawing/a.cpp", '#include "support/json.h"', None),
    ("fuzz/a.cpp", '#include "dwg/bit_reader.h"', None),
    ("bench/a.cpp", '#include "frame/data.h"', None),
    # Not includes of ours, or not includes at all.
    ("drawing/db/a.cpp", "#include <vector>", None),
    ("drawing/db/a.cpp", '// #include "ed/command.h"', None),
    ("drawing/db/a.cpp", '/* for show:\n#include "ed/command.h"\n*/', None),
    ("build/generated/a.cpp", '#include "ed/command.h"', None),
]


def faults_of(files):
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        return check_layers.check(Path(folder))[0]


class CheckLayers(unittest.TestCase):
    def test_each_arrow(self):
        for includer, line, expected in CASES:
            with self.subTest(includer=includer, line=line):
                faults = faults_of({**HEADERS, includer: f"// Purpose.\n{line}\n"})
                if expected is None:
                    self.assertEqual(faults, [])
                else:
                    self.assertEqual(len(faults), 1, faults)
                    self.assertTrue(faults[0].startswith(f"{includer}:2: "), faults[0])
                    self.assertIn(expected, faults[0])

    def test_line_numbers_behind_a_block_comment(self):
        faults = faults_of({**HEADERS, "objects/a.cpp": '/* one\ntwo\nthree */\n\n#include "ed/command.h"\n'})
        self.assertEqual([fault.split(":")[1] for fault in faults], ["5"])

    def test_one_name_in_two_layers_is_a_trap(self):
        files = {"objects/include/db/object.h": "", "host/ed/a.cpp": '#include "db/object.h"\n'}
        faults = faults_of({**HEADERS, **files})
        self.assertEqual(len(faults), 1)
        self.assertIn("more than one header", faults[0])


if __name__ == "__main__":
    unittest.main()
