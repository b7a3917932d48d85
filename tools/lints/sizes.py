#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""No source file of more than 500 lines."""
import pathlib
import subprocess
import sys

LIMIT = 500


def main():
    files = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "*.h", "*.cpp", "*.py"],
                           capture_output=True, text=True, check=True).stdout.split()
    long = [f"{path}: {lines} lines" for path in files if pathlib.Path(path).exists()
            and (lines := len(pathlib.Path(path).read_text(errors="replace").splitlines())) > LIMIT]
    print("\n".join(long))
    sys.exit(1 if long else 0)


main()
