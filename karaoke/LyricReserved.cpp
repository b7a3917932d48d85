// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/LyricReserved.h"

#include <algorithm>

#include "support/Text.h"

namespace karaoke {

bool LeadsInShiftJis(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return (code >= 0x81 && code <= 0x9F) || (code >= 0xE0 && code <= 0xFC);
}

bool ReservedLetters::AreUsedIn(const LyricEvents& words) {
  return words.kind == LyricEvents::Kind::Lyric &&
         std::any_of(words.events.begin(), words.events.end(), [](const LyricEvent& event) {
           return event.text.starts_with("{@") || event.text.starts_with("{#");
         });
}

std::string ReservedLetters::Sung(std::string_view text) {
  std::string sung;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char letter = text[i];
    const bool last = i + 1 == text.size();
    if (letter == '{' || letter == '[') {
      const std::size_t end = Find(letter == '{' ? '}' : ']', text, i);
      if (letter == '{') Take(text.substr(i + 1, end - i - 1));
      i = end;
    } else if (letter == '\\' && !last) {
      const char escaped = text[++i];
      sung += escaped == 'r' ? '\r' : escaped == 'n' ? '\n' : escaped == 't' ? ' ' : escaped;
    } else {
      sung += letter;
      if (japanese_ && !last && LeadsInShiftJis(letter)) sung += text[++i];
    }
  }
  return sung;
}

/// The end without one. The second byte of a Japanese letter may look like a bracket.
std::size_t ReservedLetters::Find(char bracket, std::string_view text, std::size_t from) const {
  while (from < text.size() && text[from] != bracket) {
    from += japanese_ && LeadsInShiftJis(text[from]) ? 2 : 1;
  }
  return std::min(from, text.size());
}

void ReservedLetters::Take(std::string_view mark) {
  if (mark == "@JP") coding_ = kShiftJis;
  if (mark == "@LATIN") coding_ = kWestern;
  japanese_ = coding_ == kShiftJis;
  if (!mark.starts_with('#')) return;
  const std::size_t equals = std::min(mark.find('='), mark.size());
  const std::string what = support::ToUpper(mark.substr(1, std::max<std::size_t>(equals, 1) - 1));
  const std::string value(support::Trim(mark.substr(std::min(equals + 1, mark.size()))));
  if (what == "TITLE") title_ = value;
  if (what == "ARTIST" || (what == "COMPOSER" && artist_.empty())) artist_ = value;
}

}  // namespace karaoke
