// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "decks/ports/AudioEngine.h"
#include "decks/ports/SoundControl.h"
#include "music/TrackAnalysis.h"
#include "support/Units.h"

namespace decks {

/// Sign of life of a long scan. Threads: called by the scanning one.
class ScanProgress {
 public:
  virtual ~ScanProgress() = default;
  /// A fraction that grows by a tenth a block and starts again at 0 after 1.
  virtual void Busy(double fraction) = 0;
  /// Asked once a block; true ends the scan.
  [[nodiscard]] virtual bool Cancelled() { return false; }
};

/// Whose mix points are looked for.
struct MixPointRequest {
  std::string filename;
  int speaker = 0;       ///< pair code of the main output: the decoder is opened with the main stream's flags
  int gain_percent = 3;  ///< the threshold, 0 to 100
  bool operator==(const MixPointRequest&) const = default;
};

/// Finds the first and the last audible sample of a file.
///
/// Law: from the start, in blocks of 20,000 bytes, the first sample louder than 80 times the percentage, and
/// from there back to the first that is not louder than a quarter of that; from the end, in blocks of 100,000
/// bytes, the last sample louder than half of it. Neither looks beyond the edges of its block, and the first
/// sample of a block is only met walking back. One buffer of 50,001 samples serves both.
/// Threads: a worker, one scan at a time; it waits for the file to be decoded.
class MixPointScan {
 public:
  MixPointScan(AudioEngine& engine, SoundControl& sound) : engine_(engine), sound_(sound) {}

  /// Nothing when the file cannot be opened or the scan was cancelled.
  std::optional<music::MixPoints> Run(const MixPointRequest& request, ScanProgress& progress);

 private:
  static constexpr std::size_t kBufferSamples = 50'001;
  class Scanning;

  AudioEngine& engine_;
  SoundControl& sound_;
  std::array<std::int16_t, kBufferSamples> buffer_{};
};

}  // namespace decks
