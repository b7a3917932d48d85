// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/audio_fifo.h>
#include <libavutil/log.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

#include <memory>

namespace platform::codec {

struct FormatCloser {
  void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
struct CodecFreer {
  void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
struct PacketFreer {
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct FrameFreer {
  void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct ConverterFreer {
  void operator()(SwrContext* converter) const { swr_free(&converter); }
};
struct FifoFreer {
  void operator()(AVAudioFifo* fifo) const { av_audio_fifo_free(fifo); }
};

using FormatPtr = std::unique_ptr<AVFormatContext, FormatCloser>;
using CodecPtr = std::unique_ptr<AVCodecContext, CodecFreer>;
using PacketPtr = std::unique_ptr<AVPacket, PacketFreer>;
using FramePtr = std::unique_ptr<AVFrame, FrameFreer>;
using ConverterPtr = std::unique_ptr<SwrContext, ConverterFreer>;
using FifoPtr = std::unique_ptr<AVAudioFifo, FifoFreer>;

/// One shape of samples: what a frame has, or what a consumer wants.
struct SampleShape {
  AVSampleFormat format = AV_SAMPLE_FMT_NONE;
  int rate = 0;
  AVChannelLayout layout{};
};

/// Null when the library knows no way from one shape to the other.
[[nodiscard]] ConverterPtr MakeConverter(const SampleShape& from, const SampleShape& to);

/// The libraries write nothing to the terminal from here on.
void SilenceLibraries();

}  // namespace platform::codec
