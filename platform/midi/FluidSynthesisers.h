// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "karaoke/ports/Synthesiser.h"

namespace platform::midi {

/// Synthesisers of the FluidSynth library, with the soundfonts that the system has installed.
class FluidSynthesisers final : public karaoke::SynthesiserFactory {
 public:
  /// Folders that are looked through, in this order.
  explicit FluidSynthesisers(std::vector<std::filesystem::path> folders = InstalledFolders());

  [[nodiscard]] static std::vector<std::filesystem::path> InstalledFolders();
  [[nodiscard]] std::vector<karaoke::Soundfont> Soundfonts() override;
  support::Result<std::unique_ptr<karaoke::Synthesiser>> Make(const std::string& soundfont,
                                                              int sample_rate) override;

 private:
  const std::vector<std::filesystem::path> folders_;
};

}  // namespace platform::midi
