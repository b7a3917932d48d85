// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <optional>
#include <vector>

#include "singers/Rotation.h"

namespace singers {

/// How this evening goes: how long it takes from the end of one song to the begin of the next, and how many
/// turns fall out. Of both only the newest count, and what is usual counts until there are some.
class Pace {
 public:
  static constexpr std::size_t kRemembered = 24;

  /// What took longer than ten minutes was a break, and does not count.
  void AddChangeOver(std::chrono::microseconds gap);
  /// A turn that came up: sung, or passed over or broken off early.
  void AddTurn(bool sung);

  struct Usual {
    double mean = 0;    ///< seconds
    double spread = 0;  ///< standard deviation, seconds
    double doubt = 0;   ///< standard error of the mean, seconds
  };
  [[nodiscard]] Usual ChangeOver() const;
  /// Probability that a turn falls out.
  [[nodiscard]] double FallingOut() const;

  [[nodiscard]] const std::vector<std::chrono::microseconds>& ChangeOvers() const { return gaps_; }
  [[nodiscard]] const std::vector<bool>& Turns() const { return turns_; }
  bool operator==(const Pace&) const = default;

 private:
  std::vector<std::chrono::microseconds> gaps_;  ///< the newest last
  std::vector<bool> turns_;                      ///< whether they were sung
};

/// How long somebody waits, as a range that holds nine times of ten.
struct Wait {
  SingerId singer = 0;
  int before = 0;  ///< songs until then, the one that runs not counted
  std::chrono::seconds least{0};
  std::chrono::seconds most{0};
};

/// Of everybody who is there and has a wish, in the order of their turns; who is on stage waits for the next
/// turn. rest: of the song on stage, as it runs. Sums of independent times: their variances add up.
[[nodiscard]] std::vector<Wait> WaitTimes(const Rotation& rotation, std::chrono::microseconds rest,
                                          const Pace& pace);

}  // namespace singers
