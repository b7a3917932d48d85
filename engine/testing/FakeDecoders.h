// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "engine/ports/PcmDecoder.h"
#include "support/Mutex.h"

namespace engine::testing {

/// A file made of a function from frame and channel to sample.
struct FakeFile {
  PcmFormat format;
  std::int64_t frames = 0;
  std::optional<std::int64_t> estimate;
  std::function<std::int16_t(std::int64_t frame, int channel)> sample;
  std::int64_t fails_at = -1;  ///< frame at which reading fails for good; -1 is never
  int read_limit = 1 << 20;    ///< frames a Read gives at most
};

/// Decodes files that exist only here.
/// Threads: files are added before they are opened; Open and Read as the port says.
class FakeDecoders final : public DecoderFactory {
 public:
  void Add(const std::string& path, FakeFile file) { files_[path] = std::move(file); }
  support::Result<std::unique_ptr<PcmDecoder>> Open(const std::string& path, DecoderKind kind) override;

  [[nodiscard]] int Opened() const { return opened_; }
  [[nodiscard]] std::int64_t Reads() const { return reads_; }

 private:
  class Decoder;
  std::map<std::string, FakeFile> files_;
  std::atomic<int> opened_{0};
  std::atomic<std::int64_t> reads_{0};
};

/// Left is the frame modulo 25,000, right the same below zero: a sample tells its frame.
[[nodiscard]] FakeFile RampFile(std::int64_t frames, int sample_rate = 44100);
/// A sine on both channels that swells in over its first 2000 frames and out over the last.
[[nodiscard]] FakeFile ToneFile(std::int64_t frames, double hertz, double level = 0.5,
                                int sample_rate = 44100);

}  // namespace engine::testing
