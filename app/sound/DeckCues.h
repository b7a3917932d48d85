// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/sound/DeckView.h"
#include "decks/ports/SoundControl.h"
#include "music/BeatGrid.h"
#include "music/Cues.h"
#include "music/Loop.h"
#include "support/Sentences.h"

namespace decks {
class BeatMeasure;
class DeckLoops;
}  // namespace decks

namespace app {

class DeckStation;
class FileAnalyses;

/// The cues of a deck's track, its loops and jumps.
///
/// Law: what is told in beats or from here starts at the place that is heard; cues are kept with the file.
/// Threads: the conductor.
class DeckCues {
 public:
  struct Tools {
    FileAnalyses& analyses;
    decks::DeckLoops* loops = nullptr;            ///< null: nothing loops
    std::function<void(support::Saying)> tell{};  ///< a sentence for the user
  };
  /// deck: the one that it belongs to.
  DeckCues(DeckStation& deck, decks::SoundControl& sound, Tools tools);

  /// Held, and let go: back to the cue, and it stands there; where it stands elsewhere, the cue is set; where
  /// it stands at the cue, it plays as long as it is held.
  void Cue(bool down);
  /// Held, and let go: there at once; a deck that stands is heard from there as long as it is held. An empty
  /// place is set. With slip on, letting go leads back to where the track would be.
  void Hot(int slot, bool down);
  /// What is held plays on when it is let go.
  void Keep() { held_.reset(); }
  void Delete(int slot);
  void Name(int slot, std::string name);
  void Colour(int slot, int colour);
  /// The loop, as a hot cue.
  void SaveLoop(int slot);

  /// A loop of so many beats as are chosen, from here; or the loop ends.
  void Loop();
  void LoopIn();
  void LoopOut();
  /// The loop again, from its beginning; or it ends.
  void Reloop();
  /// Above 0 doubles, below halves; without a loop, what Loop makes.
  void Resize(int up);
  /// The loop, by its length.
  void MoveLoop(int on);
  /// As many beats as are chosen.
  void Jump(int on);
  void ResizeJump(int up);
  void Quantise(bool on) { quantise_ = on; }
  void Slip(bool on);

  /// The loop that plays is no whole number of beats.
  [[nodiscard]] bool BreaksTheBeat() const;

  /// Another track stands on the deck.
  void Begin();
  /// It was stopped.
  void Stopped() {
    looping_ = false;
    held_.reset();
    in_.reset();
  }
  /// The streams are new ones of the same file.
  void Apply();
  void Show(DeckView& view);

 private:
  [[nodiscard]] decks::BeatMeasure Measure() const;
  [[nodiscard]] music::Seconds Here() const;
  /// Snapped where that is wanted.
  [[nodiscard]] music::Seconds FromHere() const;
  [[nodiscard]] int Rate() const;
  [[nodiscard]] std::int64_t FrameOf(music::Seconds place) const;
  [[nodiscard]] bool Loaded() const;
  [[nodiscard]] bool KnowsBeats();
  [[nodiscard]] std::shared_ptr<const music::Cues> Kept() const;
  void Change(const std::function<void(music::Cues&)>& change);
  bool Put(const music::Loop& loop);
  void End();
  bool GoTo(std::chrono::microseconds place);
  void Hold(std::chrono::microseconds place, int by);
  [[nodiscard]] bool Reaches(std::chrono::microseconds place);
  void Tell(support::Sentence sentence);

  static constexpr int kByCue = -1;
  struct Held {
    std::chrono::microseconds place{};
    bool stood = false;
    int by = kByCue;  ///< the pad that is held
  };

  DeckStation& deck_;
  decks::SoundControl& sound_;
  Tools tools_;
  std::optional<music::Loop> loop_;  ///< the newest one
  std::optional<std::int64_t> in_;   ///< set by hand, and its end not yet
  bool looping_ = false;
  double beats_ = 4;
  double jump_ = 4;
  bool quantise_ = true;
  bool slip_ = false;
  std::optional<Held> held_;
};

}  // namespace app
