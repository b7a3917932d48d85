// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "decks/ports/Microphone.h"

namespace decks::testing {

/// A microphone that notes what it is asked and is what it is told to be.
/// Threads: one.
class FakeMicrophone final : public Microphone {
 public:
  FakeMicrophone() {
    state.inputs = std::make_shared<const std::vector<InputInfo>>(
        std::vector<InputInfo>{{"desk", "Desk microphone", 1, true}, {"lap", "Built-in microphone", 2}});
  }
  void Ask(const MicrophoneWish& newest) override { wish = newest; }
  void LookForInputs() override { ++looks; }
  void Watch() override { ++watches; }
  [[nodiscard]] MicrophoneState Now() override { return state; }

  MicrophoneWish wish;
  MicrophoneState state;
  int looks = 0;
  int watches = 0;
};

}  // namespace decks::testing
