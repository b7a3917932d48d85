// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "app/files/Reindex.h"
#include "app/settings/Preferences.h"
#include "support/ProgramFolder.h"

namespace support {
class Settings;
}

namespace app {

class Collections;
class Help;

/// What the button of the settings page does.
enum class ApplyMode { ReindexMusic, ReindexKaraoke, ChooseDirectory, ChannelColours, Help, AnalyseAll };

struct ApplyWish {
  ApplyMode mode = ApplyMode::ReindexMusic;
  std::string folder;                 ///< to scan, or chosen; an empty choice changes nothing
  std::vector<StoredColour> colours;  ///< of the console's channels
};

/// The button of the settings page. Threads: the window's.
class ApplyButton {
 public:
  ApplyButton(Collections& collections, support::Settings& settings, const support::ProgramFolder& folder)
      : collections_(collections), settings_(settings), folder_(folder) {}

  /// Null: there is no viewer.
  void Attach(Help* help) { help_ = help; }
  /// Scans run on workers; their outcome is given on the window's thread.
  void Press(const ApplyWish& wish, Reindex::Done scanned = nullptr);

 private:
  Collections& collections_;
  support::Settings& settings_;
  const support::ProgramFolder& folder_;
  Help* help_ = nullptr;
};

}  // namespace app
