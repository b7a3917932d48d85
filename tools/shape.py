#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""Measures the shape of the production code: functions a class, lines, and headers that a form sees.

tools/shape.py [CLASS ...]    the largest classes, and those named
"""
import functools
import pathlib
import re
import statistics
import subprocess
import sys

LEFT_OUT = re.compile(r"(^|/)(tests|testing|test|benchmarks|bench|fuzz)/")
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.M)
COMMENT = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|^\s*#[^\n]*', re.S | re.M)
CLASS = re.compile(r"\b(?:class|struct)\s+(?:DJ_\w+(?:\([^)]*\))?\s+)?([A-Za-z_][\w:]*)(?:\s+final)?\s*(?::[^;{()]*)?\{")
NO_FUNCTION = re.compile(r"^\s*(using|friend|typedef|static_assert|enum)\b")


def production_files():
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "*.h", "*.cpp"],
                            capture_output=True, text=True, check=True).stdout.split()
    return [path for path in listed if not LEFT_OUT.search(path) and pathlib.Path(path).exists()]


def end_of_block(text, start):
    depth = 0
    for place in range(start, len(text)):
        depth += {"{": 1, "}": -1}.get(text[place], 0)
        if depth == 0:
            return place
    return len(text)


def statements(body):
    """What stands at the level of a class, without what stands in braces."""
    words, place = [], 0
    while place < len(body):
        if body[place] == "{":
            place = end_of_block(body, place)
            words.append("{}")
            rest = body[place + 1:].lstrip()
            if not rest.startswith((";", ",", ")")):
                words.append(";")
        else:
            words.append(body[place])
        place += 1
    return "".join(words).split(";")


def declares_function(statement):
    statement = re.sub(r"\b(public|private|protected|signals|(public|private) slots|Q_SIGNALS)\s*:(?!:)", "", statement)
    statement = statement.replace("Q_OBJECT", "")
    statement = re.sub(r"\bDJ_\w+\([^()]*\)", "", statement)
    statement = re.sub(r"\[\[.*?\]\]", "", statement)
    while re.search(r"<[^<>]*>", statement):  # std::function<void()> is no function
        statement = re.sub(r"<[^<>]*>", "", statement)
    if NO_FUNCTION.search(statement) or "(" not in statement:
        return False
    head = statement.split("(")[0]
    return "=" not in head.replace("operator=", "").replace("operator==", "") and bool(re.search(r"[\w=\]*>~+-]\s*$", head))


def classes_of(path):
    text = COMMENT.sub(" ", pathlib.Path(path).read_text(errors="replace"))
    for found in CLASS.finditer(text):
        end = end_of_block(text, found.end() - 1)
        yield found.group(1), sum(map(declares_function, statements(text[found.end():end])))


@functools.cache
def includes(path):
    text = pathlib.Path(path).read_text(errors="replace")
    return [other for other in INCLUDE.findall(text) if pathlib.Path(other).exists()]


def headers_seen(path):
    seen, waiting = set(), [path]
    while waiting:
        for other in includes(waiting.pop()):
            if other not in seen:
                seen.add(other)
                waiting.append(other)
    return seen


def main():
    files = production_files()
    sizes = [(count, name, path) for path in files for name, count in classes_of(path)]
    sizes.sort(key=lambda size: (-size[0], size[1]))
    print("functions a class:")
    for count, name, path in sizes[:12] + [size for size in sizes[12:] if size[1] in sys.argv[1:]]:
        print(f"  {count:4} {name} ({path})")
    lines = {path: len(pathlib.Path(path).read_text(errors="replace").splitlines()) for path in files}
    in_ui = sum(count for path, count in lines.items() if path.startswith("ui/") and not path.startswith("ui/strings/"))
    print(f"lines of production code: {sum(lines.values())}; of ui/ without its strings: {in_ui}")
    forms = [(len(headers_seen(path)), path) for path in files if re.match(r"ui/forms/\w+\.cpp$", path)]
    most = max(forms)
    print(f"project headers seen by a source in ui/forms: median {statistics.median(n for n, _ in forms)}, "
          f"most {most[0]} ({most[1]})")


main()
