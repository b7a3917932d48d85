// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/ports/PcmDecoder.h"
#include "engine/ports/SampleMemory.h"
#include "support/Mutex.h"
#include "support/Result.h"

namespace engine {

/// One file's sound as 16-bit samples of its own rate and channels, decoded once from start to end.
///
/// Every stream of the file reads the same store; a frame's number is its place, so each seek is exact
/// whatever the format. Threads: reading from any thread without waiting; decoding from any thread that may
/// block, one at a time, the others wait for it. Law: frames below Ready() never change or move.
class PcmStore {
 public:
  static constexpr std::int64_t kChunkFrames = 65536;

  /// Opens the file and reads its header, no sound yet. memory may be null.
  static support::Result<std::shared_ptr<PcmStore>> Open(const std::string& path, DecoderKind kind,
                                                         DecoderFactory& decoders, SampleMemory* memory);

  /// How much of a file is kept on the heap; what comes behind goes to the SampleMemory.
  [[nodiscard]] static std::int64_t FramesInMemory(const PcmFormat& format);

  [[nodiscard]] PcmFormat Format() const noexcept { return format_; }
  [[nodiscard]] std::int64_t Ready() const noexcept { return ready_.load(std::memory_order_acquire); }
  /// Nothing comes after Ready(): the end, or the place where the file could be read no further.
  [[nodiscard]] bool Complete() const noexcept { return complete_.load(std::memory_order_acquire); }
  /// Complete because it could be read no further, or there was no room for more.
  [[nodiscard]] bool CutShort() const noexcept { return cut_short_.load(std::memory_order_acquire); }
  /// In frames; exact when Complete(), else what the header says.
  [[nodiscard]] std::int64_t Length() const noexcept;
  /// Why decoding stopped before the end of the file.
  [[nodiscard]] std::optional<support::Error> Failure() const DJ_EXCLUDES(mutex_);

  /// Copies interleaved samples from a frame on and returns the frames copied: fewer than there is room for
  /// at the end of what is ready. Requires: first >= 0.
  std::int64_t Read(std::int64_t first, std::span<std::int16_t> interleaved) const noexcept;

  /// Returns when that many frames are ready or the store is complete.
  void DecodeUpTo(std::int64_t frames) DJ_EXCLUDES(mutex_);

  /// True when the frame lies in memory that the system may have paged out.
  [[nodiscard]] bool IsPaged(std::int64_t frame) const noexcept;
  /// Brings the chunk of that frame back into memory; may block.
  void Warm(std::int64_t frame);

  /// The first caller gets true and sees to it that the store is decoded to its end.
  [[nodiscard]] bool ClaimDecoding() noexcept { return !claimed_.exchange(true); }

 private:
  struct Chunk {
    std::int16_t* samples = nullptr;
    SampleBlock* paged = nullptr;
  };
  static constexpr std::int64_t kLeafChunks = 256;
  static constexpr std::int64_t kLeaves = 1024;
  static constexpr std::int64_t kStepFrames = 8192;
  using Leaf = std::array<Chunk, kLeafChunks>;

  PcmStore(std::unique_ptr<PcmDecoder> decoder, SampleMemory* memory);
  [[nodiscard]] const Chunk& ChunkOf(std::int64_t frame) const noexcept;
  /// Only the one thread that set decoding_ runs these three.
  void DecodeStep();
  [[nodiscard]] bool AddChunk(std::int64_t frame);
  void Finish(std::optional<support::Error> error) DJ_EXCLUDES(mutex_);

  const std::unique_ptr<PcmDecoder> decoder_;
  SampleMemory* const memory_;
  const PcmFormat format_;
  std::int64_t estimate_ = 0;
  std::array<std::unique_ptr<Leaf>, kLeaves> leaves_;
  std::vector<std::unique_ptr<std::int16_t[]>> heap_;
  std::vector<std::unique_ptr<SampleBlock>> paged_;
  std::atomic<std::int64_t> ready_{0};
  std::atomic<bool> complete_{false};
  std::atomic<bool> cut_short_{false};
  std::atomic<bool> claimed_{false};
  mutable support::Mutex mutex_;
  std::condition_variable stepped_;
  bool decoding_ DJ_GUARDED_BY(mutex_) = false;
  std::optional<support::Error> failure_ DJ_GUARDED_BY(mutex_);
};

}  // namespace engine
