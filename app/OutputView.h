// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace app {

/// Where a deck plays.
struct OutputView {
  int device = 0;   ///< engine device number; 0 is "no sound"
  int speaker = 0;  ///< pair code 1 to 4; any other: all speakers of the device
  bool operator==(const OutputView&) const = default;
};

}  // namespace app
