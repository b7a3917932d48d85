// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <span>

namespace ui {

/// Numbers of the window's captions and messages in English; Dutch is the same number plus 1000.
enum class Say : int {
  Caption = 2001,
  // Status line
  OutputOf = 2010,
  NoSound,
  SoundLoad,
  LateBlocks,
  SoundLoadTip,
  LateBlocksTip,
  ClockTip,
  // Decks
  Deck = 2030,
  DeckEmpty,
  DeckEmptyHint,
  Loading,
  Stopped,
  Playing,
  Paused,
  Ended,
  Play,
  Pause,
  Stop,
  ToStart,
  PlayTip,
  StopTip,
  ToStartTip,
  Tempo,
  TempoTip,
  TempoReset,
  TempoResetTip,
  BpmCaption,
  BpmTip,
  Remaining,
  Elapsed,
  Overview,
  OverviewTip,
  UnknownArtist,
  KeyHint,
  Wave,
  WaveTip,
  // Mixer
  Volume = 2070,
  VolumeTip,
  Level,
  LevelTip,
  Cue,
  CueName,
  CueTip,
  CueNoDevice,
  Crossfader,
  CrossfaderTip,
  Curve,
  CurveTip,
  CurveSmooth,
  CurveCut,
  CurvePower,
  // Catalogue
  Music = 2090,
  MusicTip,
  Tracks,
  OneTrack,
  Catalogue,
  CatalogueTip,
  AddFiles,
  AddFilesTip,
  AddFilesTitle,
  DialogAdd,
  DialogCancel,
  DialogLookIn,
  DialogName,
  DialogKind,
  MusicFiles,
  AllFiles,
  AddingFiles,
  Added,
  AddedOne,
  AddedNone,
  AlreadyThere,
  AlreadyThereOne,
  LeftOut,
  LeftOutOne,
  Close,
  CloseTip,
  EmptyCatalogue,
  OnDeck,
  LoadOn,
  LoadOnTip,
  // Columns of a track table
  ColumnDeck = 2120,
  ColumnArtist,
  ColumnTitle,
  ColumnTime,
  ColumnBpm,
  ColumnGenre,
  ColumnAlbum,
  ColumnYear,
  // What could not be done
  DeckIsPlaying = 2140,
  BothDecksPlay,
  NoRowChosen,
  // Settings
  Settings = 2150,
  SettingsTip,
  Outputs,
  OutputsHint,
  OutputDeck,
  OutputHeadphones,
  Device,
  DeviceTip,
  Pair,
  PairTip,
  PairAll,
  PairFront,
  PairRear,
  PairCentre,
  PairRear2,
  DeviceMissing,
  Window,
  Language,
  LanguageTip,
  Skin,
  SkinTip,
  SkinDark,
  SkinLight,
};

/// The table of all captions and messages, in one language.
class Strings {
 public:
  enum class Language { English = 0, Dutch = 1 };
  struct Row {
    Say number;
    const char* english;
    const char* dutch;
  };

  explicit Strings(Language language) : language_(language) {}

  [[nodiscard]] QString operator()(Say number) const;
  [[nodiscard]] static std::span<const Row> Table();

 private:
  Language language_;
};

}  // namespace ui
