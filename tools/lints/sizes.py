#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""No source file, no function and no class, over all its files, beyond these sizes; and no form that sees too much."""
import bisect
import collections
import pathlib
import re
import subprocess
import sys

FILE_LINES = 500
FUNCTION_LINES = 60
CLASS_FUNCTIONS = 60  # declared in its body
CLASS_LINES = 600  # of its body and its definitions, in whatever files
HEADERS_OF_A_FORM = 175  # of the project, seen by one source of ui/forms
# Classes that are larger; this list only becomes shorter.
LARGE_CLASSES = {"decks::testing::RecordingEngine", "ui::frmMain"}

# What no brace or name is looked for in.
ASIDE = re.compile(r'//[^\n]*|/\*.*?\*/|R"\(.*?\)"|"(?:\\.|[^"\\\n])*"|(?<!\w)\'(?:\\.|[^\'\\\n])+\'|^[ \t]*#(?:[^\n]*\\\n)*[^\n]*',
                   re.S | re.M)
MARK = re.compile(r"[{};()]|(?:public|private|protected|signals|slots):")
ANNOTATION = re.compile(r"\bDJ_\w+\([^()]*\)|\balignas\([^()]*\)|\[\[[^\]]*\]\]")
NAMESPACE = re.compile(r"\bnamespace(?:\s+([\w:]+))?\s*$")
CLASS = re.compile(r"\b(?:class|struct)\s+(?:\[\[\w+\]\]\s*)?([\w:]+)(?:\s+final)?(?:\s*:(?!:)[^()]*)?\s*$")
MEMBER = re.compile(r"((?:\w+::)+)~?(?:\w+|operator\W+)\s*$")
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.M)


def bare(text):
    """The same lines without comments, texts and directives."""
    return ASIDE.sub(lambda found: re.sub(r"[^\n]", " ", found.group()), text)


def before_brackets(head):
    """What stands before the first ( of a declaration; empty where there is none, or an = before it."""
    head = ANNOTATION.sub("", head)
    while (plain := re.sub(r"<[^<>()]*(?:\([^<>()]*\)[^<>()]*)*>", "", head)) != head:
        head = plain
    name = head.partition("(")[0] if "(" in head else ""
    if re.search(r"operator\s*$", name):
        return name.rstrip() + "()"
    return "" if re.search(r"=", re.sub(r"operator\W+", "", name)) else name


class Reader:
    """Goes through one file's braces and notes its functions, and what of classes it holds."""

    def __init__(self, path, text, classes):
        self.path, self.text, self.classes = path, bare(text), classes
        self.starts = [0] + [i + 1 for i, c in enumerate(self.text) if c == "\n"]
        self.names, self.open, self.long = [], [], []

    def line(self, at):
        return bisect.bisect_right(self.starts, at)

    def scope(self):
        return next((kind for kind, _, _ in reversed(self.open)), "namespace")

    def read(self):
        start, brackets = 0, 0
        for mark in MARK.finditer(self.text):
            token, at = mark.group(), mark.start()
            if token in "()":
                brackets = max(0, brackets + (1 if token == "(" else -1))
                continue
            head, inside = self.text[start:at], self.scope() in ("function", "values")
            if token == "{":
                self.begin(head if not inside and brackets == 0 else None, start, at)
            elif token == "}":
                if self.open:
                    self.end(at)
            elif token == ";" and brackets == 0 and self.scope() == "class":
                self.declare(head)
            if token == "{" and self.scope() == "values":
                brackets, start = 0, at + 1
            elif brackets == 0:
                start = at + len(token)
        return self.long

    def begin(self, head, start, at):
        kind, name = "values", ""
        if head is not None:
            if found := NAMESPACE.search(head):
                kind, name = "namespace", found.group(1) or ""
            elif found := CLASS.search(ANNOTATION.sub("", head)):
                kind, name = "class", found.group(1)
            elif before_brackets(head):
                kind = "function"
                if self.scope() == "class":
                    self.declare(head)
        first = start + len(head) - len(head.lstrip()) if head is not None else at
        self.open.append((kind, name, (first, before_brackets(head) if kind == "function" else "")))

    def end(self, at):
        kind, _, (first, called) = self.open[-1]
        lines = self.line(at) - self.line(first) + 1
        member = MEMBER.search(called)
        if kind == "class" and not any(k == "class" for k, _, _ in self.open[:-1]):
            self.classes[self.name()]["lines"] += lines
        self.open.pop()
        if kind != "function":
            return
        if lines > FUNCTION_LINES:
            self.long.append(f"{self.path}:{self.line(first)}: a function of {lines} lines")
        if member:
            self.classes[self.name(member.group(1).rstrip(":"))]["lines"] += lines

    def declare(self, head):
        called = before_brackets(head).strip()
        if called and not re.match(r"(?:using|friend|static_assert|typedef)\b", called):
            self.classes[self.name()]["functions"] += 1

    def name(self, inner=""):
        return "::".join([name for _, name, _ in self.open if name] + ([inner] if inner else []))


def headers_seen(path, includes):
    seen, todo = set(), [path]
    while todo:
        for header in includes.get(todo.pop(), ()):
            if header not in seen:
                seen.add(header)
                todo.append(header)
    return len(seen)


def faults():
    files = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "*.h", "*.cpp", "*.py"],
                           capture_output=True, text=True, check=True).stdout.split()
    classes = collections.defaultdict(lambda: {"functions": 0, "lines": 0})
    includes = {}
    for path in filter(lambda path: pathlib.Path(path).exists(), files):
        text = pathlib.Path(path).read_text(errors="replace")
        if (lines := len(text.splitlines())) > FILE_LINES:
            yield f"{path}: {lines} lines"
        if not path.endswith(".py"):
            includes[path] = INCLUDE.findall(text)
            yield from Reader(path, text, classes).read()
    for name, size in sorted(classes.items()):
        large = size["functions"] > CLASS_FUNCTIONS or size["lines"] > CLASS_LINES
        if large and name not in LARGE_CLASSES:
            yield f"{name}: a class of {size['functions']} functions and {size['lines']} lines"
    for name in sorted(LARGE_CLASSES):
        size = classes.get(name, {"functions": 0, "lines": 0})
        if size["functions"] <= CLASS_FUNCTIONS and size["lines"] <= CLASS_LINES:
            yield f"{name}: not large any more, take it out of the list"
    for path in filter(lambda path: path.startswith("ui/forms/") and path.endswith(".cpp"), includes):
        if (seen := headers_seen(path, includes)) > HEADERS_OF_A_FORM:
            yield f"{path}: sees {seen} headers"


def main():
    found = list(faults())
    print("\n".join(found))
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
