// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/MpegLength.h"

#include <array>
#include <cstdint>

namespace platform::tags {
namespace {

constexpr int kFramesThatTell = 200;
constexpr unsigned long kBlockBytes = 64 * 1024;

struct Frame {
  int bytes = 0, bit_rate = 0, sample_rate = 0, samples = 0;
};

/// A layer III header of four bytes; bytes is 0 when they are none.
Frame ParseHeader(std::uint32_t header) {
  constexpr std::array<int, 16> kRates1{0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
  constexpr std::array<int, 16> kRates2{0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0};
  constexpr std::array<int, 4> kSampleRates{44100, 48000, 32000, 0};
  const unsigned version = header >> 19 & 3, layer = header >> 17 & 3;  // 3 is MPEG 1, 2 is 2, 0 is 2.5
  if (header >> 21 != 0x7FF || layer != 1 || version == 1) return {};
  Frame frame;
  frame.bit_rate = (version == 3 ? kRates1 : kRates2)[header >> 12 & 15];
  frame.sample_rate = kSampleRates[header >> 10 & 3] / (version == 3 ? 1 : version == 2 ? 2 : 4);
  if (frame.bit_rate == 0 || frame.sample_rate == 0) return {};
  frame.samples = version == 3 ? 1152 : 576;
  frame.bytes =
      frame.samples / 8 * 1000 * frame.bit_rate / frame.sample_rate + static_cast<int>(header >> 9 & 1);
  return frame;
}

/// The stream's bytes in order, block by block; positions only go forward.
class ForwardReader {
 public:
  explicit ForwardReader(TagLib::IOStream& stream) : stream_(stream) {}

  /// Four bytes at a position, as one number; nothing at the end.
  std::optional<std::uint32_t> HeaderAt(long at) {
    if (at < from_ || at + 4 > from_ + static_cast<long>(block_.size())) {
      stream_.seek(at);
      block_ = stream_.readBlock(kBlockBytes);
      from_ = at;
    }
    if (block_.size() < 4 || at + 4 > from_ + static_cast<long>(block_.size())) return std::nullopt;
    return block_.toUInt(static_cast<unsigned>(at - from_), true);
  }

 private:
  TagLib::IOStream& stream_;
  TagLib::ByteVector block_;
  long from_ = 0;
};

}  // namespace

std::optional<MpegLength> CountVariableFrames(TagLib::IOStream& stream, long first_frame) {
  ForwardReader reader(stream);
  int first_rate = 0, frames = 0;
  bool varies = false;
  double seconds = 0, bytes = 0;
  for (long at = first_frame;; ++frames) {
    if (frames == kFramesThatTell && !varies) return std::nullopt;
    const std::optional<std::uint32_t> header = reader.HeaderAt(at);
    const Frame frame = header ? ParseHeader(*header) : Frame{};
    if (frame.bytes == 0) break;  // the end, a tag behind the sound, or damage
    if (frames == 0) first_rate = frame.bit_rate;
    varies = varies || frame.bit_rate != first_rate;
    seconds += static_cast<double>(frame.samples) / frame.sample_rate;
    bytes += frame.bytes;
    at += frame.bytes;
  }
  if (!varies || seconds <= 0) return std::nullopt;
  return MpegLength{std::chrono::milliseconds(static_cast<std::int64_t>(seconds * 1000)),
                    static_cast<int>(bytes / 125 / seconds + 0.5)};
}

}  // namespace platform::tags
