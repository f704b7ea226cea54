"""--facts and an unchanged save, beside what an independent reader found in real drawings."""

import json
import shutil
import time
import unittest
from collections import Counter

from support import Case, needs_drawings, objects_of, real_drawings

CLOSE = 1e-6


def by_handle(items):
    return {item["handle"]: item for item in items}


@needs_drawings
class RealDrawings(Case):
    def test_facts_agree_with_those_beside_the_drawing(self):
        compared = 0
        for drawing in real_drawings("r2000"):
            with self.subTest(drawing.name):
                expected = json.loads(drawing.with_suffix(".facts.json").read_text())
                self.compare(self.facts(drawing), expected)
                compared += 1
        print(f"facts: {compared} drawings agree with the facts beside them")
        self.assertGreater(compared, 0)

    def compare(self, facts, expected):
        self.assertEqual(facts["version"], expected["version"])
        self.compare_counts(facts["counts"], expected["counts"])
        self.assertEqual([(x["name"], x["color"], x["linetype"]) for x in facts["layers"]],
                         [(x["name"], x["color"], x["ltype"]) for x in expected["layers"]])
        self.assertEqual(Counter(facts["linetypes"]), Counter(expected["ltypes"]))
        self.assertEqual([(x["name"], x["font"]) for x in facts["styles"]],
                         [(x["name"], x["font"]) for x in expected["styles"]])
        self.assertEqual(Counter(x["name"] for x in facts["blocks"]), Counter(expected["blocks"]))
        self.compare_definitions(facts, expected)
        self.compare_references(facts, expected)
        self.compare_texts(facts["texts"], expected["texts"], "TEXT")
        self.compare_texts(facts["mtexts"], expected["mtexts"], "MTEXT")
        self.assertEqual(facts["warnings"], [])

    def compare_counts(self, counts, expected):
        """Classes that the other reader doesn't know are UNKNOWN_... there and have their names here."""
        unknown = sum(n for name, n in expected.items() if name.startswith("UNKNOWN_"))
        known = {name: n for name, n in expected.items() if not name.startswith("UNKNOWN_")}
        self.assertEqual({name: n for name, n in counts.items() if name in known}, known)
        self.assertEqual(sum(n for name, n in counts.items() if name not in known), unknown)

    def compare_definitions(self, facts, expected):
        ours = {block["name"]: block["attdefs"] for block in facts["blocks"] if block["attdefs"]}
        theirs = expected["attdefs"]
        self.assertEqual(set(ours), set(theirs))
        for block, definitions in theirs.items():
            self.assertEqual([(x["tag"], x["prompt"], x["default"]) for x in ours[block]],
                             [(x["tag"], x["prompt"], x["default"]) for x in definitions])
            for our, their in zip(ours[block], definitions):
                flags = our["invisible"] + 2 * our["constant"] + 4 * our["verify"] + 8 * our["preset"]
                self.assertEqual(flags, their["flags"] & 15)
                self.same_point(our["position"], their["pt"])
                self.assertAlmostEqual(our["height"], their["height"], delta=CLOSE)

    def compare_references(self, facts, expected):
        ours = by_handle(facts["references"])
        self.assertEqual(set(ours), {x["h"] for x in expected["inserts"]})
        for their in expected["inserts"]:
            our = ours[their["h"]]
            self.assertEqual((our["space"], our["block"], our["layer"]), (their["in"], their["block"], their["layer"]))
            self.same_point(our["position"], their["pt"])
            self.same_point(our["scale"], their["scale"])
            self.assertAlmostEqual(our["rotation"], their["rot"], delta=CLOSE)
            attributes = their.get("attribs", [])
            self.assertEqual([[x["tag"], x["text"]] for x in our["attributes"]], [x[:2] for x in attributes])
            for mine, other in zip(our["attributes"], attributes):
                self.same_point(mine["position"], other[2])

    def compare_texts(self, ours, theirs, kind):
        ours = by_handle(ours)
        self.assertEqual(set(ours), {x["h"] for x in theirs}, kind)
        for their in theirs:
            our = ours[their["h"]]
            self.assertEqual((our["space"], our["layer"], our["text"]), (their["in"], their["layer"], their["text"]))
            self.same_point(our["position"], their["pt"])

    def same_point(self, ours, theirs):
        for a, b in zip(ours, theirs):
            self.assertAlmostEqual(a, b, delta=CLOSE * max(1, abs(b)))

    def test_an_unchanged_save_keeps_every_object(self):
        for drawing in real_drawings("r2000", "big"):
            with self.subTest(drawing.name):
                saved = self.folder / ("saved-" + drawing.name)
                # A copy: other tests, at the same time, can't read what is open for writing.
                given = shutil.copy(drawing, self.folder / "given.dwg")
                self.batch(f"SAVEAS 2000 {saved}\n", given)
                before, after = objects_of(drawing), objects_of(saved)
                same = sum(after.get(handle) == record for handle, record in before.items())
                print(f"{drawing.name}: {same} of {len(before)} objects bit-identical after a save")
                self.assertEqual(same, len(before))
                self.assertEqual(set(after), set(before))
                self.assertEqual(self.facts(saved), self.facts(drawing))

    def test_the_big_plan_has_what_was_drawn(self):
        for drawing in real_drawings("big"):
            started = time.monotonic()
            facts = self.facts(drawing)
            print(f"{drawing.name}: facts in {time.monotonic() - started:.1f} s")
            self.assertGreaterEqual(sum(facts["counts"].values()), 150_000)
            self.assertEqual(len(facts["references"]), facts["counts"]["INSERT"])
            attributes = sum(len(x["attributes"]) for x in facts["references"])
            self.assertEqual(attributes, facts["counts"]["ATTRIB"])
            self.assertEqual(facts["warnings"], [])

    def test_facts_are_the_same_each_time(self):
        drawing = real_drawings("r2000")[-1]
        self.assertEqual(self.run_program("--facts", drawing).stdout, self.run_program("--facts", drawing).stdout)

    def test_older_and_newer_releases_are_refused_with_their_version(self):
        for drawing in real_drawings("r14", "thumbs"):
            done = self.run_program("--facts", drawing)
            self.assertEqual(done.returncode, 3, drawing)
            self.assertIn(drawing.name, done.stderr)
            self.assertEqual(done.stdout, "")

    def test_a_drawing_cut_anywhere_is_refused(self):
        whole = real_drawings("r2000")[0].read_bytes()
        cut = self.folder / "cut.dwg"
        for length in (7, 20, 60, 200, len(whole) // 3, len(whole) // 2, len(whole) - 400):
            cut.write_bytes(whole[:length])
            done = self.run_program("--facts", cut)
            self.assertEqual(done.returncode, 3, f"{length} bytes: {done.stderr}")
            self.assertIn("cut.dwg", done.stderr)


if __name__ == "__main__":
    unittest.main(verbosity=2)
