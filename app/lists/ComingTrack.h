// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace app {

/// The track that the automatic mixer goes over to next, as far as it is known.
struct ComingTrack {
  std::string filename;  ///< empty: nothing comes
  std::string artist;
  std::string title;
  /// Until it begins, as the deck that plays runs now; 0 while it is mixed in. Nothing while no deck leads to
  /// it.
  std::optional<std::chrono::microseconds> in;
};

}  // namespace app
