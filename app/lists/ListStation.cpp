// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/ListStation.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>

#include "app/StationContext.h"
#include "app/WorkstationView.h"
#include "app/lists/BreakMusic.h"
#include "app/settings/Preferences.h"
#include "catalogue/IndexFile.h"
#include "catalogue/SortOrder.h"
#include "support/Settings.h"

namespace app {
namespace {

constexpr std::string_view kHistoryFolder = "\\History";
constexpr int kRowsAddedUpAtOnce = 10'000;
constexpr int kShortestMix = 0, kLongestMix = 60;
constexpr int kFurthestTempo = 50;  // percent

support::Decibels AsGainRange(int decibels) {
  constexpr int kFurthest = 24;
  return {static_cast<float>(std::clamp(decibels, 0, kFurthest))};
}

bool IsDate(const std::string& name) {
  constexpr std::string_view kShape = "0000-00-00";
  return name.size() == kShape.size() &&
         std::equal(name.begin(), name.end(), kShape.begin(), [](char letter, char shape) {
           return shape == '0' ? letter >= '0' && letter <= '9' : letter == shape;
         });
}

std::vector<std::string> EveningsIn(const std::filesystem::path& folder) {
  std::vector<std::string> evenings;
  std::error_code error;
  for (std::filesystem::directory_iterator file(folder, error), end; !error && file != end;
       file.increment(error)) {
    const std::string name = file->path().stem().string();
    if (file->path().extension() == ".tpl" && IsDate(name)) evenings.push_back(name);
  }
  std::sort(evenings.rbegin(), evenings.rend());
  return evenings;
}

std::chrono::seconds AsBreakPause(int length) {
  constexpr int kLongestPause = 60;
  return std::chrono::seconds(std::clamp(length, 0, kLongestPause));
}

}  // namespace

ListStation::ListStation(const StationContext& context, const Tables& tables, MixingDecks& decks,
                         support::Settings& settings, catalogue::TagReader& tags,
                         catalogue::TagScratch& scratch, LocalTime local_time, std::function<void()> filled)
    : context_(context),
      tables_(tables),
      settings_(settings),
      local_time_(local_time ? std::move(local_time) : LocalTime(&LocalTimeNow)),
      search_(tables.catalogue, catalogue::kTrackSearch, context.workers, context.window),
      karaoke_search_(tables.karaoke, catalogue::kKaraokeSearch, context.workers, context.window),
      seen_tags_(tables.catalogue, tags, scratch, context.workers, context.gate, context.window,
                 std::move(filled)),
      kept_(context, tables.playlists),
      saves_(context.workers, context.gate),
      sent_(4, catalogue::track_table(catalogue::TrackColumns())),
      automix_(decks, context.clock,
               [this](const std::string& name) {
                 context_.tell({support::Sentence::NotPlayedNext, {name}});
               }),
      breaks_(std::make_unique<BreakMusic>(decks, context.clock)),
      levels_(decks, context.clock),
      heard_(context.clock, [this](const DeckView& track) { Heard(track); }),
      log_(context.files, context.folder, context.workers, context.gate,
           [this](const support::Error& failure) {
             context_.tell({support::Sentence::HistoryNotSaved, {}, {SayingOf(failure)}});
           }) {
  seen_.catalogue = std::make_shared<const catalogue::track_table>(catalogue::TrackColumns());
  for (auto& playlist : seen_.playlists) playlist = seen_.catalogue;
}

ListStation::~ListStation() = default;

void ListStation::StartUp(const Preferences& preferred) {
  wishes_.on = preferred.automix.on;
  wishes_.at_mix_points = preferred.automix.at_mix_points;
  wishes_.match_tempo = preferred.automix.match_tempo;
  wishes_.most_percent = std::clamp(preferred.bpm_percent, 0, kFurthestTempo);
  wishes_.match_gain = preferred.automix.match_gain;
  wishes_.gain_range = AsGainRange(settings_.Number("Settings", "GainRange"));
  wishes_.mix_time = std::chrono::seconds(std::clamp(preferred.mix_time, kShortestMix, kLongestMix));
  breaks_on_ = settings_.Flag("Karaoke", "BreakMusic");
  break_pause_ = AsBreakPause(settings_.Number("Karaoke", "BreakPause"));
  SendWishes();
  kept_.Read();
  SendTables();  // an evening that goes on may need them before the window shows its first frame
  ReadTonight();
}

/// An evening goes on where the program was closed, or worse.
void ListStation::ReadTonight() {
  const std::string evening = EveningOf(local_time_());
  context_.workers.Post(
      [this, gate = context_.gate, window = context_.window, conductor = context_.conductor, evening] {
        gate->Pass([&] {
          catalogue::track_table history(catalogue::TrackColumns());
          if (!catalogue::LoadIndex(context_.folder.Native(HistoryFile(evening)), history)) return;
          Files played;
          history.VisitColumn(catalogue::track::kFilename, [&played](int, std::string_view file) {
            played.emplace(file);
            return true;
          });
          window->Post([this, evening, played] {
            if (evening_.empty()) evening_ = evening;
            if (evening_ == evening) played_.insert(played.begin(), played.end());
          });
          conductor->Post([this, evening, played] {
            if (heard_evening_.empty()) heard_evening_ = evening;
            if (heard_evening_ == evening) heard_tonight_.insert(played.begin(), played.end());
          });
        });
      });
}

void ListStation::Tick(const WorkstationView& view, const DeckView& song, const BreakStage& stage) {
  heard_.Tick(view, song);
  levels_.Tick(view);
  if (!held_) {
    automix_.Tick(view, seen_, heard_tonight_);
    breaks_->Tick(view, seen_, heard_tonight_, automix_.Hands(), stage, automix_.Wishes().on);
  }
  ListView& draft = views_.Draft();
  draft.automix = automix_.Wishes();
  draft.crossfader = automix_.Crossfader();
  draft.moves = automix_.Moves();
  draft.next = automix_.Next();
  draft.at_the_end = automix_.AtTheEnd();
  draft.waits = draft.automix.on &&
                std::none_of(view.decks.begin(), view.decks.begin() + 2,
                             [](const auto& deck) { return deck.state == DeckView::State::Playing; });
  draft.coming = LookAhead(view);
  views_.Publish();
}

const ComingTrack& ListStation::LookAhead(const WorkstationView& view) {
  constexpr auto kOften = std::chrono::milliseconds(200);  // lists may be long
  const support::TimePoint now = context_.clock.Now();
  if (now - looked_at_ >= kOften) {
    looked_at_ = now;
    coming_ = automix_.Coming(view, seen_, heard_tonight_);
  }
  coming_.in = coming_.filename.empty() ? std::nullopt : automix_.ComingIn(view);
  return coming_;
}

void ListStation::Restore(const MixerHands& hands) {
  held_ = true;
  automix_.Restore(hands);
}

ListStation::InHand ListStation::MixerInHand() const {
  return {automix_.Hands(), automix_.InHand(), breaks_->InHand()};
}

void ListStation::GoOn(const InHand& mixer, const WorkstationView& view, bool lost) {
  constexpr auto kTold = std::chrono::seconds(30);
  held_ = false;
  automix_.GoOn(mixer.mix, view);
  breaks_->GoOn(mixer.breaks, view);
  const auto plays = [&view](int deck) {
    return view.decks[static_cast<std::size_t>(deck - 1)].state == DeckView::State::Playing;
  };
  for (const int deck : {1, 2}) {
    const DeckView& shown = view.decks[static_cast<std::size_t>(deck - 1)];
    if (plays(deck) && shown.position > kTold && heard_tonight_.contains(shown.filename))
      heard_.GoOn(deck, shown.filename);
  }
  if (lost && !plays(1) && !plays(2)) automix_.Open();
}

void ListStation::ShutDown() {
  kept_.Flush();
  log_.Flush();
  saves_.Flush();
}

void ListStation::Heard(const DeckView& track) {
  const std::string evening = EveningOf(local_time_());
  if (evening != heard_evening_) heard_tonight_.clear();
  heard_evening_ = evening;
  heard_tonight_.insert(track.filename);
  log_.Add(evening, track, seen_.catalogue);
  context_.window->Order(*this, &ListStation::NotePlayed, track.filename, evening);
}

void ListStation::NotePlayed(const std::string& filename, const std::string& evening) {
  if (evening != evening_) played_.clear();
  evening_ = evening;
  played_.insert(filename);
}

bool ListStation::WasPlayed(std::string_view filename) const {
  return !played_.empty() && played_.contains(std::string(filename));
}

void ListStation::Follow() {
  search_.Follow();
  karaoke_search_.Follow();
  kept_.Follow();
  SendTables();
}

void ListStation::SendTables() {
  for (std::size_t i = 0; i < sent_.size(); ++i) {
    const catalogue::track_table& table = i == 0 ? tables_.catalogue : tables_.playlists[i - 1];
    if (table.IsCopyOf(sent_[i])) continue;
    sent_[i] = table;
    context_.conductor->Post([this, i, copy = std::make_shared<const catalogue::track_table>(table)] {
      (i == 0 ? seen_.catalogue : seen_.playlists[i - 1]) = copy;
    });
  }
}

void ListStation::SavePlaylist(int number, const std::filesystem::path& path, Saved done) {
  const catalogue::track_table& table = tables_.playlists[static_cast<std::size_t>(number - 1)];
  saves_.Post([&files = context_.files, &say = context_.say, window = context_.window, table, path,
               done = std::move(done)] {
    const auto saved = catalogue::SaveIndex(files, path, table);
    window->Post([done, failure = saved ? std::string()
                                        : say(support::Sentence::PlaylistNotSaved, {say(saved.Failure())})] {
      if (done) done(failure);
    });
  });
}

void ListStation::AddUpTimes(int number, const Seconds& done) {
  const catalogue::track_table& table = tables_.playlists[static_cast<std::size_t>(number - 1)];
  if (table.Rows() <= kRowsAddedUpAtOnce)
    return done(catalogue::TotalSeconds(table, catalogue::track::kTime));
  context_.workers.Post([gate = context_.gate, window = context_.window, table, done] {
    gate->Pass([&] {
      window->Post([done, sum = catalogue::TotalSeconds(table, catalogue::track::kTime)] { done(sum); });
    });
  });
}

void ListStation::ListHistory(Evenings done) {
  context_.workers.Post([folder = context_.folder.Native(kHistoryFolder), gate = context_.gate,
                         window = context_.window, done = std::move(done)] {
    gate->Pass([&] { window->Post([done, evenings = EveningsIn(folder)] { done(evenings); }); });
  });
}

std::string ListStation::HistoryPath(const std::string& evening) const {
  return context_.folder.Native(HistoryFile(evening)).string();
}

void ListStation::SetAutomix(bool on) {
  wishes_.on = on;
  settings_.SetFlag("Settings", "Automix", on);
  SendWishes();
  context_.conductor->Order(automix_, &AutoMix::Open);
}

void ListStation::SetMixTime(int seconds) {
  seconds = std::clamp(seconds, kShortestMix, kLongestMix);
  wishes_.mix_time = std::chrono::seconds(seconds);
  settings_.SetNumber("Mixer", "MixTime", seconds);
  SendWishes();
}

void ListStation::SetAtMixPoints(bool at_mix_points) {
  wishes_.at_mix_points = at_mix_points;
  settings_.SetFlag("Settings", "MixPoints", at_mix_points);
  SendWishes();
}

void ListStation::SetMatchTempo(bool match) {
  wishes_.match_tempo = match;
  settings_.SetFlag("Settings", "AutoBPM", match);
  SendWishes();
}

void ListStation::SetMatchGain(bool match) {
  wishes_.match_gain = match;
  settings_.SetFlag("Settings", "AutoGain", match);
  SendWishes();
}

void ListStation::SetTempoReach(int percent) {
  wishes_.most_percent = std::clamp(percent, 0, kFurthestTempo);
  settings_.SetNumber("Settings", "BPMPercent", wishes_.most_percent);
  SendWishes();
}

void ListStation::SetGainRange(int decibels) {
  wishes_.gain_range = AsGainRange(decibels);
  settings_.SetNumber("Settings", "GainRange", static_cast<int>(wishes_.gain_range.value));
  SendWishes();
}

void ListStation::SendWishes() {
  context_.conductor->Order(automix_, &AutoMix::Choose, wishes_);
  context_.conductor->Order(levels_, &AutoLevel::Choose, wishes_);
  context_.conductor->Order(*breaks_, &BreakMusic::Choose, BreakWishes{breaks_on_, break_pause_});
}

void ListStation::SetBreakMusic(bool on) {
  breaks_on_ = on;
  settings_.SetFlag("Karaoke", "BreakMusic", on);
  SendWishes();
}

void ListStation::SetBreakPause(int seconds) {
  break_pause_ = AsBreakPause(seconds);
  settings_.SetNumber("Karaoke", "BreakPause", static_cast<int>(break_pause_.count()));
  SendWishes();
}

void ListStation::MoveMixer(const MixerHands& hands, MovedByHand moved) {
  context_.conductor->Order(automix_, &AutoMix::Follow, hands, moved);
}

}  // namespace app
