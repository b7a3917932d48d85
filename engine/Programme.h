// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "engine/DeviceTable.h"
#include "engine/ProgrammeTap.h"

namespace engine {

/// What is played on the outputs, for whoever takes it elsewhere. Threads: any but a callback.
class ProgrammeSource {
 public:
  virtual ~ProgrammeSource() = default;
  /// Null when the device is not open. It goes on through every change of the device's output. speaker: a
  /// flag of the pair, or 0.
  [[nodiscard]] virtual std::unique_ptr<ProgrammeReader> Open(int device, std::uint32_t speaker) = 0;
  /// The frame at the loudspeaker now, as the reader counts.
  [[nodiscard]] virtual std::int64_t Heard(int device) = 0;
};

/// That of the engine's devices.
class EngineProgramme final : public ProgrammeSource {
 public:
  explicit EngineProgramme(std::shared_ptr<DeviceTable> devices) : devices_(std::move(devices)) {}
  [[nodiscard]] std::unique_ptr<ProgrammeReader> Open(int device, std::uint32_t speaker) override;
  [[nodiscard]] std::int64_t Heard(int device) override;

 private:
  const std::shared_ptr<DeviceTable> devices_;  // with the engine
};

}  // namespace engine
