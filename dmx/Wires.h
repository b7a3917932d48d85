// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "dmx/ports/DmxInterface.h"

namespace dmx {

/// Several interfaces that show the same. Its status is that of the first one that sends; one that is looked
/// for is told of while none sends, or when it did send before. Threads: as DmxInterface.
class Wires final : public DmxInterface {
 public:
  /// Each outlives it.
  explicit Wires(std::vector<DmxInterface*> wires) : wires_(std::move(wires)) {}

  void StartDevice() override {
    for (DmxInterface* wire : wires_) wire->StartDevice();
  }
  void SetChannelCount(int count) override {
    for (DmxInterface* wire : wires_) wire->SetChannelCount(count);
  }
  void SetData(int channel, DmxLevel level) override {
    for (DmxInterface* wire : wires_) wire->SetData(channel, level);
  }
  void StopDevice() override {
    for (DmxInterface* wire : wires_) wire->StopDevice();
  }
  [[nodiscard]] DmxInterfaceStatus Status() const override;

 private:
  const std::vector<DmxInterface*> wires_;
};

}  // namespace dmx
