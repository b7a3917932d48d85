// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/WavEncoder.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace platform::codec {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kSizesPlace = 12;
constexpr std::size_t kFormatPlace = 48;
constexpr std::size_t kBlockPlace = 68;  ///< bytes a frame
constexpr std::uint32_t kBeyond = 0xFFFFFFFF;

template <typename Number>
void PutAt(std::span<std::uint8_t> bytes, std::size_t place, Number number) {
  for (std::size_t i = 0; i < sizeof(Number); ++i) {
    bytes[place + i] = static_cast<std::uint8_t>(static_cast<std::uint64_t>(number) >> (8 * i));
  }
}

void PutText(std::span<std::uint8_t> bytes, std::size_t place, std::string_view text) {
  std::copy(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(place));
}

std::uint32_t NumberAt(std::span<const std::uint8_t> bytes, std::size_t place, std::size_t size = 4) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < size; ++i) number |= std::uint32_t{bytes[place + i]} << (8 * i);
  return number;
}

bool Says(std::span<const std::uint8_t> bytes, std::size_t place, std::string_view text) {
  return std::equal(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(place));
}

void Append(Bytes& bytes, std::string_view name, std::string_view content) {
  bytes.resize(bytes.size() + 8);
  PutText(bytes, bytes.size() - 8, name);
  PutAt(bytes, bytes.size() - 4, static_cast<std::uint32_t>(content.size()));
  bytes.insert(bytes.end(), content.begin(), content.end());
  if (content.size() % 2 != 0) bytes.push_back(0);
}

/// A list of the tags, or nothing where there are none.
void AppendTags(Bytes& bytes, const engine::EncoderFormat& format) {
  Bytes list{'I', 'N', 'F', 'O'};
  for (const auto& [name, text] : {std::pair<std::string_view, const std::string&>{"INAM", format.title},
                                   {"IART", format.artist},
                                   {"ICRD", format.date}}) {
    if (!text.empty()) Append(list, name, text + '\0');
  }
  if (list.size() > 4) Append(bytes, "LIST", {reinterpret_cast<const char*>(list.data()), list.size()});
}

}  // namespace

std::vector<std::uint8_t> WavHead(const engine::EncoderFormat& format, std::int64_t data_bytes) {
  Bytes head(kFormatPlace + 24);
  const int block = format.channels * format.bits / 8;
  PutText(head, 8, "WAVE");
  PutText(head, kFormatPlace, "fmt ");
  PutAt(head, kFormatPlace + 4, std::uint32_t{16});
  PutAt(head, kFormatPlace + 8, std::uint16_t{1});
  PutAt(head, kFormatPlace + 10, static_cast<std::uint16_t>(format.channels));
  PutAt(head, kFormatPlace + 12, static_cast<std::uint32_t>(format.sample_rate));
  PutAt(head, kFormatPlace + 16, static_cast<std::uint32_t>(format.sample_rate * block));
  PutAt(head, kBlockPlace, static_cast<std::uint16_t>(block));
  PutAt(head, kFormatPlace + 22, static_cast<std::uint16_t>(format.bits));
  AppendTags(head, format);
  Append(head, "data", {});
  PutWavSizes(head, data_bytes);
  return head;
}

std::size_t WavDataPlace(std::span<const std::uint8_t> head) {
  if (head.size() < kFormatPlace || !(Says(head, 0, "RIFF") || Says(head, 0, "RF64"))) return 0;
  if (!Says(head, kSizesPlace, "JUNK") && !Says(head, kSizesPlace, "ds64")) return 0;
  std::size_t place = kFormatPlace;
  const bool format = head.size() >= kFormatPlace + 24 && Says(head, place, "fmt ") &&
                      NumberAt(head, place + 4) >= 16 && NumberAt(head, kBlockPlace, 2) > 0;
  if (!format) return 0;
  while (place + 8 <= head.size()) {
    if (Says(head, place, "data")) return place + 8;
    const std::size_t size = NumberAt(head, place + 4);
    if (size > head.size()) return 0;
    place += 8 + size + size % 2;
  }
  return 0;
}

void PutWavSizes(std::span<std::uint8_t> head, std::int64_t data_bytes) {
  const auto data = static_cast<std::uint64_t>(data_bytes);
  const std::uint64_t riff = data + head.size() - 8;
  const bool beyond = riff + 1 >= kBeyond;
  const std::uint64_t frames = data / std::max<std::uint32_t>(NumberAt(head, kBlockPlace, 2), 1);
  PutText(head, 0, beyond ? "RF64" : "RIFF");
  PutAt(head, 4, beyond ? kBeyond : static_cast<std::uint32_t>(riff));
  PutText(head, kSizesPlace, beyond ? "ds64" : "JUNK");
  PutAt(head, kSizesPlace + 4, std::uint32_t{28});
  PutAt(head, kSizesPlace + 8, beyond ? riff : 0);
  PutAt(head, kSizesPlace + 16, beyond ? data : 0);
  PutAt(head, kSizesPlace + 24, beyond ? frames : 0);
  PutAt(head, head.size() - 4, beyond ? kBeyond : static_cast<std::uint32_t>(data));
}

WavEncoder::WavEncoder(std::unique_ptr<OutputFile> file, const engine::EncoderFormat& format)
    : file_(std::move(file)), bits_(format.bits), head_(WavHead(format, 0)) {}

support::Result<void> WavEncoder::Begin() {
  return Told(file_->Write(head_));
}

void WavEncoder::Put(std::int32_t sample) {
  for (int bit = 0; bit < bits_; bit += 8) bytes_.push_back(static_cast<std::uint8_t>(sample >> bit));
}

support::Result<void> WavEncoder::WriteBytes() {
  const bool written = file_->Write(bytes_);
  if (written) data_ += static_cast<std::int64_t>(bytes_.size());
  bytes_.clear();
  return Told(written);
}

support::Result<void> WavEncoder::Write(std::span<const std::int16_t> interleaved) {
  for (const std::int16_t sample : interleaved) Put(bits_ == 24 ? sample * 256 : sample);
  return WriteBytes();
}

support::Result<void> WavEncoder::Write(std::span<const float> interleaved) {
  for (const float sample : interleaved) Put(bits_ == 24 ? Dither::To24(sample) : dither_.To16(sample));
  return WriteBytes();
}

support::Result<void> WavEncoder::Flush() {
  PutWavSizes(head_, data_);
  return Told(file_->WriteAt(0, head_));
}

support::Result<void> WavEncoder::Sync() {
  return Told(file_->Sync());
}

support::Result<void> WavEncoder::Finish() {
  return Flush();
}

}  // namespace platform::codec
