#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes a room's tables of words into the enumerations and the table that the program is compiled with.

    words.py LANGUAGES INCLUDE_ROOT FOLDER [TABLES...]

LANGUAGES is support/languages.txt. What is made goes to FOLDER below the root that it is included from: without
tables Languages.h; with them a header a table, named after it up to the first "-", and Words.h and Words.cpp, which
hold all rows. A file is written only when it becomes another one. What a table looks like stands in
ui/words/README.md. A fault is told as FILE:LINE: SENTENCE, and ends the build.
"""
import pathlib
import re
import sys

# A tip has the number of its word and this.
TIPS = 10000
HEAD = """// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Made by tools/words.py.
"""
HEADER = """#pragma once
{includes}
namespace {namespace} {{

{body}
}}  // namespace {namespace}
"""
PLACE = re.compile(r"%([1-9])")
MARKED_KEY = re.compile(r"&(?!&)(\w)")
NAMED_KEYS = re.compile(r"\b(?:\w+\+)+\w+|\bF\d+\b")
faults = []


def fault(file, line, sentence):
    faults.append(f"{file}:{line}: {sentence}")


def fields(file):
    for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        line = line.strip()
        if line and not line.startswith("#"):
            yield number, line


class Language:
    def __init__(self, columns):
        self.code, base, self.enumerator, self.name = columns[:4]
        self.base = int(base)
        # As this language calls a key -> as English does.
        self.keys = dict(pair.split("=") for pair in columns[4:])

    def named_keys(self, text):
        """As English calls them: ["Ctrl+N", "F12"]."""
        return sorted("+".join(self.keys.get(key, key) for key in keys.split("+"))
                      for keys in NAMED_KEYS.findall(text))


class Word:
    def __init__(self, file, line, number, name, section):
        self.file, self.line, self.number, self.name, self.section = file, line, number, name, section
        self.texts, self.tips = {}, {}

    def fault(self, sentence):
        fault(self.file, self.line, sentence)


class Table:
    """What one file holds: the rows of an enumeration, or of a list that is looked through by its texts."""

    def __init__(self, file, languages):
        self.file, self.languages = file, languages
        self.header = file.stem.split("-")[0]
        self.enum, self.ranges, self.words = "", [], []
        self.read()

    def read(self):
        """Line by line; whatever is no head, section or row of texts is told."""
        headed, section, texts = False, ("", set()), None
        for number, line in fields(self.file):
            head = re.fullmatch(r"enum (\w+)((?: \d+-\d+)+)|list", line)
            title = re.fullmatch(r"== (.*?)(?: \[([a-z ]+)\])?", line)
            word = re.fullmatch(r"(\d+)(?: (\w+))?", line)
            text = re.fullmatch(r"(?:(tip) +)?([a-z]{2}) +(.*)", line)
            if not headed and not head:
                fault(self.file, number, 'a table begins with "enum NAME FIRST-LAST" or with "list".')
            headed = True
            if head:
                self.enum = head[1] or ""
                self.ranges = [tuple(map(int, ends.split("-"))) for ends in (head[2] or "").split()]
            elif title:
                section = (f"{self.file.name}: {title[1]}", set((title[2] or "").split()))
                self.check_section(number, section[1])
            elif word:
                self.words.append(Word(self.file, number, int(word[1]), word[2] or "", section))
                texts = self.words[-1].texts
            elif text and self.words:
                texts = self.words[-1].tips if text[1] else texts
                self.keep(texts, number, text[2], text[3])
            else:
                fault(self.file, number, f"this is no head, no word and no text: {line}")

    def check_section(self, line, rules):
        for rule in sorted(rules - {"keys", "tips", "sequence"}):
            fault(self.file, line, f'a section knows no rule "{rule}", but "keys", "tips" and "sequence".')

    def keep(self, texts, line, code, text):
        if code not in self.languages:
            fault(self.file, line, f'"{code}" is none of the languages {", ".join(self.languages)}.')
        elif code in texts:
            fault(self.file, line, f'the text in "{code}" is there already.')
        elif re.search(r"\\(?!n)", text):
            fault(self.file, line, r"a backslash stands only before n, which begins a line.")
        else:
            texts[code] = text.replace("\\n", "\n")


def read_languages(file):
    languages = {}
    for number, line in fields(file):
        columns = line.split()
        if len(columns) < 4 or not columns[1].isdigit() or any("=" not in pair for pair in columns[4:]):
            fault(file, number, "a language is its code, its base, its name in the program and its own name.")
            continue
        languages[columns[0]] = Language(columns)
    return languages


def check_texts(word, what, texts, languages):
    """One text in every language, which fill in and count the same."""
    for code, language in languages.items():
        if not texts.get(code):
            word.fault(f"{what} has no text in {language.enumerator}.")
    places = {code: set(PLACE.findall(text)) for code, text in texts.items()}
    first = next(iter(places), None)
    if first and places[first] != {str(place + 1) for place in range(len(places[first]))}:
        word.fault(f"the places of {what} are not %1, %2 and so on.")
    keys = {code: languages[code].named_keys(text) for code, text in texts.items()}
    for code, text in texts.items():
        if places[code] != places[first]:
            word.fault(f"{what} has other places in {languages[code].enumerator} than in "
                       f"{languages[first].enumerator}: {sorted(places[code])}, {sorted(places[first])}.")
        if keys[code] != keys[first]:
            word.fault(f"{what} names other keys in {languages[code].enumerator} than in "
                       f"{languages[first].enumerator}: {keys[code]}, {keys[first]}.")
        check_forms(word, what, text, languages[code], places[code])


def check_forms(word, what, text, language, places):
    for forms in re.findall(r"\{([^{}]*)\}", text):
        place, _, both = forms.partition(":") if re.match(r"\d:", forms) else ("1", "", forms)
        if both.count("|") != 1 or place not in places:
            word.fault(f"{what} is counted wrongly in {language.enumerator}: {{{forms}}} has to be two forms and a "
                       "place of the text.")
    if "{" in re.sub(r"\{[^{}]*\}", "", text) or "}" in re.sub(r"\{[^{}]*\}", "", text):
        word.fault(f"a brace of {what} in {language.enumerator} has no other one.")


def check_numbers(tables):
    """Rising in each table, within its ranges, once in all; no word is named like the tip of another."""
    taken = {}
    for table in tables:
        last = 0
        for word in table.words:
            if word.number <= last:
                word.fault(f"{word.number} stands behind {last}; the numbers of a table rise.")
            last = word.number
            if table.enum and not any(first <= word.number <= end for first, end in table.ranges):
                word.fault(f"{word.number} is none of the numbers of this table.")
            # Enumerations share the numbers of their folder, a list has its own.
            keys = [("", word.number), (table.enum, word.name)] if table.enum else [(table.header, word.number)]
            for key in keys:
                if key in taken:
                    word.fault(f"{key[1]} is given already, {taken[key].file}:{taken[key].line}.")
                taken.setdefault(key, word)
    for (enum, name), word in taken.items():
        of = taken.get((enum, str(name).removesuffix("Tip")))
        if str(name).endswith("Tip") and of:
            word.fault(f"{name} is the tip of {of.name} and belongs into its rows, {of.file}:{of.line}.")


def check_sections(tables, languages):
    """keys: none twice; tips: every word has one; sequence: numbers without a gap."""
    sections = {}
    for table in tables:
        for word in table.words:
            sections.setdefault(word.section[0], []).append(word)
    for words in sections.values():
        rules = words[0].section[1]
        for before, word in zip(words, words[1:]):
            if "sequence" in rules and word.number != before.number + 1:
                word.fault(f"{word.number} does not follow {before.number}, and the program counts on it.")
        for word in words:
            if "tips" in rules and not word.tips:
                word.fault(f"{word.name} has no tip, which every word of this section needs.")
        if "keys" in rules:
            check_keys(words, languages)


def check_keys(words, languages):
    for code, language in languages.items():
        taken = {}
        for word in words:
            texts = (word.texts.get(code, ""), word.tips.get(code, ""))
            keys = {"&" + key.upper() for text in texts for key in MARKED_KEY.findall(text)}
            for key in sorted(keys.union(*map(language.named_keys, texts))):
                if key in taken:
                    word.fault(f"the key {key} is {taken[key]} in {language.enumerator} already.")
                taken[key] = f"that of line {word.line}"


def check(tables, languages):
    for table in tables:
        for word in table.words:
            name = word.name or str(word.number)
            check_texts(word, name, word.texts, languages)
            if word.tips:
                check_texts(word, f"the tip of {name}", word.tips, languages)
    check_numbers(tables)
    check_sections(tables, languages)


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n") + '"'


def rows(words, languages):
    every = [(word.number, word.texts) for word in words]
    every += [(word.number + TIPS, word.tips) for word in words if word.tips]
    for number, texts in sorted(every, key=lambda row: row[0]):
        yield f"    {{{number}, {{{{{', '.join(quoted(texts[code]) for code in languages)}}}}}}},\n"


def enumeration(name, words):
    lines = [f"enum class {name} : int {{\n"]
    for word in words:
        lines.append(f"  {word.name} = {word.number},\n")
        if word.tips:
            lines.append(f"  {word.name}Tip = {word.number + TIPS},\n")
    return "".join(lines) + "};\n"


def write(file, text):
    text = HEAD + text
    if not file.exists() or file.read_text(encoding="utf-8") != text:
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")


def write_languages(into, languages):
    names = ", ".join(language.enumerator for language in languages.values())
    table = "".join(f"    {{{quoted(language.name)}, {language.base}}},\n" for language in languages.values())
    write(into / "Languages.h", f"""#pragma once

namespace support {{

/// In the order of "Language"/"Current".
enum class Language : int {{ {names} }};

/// What a language calls itself, and what is added to the number of every text in it.
struct LanguageRow {{
  const char* name;
  int base;
}};
inline constexpr LanguageRow kLanguages[] = {{
{table}}};
inline constexpr int kLanguageCount = {len(languages)};

}}  // namespace support
""")


def write_tables(root, folder, tables, languages):
    namespace = folder.split("/")[0]
    headers, functions = {}, {"Words": []}
    for table in tables:
        if table.enum:
            headers.setdefault((table.header, table.enum), []).extend(table.words)
            functions["Words"] += table.words
        else:
            functions[table.header] = table.words
    for (header, enum), words in headers.items():
        write(root / folder / f"{header}.h", HEADER.format(includes="", namespace=namespace, body=enumeration(
            enum, sorted(words, key=lambda word: word.number))))
    source = "".join(f'#include "{folder}/{name}.h"\n' for name in functions)
    source += f"\nnamespace {namespace} {{\n"
    for name, words in functions.items():
        signature = f"std::span<const support::WordRow> {name}()"
        write(root / folder / f"{name}.h", HEADER.format(
            includes='\n#include <span>\n\n#include "support/WordRow.h"\n', namespace=namespace,
            body=f"[[nodiscard]] {signature};\n"))
        source += f"""
namespace {{
constexpr support::WordRow k{name}[] = {{
{"".join(rows(words, languages))}}};
}}  // namespace

{signature} {{
  return k{name};
}}
"""
    write(root / folder / "Words.cpp", source + f"\n}}  // namespace {namespace}\n")


def main():
    languages = read_languages(pathlib.Path(sys.argv[1]))
    root, folder = pathlib.Path(sys.argv[2]), sys.argv[3]
    tables = [Table(pathlib.Path(name), languages) for name in sys.argv[4:]]
    check(tables, languages)
    if faults:
        print("\n".join(faults), file=sys.stderr)
        sys.exit(1)
    if tables:
        write_tables(root, folder, tables, languages)
    else:
        write_languages(root / folder, languages)


main()
