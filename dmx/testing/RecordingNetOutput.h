// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "dmx/ports/NetOutput.h"

namespace dmx::testing {

/// Keeps what was wished for; nothing goes out.
class RecordingNetOutput final : public NetOutput {
 public:
  void Choose(const NetWish& wish) override { wishes.push_back(wish); }
  void StartDevice() override {}
  void SetChannelCount(int /*count*/) override {}
  void SetData(int /*channel*/, DmxLevel /*level*/) override {}
  void StopDevice() override {}

  std::vector<NetWish> wishes;
};

}  // namespace dmx::testing
