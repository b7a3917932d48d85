// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "engine/ports/PcmDecoder.h"
#include "platform/codec/Ffmpeg.h"
#include "platform/codec/InputFile.h"

namespace platform::codec {

/// One file on its way from packets to 16-bit samples.
///
/// The shape of the first decoded frame is the shape of the whole: a stream that changes rate or channels on
/// its way is converted to it. Threads: one at a time; blocks on the disk. Owns: the file and the codec.
class FfmpegDecoder : public engine::PcmDecoder {
 public:
  /// Succeeds only when a first frame could be decoded.
  static support::Result<std::unique_ptr<FfmpegDecoder>> Open(const std::string& path);

  [[nodiscard]] engine::PcmFormat Format() const override;
  [[nodiscard]] std::optional<std::int64_t> EstimatedFrames() const override;
  support::Result<std::int64_t> Read(std::span<std::int16_t> interleaved) override;

  /// Which creator this content belongs to, by what the file holds.
  [[nodiscard]] engine::DecoderKind Kind() const;
  /// It lies in an archive, whose name tells nothing of its kind.
  [[nodiscard]] bool IsPacked() const { return input_->IsPacked(); }
  /// How the user calls this content ("FLAC", "Windows Media"), and the extension that such files have.
  [[nodiscard]] std::string ContentName() const;
  [[nodiscard]] std::string UsualExtension() const;

 private:
  enum class Step { Frame, Skipped, End };

  FfmpegDecoder(std::string path, std::unique_ptr<InputFile> input);
  support::Result<void> OpenContainer();
  support::Result<void> OpenCodec();
  support::Result<void> DecodeFirstFrame();
  [[nodiscard]] support::Error Failure(support::ErrorCode code, support::Sentence sentence,
                                       std::string kind = {}) const;

  /// Brings the next frame into frame_, or says why not.
  Step NextFrame();
  /// Feeds the codec one packet; at the end of the file, its end.
  Step FeedCodec();
  /// Appends frame_ to pending_, converted.
  void ConvertFrame();
  bool PrepareConverter(const SampleShape& shape);
  void AppendConverted(const AVFrame* frame);

  const std::string path_;
  std::unique_ptr<InputFile> input_;  // before format_: the demuxer reads from it until it is closed
  FormatPtr format_;
  CodecPtr codec_;
  PacketPtr packet_{av_packet_alloc()};
  FramePtr frame_{av_frame_alloc()};
  AVStream* stream_ = nullptr;

  SampleShape source_;
  SampleShape target_;
  ConverterPtr converter_;
  std::vector<std::int16_t> pending_;
  std::size_t pending_from_ = 0;
  bool draining_ = false;
  bool ended_ = false;
};

}  // namespace platform::codec
