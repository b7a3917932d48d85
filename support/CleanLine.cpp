// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CleanLine.h"

#include <algorithm>

#include "support/Text.h"

namespace support {
namespace {

/// C0, DEL, C1 in UTF-8 and the characters that turn the direction of what stands beside them.
std::size_t ControlAt(std::string_view text, std::size_t place) {
  const auto byte = [&](std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : static_cast<unsigned char>(0);
  };
  const unsigned char first = byte(place), second = byte(place + 1), third = byte(place + 2);
  if (first < 0x20 || first == 0x7F) return 1;
  if (first == 0xC2 && second >= 0x80 && second <= 0x9F) return 2;
  if (first != 0xE2) return 0;
  // U+200B, 200E, 200F, 2028 to 202E, 2060 to 206F; the two joiners of letters stay.
  const bool marks = second == 0x80 && (third == 0x8B || third == 0x8E || third == 0x8F);
  const bool turns = second == 0x80 && third >= 0xA8 && third <= 0xAE;
  return marks || turns || (second == 0x81 && third >= 0xA0 && third <= 0xAF) ? 3 : 0;
}

/// Cut to so many bytes, not in the middle of a character.
void Cut(std::string& text, std::size_t most) {
  if (text.size() <= most) return;
  while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0) == 0x80) --most;
  text.resize(most);
}

}  // namespace

std::string CleanLine(std::string_view text, std::size_t most) {
  std::string clean;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t control = ControlAt(text, i);
    const bool blank = control > 0 || text[i] == ' ';
    if (!blank) {
      clean += text[i];
    } else if (!clean.empty() && clean.back() != ' ') {
      clean += ' ';
    }
    i += std::max<std::size_t>(control, 1);
  }
  Cut(clean, most);
  return std::string(Trim(clean));
}

}  // namespace support
