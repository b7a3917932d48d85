// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "decks/ports/AudioEngine.h"
#include "music/Wave.h"

namespace decks {

/// What a file's samples are, as the engine tells of a stream of it.
struct SampleFormat {
  int sample_rate = 0;
  int channels = 0;
};

/// Reads a whole file through a decoding stream of its own and makes its wave, a piece at a time, so that
/// other work gets its turn.
///
/// Owns: the stream, until the end is read or Close; one that is left open is freed with the engine.
/// Threads: a worker, one at a time.
class WaveScan {
 public:
  WaveScan(AudioEngine& engine, std::string filename, SampleFormat format);

  /// Reads about a second and a half; false when there is no more.
  bool Step();
  void Close();
  /// Of all that was read. Requires: Step was false.
  [[nodiscard]] music::Wave Finish() { return builder_.Finish(); }

 private:
  AudioEngine& engine_;
  const std::string filename_;
  StreamHandle stream_ = 0;
  bool opened_ = false;
  music::WaveBuilder builder_;
  std::vector<std::int16_t> piece_;
};

}  // namespace decks
