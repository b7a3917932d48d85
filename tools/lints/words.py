#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""Every word of the tables is said somewhere, the manuals call things as the window does, and tools/words.py names the
fault of each table that has one."""
import pathlib
import re
import subprocess
import sys
import tempfile

LANGUAGES = "en 0 English English\nde 4000 German Deutsch Strg=Ctrl\n"
GOOD = """enum Word 10-19 30-39
== Menu [keys tips sequence]
10 Save
     en  &Save %1 {file|files}
     de  %1 {Datei|Dateien} &sichern
 tip en  Keeps it (Ctrl+S)
     de  Hebt es auf (Strg+S)
11 Open
     en  &Open
     de  &Öffnen\\nund so weiter
 tip en  Opens it
     de  Öffnet es
"""
# What is changed in the good table, and what has to be said of it, with its line.
FAULTS = [
    ("     de  %1 {Datei|Dateien} &sichern\n", "", "3: Save has no text in German."),
    ("     de  Öffnet es\n", "", "8: the tip of Open has no text in German."),
    ("de  %1 {Datei|Dateien}", "de  {Datei|Dateien}", "3: Save has other places in German than in English"),
    ("%1", "%2", "3: the places of Save are not %1, %2 and so on."),
    ("{file|files}", "{file}", "3: Save is counted wrongly in English: {file}"),
    ("{file|files}", "{2:file|files}", "3: Save is counted wrongly in English: {2:file|files}"),
    ("{file|files}", "{file|files", "3: a brace of Save in English has no other one."),
    ("(Strg+S)", "(Strg+T)", "3: the tip of Save names other keys in German than in English: ['Ctrl+T'], ['Ctrl+S']."),
    ("&Öffnen", "Öffn&s", "8: the key &S is that of line 3 in German already."),
    (" tip en  Opens it\n     de  Öffnet es\n", "", "8: Open has no tip, which every word of this section needs."),
    ("11 Open", "12 Open", "8: 12 does not follow 10, and the program counts on it."),
    ("11 Open", "10 Open", "8: 10 stands behind 10; the numbers of a table rise."),
    ("11 Open", "20 Open", "8: 20 is none of the numbers of this table."),
    ("11 Open", "11 Save", "8: Save is given already, "),
    ("11 Open", "11 SaveTip", "8: SaveTip is the tip of Save and belongs into its rows, "),
    ("     de  &Öffnen", "     fr  &Ouvrir", '10: "fr" is none of the languages en, de.'),
    ("     de  &Öffnen", "     en  &Öffnen", '10: the text in "en" is there already.'),
    ("\\n", "\\t", "10: a backslash stands only before n"),
    ("[keys", "[kyes", '2: a section knows no rule "kyes"'),
    ("     de  &Öffnen", "     &Öffnen", "10: this is no head, no word and no text: &Öffnen"),
    ("enum Word 10-19 30-39\n", "", '1: a table begins with "enum NAME FIRST-LAST" or with "list".'),
]


def told(folder, text):
    table = folder / "Word-one.txt"
    table.write_text(text, encoding="utf-8")
    made = subprocess.run([sys.executable, "tools/words.py", folder / "languages.txt", folder, "room", table],
                          capture_output=True, text=True)
    return made.returncode, made.stderr


def faults_of_the_tool():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "languages.txt").write_text(LANGUAGES, encoding="utf-8")
        for old, new, sentence in FAULTS:
            code, said = told(folder, GOOD.replace(old, new))
            if sentence and (code == 0 or f"Word-one.txt:{sentence}" not in said):
                yield f"tools/words.py: not told: {sentence}\n{said}"
        code, said = told(folder, GOOD)
        if code != 0:
            yield f"tools/words.py refuses a good table:\n{said}"
            return
        written = (folder / "room/Word.h").stat().st_mtime_ns
        told(folder, GOOD.replace("Keeps it", "Keeps all of it"))
        header = folder / "room/Word.h"
        if header.stat().st_mtime_ns != written or "SaveTip = 10010" not in header.read_text(encoding="utf-8"):
            yield "tools/words.py: another text made another enumeration"


def words():
    """Every enumerator with its table, but those that are counted up to."""
    for table in pathlib.Path().glob("*/words/*.txt"):
        enum, counted = "", False
        for line in table.read_text(encoding="utf-8").splitlines():
            head = re.match(r"enum (\w+)", line)
            word = re.fullmatch(r"\d+ (\w+)", line)
            enum = head[1] if head else enum
            counted = "sequence" in line if line.startswith("==") else counted
            if enum and word and not counted:
                yield table, enum, word[1]


def silent_words():
    files = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "*.h", "*.cpp"],
                           capture_output=True, text=True, check=True).stdout.split()
    said = set()
    for file in files:
        if pathlib.Path(file).exists():
            said.update(re.findall(r"\b(\w+)::(?=(\w+))", pathlib.Path(file).read_text(errors="replace")))
    for table, enum, word in words():
        if (enum, word) not in said:
            yield f"{table}: nothing says {enum}::{word}"


def misnamed():
    """What stands in a manual in quotation marks is a word of the window, as the window says it."""
    languages = pathlib.Path("support/languages.txt").read_text(encoding="utf-8")
    for code in re.findall(r"^([a-z]{2}) ", languages, re.MULTILINE):
        folder, words = ("." if code == "en" else code), set()
        for table in pathlib.Path().glob("ui/words/*.txt"):
            words.update(re.findall(rf"^(?: tip|    ) {code}  (.*)", table.read_text(encoding="utf-8"), re.MULTILINE))
        for manual in pathlib.Path("program-folder/help", folder).glob("*.htm"):
            for name in re.findall("[“„]([^”“]*)[”“]", manual.read_text(encoding="utf-8")):
                if words.isdisjoint({name, f"{name}…", f"{name} …"}):
                    yield f"{manual}: the window does not say “{name}”"


def main():
    faults = [*faults_of_the_tool(), *silent_words(), *misnamed()]
    print("\n".join(faults))
    sys.exit(1 if faults else 0)


main()
