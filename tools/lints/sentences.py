#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""Finds sentences for the user that stand in a source instead of a table, where they have one language only."""
import pathlib
import re
import subprocess
import sys

# Words of the fixture's validation and of the sequencer, which are the same in every language.
ELSEWHERE = {"dmx/FixtureProblems.cpp", "karaoke/MciErrors.cpp"}
ROOMS = ("app/", "catalogue/", "decks/", "dmx/", "engine/", "karaoke/", "lightorgan/", "platform/", "program/", "ui/")
TEXT = re.compile(r'"((?:[^"\\]|\\.)*)"')


def is_sentence(text):
    return text.endswith(".") and len(text.split()) >= 3


def main():
    found = []
    listed = subprocess.run(["git", "ls-files", "*.cpp", "*.h"], capture_output=True, text=True, check=True).stdout
    for name in listed.split():
        if not name.startswith(ROOMS) or "/tests/" in name or "/testing/" in name or name in ELSEWHERE:
            continue
        for number, line in enumerate(pathlib.Path(name).read_text().splitlines(), 1):
            code = line.split("//")[0]
            if "assert(" not in code and any(is_sentence(text) for text in TEXT.findall(code)):
                found.append(f"{name}:{number}: a sentence outside ui/words and support/words")
    print("\n".join(found))
    sys.exit(bool(found))


main()
