// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "dmx/ports/FixtureFormats.h"
#include "support/Sentences.h"
#include "support/Text.h"

namespace dmx::testing {

/// Reads "Maker|Model|Mode:Dimmer,Pan|Mode:..." and nothing else.
class FakeFixtureFormats final : public FixtureFormats {
 public:
  [[nodiscard]] support::Result<PackFixture> Read(std::string_view text) const override {
    const auto parts = support::Split(text, '|');
    if (parts.size() < 3)
      return support::Failed(support::ErrorCode::Malformed, support::Sentence::PackNotKnown);
    PackFixture fixture;
    fixture.maker = parts[0];
    fixture.model = parts[1];
    for (std::size_t i = 2; i < parts.size(); ++i) {
      const std::size_t colon = parts[i].find(':');
      PackMode mode;
      mode.name = parts[i].substr(0, colon);
      for (const std::string_view name : support::Split(parts[i].substr(colon + 1), ',')) {
        mode.slots.push_back({static_cast<int>(fixture.channels.size()), {}, 0, false});
        PackChannel channel;
        channel.name = name;
        channel.role = name == "Dimmer" ? PackRole::Dimmer : name == "Pan" ? PackRole::Pan : PackRole::Other;
        fixture.channels.push_back(std::move(channel));
      }
      fixture.modes.push_back(std::move(mode));
    }
    return fixture;
  }
  [[nodiscard]] std::map<std::string, std::string> Makers(std::string_view) const override { return {}; }
};

}  // namespace dmx::testing
