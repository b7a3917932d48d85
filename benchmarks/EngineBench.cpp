// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <chrono>
#include <span>
#include <string>

#include "benchmarks/Bench.h"
#include "benchmarks/VirtualDeck.h"
#include "platform/codec/testing/MediaMaker.h"
#include "support/testing/RealtimeGuard.h"

namespace bench {
namespace {

using platform::codec::testing::MediaMaker;
using platform::codec::testing::Noise;
using platform::codec::testing::Seconds;
using platform::codec::testing::Sound;
using platform::codec::testing::Tone;
using platform::codec::testing::Voice;

constexpr int kRuns = 5;
constexpr int kSeconds = 60;
constexpr float kFaster = 4;

/// CPU seconds for a second of sound of one deck, decoding included.
double DeckCpu(const std::string& path, float tempo_percent) {
  VirtualDeck deck;
  const double begin = ThreadCpuSeconds();
  deck.Prepare(path);
  deck.Play(path, tempo_percent);
  const int played = static_cast<int>(kSeconds / (1 + tempo_percent / 100));
  deck.Advance(std::chrono::seconds(played));
  return (ThreadCpuSeconds() - begin) / played;
}

/// The decoder and the stretcher called alone on the same file, for a second of sound.
double LibrariesCpu(const std::string& path, double ratio) {
  platform::codec::FfmpegDecoderFactory decoders;
  platform::stretch::LibraryStretcherFactory stretchers;
  const double begin = ThreadCpuSeconds();
  auto decoder = decoders.Open(path, engine::DecoderKind::General);
  const auto stretcher = stretchers.MakeStretcher(engine::StretchQuality::Best, 44100);
  stretcher->SetTempo(ratio);
  std::vector<std::int16_t> samples(2 * 4096);
  std::vector<float> left(4096), right(4096);
  std::int64_t made = 0;
  while (true) {
    const auto frames = decoder.Value()->Read(samples);
    if (!frames || frames.Value() == 0) break;
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames.Value()); ++i) {
      left[i] = samples[2 * i] / 32768.0F;
      right[i] = samples[2 * i + 1] / 32768.0F;
    }
    stretcher->Put(std::span(left).first(static_cast<std::size_t>(frames.Value())),
                   std::span(right).first(static_cast<std::size_t>(frames.Value())));
    while (stretcher->Available() > 0) made += stretcher->Take(left, right);
  }
  return (ThreadCpuSeconds() - begin) / (static_cast<double>(made) / 44100);
}

/// What the callback does besides.
struct Besides {
  bool metered = false;
  decks::Tone tone{};
};

/// Shares of the period that the callback takes while four streams play, one of them faster with key lock.
std::vector<double> RenderShares(const std::string& path, const Besides& besides = {}) {
  VirtualDeck deck;
  deck.Prepare(path);
  if (besides.metered) deck.Engine().Desk().Direct({{decks::SpeakerPair{1, 0}, {1, 0}}, {}, {}});
  for (const float tempo : {0.0F, kFaster, 0.0F, -kFaster}) {
    deck.Engine().Desk().SetTone(deck.Play(path, tempo), besides.tone);
  }
  deck.Advance(std::chrono::seconds(1));
  deck.Timing().Forget();
  deck.Advance(std::chrono::seconds(30));
  return deck.Timing().Shares();
}

/// Milliseconds from the wish until sound comes out: the computer's own, and what passes on the virtual
/// clock.
std::vector<double> OpeningTimes(const std::string& path) {
  std::vector<double> times;
  for (int i = 0; i < 100; ++i) {
    VirtualDeck deck;
    deck.Advance(std::chrono::milliseconds(100 + i));
    const auto begin = std::chrono::steady_clock::now();
    deck.Prepare(path);
    deck.Play(path, 0);
    const std::chrono::duration<double, std::milli> prepared = std::chrono::steady_clock::now() - begin;
    times.push_back(prepared.count() +
                    std::chrono::duration<double, std::milli>(deck.AdvanceToSound()).count());
  }
  return times;
}

}  // namespace

std::vector<Figure> MeasureEngine() {
  const MediaMaker media;
  Sound sound = Noise(Seconds(kSeconds), 0.2);
  const std::string track = media.Write("track.mp3", sound);
  const std::string tone = media.Write("tone.ogg", Tone(Seconds(20), Voice{}));

  std::vector<double> ours, reference, plain;
  for (int run = 0; run < kRuns; ++run) {
    ours.push_back(100 * DeckCpu(track, kFaster));
    reference.push_back(100 * LibrariesCpu(track, 1 + kFaster / 100));
    plain.push_back(100 * DeckCpu(track, 0));
  }
  std::vector<double> shares;
  const long faults = support::testing::CountRealtimeFaults([&] { shares = RenderShares(track); });
  for (double& share : shares) share *= 100;
  const auto usual = [&](const Besides& besides) {
    std::vector<double> with = RenderShares(track, besides);
    return 100 * Percentile(with, 0.5);
  };
  const double metered = usual({.metered = true});
  const double toned = usual({.tone = {{-6}, {2}, {3}}});
  const std::vector<double> opening = OpeningTimes(tone);
  return {
      {"one deck at +4 %, key lock, mp3, beside decoder and stretcher alone", "% of a core", Median(ours),
       Median(reference), "ratio at most 1.2"},
      {"one deck at its own tempo, mp3", "% of a core", Median(plain), {}, ""},
      {"Render, four streams, p50", "% of the period", Percentile(shares, 0.5), {}, ""},
      {"Render, four streams and the hall's meter, p50, beside none", "% of the period", metered,
       Percentile(shares, 0.5), ""},
      {"Render, four streams with their three bands engaged, p50, beside none", "% of the period", toned,
       Percentile(shares, 0.5), ""},
      {"Render, four streams, p99", "% of the period", Percentile(shares, 0.99), {}, ""},
      {"Render, four streams, largest", "% of the period", Percentile(shares, 1), {}, "under 25"},
      {"heap calls and locks inside Render", "calls", static_cast<double>(faults), {}, "0"},
      {"opening an ogg until its first sound, p50", "ms", Percentile(opening, 0.5), {}, ""},
      {"opening an ogg until its first sound, p99", "ms", Percentile(opening, 0.99), {}, ""},
  };
}

}  // namespace bench
