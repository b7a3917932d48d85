// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace singers {

/// A singer of one evening; 0 is nobody.
using SingerId = std::uint32_t;

/// A song that somebody wants to sing, and how.
struct Wish {
  std::string filename;
  std::string artist;
  std::string title;
  std::chrono::microseconds length{0};  ///< as written; 0: not known
  int semitones = 0;                    ///< -12 to 12
  double percent = 0;                   ///< tempo from the original, -50 to 100
  int volume = -1;                      ///< 0 to 100; -1: as the fader stands
  std::string partner;                  ///< who sings along; empty: nobody
  std::uint64_t ticket = 0;             ///< the evening's count of wishes when it came
  bool operator==(const Wish&) const = default;
};

/// How long it takes at its tempo; a usual length where none is known.
[[nodiscard]] std::chrono::microseconds TimeOf(const Wish& wish);

struct Singer {
  SingerId id = 0;
  std::string name;
  bool held = false;  ///< not there now; the place is kept
  int sung = 0;       ///< songs of this evening
  int turns = 0;      ///< that are over, sung or not
  int round = 1;      ///< in which the next turn is
  std::vector<Wish> wishes;
  bool operator==(const Singer&) const = default;
};

/// What is being sung.
struct Turn {
  SingerId singer = 0;  ///< 0: a song without a singer of the rotation
  Wish wish;
  bool operator==(const Turn&) const = default;
};

/// By what the turns go.
enum class Rule {
  Turns,           ///< everybody once a round; who is new comes at the end of the round that runs
  NewcomersFirst,  ///< the same, but who has not sung yet comes before those who have
  FirstCome        ///< songs in the order in which they were asked for
};

/// Who sings what after whom.
///
/// The singers stand in the order of their turns. Whoever is held, or has no wish, keeps the place and is
/// passed over; a hand that moves a singer moves the turn, too. Whose wish it is has the turn of a duet, the
/// partner keeps his own. A value: it can be copied, and played through beforehand.
class Rotation {
 public:
  static constexpr std::size_t kMostSingers = 400;
  static constexpr std::size_t kMostWishes = 100;  ///< of one singer
  static constexpr std::size_t kMostName = 80;     ///< bytes

  [[nodiscard]] const std::vector<Singer>& Singers() const { return singers_; }
  /// Null where there is none; valid until the next change.
  [[nodiscard]] const Singer* Find(SingerId id) const;
  /// Letter case aside.
  [[nodiscard]] const Singer* FindName(std::string_view name) const;
  [[nodiscard]] enum Rule Rule() const { return rule_; }
  /// In which the next turn is, from 1.
  [[nodiscard]] int Round() const { return round_; }
  [[nodiscard]] const std::optional<Turn>& OnStage() const { return on_stage_; }
  /// Who sings after the one on stage; null: nobody who is there has a wish. Valid until the next change.
  [[nodiscard]] const Singer* Next() const;

  /// Sorts everybody anew.
  void SetRule(enum Rule rule);
  /// The name is cleaned; one that is there already gets a number. 0 where nothing of it is left, or there is
  /// no room.
  SingerId Add(std::string_view name);
  /// False for an empty name, or that of another.
  bool Rename(SingerId id, std::string_view name);
  /// Takes the singer, with all wishes, out of the turns.
  bool Remove(SingerId id);
  /// Those who were removed, the last one first; false when there is none.
  bool BringBack();
  [[nodiscard]] std::size_t Removed() const { return removed_.size(); }
  bool Hold(SingerId id, bool held);
  /// To a place from 0.
  bool Move(SingerId id, std::size_t place);
  /// The turn is over unsung, the wish stays.
  bool Skip(SingerId id);

  /// False where there is no room.
  bool Ask(SingerId id, Wish wish);
  bool Withdraw(SingerId id, std::size_t wish);
  bool MoveWish(SingerId id, std::size_t wish, std::size_t place);
  /// Key, tempo, level and partner become another's; the song stays.
  bool Change(SingerId id, std::size_t wish, const Wish& how);

  /// Wishes for a file that has another name now; false where there is none.
  bool FollowFile(std::string_view from, std::string_view to);

  /// The next one goes on stage, with the first wish; whoever is there has sung. False when there is nobody.
  bool Begin();
  /// A song that no turn brought, so that the one on stage has sung.
  void BeginOther(Wish wish);
  /// Who is on stage has sung.
  void End();
  /// Who is on stage has not sung: wish and turn are as they were.
  void TakeBack();

  /// A rotation with these in this order, as a file has it; ids are given anew where they are 0 or doubled,
  /// and what is beyond the bounds is left out.
  [[nodiscard]] static Rotation Of(enum Rule rule, int round, std::vector<Singer> singers,
                                   std::optional<Turn> on_stage);

  bool operator==(const Rotation& other) const {
    return rule_ == other.rule_ && round_ == other.round_ && singers_ == other.singers_ &&
           on_stage_ == other.on_stage_;
  }

 private:
  using Place = std::vector<Singer>::iterator;
  [[nodiscard]] Place PlaceOf(SingerId id);
  [[nodiscard]] const Singer* Ready() const;
  [[nodiscard]] Place PlaceFor(const Singer& singer);
  void Insert(Singer singer);
  void PlaceAgain(SingerId id);
  void Pass(SingerId id, int sung);
  void Sort();
  [[nodiscard]] std::string FreeName(std::string name, SingerId of) const;

  enum Rule rule_ = Rule::Turns;
  std::vector<Singer> singers_;
  std::vector<Singer> removed_;
  std::optional<Turn> on_stage_;
  int round_ = 1;
  SingerId newest_ = 0;
  std::uint64_t tickets_ = 0;
};

/// A name as it may be shown: no control characters, no blanks around it or side by side, no more than
/// kMostName bytes and no part of a character at the end.
[[nodiscard]] std::string CleanName(std::string_view name);

}  // namespace singers
