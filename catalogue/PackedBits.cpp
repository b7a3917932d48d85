// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/PackedBits.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace catalogue {
namespace {

constexpr std::size_t kRiceBlock = 64;
constexpr int kRiceWidthBits = 4;
/// So many ones announce a value that is written out.
constexpr unsigned kRiceEscape = 20;
constexpr int kWholeInt = 32;

/// 0, -1, 1, -2 ... as 0, 1, 2, 3 ...
std::uint64_t ZigZag(std::int64_t value) {
  return (static_cast<std::uint64_t>(value) << 1) ^ static_cast<std::uint64_t>(value >> 63);
}

std::int64_t UnZigZag(std::uint64_t folded) {
  return static_cast<std::int64_t>(folded >> 1) ^ -static_cast<std::int64_t>(folded & 1);
}

/// About the binary logarithm of the mean.
int RiceWidth(const std::vector<int>& values, std::size_t from, std::size_t to) {
  std::uint64_t sum = 0;
  for (std::size_t i = from; i < to; ++i) sum += ZigZag(values[i]);
  const std::uint64_t mean = sum / (to - from);
  return std::min(static_cast<int>(std::bit_width(mean)), (1 << kRiceWidthBits) - 1);
}

}  // namespace

void BitWriter::WriteBits(std::uint64_t value, int bits) {
  for (int done = 0; done < bits; ++done) {
    held_ |= ((value >> done) & 1U) << held_bits_;
    if (++held_bits_ == 8) {
      bytes_.push_back(static_cast<char>(held_));
      held_ = 0;
      held_bits_ = 0;
    }
  }
}

void BitWriter::WriteReal(double value) {
  WriteBits(std::bit_cast<std::uint64_t>(value), 64);
}

void BitWriter::WriteSigned(std::int64_t value) {
  const std::uint64_t folded = ZigZag(value);
  const int bits = static_cast<int>(std::bit_width(folded));
  WriteBits(static_cast<std::uint64_t>(bits), 7);
  WriteBits(folded, bits);
}

void BitWriter::WriteSmall(const std::vector<int>& values) {
  for (std::size_t from = 0; from < values.size(); from += kRiceBlock) {
    const std::size_t to = std::min(values.size(), from + kRiceBlock);
    const int width = RiceWidth(values, from, to);
    WriteBits(static_cast<std::uint64_t>(width), kRiceWidthBits);
    for (std::size_t i = from; i < to; ++i) {
      const std::uint64_t folded = ZigZag(values[i]);
      const std::uint64_t ones = std::min<std::uint64_t>(folded >> width, kRiceEscape);
      WriteBits((1ULL << ones) - 1, static_cast<int>(ones));
      if (ones == kRiceEscape) {
        WriteBits(folded, kWholeInt + 1);
      } else {
        WriteBits(0, 1);
        WriteBits(folded, width);
      }
    }
  }
}

std::string BitWriter::Take() {
  if (held_bits_ > 0) WriteBits(0, 8 - held_bits_);
  return std::move(bytes_);
}

std::uint64_t BitReader::ReadBits(int bits) {
  if (bits < 0 || bits > 64 || static_cast<std::size_t>(bits) > BitsLeft()) {
    good_ = false;
    at_ = bytes_.size() * 8;
    return 0;
  }
  std::uint64_t value = 0;
  for (int i = 0; i < bits; ++i, ++at_) {
    const auto byte = static_cast<unsigned char>(bytes_[at_ / 8]);
    value |= static_cast<std::uint64_t>((byte >> (at_ % 8)) & 1U) << i;
  }
  return value;
}

double BitReader::ReadReal() {
  return std::bit_cast<double>(ReadBits(64));
}

std::int64_t BitReader::ReadSigned() {
  return UnZigZag(ReadBits(static_cast<int>(ReadBits(7))));
}

std::vector<int> BitReader::ReadSmall(std::size_t count) {
  std::vector<int> values;
  if (count > BitsLeft()) good_ = false;  // each takes a bit at least
  if (!good_) return values;
  values.reserve(count);
  int width = 0;
  while (values.size() < count && good_) {
    if (values.size() % kRiceBlock == 0) width = static_cast<int>(ReadBits(kRiceWidthBits));
    unsigned ones = 0;
    while (ones < kRiceEscape && ReadBits(1) != 0) ++ones;
    const std::uint64_t folded = ones == kRiceEscape
                                     ? ReadBits(kWholeInt + 1)
                                     : (static_cast<std::uint64_t>(ones) << width) | ReadBits(width);
    const std::int64_t value = UnZigZag(folded);
    good_ = good_ && value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
    values.push_back(good_ ? static_cast<int>(value) : 0);
  }
  return values;
}

}  // namespace catalogue
