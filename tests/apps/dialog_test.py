"""Dialogs that a script works in, through the built program."""

import random
import struct
import unittest

from support import Case, MAKE_DESK

RELOAD = "ARX U VNDKKeldmoor.arx\nARX L VNDKKeldmoor.arx\n"
TITLE = "Getting Started Tips"


class Tips(Case):
    """The tips come up when a script loads the module anew."""

    def settings(self):
        files = list(self.folder.glob("config/**/*.ini"))
        return files[0].read_text() if files else ""

    def test_the_start_of_a_batch_shows_none(self):
        self.assertNotIn(TITLE, self.batch("(princ)\n").stdout)

    def test_steps_work_in_the_dialog_and_are_told(self):
        done = self.batch(RELOAD + "SHOW\n\n; a comment\nclick \"do not show again\" ; another\nPRESS Enter\n"
                          "(princ \"behind\")\n")
        self.assertRegex(done.stdout, rf'\n{TITLE}: SHOW\nDialog "{TITLE}"\n +1  button "OK", default, focus\n'
                         r' +269  text box "Vondrake Freeware Version.*", read-only\n'
                         r' +270  check box "Do not show again", not checked\n')
        self.assertIn("behind", done.stdout)
        self.assertIn("DoNotShow=1", self.settings())
        # Once ticked they stay away, and the same lines are none any more.
        done = self.batch(RELOAD + "SHOW\n", status=1)
        self.assertIn('line 3: Unknown command "SHOW".  Press F1 for help. '
                      "It is a step in a dialog, and no dialog is open here.", done.stderr)

    def test_a_picture(self):
        self.batch(RELOAD + "PICTURE small.png\nPICTURE \"C:\\large one.png\" 3\nCLICK 1\n")
        sizes = [struct.unpack_from(">2L", (self.folder / name).read_bytes(), 16)
                 for name in ("small.png", "large one.png")]
        self.assertEqual(sizes[1], (sizes[0][0] * 3, sizes[0][1] * 3))
        self.assertGreater(sizes[0][0], 300)

    def test_what_cannot_be_done_names_the_line_and_the_dialog(self):
        script = self.folder / "work.scr"
        for step, complaint in (("CLICK \"Cancel\"", "there is no such control"), ("CLIK 1", "\"CLIK\" is no step"),
                                ("TYPE", "TYPE needs a text"), ("(princ)", r"\"\(princ\)\" is no step"),
                                ("CLICK 270 900,900", "is covered")):
            script.write_text(f"{RELOAD}SHOW\n{step}\n(princ \"behind\")\n")
            done = self.run_program("--batch", script)
            self.assertEqual(done.returncode, 1, done.stderr)
            self.assertRegex(done.stderr, rf'work\.scr, line 4: .*{complaint}.* The dialog "{TITLE}" is open '
                             r'\(1 button "OK", 269 text box, 270 check box "Do not show again"\)\. Steps are CLICK, ')
            self.assertNotIn("behind", done.stdout)

    def test_an_end_in_the_dialog(self):
        for end in ("", "SHOW", "; nothing"):
            done = self.batch(RELOAD + end, status=1)
            self.assertRegex(done.stderr, f'line 2: The script ended while the dialog "{TITLE}" was open')

    def test_keeping_on_after_a_failure(self):
        done = self.batch(RELOAD + "CLICK 99\n(princ \"one\")\n" + RELOAD + "CLICK 1\n(princ \"two\")\n", None,
                          "--keep-going", status=1)
        self.assertIn("one", done.stdout)
        self.assertIn("two", done.stdout)
        self.assertEqual(done.stderr.count("line "), 1, done.stderr)

    def test_the_cancelling_character(self):
        done = self.batch(RELOAD + "\x1b\n(princ \"behind\")\n")
        self.assertIn("behind", done.stdout)

    def test_any_steps_come_to_an_end(self):
        steps = ["CLICK 269", "CLICK 269 20,40", "DOUBLECLICK 269 20,40", "RIGHTCLICK 269 30,30", "CLICK 270",
                 "WHEEL 269 -2", "WHEEL 269 1", "DRAG 269 10,10 200,90", "DRAG 0 60,-10 90,30", "PRESS Tab",
                 "PRESS Shift+Tab", "PRESS PageDown End Home", "PRESS Ctrl+C", "PRESS Alt+Space", "PRESS F10",
                 "PRESS Space", "PRESS Down Up", "TYPE some words", "ITEM 269 1", "SHOW", "PICTURE p.png", "PICK Move",
                 "CLICK 0 5,-10", "CLICK 0 2,2"]
        chance = random.Random(270)
        for _ in range(12):
            done = self.run_program("--batch", "-", "--keep-going",
                                    text=RELOAD + "".join(chance.choice(steps) + "\n" for _ in range(15)))
            self.assertIn(done.returncode, (0, 1), done.stderr)
            self.assertNotIn("can't be closed", done.stderr)


class Attributes(Case):
    def setUp(self):
        super().setUp()
        self.batch(MAKE_DESK)

    def values(self):
        return [a["text"] for r in self.facts("plan.dwg")["references"] for a in r["attributes"]]

    def test_values_are_typed_into_the_list(self):
        self.assertEqual(self.values(), ["1", "Office"])
        done = self.batch("DDATTE\n25,7\nITEM 220 1 2\nTYPE A 42\nPRESS Enter\nTYPE Büro; 2. Stock\nSHOW\n"
                          "CLICK \"OK\"\nQSAVE\n", "plan.dwg")
        self.assertIn("            1 Number | A 42\n", done.stdout)
        self.assertEqual(self.values(), ["A 42", "Büro; 2. Stock"])
        self.batch("(c:ddatte)\n25,7\nITEM 220 \"Room\" 2\nTYPE x\nCLICK \"Cancel\"\nQSAVE\n", "plan.dwg")
        self.assertEqual(self.values(), ["A 42", "Büro; 2. Stock"])

    def test_the_picked_point_and_a_step_on_one_line(self):
        self.batch("(c:ddatte) 25,7 ITEM 220 2 2\nPRESS Home Shift+End Delete\nTYPE Lab\nCLICK \"OK\"\nU\nQSAVE\n"
                   "DDATTE 25,7 ITEM 220 1 2\nTYPE 7\nCLICK \"OK\"\nQSAVE\n", "plan.dwg")
        self.assertEqual(self.values(), ["7", "Office"])

    def test_a_failed_step_changes_nothing(self):
        former = (self.folder / "plan.dwg").read_bytes()
        done = self.batch("DDATTE 25,7\nITEM 220 1 2\nTYPE 8\nITEM 220 3 2\nCLICK \"OK\"\nQSAVE\n", "plan.dwg", status=1)
        self.assertIn("line 4: click on 220: there is no such item; it has 2.", done.stderr)
        self.assertIn('The dialog "Edit Attribute" is open', done.stderr)
        self.assertEqual((self.folder / "plan.dwg").read_bytes(), former)
        done = self.batch("DDATTE 25,7\nITEM 220 1 2\nTYPE 8\nNONSENSE\nQSAVE\n", "plan.dwg", "--keep-going", status=1)
        self.assertEqual(self.values(), ["1", "Office"], done.stdout)


class Files(Case):
    """A tilde in place of a drawing's name asks in the dialog, with a script as well."""

    def test_a_drawing_is_opened_and_saved_by_dialog(self):
        self.batch(MAKE_DESK)
        done = self.batch("OPEN\n~\nSHOW\nTYPE plan\nCLICK \"Open\"\nSAVEAS 2000 ~\nTYPE copy\nCLICK \"Save\"\n")
        self.assertIn('Dialog "Open Drawing"', done.stdout)
        self.assertEqual(self.facts("copy.dwg")["references"], self.facts("plan.dwg")["references"])
        # Giving up there is no failure; neither is a name that isn't there, which the dialog tells by itself.
        self.batch("OPEN\n~\nTYPE none\nCLICK \"Open\"\nCLICK \"OK\"\nCLICK \"Cancel\"\n")


if __name__ == "__main__":
    unittest.main(verbosity=2)
