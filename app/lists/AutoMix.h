// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "app/lists/ComingTrack.h"
#include "app/lists/MixPlan.h"
#include "app/sound/DeckView.h"
#include "catalogue/track_table.h"
#include "decks/Crossfader.h"
#include "support/Clock.h"

namespace app {

struct WorkstationView;

/// Where the hands left the mixer: what a deck is given is fader times crossfader.
struct MixerHands {
  std::array<int, 2> faders{100, 100};  ///< 0 to 100
  int crossfader = 0;                   ///< -100 (deck 1) to 100 (deck 2)
  decks::CrossfaderCurve curve = decks::CrossfaderCurve::Smooth;
  bool operator==(const MixerHands&) const = default;
  /// Of deck 1 or 2, 0 to 100.
  [[nodiscard]] int VolumeOf(int deck) const;
  /// The same with the crossfader at another place, between two of its steps too.
  [[nodiscard]] double LevelAt(int deck, double place) const;
};

enum class MovedByHand { Crossfader, Other };

/// What the automatic mixer has under way, to go on with it in another run of the program.
struct MixInHand {
  std::array<std::string, 2> spent;  ///< the file that each deck played last
  int leader = 0;                    ///< deck that plays; 0 is none
  int next = 0;                      ///< deck that is made ready, or mixed to
  bool placed = false;               ///< it stands at its start mix point
  bool mixing = false;
  MixPlan plan;
  int fade_from = 0;
  std::chrono::microseconds mixed{0};  ///< since the mix began
  bool hand_has_crossfader = false;
  bool operator==(const MixInHand&) const = default;
};

/// The same of the music between songs.
struct BreakInHand {
  int deck = 0;      ///< that it plays on, or played on last; 0 is none
  std::string file;  ///< there
  bool plays = false;
  bool due = false;  ///< a song was on stage, and no break has been made since
  bool operator==(const BreakInHand&) const = default;
};

/// How far ahead of itself a fade is told to the decks: a tick that comes late by less is not heard.
inline constexpr std::chrono::milliseconds kGlideAhead{100};

/// What the automatic mixer does to the decks. Threads: the conductor.
class MixingDecks {
 public:
  virtual ~MixingDecks() = default;
  virtual void Load(int deck, const catalogue::track_table& playlist, int row) = 0;
  virtual void Seek(int deck, std::chrono::microseconds place) = 0;
  virtual void Play(int deck) = 0;
  virtual void Pause(int deck) = 0;
  virtual void Stop(int deck) = 0;
  virtual void SetVolume(int deck, int volume) = 0;
  /// Comes to this level, 0 to 100, after that time, evenly and on the clock of its sound; a volume that is
  /// set meanwhile ends that.
  virtual void Glide(int deck, double level, std::chrono::milliseconds time) = 0;
  virtual void SetMixing(int deck, bool mixing) = 0;
  /// Begins to sound, to the sample, when the other deck is heard at this place; false when it cannot.
  virtual bool StartWith(int deck, int other, std::chrono::microseconds place) = 0;
  /// It sounds since then.
  virtual bool Started(int deck) = 0;
  virtual void CancelStart(int deck) = 0;
  /// Takes the other one's tempo for as long as both sound; until CancelStart, where it does not begin. The
  /// place of the other one at which it is to begin, so that beats meet that are known: the one given, or
  /// close to it.
  virtual std::chrono::microseconds MatchTempo(int deck, std::chrono::microseconds place,
                                               int most_percent) = 0;
  virtual void SetGain(int deck, support::Decibels gain) = 0;
};

/// The tables as the window last had them; they never change.
struct ListTables {
  std::shared_ptr<const catalogue::track_table> catalogue;
  std::array<std::shared_ptr<const catalogue::track_table>, 3> playlists;
};

/// Plays the next track of the playlists by itself: loads it on the free one of decks 1 and 2, begins it at
/// its start mix point when the other one is heard at its end mix point, and moves the crossfader over.
///
/// Law: a hand wins. Who moves the crossfader has it until the next mix; who loads, plays, pauses or stops a
/// deck has it so. A file that cannot be played is passed over; when the lists are empty the last track plays
/// to its end, and nothing else happens. Threads: the conductor.
class AutoMix {
 public:
  /// A track is passed over; told with its name.
  using PassedOver = std::function<void(const std::string& name)>;
  AutoMix(MixingDecks& decks, const support::Clock& clock, PassedOver passed_over);

  void Choose(const MixWishes& wishes);
  /// A hand has switched it on: where nothing plays, what is next begins. Without this nothing does.
  void Open() { opening_ = wishes_.on; }
  /// Gives the decks their volumes. The crossfader's place is taken from the hands only when it was moved.
  void Follow(const MixerHands& hands, MovedByHand moved);
  void Tick(const WorkstationView& view, const ListTables& tables, const Files& played);

  [[nodiscard]] const MixerHands& Hands() const { return hands_; }
  [[nodiscard]] MixInHand InHand() const;
  /// The mixer stands as it did in another run of the program.
  void Restore(const MixerHands& hands);
  /// Goes on with what was under way there, once the decks do.
  void GoOn(const MixInHand& mix, const WorkstationView& view);
  /// Until it is switched on anew.
  void LeaveOut(const std::string& file) { done_with_.insert(file); }

  [[nodiscard]] const MixWishes& Wishes() const { return wishes_; }
  /// While it moves, or as it was left.
  [[nodiscard]] int Crossfader() const { return hands_.crossfader; }
  /// Grows with every step that it moves the crossfader by itself.
  [[nodiscard]] std::uint64_t Moves() const { return moves_; }
  /// Deck that it has made ready or is loading; 0 is none.
  [[nodiscard]] int Next() const { return next_; }
  /// The lists hold nothing more to play; known while a track plays towards its end.
  [[nodiscard]] bool AtTheEnd() const { return at_the_end_; }
  /// What it would go over to now: what stands ready or is loaded, else the next row of the lists. Goes
  /// through the lists.
  [[nodiscard]] ComingTrack Coming(const WorkstationView& view, const ListTables& tables,
                                   const Files& played) const;
  /// Until that begins.
  [[nodiscard]] std::optional<std::chrono::microseconds> ComingIn(const WorkstationView& view) const;

 private:
  enum class Phase { Waiting, Armed, Mixing };

  /// The file that a deck played last.
  [[nodiscard]] std::string& Spent(int deck) { return spent_[deck == 1 ? 0 : 1]; }
  /// Playlist and row of what is loaded next on a deck; row 0: the lists hold nothing more.
  struct RowToLoad {
    const catalogue::track_table* playlist = nullptr;
    int row = 0;
  };
  [[nodiscard]] RowToLoad NextOf(int deck, const ListTables& tables, const Files& played) const;
  void TickWaiting(const WorkstationView& view, const ListTables& tables, const Files& played);
  void TickArmed(const WorkstationView& view);
  /// It turns in a loop before the place at which the next one is to begin: a hand keeps it there.
  [[nodiscard]] bool IsHeldBack(const DeckView& led) const;
  void TickMixing(const WorkstationView& view);
  void TickOpening(const WorkstationView& view, const ListTables& tables, const Files& played);
  [[nodiscard]] int LeaderIn(const WorkstationView& view) const;
  /// Whether the deck stands ready with a track that was not played.
  bool MakeReady(int deck, const DeckView& view, const ListTables& tables, const Files& played);
  void LoadNext(int deck, const ListTables& tables, const Files& played);
  void PassOver(const DeckView& view);
  void Place(int deck, const DeckView& view);
  void Arm(const DeckView& leader);
  void MeetBeats(const DeckView& leader);
  void BeginMixing(const DeckView& led);
  [[nodiscard]] bool SoundsOn(const DeckView& led) const;
  void GoOnMixing(const MixInHand& mix, const WorkstationView& view);
  void EndMixing(const WorkstationView& view);
  void MoveCrossfader(int place);
  /// A level is asked for as it is to be a moment later, so that a late tick is not heard.
  void FadeOn(support::Duration passed);
  void SendVolumes();
  void Forget();

  MixingDecks& decks_;
  const support::Clock& clock_;
  PassedOver passed_over_told_;
  MixWishes wishes_;
  MixerHands hands_;
  Phase phase_ = Phase::Waiting;
  bool opening_ = false;
  int leader_ = 0;          ///< the deck that plays, or played until now
  int next_ = 0;            ///< the deck that is loaded for it
  std::string loading_;     ///< the file that it loads
  std::string loaded_;      ///< the file that it made ready
  bool scheduled_ = false;  ///< the engine starts it
  bool placed_ = false;     ///< it stands at its start mix point
  bool at_the_end_ = false;
  bool hand_has_crossfader_ = false;
  MixPlan plan_;
  int fade_from_ = 0;                 ///< place of the crossfader
  support::TimePoint since_{};        ///< of loading, arming or mixing
  std::chrono::microseconds due_{0};  ///< from since_ on, when armed
  std::array<std::string, 2> spent_;
  Files done_with_;  ///< played or passed over since it was switched on
  std::uint64_t moves_ = 0;
};

}  // namespace app
