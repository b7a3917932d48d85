// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/FoldText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace catalogue {
namespace {

// What the letters of a block are without case and accents, in the order of their numbers. "." has no base; a
// capital stands for a ligature.
constexpr char32_t kLatinFirst = 0xC0, kLatinEnd = 0x250;
constexpr std::string_view kLatin =
    "aaaaaaAceeeeiiiidnooooo.ouuuuyTSaaaaaaAceeeeiiiidnooooo.ouuuuyTyaaaaaaccccccccdd"
    "ddeeeeeeeeeegggggggghhhhiiiiiiiiiiIIjjkkkllllllllllnnnnnnnNNooooooOOrrrrrrssssss"
    "ssttttttuuuuuuuuuuuuwwyyyzzzzzzsbb....occdddd.eeeffgg.iikkl.mnnooo..ppr..s..tttu"
    "u.vyyzzz............ZZZLLLJJJaaiioouuuuuuuuuueaaaaAAggggkkoooozzjZZZgg..nnaaAAoo"
    "aaaaeeeeiiiioooorrrruuuusstt..hhnd..zzaaeeooooooooyylntj...ccl.sz..bu.eejjqqrryy";
constexpr char32_t kMoreLatinFirst = 0x1E00, kMoreLatinEnd = 0x1F00;
constexpr std::string_view kMoreLatin =
    "aabbbbbbccddddddddddeeeeeeeeeeffgghhhhhhhhhhiiiikkkkkkllllllllmm"
    "mmmmnnnnnnnnoooooooopppprrrrrrrrssssssssssttttttttuuuuuuuuuuvvvv"
    "wwwwwwwwwwxxxxyyzzzzzzhtwy.sssS.aaaaaaaaaaaaaaaaaaaaaaaaeeeeeeee"
    "eeeeeeeeiiiioooooooooooooooooooooooouuuuuuuuuuuuuuyyyyyyyy....yy";
// Greek letters count from "a" for alpha.
constexpr char32_t kGreekFirst = 0x370, kGreekEnd = 0x400;
constexpr std::string_view kGreek =
    "......................a.egi.o.uyiabcdefghijklmnopq.stuvwxyiuaegiuabcdefg"
    "hijklmnopqsstuvwxyiuouy.bh...vp.........................jqs.he...s......";
constexpr char32_t kMoreGreekFirst = 0x1F00, kMoreGreekEnd = 0x2000;
constexpr std::string_view kMoreGreek =
    "aaaaaaaaaaaaaaaaeeeeee..eeeeee..ggggggggggggggggiiiiiiiiiiiiiiii"
    "oooooo..oooooo..uuuuuuuu.u.u.u.uyyyyyyyyyyyyyyyyaaeeggiioouuyy.."
    "aaaaaaaaaaaaaaaaggggggggggggggggyyyyyyyyyyyyyyyyaaaaa.aaaaaaa.i."
    "..ggg.ggeeggg...iiii..iiiiii....uuuuqquuuuuuq.....yyy.yyooyyy...";
static_assert(kLatin.size() == kLatinEnd - kLatinFirst);
static_assert(kMoreLatin.size() == kMoreLatinEnd - kMoreLatinFirst);
static_assert(kGreek.size() == kGreekEnd - kGreekFirst);
static_assert(kMoreGreek.size() == kMoreGreekEnd - kMoreGreekFirst);

struct Ligature {
  char sign;
  std::string_view letters;
};
constexpr Ligature kLigatures[] = {{'A', "ae"}, {'O', "oe"}, {'S', "ss"}, {'T', "th"}, {'I', "ij"},
                                   {'N', "ng"}, {'Z', "dz"}, {'L', "lj"}, {'J', "nj"}};
constexpr std::array<std::string_view, 7> kTypeLigatures{"ff", "fi", "fl", "ffi", "ffl", "st", "st"};

constexpr bool In(char32_t letter, char32_t first, char32_t end) {
  return letter >= first && letter < end;
}

/// One character of UTF-8, taken off the text; nothing for bytes that are none.
std::optional<char32_t> TakeUtf8(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t size = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (size == 0 || lead > 0xF4 || size > text.size()) return std::nullopt;
  char32_t letter = size == 1 ? lead : lead & (0x7FU >> size);
  for (std::size_t i = 1; i < size; ++i) {
    const auto more = static_cast<unsigned char>(text[i]);
    if ((more & 0xC0) != 0x80) return std::nullopt;
    letter = letter << 6 | (more & 0x3F);
  }
  const bool too_long = (size == 3 && letter < 0x800) || (size == 4 && letter < 0x10000);
  if (too_long || letter > 0x10FFFF || In(letter, 0xD800, 0xE000)) return std::nullopt;
  text.remove_prefix(size);
  return letter;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    if (static_cast<unsigned char>(text.front()) < 0x80) {
      text.remove_prefix(1);
    } else if (!TakeUtf8(text)) {
      return false;
    }
  }
  return true;
}

void AppendUtf8(std::string& to, char32_t letter) {
  const auto byte = [&to](char32_t bits) { to += static_cast<char>(bits); };
  if (letter < 0x80) return byte(letter);
  if (letter < 0x800) {
    byte(0xC0 | letter >> 6);
  } else if (letter < 0x10000) {
    byte(0xE0 | letter >> 12);
    byte(0x80 | (letter >> 6 & 0x3F));
  } else {
    byte(0xF0 | letter >> 18);
    byte(0x80 | (letter >> 12 & 0x3F));
    byte(0x80 | (letter >> 6 & 0x3F));
  }
  byte(0x80 | (letter & 0x3F));
}

char32_t CyrillicBase(char32_t letter) {
  if (In(letter, 0x400, 0x410)) letter += 0x50;
  if (In(letter, 0x410, 0x430)) letter += 0x20;
  switch (letter) {
    case 0x450:
    case 0x451:
      return 0x435;
    case 0x453:
      return 0x433;
    case 0x457:
      return 0x456;
    case 0x45C:
      return 0x43A;
    case 0x439:
    case 0x45D:
      return 0x438;
    case 0x45E:
      return 0x443;
    default:
      break;
  }
  const bool capitals_are_even = In(letter, 0x460, 0x482) || In(letter, 0x48A, 0x4C0) || letter >= 0x4D0;
  if (capitals_are_even) return letter | 1;
  return In(letter, 0x4C1, 0x4CF) && letter % 2 == 1 ? letter + 1 : letter;
}

/// Signs that belong to no word: punctuation, blanks, dashes, quotation marks.
bool Separates(char32_t letter) {
  return letter < 0xAA || In(letter, 0xAB, 0xB5) || In(letter, 0xB6, 0xBA) || In(letter, 0xBB, 0xC0) ||
         letter == 0xD7 || letter == 0xF7 || In(letter, 0x2000, 0x2070) || In(letter, 0x3000, 0x3005) ||
         In(letter, 0x3008, 0x3021) || letter == 0x30FB || letter == 0xFEFF;
}

bool IsDropped(char32_t letter) {
  const bool apostrophe = letter == 0xB4 || letter == 0x2018 || letter == 0x2019;
  const bool joins = In(letter, 0x200B, 0x200E) || In(letter, 0xFE00, 0xFE10);
  return apostrophe || joins || letter == 0xAD || In(letter, 0x300, 0x370) || letter == 0x2BC;
}

/// ASCII: a letter or digit as it is folded, kBlank for what separates words, kGone for an apostrophe.
constexpr char kBlank = ' ', kGone = '\0';
constexpr std::array<char, 128> kAscii = [] {
  std::array<char, 128> folded{};
  for (std::size_t i = 0; i < folded.size(); ++i) {
    const char letter = static_cast<char>(i);
    const bool capital = letter >= 'A' && letter <= 'Z';
    const bool kept = (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9');
    const bool gone = letter == '\'' || letter == '`';
    folded[i] = capital ? static_cast<char>(letter | 0x20) : kept ? letter : gone ? kGone : kBlank;
  }
  return folded;
}();

/// Puts folded letters together to words with one blank between them.
class WordWriter {
 public:
  explicit WordWriter(std::string& to) : to_(to), start_(to.size()) {}
  void Break() { broken_ = true; }
  void Ascii(char letter) {
    Join();
    to_ += letter;
  }
  /// All of it ASCII; most texts are.
  void Plain(std::string_view text) {
    const std::size_t before = to_.size();
    to_.resize(before + text.size() + 1);
    char* end = to_.data() + before;
    for (const char sign : text) {
      const char letter = kAscii[static_cast<unsigned char>(sign)];
      if (letter == kGone) continue;
      if (letter == kBlank) {
        broken_ = true;
        continue;
      }
      if (broken_ && end != to_.data() + start_) *end++ = ' ';
      broken_ = false;
      *end++ = letter;
    }
    to_.resize(static_cast<std::size_t>(end - to_.data()));
  }
  void Folded(char letter) {
    if (letter == kGone) return;
    letter == kBlank ? Break() : Ascii(letter);
  }
  void Letters(std::string_view letters) {
    Join();
    to_ += letters;
  }
  void Letter(char32_t letter) {
    Join();
    AppendUtf8(to_, letter);
  }

 private:
  void Join() {
    if (broken_ && to_.size() > start_) to_ += ' ';
    broken_ = false;
  }
  std::string& to_;
  const std::size_t start_;
  bool broken_ = false;
};

void WriteLatin(WordWriter& writer, char base, char32_t letter) {
  if (base == '.') return writer.Letter(letter);
  if (base >= 'a') return writer.Ascii(base);
  for (const Ligature& ligature : kLigatures) {
    if (ligature.sign == base) return writer.Letters(ligature.letters);
  }
}

void WriteGreek(WordWriter& writer, char base, char32_t letter) {
  writer.Letter(base == '.' ? letter : 0x3B1 + static_cast<char32_t>(base - 'a'));
}

void Write(WordWriter& writer, char32_t letter) {
  if (In(letter, 0xFF01, 0xFF5F)) letter -= 0xFEE0;  // as wide as a Chinese sign
  if (letter < kAscii.size()) return writer.Folded(kAscii[letter]);
  if (IsDropped(letter)) return;
  if (Separates(letter)) return writer.Break();
  if (In(letter, kLatinFirst, kLatinEnd)) return WriteLatin(writer, kLatin[letter - kLatinFirst], letter);
  if (In(letter, kMoreLatinFirst, kMoreLatinEnd))
    return WriteLatin(writer, kMoreLatin[letter - kMoreLatinFirst], letter);
  if (In(letter, kGreekFirst, kGreekEnd)) return WriteGreek(writer, kGreek[letter - kGreekFirst], letter);
  if (In(letter, kMoreGreekFirst, kMoreGreekEnd))
    return WriteGreek(writer, kMoreGreek[letter - kMoreGreekFirst], letter);
  if (In(letter, 0x400, 0x530)) return writer.Letter(CyrillicBase(letter));
  if (In(letter, 0xFB00, 0xFB07)) return writer.Letters(kTypeLigatures[letter - 0xFB00]);
  writer.Letter(letter);
}

}  // namespace

void AppendFolded(std::string& folded, std::string_view text) {
  WordWriter writer(folded);
  const auto is_ascii = [](char letter) { return static_cast<unsigned char>(letter) < kAscii.size(); };
  const auto other = std::find_if_not(text.begin(), text.end(), is_ascii);
  const auto ascii = static_cast<std::size_t>(other - text.begin());
  writer.Plain(text.substr(0, ascii));
  text.remove_prefix(ascii);
  const bool utf8 = IsUtf8(text);
  while (!text.empty()) {
    const auto byte = static_cast<unsigned char>(text.front());
    if (byte < kAscii.size() || !utf8) {
      Write(writer, byte);
      text.remove_prefix(1);
    } else {
      Write(writer, *TakeUtf8(text));
    }
  }
}

std::string Folded(std::string_view text) {
  std::string folded;
  AppendFolded(folded, text);
  return folded;
}

}  // namespace catalogue
