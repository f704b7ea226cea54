#!/usr/bin/env python3
"""Checks that every #include goes in the direction that the architecture allows.

A layer sees itself and the public headers (the include/ folder) of the layers listed for it in SEES. Everything
that a layer keeps outside its include/ folder is private to it. Tests, fuzz targets and benchmarks see all.

    scripts/check_layers.py [ROOT]

Prints file:line and a reason for each include that breaks a rule, and then fails.
"""

import os
import re
import sys
from pathlib import Path

# What each layer may include besides its own headers. docs/architecture.md draws the same picture.
SEES = {
    "platform/screen": (),
    "platform/win32": ("platform/screen",),
    "platform/mfc": ("platform/win32", "platform/screen"),
    "drawing": (),
    "objects": ("drawing",),
    "host": ("drawing", "platform/mfc", "platform/win32", "platform/screen"),
    "module": ("host", "objects", "drawing", "platform/mfc", "platform/win32"),
    "apps": ("module", "host", "objects", "drawing", "platform/mfc", "platform/win32", "platform/screen"),
}
# These reach into private headers, because they prove what is behind them.
SEE_ALL = ("tests", "fuzz", "bench")

SUFFIXES = (".h", ".inc", ".cpp", ".c", ".rc", ".in")
SKIPPED_FOLDERS = ("build",)
INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>|(\S.*))')
BLOCK_COMMENT = re.compile(r"/\*.*?\*/", re.DOTALL)


def layer_of(path):
    """The layer that a path relative to the root lies in, or None."""
    parts = path.parts
    for depth in (2, 1):
        name = "/".join(parts[:depth])
        if len(parts) > depth and (name in SEES or name in SEE_ALL):
            return name
    return None


class Tree:
    def __init__(self, root):
        self.root = root
        self.files = sorted(self._walk())
        self._known = set(self.files)

    def _walk(self):
        for folder, subfolders, names in os.walk(self.root):
            subfolders[:] = [n for n in subfolders if not n.startswith(".") and n not in SKIPPED_FOLDERS]
            for name in names:
                if name.endswith(SUFFIXES):
                    yield Path(folder, name).relative_to(self.root)

    def find(self, folder, name):
        """The file that `name` means when looked up in `folder`; a template counts as the header made from it."""
        path = Path(os.path.normpath(folder / name))
        for candidate in (path, path.with_name(path.name + ".in")):
            if candidate in self._known:
                return candidate
        return None

    def resolve(self, includer, layer, name, quoted):
        """Every file that the include can mean, the nearest first. A second one is a trap and gets reported."""
        own = Path(layer)
        folders = [includer.parent] if quoted else []
        folders += [own / "include", own]
        folders += [Path(other) / "include" for other in SEES]
        # Private roots come last: finding the header only there is what breaks the rule.
        folders += [Path(other) for other in SEES]
        found = []
        for folder in folders:
            match = self.find(folder, name)
            if match is not None and match not in found:
                found.append(match)
        return found


def is_public(path, layer):
    return path.parts[len(Path(layer).parts)] == "include"


def includes_of(text):
    """Yields (line number, name, is quoted) of each include; name is None where a macro stands for it."""
    # Comments become as many line ends as they held, so that line numbers stay right.
    text = BLOCK_COMMENT.sub(lambda comment: "\n" * comment.group().count("\n"), text)
    for number, line in enumerate(text.split("\n"), start=1):
        match = INCLUDE.match(line)
        if match:
            yield number, match.group(1) or match.group(2), match.group(1) is not None


def fault_of(tree, includer, layer, name, quoted):
    """Why the include is forbidden, or None."""
    if name is None:
        return "a computed include can't be checked; name the header"
    found = tree.resolve(includer, layer, name, quoted)
    if not found:
        return f'"{name}" is in no layer; system headers are included as <{name}>' if quoted else None
    target = found[0]
    target_layer = layer_of(target)
    if target_layer == layer or layer in SEE_ALL:
        return None
    if target_layer not in SEES[layer]:
        return f"{layer} must not see {target_layer} ({target})"
    if not is_public(target, target_layer):
        return f"{target} is private to {target_layer}"
    if ".." in Path(name).parts:
        return f"reach {target} by its public name, not by a relative path"
    public = [path for path in found if is_public(path, layer_of(path))]
    if len(public) > 1:
        return f'"{name}" means more than one header: ' + ", ".join(map(str, public))
    return None


def check(root):
    """Returns the faults of the tree as "file:line: reason", and the number of includes looked at."""
    tree = Tree(root)
    faults, count = [], 0
    for path in tree.files:
        layer = layer_of(path)
        for number, name, quoted in includes_of((root / path).read_text(encoding="utf-8", errors="replace")):
            count += 1
            if layer is None:
                faults.append(f"{path}:{number}: the file is in no layer")
                continue
            fault = fault_of(tree, path, layer, name, quoted)
            if fault:
                faults.append(f"{path}:{number}: {fault}")
    return faults, count


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent)
    faults, count = check(root)
    for fault in faults:
        print(fault)
    if count == 0:
        print(f"check_layers: no include found below {root}; is that the root of the tree?")
        return 2
    print(f"check_layers: {count} includes, {len(faults)} against the arrows")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
