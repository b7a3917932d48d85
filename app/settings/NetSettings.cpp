// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/settings/NetSettings.h"

#include <algorithm>
#include <charconv>
#include <random>

#include "support/Settings.h"
#include "support/Text.h"

namespace app {
namespace {

using Protocol = dmx::NetWish::Protocol;
using Source = decltype(dmx::NetWish::source);

constexpr const char* kLamps = "Lamps";
constexpr std::string_view kDigits = "0123456789abcdef";

std::string HexOf(const Source& source) {
  std::string text;
  for (const unsigned byte : source) {
    text += kDigits[byte / 16];
    text += kDigits[byte % 16];
  }
  return text;
}

bool Parse(const std::string& text, Source& source) {
  if (text.size() != 2 * source.size()) return false;
  for (std::size_t i = 0; i < source.size(); ++i) {
    const char* at = text.data() + 2 * i;
    const auto [end, error] = std::from_chars(at, at + 2, source[i], 16);
    if (error != std::errc() || end != at + 2) return false;
  }
  return true;
}

/// A random UUID, of version 4.
Source NewSource() {
  Source source{};
  std::random_device random;
  for (auto& byte : source) byte = static_cast<std::uint8_t>(random());
  source[6] = static_cast<std::uint8_t>((source[6] & 0x0F) | 0x40);
  source[8] = static_cast<std::uint8_t>((source[8] & 0x3F) | 0x80);
  return source;
}

}  // namespace

dmx::NetWish ReadNetWish(support::Settings& settings) {
  dmx::NetWish wish;
  const int protocol = settings.Number(kLamps, "Net");
  if (protocol == 1) wish.protocol = Protocol::ArtNet;
  if (protocol == 2) wish.protocol = Protocol::Sacn;
  const bool sacn = wish.protocol == Protocol::Sacn;
  wish.universe = std::clamp(settings.Number(kLamps, "Universe"), sacn ? 1 : 0,
                             sacn ? dmx::NetWish::kLastSacn : dmx::NetWish::kLastArtNet);
  wish.address = std::string(support::Trim(settings.Text(kLamps, "Address")));
  if (!Parse(settings.Text(kLamps, "Source"), wish.source)) {
    wish.source = NewSource();
    settings.SetText(kLamps, "Source", HexOf(wish.source));
  }
  return wish;
}

void StoreNetWish(support::Settings& settings, const dmx::NetWish& wish) {
  settings.SetNumber(kLamps, "Net", static_cast<int>(wish.protocol));
  settings.SetNumber(kLamps, "Universe", wish.universe);
  settings.SetText(kLamps, "Address", wish.address);
}

}  // namespace app
