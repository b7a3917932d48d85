// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/FfmpegDecoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <new>

#include "support/Sentences.h"
#include "support/Text.h"

namespace platform::codec {
namespace {

constexpr int kMostChannels = 8;
constexpr int kLowestRate = 1000, kHighestRate = 768'000;
constexpr int kFutileStepsBeforeFirstFrame = 4000;
constexpr int kFutileReadsInARow = 1000;
constexpr std::int64_t kLongestEstimateSeconds = 100 * 3600;

/// Containers that carry nothing but their own sound. Lists and streams that point to other files are not
/// among them.
constexpr const char* kContainers =
    "mp3,ogg,flac,asf,wav,w64,mov,aac,aiff,au,caf,matroska,ape,wv,tta,mpc,mpc8,ac3,eac3,amr";

template <typename Float>
void SilenceNonNumbers(Float* samples, int count) {
  for (int i = 0; i < count; ++i) {
    if (!std::isfinite(samples[i])) samples[i] = 0;
  }
}

template <typename Float>
void SilenceNonNumbers(AVFrame& frame) {
  const bool planar = av_sample_fmt_is_planar(static_cast<AVSampleFormat>(frame.format)) != 0;
  const int planes = planar ? frame.ch_layout.nb_channels : 1;
  const int samples = frame.nb_samples * (planar ? 1 : frame.ch_layout.nb_channels);
  for (int plane = 0; plane < planes; ++plane) {
    SilenceNonNumbers(reinterpret_cast<Float*>(frame.extended_data[plane]), samples);
  }
}

void SilenceNonNumbersIn(AVFrame& frame) {
  const AVSampleFormat packed = av_get_packed_sample_fmt(static_cast<AVSampleFormat>(frame.format));
  if (packed != AV_SAMPLE_FMT_FLT && packed != AV_SAMPLE_FMT_DBL) return;
  if (av_frame_make_writable(&frame) < 0) return;
  if (packed == AV_SAMPLE_FMT_FLT) {
    SilenceNonNumbers<float>(frame);
  } else {
    SilenceNonNumbers<double>(frame);
  }
}

SampleShape ShapeOf(const AVFrame& frame) {
  SampleShape shape{static_cast<AVSampleFormat>(frame.format), frame.sample_rate, {}};
  if (frame.ch_layout.order == AV_CHANNEL_ORDER_NATIVE) {
    av_channel_layout_from_mask(&shape.layout, frame.ch_layout.u.mask);
  } else {
    av_channel_layout_default(&shape.layout, frame.ch_layout.nb_channels);
  }
  return shape;
}

bool SameShape(const SampleShape& a, const SampleShape& b) {
  return a.format == b.format && a.rate == b.rate && av_channel_layout_compare(&a.layout, &b.layout) == 0;
}

/// A name for the recognition of content that has no clear mark of its own; the library opens nothing by it.
/// Any other ending would only mislead: sound named as a picture is sound.
std::string RecognitionHint(std::string_view path) {
  const std::string extension = files::ExtensionOf(path);
  const bool unmarked = extension == "MP3" || extension == "AAC" || extension == "AC3";
  return unmarked ? "sound." + extension : "";
}

bool IsPlayable(const AVFrame& frame) {
  return frame.ch_layout.nb_channels >= 1 && frame.ch_layout.nb_channels <= kMostChannels &&
         frame.sample_rate >= kLowestRate && frame.sample_rate <= kHighestRate;
}

}  // namespace

support::Result<std::unique_ptr<FfmpegDecoder>> FfmpegDecoder::Open(const std::string& path) {
  auto input = InputFile::Open(path);
  if (!input) return input.Failure();
  std::unique_ptr<FfmpegDecoder> decoder(new FfmpegDecoder(path, std::move(input).Value()));
  for (const auto step :
       {&FfmpegDecoder::OpenContainer, &FfmpegDecoder::OpenCodec, &FfmpegDecoder::DecodeFirstFrame}) {
    if (const auto done = (*decoder.*step)(); !done) return done.Failure();
  }
  return decoder;
}

FfmpegDecoder::FfmpegDecoder(std::string path, std::unique_ptr<InputFile> input)
    : path_(std::move(path)), input_(std::move(input)) {}

support::Error FfmpegDecoder::Failure(support::ErrorCode code, support::Sentence sentence,
                                      std::string kind) const {
  return support::Failed(code, sentence, {files::LastPart(path_), std::move(kind)});
}

support::Result<void> FfmpegDecoder::OpenContainer() {
  using support::ErrorCode;
  AVFormatContext* context = avformat_alloc_context();
  if (context == nullptr || packet_ == nullptr || frame_ == nullptr) {
    return Failure(ErrorCode::Unavailable, support::Sentence::NoMemoryToOpen);
  }
  context->pb = input_->Context();
  context->format_whitelist = av_strdup(kContainers);
  context->protocol_whitelist = av_strdup("none");  // nothing that a file names is ever opened
  const std::string hint = RecognitionHint(input_->Name());
  const int opened = avformat_open_input(&context, hint.c_str(), nullptr, nullptr);
  format_.reset(context);  // null again when opening failed
  if (opened < 0 || avformat_find_stream_info(context, nullptr) < 0) {
    if (input_->Failed()) return Failure(ErrorCode::Unreadable, support::Sentence::DiskDoesNotAnswer);
    return Failure(ErrorCode::Malformed, support::Sentence::NotAudioOrDamaged);
  }
  const int best = av_find_best_stream(context, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
  if (best < 0) return Failure(ErrorCode::Malformed, support::Sentence::HoldsNoSound);
  for (unsigned i = 0; i < context->nb_streams; ++i) context->streams[i]->discard = AVDISCARD_ALL;
  stream_ = context->streams[best];
  stream_->discard = AVDISCARD_DEFAULT;
  return {};
}

support::Result<void> FfmpegDecoder::OpenCodec() {
  using support::ErrorCode;
  const AVCodec* decoder = avcodec_find_decoder(stream_->codecpar->codec_id);
  if (decoder == nullptr) {
    return Failure(ErrorCode::Unsupported, support::Sentence::UnknownSound,
                   avcodec_get_name(stream_->codecpar->codec_id));
  }
  codec_.reset(avcodec_alloc_context3(decoder));
  if (codec_ == nullptr || avcodec_parameters_to_context(codec_.get(), stream_->codecpar) < 0) {
    return Failure(ErrorCode::Unavailable, support::Sentence::NoMemoryToOpen);
  }
  codec_->pkt_timebase = stream_->time_base;
  codec_->thread_count = 1;
  if (avcodec_open2(codec_.get(), decoder, nullptr) < 0) {
    return Failure(ErrorCode::Malformed, support::Sentence::HeaderDamaged);
  }
  return {};
}

support::Result<void> FfmpegDecoder::DecodeFirstFrame() {
  using support::ErrorCode;
  Step step = Step::Skipped;
  for (int tries = 0; step == Step::Skipped && tries < kFutileStepsBeforeFirstFrame; ++tries) {
    step = NextFrame();
  }
  if (step != Step::Frame) {
    return Failure(ErrorCode::Malformed, support::Sentence::NotAudioOrDamaged);
  }
  if (frame_->ch_layout.nb_channels > kMostChannels) {
    return Failure(ErrorCode::Unsupported, support::Sentence::TooManyChannels);
  }
  if (!IsPlayable(*frame_)) {
    return Failure(ErrorCode::Unsupported, support::Sentence::UnplayableRate);
  }
  target_ = ShapeOf(*frame_);
  target_.format = AV_SAMPLE_FMT_S16;
  ConvertFrame();
  return {};
}

engine::PcmFormat FfmpegDecoder::Format() const {
  return {target_.rate, target_.layout.nb_channels};
}

std::optional<std::int64_t> FfmpegDecoder::EstimatedFrames() const {
  std::int64_t frames = 0;
  if (stream_->duration > 0) {
    frames = av_rescale_q(stream_->duration, stream_->time_base, AVRational{1, target_.rate});
  } else if (format_->duration > 0) {
    frames = av_rescale_q(format_->duration, AVRational{1, AV_TIME_BASE}, AVRational{1, target_.rate});
  }
  if (frames <= 0 || frames / target_.rate > kLongestEstimateSeconds) return std::nullopt;
  return frames;
}

engine::DecoderKind FfmpegDecoder::Kind() const {
  if (std::string_view(format_->iformat->name) == "asf") return engine::DecoderKind::Wma;
  if (stream_->codecpar->codec_id == AV_CODEC_ID_FLAC) return engine::DecoderKind::Flac;
  return engine::DecoderKind::General;
}

std::string FfmpegDecoder::ContentName() const {
  switch (Kind()) {
    case engine::DecoderKind::Flac:
      return "FLAC";
    case engine::DecoderKind::Wma:
      return "Windows Media";
    case engine::DecoderKind::General:
      break;
  }
  const std::string extension = UsualExtension();
  return extension == "m4a" ? "MPEG-4" : extension == "ogg" ? "Ogg" : support::ToUpper(extension);
}

std::string FfmpegDecoder::UsualExtension() const {
  switch (Kind()) {
    case engine::DecoderKind::Flac:
      return "flac";
    case engine::DecoderKind::Wma:
      return "wma";
    case engine::DecoderKind::General:
      break;
  }
  const std::string name = format_->iformat->name;
  if (name.starts_with("mov")) return "m4a";
  return name.substr(0, name.find(','));
}

support::Result<std::int64_t> FfmpegDecoder::Read(std::span<std::int16_t> interleaved) try {
  const auto channels = static_cast<std::size_t>(target_.layout.nb_channels);
  const std::size_t room = interleaved.size() / channels * channels;
  std::size_t written = 0;
  while (written < room) {
    if (pending_from_ == pending_.size()) {
      if (ended_) break;
      pending_.clear();
      pending_from_ = 0;
      if (NextFrame() == Step::Frame) ConvertFrame();
      continue;
    }
    const std::size_t count = std::min(room - written, pending_.size() - pending_from_);
    std::copy_n(pending_.begin() + static_cast<std::ptrdiff_t>(pending_from_), count,
                interleaved.begin() + static_cast<std::ptrdiff_t>(written));
    pending_from_ += count;
    written += count;
  }
  if (written == 0 && room > 0 && input_->Failed()) {
    return Failure(support::ErrorCode::Unreadable, support::Sentence::DiskStopped);
  }
  return static_cast<std::int64_t>(written / channels);
} catch (const std::bad_alloc&) {
  return Failure(support::ErrorCode::Unreadable, support::Sentence::NoMemoryToReadOn);
}

FfmpegDecoder::Step FfmpegDecoder::NextFrame() {
  if (ended_) return Step::End;
  const int received = avcodec_receive_frame(codec_.get(), frame_.get());
  if (received == 0) {
    // The MPEG audio decoder learns a new rate only while it decodes the frame that has it.
    if (codec_->codec_id == AV_CODEC_ID_MP3) frame_->sample_rate = codec_->sample_rate;
    return Step::Frame;
  }
  if (received == AVERROR(EAGAIN) && !draining_) return FeedCodec();
  if (received != AVERROR_EOF && !draining_) return Step::Skipped;  // a broken frame; the next may be whole
  ended_ = true;
  if (converter_ != nullptr) AppendConverted(nullptr);
  return Step::End;
}

FfmpegDecoder::Step FfmpegDecoder::FeedCodec() {
  for (int futile = 0; futile < kFutileReadsInARow; ++futile) {
    av_packet_unref(packet_.get());
    const int read = av_read_frame(format_.get(), packet_.get());
    if (read == AVERROR(EAGAIN) || (read == AVERROR_INVALIDDATA && !input_->Failed())) continue;
    if (read < 0) break;
    if (packet_->stream_index != stream_->index) continue;
    avcodec_send_packet(codec_.get(), packet_.get());  // a packet that it refuses is left out
    return Step::Skipped;
  }
  draining_ = true;
  avcodec_send_packet(codec_.get(), nullptr);
  return Step::Skipped;
}

void FfmpegDecoder::ConvertFrame() {
  if (!IsPlayable(*frame_)) return;
  SilenceNonNumbersIn(*frame_);
  if (PrepareConverter(ShapeOf(*frame_))) AppendConverted(frame_.get());
}

bool FfmpegDecoder::PrepareConverter(const SampleShape& shape) {
  if (converter_ != nullptr && SameShape(shape, source_)) return true;
  if (converter_ != nullptr) AppendConverted(nullptr);  // what the old one still holds
  converter_ = MakeConverter(shape, target_);
  source_ = shape;
  return converter_ != nullptr;
}

void FfmpegDecoder::AppendConverted(const AVFrame* frame) {
  const int samples_in = frame == nullptr ? 0 : frame->nb_samples;
  const int most = swr_get_out_samples(converter_.get(), samples_in);
  if (most <= 0) return;
  const auto channels = static_cast<std::size_t>(target_.layout.nb_channels);
  const std::size_t before = pending_.size();
  pending_.resize(before + static_cast<std::size_t>(most) * channels);
  auto* out = reinterpret_cast<std::uint8_t*>(pending_.data() + before);
  const auto** in = frame == nullptr ? nullptr : const_cast<const std::uint8_t**>(frame->extended_data);
  const int made = swr_convert(converter_.get(), &out, most, in, samples_in);
  pending_.resize(before + static_cast<std::size_t>(std::max(made, 0)) * channels);
}

}  // namespace platform::codec
