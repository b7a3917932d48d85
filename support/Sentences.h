// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "support/Result.h"
#include "support/Sentence.h"

namespace support {

/// The rooms' sentences in the language chosen.
/// Threads: any; a choice holds for what is said after it.
class Sentences {
 public:
  Sentences() = default;
  Sentences(const Sentences&) = delete;
  Sentences& operator=(const Sentences&) = delete;

  /// base: what is added to every number in a language, see BaseOf.
  void Choose(int base) { base_ = base; }
  [[nodiscard]] int Base() const { return base_; }
  /// The sentence with its forms chosen and its places %1, %2 ... filled in.
  [[nodiscard]] std::string operator()(Sentence sentence,
                                       std::initializer_list<std::string_view> parts = {}) const;
  [[nodiscard]] std::string operator()(const Saying& saying) const;
  /// The text as it stands where it is no sentence of the table.
  [[nodiscard]] std::string operator()(const Error& error) const;

 private:
  std::atomic<int> base_{0};
};

/// For whoever has no language chosen.
[[nodiscard]] const Sentences& English();

/// What an error says: in every language, where it has a sentence of the table.
[[nodiscard]] Saying SayingOf(const Error& error);
/// A text that is the same in every language.
[[nodiscard]] Saying AsItStands(std::string text);

/// A failure with a sentence of the table.
[[nodiscard]] Error Failed(ErrorCode code, Sentence sentence, std::vector<std::string> parts = {});

/// What stands between braces agrees with a number: "{file|files}" is the first form where the part of place
/// %1 is "1", else the second; "{2:line|lines}" goes by that of place %2. Gives the text with its forms
/// chosen; the places themselves stay. part: by place, from 0.
[[nodiscard]] std::string ChooseForms(std::string_view text,
                                      const std::function<std::string_view(std::size_t place)>& part);

}  // namespace support
