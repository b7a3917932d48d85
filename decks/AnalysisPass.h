// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "decks/ports/AudioEngine.h"
#include "decks/ports/BeatTracker.h"
#include "decks/ports/LoudnessMeter.h"
#include "decks/ports/SoundControl.h"
#include "music/MonoFeed.h"
#include "music/TrackAnalysis.h"

namespace decks {

/// The libraries that an analysis uses; what is null is left out of it.
struct AnalysisTools {
  LoudnessMeters* meters = nullptr;
  BeatTrackers* trackers = nullptr;
};

/// Reads a whole file once, through a decoding stream of its own, and makes its wave, loudness, beat grid,
/// key, bars and sections, a piece at a time, so that other work gets its turn.
///
/// Owns: the stream, until the end is read or Close; one that is left open is freed with the engine.
/// Law: beats, key and sections are looked for in the first kLongestForBeats; what is longer is no song but a
/// set, which has no one tempo. Threads: a worker, one at a time.
class AnalysisPass {
 public:
  static constexpr std::chrono::minutes kLongestForBeats{30};

  AnalysisPass(AudioEngine& engine, SoundControl& sound, const AnalysisTools& tools, std::string filename);
  ~AnalysisPass();

  /// Reads about a second and a half; false when there is no more.
  bool Step();
  void Close();
  /// 0 to 1, by the length that the file's header promises.
  [[nodiscard]] double Progress() const;
  /// The wave as far as it was read, to be shown meanwhile.
  [[nodiscard]] music::Wave WaveSoFar() const;
  /// Of all that was read; nothing but an empty wave of a file that could not be opened. The mix points are
  /// MixPointScan's. Requires: Step was false; called once.
  [[nodiscard]] music::TrackAnalysis Finish();

 private:
  struct Finders;
  bool Open();
  [[nodiscard]] music::BeatGrid FindGrid(const music::Wave& wave, music::Seconds length);
  [[nodiscard]] music::TrackForm FindForm(const music::BeatGrid& grid, music::Seconds length) const;

  AudioEngine& engine_;
  SoundControl& sound_;
  const AnalysisTools tools_;
  const std::string filename_;
  bool opened_ = false;
  StreamHandle stream_ = 0;
  SampleFormat format_;
  std::int64_t frames_ = 0;
  std::int64_t expected_frames_ = 0;
  std::unique_ptr<Finders> finders_;  // null until the file is open
  std::vector<std::int16_t> piece_;
};

}  // namespace decks
