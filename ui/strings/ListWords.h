// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about searching, scanning and playlists: 2648 to 2689.
enum class ListWord : int {
  Find = 2648,
  FindTip,
  FindHint,
  Found,
  NothingFound,
  SortedUp,
  SortedDown,
  Played,
  Missing,
  Total,
  Open,
  OpenName,
  OpenTip,
  OpenFile,
  OpenTitle,
  History,
  NoHistory,
  Save,
  SaveName,
  SaveTip,
  SaveTitle,
  Saved,
  Automix,
  AutomixTip,
  AutomixNext,
  AutomixEnd,
  MixTime,
  MixTimeTip,
  MixPlace,
  MixPlaceTip,
  AtMixPoints,
  BeforeTheEnd,
  MatchTempo,
  MatchTempoTip,
  MatchGain,
  MatchGainTip,
  AutomixWaits,
  TempoReach,
  TempoReachTip,
  GainRange,
  GainRangeTip,
};

[[nodiscard]] std::span<const Strings::Row> ListWords();

}  // namespace ui
