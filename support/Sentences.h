// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <initializer_list>
#include <string>
#include <string_view>

namespace support {

/// What the rooms tell the user, by number: 101 to 199 are app's, 201 to 299 the catalogue's. The window's
/// own texts stand in its own table.
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
  FileNotFound,
  FileUnreadable,
  FileEmpty,
  FileMalformed,
  FileUnsupported,
  FileUnavailable,

  KaraokeSongInMusic = 201,
  IndexMissing,
  IndexUnreadable,
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
  [[nodiscard]] int Base() const { return base_; }
  /// The sentence with its places %1, %2 ... filled in.
  [[nodiscard]] std::string operator()(Sentence sentence,
                                       std::initializer_list<std::string_view> parts = {}) const;

 private:
  std::atomic<int> base_{0};
};

/// By number with base; empty for one that is not there.
[[nodiscard]] std::string_view SentenceText(int number);

}  // namespace support
