// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>

#include "decks/FormFinder.h"

namespace decks {
namespace {

using BarSound = std::array<double, kFormBands>;

constexpr std::size_t kContrastBars = 4;
constexpr std::size_t kPeakReach = 3;  ///< bars
constexpr double kLeastContrast = 0.12;
constexpr std::size_t kFewestBars = 12;
constexpr std::size_t kLowBands = 5;  ///< up to 160 Hz: the bass drum and the bass

/// Averaged over four beats.
std::vector<BarSound> BarsOf(std::span<const BeatSound> beats, std::size_t first) {
  std::vector<BarSound> bars;
  for (std::size_t at = first; at + music::kBeatsPerBar <= beats.size(); at += music::kBeatsPerBar) {
    BarSound& bar = bars.emplace_back();
    for (std::size_t k = 0; k < music::kBeatsPerBar; ++k) {
      for (std::size_t band = 0; band < kFormBands; ++band)
        bar[band] += static_cast<double>(beats[at + k][band]) / music::kBeatsPerBar;
    }
  }
  return bars;
}

/// Each band less its mean, in units of how much it changes.
std::vector<BarSound> Standardised(std::vector<BarSound> bars) {
  const auto count = static_cast<double>(bars.size());
  for (std::size_t band = 0; band < kFormBands; ++band) {
    double mean = 0, power = 0;
    for (const BarSound& bar : bars) mean += bar[band] / count;
    for (const BarSound& bar : bars) power += (bar[band] - mean) * (bar[band] - mean) / count;
    const double unit = std::sqrt(power) + 0.05;
    for (BarSound& bar : bars) bar[band] = (bar[band] - mean) / unit;
  }
  return bars;
}

double DistanceOf(const BarSound& a, const BarSound& b) {
  double sum = 0;
  for (std::size_t band = 0; band < kFormBands; ++band) sum += (a[band] - b[band]) * (a[band] - b[band]);
  return std::sqrt(sum / kFormBands);
}

/// How much more the bars on both sides differ than those on one side (Foote, 2000).
double ContrastAt(const std::vector<BarSound>& bars, std::size_t at) {
  const std::size_t reach = std::min({kContrastBars, at, bars.size() - at});
  if (reach == 0) return 0;
  double across = 0, inside = 0;
  int inside_pairs = 0;
  for (std::size_t a = at - reach; a < at + reach; ++a) {
    for (std::size_t b = a + 1; b < at + reach; ++b) {
      const double distance = DistanceOf(bars[a], bars[b]);
      if (a < at && b >= at) {
        across += distance;
      } else {
        inside += distance;
        ++inside_pairs;
      }
    }
  }
  return across / static_cast<double>(reach * reach) - (inside_pairs > 0 ? inside / inside_pairs : 0);
}

/// Bars at which another part begins: peaks of the contrast, on the multiples of four bars that most agree on
/// unless one stands out by itself.
std::vector<std::size_t> EdgesIn(const std::vector<BarSound>& bars) {
  std::vector<double> contrast(bars.size() + 1);
  for (std::size_t at = 1; at < bars.size(); ++at) contrast[at] = ContrastAt(bars, at);
  double mean = 0, power = 0;
  for (const double c : contrast) mean += c / static_cast<double>(contrast.size());
  for (const double c : contrast) power += (c - mean) * (c - mean) / static_cast<double>(contrast.size());
  const double spread = std::sqrt(power);
  std::vector<std::size_t> peaks;
  std::array<double, 4> votes{};
  for (std::size_t at = 1; at < bars.size(); ++at) {
    const std::size_t from = at - std::min(at, kPeakReach), to = std::min(bars.size(), at + kPeakReach);
    const auto begin = contrast.begin();
    const double most = *std::max_element(begin + static_cast<std::ptrdiff_t>(from),
                                          begin + static_cast<std::ptrdiff_t>(to + 1));
    if (contrast[at] < most || contrast[at] <= std::max(kLeastContrast, mean + 0.15 * spread)) continue;
    peaks.push_back(at);
    votes[at % 4] += contrast[at];
  }
  const auto agreed = static_cast<std::size_t>(std::max_element(votes.begin(), votes.end()) - votes.begin());
  std::erase_if(peaks,
                [&](std::size_t at) { return at % 4 != agreed && contrast[at] <= mean + 1.5 * spread; });
  return peaks;
}

/// Levels in decibels of a part's bars.
struct PartSound {
  std::size_t bars = 0;
  double all = 0, low = 0;
  double rise = 0;  ///< of all, from its first third to its last
};

double Decibels(double nepers) {
  return 4.342944819 * nepers;
}

PartSound SoundOf(std::span<const BarSound> bars) {
  const auto power = [](std::span<const BarSound> part, std::size_t bands) {
    double sum = 0;
    for (const BarSound& bar : part) {
      for (std::size_t band = 0; band < bands; ++band) sum += std::exp(bar[band]);
    }
    return Decibels(std::log(sum / static_cast<double>(std::max<std::size_t>(1, part.size())) + 1e-9));
  };
  const std::size_t third = std::max<std::size_t>(1, bars.size() / 3);
  return {bars.size(), power(bars, kFormBands), power(bars, kLowBands),
          power(bars.last(third), kFormBands) - power(bars.first(third), kFormBands)};
}

/// By how loud the parts are beside the loudest and beside their neighbours.
music::SectionKind KindOf(const std::vector<PartSound>& parts, std::size_t at, const PartSound& loudest) {
  using music::SectionKind;
  const PartSound& part = parts[at];
  const bool full = part.low > loudest.low - 2.5 && part.all > loudest.all - 2.5;
  if (at == 0) return full ? SectionKind::Other : SectionKind::Intro;
  if (at + 1 == parts.size()) return full ? SectionKind::Other : SectionKind::Outro;
  const bool rises = part.low > parts[at - 1].low + 3 || part.all > parts[at - 1].all + 2;
  if (full && rises) return SectionKind::Drop;
  const bool bare = part.low < loudest.low - 6;
  const bool next_full = parts[at + 1].low > loudest.low - 2.5 && parts[at + 1].all > loudest.all - 2.5;
  if (next_full && !full && part.bars <= 16 && part.rise > 2) return SectionKind::Build;
  if (bare) return SectionKind::Break;
  return full ? SectionKind::Other : SectionKind::Verse;
}

}  // namespace

std::vector<music::Section> FindSections(std::span<const BeatSound> beats, int first_beat,
                                         const music::BeatGrid& grid, music::Seconds length) {
  const auto first = static_cast<std::size_t>(first_beat);
  const std::vector<BarSound> bars = BarsOf(beats, first);
  if (bars.size() < kFewestBars) return {};
  std::vector<std::size_t> edges = EdgesIn(Standardised(bars));
  if (edges.empty()) return {};
  edges.insert(edges.begin(), 0);
  edges.push_back(bars.size());
  std::vector<PartSound> parts;
  PartSound loudest{0, -1e9, -1e9, 0};
  for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
    parts.push_back(SoundOf(std::span(bars).subspan(edges[i], edges[i + 1] - edges[i])));
    loudest.all = std::max(loudest.all, parts.back().all);
    loudest.low = std::max(loudest.low, parts.back().low);
  }
  std::vector<music::Section> sections;
  music::Seconds start{0};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::size_t end_beat = first + edges[i + 1] * music::kBeatsPerBar;
    const music::Seconds end = i + 1 == parts.size() ? length : std::min(length, grid.Beats()[end_beat]);
    sections.push_back({start, end, KindOf(parts, i, loudest)});
    start = end;
  }
  return sections;
}

}  // namespace decks
