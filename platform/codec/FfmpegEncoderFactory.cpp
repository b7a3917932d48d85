// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/FfmpegEncoderFactory.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/codec/Ffmpeg.h"
#include "platform/files/PlainFile.h"

namespace platform::codec {
namespace {

struct Recipe {
  std::string_view extension;
  const char* container;
  const char* codec;
};

constexpr std::array<Recipe, 6> kRecipes{{{"MP3", "mp3", "libmp3lame"},
                                          {"OGG", "ogg", "libvorbis"},
                                          {"FLAC", "flac", "flac"},
                                          {"WMA", "asf", "wmav2"},
                                          {"WAV", "wav", "pcm_s16le"},
                                          {"M4A", "ipod", "aac"}}};

constexpr int kFramesWhereTheCodecTakesAny = 4096;

struct MuxerCloser {
  void operator()(AVFormatContext* context) const {
    if (context->pb != nullptr) avio_closep(&context->pb);
    avformat_free_context(context);
  }
};
using MuxerPtr = std::unique_ptr<AVFormatContext, MuxerCloser>;

class FfmpegEncoder : public engine::Encoder {
 public:
  explicit FfmpegEncoder(const std::string& path) : path_(path) {}

  support::Result<void> Open(const Recipe& recipe, const engine::EncoderFormat& wanted);
  support::Result<void> Write(std::span<const std::int16_t> interleaved) override;
  support::Result<void> Finish() override;

 private:
  [[nodiscard]] support::Error Failure(const std::string& rest) const {
    return {support::ErrorCode::Unavailable, files::LastPart(path_) + rest};
  }
  support::Result<void> OpenCodec(const AVCodec& codec, const engine::EncoderFormat& wanted);
  support::Result<void> OpenFile();
  support::Result<void> EncodeFrom(int frames);
  support::Result<void> SendFrame(const AVFrame* frame);

  const std::string path_;
  MuxerPtr muxer_;
  CodecPtr codec_;
  ConverterPtr converter_;
  FifoPtr fifo_;
  PacketPtr packet_{av_packet_alloc()};
  AVStream* stream_ = nullptr;
  std::int64_t written_ = 0;
  bool finished_ = false;
};

support::Result<void> FfmpegEncoder::Open(const Recipe& recipe, const engine::EncoderFormat& wanted) {
  const AVCodec* codec = avcodec_find_encoder_by_name(recipe.codec);
  AVFormatContext* muxer = nullptr;
  avformat_alloc_output_context2(&muxer, nullptr, recipe.container, nullptr);
  muxer_.reset(muxer);
  if (codec == nullptr || muxer == nullptr) return Failure(" cannot be written: its format is not built in.");
  muxer->flags |= AVFMT_FLAG_BITEXACT;
  if (const auto opened = OpenCodec(*codec, wanted); !opened) return opened;
  if (const auto opened = OpenFile(); !opened) return opened;
  // Windows Media decoders drop two frames at the start, but this encoder leads in with only one.
  if (codec->id != AV_CODEC_ID_WMAV2) return {};
  return Write(std::vector<std::int16_t>(static_cast<std::size_t>(codec_->frame_size * wanted.channels)));
}

support::Result<void> FfmpegEncoder::OpenCodec(const AVCodec& codec, const engine::EncoderFormat& wanted) {
  codec_.reset(avcodec_alloc_context3(&codec));
  if (codec_ == nullptr || packet_ == nullptr) return Failure(" cannot be written: there is no memory left.");
  codec_->sample_fmt = codec.sample_fmts != nullptr ? codec.sample_fmts[0] : AV_SAMPLE_FMT_S16;
  codec_->sample_rate = wanted.sample_rate;
  codec_->bit_rate = wanted.bit_rate;
  codec_->time_base = {1, wanted.sample_rate};
  codec_->flags |= AV_CODEC_FLAG_BITEXACT;
  codec_->strict_std_compliance = FF_COMPLIANCE_NORMAL;
  av_channel_layout_default(&codec_->ch_layout, wanted.channels);
  if ((muxer_->oformat->flags & AVFMT_GLOBALHEADER) != 0) codec_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  if (avcodec_open2(codec_.get(), &codec, nullptr) < 0) {
    return Failure(" cannot be written with this sample rate and number of channels.");
  }
  converter_ = MakeConverter({AV_SAMPLE_FMT_S16, wanted.sample_rate, codec_->ch_layout},
                             {codec_->sample_fmt, wanted.sample_rate, codec_->ch_layout});
  fifo_.reset(av_audio_fifo_alloc(codec_->sample_fmt, wanted.channels, kFramesWhereTheCodecTakesAny));
  if (converter_ == nullptr || fifo_ == nullptr) return Failure(" cannot be written: no memory is left.");
  return {};
}

support::Result<void> FfmpegEncoder::OpenFile() {
  stream_ = avformat_new_stream(muxer_.get(), nullptr);
  if (stream_ == nullptr) return Failure(" cannot be written: there is no memory left.");
  stream_->time_base = codec_->time_base;
  avcodec_parameters_from_context(stream_->codecpar, codec_.get());
  // The prefix keeps a name with a colon a name.
  if (avio_open(&muxer_->pb, ("file:" + path_).c_str(), AVIO_FLAG_WRITE) < 0) {
    return Failure(" cannot be created: the folder is missing or may not be written to.");
  }
  // Short Ogg pages: a damaged one costs a fifth of a second, not a whole one. Others have no such option.
  av_opt_set_int(muxer_.get(), "page_duration", 200'000, AV_OPT_SEARCH_CHILDREN);
  if (avformat_write_header(muxer_.get(), nullptr) < 0) return Failure(" cannot be written.");
  return {};
}

support::Result<void> FfmpegEncoder::Write(std::span<const std::int16_t> interleaved) {
  const int channels = codec_->ch_layout.nb_channels;
  const int frames = static_cast<int>(interleaved.size()) / channels;
  std::array<std::uint8_t*, AV_NUM_DATA_POINTERS> planes{};
  if (frames == 0) return {};
  if (av_samples_alloc(planes.data(), nullptr, channels, frames, codec_->sample_fmt, 0) < 0) {
    return Failure(" cannot be written: there is no memory left.");
  }
  const auto* in = reinterpret_cast<const std::uint8_t*>(interleaved.data());
  const int made = swr_convert(converter_.get(), planes.data(), frames, &in, frames);
  const int kept = av_audio_fifo_write(fifo_.get(), reinterpret_cast<void**>(planes.data()), made);
  av_freep(planes.data());
  if (kept < frames) return Failure(" cannot be written: there is no memory left.");
  const int step = codec_->frame_size > 0 ? codec_->frame_size : kFramesWhereTheCodecTakesAny;
  while (av_audio_fifo_size(fifo_.get()) >= step) {
    if (const auto sent = EncodeFrom(step); !sent) return sent;
  }
  return {};
}

support::Result<void> FfmpegEncoder::Finish() {
  if (finished_) return {};
  finished_ = true;
  if (const int rest = av_audio_fifo_size(fifo_.get()); rest > 0) {
    if (const auto sent = EncodeFrom(rest); !sent) return sent;
  }
  if (const auto sent = SendFrame(nullptr); !sent) return sent;
  const bool complete = av_write_trailer(muxer_.get()) >= 0;
  const bool closed = avio_closep(&muxer_->pb) >= 0;
  if (!complete || !closed) return Failure(" could not be completed: the disk is full or does not answer.");
  return {};
}

support::Result<void> FfmpegEncoder::EncodeFrom(int frames) {
  const FramePtr frame(av_frame_alloc());
  if (frame == nullptr) return Failure(" cannot be written: there is no memory left.");
  frame->nb_samples = frames;
  frame->format = codec_->sample_fmt;
  frame->sample_rate = codec_->sample_rate;
  frame->pts = written_;
  if (av_channel_layout_copy(&frame->ch_layout, &codec_->ch_layout) < 0 ||
      av_frame_get_buffer(frame.get(), 0) < 0 ||
      av_audio_fifo_read(fifo_.get(), reinterpret_cast<void**>(frame->extended_data), frames) < frames) {
    return Failure(" cannot be written: there is no memory left.");
  }
  written_ += frames;
  return SendFrame(frame.get());
}

support::Result<void> FfmpegEncoder::SendFrame(const AVFrame* frame) {
  if (avcodec_send_frame(codec_.get(), frame) < 0) return Failure(" cannot be encoded.");
  while (true) {
    const int received = avcodec_receive_packet(codec_.get(), packet_.get());
    if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) return {};
    if (received < 0) return Failure(" cannot be encoded.");
    av_packet_rescale_ts(packet_.get(), codec_->time_base, stream_->time_base);
    packet_->stream_index = stream_->index;
    if (av_interleaved_write_frame(muxer_.get(), packet_.get()) < 0) {
      return Failure(" cannot be written: the disk is full or does not answer.");
    }
  }
}

}  // namespace

FfmpegEncoderFactory::FfmpegEncoderFactory() {
  SilenceLibraries();
}

support::Result<std::unique_ptr<engine::Encoder>> FfmpegEncoderFactory::Open(
    const std::string& path, const engine::EncoderFormat& format) {
  const std::string extension = files::ExtensionOf(path);
  const auto recipe = std::find_if(kRecipes.begin(), kRecipes.end(),
                                   [&](const Recipe& r) { return r.extension == extension; });
  if (recipe == kRecipes.end()) {
    return support::Error{
        support::ErrorCode::Unsupported,
        files::LastPart(path) + " cannot be written: its ending names no format known here."};
  }
  if (format.channels < 1 || format.channels > 8 || format.sample_rate < 1) {
    return support::Error{support::ErrorCode::Unsupported,
                          files::LastPart(path) + " cannot be written: 1 to 8 channels are possible."};
  }
  auto encoder = std::make_unique<FfmpegEncoder>(path);
  if (const auto opened = encoder->Open(*recipe, format); !opened) return opened.Failure();
  return std::unique_ptr<engine::Encoder>(std::move(encoder));
}

}  // namespace platform::codec
