// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/resume/ResumeStation.h"

#include <algorithm>
#include <set>
#include <utility>

#include "app/StationContext.h"
#include "app/WorkstationView.h"
#include "support/Settings.h"

namespace app {
namespace {

using support::Sentence;

/// A song or a show that is not there after this time was not to be had.
constexpr std::chrono::seconds kReturns{10};

DeckInHand::State StateOf(const DeckView& view) {
  switch (view.state) {
    case DeckView::State::Empty:
      return DeckInHand::State::Empty;
    case DeckView::State::Playing:
      return DeckInHand::State::Playing;
    case DeckView::State::Paused:
      return DeckInHand::State::Paused;
    case DeckView::State::Loading:
    case DeckView::State::Stopped:
    case DeckView::State::Ended:
      break;
  }
  return DeckInHand::State::Standing;
}

std::string NameOf(const std::string& file) {
  return file.substr(file.find_last_of("/\\") + 1);
}

std::set<std::string> FilesOf(const Journal& journal) {
  std::set<std::string> files{journal.song.row.filename, journal.lights.show.string()};
  for (const DeckInHand& deck : journal.decks) files.insert(deck.filename);
  files.erase("");
  return files;
}

bool Holds(const Journal& journal) {
  const auto full = [](const DeckInHand& deck) { return deck.state != DeckInHand::State::Empty; };
  return std::any_of(journal.decks.begin(), journal.decks.end(), full) ||
         !journal.song.row.filename.empty() || journal.lights != LightsInHand{} ||
         journal.live != LiveInHand{} || journal.mixer != ListStation::InHand{};
}

}  // namespace

ResumeStation::ResumeStation(const StationContext& context, const Around& around, support::Executor* writer)
    : context_(context),
      around_(around),
      suspects_(context.clock),
      decks_(around.rack, context.clock, [this](const std::string& name, const std::string& why) {
        context_.tell({Sentence::FileDoesNotGoOn, {name, why}});
      }) {
  if (writer == nullptr) return;
  keeper_.emplace(context.files, *writer, context.clock, context.gate, context.folder,
                  [this](const support::Error& failure) {
                    context_.tell({Sentence::JournalNotKept, {}, {SayingOf(failure)}});
                  });
}

void ResumeStation::StartUp() {
  if (!keeper_) return;
  StoredJournal stored = ReadJournal(context_.folder);
  const bool wanted = around_.settings.Flag("Settings", "Resume");
  if (wanted && stored.damaged && !stored.newest) context_.tell({Sentence::JournalDamaged});
  suspects_.Begin();
  if (stored.newest) keeper_->Follow(stored.newest->number);
  if (wanted && stored.newest && Take(*std::move(stored.newest))) return;
  context_.conductor->Post([this] { phase_ = Phase::Following; });
}

/// False where nothing of it is to go on.
bool ResumeStation::Take(Journal journal) {
  suspects_.Fell(journal);
  if (suspects_.StartIsLeftOut()) {
    context_.tell({Sentence::NothingGoesOn});
    return false;
  }
  LeaveOut(journal);
  if (!Holds(journal)) return false;
  context_.tell({Sentence::EveningGoesOn});
  resumed_ = std::move(journal);
  // Kept before anything is opened, so that a start that falls over it is counted.
  static_cast<void>(suspects_.Look(FilesOf(*resumed_)));
  Journal first = *resumed_;
  suspects_.Note(first);
  keeper_->KeepFirst(std::move(first), [this] {
    context_.conductor->Order(*this, &ResumeStation::Begin);
    context_.window->Post([this] {
      around_.lights.GoOn(resumed_->lights);
      around_.live.GoOn(resumed_->live);
      const bool song =
          !resumed_->song.row.filename.empty() && resumed_->song.state != SongView::State::Ended;
      if (song) around_.songs.GoOn(resumed_->song);
    });
  });
  return true;
}

/// What the program has fallen over is named and stays away.
void ResumeStation::LeaveOut(Journal& journal) {
  const auto left_out = [this](const std::string& file) {
    const bool out = !file.empty() && suspects_.IsLeftOut(file);
    if (out) context_.prompt(context_.say(Sentence::FileFellTwice, {NameOf(file)}));
    return out;
  };
  for (DeckInHand& deck : journal.decks) {
    if (!left_out(deck.filename)) continue;
    lost_ = lost_ || deck.state == DeckInHand::State::Playing;
    deck.state = DeckInHand::State::Empty;
    deck.filename.clear();
  }
  if (left_out(journal.song.row.filename)) journal.song = {};
  if (left_out(journal.lights.show.string())) journal.lights.show.clear();
}

void ResumeStation::Begin() {
  phase_ = Phase::Returning;
  begun_ = context_.clock.Now();
  for (const std::string& file : suspects_.LeftOut()) around_.lists.LeaveOut(file);
  decks_.Begin(resumed_->decks);
  // Last, because the decks are as loud as the mixer stands.
  around_.lists.Restore(resumed_->mixer.hands);
}

void ResumeStation::Tick(const WorkstationView& view) {
  if (phase_ == Phase::Returning) {
    decks_.Tick(view);
    if (decks_.Done()) GoOn(view);
  }
  if (phase_ != Phase::Waiting && keeper_) Keep(view);
}

void ResumeStation::GoOn(const WorkstationView& view) {
  phase_ = Phase::Following;
  // One that had ended led until the next one was there.
  const bool led = resumed_->mixer.mix.leader != 0;
  const bool lost = !decks_.HandCame() && (led || lost_ || decks_.LostOne());
  around_.lists.GoOn(resumed_->mixer, view, lost);
  const int most = std::clamp(around_.settings.Number("Settings", "BPMPercent"), 0, 50);
  for (const int deck : {1, 2}) {
    const DeckInHand& wanted = resumed_->decks[static_cast<std::size_t>(deck - 1)];
    const DeckView& shown = view.decks[static_cast<std::size_t>(deck - 1)];
    const bool there = shown.state == DeckView::State::Playing && shown.filename == wanted.filename;
    if (wanted.synced && there) around_.rack.Sync(deck, SyncStart::Gently, most);
  }
}

void ResumeStation::Keep(const WorkstationView& view) {
  const SongInHand& song = around_.songs.InHand();
  std::set<std::string> files{song.row.filename, song.coming, view.decks[0].filename, view.decks[1].filename,
                              view.decks[2].filename};
  const support::TimePoint now = context_.clock.Now();
  const bool due = now - looked_ >= kEvery;
  if (due) show_ = around_.lights.InHand().show.string();
  files.insert(show_);
  if (resumed_ && now - begun_ < kReturns) files.merge(FilesOf(*resumed_));
  files.erase("");
  // A file that has just come is written down at once: it may be the one that the program falls over.
  const bool came = suspects_.Look(files);
  if (!due && !came) return;
  looked_ = now;
  Journal journal = InHand(view);
  std::string text = JournalText(journal);
  if (text == written_) return keeper_->Tick();
  written_ = std::move(text);
  keeper_->Keep(std::move(journal));
}

Journal ResumeStation::InHand(const WorkstationView& view) const {
  Journal journal;
  for (const int deck : {1, 2}) {
    const auto place = static_cast<std::size_t>(deck - 1);
    journal.decks[place] = DeckNow(deck, view.decks[place]);
  }
  journal.mixer = around_.lists.MixerInHand();
  journal.song = around_.songs.InHand();
  journal.lights = around_.lights.InHand();
  journal.live = around_.live.InHand();
  suspects_.Note(journal);
  if (resumed_) KeepWhatReturns(journal);
  return journal;
}

DeckInHand ResumeStation::DeckNow(int deck, const DeckView& view) const {
  DeckInHand now;
  now.state = StateOf(view);
  const DeckTempo& tempo = around_.rack.Deck(deck).Tempo();
  now.sliders = tempo.Sliders();
  now.sliders.percent = tempo.OwnPercent();
  now.volume = view.volume;
  if (now.state == DeckInHand::State::Empty) return now;
  now.filename = view.filename;
  now.artist = view.artist;
  now.title = view.title;
  now.bpm = view.bpm;
  const bool at_start = view.state == DeckView::State::Loading || view.state == DeckView::State::Ended;
  if (!at_start) now.position = view.position;
  if (view.moved.start) now.marks.start = view.start_mix_point;
  if (view.moved.end) now.marks.end = view.end_mix_point;
  now.synced = view.synced;
  now.gain = view.gain;
  now.equaliser = view.equaliser;
  now.pre_volume = view.pre_volume;
  return now;
}

/// What has not come back yet stands in the journal as it was.
void ResumeStation::KeepWhatReturns(Journal& journal) const {
  if (phase_ == Phase::Returning) {
    for (const int deck : {1, 2}) {
      const auto place = static_cast<std::size_t>(deck - 1);
      if (decks_.Pending(deck)) journal.decks[place] = resumed_->decks[place];
    }
    journal.mixer.mix = resumed_->mixer.mix;
    journal.mixer.breaks = resumed_->mixer.breaks;
  }
  if (context_.clock.Now() - begun_ > kReturns) return;
  if (journal.song.row.filename.empty()) journal.song = resumed_->song;
  if (journal.lights.show.empty()) {
    journal.lights.show = resumed_->lights.show;
    journal.lights.state = resumed_->lights.state;
    journal.lights.position = resumed_->lights.position;
  }
}

void ResumeStation::ShutDown() {
  if (keeper_) keeper_->End();
}

}  // namespace app
