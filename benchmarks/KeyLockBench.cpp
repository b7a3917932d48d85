// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <functional>
#include <numbers>
#include <numeric>
#include <span>
#include <string>

#include "benchmarks/Bench.h"
#include "benchmarks/VirtualDeck.h"
#include "engine/PeakingEqualiser.h"
#include "platform/codec/testing/MediaMaker.h"

namespace bench {
namespace {

using platform::codec::testing::MediaMaker;
using platform::codec::testing::Noise;
using platform::codec::testing::Seconds;

constexpr int kOutputRate = 44100;
constexpr int kFourDecks = 4;
constexpr float kLockedPercent = 4;
constexpr std::array<float, 10> kCentres{80, 170, 310, 600, 1000, 3000, 6000, 12000, 14000, 16000};

decks::PeakingBand Band(int number, float gain) {
  return {.band = number,
          .frequency = kOutputRate,
          .bandwidth = 2.5F,
          .q = 0,
          .centre = kCentres[static_cast<std::size_t>(number)],
          .gain = gain};
}

/// The gain of every band while it is moved up and down, a step each 50 ms.
float Moving(int step, int band) {
  return 6 * std::sin(static_cast<float>(step + 3 * band) * 0.2F);
}

/// CPU seconds for a second of sound of four decks with key lock and ten bands that move.
double FourDecksCpu(const std::string& path, int seconds) {
  VirtualDeck deck;
  deck.Prepare(path);
  std::array<decks::StreamHandle, kFourDecks> streams{};
  for (auto& stream : streams) {
    stream = deck.Play(path, kLockedPercent);
    for (int band = 0; band < 10; ++band) {
      deck.Engine().BASS_FX_DSP_Set(stream, decks::kPeakingEffect, 0);
      deck.Engine().BASS_FX_DSP_SetParameters(stream, decks::kPeakingEffect, Band(band, 3));
    }
  }
  deck.Advance(std::chrono::seconds(2));  // the file is decoded by then
  const double begin = ThreadCpuSeconds();
  for (int step = 0; step < seconds * 20; ++step) {
    const int band = step % 10;
    for (const auto stream : streams) {
      deck.Engine().BASS_FX_DSP_SetParameters(stream, decks::kPeakingEffect, Band(band, Moving(step, band)));
    }
    deck.Advance(std::chrono::milliseconds(50));
  }
  return (ThreadCpuSeconds() - begin) / seconds;
}

/// The same work by the stretcher and ten filters called alone.
double FourChainsCpu(int seconds) {
  platform::stretch::LibraryStretcherFactory stretchers;
  const auto stretcher = stretchers.MakeStretcher(engine::StretchQuality::Best, kOutputRate);
  stretcher->SetTempo(1 + kLockedPercent / 100);
  engine::PeakingEqualiser equaliser(kOutputRate);
  for (int band = 0; band < 10; ++band) {
    equaliser.AddBand();
    equaliser.Set(Band(band, 3));
  }
  const auto noise = Noise(Seconds(2), 0.2);
  std::vector<float> left(512), right(512), stereo(256);
  std::size_t at = 0;
  int step = 0;
  const double begin = ThreadCpuSeconds();
  for (std::int64_t made = 0; made < std::int64_t{kOutputRate} * seconds;) {
    while (stretcher->Available() == 0) {
      for (std::size_t i = 0; i < left.size(); ++i, at = (at + 1) % (noise.samples.size() / 2)) {
        left[i] = noise.samples[2 * at] / 32768.0F;
        right[i] = noise.samples[2 * at + 1] / 32768.0F;
      }
      stretcher->Put(left, right);
    }
    std::array<float, 128> l, r;
    const auto got = static_cast<std::size_t>(stretcher->Take(l, r));
    for (std::size_t i = 0; i < got; ++i) {
      stereo[2 * i] = l[i];
      stereo[2 * i + 1] = r[i];
    }
    if (made / (kOutputRate / 20) != (made + static_cast<std::int64_t>(got)) / (kOutputRate / 20)) {
      equaliser.Set(Band(step % 10, Moving(step, step % 10)));
      ++step;
    }
    equaliser.Process(std::span(stereo).first(2 * got));
    made += static_cast<std::int64_t>(got);
  }
  return kFourDecks * (ThreadCpuSeconds() - begin) / seconds;
}

/// dB that a sine at the centre of a band gains when its slider alone is moved.
double GainAtCentre(int band, float slider) {
  engine::PeakingEqualiser equaliser(kOutputRate);
  for (int i = 0; i < 10; ++i) {
    equaliser.AddBand();
    equaliser.Set(Band(i, i == band ? slider : 0));
  }
  std::vector<float> sine(2 * static_cast<std::size_t>(kOutputRate));
  const double pace =
      2 * std::numbers::pi * static_cast<double>(kCentres[static_cast<std::size_t>(band)]) / kOutputRate;
  for (std::size_t i = 0; i < sine.size(); ++i) {
    sine[i] = static_cast<float>(0.1 * std::sin(pace * static_cast<double>(i / 2)));
  }
  double before = 0, after = 0;
  const auto later = std::span(sine).subspan(sine.size() / 2);
  for (const float s : later) before += static_cast<double>(s) * static_cast<double>(s);
  equaliser.Process(sine);
  for (const float s : later) after += static_cast<double>(s) * static_cast<double>(s);
  return 10 * std::log10(after / before);
}

double WorstGainError() {
  double worst = 0;
  for (int band = 0; band < 10; ++band) {
    for (const float slider : {12.0F, -12.0F}) {
      worst = std::max(worst, std::abs(GainAtCentre(band, slider) - static_cast<double>(slider)));
    }
  }
  return worst;
}

/// Samples that ten bands at 0 dB change.
double FlatChanges() {
  engine::PeakingEqualiser equaliser(kOutputRate);
  for (int i = 0; i < 10; ++i) {
    equaliser.AddBand();
    equaliser.Set(Band(i, 0));
  }
  const auto noise = Noise(Seconds(1), 0.9);
  std::vector<float> sound(noise.samples.begin(), noise.samples.end());
  std::vector<float> same = sound;
  equaliser.Process(same);
  return static_cast<double>(
      std::inner_product(sound.begin(), sound.end(), same.begin(), 0, std::plus<>(), std::not_equal_to<>()));
}

/// Where the click lies in a stretch of sound: the middle of its energy.
double Centre(std::span<const float> sound) {
  double weight = 0, sum = 0;
  for (std::size_t i = 0; i < sound.size(); ++i) {
    const double energy = static_cast<double>(sound[i]) * static_cast<double>(sound[i]);
    weight += energy;
    sum += energy * static_cast<double>(i);
  }
  return weight > 0 ? sum / weight : 0;
}

constexpr int kClicksAtOnce = 16;
constexpr double kFasterRate = kOutputRate * (1 + kLockedPercent / 100.0);

/// The times in seconds of the clicks that come out of the next few seconds.
std::vector<double> ClickTimes(VirtualDeck& deck, double now) {
  constexpr std::size_t kHalf = 600;
  std::vector<float> sound;
  deck.Record(&sound);
  deck.Advance(std::chrono::seconds(6));
  deck.Record(nullptr);
  std::vector<double> times;
  const auto louder = [](float a, float b) { return std::abs(a) < std::abs(b); };
  const std::size_t beat = static_cast<std::size_t>(kOutputRate * 0.25 / 1.04);
  for (std::size_t at = 2 * kHalf; times.size() < kClicksAtOnce && at + 2 * beat < sound.size();) {
    const auto peak = std::max_element(sound.begin() + static_cast<std::ptrdiff_t>(at),
                                       sound.begin() + static_cast<std::ptrdiff_t>(at + beat), louder);
    const auto middle = static_cast<std::size_t>(peak - sound.begin());
    const std::size_t from = middle - kHalf;
    times.push_back(now + (static_cast<double>(from) + Centre(std::span(sound).subspan(from, 2 * kHalf))) /
                              kOutputRate);
    at = middle + beat / 2;
  }
  return times;
}

/// By how many ms the clicks of a key-locked deck lie apart from an unlocked one's.
double Apart(VirtualDeck& locked, VirtualDeck& unlocked) {
  const auto one = ClickTimes(locked, 0), other = ClickTimes(unlocked, 0);
  std::vector<double> apart;
  const double beat = 0.25 / 1.04;
  for (std::size_t i = 0; i < std::min(one.size(), other.size()); ++i) {
    const double late = one[i] - other[i];
    apart.push_back(1000 * (late - beat * std::round(late / beat)));
  }
  return Median(apart);
}

/// How far a key-locked deck drifts from an unlocked one at the same tempo over half an hour, in ms.
double Drift(const MediaMaker& media) {
  constexpr int kMinutes = 30;
  const std::string clicks = media.Write(
      "clicks.flac",
      platform::codec::testing::Clicks(Seconds((kMinutes + 2) * 60 * 1.04), 240, {kOutputRate, 1}));
  VirtualDeck locked, unlocked;
  for (VirtualDeck* deck : {&locked, &unlocked}) {
    deck->Prepare(clicks);
    const auto stream = deck->Play(clicks, deck == &locked ? kLockedPercent : 0);
    if (deck == &unlocked) deck->Engine().BASS_FX_TempoSet(stream, 0, static_cast<float>(kFasterRate), 0);
    deck->Advance(std::chrono::seconds(2));
  }
  const double before = Apart(locked, unlocked);
  for (VirtualDeck* deck : {&locked, &unlocked}) deck->Advance(std::chrono::minutes(kMinutes));
  return std::abs(Apart(locked, unlocked) - before);
}

}  // namespace

std::vector<Figure> MeasureKeyLock() {
  constexpr int kTurns = 3;
  constexpr int kStretch = 20;
  const MediaMaker media;
  const std::string track = media.Write("track.mp3", Noise(Seconds(60), 0.2));
  std::vector<double> ours, reference;
  for (int run = 0; run < kTurns; ++run) {
    ours.push_back(100 * FourDecksCpu(track, kStretch));
    reference.push_back(100 * FourChainsCpu(kStretch));
  }
  return {
      {"four decks at +4 %, key lock, ten moving bands, beside stretchers and filters alone", "% of a core",
       Median(ours), Median(reference), "ratio at most 1.15"},
      {"key-locked deck against an unlocked one after 30 minutes",
       "ms of drift",
       Drift(media),
       {},
       "under 1"},
      {"equaliser, gain at a band's centre beside a single slider at +-12, worst",
       "dB off",
       WorstGainError(),
       {},
       "0.5"},
      {"equaliser, samples that ten bands at 0 dB change", "samples", FlatChanges(), {}, "0"},
  };
}

}  // namespace bench
