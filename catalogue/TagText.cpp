// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/TagText.h"

#include <cstddef>
#include <cstdint>

namespace catalogue {
namespace {

/// A block of letters in which a small one follows its capital, or stands a way behind it.
struct CaseBlock {
  char32_t first, last;  ///< of the capitals, or of both where they take turns
  int distance;          ///< 1: they take turns, from the first on
};
constexpr CaseBlock kCaseBlocks[] = {
    {'A', 'Z', 32},     {0xC0, 0xD6, 32},   {0xD8, 0xDE, 32},   {0x100, 0x12F, 1},   {0x132, 0x137, 1},
    {0x139, 0x148, 1},  {0x14A, 0x177, 1},  {0x179, 0x17E, 1},  {0x1CD, 0x1DC, 1},   {0x1DE, 0x1EF, 1},
    {0x1F8, 0x21F, 1},  {0x386, 0x386, 38}, {0x388, 0x38A, 37}, {0x38C, 0x38C, 64},  {0x38E, 0x38F, 63},
    {0x391, 0x3A1, 32}, {0x3A3, 0x3AB, 32}, {0x400, 0x40F, 80}, {0x410, 0x42F, 32},  {0x460, 0x481, 1},
    {0x48A, 0x4BF, 1},  {0x4C1, 0x4CE, 1},  {0x4D0, 0x52F, 1},  {0x1E00, 0x1E95, 1}, {0x1EA0, 0x1EFF, 1},
};

char32_t LowerLetter(char32_t letter) {
  if (letter == 0x178) return 0xFF;
  for (const CaseBlock& block : kCaseBlocks) {
    if (letter < block.first || letter > block.last) continue;
    if (block.distance != 1) return letter + static_cast<char32_t>(block.distance);
    return (letter - block.first) % 2 == 0 ? letter + 1 : letter;
  }
  return letter;
}

char32_t UpperLetter(char32_t letter) {
  if (letter == 0xFF) return 0x178;
  if (letter == 0x3C2) return 0x3A3;  // a sigma at a word's end
  for (const CaseBlock& block : kCaseBlocks) {
    if (block.distance == 1) {
      if (letter >= block.first && letter <= block.last)
        return (letter - block.first) % 2 == 1 ? letter - 1 : letter;
      continue;
    }
    const char32_t capital = letter - static_cast<char32_t>(block.distance);
    if (capital >= block.first && capital <= block.last) return capital;
  }
  return letter;
}

/// One character, taken off the text. Bytes that are no UTF-8 are given one by one.
struct Character {
  std::string_view bytes;
  char32_t letter = 0;  ///< 0: no UTF-8
};
Character TakeCharacter(std::string_view& text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(0);
  std::size_t size = lead < 0x80   ? 1
                     : lead < 0xC2 ? 0
                     : lead < 0xE0 ? 2
                     : lead < 0xF0 ? 3
                     : lead < 0xF5 ? 4
                                   : 0;
  if (size > text.size()) size = 0;
  char32_t letter = size == 1 ? lead : size == 0 ? 0 : lead & (0x7Fu >> size);
  for (std::size_t i = 1; i < size; ++i) {
    if ((byte(i) & 0xC0) != 0x80) {
      size = 0;
      letter = 0;
      break;
    }
    letter = letter << 6 | (byte(i) & 0x3F);
  }
  const Character taken{text.substr(0, size == 0 ? 1 : size), letter};
  text.remove_prefix(taken.bytes.size());
  return taken;
}

void AppendUtf8(std::string& text, char32_t letter) {
  const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
  if (letter < 0x80) return put(letter);
  if (letter < 0x800) {
    put(0xC0 | letter >> 6);
    return put(0x80 | (letter & 0x3F));
  }
  put(0xE0 | letter >> 12);
  put(0x80 | (letter >> 6 & 0x3F));
  put(0x80 | (letter & 0x3F));
}

/// What a word goes on behind: letters, digits and what stands within words.
bool InWord(char32_t letter) {
  if (letter >= 0x80) return letter != 0xA0 && letter != 0x2013 && letter != 0x2014;
  return (letter >= '0' && letter <= '9') || (letter | 0x20) - 'a' < 26 || letter == '\'';
}

}  // namespace

std::string InCase(std::string_view text, LetterCase letters) {
  std::string made;
  bool begins = true;
  while (!text.empty()) {
    const Character next = TakeCharacter(text);
    const bool capital = letters == LetterCase::Upper || (letters != LetterCase::Lower && begins);
    const char32_t wanted = capital ? UpperLetter(next.letter) : LowerLetter(next.letter);
    if (next.letter == 0 || wanted == next.letter) {
      made += next.bytes;
    } else {
      AppendUtf8(made, wanted);
    }
    if (letters == LetterCase::Sentence) {
      begins = begins && !InWord(next.letter);
    } else {
      begins = next.letter != 0 && !InWord(next.letter);
    }
  }
  return made;
}

std::string WithCleanSpaces(std::string_view text) {
  std::string made;
  bool blank = false;
  for (const char sign : text) {
    if (sign == ' ' || sign == '\t' || sign == '_') {
      blank = true;
      continue;
    }
    if (blank && !made.empty()) made += ' ';
    blank = false;
    made += sign;
  }
  return made;
}

std::string Replaced(std::string_view text, std::string_view find, std::string_view by) {
  std::string made;
  while (!find.empty()) {
    const std::size_t at = text.find(find);
    if (at == std::string_view::npos) break;
    made += std::string(text.substr(0, at)) + std::string(by);
    text.remove_prefix(at + find.size());
  }
  return made + std::string(text);
}

}  // namespace catalogue
