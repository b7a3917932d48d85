// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>

namespace engine {

/// The newest seconds of what leaves the limiter of a pair of speakers, for whoever takes all of it: a
/// recording, head-phones on another card.
///
/// Law: the writer never waits and overwrites the oldest; it does nothing while nobody reads. (Frames are
/// relaxed atomics between two announcements of the writer's place, as in SampleTap.) Threads: Write in the
/// callback; any readers, each with a place of its own.
class ProgrammeTap {
 public:
  /// 11.9 s at 44.1 kHz: as long as a slow stick may keep a reader.
  static constexpr std::int64_t kFrames = 1 << 19;

  ProgrammeTap();
  [[nodiscard]] bool IsRead() const noexcept { return readers_.load(std::memory_order_relaxed) > 0; }
  /// frame: engine frame of the first one; each call begins at or behind the end of the last.
  void Write(std::int64_t frame, std::span<const float> stereo) noexcept;

 private:
  friend class ProgrammeReader;

  const std::unique_ptr<std::atomic<std::uint64_t>[]> frames_;  ///< left and right in one word
  std::atomic<int> readers_{0};
  std::atomic<std::int64_t> begin_{0};  ///< of the unbroken run that ends at end_
  std::atomic<std::int64_t> end_{0};
  std::atomic<std::int64_t> announced_{0};  ///< the end of what is being written
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
  [[nodiscard]] std::int64_t Written() const noexcept { return tap_->end_.load(std::memory_order_acquire); }
  [[nodiscard]] int SampleRate() const noexcept { return sample_rate_; }

 private:
  void SkipTo(std::int64_t frame, Taken& taken) noexcept;

  const std::shared_ptr<ProgrammeTap> tap_;  // with the core, which may go first
  const int sample_rate_;
  std::int64_t next_;
  bool begun_ = false;
};

}  // namespace engine
