// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "support/Result.h"

namespace engine {

struct PcmFormat {
  int sample_rate = 44100;  ///< in Hz
  int channels = 2;         ///< 1 to 8, in the order front left, front right, centre, LFE, rear, side
};

/// Reads one file from its start to its end as 16-bit samples of the file's own rate and channels.
/// Threads: one at a time; may block on the disk.
class PcmDecoder {
 public:
  virtual ~PcmDecoder() = default;
  [[nodiscard]] virtual PcmFormat Format() const = 0;
  /// From the header; may be wrong either way, or absent.
  [[nodiscard]] virtual std::optional<std::int64_t> EstimatedFrames() const = 0;
  /// Frames written to the front of the buffer; 0 is the end. Broken parts in the middle are left out; a
  /// failure means that nothing more can be read, what was read before stays good. Requires: the buffer holds
  /// whole frames.
  virtual support::Result<std::int64_t> Read(std::span<std::int16_t> interleaved) = 0;
};

/// Which of the engine's creators asked. Each opens its own kind only: a FLAC or WMA file under another name
/// is refused by the general one, with a sentence that says what it is.
enum class DecoderKind { General, Flac, Wma };

/// Threads: any; blocks on the disk.
class DecoderFactory {
 public:
  virtual ~DecoderFactory() = default;
  /// The error's text is one sentence for the user that names what is wrong with the file.
  virtual support::Result<std::unique_ptr<PcmDecoder>> Open(const std::string& path, DecoderKind kind) = 0;
};

}  // namespace engine
