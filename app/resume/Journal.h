// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "app/lights/LightStation.h"
#include "app/lights/LiveLightStation.h"
#include "app/lists/ListStation.h"
#include "app/songs/SongPlayer.h"
#include "app/sound/DeckView.h"
#include "support/ProgramFolder.h"

namespace app {

/// A deck and what it plays.
struct DeckInHand {
  enum class State { Empty, Standing, Playing, Paused };
  State state = State::Empty;
  std::string filename;
  std::string artist;
  std::string title;
  double bpm = 0;
  std::chrono::microseconds position{0};
  MixPointPair<std::optional<std::chrono::microseconds>> marks;  ///< set by hand
  decks::TempoSliders sliders;                                   ///< where the hand left them
  bool synced = false;
  support::Decibels gain;
  std::array<float, 10> equaliser{};
  int volume = 100;
  int pre_volume = 0;
};

/// How often the program fell soon after something was begun. What goes on longer than a moment is forgotten.
struct Suspect {
  int falls = 0;
  bool fresh = false;  ///< it has just been begun
};

/// What plays, and how the lamps stand, at one moment of an evening. It is kept on the disk, so that the
/// evening goes on where it was when the program falls.
struct Journal {
  static constexpr std::size_t kJournalDecks = 2;  ///< those that mix; the third one plays the song

  std::uint64_t number = 0;  ///< the newer one has the higher
  std::array<DeckInHand, kJournalDecks> decks;
  ListStation::InHand mixer;
  SongInHand song;
  LightsInHand lights;
  LiveInHand live;
  Suspect start;                            ///< of the program itself
  std::map<std::string, Suspect> suspects;  ///< files
};

/// Its data files: one that is written every moment, and one that is flushed to the disk now and then.
inline constexpr std::string_view kJournalFiles[] = {"\\tlv.night", "\\tlv.night-safe"};

/// Lines "key=value" below a line "[part]", and a check sum of all of them at the end.
[[nodiscard]] std::string JournalText(const Journal& journal);
/// What text of the right form says; what it leaves out or says wrongly is as in a journal of nothing, and
/// every value is within its bounds. Nothing where the check sum is wrong.
[[nodiscard]] std::optional<Journal> ParseJournal(std::string_view text);
/// The same of what stands above the check sum.
[[nodiscard]] Journal ParseJournalLines(std::string_view lines);

struct StoredJournal {
  std::optional<Journal> newest;  ///< of the files that are whole
  bool damaged = false;           ///< a file is there and is not whole
};
/// Blocks on the disk.
[[nodiscard]] StoredJournal ReadJournal(const support::ProgramFolder& folder);

}  // namespace app
