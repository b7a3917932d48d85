// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>

#include "app/DeckRack.h"
#include "app/resume/Journal.h"
#include "support/Clock.h"

namespace app {

/// Brings decks 1 and 2 back to what a journal says, by the commands that a hand has: load, seek, play.
///
/// Law: what a hand does to a deck wins; nothing more is done to that deck then. A file that does not come is
/// told, and one that takes longer than kPatience is left to itself. Threads: the conductor.
class DecksGoOn {
 public:
  static constexpr std::chrono::seconds kPatience{20};
  /// name: of the track; why: a sentence.
  using Lost = std::function<void(const std::string& name, const std::string& why)>;
  DecksGoOn(DeckRack& rack, const support::Clock& clock, Lost lost);

  using Decks = std::array<DeckInHand, Journal::kJournalDecks>;
  void Begin(const Decks& decks);
  /// view: of the same tick.
  void Tick(const WorkstationView& view);
  /// A hand commands the deck, 1 to kDecks.
  void HandOn(int deck);

  /// It has not come back yet.
  [[nodiscard]] bool Pending(int deck) const {
    return steps_[static_cast<std::size_t>(deck - 1)] != Step::Done;
  }
  [[nodiscard]] bool Done() const { return !Pending(1) && !Pending(2); }
  /// One of them played and does not any more, by no hand.
  [[nodiscard]] bool LostOne() const { return lost_one_; }
  /// A hand has commanded one of them.
  [[nodiscard]] bool HandCame() const { return hands_[0] || hands_[1]; }

 private:
  enum class Step { Done, Loading, Beginning };

  void Set(int deck, const DeckInHand& wanted);
  void Look(int deck, const DeckView& view);
  void TakeUp(int deck, const DeckInHand& wanted);
  void Lose(int deck, const DeckView& view);

  DeckRack& rack_;
  const support::Clock& clock_;
  Lost lost_;
  Decks wanted_;
  std::array<Step, Journal::kJournalDecks> steps_{};
  std::array<bool, Journal::kJournalDecks> hands_{};  ///< have been there
  std::array<support::TimePoint, Journal::kJournalDecks> taken_up_{};
  support::TimePoint begun_{};
  bool lost_one_ = false;
};

}  // namespace app
