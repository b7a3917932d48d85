// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/LyricCoding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "karaoke/LyricReserved.h"
#include "support/Text.h"

namespace karaoke {
namespace {

using Names = std::pair<std::string_view, std::string_view>;

/// What songs of a language are written in, by the first letters of its name. English is no sign: programs
/// write it into every song.
constexpr std::array kLanguages{
    Names{"GERM", kWestern},       Names{"FREN", kWestern},       Names{"SPAN", kWestern},
    Names{"ITAL", kWestern},       Names{"PORT", kWestern},       Names{"DUTC", kWestern},
    Names{"RUSS", "windows-1251"}, Names{"UKRA", "windows-1251"}, Names{"BULG", "windows-1251"},
    Names{"POLS", "windows-1250"}, Names{"POLI", "windows-1250"}, Names{"CZEC", "windows-1250"},
    Names{"HUNG", "windows-1250"}, Names{"GREE", "windows-1253"}, Names{"TURK", "windows-1254"},
    Names{"HEBR", "windows-1255"}, Names{"ARAB", "windows-1256"}, Names{"JAPA", kShiftJis},
    Names{"JP", kShiftJis},        Names{"KORE", "EUC-KR"},       Names{"THAI", "TIS-620"}};

std::string_view CodingOfLanguage(std::string_view language) {
  const std::string upper = support::ToUpper(language);
  const auto found = std::find_if(kLanguages.begin(), kLanguages.end(),
                                  [&](const Names& row) { return upper.starts_with(row.first); });
  return found == kLanguages.end() ? std::string_view() : found->second;
}

/// Only pairs of Shift-JIS, and kana among them: no other text is like that.
bool HasKana(std::string_view text) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  std::size_t pairs = 0, kana = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned lead = byte(i), trail = byte(i + 1);
    if (lead < 0x80 || (lead >= 0xA1 && lead <= 0xDF)) continue;  // ASCII, or a kana of half the width
    if (!LeadsInShiftJis(text[i]) || trail < 0x40 || trail == 0x7F || trail > 0xFC) return false;
    const bool hiragana = lead == 0x82 && trail >= 0x9F && trail <= 0xF1;
    const bool katakana = lead == 0x83 && trail <= 0x96;
    kana += hiragana || katakana ? 1 : 0;
    ++pairs;
    ++i;
  }
  return kana > 0 && kana * 4 >= pairs;
}

std::size_t CountAbove(std::string_view text, unsigned limit) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [limit](char c) { return static_cast<unsigned char>(c) > limit; }));
}

/// A guess is believed where the letters themselves are other ones. Latin code pages share most of theirs,
/// so a few accents tell nothing between them, and what Windows has never been written in is none.
std::string Believed(const std::string& guess, std::string_view text) {
  constexpr std::size_t kEnoughAccents = 12;
  constexpr std::array<std::string_view, 8> kLatin{"WINDOWS-1250", "ISO-8859-2",   "WINDOWS-1254",
                                                   "ISO-8859-9",   "WINDOWS-1257", "ISO-8859-13",
                                                   "WINDOWS-1258", "VISCII"};
  constexpr std::array<std::string_view, 19> kOther{
      "WINDOWS-1251", "KOI8-R",       "IBM866",     "IBM855",       "ISO-8859-5",
      "MAC-CYRILLIC", "WINDOWS-1253", "ISO-8859-7", "WINDOWS-1255", "ISO-8859-8",
      "WINDOWS-1256", "ISO-8859-6",   "TIS-620",    "SHIFT_JIS",    "EUC-JP",
      "UHC",          "EUC-KR",       "BIG5",       "GB18030"};
  const std::string upper = support::ToUpper(guess);
  const auto in = [&](const auto& list) { return std::find(list.begin(), list.end(), upper) != list.end(); };
  const bool believed = in(kOther) || (in(kLatin) && CountAbove(text, 0x7F) >= kEnoughAccents);
  if (!believed) return "";
  return upper == "SHIFT_JIS" ? kShiftJis : upper == "UHC" ? "windows-949" : guess;
}

/// All that is written in the song's code page, a line a text; what is UTF-8 is not.
std::string ForeignText(const Lyric& lyric, std::span<const std::string_view> names) {
  std::string text, line;
  const auto add = [&text](std::string_view part) {
    if (!IsUtf8(part)) text.append(part).append("\n");
  };
  for (const std::string_view name : names) add(name);
  for (std::size_t i = 0; i < lyric.syllables.size(); ++i) {
    if (i > 0 && lyric.syllables[i].line != lyric.syllables[i - 1].line) add(std::exchange(line, {}));
    line += lyric.syllables[i].text;
  }
  add(line);
  return text;
}

}  // namespace

bool IsUtf8(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  for (std::size_t i = 0; i < text.size();) {
    const unsigned lead = byte(i);
    const std::size_t more = lead < 0x80 ? 0 : lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if ((lead >= 0x80 && lead < 0xC2) || lead > 0xF4 || more >= text.size() - i) return false;
    std::uint32_t letter = lead & (0x7FU >> (more == 0 ? 0 : more + 1));
    for (std::size_t next = 1; next <= more; ++next) {
      if ((byte(i + next) & 0xC0) != 0x80) return false;
      letter = letter << 6 | (byte(i + next) & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 4> kLeast{0, 0x80, 0x800, 0x10000};
    if (letter < kLeast[more] || letter > 0x10FFFF || (letter >= 0xD800 && letter <= 0xDFFF)) return false;
    i += more + 1;
  }
  return true;
}

std::string CodingOf(const Lyric& lyric, std::span<const std::string_view> names, CodePages* pages) {
  constexpr std::size_t kFewest = 4;  // letters that a guess can be made of
  const std::string text = ForeignText(lyric, names);
  if (text.empty()) return "";
  std::string coding = lyric.coding;
  if (coding.empty()) coding = CodingOfLanguage(lyric.language);
  if (coding.empty() && HasKana(text)) coding = kShiftJis;
  const bool guess = coding.empty() && pages != nullptr && CountAbove(text, 0x7F) >= kFewest;
  if (guess) coding = Believed(pages->Guess(text), text);
  return coding == kWestern ? "" : coding;
}

}  // namespace karaoke
