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
  int sample_rate = 44100;
  int channels = 2;
  int bit_rate = 192'000;  ///< in bit/s, where the format has one
};

/// Writes one file from start to end.
/// Threads: one at a time; blocks on the disk.
class Encoder {
 public:
  virtual ~Encoder() = default;
  virtual support::Result<void> Write(std::span<const std::int16_t> interleaved) = 0;
  /// Completes the file. Without it the file is incomplete.
  virtual support::Result<void> Finish() = 0;
};

class EncoderFactory {
 public:
  virtual ~EncoderFactory() = default;
  /// The format is chosen by the extension: mp3, ogg, flac, wma, wav, m4a.
  virtual support::Result<std::unique_ptr<Encoder>> Open(const std::string& path,
                                                         const EncoderFormat& format) = 0;
};

}  // namespace engine
