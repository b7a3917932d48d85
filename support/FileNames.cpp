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

void CutTo(std::string& name, std::size_t most) {
  if (name.size() <= most) return;
  // A byte that goes on with a character of UTF-8 is no place to cut.
  while (most > 0 && (static_cast<unsigned char>(name[most]) & 0xC0) == 0x80) --most;
  name.resize(most);
}

}  // namespace

std::string CleanFileName(std::string_view text, std::size_t most) {
  std::string name;
  for (const char character : text) {
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
