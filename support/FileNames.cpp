// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FileNames.h"

#include <algorithm>
#include <array>

#include "support/Text.h"

namespace support {
namespace {

/// Names that Windows keeps for devices, whatever stands behind a dot.
bool IsDevice(std::string_view name) {
  constexpr std::array<std::string_view, 4> kWhole{"CON", "PRN", "AUX", "NUL"};
  const std::string stem = ToUpper(Trim(name.substr(0, name.find('.'))));
  if (std::find(kWhole.begin(), kWhole.end(), stem) != kWhole.end()) return true;
  const bool numbered = stem.size() == 4 && (stem.starts_with("COM") || stem.starts_with("LPT"));
  return numbered && stem[3] >= '1' && stem[3] <= '9';
}

/// Of the character of UTF-8 that the text begins with; 0 where it begins with none.
std::size_t LengthOfCharacter(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = lead < 0x80                    ? 1
                             : lead >= 0xC2 && lead <= 0xDF ? 2
                             : lead >= 0xE0 && lead <= 0xEF ? 3
                             : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                            : 0;
  if (length == 0 || length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
  }
  const auto second = length > 1 ? static_cast<unsigned char>(text[1]) : 0;
  const bool none = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                    (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
  return none ? 0 : length;
}

/// As the old code page of Western Europe has it: disks of other systems take whole characters only.
void AppendOldByte(std::string& name, unsigned char code) {
  if (code < 0xA0) {
    name += '_';
    return;
  }
  name += static_cast<char>(0xC0 | code >> 6);
  name += static_cast<char>(0x80 | (code & 0x3F));
}

void CutTo(std::string& name, std::size_t most) {
  if (name.size() <= most) return;
  // A byte that goes on with a character of UTF-8 is no place to cut.
  while (most > 0 && (static_cast<unsigned char>(name[most]) & 0xC0) == 0x80) --most;
  name.resize(most);
}

}  // namespace

std::string AsUtf8(std::string_view text, std::size_t most) {
  std::string whole;
  while (!text.empty() && whole.size() <= most) {
    const std::size_t length = LengthOfCharacter(text);
    if (length == 0) {
      AppendOldByte(whole, static_cast<unsigned char>(text[0]));
    } else {
      whole += text.substr(0, length);
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  CutTo(whole, most);
  return whole;
}

std::string CleanFileName(std::string_view text, std::size_t most) {
  std::string name;
  for (const char character : AsUtf8(text, 4 * most)) {
    const auto code = static_cast<unsigned char>(character);
    if (code == '"') {
      name += '\'';
    } else if (code < 0x20 || code == 0x7F || std::string_view("\\/:*?<>|").find(character) < 8) {
      name += '-';
    } else {
      name += character;
    }
  }
  CutTo(name, most);
  while (!name.empty() && (name.back() == '.' || name.back() == ' ')) name.pop_back();
  name.erase(0, name.find_first_not_of(' '));
  if (name.empty()) return "_";
  return IsDevice(name) ? "_" + name : name;
}

}  // namespace support
