// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about the light console: 2602 to 2619, and 2850 to 2899.
enum class ConsoleWord : int {
  Master = 2850,
  MasterTip,
  Output,
  OutputTip,
  OutputOff,
  OutputNone,
  OutputStarting,
  OutputRate,
  Blackout,
  BlackoutTip,
  Guard,
  GuardTip,
  GuardAsk,
  GuardLift,
  AllDown,
  AllDownTip,
  PageBack,
  PageOn,
  Range,
  Fixture,
  FixtureTip,
  NoFixtures,
  Faders,
  Fixtures,
  FixtureRange,
  Channel,
  ChannelOf,
  ChannelTip,
  Wire,
  WireCell,
  ShowList,
  ShowListTip,
  ShowListHint,
  ShowOpen,
  ShowOpenTip,
  ShowOpenTitle,
  ShowFiles,
  ShowPlay,
  ShowPause,
  ShowStop,
  ShowRepeat,
  ShowRepeatTip,
  ShowPosition,
  ShowPositionTip,
  ShowPlace,
  ShowNext,
  ShowNone,
  ShowNotes,
  ShowFailed,
  ShowEndsEarly,
  // The switch, and what there is behind it
  SwitchedOn = 2602,
  SwitchedOff,
  BoxSends,
  BoxFound,
  BoxMissing,
  BoxTip,
  OffButSent,
  Stage,
  StageTip,
};

[[nodiscard]] std::span<const Strings::Row> ConsoleWords();

}  // namespace ui
