"""Intelligent Blocks go into a real drawing by a script, and are looked at by another process."""

import shutil
import unittest

from support import Case, needs_drawings, objects_of, real_drawings

FAR = 100_000  # nothing of the drawing stands there


MODES = ((1, "Invisible"), (2, "Constant"), (4, "Verify"), (8, "Preset"))


def definition(tag, modes, former, x, y, height):
    """The answers to ATTDEF, which keeps the modes of the `former` time: sums of the numbers in MODES."""
    switched = "".join(name + "\n" for bit, name in MODES if (modes ^ former) & bit)
    prompt = "" if modes & 2 else f"{tag.title()} of it\n"
    return f"ATTDEF\n{switched}\n{tag}\n{prompt}{tag.lower()} value\n{FAR + x},{FAR + y}\n{height}\n0\n"


# By "-BLOCK", since the module watches "BLOCK" and would upgrade a reference of the drawing.
MAKE_BLOCK = (
    definition("PLAIN", 0, 0, 10, 20, 2.5)
    + definition("FIXED", 2, 0, 10, 16, 2.5)
    + definition("HIDDEN", 1, 2, 10, 12, 2.5)
    + definition("PRESET", 8, 1, 10, 8, 5)
    + definition("CHECKED", 4, 8, 10, 4, 2.5)
    + definition("CLEVER", 0, 4, 10, 0, 2.5)
    + f"VNDKATTDEF\nL\n{FAR + 1},{FAR}\n{FAR + 2},{FAR}\nstretch = value > 900\n\n"
    + f"LINE {FAR},{FAR} {FAR + 30},{FAR}\n\n"
    + f"-BLOCK DESK {FAR},{FAR}\nW {FAR - 50},{FAR - 50} {FAR + 500},{FAR + 500}\n\n")

# The window around the new block is a rectangle of the screen.
FROM_ABOVE = '(if (= (getvar "TILEMODE") 1) (command "PLAN" "World"))\n'

INSERT = ('(c:_bInsert "DESK" (list 1.5 2.25 -3.0))\n'
          '(setvar "TILEMODE" 0)\n(c:_bInsert "desk" (list 100.0 200.0 0.0))\n(setvar "TILEMODE" 1)\n'
          'UCS X 90\nUCS Origin 7,8,9\n(c:_bInsert "DESK" (list 4.0 5.0 6.0))\nUCS World\n'
          '(c:_bInsert "DESK" 12)\n')

EXPECTED = (("*Model_Space", "DESK", (1.5, 2.25, -3.0)), ("*Paper_Space", "desk", (100.0, 200.0, 0.0)),
            ("*Model_Space", "DESK", (4.0, 5.0, 6.0)), ("*Model_Space", "DESK", (0.0, 0.0, 0.0)))

# Tag, y within the block, height, modes that are on: constant definitions and those with formulas give none.
ATTRIBUTES = (("PLAIN", 20, 2.5, ()), ("HIDDEN", 12, 2.5, ("invisible",)), ("PRESET", 8, 5, ("preset",)),
              ("CHECKED", 4, 2.5, ("verify",)))


class Insertion(Case):
    def check_references(self, facts, layer):
        ours = [x for x in facts["references"] if x["class"] == "VNDKBlockReference"]
        self.assertEqual(len(ours), len(EXPECTED))
        for reference, (space, name, position) in zip(ours, EXPECTED):
            self.assertEqual(reference["space"].split("#")[0], space)
            self.assertEqual(reference["block"], "DESK")
            self.assertEqual(reference["original_name"], name)
            self.assertEqual(tuple(reference["position"]), position)
            self.assertEqual(reference["scale"], [1, 1, 1])
            self.assertEqual(reference["rotation"], 0)
            self.assertEqual(reference["normal"], [0, 0, 1])
            self.assertEqual(reference["ins_base"], [0, 0, 0])
            self.assertEqual(reference["layer"], layer)
            self.check_attributes(reference, position)

    def check_attributes(self, reference, position):
        self.assertEqual([x["tag"] for x in reference["attributes"]], [x[0] for x in ATTRIBUTES])
        for attribute, (tag, y, height, modes) in zip(reference["attributes"], ATTRIBUTES):
            self.assertEqual(attribute["class"], "VNDKAttribute")
            self.assertEqual(attribute["space"], reference["space"])
            self.assertEqual(attribute["text"], tag.lower() + " value")
            self.assertEqual(attribute["default"], tag.lower() + " value")
            # The definition's point plus the reference's; the block's base point isn't taken off.
            for ours, theirs in zip(attribute["position"], (position[0] + 10, position[1] + y, position[2])):
                self.assertAlmostEqual(ours, theirs, places=9)
            self.assertEqual(attribute["height"], height)
            for mode in ("invisible", "constant", "verify", "preset"):
                self.assertEqual(attribute[mode], mode in modes, f"{tag} {mode}")

    def check_definitions(self, facts):
        desk = next(x for x in facts["blocks"] if x["name"] == "DESK")
        self.assertEqual(desk["base"], [0, 0, 0])
        classes = {x["tag"]: x["class"] for x in desk["attdefs"]}
        self.assertEqual(classes, {tag: "AcDbAttributeDefinition" for tag in
                                   ("PLAIN", "FIXED", "HIDDEN", "PRESET", "CHECKED")}
                         | {"CLEVER": "VNDKAttributeDefinition"})

    def test_into_a_new_drawing(self):
        self.batch(MAKE_BLOCK + INSERT + "SAVEAS 2000 new.dwg\n")
        facts = self.facts("new.dwg")
        self.check_references(facts, "0")
        self.check_definitions(facts)
        self.assertEqual(facts["warnings"], [])

    def test_a_second_run_finds_and_keeps_what_the_first_made(self):
        self.batch(MAKE_BLOCK + INSERT + "SAVEAS 2000 new.dwg\n")
        before = self.facts("new.dwg")
        self.batch("CIRCLE 0,0 5\nQSAVE\n", "new.dwg")
        after = self.facts("new.dwg")
        self.assertEqual(after["references"], before["references"])
        self.assertEqual(after["blocks"], before["blocks"])

    def test_undo_takes_an_insertion_back_whole(self):
        self.batch(MAKE_BLOCK + '(c:_bInsert "DESK" (list 1.0 2.0 3.0))\nU\nSAVEAS 2000 new.dwg\n')
        facts = self.facts("new.dwg")
        self.assertEqual(facts["references"], [])
        self.assertNotIn("TEXT", facts["counts"])

    def test_calls_that_insert_nothing(self):
        self.batch(MAKE_BLOCK + '(c:_bInsert)\n(c:_bInsert "DESK")\n(c:_bInsert "NOSUCH" (list 1.0 2.0 3.0))\n'
                   "SAVEAS 2000 new.dwg\n", None, "--keep-going")
        self.assertEqual(self.facts("new.dwg")["references"], [])

    def test_a_drawing_comes_in_with_answers(self):
        """The file is made by one run, and inserted by another."""
        self.batch(definition("OWNER", 0, 0, 10, 20, 2.5) + definition("ROOM", 0, 0, 10, 10, 2.5)
                   + "SAVEAS 2000 desk.dwg\n")
        self.batch('(c:_bInsertFile "desk.dwg" (list 1.0 2.0 0.0))\nJürgen Groß\n\nCIRCLE 0,0 5\nSAVEAS 2000 new.dwg\n')
        facts = self.facts("new.dwg")
        (reference,) = facts["references"]
        self.assertEqual(reference["original_name"], "desk")
        self.assertEqual([(x["tag"], x["text"], x["default"]) for x in reference["attributes"]],
                         [("OWNER", "Jürgen Groß", "owner value"), ("ROOM", "room value", "room value")])
        self.assertEqual(facts["counts"]["CIRCLE"], 1)
        self.assertEqual(facts["warnings"], [])

    def test_a_script_fails_where_a_drawing_cannot_come_in(self):
        done = self.batch('LINE 0,0 1,1\n\n(c:_bInsertFile "none.dwg" (list 0.0 0.0 0.0))\nSAVEAS 2000 new.dwg\n', status=1)
        self.assertIn("line 3: Could not load drawing selected. Perhaps it is open by another user.", done.stderr)
        self.assertIn("none.dwg can't be opened: No such file or directory.", done.stdout)
        self.assertFalse((self.folder / "new.dwg").exists())

    @needs_drawings
    def test_into_real_drawings(self):
        kept = total = 0
        for drawing in real_drawings("r2000"):
            with self.subTest(drawing.name):
                before = self.facts(drawing)
                saved = self.folder / drawing.name
                # A copy: other tests, at the same time, can't read what is open for writing.
                given = shutil.copy(drawing, self.folder / "given.dwg")
                self.batch('(setvar "CLAYER" "0")\n' + FROM_ABOVE + MAKE_BLOCK + INSERT + f"SAVEAS 2000 {saved}\n",
                           given)
                after = self.facts(saved)
                self.check_references(after, "0")
                self.check_definitions(after)
                self.check_rest(before, after)
                old, new = objects_of(drawing), objects_of(saved)
                changed = [handle for handle, record in old.items() if new.get(handle) != record]
                kept += len(old) - len(changed)
                total += len(old)
                # The spaces, their last entities, and the tables that got a record: nothing else is touched.
                self.assertLessEqual(len(changed), 12, changed)
        print(f"insertion: {kept} of {total} objects of the drawings bit-identical beside the new ones")

    def check_rest(self, before, after):
        for name in ("version", "codepage", "layers", "linetypes", "styles", "mtexts", "texts", "warnings"):
            self.assertEqual(after[name], before[name], name)
        for name in ("blocks", "references"):
            kept = {x["handle"] for x in before[name]}
            self.assertEqual([x for x in after[name] if x["handle"] in kept], before[name], name)
        for name, count in before["counts"].items():
            self.assertGreaterEqual(after["counts"].get(name, 0), count, name)


if __name__ == "__main__":
    unittest.main(verbosity=2)
