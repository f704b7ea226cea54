"""The Enhanced Attribute Editor in a script; the saved drawing is looked at by another process."""

import unittest

from support import Case, MAKE_DESK

PICK = {"VNDKBlockReference": "25,7", "AcDbBlockReference": "125,7"}  # a line of each reference
PLAIN = "(setvar \"ATTREQ\" 0)\n-INSERT DESK\n120,10 1 1 0\n"

EDIT = """ITEM 253 1 2
TYPE 42
PRESS Down
TYPE Büro & "Küche"
ITEM 200 2
ITEM 255 "Top Center"
CLICK 256
PRESS Home Shift+End
TYPE 3.5
PRESS Tab
ITEM 200 3
ITEM 262 "Red"
ITEM 264 "0.50 mm"
CLICK "OK"
"""


class AttributeEditor(Case):
    def reference(self, drawing, kind):
        return next(x for x in self.facts(drawing)["references"] if x["class"] == kind)

    def properties(self, drawing, handle):
        """The attribute's group codes as another run of the program tells them."""
        told = self.batch("(setq e (entnext))\n(while e (print (entget e)) (setq e (entnext e)))\n", drawing).stdout
        return next(line for line in told.splitlines() if f'(5 . "{handle}")' in line)

    def test_values_and_properties_are_in_the_file(self):
        self.batch(MAKE_DESK + PLAIN + "SAVEAS 2000 both.dwg\n")
        for kind, place in PICK.items():
            with self.subTest(kind):
                before = self.reference("both.dwg", kind)["attributes"]
                edited = kind + ".dwg"
                self.batch(f"EATTEDIT {place}\n{EDIT}SAVEAS 2000 {edited}\n", "both.dwg")
                number, room = self.reference(edited, kind)["attributes"]
                self.assertEqual((number["text"], room["text"]), ("42", 'Büro & "Küche"'))
                self.assertEqual((number["height"], room["height"]), (1, 3.5))
                self.assertEqual(number["position"], before[0]["position"])
                told = self.properties(edited, room["handle"])
                for pair in ("(62 . 1)", "(370 . 50)", "(72 . 1)"):
                    self.assertIn(pair, told)
                self.assertNotIn("(62 . 1)", self.properties(edited, number["handle"]))
                other = next(k for k in PICK if k != kind)
                self.assertEqual(self.reference(edited, other), self.reference("both.dwg", other))

    def test_fifteen_justifications_are_in_the_file(self):
        # Group codes 72 and 74 of each row of the list, in its order.
        codes = [(0, 0), (3, 0), (5, 0), (1, 0), (4, 0), (2, 0)] + [(h, v) for v in (3, 2, 1) for h in (0, 1, 2)]
        names = ["Left", "Align", "Fit", "Center", "Middle", "Right"] + [
            f"{v} {h}" for v in ("Top", "Middle", "Bottom") for h in ("Left", "Center", "Right")]
        self.batch(MAKE_DESK)
        for kind, x in (("VNDKBlockReference", 20), ("AcDbBlockReference", 120)):
            insert = '(c:_bInsert "DESK" (list {x} {y} 0))\n' if x == 20 else "-INSERT DESK\n{x},{y} 1 1 0\n"
            edit = 'EATTEDIT {px},{py}\nITEM 253 1 2\nITEM 200 2\nITEM 255 "{name}"\nCLICK "OK"\n'
            script = '(setvar "ATTREQ" 0)\n'
            for row, name in enumerate(names):
                y = 40 + 30 * row
                script += insert.format(x=x, y=y) + edit.format(px=x + 5, py=y - 3, name=name)
            self.batch(script + f"SAVEAS 2000 {kind}.dwg\n", "plan.dwg")
            references = {r["position"][1]: r for r in self.facts(kind + ".dwg")["references"] if r["class"] == kind}
            told = self.batch("(setq e (entnext))\n(while e (print (entget e)) (setq e (entnext e)))\n",
                              kind + ".dwg").stdout.splitlines()
            for row, (horizontal, vertical) in enumerate(codes):
                handle = references[40 + 30 * row]["attributes"][0]["handle"]
                properties = next(line for line in told if f'(5 . "{handle}")' in line)
                with self.subTest(kind=kind, name=names[row]):
                    self.assertIn(f"(72 . {horizontal})", properties)
                    self.assertRegex(properties, rf"\(7[34] \. {vertical}\)")

    def test_one_undo_takes_all_back(self):
        self.batch(MAKE_DESK + PLAIN + "SAVEAS 2000 both.dwg\n")
        for kind, place in PICK.items():
            self.batch(f"EA {place}\n{EDIT}U\nSAVEAS 2000 {kind}.dwg\n", "both.dwg")
            self.assertEqual(self.reference(kind + ".dwg", kind), self.reference("both.dwg", kind))

    def test_a_script_that_ends_at_the_prompt_or_in_the_editor(self):
        self.batch(MAKE_DESK)
        done = self.batch("EATTEDIT\n", "plan.dwg", status=1)
        self.assertIn("EATTEDIT was still asking when the input ended.", done.stderr)
        done = self.batch("EATTEDIT 25,7\nITEM 253 1 2\nTYPE 42\n", "plan.dwg", status=1)
        self.assertIn('The script ended while the dialog "Enhanced Attribute Editor" was open', done.stderr)
        done = self.batch("EATTEDIT 25,7\nCLICK 251\n", "plan.dwg", status=1)
        self.assertIn("EATTEDIT was still asking when the input ended.", done.stderr)

    def test_another_block(self):
        self.batch(MAKE_DESK + PLAIN + "SAVEAS 2000 both.dwg\n")
        self.batch("EATTEDIT 25,7\nITEM 253 1 2\nTYPE dropped\nCLICK 251\n125,7\nITEM 253 1 2\nTYPE kept\nCLICK 1\n"
                   "SAVEAS 2000 edited.dwg\n", "both.dwg")
        texts = [self.reference("edited.dwg", kind)["attributes"][0]["text"] for kind in PICK]
        self.assertEqual(texts, ["1", "kept"])


if __name__ == "__main__":
    unittest.main()
