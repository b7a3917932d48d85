// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/ports/Encoder.h"
#include "platform/codec/Dither.h"
#include "platform/codec/Ffmpeg.h"
#include "platform/codec/OutputFile.h"
#include "support/Sentences.h"

namespace platform::codec {

/// How files of one extension are written.
struct Recipe {
  std::string_view extension;  ///< upper case
  const char* container;
  const char* codec;
};

/// One file on its way from samples to packets. See engine::Encoder.
class FfmpegEncoder final : public engine::Encoder {
 public:
  FfmpegEncoder(std::string path, std::unique_ptr<OutputFile> file);
  ~FfmpegEncoder() override;

  support::Result<void> Open(const Recipe& recipe, const engine::EncoderFormat& wanted);
  support::Result<void> Write(std::span<const std::int16_t> interleaved) override;
  support::Result<void> Write(std::span<const float> interleaved) override;
  support::Result<void> Flush() override;
  support::Result<void> Sync() override;
  support::Result<void> Finish() override;
  [[nodiscard]] std::int64_t Bytes() const override { return file_->Size(); }

 private:
  struct MuxerFreer {
    void operator()(AVFormatContext* context) const { avformat_free_context(context); }
  };
  struct ContextFreer {
    void operator()(AVIOContext* context) const;
  };

  static int WriteBytes(void* self, std::uint8_t* bytes, int count);
  static std::int64_t Seek(void* self, std::int64_t offset, int whence);

  [[nodiscard]] support::Error Failure(support::Sentence sentence) const;
  /// Of the file where that has failed.
  [[nodiscard]] support::Error WriteFailure() const;
  support::Result<void> OpenCodec(const AVCodec& codec, const engine::EncoderFormat& wanted);
  support::Result<void> OpenFile(const engine::EncoderFormat& wanted);
  /// samples: of one interleaved format, every call of the same.
  support::Result<void> Take(const void* samples, int frames, AVSampleFormat format);
  support::Result<void> Convert(const std::uint8_t* samples, int frames);
  support::Result<void> EncodeFrom(int frames);
  support::Result<void> SendFrame(const AVFrame* frame);
  [[nodiscard]] bool PutFlacLength();

  const std::string path_;
  const std::unique_ptr<OutputFile> file_;
  std::unique_ptr<AVIOContext, ContextFreer> context_;
  std::unique_ptr<AVFormatContext, MuxerFreer> muxer_;
  CodecPtr codec_;
  ConverterPtr converter_;
  FifoPtr fifo_;
  PacketPtr packet_{av_packet_alloc()};
  AVStream* stream_ = nullptr;
  int source_rate_ = 0;
  std::int64_t written_ = 0;  ///< frames that the codec was given
  std::int64_t packed_ = 0;   ///< frames in the packets of the file
  Dither dither_;
  std::vector<std::int32_t> whole_;
  std::vector<std::int16_t> dithered_;
  bool failed_ = false;
  bool finished_ = false;
};

}  // namespace platform::codec
