// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/DeckText.h"

#include "music/TrackForm.h"

#include <algorithm>

#include "ui/models/DeckChoice.h"
#include "ui/models/TimeText.h"

namespace ui {
namespace {

constexpr auto kSoon = std::chrono::seconds(30);
constexpr auto kNow = std::chrono::seconds(10);

}  // namespace

DeckTimes TimesOf(const app::DeckView& view) {
  if (view.length.count() <= 0)
    return {QStringLiteral("00:00"), QStringLiteral("00:00 / 00:00"), Urgency::Unloaded};
  const auto left = std::max(view.length - view.position, std::chrono::microseconds(0));
  const bool playing = view.state == DeckState::Playing;
  return {QStringLiteral("−") + MinutesText(left),
          MinutesText(view.position) + QStringLiteral(" / ") + MinutesText(view.length),
          playing && left <= kNow    ? Urgency::Now
          : playing && left <= kSoon ? Urgency::Soon
                                     : Urgency::None};
}

QColor ColourOf(Urgency urgency, const Skin& skin) {
  switch (urgency) {
    case Urgency::Unloaded:
      return skin.dim;
    case Urgency::Soon:
      return skin.warning;
    case Urgency::Now:
      return skin.danger;
    case Urgency::None:
      break;
  }
  return skin.text;
}

QString BpmText(double bpm, const Strings& say) {
  return bpm > 0 ? QString::number(bpm, 'f', 2) + QLatin1Char(' ') + say(Say::BpmCaption) : QString();
}

QString KeyText(const std::shared_ptr<const music::TrackForm>& form) {
  if (form == nullptr || !form->key) return {};
  return QString::fromStdString(NameOf(*form->key) + ' ' +
                                WheelNameOf(*form->key, music::KeyNotation::Camelot));
}

}  // namespace ui
