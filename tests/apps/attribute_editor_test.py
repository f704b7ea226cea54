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
