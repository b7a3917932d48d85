// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about the light organ: 2470 to 2479, and 2730 to 2789.
enum class OrganWord : int {
  // A song beside the decks that is followed
  SongGrid = 2470,
  SongSound,
  // Mode buttons, by their index, and what each does.
  Mono = 2730,
  Stereo,
  Lo,
  Pp,
  Constant,
  Beat,
  DacLo,
  DacPp,
  DacConstant,
  MonoTip,
  StereoTip,
  LoTip,
  PpTip,
  ConstantTip,
  BeatTip,
  DacLoTip,
  DacPpTip,
  DacConstantTip,
  // One side
  Io,
  Dac,
  IoName,
  DacName,
  LampsTip,
  Level,
  LevelTip,
  Value,
  ValueTip,
  Button,
  ButtonTip,
  Speed,
  SpeedTip,
  Bank,
  BankTip,
  BankEmpty,
  Step,
  PatternTip,
  BeatGrid,
  BeatSound,
  BeatNothing,
  // Boards
  Boards,
  BoardsTip,
  BoardSize,
  BoardSizeTip,
  OneBoard,
  TwoBoards,
  BoardsOff,
  BoardsOn,
  Guard,
  GuardTip,
  GuardHolds,
  GuardAsk,
  GuardLift,
  // Memories
  Memories,
  MemoriesTip,
  MemoryName,
  Remember,
  RememberTip,
  Recall,
  RecallTip,
  EditBanks,
};

[[nodiscard]] std::span<const Strings::Row> OrganWords();

}  // namespace ui
