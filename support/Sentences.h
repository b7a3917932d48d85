// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "support/Result.h"

namespace support {

/// What the rooms tell the user, by number: 101 to 199 are app's, 201 to 299 the catalogue's, 301 to 399
/// those of stage lighting, 401 to 499 the light organ's, 501 to 599 karaoke's, 801 to 899 the engine's and
/// 901 to 999 the adapters'. The window's own texts stand in its own table.
enum class Sentence : int {
  OutputNotConnected = 101,
  OutputCannotOpen,
  NoOutputs,
  NoSound,
  OutputNumber,
  CatalogueDamaged,
  KaraokeDamaged,
  FolderReadOnly,
  FileNotDeleted,
  FolderMissing,
  FilesLeftOut,
  TemposTooFarApart,
  TempoUnknown,
  PresetsUnreadable,
  PresetNotSaved,
  PresetNotDeleted,
  PresetNeedsName,
  FileNotAnalysed,
  FileNotThere,
  FolderWentAway,
  AddingWentOn,

  EveningGoesOn = 130,
  JournalDamaged,
  JournalNotKept,
  FileFellTwice,
  NothingGoesOn,
  FileDoesNotGoOn,
  RunsElsewhere,
  RunsElsewhereSince,
  RunsAndIsSilent,
  AnotherUser,

  PlaylistIsPathList = 150,
  PlaylistLinesLeftOut,
  PlaylistNotSaved,
  NotPlayedNext,
  HistoryNotSaved,
  PlaylistDamaged,
  SongNotPlayed = 160,

  NotSetAside = 170,
  CatalogueUnreadable,
  KaraokeUnreadable,
  ListUnreadable,
  RowsToGo,
  TakeRowsOut,
  KeepRows,
  RowsStay,
  RowsKept,

  KaraokeSongInMusic = 201,
  IndexMissing,
  IndexUnreadable,
  FolderUnreadable,
  FolderLost,
  FoldersLeftOut,
  RowsGone,
  FilesMoved,
  FilesMissing,
  NoSongInFile,
  IndexTooLong = 240,
  PlaylistUnreadable = 250,

  NoIoBoard = 401,
  OrganFileNotSaved,
  OrganFileUnreadable,
  NotMidi = 501,
  MidiWithoutTicks,
  MidiTooLong,
  SongMissing,
  SongUnreadable,
  SongEmpty,
  SongTooLong,
  DiscImageMissing,
  DiscImageTooLong,
  DiscImageWithoutGraphics,
  WordsInNoTrack = 520,
  NoWords,

  FixtureFileEmpty = 301,
  ShowFileEmpty,
  LightFileMissing,
  LightFileUnreadable,
  LightFileTooLong,
  NumberBounded,
  NumberNotWhole,
  MoreNotes,
  LevelBounded,
  FixtureLeftDark,
  FixtureEndsEarly,
  ShowTooLong,
  // What stands in a line of a fixture or a show file.
  TheEffect,
  ThePicture,
  TheStartLevel,
  TheEndLevel,
  TheFunction,
  ThePresetCount,
  TheType,
  TheTiltAngle,
  ThePanAngle,
  TheBeamAngle,
  TheChannelCount,
  TheLevel,
  TheDifference,
  ThePreviousLevel,
  TheLoops,
  TheStepCount,
  TheStartChannel,
  TheFixtureNumber,
  TheFixtureCount,
  TheSceneCount,
  // What became of a show's fixtures.
  FixtureSetAside,
  FixtureHasGrown,
  FixtureHasShrunk,

  UnplayableFormat = 801,
  NoMemoryForFile,
  HoldsNoSound,
  OutputBusy,
  OutputNotOpen,
  TooManyStreams,
  HeadphonesGone,
  OutputGone,
  HeadphonesBack,
  PlayingGoesOn,
  OutputCanReturn,
  OutputMovedByHand,
  PlayingIsBack,

  DiskFull = 901,
  NoWriteRight,
  FolderOfFileMissing,
  NotReplaceable,
  NotSaved,
  HeldByOther,
  FileMissing,
  FolderNotAudio,
  DeviceNotAudio,
  AccessDenied,
  FileUnreadable,
  FileEmpty,
  OtherFormat,
  NoMemoryToOpen,
  DiskDoesNotAnswer,
  NotAudioOrDamaged,
  HeaderDamaged,
  UnknownSound,
  TooManyChannels,
  UnplayableRate,
  DiskStopped,
  NoMemoryToReadOn,
  NoReadableAudio,
  TagNotWritten,
  TagInArchive,
  ArchiveDamaged,
  ArchiveLocked,
  ArchivePackedOtherwise,
  ArchiveWithoutPicture,
  ArchiveWithoutSound,
  ArchivePartEmpty,
  ArchivePartTooLarge,
  NoSoundThread,
  NoOutputNow,
  OutputMissing,
  OutputRefused,
  ProgramNotStarted,
  ProgramNoName,
  NoRoomForProgram,
  ProgramEnded,
  SettingsUnreadable,
  SettingsKeptAside,
  SettingsNotKept,
  RegistryRefuses,
  NoSoundfont,
  SynthesiserNotStarted,
  SoundfontNotUsed,
  BoxNoRights,
  BoxDoesNotAnswer,
  UsbNotUsable,
  NoBox,
  BoxLibraryOtherKind,
  BoxLibraryMissing,
  BoxLibraryUnknown,
  BoardNoRights,
  BoardDoesNotAnswer,
  NoBoard,
  BoardNoPower,
  BoardOtherAddress,
  BoardsAtOneAddress,
  BoardMissing,
  BoardLibraryMissing,
  BoardLibraryUnknown,
};

/// The rooms' sentences in the language chosen.
/// Threads: any; a choice holds for what is said after it.
class Sentences {
 public:
  static constexpr int kDutchBase = 1000;

  Sentences() = default;
  Sentences(const Sentences&) = delete;
  Sentences& operator=(const Sentences&) = delete;

  /// What is added to every number: 0 is English, 1000 Dutch.
  void Choose(int base) { base_ = base; }
  /// The sentence with its forms chosen and its places %1, %2 ... filled in.
  [[nodiscard]] std::string operator()(Sentence sentence,
                                       std::initializer_list<std::string_view> parts = {}) const;
  [[nodiscard]] std::string operator()(const Saying& saying) const;
  /// The text as it stands where it is no sentence of the table.
  [[nodiscard]] std::string operator()(const Error& error) const;

 private:
  std::atomic<int> base_{0};
};

/// For whoever has no language chosen.
[[nodiscard]] const Sentences& English();

/// A failure with a sentence of the table.
[[nodiscard]] Error Failed(ErrorCode code, Sentence sentence, std::vector<std::string> parts = {});

/// What stands between braces agrees with a number: "{file|files}" is the first form where the part of place
/// %1 is "1", else the second; "{2:line|lines}" goes by that of place %2. Gives the text with its forms
/// chosen; the places themselves stay. part: by place, from 0.
[[nodiscard]] std::string ChooseForms(std::string_view text,
                                      const std::function<std::string_view(std::size_t place)>& part);

/// By number with base; empty for one that is not there.
[[nodiscard]] std::string_view SentenceText(int number);

}  // namespace support
