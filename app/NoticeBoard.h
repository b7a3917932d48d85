// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

#include "app/Notice.h"
#include "support/Sentences.h"

namespace app {

/// The sentences of the status line that are true now. Threads: the conductor.
class NoticeBoard {
 public:
  explicit NoticeBoard(const support::Sentences& say) : say_(say), language_(say.Base()) {}

  /// What a sentence is about: a newer one about the same takes its place, and Settle takes it away.
  struct Subject {
    enum class Kind { Other, Sync, Device, Output, StoredOutput, MissingFiles, CutShort } kind = Kind::Other;
    int number = 0;  ///< of the deck, the device or the output
    auto operator<=>(const Subject&) const = default;
  };

  /// Passing: the newest alone is kept.
  void Tell(const Subject& subject, support::Saying told);
  void Warn(const Subject& subject, support::Saying told);
  /// What is told already goes on: "The card is gone. Playing goes on through the other one."
  void WarnFurther(const Subject& subject, support::Saying told);
  /// The warning, where there is one, is true in other words: who has seen it need not look again.
  void Correct(const Subject& subject, support::Saying told);
  /// What was told of it is no longer true.
  void Settle(const Subject& subject);

  /// In the order told, and in the language chosen now.
  [[nodiscard]] const std::vector<Notice>& Standing();

 private:
  struct Told {
    Subject subject;
    std::vector<support::Saying> sayings;
  };

  void Add(Notice::Kind kind, Told told);
  [[nodiscard]] std::string TextOf(const Told& told) const;
  void Drop(std::size_t place);
  [[nodiscard]] std::size_t Find(const Subject& subject) const;

  const support::Sentences& say_;
  int language_;
  std::uint64_t told_ = 0;
  std::vector<Notice> notices_;
  std::vector<Told> behind_;  ///< each of them
};

}  // namespace app
