#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""Compares two folders of pictures that `ui_tests --pictures FOLDER` wrote: python3 tools/compare_pictures.py OLD NEW

Says for each page how many pixels differ, and which lines of its list of widgets; ends with 1 where any do. Needs
ImageMagick.
"""
import difflib
import pathlib
import subprocess
import sys


def pixels(old, new):
    """How many differ; what the comparer says where the sizes do."""
    if old.read_bytes() == new.read_bytes():
        return "0"
    told = subprocess.run(["compare", "-metric", "AE", old, new, "null:"], capture_output=True, text=True)
    return told.stderr.strip() or "?"


def lines(old, new):
    both = [path.read_text(encoding="utf-8").splitlines() for path in (old, new)]
    return [line for line in difflib.unified_diff(*both, n=0, lineterm="")
            if line[:1] in "+-" and line[:3] not in ("+++", "---")]


def main(old, new):
    names = sorted({path.stem for folder in (old, new) for path in folder.glob("*.png")})
    differing = 0
    for name in names:
        sides = [[folder / f"{name}{kind}" for folder in (old, new)] for kind in (".png", ".txt")]
        missing = [str(path) for side in sides for path in side if not path.exists()]
        count = "one is missing: " + ", ".join(missing) if missing else pixels(*sides[0])
        changed = [] if missing else lines(*sides[1])
        if count == "0" and not changed:
            continue
        differing += 1
        print(f"{name}: {count} pixels, {len(changed)} lines", *changed[:20], sep="\n  ")
    print(f"{len(names)} pictures, {differing} differ")
    return 1 if differing or not names else 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(*map(pathlib.Path, sys.argv[1:])))
