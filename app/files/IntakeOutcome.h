// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace app {

/// How far an order is.
struct AddingProgress {
  int done = 0;
  int total = 0;         ///< 0 when nothing is being added
  bool looking = false;  ///< folders are still gone through; done: files found so far
};

/// What came of an order.
struct IntakeOutcome {
  int rows = 0;                      ///< that its list got
  int songs = 0;                     ///< MIDI songs that the karaoke table got instead
  int known = 0;                     ///< files that have their row already
  int left_out = 0;                  ///< files and folders
  std::vector<std::string> refused;  ///< a sentence for each of the first ones left out
  std::string first, last;           ///< files of the order, as their rows name them
  bool stopped = false;              ///< before its end; what was done until then stays
};

}  // namespace app
