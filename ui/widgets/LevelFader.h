// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/qnamespace.h>
#include <QAnyStringView>
#include <functional>

#include "ui/models/SentEcho.h"

class QLabel;

namespace ui {

class Fader;
struct Skin;

/// A fader and the label of its value. What a hand sent is believed until the other side has heard of it.
struct LevelFader {
  Fader* fader = nullptr;
  QLabel* value = nullptr;
  SentEcho echo;

  /// "SongKey" and "SongKeyValue" are their object names.
  static LevelFader Make(QAnyStringView name, Qt::Orientation orientation, int lowest, int highest,
                         const Skin& skin);
  /// now: of the newest frame. Requires: this stays where it is.
  void OnMoved(const support::TimePoint& now, std::function<void(int)> send);
  /// What the other side reports, unless a hand is at the fader or moved it just now.
  void Follow(int reported, support::TimePoint now);
};

}  // namespace ui
