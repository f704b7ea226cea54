"""Options, exit statuses and scripts, through the built program."""

import os
import random
import subprocess
import time
import unittest
from pathlib import Path

from support import Case, PROGRAM, TIME_LIMIT


class Options(Case):
    def test_wrong_usage(self):
        for arguments in ([], ["plan.dwg"], ["--batch"], ["--facts"], ["--nonsense"], ["--facts", "a.dwg", "b.dwg"],
                          ["--batch", "-", "a.dwg", "b.dwg"], ["--facts", "a.dwg", "--batch", "-"], ["--help=yes"],
                          ["--facts", "a.dwg", "--keep-going"], ["--batch", "-", "--scale", "2"], ["--facts", ""], ["--facts", "a.dwg", "--drive"],
                          ["--facts", "a.dwg", "--drive", "C"], ["--facts", "a.dwg", "--drive", "CC=/"],
                          ["--facts", "a.dwg", "--drive", "D=/no/such/folder"]):
            done = self.run_program(*arguments)
            self.assertEqual(done.returncode, 2, f"{arguments}: {done.stderr}")
            self.assertRegex(done.stderr, r"^vondrake: .+")
            self.assertEqual(done.stdout, "")

    def test_help_and_version(self):
        text = self.run_program("--help").stdout
        for option in ("--batch", "--facts", "--drive", "--profile", "--keep-going", "--version"):
            self.assertIn(option, text)
        self.assertRegex(self.run_program("--version").stdout, r"^vondrake \d+\.\d+\.\d+\n$")

    def test_unreadable_things(self):
        (self.folder / "text.dwg").write_text("This is no drawing at all, but it is long enough to be looked at.")
        (self.folder / "empty.dwg").write_bytes(b"")
        for name in ("missing.dwg", "text.dwg", "empty.dwg", "."):
            for arguments in (["--facts", name], ["--batch", "-", name]):
                done = self.run_program(*arguments)
                self.assertEqual(done.returncode, 3, f"{arguments}: {done.stderr}")
                self.assertRegex(done.stderr, r"^vondrake: .{10,}")
        done = self.run_program("--batch", "missing.scr")
        self.assertEqual(done.returncode, 2)
        self.assertIn("missing.scr", done.stderr)

    def test_output_that_cannot_be_written(self):
        self.batch("LINE 0,0 1,1\n\nSAVEAS 2000 a.dwg\n")
        with open("/dev/full", "wb") as full:
            done = subprocess.run([PROGRAM, "--facts", "a.dwg"], stdout=full, stderr=subprocess.PIPE,
                                  cwd=self.folder, env=self.environment, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"could not be written", done.stderr)


class Scripts(Case):
    def test_the_first_failure_stops_the_run_and_names_its_line(self):
        script = self.folder / "work.scr"
        for line, status in (("NOSUCHCOMMAND", 1), ("(car 1)", 1), ("(/ 1 0)", 1), ("LINE 0,0 north", 1),
                             ("OPEN missing.dwg", 3), ("SAVEAS 2000 /no/such/folder/a.dwg", 3)):
            script.write_text(f"; a comment\n(princ \"before\")\n{line}\n\n(princ \"after\")\n")
            done = self.run_program("--batch", script)
            self.assertEqual(done.returncode, status, f"{line}: {done.stdout}\n{done.stderr}")
            self.assertRegex(done.stderr, r"work\.scr, line 3: .+")
            self.assertIn("before", done.stdout)
            self.assertNotIn("after", done.stdout.replace("(princ \"after\")", ""))

    def test_keep_going(self):
        done = self.batch("(car 1)\nNOSUCH\n(princ (* 6 7))\n(princ)\n", None, "--keep-going", status=1)
        self.assertIn("42", done.stdout)
        self.assertRegex(done.stderr, r"standard input, line 1: [^\n]+\n(.*\n)*vondrake: standard input, line 2: ")
        self.batch("(car 1)\nOPEN missing.dwg\n(car 1)\n", None, "--keep-going", status=3)

    def test_input_that_ends_within_a_command_or_expression(self):
        for script in ("LINE 0,0", "LINE", "(princ 1", "(princ \"open", "CIRCLE 1,1\n"):
            done = self.batch(script, status=1)
            self.assertIn("line 1:", done.stderr)

    def test_what_a_line_means(self):
        done = self.batch("LINE 0,0 10,0\n10,10 ; a comment\n\n"
                          "(setq a 1 ; a comment within\n  b 2)\n"
                          "TEXT 0,0 2.5 0\ntwo words; and no comment\n\n"
                          "!b\nQSAVE 2000 kept.dwg\n")
        facts = self.facts("kept.dwg")
        self.assertEqual(facts["counts"]["LINE"], 2, done.stdout)
        self.assertEqual([x["text"] for x in facts["texts"]], ["two words; and no comment"])

    def test_an_empty_line_repeats_the_last_command(self):
        self.batch("CIRCLE 0,0 1\n\n5,5 2\nSAVEAS 2000 kept.dwg\n")
        self.assertEqual(self.facts("kept.dwg")["counts"]["CIRCLE"], 2)

    def test_line_ends_of_other_systems_and_a_missing_last_one(self):
        self.batch("LINE 0,0 1,1\r\n\r\nSAVEAS 2000 kept.dwg")
        self.assertEqual(self.facts("kept.dwg")["counts"]["LINE"], 1)

    def test_text_beyond_ascii_comes_back(self):
        words = "Fenêtre 1,2 m – größe € Ω Ж"
        self.batch("\ufeffTEXT 0,0 2.5 0\n" + words + "\n\nSAVEAS 2000 kept.dwg\n")
        self.assertEqual([x["text"] for x in self.facts("kept.dwg")["texts"]], [words])
        self.batch("TEXT 0,0 2.5 0\nFen\u00eatre\n\nSAVEAS 2000 other.dwg\n".encode("cp1252"))
        self.assertEqual([x["text"] for x in self.facts("other.dwg")["texts"]], ["Fenêtre"])

    def test_drives_and_names_in_both_forms(self):
        (self.folder / "Plans").mkdir()
        self.batch("LINE 0,0 1,1\n\nSAVEAS 2000 D:\\house.dwg\n", None, "--drive", f"D={self.folder}/Plans")
        self.assertTrue((self.folder / "Plans/house.dwg").is_file())
        for name in ("C:\\plans\\HOUSE.dwg", "Plans/house.dwg", str(self.folder / "Plans/house.dwg"),
                     f"Z:{self.folder}/Plans/house.dwg"):
            self.assertEqual(self.facts(name)["counts"]["LINE"], 1, name)
            self.batch("QSAVE\n", name)

    def test_a_save_keeps_the_former_drawing_and_no_lock(self):
        self.batch("LINE 0,0 1,1\n\nSAVEAS 2000 a.dwg\n")
        former = (self.folder / "a.dwg").read_bytes()
        self.batch("LINE 0,0 1,1\n\nQSAVE\n", "a.dwg")
        self.assertEqual((self.folder / "a.bak").read_bytes(), former)
        self.assertEqual(self.facts("a.dwg")["counts"]["LINE"], 2)
        self.assertEqual(sorted(p.name for p in self.folder.iterdir() if p.suffix in (".lock", ".tmp")), [])

    def test_an_open_drawing_is_kept_from_other_programs(self):
        self.batch("LINE 0,0 1,1\n\nSAVEAS 2000 a.dwg\n")
        lock = self.folder / ".a.dwg.lock"
        with self.running("(while T 1)\n", "a.dwg") as holder:
            self.wait_for(lock.exists)
            former = (self.folder / "a.dwg").read_bytes()
            self.assertEqual(self.facts("a.dwg")["counts"]["LINE"], 1)
            done = self.batch("LINE 0,0 2,2\n\nQSAVE\n", "a.dwg", status=3)
            self.assertRegex(done.stdout, rf"is open for writing by .*process {holder.pid}")
            self.assertRegex(done.stderr, "line 3: .*open for reading only")
            self.batch("SAVEAS 2000 a.dwg\nY\n", status=3)
            self.batch("LINE 0,0 2,2\n\nSAVEAS 2000 b.dwg\nLINE 0,0 3,3\n\nQSAVE\n", "a.dwg")
            self.assertEqual((self.folder / "a.dwg").read_bytes(), former)
            holder.kill()
            holder.wait()
            # What a killed program left locks nothing.
            self.assertTrue(lock.exists())
            self.batch("LINE 0,0 2,2\n\nQSAVE\n", "a.dwg")
        self.assertFalse(lock.exists())
        self.assertEqual(self.facts("a.dwg")["counts"]["LINE"], 2)
        self.assertEqual(self.facts("b.dwg")["counts"]["LINE"], 3)

    def test_saving_under_another_name_moves_the_lock(self):
        with self.running("SAVEAS 2000 a.dwg\nSAVEAS 2000 b.dwg\n(while T 1)\n"):
            self.wait_for((self.folder / ".b.dwg.lock").exists)
            self.wait_for(lambda: not (self.folder / ".a.dwg.lock").exists())

    def test_a_killed_save_leaves_the_old_drawing_or_the_new_one(self):
        self.batch("LINE 0,0 1,1\n\nSAVEAS 2000 a.dwg\n")
        chance = random.Random(15)
        for _ in range(8):
            with self.running("(while T (command \"CIRCLE\" \"0,0\" \"1\" \"QSAVE\"))\n", "a.dwg") as saver:
                self.wait_for((self.folder / "a.bak").exists)
                time.sleep(chance.random() / 10)
                saver.kill()
                saver.wait()
            self.assertEqual(self.facts("a.dwg")["warnings"], [])
            self.assertEqual(self.facts("a.dwg")["counts"]["LINE"], 1)
            (self.folder / "a.bak").unlink(missing_ok=True)

    def test_messages_name_files_beyond_ascii(self):
        done = self.batch("OPEN grün.dwg\nSAVEAS 2000 nö/grün.dwg\n", None, "--keep-going", status=3)
        for text in (done.stdout, done.stderr):
            self.assertIn(f"{self.folder}/grün.dwg", text)
            self.assertRegex(text, r"nö\\grün\.dwg: there is no such folder")

    def test_a_name_without_folder_when_the_folder_is_gone(self):
        (self.folder / "gone").mkdir()
        name = f"vondrake-{self.folder.name}.dwg"
        done = subprocess.run(["sh", "-c", 'cd gone && rmdir ../gone && exec "$0" --batch -', PROGRAM],
                              input=f"SAVEAS 2000 {name}\n".encode(), capture_output=True, cwd=self.folder,
                              env=self.environment, check=False)
        self.assertEqual(done.returncode, 3, done.stdout)
        self.assertIn(f'"{name}" can\'t name a drawing'.encode(), done.stderr)

    def test_what_is_no_file_stays(self):
        (self.folder / "folder.dwg").mkdir()
        os.mkfifo(self.folder / "pipe.dwg")
        names = ("folder.dwg", "pipe.dwg", "folder.dwg/", "T:")
        done = self.batch("".join(f"SAVEAS 2000 {name}\n" for name in names), None, "--keep-going", "--drive",
                          f"T={self.folder}", status=3)
        for line in range(1, 5):
            self.assertRegex(done.stderr, f"line {line}: .+(can't name a drawing|isn't a file that can be replaced)")
        self.assertTrue((self.folder / "pipe.dwg").is_fifo())
        self.assertEqual(list(self.folder.rglob("*.bak")), [])

    def test_a_run_that_fails_saves_nothing(self):
        self.batch("LINE 0,0 1,1\n\nSAVEAS 2000 a.dwg\n")
        former = (self.folder / "a.dwg").read_bytes()
        self.batch("LINE 0,0 1,1\n\n(car 1)\nQSAVE\n", "a.dwg", status=1)
        self.assertEqual((self.folder / "a.dwg").read_bytes(), former)

    def test_quit_ends_the_run(self):
        done = self.batch("QUIT\n(princ \"behind the end\")\n")
        self.assertNotIn("behind the end", done.stdout)
        done = self.batch("LINE 0,0 1,1\n\nQUIT Y\n(princ \"behind the end\")\n")
        self.assertNotIn("behind the end", done.stdout)

    def test_the_program_in_another_folder_finds_its_module(self):
        link = self.folder / "linked"
        os.symlink(PROGRAM, link)
        done = subprocess.run([link, "--batch", "-"], input=b"(princ (type c:_bInsert))\n", capture_output=True,
                              cwd=self.folder, env=self.environment, check=False)
        self.assertEqual(done.returncode, 0, done.stderr)


    def running(self, script, *drawing):
        """A program at work; it is ended with the block."""
        path = self.folder / "running.scr"
        path.write_text(script)
        return Running([PROGRAM, "--batch", str(path), *drawing], stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, cwd=self.folder, env=self.environment)

    def wait_for(self, condition):
        limit = time.monotonic() + TIME_LIMIT
        while not condition():
            self.assertLess(time.monotonic(), limit, "waited in vain")
            time.sleep(0.02)


class Running(subprocess.Popen):
    def __exit__(self, *error):
        self.kill()
        super().__exit__(*error)


class HostileScripts(Case):
    """None of them may crash, hang, or eat the machine."""

    def try_script(self, text, statuses=(0, 1)):
        started = time.monotonic()
        done = self.run_program("--batch", "-", "--keep-going", text=text)
        self.assertIn(done.returncode, statuses, done.stderr[-1000:])
        return time.monotonic() - started

    def test_unbalanced_and_deep_text(self):
        for text in ("(" * 200_000, ")" * 10_000, "(" * 100_000 + ")" * 100_000, "'" * 200_000 + "a",
                     "(quote " + "(" * 50_000, '"' * 9_999, "(a . b . c)", "(.)", "!" * 1_000, "((lambda (x)",
                     "(defun f (n) (f n)) (f 1)", "(setq l nil)\n" + "(setq l (list l l))\n" * 14 + "l\n"):
            self.try_script(text + "\n")

    def test_enormous_text(self):
        self.try_script("A" * 5_000_000 + "\n")
        self.try_script("(princ \"" + "B" * 5_000_000 + "\")\n")
        self.try_script("TEXT 0,0 1 0\n" + "C" * 1_000_000 + "\n\n")
        self.try_script("LINE 0,0 " + "9" * 1_000_000 + ",1\n\n")

    def test_binary_text(self):
        chance = random.Random(20_000_715)
        for _ in range(6):
            self.try_script(bytes(chance.randrange(256) for _ in range(20_000)), (0, 1, 3))
        self.try_script(Path(PROGRAM).read_bytes()[:200_000], (0, 1, 3))

    def test_a_script_without_end(self):
        done = self.run_program("--batch", "/dev/zero")
        self.assertEqual(done.returncode, 2)
        self.assertRegex(done.stderr, '"/dev/zero" can\'t be read: .+')

    def test_control_characters_do_not_cut_the_message(self):
        done = self.run_program("--batch", "-", text=b"NO\0SUCH\x1f\n")
        self.assertRegex(done.stderr, r"line 1: .*NO\?SUCH\?.*Press F1")

    def test_scripts_shuffled_from_real_words(self):
        words = ["LINE", "CIRCLE", "ARC", "PLINE", "TEXT", "ATTDEF", "BLOCK", "ERASE", "ALL", "L", "U", "UNDO", "REDO",
                 "-LAYER", "M", "UCS", "W", "0,0", "1e308,-1e308", "@5<45", "*", "?", "", "", "(c:_bInsert \"X\")",
                 "(command \"LINE\" '(0 0) '(1 1) \"\")", "(c:_bInsert \"X\" (list 1 2 3))", "X", "2.5", "0", "-1",
                 "VNDKATTDEF", "EATTEDIT", "SETVAR", "TILEMODE", "LIST", "\x1b", "(entget (entlast))", "CLOSE", "NEW"]
        chance = random.Random(1_999)
        for _ in range(10):
            self.try_script("\n".join(chance.choice(words) for _ in range(400)) + "\n", (0, 1, 3))


if __name__ == "__main__":
    unittest.main(verbosity=2)
