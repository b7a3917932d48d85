// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/OnsetDetector.h"

#include <algorithm>
#include <cmath>

namespace lightorgan {
namespace {

constexpr std::chrono::milliseconds kWindow{500};
constexpr std::chrono::milliseconds kRefractory{120};
constexpr float kCompression = 100;  // c of log1p(c * magnitude)
constexpr float kFactor = 1.5F;
constexpr float kLeast = 1.0F;  // growth of all bins together
constexpr std::size_t kMostKept = 256;

}  // namespace

OnsetDetector::OnsetDetector() {
  recent_.reserve(kMostKept);
  sorting_.reserve(kMostKept);
}

bool OnsetDetector::Onset(const Bins& bins, std::chrono::microseconds elapsed) {
  float growth = 0;
  for (std::size_t i = 1; i < bins.size(); ++i) {
    const float magnitude = std::isfinite(bins[i]) ? std::abs(bins[i]) : 0;
    const float compressed = std::log1p(kCompression * magnitude);
    growth += std::max(0.0F, compressed - last_[i]);
    last_[i] = compressed;
  }
  since_ = std::min(since_ + elapsed, std::chrono::microseconds(std::chrono::hours(1)));
  for (Growth& one : recent_) one.age += elapsed;
  std::erase_if(recent_, [](const Growth& one) { return one.age > kWindow; });
  sorting_.clear();
  for (const Growth& one : recent_) sorting_.push_back(one.value);
  float median = 0;
  if (!sorting_.empty()) {
    const auto middle = sorting_.begin() + static_cast<std::ptrdiff_t>(sorting_.size() / 2);
    std::nth_element(sorting_.begin(), middle, sorting_.end());
    median = *middle;
  }
  if (recent_.size() < kMostKept) recent_.push_back({growth, std::chrono::microseconds(0)});
  if (growth <= kFactor * median + kLeast || since_ < kRefractory) return false;
  since_ = std::chrono::microseconds(0);
  return true;
}

}  // namespace lightorgan
