"""Each case changes a sound script or header in one place, and tells what check_resources has to say about it."""

import sys
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
import check_resources  # noqa: E402

PLATFORM = "#define IDOK 1\n#define IDC_STATIC (-1)\n"
HEADER = """#define IDS_TITLE 101
#define IDS_OTHER 102
#define IDD_SAMPLE 101
#define IDC_NAME 7
#define IDR_MENU 250
#define ID_OPEN 300
#define IDI_SAMPLE 7
#define IDC_CURSOR_SAMPLE 7
"""
SCRIPT = """// "A remark" with IDC_LOST.
STRINGTABLE
BEGIN
    IDS_TITLE "A ""title"" // of IDC_LOST"
    IDS_OTHER "Other"
END
IDD_SAMPLE DIALOGEX 0, 0, 10, 10
STYLE WS_POPUP
CAPTION "Sample"
FONT 8, "MS Sans Serif"
BEGIN
    CONTROL "OK", IDOK, "BUTTON", 0, 0, 0, 1, 1
    CONTROL "", IDC_NAME, "EDIT", 0, 0, 0, 1, 1
    CONTROL "a", IDC_STATIC, "STATIC", 0, 0, 0, 1, 1
    CONTROL "b", IDC_STATIC, "STATIC", 0, 0, 0, 1, 1
END
IDR_MENU MENU
BEGIN
    POPUP "One"
    BEGIN
        MENUITEM "Open", ID_OPEN
    END
    POPUP "Two"
    BEGIN
        MENUITEM "Open", ID_OPEN
    END
END
IDI_SAMPLE ICON "sample.ico"
IDC_CURSOR_SAMPLE CURSOR "sample.cur"
"""

# (text, what stands there instead, words of the expected fault)
CASES = [
    ("    IDS_OTHER \"Other\"\n", "", "IDS_OTHER is nowhere used"),
    ("IDS_OTHER 102", "IDS_OTHER 101", "IDS_TITLE and IDS_OTHER are both 101"),
    ("    IDS_OTHER \"", "    102 \"", "strings: 102 is no name"),
    ("    IDS_OTHER \"", "    IDS_TITLE \"", "strings: IDS_TITLE (101) stands twice"),
    ("\"\", IDC_NAME", "\"\", 7", "controls of IDD_SAMPLE: 7 is no name"),
    ("\"\", IDC_NAME", "\"\", IDOK", "controls of IDD_SAMPLE: IDOK (1) stands twice"),
    ("IDC_NAME 7", "IDC_NAME 1", "controls of IDD_SAMPLE: IDC_NAME (1) stands twice"),
    ("IDI_SAMPLE ICON", "7 ICON", "ICON: 7 is no name"),
    ("CURSOR \"sample.cur\"", "ICON \"sample.ico\"", "ICON: IDC_CURSOR_SAMPLE (7) stands twice"),
    ("\"Open\", ID_OPEN\n", "\"Open\", 300\n", "menu items: 300 is no name"),
    ("IDC_NAME 7\n", "IDC_NAME 7\n#define IDC_LOST 9\n", "IDC_LOST is nowhere used"),
]


class CheckResourcesTest(unittest.TestCase):
    def test_sound_script_has_no_fault(self):
        self.assertEqual(check_resources.faults_of(SCRIPT, HEADER, PLATFORM), [])

    def test_each_fault_is_told(self):
        for old, new, expected in CASES:
            with self.subTest(new or old):
                self.assertIn(old, SCRIPT + HEADER)
                faults = check_resources.faults_of(SCRIPT.replace(old, new), HEADER.replace(old, new), PLATFORM)
                self.assertTrue(any(expected in fault for fault in faults), faults)


if __name__ == "__main__":
    unittest.main()
