// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/MixPointScan.h"

#include <algorithm>
#include <cstdlib>
#include <span>

#include "decks/StreamBuild.h"

namespace decks {
namespace {

constexpr std::uint32_t kStartBlock = 20'000;
constexpr std::uint32_t kEndBlock = 100'000;

int Threshold(int gain_percent) {
  return 80 * std::clamp(gain_percent, 0, 100);
}

}  // namespace

/// One run over one private decoder, which is freed with it.
class MixPointScan::Scanning {
 public:
  Scanning(AudioEngine& engine, SoundControl& sound, std::span<std::int16_t> buffer,
           const MixPointRequest& request, ScanProgress& progress)
      : engine_(engine),
        sound_(sound),
        buffer_(buffer),
        progress_(progress),
        threshold_(Threshold(request.gain_percent)),
        decoder_(CreateDecoder(engine, request.filename, StreamTypeOf(request.filename), 0,
                               kStreamDecode | SpeakerFlag(request.speaker))) {}
  ~Scanning() { engine_.BASS_StreamFree(decoder_); }
  Scanning(const Scanning&) = delete;
  Scanning& operator=(const Scanning&) = delete;

  [[nodiscard]] bool Opened() const { return decoder_ != 0; }
  std::int64_t FindStart();
  std::int64_t FindEnd();
  /// Decodes the file to its end.
  support::BytePosition ExactLength();
  [[nodiscard]] bool Cancelled() const { return cancelled_; }
  [[nodiscard]] double SecondsOf(std::int64_t position) {
    return engine_.BASS_ChannelBytes2Seconds(decoder_, {position});
  }

 private:
  [[nodiscard]] int LevelAt(std::int64_t index) const {
    return std::abs(static_cast<int>(buffer_[static_cast<std::size_t>(index)]));
  }
  std::int64_t DecodeBlock(std::uint32_t bytes);
  [[nodiscard]] bool GoOn();
  [[nodiscard]] std::int64_t LastSoundIn(std::int64_t count) const;

  AudioEngine& engine_;
  SoundControl& sound_;
  const std::span<std::int16_t> buffer_;
  ScanProgress& progress_;
  const int threshold_;
  const StreamHandle decoder_;
  int tenths_ = 0;
  bool cancelled_ = false;
};

bool MixPointScan::Scanning::GoOn() {
  cancelled_ = cancelled_ || progress_.Cancelled();
  return !cancelled_;
}

std::int64_t MixPointScan::Scanning::DecodeBlock(std::uint32_t bytes) {
  constexpr int kWhole = 10;
  tenths_ = tenths_ == kWhole ? 0 : tenths_ + 1;
  progress_.Busy(static_cast<double>(tenths_) / kWhole);
  const std::uint32_t got = engine_.BASS_ChannelGetData(decoder_, buffer_, bytes);
  return std::min(got, bytes) / 2;
}

std::int64_t MixPointScan::Scanning::FindStart() {
  std::int64_t position = 0;
  while (engine_.BASS_ChannelIsActive(decoder_) && GoOn()) {
    const std::int64_t count = DecodeBlock(kStartBlock);
    std::int64_t index = std::min<std::int64_t>(1, count);  // a decoder's last block may be empty
    while (index < count && LevelAt(index) <= threshold_) ++index;
    position += 2 * index;
    if (index >= count) continue;
    for (; index > 0 && LevelAt(index) > threshold_ / 4; --index) position -= 2;
    break;
  }
  return position;
}

std::int64_t MixPointScan::Scanning::LastSoundIn(std::int64_t count) const {
  std::int64_t index = count - 1;
  while (index > 0 && LevelAt(index) <= threshold_ / 2) --index;
  return index;
}

std::int64_t MixPointScan::Scanning::FindEnd() {
  const std::int64_t length = engine_.BASS_ChannelGetLength(decoder_).value;
  for (std::int64_t block = std::max<std::int64_t>(0, length - kEndBlock); GoOn();
       block = std::max<std::int64_t>(0, block - kEndBlock)) {
    engine_.BASS_ChannelSetPosition(decoder_, {block});
    // An engine seeks to whole frames, and 100,000 bytes are none of six channels.
    const std::int64_t begin = engine_.BASS_ChannelGetPosition(decoder_).value;
    const std::int64_t index = LastSoundIn(DecodeBlock(kEndBlock));
    if (index > 0) return begin + 2 * index;
    if (block == 0) return 0;
  }
  return 0;
}

support::BytePosition MixPointScan::Scanning::ExactLength() {
  while (GoOn() && sound_.DecodeFurther(decoder_)) {
  }
  return engine_.BASS_ChannelGetLength(decoder_);
}

std::optional<music::MixPoints> MixPointScan::Run(const MixPointRequest& request, ScanProgress& progress) {
  music::MixPoints found;
  for (const bool from_start : {true, false}) {
    Scanning scanning(engine_, sound_, buffer_, request, progress);
    if (!scanning.Opened()) return std::nullopt;
    if (from_start) {
      found.start.value = scanning.FindStart();
      found.start_seconds = scanning.SecondsOf(found.start.value);
    } else {
      found.length = scanning.ExactLength();
      found.end.value = scanning.FindEnd();
      found.end_seconds = scanning.SecondsOf(found.end.value);
    }
    if (scanning.Cancelled()) return std::nullopt;
  }
  return found;
}

}  // namespace decks
