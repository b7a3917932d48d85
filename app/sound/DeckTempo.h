// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "app/sound/DeckView.h"
#include "decks/BeatSync.h"
#include "decks/TempoSliders.h"
#include "decks/clsBassPlayer.h"
#include "decks/ports/SoundControl.h"
#include "music/BeatGrid.h"
#include "support/Clock.h"

namespace app {

/// How fast a deck plays, and where the beats of its track lie.
///
/// Law: what is set holds for every file that comes onto the deck; a grid that a hand corrected goes
/// before one that is found. Threads: the conductor.
class DeckTempo {
 public:
  DeckTempo(decks::AudioEngine& engine, const decks::clsBassPlayer& player)
      : engine_(engine), player_(player) {}

  [[nodiscard]] const decks::TempoSliders& Sliders() const { return sliders_; }
  void Set(const decks::TempoSliders& sliders);
  /// Of the slider, in percent.
  void Range(int percent) { range_ = percent; }
  /// Factors on the tempo for as long as they last; 1 is none.
  void Nudge(double factor);
  void Bend(double factor);
  /// The slider goes where the whole speed comes out, with a bend on it.
  void Follow(double speed, double bend);
  /// From now on Follow only borrows the slider: where it stood comes back with the next file, or step by
  /// step by GiveBack. A hand that moves the slider keeps it.
  void Borrow();
  void Keep() { own_percent_.reset(); }
  /// Where the hand left the slider, whoever has borrowed it.
  [[nodiscard]] double OwnPercent() const { return own_percent_.value_or(sliders_.percent); }
  /// Towards where it stood, no further than this; nothing when it is not borrowed.
  void GiveBack(double percent);
  [[nodiscard]] bool Playing() const { return heard_.playing; }
  [[nodiscard]] bool Nudging() const { return nudge_ != 1; }
  /// Source seconds a second, as it is set now.
  [[nodiscard]] double Speed() const { return decks::SpeedOf(sliders_) * bend_ * nudge_; }

  /// The deck's streams are of another file. bpm: what its row says, or 0.
  void Begin(double bpm);
  /// Counts the files.
  [[nodiscard]] int Track() const { return track_; }
  [[nodiscard]] decks::BeatSide Side() const;
  /// The streams are new ones of the same file.
  void Apply();
  /// What was heard at this tick.
  void Heard(const decks::HeardStream& heard);
  [[nodiscard]] music::Seconds Place() const;
  /// From setting something to its being heard.
  [[nodiscard]] music::Seconds Lag() const { return music::Seconds(heard_.lag); }

  /// Beats that were found in the file; those set by hand stay.
  void Found(std::shared_ptr<const music::BeatGrid> grid);
  /// Null when no beats are known.
  [[nodiscard]] const std::shared_ptr<const music::BeatGrid>& Grid() const { return grid_; }
  /// To what is heard; nothing where no beats are known.
  [[nodiscard]] std::optional<std::chrono::microseconds> NearestBeat() const;
  [[nodiscard]] bool GridByHand() const { return by_hand_; }
  /// Of the file as it was recorded, 0 when unknown.
  [[nodiscard]] double Bpm() const;
  void Tap(support::TimePoint at);
  void Scale(music::BeatScale scale);
  void Shift(music::Seconds time);
  /// A beat lies at the place that is heard.
  void Align();

  /// A grid that a hand corrected an earlier time; one that was corrected since stays.
  void Kept(std::shared_ptr<const music::BeatGrid> grid);
  /// Back to what is found and what the row says.
  void ForgetCorrections();
  /// The newest correction, once; else null.
  [[nodiscard]] std::shared_ptr<const music::BeatGrid> TakeCorrection();

  void Show(DeckView& view) const;

 private:
  void Order(const decks::TempoSliders& sliders);
  [[nodiscard]] music::Seconds Length() const;
  [[nodiscard]] bool Original() const;
  void Correct(music::BeatGrid grid);

  decks::AudioEngine& engine_;
  const decks::clsBassPlayer& player_;
  decks::TempoSliders sliders_;
  std::optional<double> own_percent_;  ///< where a borrowed slider stood
  int range_ = kTempoRange;
  double nudge_ = 1;
  double bend_ = 1;
  decks::HeardStream heard_;
  int track_ = 0;
  double row_bpm_ = 0;
  double begun_bpm_ = 0;                         ///< row_bpm_ before a hand corrected it
  std::shared_ptr<const music::BeatGrid> grid_;  // with the window
  bool by_hand_ = false;
  bool corrected_ = false;  ///< since the last TakeCorrection
  std::vector<support::TimePoint> taps_;
};

}  // namespace app
