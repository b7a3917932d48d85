// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "support/Result.h"

namespace engine {

struct EncoderFormat {
  /// AtTheEnd: quickest; a file of that name is replaced. AllAlong: what Flush was called for can be read,
  /// whatever becomes of the program, and a file of that name is refused.
  enum class Readable { AtTheEnd, AllAlong };

  int sample_rate = 44100;
  int channels = 2;
  int bit_rate = 192'000;  ///< in bit/s, where the format has one
  int bits = 16;           ///< 16 or 24, where the format has them
  Readable readable = Readable::AtTheEnd;
  std::string title{};  ///< tags; what is empty is left out
  std::string artist{};
  std::string date{};
};

/// Writes one file from start to end.
/// Threads: one at a time; blocks on the disk.
class Encoder {
 public:
  virtual ~Encoder() = default;
  virtual support::Result<void> Write(std::span<const std::int16_t> interleaved) = 0;
  /// 1 is full scale; dithered where the format has 16 bits.
  virtual support::Result<void> Write(std::span<const float> interleaved) = 0;
  /// Sees to it that all that was written but for the last fifth of a second or so is in the file and that
  /// the file tells its length.
  virtual support::Result<void> Flush() = 0;
  /// What was flushed is there after a power cut too. May take seconds on a slow disk.
  virtual support::Result<void> Sync() = 0;
  /// Completes the file, also after a failure, as far as that can be done. Without it the file is as good as
  /// its last Flush.
  virtual support::Result<void> Finish() = 0;
  /// Of the file so far.
  [[nodiscard]] virtual std::int64_t Bytes() const = 0;
};

class EncoderFactory {
 public:
  virtual ~EncoderFactory() = default;
  /// The format is chosen by the extension: mp3, ogg (Vorbis), opus, flac, wma, wav, m4a.
  virtual support::Result<std::unique_ptr<Encoder>> Open(const std::string& path,
                                                         const EncoderFormat& format) = 0;
  /// Puts right what tells the length of a file that was never finished, and takes off what is not whole at
  /// its end; gives its length in seconds.
  virtual support::Result<double> Repair(const std::string& path) = 0;
};

}  // namespace engine
