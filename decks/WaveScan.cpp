// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/WaveScan.h"

#include <algorithm>
#include <utility>

#include "decks/StreamBuild.h"

namespace decks {
namespace {

constexpr std::size_t kFramesAStep = 65536;

}  // namespace

WaveScan::WaveScan(AudioEngine& engine, std::string filename, SampleFormat format)
    : engine_(engine),
      filename_(std::move(filename)),
      builder_(std::max(1, format.sample_rate), std::max(1, format.channels)),
      piece_(kFramesAStep * static_cast<std::size_t>(std::max(1, format.channels))) {}

bool WaveScan::Step() {
  if (!opened_) stream_ = CreateDecoder(engine_, filename_, StreamTypeOf(filename_), 0, kStreamDecode);
  opened_ = true;
  if (stream_ == 0) return false;
  const std::uint32_t bytes =
      engine_.BASS_ChannelGetData(stream_, piece_, static_cast<std::uint32_t>(2 * piece_.size()));
  builder_.Add(std::span(piece_).first(std::min<std::size_t>(bytes / 2, piece_.size())));
  if (bytes == 0) Close();
  return bytes > 0;
}

void WaveScan::Close() {
  if (stream_ != 0) engine_.BASS_StreamFree(std::exchange(stream_, 0));
}

}  // namespace decks
