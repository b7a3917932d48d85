// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <map>
#include <string>
#include <utility>

#include "lightorgan/ports/BankSource.h"
#include "lightorgan/ports/Music.h"

namespace lightorgan::testing {

/// A tone of magnitude 0.5 in one bin.
inline Bins Tone(int bin, float magnitude = 0.5F) {
  Bins bins{};
  bins[static_cast<std::size_t>(bin)] = magnitude;
  return bins;
}

/// Spectra and beats as a test sets them.
class FakeMusic final : public SpectrumSource, public BeatSource {
 public:
  std::optional<Bins> mixed, left, right;
  std::optional<HeardBeat> beat;
  bool playing = true;

  std::optional<Bins> Spectrum(Channels channels) override {
    return channels == Channels::Mixed ? mixed : channels == Channels::Left ? left : right;
  }
  bool AnyPlaying() override { return playing; }
  std::optional<HeardBeat> LastBeat(std::chrono::microseconds) override { return beat; }
};

/// Bank files as texts.
class FakeBanks final : public BankSource {
 public:
  std::map<std::string, std::string, std::less<>> files;

  void Load(Side side, IoBoardSize size, int number, std::function<void(StepTable)> done) override {
    const auto found = files.find(BankFileName(side, size));
    done(LoadBank(found == files.end() ? "" : found->second, side, number, size));
  }
};

}  // namespace lightorgan::testing
