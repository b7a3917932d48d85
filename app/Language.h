// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/Sentences.h"

namespace support {
class Settings;
}

namespace app {

/// The language that the program speaks. Threads: the window's.
class Language {
 public:
  Language(support::Settings& settings, support::Sentences& say) : settings_(settings), say_(say) {}

  /// As it is stored.
  void Read();
  /// By its place among the languages, 0 is English; stored, and acts on all that is said after it.
  void Choose(int language);
  /// Added to the number of every text of the window, see support::BaseOf.
  [[nodiscard]] int StringBase() const { return base_; }

 private:
  support::Settings& settings_;
  support::Sentences& say_;
  int base_ = 0;
};

}  // namespace app
