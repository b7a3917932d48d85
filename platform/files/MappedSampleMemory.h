// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>

#include "engine/ports/SampleMemory.h"

namespace platform::files {

/// Samples in files without a name, mapped into memory: they are gone with the program however it ends.
/// Threads: any.
class MappedSampleMemory final : public engine::SampleMemory {
 public:
  explicit MappedSampleMemory(std::filesystem::path folder) : folder_(std::move(folder)) {}

  /// The disk's room is taken at once, so that a full disk is told here and not by a crash in mid-song.
  [[nodiscard]] std::unique_ptr<engine::SampleBlock> Allocate(std::size_t samples) override;
  void Warm(engine::SampleBlock& block) override;

 private:
  std::filesystem::path folder_;
};

}  // namespace platform::files
