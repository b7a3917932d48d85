// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/clsMp3Info.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "support/Text.h"

namespace decks {
namespace {

const double kStepdB = 5 * std::log10(2.0);  // a step of the gain field is the fourth root of 2
constexpr double kFullScale = 32767;
constexpr double kReferencedB = 89;
constexpr double kMostdB = 500;
constexpr double kLoudestSample = 1e9;

std::optional<double> RealWithin(std::string_view token, double lowest, double highest) {
  const auto value = support::ParseReal(support::Trim(token));
  return value && *value >= lowest && *value <= highest ? value : std::nullopt;
}

std::optional<int> Integer(std::string_view token) {
  const auto value = support::ParseInteger(support::Trim(token));
  if (!value || *value < std::numeric_limits<int>::min() || *value > std::numeric_limits<int>::max()) {
    return std::nullopt;
  }
  return static_cast<int>(*value);
}

int Steps(double decibels) {
  return static_cast<int>(std::lround(decibels / kStepdB));
}

/// The text with a tab for each CR LF.
std::string OnOneLine(std::string_view output) {
  std::string text;
  for (std::size_t i = 0; i < output.size(); ++i) {
    const bool line_end = output.substr(i, 2) == "\r\n";
    text += line_end ? '\t' : output[i];
    if (line_end) ++i;
  }
  return text;
}

}  // namespace

void clsMp3Info::AlterDb(double decibels) {
  if (!Analysed()) return;
  ModifydBGain += decibels;
  AlbumdBGain = RawAlbumdBGain - ModifydBGain;
  RadiodBGain = RawRadiodBGain - ModifydBGain;
  AlbumMp3Gain = Steps(AlbumdBGain);
  RadioMp3Gain = Steps(RadiodBGain);
}

std::optional<clsMp3Info> ParseMp3GainOutput(std::string_view output) {
  constexpr std::size_t kLongestOutput = 64 * 1024;
  const std::string text = OnOneLine(output.substr(0, kLongestOutput));
  const std::vector<std::string_view> tokens = support::Split(text, '\t');
  if (tokens.size() < 12) return std::nullopt;
  const auto gain = RealWithin(tokens[8], -kMostdB, kMostdB);
  const auto amplitude = RealWithin(tokens[9], 0, kLoudestSample);
  const auto highest = Integer(tokens[10]);
  const auto lowest = Integer(tokens[11]);
  if (!gain || !amplitude || !highest || !lowest) return std::nullopt;
  clsMp3Info info;
  info.RawAlbumdBGain = info.RawRadiodBGain = *gain;
  info.CurrMaxAmp = *amplitude;
  info.CurrMaxGain = *highest;
  info.CurrMinGain = *lowest;
  info.AlbumdBGain = *gain;  // marks it as analysed
  info.AlterDb(0);
  if (*amplitude >= 1) {
    info.MaxNoclipMp3Gain = static_cast<int>(std::floor(4 * std::log2(kFullScale / *amplitude)));
  }
  return info;
}

std::string GainText(const clsMp3Info& info) {
  return support::FormatReal(kReferencedB + info.RawRadiodBGain - info.RadiodBGain, 1);
}

}  // namespace decks
