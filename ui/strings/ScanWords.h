// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about names from files, and about analysing many files: 2690 to 2729.
enum class ScanWord : int {
  FileNames = 2690,
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
  Analyse,
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
  ScanRate,
  MinutesLeft,
  SecondsLeft,
  MoreFolders,
  MoreFoldersTip,
  AddFolder,
  AddFolderTip,
  RemoveFolder,
  RemoveFolderTip,
};

[[nodiscard]] std::span<const Strings::Row> ScanWords();

}  // namespace ui
