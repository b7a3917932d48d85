// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/ports/Encoder.h"
#include "platform/codec/Dither.h"
#include "platform/codec/OutputFile.h"

namespace platform::codec {

/// What stands before the samples of a WAV file, tags included, with room for the sizes of a file beyond
/// 4 GiB: a chunk of junk that becomes RF64's (EBU Tech 3306).
[[nodiscard]] std::vector<std::uint8_t> WavHead(const engine::EncoderFormat& format, std::int64_t data_bytes);
/// Where the samples begin in a head that WavHead made, or 0 when it is none of those.
[[nodiscard]] std::size_t WavDataPlace(std::span<const std::uint8_t> head);
/// Makes such a head tell another number of bytes.
void PutWavSizes(std::span<std::uint8_t> head, std::int64_t data_bytes);

/// Writes mono and stereo WAV files of 16 or 24 bits that are whole after every Flush.
class WavEncoder final : public engine::Encoder {
 public:
  WavEncoder(std::unique_ptr<OutputFile> file, const engine::EncoderFormat& format);
  /// Puts the head down.
  support::Result<void> Begin();

  support::Result<void> Write(std::span<const std::int16_t> interleaved) override;
  support::Result<void> Write(std::span<const float> interleaved) override;
  support::Result<void> Flush() override;
  support::Result<void> Sync() override;
  support::Result<void> Finish() override;
  [[nodiscard]] std::int64_t Bytes() const override { return file_->Size(); }

 private:
  void Put(std::int32_t sample);
  support::Result<void> WriteBytes();
  [[nodiscard]] support::Result<void> Told(bool done) const {
    return done ? support::Result<void>() : file_->Failure();
  }

  const std::unique_ptr<OutputFile> file_;
  const int bits_;
  std::vector<std::uint8_t> head_;
  std::vector<std::uint8_t> bytes_;
  std::int64_t data_ = 0;
  Dither dither_;
};

}  // namespace platform::codec
