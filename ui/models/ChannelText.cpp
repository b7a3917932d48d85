// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/ChannelText.h"

#include <optional>

#include "dmx/cLights.h"
#include "ui/strings/ConsoleWords.h"
#include "ui/strings/Decode.h"

namespace ui {

QString PurposeText(const app::ChannelLabel& label, const Strings& say) {
  if (label.fixture == 0) return {};
  if (!label.label.empty()) return Decode(label.label);
  return say(static_cast<Say>(static_cast<int>(Say::FunctionFree) + static_cast<int>(label.function)));
}

QString ChannelText(int channel, const app::ChannelLabel& label, const Strings& say) {
  if (label.fixture == 0) return say(ConsoleWord::Channel).arg(channel);
  return say(ConsoleWord::ChannelOf)
      .arg(QString::number(channel), Decode(label.fixture_name), PurposeText(label, say));
}

std::vector<FixtureSpan> SpansOf(const app::StagePatch* patch) {
  std::vector<FixtureSpan> spans;
  for (int channel = 1; patch != nullptr && channel <= dmx::kUniverseChannels; ++channel) {
    const app::ChannelLabel& label = patch->At(channel);
    if (label.fixture == 0) continue;
    const bool goes_on =
        !spans.empty() && spans.back().fixture == label.fixture && spans.back().last == channel - 1;
    if (goes_on) {
      spans.back().last = channel;
    } else {
      spans.push_back({label.fixture, channel, channel, Decode(label.fixture_name)});
    }
  }
  return spans;
}

QColor ShownColour(app::StoredColour stored) {
  return {int(stored & 0xFF), int(stored >> 8 & 0xFF), int(stored >> 16 & 0xFF)};
}

QColor FunctionColour(dmx::ChannelFunction function, std::string_view label) {
  using Function = dmx::ChannelFunction;
  const bool mixes = function == Function::Dimmer || function == Function::Color;
  const auto named = mixes ? dmx::ColourNamed(label) : std::nullopt;
  if (named) return {named->red, named->green, named->blue};
  switch (function) {
    case Function::Pan:
      return {0x5B, 0x9D, 0xFF};
    case Function::Tilt:
      return {0x3F, 0xC9, 0xC9};
    case Function::PanTiltSpeed:
      return {0x7D, 0x8C, 0xB8};
    case Function::Dimmer:
      return {0xFF, 0xE9, 0xC2};
    case Function::Shutter:
      return {0xFF, 0xC8, 0x3D};
    case Function::Color:
      return {0xE8, 0x6A, 0xC8};
    case Function::ColorRotation:
      return {0xB0, 0x6C, 0xE0};
    case Function::Gobo:
      return {0x8F, 0xD1, 0x4F};
    case Function::GoboRotation:
      return {0x4F, 0xB0, 0x6A};
    case Function::Free:
      break;
  }
  return {0x9A, 0x9A, 0x9A};
}

}  // namespace ui
