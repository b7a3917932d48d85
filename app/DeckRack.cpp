// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/DeckRack.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "app/sound/MasterVolume.h"
#include "support/Text.h"

namespace app {
namespace {

using Subject = NoticeBoard::Subject::Kind;

}  // namespace

DeckRack::DeckRack(const AnalysisPorts& ports, support::Executor& workers, std::shared_ptr<WorkGate> gate,
                   std::shared_ptr<Mailbox> box, const support::Sentences& say, decks::SoundDesk* desk,
                   decks::DeckEffects* effects, decks::DeckLoops* loops)
    : engine_(ports.engine),
      sound_(ports.sound),
      box_(std::move(box)),
      say_(say),
      analyses_(ports, workers, gate, box_,
                [this, answers = box_](const support::Error& failure) {
                  answers->Post([this, failure] { Notice(SayingOf(failure)); });
                }),
      equaliser_(ports.engine),
      loudest_(ports.engine),
      outputs_(ports.engine, ports.sound, workers, std::move(gate), box_, say, decks_, notices_),
      hall_(desk) {
  for (int number = 1; number <= kDecks; ++number) {
    decks_[static_cast<std::size_t>(number - 1)] = std::make_unique<DeckStation>(
        number, engine_, sound_, controls_,
        DeckTools{analyses_, equaliser_, say_, desk, number <= kMixingDecks ? effects : nullptr,
                  number <= kMixingDecks ? loops : nullptr,
                  [this](support::Saying told) { notices_.Tell({}, std::move(told)); }},
        box_);
  }
}

void DeckRack::FollowMixer(int percent) {
  has_mixer_ = true;
  SetMainVolume(MainVolumeOf(percent));
}

void DeckRack::SetGainPercent(int percent) {
  controls_.AutomationSlider[1] = percent;
  for (const auto& deck : decks_) deck->Analyse();
}

void DeckRack::StoredEqualiser(const std::array<int, decks::kEqSliders>& sliders) {
  for (int slider = 0; slider < decks::kEqSliders; ++slider) {
    equaliser_.Eq(slider, sliders[static_cast<std::size_t>(slider)]);
  }
}

void DeckRack::SetEqualiser(int slider, int decibels) {
  equaliser_.Eq(slider, decibels);
  std::array<const decks::clsBassPlayer*, kDecks> players;
  for (std::size_t i = 0; i < players.size(); ++i) players[i] = &decks_[i]->Player();
  equaliser_.SliderChanged(slider, players);
  for (const auto& deck : decks_) deck->FollowEqualiser(slider, decibels);
}

void DeckRack::Sync(int deck, SyncStart start, int most_percent) {
  if (!BeatMatch::Matches(deck)) return;
  if (!beats_.Start(Deck(deck), Deck(BeatMatch::LeaderOf(deck)), start, most_percent)) {
    return notices_.Tell({Subject::Sync, deck}, CannotSync(deck, most_percent));
  }
  notices_.Settle({Subject::Sync, deck});
}

void DeckRack::Unsync(int deck) {
  if (BeatMatch::Matches(deck)) beats_.Stop(Deck(deck));
}

std::chrono::microseconds DeckRack::MatchForMix(int deck, std::chrono::microseconds place, int most_percent) {
  if (!BeatMatch::Matches(deck)) return place;
  const auto met = beats_.StartForMix(Deck(deck), Deck(BeatMatch::LeaderOf(deck)), place, most_percent);
  return met ? std::chrono::duration_cast<std::chrono::microseconds>(*met) : place;
}

void DeckRack::CancelMix(int deck) {
  if (BeatMatch::Matches(deck)) beats_.CancelMix(Deck(deck));
}

support::Saying DeckRack::CannotSync(int deck, int most_percent) {
  const bool known = Deck(deck).Tempo().Bpm() > 0 && Deck(BeatMatch::LeaderOf(deck)).Tempo().Bpm() > 0;
  if (!known) return {support::Sentence::TempoUnknown};
  return {support::Sentence::TemposTooFarApart, {std::to_string(most_percent)}};
}

void DeckRack::ReleaseDecks() {
  for (const auto& deck : decks_) deck->Release();
}

decks::StreamHandle DeckRack::StreamOf(HeardFrom from) {
  if (from == HeardFrom::Nothing) return 0;
  return from == HeardFrom::Song ? song_ : Deck(DeckOf(from)).Player().STRM();
}

void DeckRack::Listen(WorkstationView& view) {
  const SongPlaying song = song_playing_ ? song_playing_() : SongPlaying{};
  view.song = song.heard;
  song_ = song.stream;
  LoudestSource::Sources sources;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    const auto from = static_cast<HeardFrom>(i + 1);
    const DeckView& deck = view.decks[i];
    sources[i] = from == HeardFrom::Song
                     ? Audible{song_, song.heard.playing, song.heard.volume}
                     : Audible{StreamOf(from), deck.loaded_state == DeckView::State::Playing, deck.volume};
  }
  view.sound = loudest_.Listen(sources);
}

void DeckRack::TellOfCutShort(int deck, const WorkstationView& view) {
  const auto place = static_cast<std::size_t>(deck - 1);
  const DeckView& now = view.decks[place];
  const std::string file = now.cut_short ? now.loaded : std::string();
  if (file == std::exchange(cut_short_[place], file)) return;
  if (file.empty()) return notices_.Settle({Subject::CutShort, deck});
  const auto length = std::chrono::duration_cast<std::chrono::seconds>(now.length).count();
  notices_.Warn({Subject::CutShort, deck},
                {support::Sentence::TrackCutShort,
                 {std::to_string(deck), std::filesystem::path(file).filename().string(),
                  support::FormatMinutes(length)}});
}

std::string DeckRack::Unsaved() {
  if (saves_ == nullptr) return {};
  const SaveWatch::Unsaved unsaved = saves_->Now();
  return unsaved.files == 0 ? std::string() : say_(unsaved.why);
}

void DeckRack::Tick() {
  outputs_.Tick();
  WorkstationView& view = views_.Draft();
  for (std::size_t i = 0; i < decks_.size(); ++i) decks_[i]->Tick(view.decks[i]);
  for (int number = 1; number <= BeatMatch::kMatched; ++number) {
    if (const int most = beats_.Tick(Deck(number), Deck(BeatMatch::LeaderOf(number)))) {
      notices_.Tell({Subject::Sync, number}, CannotSync(number, most));
    }
    beats_.Show(number, view.decks[static_cast<std::size_t>(number - 1)]);
  }
  for (int number = 1; number <= kDecks; ++number) TellOfCutShort(number, view);
  Listen(view);
  outputs_.Show(view);
  hall_.Tick(view);
  for (int slider = 0; slider < decks::kEqSliders; ++slider) {
    view.equaliser[static_cast<std::size_t>(slider)] = equaliser_.Eq(slider);
  }
  view.main_volume = controls_.MainVolume;
  view.has_mixer = has_mixer_;
  view.health = sound_.Health();
  view.unsaved = Unsaved();
  if (ticked_) ticked_(view);
  view.notices = notices_.Standing();
  view.notice = view.notices.empty() ? std::string() : view.notices.back().text;
  views_.Publish();
}

}  // namespace app
