// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/lists/AutoLevel.h"
#include "app/lists/AutoMix.h"
#include "app/lists/EveningLog.h"
#include "app/lists/KeptPlaylists.h"
#include "app/lists/SeenTags.h"
#include "app/lists/TableSearch.h"
#include "app/sound/DeckView.h"
#include "app/work/OrderedWork.h"
#include "catalogue/track_table.h"
#include "support/TripleBuffer.h"

namespace support {
class Settings;
}

namespace app {

struct StationContext;
class BreakMusic;
struct BreakStage;
struct WorkstationView;
struct Preferences;

/// What the window draws of the lists; a snapshot of one tick.
struct ListView {
  MixWishes automix;
  int crossfader = 0;       ///< where the automatic mixer has put it
  std::uint64_t moves = 0;  ///< grows with each time that it did so
  int next = 0;             ///< deck that it has made ready or loads; 0 is none
  bool at_the_end = false;  ///< nothing is left to play next
  bool waits = false;       ///< it is on, and decks 1 and 2 are silent
  ComingTrack coming;
};

/// The lists of the evening: searches, playlists, what was played, and the automatic mixer. The playlists are
/// kept from one run to the next.
///
/// Threads: StartUp, View and commands on the window's, who owns the tables; Tick on the conductor, which
/// gets copies of them; ShutDown once the conductor has stopped.
class ListStation {
 public:
  struct Tables {
    catalogue::track_table& catalogue;
    catalogue::track_table& karaoke;
    std::array<catalogue::track_table, 3>& playlists;
  };
  /// filled: a row of the catalogue says more now.
  ListStation(const StationContext& context, const Tables& tables, MixingDecks& decks,
              support::Settings& settings, catalogue::TagReader& tags, catalogue::TagScratch& scratch,
              LocalTime local_time, std::function<void()> filled);
  ~ListStation();

  void StartUp(const Preferences& preferred);
  /// view and song (that a synthesiser plays, as a deck's view would show it): of the same tick.
  void Tick(const WorkstationView& view, const DeckView& song, const BreakStage& stage);
  void ShutDown();

  // For another run of the program; all of it the conductor's.
  struct InHand {
    MixerHands hands;
    MixInHand mix;
    BreakInHand breaks;
    bool operator==(const InHand&) const = default;
  };
  [[nodiscard]] InHand MixerInHand() const;
  /// The mixer stands so; the automatic mixer keeps its hands off the decks until GoOn.
  void Restore(const MixerHands& hands);
  /// Not to be played by itself.
  void LeaveOut(const std::string& file) { automix_.LeaveOut(file); }
  /// The decks are as far as they come. lost: one of them played and does not any more; where nothing plays
  /// then, the automatic mixer begins anew if it is on.
  void GoOn(const InHand& mixer, const WorkstationView& view, bool lost);

  [[nodiscard]] const ListView& View() { return views_.Read(); }

  /// Once a frame: what the tables have become goes to the conductor and to the searches.
  void Follow();
  /// The catalogue in the order of what its cells say now, where it is sorted.
  void SortAgain() { search_.SortAgain(); }
  [[nodiscard]] TableSearch& Search() { return search_; }
  [[nodiscard]] TableSearch& KaraokeSearch() { return karaoke_search_; }

  /// Rows of the catalogue that a search shows and that are in sight; once a frame.
  void ShowRows(const std::vector<int>& rows) { seen_tags_.Look(rows); }
  /// Grows with each cell that their tags filled in.
  [[nodiscard]] std::size_t FilledCells() const { return seen_tags_.Filled(); }

  /// The whole table; a sentence where it could not be saved, empty where it was.
  using Saved = std::function<void(std::string failure)>;
  void SavePlaylist(int number, const std::filesystem::path& path, Saved done);
  /// Of all times in playlist 1 to 3; a worker adds up those of a long one.
  using Seconds = std::function<void(std::int64_t seconds)>;
  void AddUpTimes(int number, const Seconds& done);
  /// Evenings with a history, the newest first; looked for by a worker.
  using Evenings = std::function<void(std::vector<std::string> evenings)>;
  void ListHistory(Evenings done);
  [[nodiscard]] std::string HistoryPath(const std::string& evening) const;

  /// Tonight, up to six in the morning.
  [[nodiscard]] bool WasPlayed(std::string_view filename) const;
  /// Grows with each file that WasPlayed knows more.
  [[nodiscard]] std::size_t PlayedFiles() const { return played_.size(); }

  /// Stored. Switched on while decks 1 and 2 are silent, the lists begin to play.
  void SetAutomix(bool on);
  // Stored.
  void SetMixTime(int seconds);
  void SetAtMixPoints(bool at_mix_points);
  void SetMatchTempo(bool match);
  void SetMatchGain(bool match);
  /// The furthest that tempos are matched, 0 to 50 percent.
  void SetTempoReach(int percent);
  /// The furthest that tracks are levelled, 0 to 24 dB.
  void SetGainRange(int decibels);
  // Between karaoke songs; stored.
  void SetBreakMusic(bool on);
  void SetBreakPause(int seconds);
  /// The hands' mixer: gives decks 1 and 2 their volumes.
  void MoveMixer(const MixerHands& hands, MovedByHand moved);

 private:
  void ReadTonight();
  void NotePlayed(const std::string& filename, const std::string& evening);
  void SendTables();
  void SendWishes();
  void Heard(const DeckView& track);
  [[nodiscard]] const ComingTrack& LookAhead(const WorkstationView& view);

  const StationContext& context_;
  Tables tables_;
  support::Settings& settings_;
  LocalTime local_time_;
  TableSearch search_;
  TableSearch karaoke_search_;
  SeenTags seen_tags_;
  KeptPlaylists kept_;
  OrderedWork saves_;                         ///< of playlists
  MixWishes wishes_;                          ///< the window's
  bool breaks_on_ = false;                    ///< the window's
  std::chrono::seconds break_pause_{0};       ///< the window's
  Files played_;                              ///< the window's
  std::string evening_;                       ///< that they belong to
  std::vector<catalogue::track_table> sent_;  ///< the tables as the conductor has them
  // The conductor's.
  AutoMix automix_;
  ComingTrack coming_;
  support::TimePoint looked_at_{};  ///< for what comes
  bool held_ = false;               ///< until the decks go on
  std::unique_ptr<BreakMusic> breaks_;
  AutoLevel levels_;
  HeardTracks heard_;
  EveningLog log_;
  ListTables seen_;
  Files heard_tonight_;
  std::string heard_evening_;
  support::TripleBuffer<ListView> views_;
};

}  // namespace app
