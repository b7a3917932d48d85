// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about names from files, and about analysing many files: 2330 to 2399.
enum class ScanWord : int {
  FileNames = 2330,
  NameOrder,
  NameOrderTip,
  ArtistFirst,
  TitleFirst,
  SplitAt,
  SplitAtTip,
  UseSplit,
  UseSplitTip,
  UseArtist,
  UseArtistTip,
  WriteTags,
  WriteTagsTip,
  ExampleFile,
  Example,
  ExampleTitleOnly,
  Analyse = 2350,
  AnalyseTip,
  AnalysePause,
  AnalysePauseTip,
  AnalyseGoOn,
  AnalyseGoOnTip,
  AnalyseEnd,
  AnalyseEndTip,
  AnalyseGoes,
  AnalyseRest,
  AnalysePaused,
  AnalysisLeftOut,
  TracksChosen,
  AnalyseAll,
  AnalyseAllTip,
  ScanRate = 2370,
  MinutesLeft,
  SecondsLeft,
};

[[nodiscard]] std::span<const Strings::Row> ScanWords();

}  // namespace ui
