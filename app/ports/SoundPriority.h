// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace app {

/// How far the system lets the threads that carry sound go before all others.
class SoundPriority {
 public:
  enum class Level {
    Asked,     ///< no answer yet
    Normal,    ///< not at all: a busy computer makes the sound drop out
    Raised,    ///< somewhat
    RealTime,  ///< before every other program
  };

  virtual ~SoundPriority() = default;
  /// The least that one of them has. Threads: any, never blocks for long.
  [[nodiscard]] virtual Level Now() const = 0;
};

}  // namespace app
