// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <BPMDetect.h>
#include <aubio/aubio.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

#include "benchmarks/Bench.h"
#include "benchmarks/TempoSongs.h"
#include "decks/GridFit.h"
#include "music/MonoFeed.h"
#include "platform/analysis/QmBeatTrackers.h"

namespace bench {
namespace {

/// Never used while the finders were made.
constexpr std::uint64_t kFirstSeed = 1000;
constexpr std::uint64_t kSongs = 100;

std::vector<float> Mono(const TempoSong& song) {
  std::vector<float> mono(song.samples.size() / 2);
  for (std::size_t i = 0; i < mono.size(); ++i) {
    mono[i] = static_cast<float>(song.samples[2 * i] + song.samples[2 * i + 1]) / 65536;
  }
  return mono;
}

double TempoOfBeats(const std::vector<double>& beats) {
  if (beats.size() < 2) return 0;
  std::vector<double> gaps;
  for (std::size_t i = 1; i < beats.size(); ++i) gaps.push_back(beats[i] - beats[i - 1]);
  return 60 / Median(gaps);
}

decks::TrackedBeats Track(const TempoSong& song) {
  music::MonoFeed feed(44100, 2);
  const auto tracker = platform::analysis::QmBeatTrackers().Make(feed.OutputRate());
  tracker->Add(feed.Take(song.samples));
  return tracker->Finish();
}

double PlainTracker(const decks::TrackedBeats& heard) {
  std::vector<double> beats;
  for (const music::Seconds beat : heard.beats) beats.push_back(beat.count());
  return TempoOfBeats(beats);
}

double Ours(const decks::TrackedBeats& heard, const TempoSong& song) {
  music::WaveBuilder wave(44100, 2);
  wave.Add(song.samples);
  const music::Seconds length(static_cast<double>(song.samples.size()) / 88'200);
  return decks::FitGrid(heard, wave.Finish(), length).Nominal().value;
}

double Aubio(std::vector<float> mono) {
  constexpr uint_t kHop = 512;
  const std::unique_ptr<aubio_tempo_t, void (*)(aubio_tempo_t*)> tempo(
      new_aubio_tempo("default", 1024, kHop, 44100), del_aubio_tempo);
  const std::unique_ptr<fvec_t, void (*)(fvec_t*)> out(new_fvec(1), del_fvec);
  std::vector<double> tempi;
  for (std::size_t from = 0; from + kHop <= mono.size(); from += kHop) {
    fvec_t in{kHop, mono.data() + from};
    aubio_tempo_do(tempo.get(), &in, out.get());
    if (out->data[0] != 0) tempi.push_back(static_cast<double>(aubio_tempo_get_bpm(tempo.get())));
  }
  return tempi.empty() ? 0 : Median(tempi);
}

double SoundTouchTempo(const std::vector<float>& mono) {
  soundtouch::BPMDetect detect(1, 44100);
  constexpr std::size_t kPiece = 4096;
  for (std::size_t from = 0; from + kPiece <= mono.size(); from += kPiece) {
    detect.inputSamples(mono.data() + from, kPiece);
  }
  return static_cast<double>(detect.getBpm());
}

}  // namespace

std::vector<Figure> MeasureTempo() {
  int ours = 0, tracker = 0, aubio = 0, soundtouch = 0;
  for (std::uint64_t seed = kFirstSeed; seed < kFirstSeed + kSongs; ++seed) {
    const TempoSong song = MakeTempoSong(seed);
    const auto right = [&](double bpm) { return std::abs(bpm / song.bpm - 1) < 0.01 ? 1 : 0; };
    const decks::TrackedBeats heard = Track(song);
    const std::vector<float> mono = Mono(song);
    ours += right(Ours(heard, song));
    tracker += right(PlainTracker(heard));
    aubio += right(Aubio(mono));
    soundtouch += right(SoundTouchTempo(mono));
  }
  return {
      {"Tempo right within 1 %, beside the tracker's plain answer", "of 100", double(ours), double(tracker),
       "better"},
      {"Tempo right within 1 %, beside aubio", "of 100", double(ours), double(aubio), "better"},
      {"Tempo right within 1 %, beside SoundTouch", "of 100", double(ours), double(soundtouch), "better"}};
}

}  // namespace bench
