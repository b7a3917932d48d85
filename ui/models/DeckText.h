// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QString>

#include "app/sound/DeckView.h"
#include "ui/skins/Skin.h"
#include "ui/strings/Strings.h"

namespace ui {

/// How soon a deck's track ends.
enum class Urgency { Unloaded, None, Soon, Now };

/// What a deck shows of its times.
struct DeckTimes {
  QString remaining;  ///< "−02:31"
  QString elapsed;    ///< "01:14 / 03:45"
  Urgency urgency;
};
[[nodiscard]] DeckTimes TimesOf(const app::DeckView& view);
[[nodiscard]] QColor ColourOf(Urgency urgency, const Skin& skin);

/// "128.00 BPM"; empty where none is known.
[[nodiscard]] QString BpmText(double bpm, const Strings& say);

/// "Am 8A", as the track was recorded; empty where none is known.
[[nodiscard]] QString KeyText(const std::shared_ptr<const music::TrackForm>& form);

}  // namespace ui
