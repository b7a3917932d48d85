// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/FileNumber.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

namespace catalogue {
namespace {

constexpr std::size_t kFewest = 1 << 16, kPlacesAName = 32;

std::uint64_t WordAt(const char* text) {
  std::uint64_t word = 0;
  std::memcpy(&word, text, sizeof word);
  return word;
}

}  // namespace

// Two sums, so that neither waits for the other.
std::uint32_t FileNumber(std::string_view name) {
  constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15, kOther = 0xC2B2AE3D27D4EB4F;
  constexpr std::size_t kWord = sizeof(std::uint64_t);
  std::uint64_t one = name.size() * kMix, other = kOther;
  const char* at = name.data();
  const char* const end = at + name.size();
  const auto take = [](std::uint64_t& sum, std::uint64_t word) { sum = std::rotl((sum ^ word) * kMix, 29); };
  for (; end - at >= std::ptrdiff_t{2 * kWord}; at += 2 * kWord) {
    take(one, WordAt(at));
    take(other, WordAt(at + kWord));
  }
  if (end - at >= std::ptrdiff_t{kWord}) {
    take(one, WordAt(at));
    at += kWord;
  }
  if (name.size() >= kWord) {
    take(other, WordAt(end - kWord));
  } else {
    for (; at < end; ++at) take(other, static_cast<unsigned char>(*at));
  }
  return static_cast<std::uint32_t>((one ^ std::rotl(other, 32)) * kOther >> 32);
}

WantedFiles::WantedFiles(std::span<const std::string> names)
    : mask_(std::bit_ceil(std::max(kFewest, names.size() * kPlacesAName)) - 1), noted_(mask_ / 64 + 1) {
  names_.reserve(names.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::uint32_t number = FileNumber(names[i]);
    names_.push_back({number, i});
    noted_[(number & mask_) / 64] |= std::uint64_t{1} << number % 64;
  }
  std::sort(names_.begin(), names_.end());
}

std::span<const WantedFiles::Name> WantedFiles::With(std::uint32_t number) const {
  const auto less = [](const Name& a, const Name& b) { return a.first < b.first; };
  const auto [first, end] = std::equal_range(names_.begin(), names_.end(), Name{number, 0}, less);
  return {first, end};
}

}  // namespace catalogue
