// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/AnalysisPass.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "decks/FormFinder.h"
#include "decks/GridFit.h"
#include "decks/KeyFinder.h"
#include "decks/StreamBuild.h"
#include "music/TrackForm.h"

namespace decks {
namespace {

constexpr std::size_t kFramesAStep = 65536;

}  // namespace

struct AnalysisPass::Finders {
  Finders(const SampleFormat& format, const AnalysisTools& tools)
      : wave(format.sample_rate, format.channels), mono(format.sample_rate, format.channels) {
    if (tools.meters != nullptr) loudness = tools.meters->Make(format.sample_rate, format.channels);
    if (tools.trackers != nullptr) beats = tools.trackers->Make(mono.OutputRate());
    if (beats == nullptr) return;
    key.emplace(mono.OutputRate());
    form.emplace(mono.OutputRate());
  }

  void AddSong(std::span<const std::int16_t> samples) {
    const std::span<const float> one = mono.Take(samples);
    beats->Add(one);
    key->Add(one);
    form->Add(one);
  }

  music::WaveBuilder wave;
  music::MonoFeed mono;
  std::unique_ptr<LoudnessMeter> loudness;
  std::unique_ptr<BeatTracker> beats;
  // With the beats, or not at all.
  std::optional<KeyFinder> key;
  std::optional<FormFinder> form;
};

AnalysisPass::AnalysisPass(AudioEngine& engine, SoundControl& sound, const AnalysisTools& tools,
                           std::string filename)
    : engine_(engine), sound_(sound), tools_(tools), filename_(std::move(filename)) {}

AnalysisPass::~AnalysisPass() = default;

bool AnalysisPass::Open() {
  stream_ = CreateDecoder(engine_, filename_, StreamTypeOf(filename_), 0, kStreamDecode);
  if (stream_ == 0) return false;
  format_ = sound_.FormatOf(stream_);
  if (format_.sample_rate <= 0 || format_.channels <= 0) {
    Close();
    return false;
  }
  finders_ = std::make_unique<Finders>(format_, tools_);
  piece_.resize(kFramesAStep * static_cast<std::size_t>(format_.channels));
  return true;
}

bool AnalysisPass::Step() {
  if (!std::exchange(opened_, true) && !Open()) return false;
  if (stream_ == 0) return false;
  const std::uint32_t bytes =
      engine_.BASS_ChannelGetData(stream_, piece_, static_cast<std::uint32_t>(2 * piece_.size()));
  const auto channels = static_cast<std::size_t>(format_.channels);
  const std::size_t frames = std::min<std::size_t>(bytes / 2, piece_.size()) / channels;
  const auto samples = std::span<const std::int16_t>(piece_).first(frames * channels);
  finders_->wave.Add(samples);
  if (finders_->loudness != nullptr) finders_->loudness->Add(samples);
  const bool song = frames_ < std::chrono::seconds(kLongestForBeats).count() * format_.sample_rate;
  if (finders_->beats != nullptr && song) finders_->AddSong(samples);
  frames_ += static_cast<std::int64_t>(frames);
  expected_frames_ = engine_.BASS_ChannelGetLength(stream_).value / (2 * format_.channels);
  if (frames == 0) Close();
  return frames > 0;
}

void AnalysisPass::Close() {
  if (stream_ != 0) engine_.BASS_StreamFree(std::exchange(stream_, 0));
}

double AnalysisPass::Progress() const {
  if (expected_frames_ <= 0) return 0;
  return std::min(1.0, static_cast<double>(frames_) / static_cast<double>(expected_frames_));
}

music::Wave AnalysisPass::WaveSoFar() const {
  if (finders_ == nullptr) return {};
  return finders_->wave.SoFar(static_cast<double>(expected_frames_) / format_.sample_rate);
}

music::TrackAnalysis AnalysisPass::Finish() {
  music::TrackAnalysis found;
  found.wave = std::make_shared<const music::Wave>();
  found.grid = std::make_shared<const music::BeatGrid>();
  found.form = std::make_shared<const music::TrackForm>();
  if (finders_ == nullptr) return found;
  found.length = {frames_};
  found.sample_rate = format_.sample_rate;
  found.channels = format_.channels;
  found.wave = std::make_shared<const music::Wave>(finders_->wave.Finish());
  if (finders_->loudness != nullptr) found.loudness = finders_->loudness->Finish();
  const music::Seconds length(static_cast<double>(frames_) / format_.sample_rate);
  found.grid = std::make_shared<const music::BeatGrid>(FindGrid(*found.wave, length));
  found.form = std::make_shared<const music::TrackForm>(FindForm(*found.grid, length));
  finders_.reset();
  return found;
}

music::BeatGrid AnalysisPass::FindGrid(const music::Wave& wave, music::Seconds length) {
  if (finders_->beats == nullptr) return {};
  return FitGrid(finders_->beats->Finish(), wave, length);
}

music::TrackForm AnalysisPass::FindForm(const music::BeatGrid& grid, music::Seconds length) const {
  music::TrackForm form;
  if (finders_->beats == nullptr) return form;
  if (const auto found = finders_->key->Finish()) {
    form.key = found->key;
    form.key_confidence = found->confidence;
  }
  const std::vector<BeatSound> beats = finders_->form->BeatsOn(grid);
  const auto bars = FindBars(beats);
  if (!bars || bars->confidence < kSureOfBars) return form;
  form.bar = grid.Beats()[static_cast<std::size_t>(bars->beat)];
  form.bar_confidence = bars->confidence;
  form.sections = FindSections(beats, bars->beat, grid, length);
  return form;
}

}  // namespace decks
