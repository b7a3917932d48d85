// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <initializer_list>
#include <type_traits>

#include "ui/strings/Say.h"

namespace support {
enum class Language : int;
}

namespace ui {

/// A word of any of the window's tables.
struct AnyWord {
  template <typename Number>
  requires std::is_enum_v<Number> AnyWord(
      Number word)  // NOLINT: an enumerator stands for it wherever one is asked for
      : number(static_cast<int>(word)) {}

  int number;
};

/// What stands on a control, what assistive programs call it, and its tip.
struct Texts {
  QString caption;
  QString spoken;
  QString tip;
};

/// All captions and messages, by their numbers, in one language.
class Strings {
 public:
  using Language = support::Language;

  explicit Strings(Language language) : language_(language) {}

  [[nodiscard]] QString operator()(AnyWord word) const { return Text(word.number); }
  /// The tip of a word. Requires: the word has one.
  [[nodiscard]] QString Tip(AnyWord word) const { return TipOf(word.number); }
  /// Of a control that is called as it is captioned. Requires: the word has a tip.
  [[nodiscard]] Texts Of(AnyWord word) const { return {(*this)(word), (*this)(word), Tip(word)}; }
  /// Of a control whose caption says too little: it is called by its tip.
  [[nodiscard]] Texts ByTip(AnyWord caption, AnyWord tip) const {
    return {(*this)(caption), (*this)(tip), (*this)(tip)};
  }
  /// With its first places filled by numbers, and its forms chosen after them: see support::ChooseForms.
  template <typename... Counts>
  [[nodiscard]] QString Count(AnyWord word, Counts... counts) const {
    return Counted(word.number, {static_cast<qint64>(counts)...});
  }

 private:
  [[nodiscard]] QString Text(int number) const;
  [[nodiscard]] QString TipOf(int number) const;
  [[nodiscard]] QString Counted(int number, std::initializer_list<qint64> counts) const;

  Language language_;
};

}  // namespace ui
