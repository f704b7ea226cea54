#!/usr/bin/env python3
"""Checks a resource script against the header with its numbers.

usage: check_resources.py [SCRIPT.rc HEADER.h]

Every number of the header is used in the script; every control of a dialog, every string, every menu item and every
resource goes by a name of the header or of the platform's header, never by a bare number; and no number stands twice
among the names of one kind, among the resources of one type, among the strings or among the controls of one dialog.
"""
import collections
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDER = ROOT / "module/resources"
PLATFORM = ROOT / "platform/win32/include/win32/winres.h"
# Kinds whose numbers all differ. Controls need not: each dialog has numbers of its own.
KINDS = ("IDS_", "IDD_", "IDR_", "ID_", "IDI_", "IDB_", "IDC_CURSOR_")
NO_NUMBER = "IDC_STATIC"


def names_of(header):
    return {name: int(number, 0) for name, number in
            re.findall(r"^#define (ID\w+) \(?(-?\w+)\)?", header, re.MULTILINE)}


def without_comments(script):
    return re.sub(r'("(?:[^"\n]|"")*")|//[^\n]*', lambda match: match.group(1) or "", script)


def kind_of(name):
    return next((kind for kind in KINDS if name.startswith(kind)), None)


def uses_of(script):
    """(space, name) of everything that has a number; within a space no number may stand twice."""
    uses = []
    dialog = ""
    for line in script.splitlines():
        resource = re.match(r"(\w+) ([A-Z]+)\b(?! *,)", line)
        control = re.match(r'\s+CONTROL "(?:[^"]|"")*", ([\w-]+)', line)
        item = re.match(r'\s+MENUITEM "(?:[^"]|"")*", (\w+)', line)
        string = re.match(r'\s+(\w+) "', line)
        if resource and resource.group(1) not in ("STYLE", "CAPTION", "FONT"):
            dialog = resource.group(1)
            uses.append((resource.group(2), dialog))
        elif control:
            uses.append((f"controls of {dialog}", control.group(1)))
        elif item:
            uses.append(("menu items", item.group(1)))
        elif string and string.group(1) not in ("MENUITEM", "POPUP", "CONTROL"):
            uses.append(("strings", string.group(1)))
    return uses


def faults_of(script, header, platform):
    script = without_comments(script)
    own, known = names_of(header), names_of(platform)
    known.update(own)
    words = set(re.findall(r"\w+", re.sub(r'"(?:[^"\n]|"")*"', "", script)))
    faults = [f"{name} is nowhere used" for name in own if name not in words]

    kinds = collections.defaultdict(list)
    for name, number in own.items():
        if kind_of(name):
            kinds[kind_of(name), number].append(name)
    faults += [f"{' and '.join(names)} are both {number}" for (_, number), names in kinds.items() if len(names) > 1]

    seen = set()
    for space, name in uses_of(script):
        if name not in known:
            faults.append(f"{space}: {name} is no name of the header")
            continue
        # Items may stand in several popups.
        if name != NO_NUMBER and space != "menu items" and (space, known[name]) in seen:
            faults.append(f"{space}: {name} ({known[name]}) stands twice")
        seen.add((space, known[name]))
    return faults


def main(arguments):
    if len(arguments) not in (0, 2):
        print(__doc__, file=sys.stderr)
        return 2
    script, header = arguments or (FOLDER / "VNDKKeldmoor.rc", FOLDER / "resource.h")
    texts = [pathlib.Path(path).read_text(encoding="cp1252") for path in (script, header, PLATFORM)]
    faults = faults_of(*texts)
    for fault in faults:
        print(f"{script}: {fault}")
    print(f"check_resources: {len(uses_of(without_comments(texts[0])))} uses of numbers, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
