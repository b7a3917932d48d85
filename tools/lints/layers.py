#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads every #include and fails on an arrow that is not in this table (the same one as in ARCHITECTURE.md)."""
import pathlib
import re
import subprocess
import sys

SUBSYSTEMS = {"decks", "catalogue", "dmx", "lightorgan", "karaoke", "singers"}
PORTS = {f"{room}/ports" for room in SUBSYSTEMS | {"engine", "app", "support"}}
# Room -> what it may include beside itself. "x/ports" allows the ports of x alone.
ARROWS = {
    "support": set(),
    "music": {"support"},
    **{room: {"music", "support"} for room in SUBSYSTEMS},
    "app": SUBSYSTEMS | {"music", "support"},
    "engine": {"decks/ports", "music", "support"},
    "platform": PORTS | {"music", "support"},
    "ui": SUBSYSTEMS | {"app", "music", "support"},
}
# Folders that join rooms: the program, and what measures and tests it whole.
EVERYTHING = set(ARROWS) | {"program"}
ARROWS |= {joiner: EVERYTHING for joiner in ("main.cpp", "program", "tools", "tests", "benchmarks", "fuzz")}
# Songs for the beat tracker come from the composer's studio, the evening from the end-to-end tests.
ARROWS["benchmarks"] = EVERYTHING | {"tests", "tools"}
# Parts of app -> other parts that they may include; what joins them lies in app itself, and they leave that alone
# but for what a station is given and what it sees.
PARTS_OF_APP = {
    "work": set(),
    "settings": set(),
    "sound": {"work"},
    "files": {"sound", "work"},
    "lists": {"files", "settings", "sound", "work"},
    "lights": {"settings", "work"},
    "songs": {"settings", "sound", "work"},
    "singers": {"lists", "songs", "sound", "work"},
    "recording": {"lists", "settings", "sound", "work"},
    "resume": {"lights", "lists", "settings", "songs", "sound", "work"},
}
GIVEN_TO_PARTS = {"app/StationContext.h", "app/WorkstationView.h", "app/OutputView.h", "app/Notice.h"}
GIVEN_TO = {"resume": {"app/DeckRack.h"}}  # it sets the decks as they were
STANDARD_ONLY = SUBSYSTEMS | {"support", "music", "engine", "app"}
STANDARD_HEADER = re.compile(r"^[a-z_0-9]+$")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def place(path):
    """("decks", "ports") for decks/ports/AudioEngine.h; the second part is "" for the room itself."""
    parts = path.split("/")
    return parts[0], parts[1] if len(parts) > 2 else ""


def allowed(source, target):
    room, folder = place(source)
    other, other_folder = place(target)
    if other == room == "app" and folder in PARTS_OF_APP:
        return other_folder in PARTS_OF_APP[folder] | {folder, "ports"} or target in GIVEN_TO_PARTS | GIVEN_TO.get(folder, set())
    if other == room and room != "platform":
        # A room's product code does not lean on its tests.
        return other_folder not in ("tests", "testing") or folder in ("tests", "testing") or room in ("tests", "tools")
    in_tests = "/tests/" in source or "/testing/" in source
    if room == "platform" and other == "platform":
        # The system's own calls serve every adapter, the sender of the IO boards those of both systems, and sound is
        # opened in one way, wherever it lies, as are tags.
        same = target.split("/")[1] in (source.split("/")[1], "files", "boards", "archive", "rights", "tags")
        return (same and ("/test" not in target or in_tests)) or in_tests
    if "/testing/" in target and not (in_tests or room in ("tests", "benchmarks", "tools", "fuzz")):
        return False
    arrows = ARROWS[room]
    if in_tests and room in ARROWS:
        # Tests may use the fakes of every room that the room itself may see.
        return other in arrows or f"{other}/ports" in arrows
    return other in arrows or (other_folder == "ports" and f"{other}/ports" in arrows)


def faults_of(path):
    room, _ = place(path)
    if room not in ARROWS:
        yield f"{path}: the folder {room} stands in no picture of the house"
        return
    for number, line in enumerate(pathlib.Path(path).read_text(errors="replace").splitlines(), 1):
        found = INCLUDE.match(line)
        if not found:
            continue
        kind, target = found.groups()
        if kind == '"':
            if "/" not in target:
                yield f"{path}:{number}: \"{target}\" is not written from the repository's root"
            elif place(target)[0] in ARROWS and not allowed(path, target):
                yield f"{path}:{number}: no arrow from {room} to {target}"
        elif room in STANDARD_ONLY and not STANDARD_HEADER.match(target) and "/tests/" not in path \
                and "/testing/" not in path:
            yield f"{path}:{number}: <{target}> is not of the standard library"


def main():
    files = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "*.h", "*.cpp"],
                           capture_output=True, text=True, check=True).stdout.split()
    faults = [fault for path in files if pathlib.Path(path).exists() for fault in faults_of(path)]
    print("\n".join(faults))
    sys.exit(1 if faults else 0)


main()
