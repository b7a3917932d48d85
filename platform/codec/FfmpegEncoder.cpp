// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/FfmpegEncoder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "platform/codec/FlacStream.h"
#include "platform/files/PlainFile.h"

namespace platform::codec {
namespace {

using support::Sentence;

constexpr int kFramesWhereTheCodecTakesAny = 4096;
/// The muxers hold back a page or two: less of it is lost where files are readable all along.
constexpr int kShortPage = 100'000;
constexpr int kUsualPage = 200'000;  ///< a damaged one costs a fifth of a second, not a whole one
constexpr int kOpusRate = 48'000;

AVSampleFormat SampleFormatOf(const AVCodec& codec, int bits) {
  if (codec.id == AV_CODEC_ID_OPUS) return AV_SAMPLE_FMT_FLT;
  if (codec.id == AV_CODEC_ID_FLAC && bits == 24) return AV_SAMPLE_FMT_S32;
  return codec.sample_fmts != nullptr ? codec.sample_fmts[0] : AV_SAMPLE_FMT_S16;
}

void PutTag(AVFormatContext& muxer, const char* name, const std::string& text) {
  if (!text.empty()) av_dict_set(&muxer.metadata, name, text.c_str(), 0);
}

}  // namespace

void FfmpegEncoder::ContextFreer::operator()(AVIOContext* context) const {
  av_freep(&context->buffer);
  avio_context_free(&context);
}

FfmpegEncoder::FfmpegEncoder(std::string path, std::unique_ptr<OutputFile> file)
    : path_(std::move(path)), file_(std::move(file)) {}

FfmpegEncoder::~FfmpegEncoder() = default;

int FfmpegEncoder::WriteBytes(void* self, std::uint8_t* bytes, int count) {
  OutputFile& file = *static_cast<FfmpegEncoder*>(self)->file_;
  return file.Write({bytes, static_cast<std::size_t>(count)}) ? count : AVERROR(file.Reason());
}

std::int64_t FfmpegEncoder::Seek(void* self, std::int64_t offset, int whence) {
  OutputFile& file = *static_cast<FfmpegEncoder*>(self)->file_;
  switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
      return file.Size();
    case SEEK_CUR:
      file.Seek(file.Place() + offset);
      break;
    case SEEK_END:
      file.Seek(file.Size() + offset);
      break;
    default:
      file.Seek(offset);
  }
  return file.Place();
}

support::Error FfmpegEncoder::Failure(Sentence sentence) const {
  return support::Failed(support::ErrorCode::Unavailable, sentence, {files::LastPart(path_)});
}

support::Error FfmpegEncoder::WriteFailure() const {
  return file_->Reason() != 0 ? file_->Failure() : Failure(Sentence::NotEncodable);
}

support::Result<void> FfmpegEncoder::Open(const Recipe& recipe, const engine::EncoderFormat& wanted) {
  const AVCodec* codec = avcodec_find_encoder_by_name(recipe.codec);
  AVFormatContext* muxer = nullptr;
  avformat_alloc_output_context2(&muxer, nullptr, recipe.container, nullptr);
  muxer_.reset(muxer);
  if (codec == nullptr || muxer == nullptr) return Failure(Sentence::FormatNotBuiltIn);
  muxer->flags |= AVFMT_FLAG_BITEXACT;
  if (const auto opened = OpenCodec(*codec, wanted); !opened) return opened;
  if (const auto opened = OpenFile(wanted); !opened) return opened;
  // Windows Media decoders drop two frames at the start, but this encoder leads in with only one.
  if (codec->id != AV_CODEC_ID_WMAV2) return {};
  return Write(std::vector<std::int16_t>(static_cast<std::size_t>(codec_->frame_size * wanted.channels)));
}

support::Result<void> FfmpegEncoder::OpenCodec(const AVCodec& codec, const engine::EncoderFormat& wanted) {
  codec_.reset(avcodec_alloc_context3(&codec));
  if (codec_ == nullptr || packet_ == nullptr) return Failure(Sentence::NoMemoryToWrite);
  source_rate_ = wanted.sample_rate;
  codec_->sample_fmt = SampleFormatOf(codec, wanted.bits);
  if (codec_->sample_fmt == AV_SAMPLE_FMT_S32) codec_->bits_per_raw_sample = 24;
  codec_->sample_rate = codec.id == AV_CODEC_ID_OPUS ? kOpusRate : wanted.sample_rate;
  codec_->bit_rate = wanted.bit_rate;
  codec_->time_base = {1, codec_->sample_rate};
  codec_->flags |= AV_CODEC_FLAG_BITEXACT;
  codec_->strict_std_compliance = FF_COMPLIANCE_NORMAL;
  av_channel_layout_default(&codec_->ch_layout, wanted.channels);
  if ((muxer_->oformat->flags & AVFMT_GLOBALHEADER) != 0) codec_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  if (avcodec_open2(codec_.get(), &codec, nullptr) < 0) return Failure(Sentence::ShapeNotWritable);
  fifo_.reset(av_audio_fifo_alloc(codec_->sample_fmt, wanted.channels, kFramesWhereTheCodecTakesAny));
  if (fifo_ == nullptr) return Failure(Sentence::NoMemoryToWrite);
  return {};
}

support::Result<void> FfmpegEncoder::OpenFile(const engine::EncoderFormat& wanted) {
  constexpr int kBuffer = 1 << 18;  // a packet goes to the disk in one piece, or not at all
  stream_ = avformat_new_stream(muxer_.get(), nullptr);
  auto* buffer = static_cast<std::uint8_t*>(av_malloc(kBuffer));
  if (stream_ == nullptr || buffer == nullptr) return Failure(Sentence::NoMemoryToWrite);
  context_.reset(avio_alloc_context(buffer, kBuffer, 1, this, nullptr, &WriteBytes, &Seek));
  if (context_ == nullptr) return Failure(Sentence::NoMemoryToWrite);
  muxer_->pb = context_.get();
  muxer_->flags |= AVFMT_FLAG_CUSTOM_IO;
  stream_->time_base = codec_->time_base;
  avcodec_parameters_from_context(stream_->codecpar, codec_.get());
  PutTag(*muxer_, "title", wanted.title);
  PutTag(*muxer_, "artist", wanted.artist);
  PutTag(*muxer_, "date", wanted.date);
  const bool all_along = wanted.readable == engine::EncoderFormat::Readable::AllAlong;
  if (all_along) muxer_->flags |= AVFMT_FLAG_FLUSH_PACKETS;
  // Others have no such option.
  av_opt_set_int(muxer_.get(), "page_duration", all_along ? kShortPage : kUsualPage, AV_OPT_SEARCH_CHILDREN);
  return avformat_write_header(muxer_.get(), nullptr) < 0 ? WriteFailure() : support::Result<void>();
}

support::Result<void> FfmpegEncoder::Write(std::span<const std::int16_t> interleaved) {
  const int channels = codec_->ch_layout.nb_channels;
  return Take(interleaved.data(), static_cast<int>(interleaved.size()) / channels, AV_SAMPLE_FMT_S16);
}

support::Result<void> FfmpegEncoder::Write(std::span<const float> interleaved) {
  const int channels = codec_->ch_layout.nb_channels;
  const int frames = static_cast<int>(interleaved.size()) / channels;
  switch (codec_->sample_fmt) {
    case AV_SAMPLE_FMT_S16:
      dithered_.clear();
      for (const float sample : interleaved) dithered_.push_back(dither_.To16(sample));
      return Take(dithered_.data(), frames, AV_SAMPLE_FMT_S16);
    case AV_SAMPLE_FMT_S32:
      whole_.clear();
      for (const float sample : interleaved) whole_.push_back(Dither::To24(sample) * 256);
      return Take(whole_.data(), frames, AV_SAMPLE_FMT_S32);
    default:
      return Take(interleaved.data(), frames, AV_SAMPLE_FMT_FLT);
  }
}

support::Result<void> FfmpegEncoder::Take(const void* samples, int frames, AVSampleFormat format) {
  if (frames == 0) return {};
  if (converter_ == nullptr) {
    converter_ = MakeConverter({format, source_rate_, codec_->ch_layout},
                               {codec_->sample_fmt, codec_->sample_rate, codec_->ch_layout});
  }
  if (converter_ == nullptr) return Failure(Sentence::NoMemoryToWrite);
  return Convert(static_cast<const std::uint8_t*>(samples), frames);
}

support::Result<void> FfmpegEncoder::Convert(const std::uint8_t* samples, int frames) {
  const int channels = codec_->ch_layout.nb_channels;
  const int room = swr_get_out_samples(converter_.get(), frames);
  std::array<std::uint8_t*, AV_NUM_DATA_POINTERS> planes{};
  if (room > 0) {
    if (av_samples_alloc(planes.data(), nullptr, channels, room, codec_->sample_fmt, 0) < 0) {
      return Failure(Sentence::NoMemoryToWrite);
    }
    const std::uint8_t** in = samples == nullptr ? nullptr : &samples;
    const int made = swr_convert(converter_.get(), planes.data(), room, in, frames);
    const int kept = av_audio_fifo_write(fifo_.get(), reinterpret_cast<void**>(planes.data()), made);
    av_freep(planes.data());
    if (made < 0 || kept < made) return Failure(Sentence::NoMemoryToWrite);
  }
  const int step = codec_->frame_size > 0 ? codec_->frame_size : kFramesWhereTheCodecTakesAny;
  while (av_audio_fifo_size(fifo_.get()) >= step) {
    if (const auto sent = EncodeFrom(step); !sent) return sent;
  }
  return {};
}

bool FfmpegEncoder::PutFlacLength() {
  if (codec_->codec_id != AV_CODEC_ID_FLAC) return true;
  const int bits = codec_->sample_fmt == AV_SAMPLE_FMT_S32 ? 24 : 16;
  return file_->WriteAt(kFlacLengthPlace, FlacLength(packed_, bits));
}

support::Result<void> FfmpegEncoder::Flush() {
  avio_flush(muxer_->pb);
  if (!PutFlacLength() || muxer_->pb->error < 0) return WriteFailure();
  return {};
}

support::Result<void> FfmpegEncoder::Sync() {
  return file_->Sync() ? support::Result<void>() : WriteFailure();
}

support::Result<void> FfmpegEncoder::Finish() {
  if (std::exchange(finished_, true)) return {};
  // What was made ready goes onto the disk as far as it can; a full one keeps all that was written before.
  support::Result<void> sent;
  if (!failed_) {
    if (converter_ != nullptr && source_rate_ != codec_->sample_rate) sent = Convert(nullptr, 0);
    const int rest = av_audio_fifo_size(fifo_.get());
    if (sent && rest > 0) sent = EncodeFrom(rest);
    if (sent) sent = SendFrame(nullptr);
  }
  if (failed_) {
    static_cast<void>(PutFlacLength());
    return WriteFailure();
  }
  const bool complete = av_write_trailer(muxer_.get()) >= 0;
  avio_flush(muxer_->pb);
  if (!sent) return sent;
  if (!complete || muxer_->pb->error < 0) return WriteFailure();
  return {};
}

support::Result<void> FfmpegEncoder::EncodeFrom(int frames) {
  const FramePtr frame(av_frame_alloc());
  if (frame == nullptr) return Failure(Sentence::NoMemoryToWrite);
  frame->nb_samples = frames;
  frame->format = codec_->sample_fmt;
  frame->sample_rate = codec_->sample_rate;
  frame->pts = written_;
  if (av_channel_layout_copy(&frame->ch_layout, &codec_->ch_layout) < 0 ||
      av_frame_get_buffer(frame.get(), 0) < 0 ||
      av_audio_fifo_read(fifo_.get(), reinterpret_cast<void**>(frame->extended_data), frames) < frames) {
    return Failure(Sentence::NoMemoryToWrite);
  }
  written_ += frames;
  return SendFrame(frame.get());
}

support::Result<void> FfmpegEncoder::SendFrame(const AVFrame* frame) {
  if (avcodec_send_frame(codec_.get(), frame) < 0) return Failure(Sentence::NotEncodable);
  while (true) {
    const int received = avcodec_receive_packet(codec_.get(), packet_.get());
    if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) return {};
    if (received < 0) return Failure(Sentence::NotEncodable);
    const std::int64_t frames = packet_->duration;
    av_packet_rescale_ts(packet_.get(), codec_->time_base, stream_->time_base);
    packet_->stream_index = stream_->index;
    if (av_interleaved_write_frame(muxer_.get(), packet_.get()) < 0 || file_->Reason() != 0) {
      failed_ = true;
      return WriteFailure();
    }
    packed_ += frames;
  }
}

}  // namespace platform::codec
