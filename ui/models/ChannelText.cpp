// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/ChannelText.h"

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

}  // namespace ui
