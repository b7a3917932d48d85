// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/testing/FakeDecoders.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace engine::testing {

class FakeDecoders::Decoder final : public PcmDecoder {
 public:
  Decoder(FakeDecoders& owner, const FakeFile& file) : owner_(owner), file_(file) {}
  [[nodiscard]] PcmFormat Format() const override { return file_.format; }
  [[nodiscard]] std::optional<std::int64_t> EstimatedFrames() const override { return file_.estimate; }

  support::Result<std::int64_t> Read(std::span<std::int16_t> interleaved) override {
    ++owner_.reads_;
    if (file_.fails_at >= 0 && at_ >= file_.fails_at) {
      return support::Error{support::ErrorCode::Malformed, "The file is damaged."};
    }
    const std::int64_t end = file_.fails_at >= 0 ? file_.fails_at : file_.frames;
    const std::int64_t room = static_cast<std::int64_t>(interleaved.size()) / file_.format.channels;
    const std::int64_t count = std::min({room, end - at_, static_cast<std::int64_t>(file_.read_limit)});
    std::size_t out = 0;
    for (std::int64_t i = 0; i < count; ++i, ++at_) {
      for (int c = 0; c < file_.format.channels; ++c) interleaved[out++] = file_.sample(at_, c);
    }
    return count;
  }

 private:
  FakeDecoders& owner_;
  const FakeFile file_;
  std::int64_t at_ = 0;
};

support::Result<std::unique_ptr<PcmDecoder>> FakeDecoders::Open(const std::string& path,
                                                                DecoderKind /*kind*/) {
  ++opened_;
  const auto file = files_.find(path);
  if (file == files_.end()) return support::Error{support::ErrorCode::NotFound, path + " does not exist."};
  return std::unique_ptr<PcmDecoder>(std::make_unique<Decoder>(*this, file->second));
}

FakeFile RampFile(std::int64_t frames, int sample_rate) {
  FakeFile file;
  file.format = {sample_rate, 2};
  file.frames = frames;
  file.estimate = frames;
  file.sample = [](std::int64_t frame, int channel) {
    const auto value = static_cast<std::int16_t>(frame % 25'000);
    return channel == 0 ? value : static_cast<std::int16_t>(-value);
  };
  return file;
}

FakeFile ToneFile(std::int64_t frames, double hertz, double level, int sample_rate) {
  FakeFile file;
  file.format = {sample_rate, 2};
  file.frames = frames;
  file.estimate = frames;
  file.sample = [=](std::int64_t frame, int /*channel*/) {
    const double phase = 2 * std::numbers::pi * hertz * static_cast<double>(frame) / sample_rate;
    const double edge = static_cast<double>(std::min(frame, frames - frame));
    const double swell = 0.5 - 0.5 * std::cos(std::numbers::pi * std::min(1.0, edge / 2000));
    return static_cast<std::int16_t>(std::lround(32767 * level * swell * std::sin(phase)));
  };
  return file;
}

}  // namespace engine::testing
