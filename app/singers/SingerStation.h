// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "app/StationContext.h"
#include "app/lists/EveningLog.h"
#include "app/singers/SingersView.h"
#include "app/songs/SongStation.h"
#include "app/work/TextKeeper.h"
#include "singers/RotationFile.h"
#include "support/TripleBuffer.h"

namespace app {

/// The singers of the evening in the running program: their turns, waits and wishes, and the songs that they
/// bring on stage.
///
/// Law: what is changed is on its way to the disk with the next tick. A song on stage is sung when it
/// ended, or when the next one begins after it has begun; one that could not be played, or that the program's
/// end cut off, is not, and comes again. Threads: StartUp, View and Do on the window's; the commands, which
/// Do names, and Tick on the conductor; ShutDown once the conductor has stopped.
class SingerStation {
 public:
  /// local_time: null is the system's.
  SingerStation(const StationContext& context, SongStation& songs, LocalTime local_time);

  /// Reads what is kept; blocks on the disk. An evening of another date begins anew, under its rule.
  void StartUp();
  /// Behind the songs' tick.
  void Tick();
  /// Somebody is in the rotation; the conductor's.
  [[nodiscard]] bool AnySinger() const { return !evening_.rotation.Singers().empty(); }
  /// Requires: the gate is closed.
  void ShutDown();
  [[nodiscard]] const SingersView& View() { return views_.Read(); }

  /// Do(&SingerStation::Add, name).
  template <class... Wanted, class... Given>
  void Do(void (SingerStation::*command)(Wanted...), Given&&... given) {
    context_.conductor->Order(*this, command, std::forward<Given>(given)...);
  }

  // Commands. What names a singer or wish that is gone meanwhile does nothing.
  void SetRule(singers::Rule rule);
  void Add(const std::string& name);
  void Rename(singers::SingerId id, const std::string& name);
  void Remove(singers::SingerId id);
  void BringBack();
  void Hold(singers::SingerId id, bool held);
  /// To a place from 0 among all as they stand when the one on stage has sung.
  void Move(singers::SingerId id, int place);
  /// The turn is over unsung; who is on stage leaves it.
  void Skip(singers::SingerId id);
  /// As the singer sang the song last, where it is a known one in its written key and tempo.
  void Ask(singers::SingerId id, const singers::Wish& wish);
  // Of a wish as it was shown.
  void Withdraw(singers::SingerId id, const singers::Wish& wish);
  void SingFirst(singers::SingerId id, const singers::Wish& wish);
  /// Key, tempo, level and partner become another's.
  void Change(singers::SingerId id, const singers::Wish& wish, const singers::Wish& how);
  /// The next one sings; whoever is on stage has sung. A second press of the same hand does nothing.
  void Next();
  static constexpr std::chrono::milliseconds kOneHand{1500};
  /// A song's file has another name now.
  void FollowFile(const std::string& from, const std::string& to);
  /// A song of the host's own, without a turn.
  void PlayNow(const singers::Wish& wish);

 private:
  void Restore(const singers::Evening& evening, const singers::SingerBook& book);
  void Start();
  void Follow();
  void FollowSong(const SongInHand& song);
  void Ended();
  void NoteSung();
  void NoteBegin();
  void LeaveStage();
  void ClearStage();
  void ShowNames();
  [[nodiscard]] std::optional<std::size_t> PlaceOf(singers::SingerId id, const singers::Wish& wish) const;
  void MakeNextReady();
  void Changed() { changed_ = unsaved_ = true; }
  void Save();
  void Publish();
  [[nodiscard]] std::chrono::microseconds Rest() const;

  const StationContext& context_;
  SongStation& songs_;
  const LocalTime local_time_;
  TextKeeper rotation_file_;
  TextKeeper book_file_;
  singers::Evening evening_;
  singers::SingerBook book_;
  bool started_ = false;                      ///< the song on stage was asked for in this run of the program
  bool begun_ = false;                        ///< and has been heard
  support::TimePoint asked_{};                ///< when it was asked for, or read from the disk
  std::chrono::microseconds reached_{0};      ///< the farthest that was heard of it
  int sung_volume_ = -1;                      ///< in its middle
  std::optional<support::TimePoint> silent_;  ///< since the last song ended
  std::string foreseen_;                      ///< file that the songs were told to make ready
  singers::SingerId newest_ = 0;
  std::string sang_last_;
  std::shared_ptr<const singers::Rotation> turns_ = std::make_shared<const singers::Rotation>();
  bool changed_ = false;  ///< since the last sheet
  bool unsaved_ = false;
  support::TimePoint published_{};
  SingersView shown_;
  support::TripleBuffer<SingersView> views_;
};

}  // namespace app
