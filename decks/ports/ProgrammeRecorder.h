// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "support/Result.h"

namespace decks {

/// A file that is recorded to. Its extension chooses the format: wav, flac, ogg (Vorbis), opus, mp3.
struct RecordingFile {
  std::string path;
  std::string title{};  ///< tags at its head; what is empty is left out
  std::string artist{};
  std::string date{};
};

struct RecordingWish {
  RecordingFile file;
  int device = 1;
  std::uint32_t speaker = 0;  ///< a flag of the pair, or 0
  int bits = 16;              ///< 16 or 24, where the format has them
  int bit_rate = 192'000;     ///< where the format has one
};

/// How a recording stands. After it has ended it tells of the last one.
struct RecordingProgress {
  std::uint64_t number = 0;  ///< of the Start that this is the recording of; 0: there was none
  bool recording = false;
  std::string path{};  ///< of the file that is written now: another one where the disk takes none so large
  std::chrono::microseconds file_begins{0};  ///< its place in the recording
  std::chrono::microseconds length{0};       ///< of all its files
  /// The place in the recording of what is at the loudspeaker now.
  std::chrono::microseconds heard{0};
  std::int64_t bytes = 0;  ///< of all its files
  float left_peak = 0;     ///< of the newest moment, 1 is full scale
  float right_peak = 0;
  std::chrono::microseconds lost{0};           ///< silent, because the disk was too slow
  std::optional<std::chrono::seconds> room{};  ///< until it stops because of the disk; empty: not known
  std::optional<support::Error> failure{};     ///< why it ended, unless Stop was called
};

/// Records what leaves the limiter of an output, limited to 1 dB below full scale, whatever becomes of the
/// output.
///
/// A fall of the program loses less than the last second. Threads: the conductor, which never waits for the
/// disk; Repair and FreeBytes by workers; End by whoever ends the program.
class ProgrammeRecorder {
 public:
  virtual ~ProgrammeRecorder() = default;
  /// Ends what is recorded, then begins a file, which must not be there yet. Gives its number.
  virtual std::uint64_t Start(const RecordingWish& wish) = 0;
  /// From that place on it goes into another file: at once where the place is written already. Nothing is
  /// lost and nothing doubled.
  virtual void Cut(std::chrono::microseconds place, const RecordingFile& next) = 0;
  /// Goes on with what plays on another device, in the same file, where its sample rate is the same.
  virtual void Follow(int device, std::uint32_t speaker) = 0;
  virtual void Stop() = 0;
  /// Stops, and waits until the file is complete, but no longer than that: false when the disk holds it.
  [[nodiscard]] virtual bool End(std::chrono::milliseconds patience) = 0;
  [[nodiscard]] virtual RecordingProgress Progress() = 0;
  /// Puts right a file that was never finished; gives its length.
  virtual support::Result<std::chrono::seconds> Repair(const std::string& path) = 0;
  /// What may still be recorded on the disk of a file or folder, which need not be there; nothing when the
  /// system does not tell.
  [[nodiscard]] virtual std::optional<std::int64_t> FreeBytes(const std::string& path) = 0;
};

}  // namespace decks
