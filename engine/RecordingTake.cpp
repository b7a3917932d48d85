// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/RecordingTake.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace engine {
namespace {

constexpr float kCeiling = 0.891251F;  ///< -1 dB
constexpr std::size_t kBlockFrames = 4096;
constexpr std::int64_t kHeldByEncoders = 4 << 20;  ///< and a block, and the end of the file

}  // namespace

RecordingTake::RecordingTake(const decks::RecordingWish& wish, std::unique_ptr<ProgrammeReader> reader,
                             EncoderFactory& encoders)
    : wish_(wish),
      encoders_(encoders),
      reader_(std::move(reader)),
      limiter_(reader_->SampleRate(), kCeiling),
      skip_(limiter_.LookAhead()),
      block_(2 * kBlockFrames) {}

support::Result<void> RecordingTake::Begin() {
  return Open(wish_.file);
}

support::Result<void> RecordingTake::Open(const decks::RecordingFile& file) {
  EncoderFormat format;
  format.sample_rate = reader_->SampleRate();
  format.bit_rate = wish_.bit_rate;
  format.bits = wish_.bits;
  format.readable = EncoderFormat::Readable::AllAlong;
  format.title = file.title;
  format.artist = file.artist;
  format.date = file.date;
  auto opened = encoders_.Open(file.path, format);
  if (!opened) return opened.Failure();
  encoder_ = std::move(opened).Value();
  file_ = file;
  return {};
}

support::Result<void> RecordingTake::Take(std::int64_t held) {
  const std::int64_t end = reader_->Written() - held;
  while (true) {
    const ProgrammeReader::Taken taken = reader_->Read(block_, end);
    lost_ += taken.lost;
    if (const auto silent = LimitSilence(taken.lost); !silent) return silent;
    if (taken.frames == 0) return encoder_->Flush();
    base_ = taken.first - taken_;
    if (const auto limited = Limit({block_.data(), 2 * taken.frames}); !limited) return limited;
  }
}

support::Result<void> RecordingTake::LimitSilence(std::int64_t frames) {
  std::vector<float> silence;
  for (; frames > 0; frames -= static_cast<std::int64_t>(silence.size() / 2)) {
    silence.assign(2 * std::min(kBlockFrames, static_cast<std::size_t>(frames)), 0);
    if (const auto limited = Limit(silence); !limited) return limited;
  }
  return {};
}

support::Result<void> RecordingTake::Limit(std::span<float> stereo) {
  taken_ += static_cast<std::int64_t>(stereo.size() / 2);
  while (!stereo.empty()) {
    const auto piece = stereo.first(std::min<std::size_t>(stereo.size(), 2 * Limiter::kMostFrames));
    stereo = stereo.subspan(piece.size());
    limiter_.Process(piece);
    const auto early = std::min<std::int64_t>(skip_, static_cast<std::int64_t>(piece.size() / 2));
    skip_ -= early;
    if (const auto written = Write(piece.subspan(2 * static_cast<std::size_t>(early))); !written) {
      return written;
    }
  }
  return {};
}

support::Result<void> RecordingTake::Write(std::span<const float> stereo) {
  while (!stereo.empty()) {
    auto count = static_cast<std::int64_t>(stereo.size() / 2);
    if (!parts_.empty()) {
      if (parts_.front().from <= frames_) {
        Part part = std::move(parts_.front());
        parts_.pop_front();
        continued_ = 1;
        // One title that the disk refuses must not end the evening's recording.
        if (const auto next = Next(part.file); !next && file_.path == part.file.path) return next;
        continue;
      }
      count = std::min(count, parts_.front().from - frames_);
    }
    if (encoder_->Bytes() > largest_ - kHeldByEncoders) {
      if (const auto next = Next(Continued()); !next) return next;
    }
    const auto piece = stereo.first(2 * static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < piece.size(); i += 2) {
      left_ = std::max(left_, std::abs(piece[i]));
      right_ = std::max(right_, std::abs(piece[i + 1]));
    }
    if (const auto written = encoder_->Write(piece); !written) return written;
    frames_ += count;
    stereo = stereo.subspan(piece.size());
  }
  return {};
}

decks::RecordingFile RecordingTake::Continued() {
  decks::RecordingFile next = file_;
  if (continued_ == 1) continued_from_ = file_.path;
  const std::size_t dot = continued_from_.rfind('.');
  next.path = continued_from_.substr(0, dot) + " (" + std::to_string(++continued_) + ")" +
              continued_from_.substr(dot);
  return next;
}

support::Result<void> RecordingTake::Next(const decks::RecordingFile& file) {
  std::unique_ptr<Encoder> last = std::move(encoder_);
  if (const auto opened = Open(file); !opened) {
    encoder_ = std::move(last);
    return opened;
  }
  file_begins_ = frames_;
  auto finished = last->Finish();
  bytes_ += last->Bytes();
  if (finished) finished = last->Sync();
  return finished;
}

void RecordingTake::Cut(std::int64_t frame, decks::RecordingFile next) {
  const std::int64_t last = parts_.empty() ? frames_ : parts_.back().from;
  frame = std::max(frame, last);
  if (!parts_.empty() && parts_.back().from == frame) parts_.pop_back();  // nothing lies between them
  parts_.push_back({frame, std::move(next)});
}

support::Result<void> RecordingTake::Follow(std::unique_ptr<ProgrammeReader> reader) {
  const auto taken = Take(0);
  reader_ = std::move(reader);
  base_.reset();
  return taken;
}

support::Result<void> RecordingTake::Finish() {
  auto went = Take(0);
  if (went) went = LimitSilence(limiter_.LookAhead());
  auto finished = encoder_->Finish();
  if (finished) finished = encoder_->Sync();
  return went ? finished : went;
}

void RecordingTake::Abandon() {
  if (encoder_ != nullptr) static_cast<void>(encoder_->Finish());
}

std::int64_t RecordingTake::Bytes() const {
  return bytes_ + (encoder_ == nullptr ? 0 : encoder_->Bytes());
}

std::pair<float, float> RecordingTake::TakePeaks() {
  return {std::exchange(left_, 0.0F), std::exchange(right_, 0.0F)};
}

}  // namespace engine
