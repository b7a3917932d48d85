// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

#include "app/Notice.h"

namespace app {

/// The sentences of the status line that are true now. Threads: the conductor.
class NoticeBoard {
 public:
  /// What a sentence is about: a newer one about the same takes its place, and Settle takes it away.
  struct Subject {
    enum class Kind { Other, Sync, Device, Output, StoredOutput, MissingFiles, CutShort } kind = Kind::Other;
    int number = 0;  ///< of the deck, the device or the output
    auto operator<=>(const Subject&) const = default;
  };

  /// Passing: the newest alone is kept.
  void Tell(const Subject& subject, std::string text);
  void Warn(const Subject& subject, std::string text);
  /// What is told already goes on: "The card is gone. Playing goes on through the other one."
  void WarnFurther(const Subject& subject, const std::string& text);
  /// The warning, where there is one, is true in other words: who has seen it need not look again.
  void Correct(const Subject& subject, std::string text);
  /// What was told of it is no longer true.
  void Settle(const Subject& subject);

  /// In the order told.
  [[nodiscard]] const std::vector<Notice>& Standing() const { return notices_; }

 private:
  void Add(Notice::Kind kind, const Subject& subject, std::string text);
  void Drop(std::size_t place);
  [[nodiscard]] std::size_t Find(const Subject& subject) const;

  std::uint64_t told_ = 0;
  std::vector<Notice> notices_;
  std::vector<Subject> subjects_;  // of each of them
};

}  // namespace app
