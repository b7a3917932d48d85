// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PeakingEqualiser.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

using music::Biquad;

bool AllFinite(const decks::PeakingBand& band) {
  return std::isfinite(band.bandwidth) && std::isfinite(band.q) && std::isfinite(band.centre) &&
         std::isfinite(band.gain);
}

Biquad Between(const Biquad& a, const Biquad& b, int parts) {
  const auto part = [&](double from, double to) { return (to - from) / parts; };
  return {part(a.b0, b.b0), part(a.b1, b.b1), part(a.b2, b.b2), part(a.a1, b.a1), part(a.a2, b.a2)};
}

Biquad After(const Biquad& begin, const Biquad& step, int frames) {
  return {begin.b0 + frames * step.b0, begin.b1 + frames * step.b1, begin.b2 + frames * step.b2,
          begin.a1 + frames * step.a1, begin.a2 + frames * step.a2};
}

}  // namespace

Biquad PeakingFilter(const decks::PeakingBand& band, int sample_rate) {
  const int rate = band.frequency > 0 ? std::min(band.frequency, sample_rate) : sample_rate;
  if (band.centre <= 0 || band.centre >= static_cast<float>(rate) / 2) return {};
  return music::PeakingFilter({static_cast<double>(band.centre), static_cast<double>(band.bandwidth),
                               static_cast<double>(band.q), static_cast<double>(band.gain)},
                              sample_rate);
}

PeakingEqualiser::PeakingEqualiser(int sample_rate)
    : sample_rate_(sample_rate), glide_frames_(std::max(1, sample_rate / 200)) {}

bool PeakingEqualiser::AddBand() {
  if (count_ == kBands) return false;
  bands_[static_cast<std::size_t>(count_)] = {.band = count_};
  ++count_;
  return true;
}

bool PeakingEqualiser::Set(const decks::PeakingBand& band) {
  if (band.band < 0 || band.band >= count_ || !AllFinite(band)) return false;
  const auto number = static_cast<std::size_t>(band.band);
  bands_[number] = band;
  wanted_[number] = PeakingFilter(band, sample_rate_);
  HandOver();
  return true;
}

bool PeakingEqualiser::Get(decks::PeakingBand& band) const {
  if (band.band < 0 || band.band >= count_) return false;
  band = bands_[static_cast<std::size_t>(band.band)];
  return true;
}

void PeakingEqualiser::RemoveBands() {
  count_ = 0;
  wanted_ = {};
  HandOver();
}

void PeakingEqualiser::Bypass(bool bypassed) {
  if (bypassed_ == bypassed) return;
  bypassed_ = bypassed;
  HandOver();
}

void PeakingEqualiser::BandsAs(const PeakingEqualiser& other) {
  count_ = other.count_;
  bands_ = other.bands_;
  wanted_ = {};
  for (std::size_t i = 0; i < static_cast<std::size_t>(count_); ++i) {
    wanted_[i] = PeakingFilter(bands_[i], sample_rate_);
  }
  HandOver();
}

void PeakingEqualiser::HandOver() {
  Curve& draft = curves_.Draft();
  draft.version = ++version_;
  draft.filters = bypassed_ ? Filters{} : wanted_;
  curves_.Publish();
}

void PeakingEqualiser::TakeCurve() noexcept {
  const Curve& curve = curves_.Read();
  if (curve.version == seen_) return;
  seen_ = curve.version;
  for (std::size_t i = 0; i < sections_.size(); ++i) {
    Section& section = sections_[i];
    if (section.target == curve.filters[i]) continue;
    section.target = curve.filters[i];
    if (section.idle && section.target.IsFlat()) {
      section.now = section.target;
      continue;
    }
    section.idle = false;
    section.glide_left = glide_frames_;
    section.step = Between(section.now, section.target, glide_frames_);
  }
}

void PeakingEqualiser::Process(std::span<float> stereo) noexcept {
  if (stereo.size() < 2) return;
  TakeCurve();
  for (Section& section : sections_) {
    if (section.idle) {
      Remember(section, stereo);
    } else {
      Filter(section, stereo);
    }
  }
}

void PeakingEqualiser::Filter(Section& section, std::span<float> stereo) const noexcept {
  const int frames = static_cast<int>(stereo.size() / 2);
  const int glide = std::min(section.glide_left, frames);
  const Biquad begin = section.now;
  FilterChannel(section, begin, glide, stereo, 0);
  FilterChannel(section, begin, glide, stereo, 1);
  if (glide > 0) {
    section.glide_left -= glide;
    section.now = section.glide_left == 0 ? section.target : After(begin, section.step, glide);
  }
  Rest(section);
}

void PeakingEqualiser::FilterChannel(Section& section, const Biquad& begin, int glide,
                                     std::span<float> stereo, std::size_t channel) noexcept {
  double x1 = section.x1[channel], x2 = section.x2[channel];
  double y1 = section.y1[channel], y2 = section.y2[channel];
  Biquad f = begin;
  const Biquad& step = section.step;
  const std::size_t frames = stereo.size() / 2;
  for (std::size_t i = 0; i < frames; ++i) {
    const int done = static_cast<int>(i) + 1;
    if (done <= glide) f = done == section.glide_left ? section.target : After(begin, step, done);
    float& sample = stereo[2 * i + channel];
    const double x = static_cast<double>(sample);
    const double y = f.b0 * x + f.b1 * x1 + f.b2 * x2 - f.a1 * y1 - f.a2 * y2;
    x2 = x1;
    x1 = x;
    y2 = y1;
    y1 = y;
    sample = static_cast<float>(y);
  }
  section.x1[channel] = x1;
  section.x2[channel] = x2;
  section.y1[channel] = y1;
  section.y2[channel] = y2;
}

void PeakingEqualiser::Remember(Section& section, std::span<const float> stereo) const noexcept {
  const std::size_t last = stereo.size() - 2;
  for (std::size_t channel = 0; channel < 2; ++channel) {
    section.x2[channel] = last >= 2 ? static_cast<double>(stereo[last - 2 + channel]) : section.x1[channel];
    section.x1[channel] = static_cast<double>(stereo[last + channel]);
    section.y1[channel] = section.x1[channel];
    section.y2[channel] = section.x2[channel];
  }
}

void PeakingEqualiser::Rest(Section& section) noexcept {
  constexpr double kInaudible = 1e-7;  // -140 dB
  constexpr double kNothing = 1e-30;   // before numbers become so small that the processor slows down
  bool settled = section.glide_left == 0 && section.now.IsFlat();
  for (std::size_t channel = 0; channel < 2; ++channel) {
    settled = settled && std::abs(section.y1[channel] - section.x1[channel]) < kInaudible &&
              std::abs(section.y2[channel] - section.x2[channel]) < kInaudible;
    if (std::abs(section.y1[channel]) < kNothing) section.y1[channel] = 0;
    if (std::abs(section.y2[channel]) < kNothing) section.y2[channel] = 0;
    if (!std::isfinite(section.y1[channel]) || !std::isfinite(section.y2[channel])) {
      section.x1[channel] = section.x2[channel] = section.y1[channel] = section.y2[channel] = 0;
    }
  }
  section.idle = settled;
}

void PeakingEqualiser::Reset() noexcept {
  TakeCurve();
  for (Section& section : sections_) {
    section = {.now = section.target, .target = section.target, .step = {}};
    section.idle = section.now.IsFlat();
  }
}

}  // namespace engine
