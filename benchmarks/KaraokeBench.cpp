// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <glib.h>  // before smf.h, which would wrap it in extern "C"

#include <smf.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "benchmarks/Bench.h"
#include "karaoke/SongSound.h"
#include "karaoke/testing/MidiBytes.h"
#include "platform/files/testing/TestFolder.h"
#include "platform/midi/FluidSynthesisers.h"

namespace bench {
namespace {

using karaoke::testing::TrackBytes;

/// A song as they are sold: five instruments, some thousand events, three hundred syllables.
std::string SongBytes(int number) {
  std::vector<TrackBytes> tracks{
      karaoke::testing::UsualHead().Tempo(0, 450'000U + static_cast<unsigned>(number)).End()};
  TrackBytes words;
  words.Name("Words").Text(0, "@LENGL").Text(0, "@TSong " + std::to_string(number)).Text(0, "@TSinger");
  for (int i = 0; i < 300; ++i) words.Text(240, i % 12 == 0 ? "/And " : i % 3 == 0 ? "la " : "lo");
  tracks.push_back(words.End());
  for (int channel = 0; channel < 5; ++channel) {
    TrackBytes notes;
    notes.Event(0, {0xC0 | channel, number % 128});
    for (int i = 0; i < 400; ++i) {
      notes.Event(120, {0x90 | channel, 48 + (i * 7 + number) % 24, 90})
          .Event(60, {48 + (i * 7 + number) % 24, 0});
      if (i % 8 == 0) notes.Event(0, {0xB0 | channel, 7, i % 128}).Event(0, {0x90 | channel, 40, 1});
    }
    tracks.push_back(notes.End());
  }
  return karaoke::testing::FileBytes(tracks);
}

template <typename Read>
double FilesPerSecond(const std::vector<std::string>& paths, const Read& read) {
  const auto begin = std::chrono::steady_clock::now();
  for (const std::string& path : paths) read(path);
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
  return static_cast<double>(paths.size()) / took.count();
}

Figure MeasureReading() {
  constexpr int kSongs = 2000;
  constexpr int kReadingRuns = 3;
  const platform::files::testing::TestFolder folder;
  std::vector<std::string> paths;
  for (int i = 0; i < kSongs; ++i) {
    folder.Write(std::to_string(i) + ".kar", SongBytes(i));
    paths.push_back((folder / (std::to_string(i) + ".kar")).string());
  }
  std::vector<double> ours, reference;
  for (int run = 0; run < kReadingRuns; ++run) {
    ours.push_back(FilesPerSecond(paths, [](const std::string& path) {
      const auto bytes = karaoke::ReadSongBytes(path);
      if (!bytes || karaoke::ReadSong(bytes.Value()).syllables.size() != 300) std::abort();
    }));
    reference.push_back(FilesPerSecond(paths, [](const std::string& path) {
      smf_t* song = smf_load(path.c_str());
      if (song == nullptr) std::abort();
      smf_delete(song);
    }));
  }
  return {"read a karaoke song with its words (libsmf, events only)", "files/s", Median(ours),
          Median(reference), "at least 3 times it"};
}

/// A stick on every quarter note of 300 seconds whose tempo changes with each; milliseconds between the
/// frame at which each is due and the frame at which it is heard.
std::vector<double> OnsetErrors() {
  constexpr int kRate = 44100;
  constexpr int kChanges = 600;
  TrackBytes track = karaoke::testing::UsualHead();
  for (int i = 0; i < kChanges; ++i) {
    track.Tempo(i == 0 ? 97 : 380, i % 2 == 0 ? 483'871 : 516'129).Event(0, {0x99, 37, 127});
    track.Event(100, {0x89, 37, 0});
  }
  platform::midi::FluidSynthesisers synthesisers;
  auto sound =
      karaoke::SongSound::Open(karaoke::testing::FileBytes({track.End(480)}), {}, synthesisers, "", kRate);
  if (!sound) std::abort();
  std::vector<float> left(static_cast<std::size_t>(sound.Value()->Length())), right(left.size());
  sound.Value()->Voice(0).Begin(0);
  sound.Value()->Voice(0).Make(left, right);
  std::vector<double> errors;
  for (const karaoke::SongEvent& event : sound.Value()->Events().events) {
    if (!event.message.IsNoteOn()) continue;
    const double due = std::chrono::duration<double>(event.at).count() * kRate;
    const auto from = left.begin() + static_cast<std::ptrdiff_t>(due) - 200;
    const float before = *std::max_element(from - 400, from);
    const auto onset = std::find_if(from, from + 1000, [&](float s) { return s > before + 0.01F; });
    errors.push_back(std::abs(static_cast<double>(onset - left.begin()) - due) * 1000 / kRate);
  }
  return errors;
}

}  // namespace

std::vector<Figure> MeasureKaraoke() {
  const std::vector<double> errors = OnsetErrors();
  const std::ptrdiff_t some = 60;
  std::vector<Figure> figures{
      MeasureReading(),
      {"a note's distance from its time, first 60 of 600 tempo changes", "ms",
       *std::max_element(errors.begin(), errors.begin() + some), std::nullopt, "under 1.5"},
      {"the same, last 60", "ms", *std::max_element(errors.end() - some, errors.end()), std::nullopt,
       "under 1.5"}};
  for (Figure& figure : MeasureLyrics()) figures.push_back(std::move(figure));
  return figures;
}

}  // namespace bench
