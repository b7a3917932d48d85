#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""Counts the cases of a build's test programs, and the lints; the last line is "N passed, N failed".

A program without a report has failed (it crashed or hung), and so has a skipped case.
"""
import json
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree


def programs(build, selection):
    listing = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1", *selection],
                             capture_output=True, text=True, check=True)
    return [test["name"] for test in json.loads(listing.stdout)["tests"]]


def count_program(build, name):
    report = build / "reports" / f"{name}.xml"
    if not report.exists():
        return 0, [f"{name}: left no report"]
    passed, faults = 0, []
    # Names of cases with a parameter may carry bytes that XML does not allow.
    text = re.sub("[^\t\n\r -\ud7ff\ue000-\uffff]", "?", report.read_text(encoding="utf-8", errors="replace"))
    for case in ElementTree.fromstring(text).iter("testcase"):
        title = f"{case.get('classname')}.{case.get('name')}"
        if case.find("failure") is not None:
            faults.append(f"{name}: {title} failed")
        elif case.get("status") != "run" or case.get("result") == "skipped":
            faults.append(f"{name}: {title} was skipped")
        else:
            passed += 1
    return passed, faults


def main():
    build = pathlib.Path(sys.argv[1])
    # The words that ctest was given to choose test programs.
    selection = [word for word in sys.argv[2:] if word != "--lints"]
    passed, faults = 0, []
    for name in programs(build, selection):
        count, found = count_program(build, name)
        passed += count
        faults += found
    if "--lints" in sys.argv[2:]:
        for lint in sorted(pathlib.Path("tools/lints").glob("*.py")):
            result = subprocess.run([sys.executable, str(lint)], capture_output=True, text=True)
            if result.returncode == 0:
                passed += 1
            else:
                faults.append(f"lint {lint.stem}:\n{result.stdout}{result.stderr}")
    for fault in faults:
        print(fault)
    print(f"{passed} passed, {len(faults)} failed")
    sys.exit(1 if faults else 0)


main()
