// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <span>
#include <string>

#include "benchmarks/Bench.h"
#include "benchmarks/VirtualDeck.h"
#include "engine/PeakingEqualiser.h"
#include "engine/effects/EffectChain.h"
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
  decks::EffectSettings effects{};
};

/// Shares of the period that the callback takes while four streams play, one of them faster with key lock.
std::vector<double> RenderShares(const std::string& path, const Besides& besides = {}) {
  VirtualDeck deck;
  deck.Prepare(path);
  if (besides.metered) deck.Engine().Desk().Direct({{decks::SpeakerPair{1, 0}, {1, 0}}, {}, {}});
  int number = 0;
  for (const float tempo : {0.0F, kFaster, 0.0F, -kFaster}) {
    const decks::StreamHandle stream = deck.Play(path, tempo);
    deck.Engine().Desk().SetTone(stream, besides.tone);
    deck.Engine().Effects().SetEffects(++number, stream, besides.effects);
  }
  deck.Advance(std::chrono::seconds(1));
  deck.Timing().Forget();
  deck.Advance(std::chrono::seconds(30));
  return deck.Timing().Shares();
}

/// CPU seconds for a second of sound of one stream, whose noise goes through an effect alone.
double EffectCpu(engine::StreamEffect& effect) {
  constexpr int kPiece = 256;
  std::vector<float> noise(static_cast<std::size_t>(2 * 44100));
  unsigned state = 1;
  for (float& sample : noise) {
    state = state * 1'664'525 + 1'013'904'223;
    sample = static_cast<float>(state >> 8) / static_cast<float>(1U << 25) - 0.25F;
  }
  std::vector<float> piece(kPiece);
  const double begin = ThreadCpuSeconds();
  for (int second = 0; second < kSeconds; ++second) {
    for (std::size_t at = 0; at + kPiece <= noise.size(); at += kPiece) {
      std::copy_n(noise.begin() + static_cast<std::ptrdiff_t>(at), kPiece, piece.begin());
      effect.Process(piece);
    }
  }
  return (ThreadCpuSeconds() - begin) / kSeconds;
}

decks::EffectSettings AllEffects() {
  decks::EffectSettings all;
  all.filter.position = -0.4F;
  all.low_pass = {true, 3000, 2};
  all.flanger.on = all.echo.on = all.echo3.on = all.reverb.on = all.swap = all.rotate.on = true;
  return all;
}

Figure EffectFigure(const std::string& name, const decks::EffectSettings& settings) {
  std::vector<double> runs;
  for (int run = 0; run < 3; ++run) {
    engine::EffectChain chain(44100, settings);
    runs.push_back(100 * EffectCpu(chain));
  }
  return {"a deck's " + name, "% of a core", Median(runs), {}, ""};
}

double TenBandsCpu() {
  engine::PeakingEqualiser bands(44100);
  for (int band = 0; band < engine::PeakingEqualiser::kBands; ++band) {
    bands.AddBand();
    bands.Set({band, 44100, 2.5F, 0, 80.0F * std::exp2(static_cast<float>(band) * 0.8F), 4});
  }
  return 100 * EffectCpu(bands);
}

struct NamedEffect {
  const char* name;
  void (*take)(decks::EffectSettings& one, const decks::EffectSettings& all);
};
constexpr NamedEffect kEffects[] = {
    {"filter", [](auto& one, const auto& all) { one.filter = all.filter; }},
    {"low pass", [](auto& one, const auto& all) { one.low_pass = all.low_pass; }},
    {"flanger", [](auto& one, const auto& all) { one.flanger = all.flanger; }},
    {"echo", [](auto& one, const auto& all) { one.echo = all.echo; }},
    {"reverb", [](auto& one, const auto& all) { one.reverb = all.reverb; }},
    {"rotate", [](auto& one, const auto& all) { one.rotate = all.rotate; }}};

std::vector<Figure> MeasureEffects() {
  const decks::EffectSettings all = AllEffects();
  std::vector<Figure> figures{{"a deck's ten bands alone", "% of a core", TenBandsCpu(), {}, ""},
                              EffectFigure("effects, all off", {})};
  for (const auto& [name, take] : kEffects) {
    decks::EffectSettings one;
    take(one, all);
    figures.push_back(EffectFigure(name, one));
  }
  figures.push_back(EffectFigure("effects, all on", all));
  return figures;
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
  std::vector<double> full;
  const long faults = support::testing::CountRealtimeFaults([&] {
    shares = RenderShares(track);
    full = RenderShares(track, {.effects = AllEffects()});
  });
  for (std::vector<double>* some : {&shares, &full}) {
    for (double& share : *some) share *= 100;
  }
  const auto usual = [&](const Besides& besides) {
    std::vector<double> with = RenderShares(track, besides);
    return 100 * Percentile(with, 0.5);
  };
  const double metered = usual({.metered = true});
  const double toned = usual({.tone = {{-6}, {2}, {3}}});
  const std::vector<double> opening = OpeningTimes(tone);
  std::vector<Figure> figures{
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
      {"Render, four streams with all effects, p99", "% of the period", Percentile(full, 0.99), {}, ""},
      {"heap calls and locks inside Render", "calls", static_cast<double>(faults), {}, "0"},
      {"opening an ogg until its first sound, p50", "ms", Percentile(opening, 0.5), {}, ""},
      {"opening an ogg until its first sound, p99", "ms", Percentile(opening, 0.99), {}, ""},
  };
  const std::vector<Figure> effects = MeasureEffects();
  figures.insert(figures.end(), effects.begin(), effects.end());
  return figures;
}

}  // namespace bench
