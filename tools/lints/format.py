#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""clang-format over every source, the two SPDX lines at its head, and no case that skips itself: that counts as failed."""
import pathlib
import subprocess
import sys

HEAD = "SPDX-License-Identifier: GPL-3.0-or-later"


def main():
    files = [path for path in subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], capture_output=True,
                                             text=True, check=True).stdout.splitlines() if pathlib.Path(path).is_file()]
    code = [path for path in files if path.endswith((".h", ".cpp"))]
    result = subprocess.run(["clang-format", "--dry-run", "-Werror", *code], capture_output=True, text=True)
    faults = [line for line in result.stderr.splitlines() if "error:" in line]
    named = (".h", ".cpp", ".py", ".sh", ".cmake", "CMakeLists.txt")
    faults += [f"{path}: no licence line" for path in files
               if path.endswith(named) and HEAD not in pathlib.Path(path).read_text(errors="replace")[:600]]
    faults += [f"{path}: a case skips itself, which tools/summary.py counts as failed" for path in code
               if "GTEST_SKIP" in pathlib.Path(path).read_text()]
    print("\n".join(faults))
    sys.exit(1 if faults or result.returncode else 0)


main()
