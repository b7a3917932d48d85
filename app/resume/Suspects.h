// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/resume/Journal.h"
#include "support/Clock.h"

namespace app {

/// What the program may have fallen over: files that had just been begun, and its own start.
///
/// A fall counts against a file only when it came within kMoment of the file's being loaded, by a hand, the
/// automatic mixer or a start that went on with it: long enough to open, decode and analyse it. Once it has
/// gone on for longer its falls are forgotten, and so is a single one as soon as a start has gone well
/// without the file: two power cuts in one evening blame no song. Threads: one.
class Suspects {
 public:
  static constexpr std::chrono::seconds kMoment{15};
  static constexpr int kFallsOfAFile = 2;     ///< then it is left out
  static constexpr int kFallsOfTheStart = 3;  ///< then nothing goes on

  explicit Suspects(const support::Clock& clock) : clock_(clock) {}

  /// The program fell with this journal; counts what fell with it.
  void Fell(const Journal& journal);
  /// The program starts now.
  void Begin() { begun_ = clock_.Now(); }

  [[nodiscard]] bool IsLeftOut(const std::string& file) const;
  [[nodiscard]] std::vector<std::string> LeftOut() const;
  [[nodiscard]] bool StartIsLeftOut() const { return start_falls_ >= kFallsOfTheStart; }

  /// Files that are in hand now; true when one has come since.
  bool Look(const std::set<std::string>& in_hand);
  /// As it is to stand in a journal of this moment.
  void Note(Journal& journal) const;

 private:
  const support::Clock& clock_;
  support::TimePoint begun_{};
  int start_falls_ = 0;
  std::map<std::string, int> falls_;
  std::map<std::string, support::TimePoint> since_;  ///< of what is in hand
};

}  // namespace app
