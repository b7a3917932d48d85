// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QString>
#include <string_view>
#include <vector>

#include "app/lights/StagedShow.h"
#include "app/settings/Preferences.h"
#include "ui/strings/Strings.h"

namespace ui {

/// What a channel is for, in a word or two: as the fixture file calls it, else its function. Empty for a
/// channel that nobody has.
[[nodiscard]] QString PurposeText(const app::ChannelLabel& label, const Strings& say);
/// "Channel 12: Moving head, Pan".
[[nodiscard]] QString ChannelText(int channel, const app::ChannelLabel& label, const Strings& say);

/// Channels of one fixture that lie side by side.
struct FixtureSpan {
  int fixture = 0;
  int first = 0;
  int last = 0;
  QString name;

  bool operator==(const FixtureSpan&) const = default;
};
/// In the order of their channels; none for a patch that is not there.
[[nodiscard]] std::vector<FixtureSpan> SpansOf(const app::StagePatch* patch);

[[nodiscard]] QColor ShownColour(app::StoredColour stored);
/// What a channel does in a colour: that which its label names, where it mixes light, else its function's.
[[nodiscard]] QColor FunctionColour(dmx::ChannelFunction function, std::string_view label);

}  // namespace ui
