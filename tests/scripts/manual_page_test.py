#!/usr/bin/env python3
"""The manual page has an entry for each command of the host, and for no other."""

import re
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


class ManualPage(unittest.TestCase):
    def test_lists_the_commands(self):
        table = (ROOT / "host/commands/command_table.cpp").read_text()
        commands = set(re.findall(r'^    \{"([A-Z]+)"', table, re.M))
        self.assertIn("LINE", commands)
        page = (ROOT / "apps/vondrake/vondrake.1").read_text()
        section = re.search(r"^\.SH COMMANDS$(.*?)^\.SH ", page, re.M | re.S).group(1)
        entries = re.findall(r"^\.TP\n\.BR? (.*)$", section, re.M)
        listed = {name for entry in entries for name in re.findall("[A-Z0-9]+", entry)}
        # The module's and the program's own stand there too; the module takes the place of one of the host's.
        self.assertEqual(commands - listed - {"EATTEDIT"}, set())
        self.assertEqual(listed - commands, {"BLOCKS", "DDATTE", "DDATTE2", "VNDKATTDEF"})
        first = [re.match("[A-Z]+", entry).group() for entry in entries]
        self.assertEqual(first, sorted(first))


if __name__ == "__main__":
    unittest.main()
