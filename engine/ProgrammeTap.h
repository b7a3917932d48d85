// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>

#include "engine/StereoRing.h"

namespace engine {

/// The newest seconds of what leaves the limiter of a pair of speakers, for whoever takes all of it: a
/// recording.
///
/// Law: the writer does nothing while nobody reads. Threads: Write in the callback; any readers, each with a
/// place of its own.
class ProgrammeTap {
 public:
  /// 11.9 s at 44.1 kHz: as long as a slow stick may keep a reader.
  static constexpr std::int64_t kFrames = 1 << 19;

  [[nodiscard]] bool IsRead() const noexcept { return readers_.load(std::memory_order_relaxed) > 0; }
  /// frame: engine frame of the first one; each call begins at or behind the end of the last.
  void Write(std::int64_t frame, std::span<const float> stereo) noexcept { ring_.Write(frame, stereo); }

 private:
  friend class ProgrammeReader;

  StereoRing ring_{kFrames};
  std::atomic<int> readers_{0};
};

/// A place in a programme, which begins at the first frame that is written after it was made.
/// Threads: one at a time.
class ProgrammeReader {
 public:
  ProgrammeReader(std::shared_ptr<ProgrammeTap> tap, int sample_rate);
  ~ProgrammeReader();
  ProgrammeReader(const ProgrammeReader&) = delete;
  ProgrammeReader& operator=(const ProgrammeReader&) = delete;

  struct Taken {
    std::int64_t first = 0;  ///< engine frame
    std::size_t frames = 0;
    std::int64_t lost = 0;  ///< frames before the first one that came too fast
  };
  /// The next frames that are there and lie before `end`, as many as fit.
  Taken Read(std::span<float> stereo, std::int64_t end = std::numeric_limits<std::int64_t>::max()) noexcept;
  /// The end of what was written so far.
  [[nodiscard]] std::int64_t Written() const noexcept { return tap_->ring_.End(); }
  [[nodiscard]] int SampleRate() const noexcept { return sample_rate_; }

 private:
  void SkipTo(std::int64_t frame, Taken& taken) noexcept;

  const std::shared_ptr<ProgrammeTap> tap_;  // with the core, which may go first
  const int sample_rate_;
  std::int64_t next_;
  bool begun_ = false;
};

}  // namespace engine
