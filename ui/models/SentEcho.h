// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "support/Clock.h"

namespace ui {

/// Decides whether a value that comes back in the view may move the slider that sent it.
///
/// A command takes a moment to come back in the view; until then older values are echoes of steps that the
/// hand has left behind, and would take the slider back under it.
class SentEcho {
 public:
  void Sent(float value, support::TimePoint now);
  [[nodiscard]] bool Believe(float reported, support::TimePoint now);

 private:
  std::optional<float> sent_;
  support::TimePoint sent_at_{};
};

}  // namespace ui
