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

/// All captions and messages, by their numbers, in one language.
class Strings {
 public:
  using Language = support::Language;

  explicit Strings(Language language) : language_(language) {}

  /// number: of any of the window's enumerations of words.
  template <typename Number>
  requires std::is_enum_v<Number>
  [[nodiscard]] QString operator()(Number number) const { return Text(static_cast<int>(number)); }
  /// The tip of a word. Requires: the word has one.
  template <typename Number>
  requires std::is_enum_v<Number>
  [[nodiscard]] QString Tip(Number number) const { return TipOf(static_cast<int>(number)); }
  /// With its first places filled by numbers, and its forms chosen after them: see support::ChooseForms.
  template <typename Number, typename... Counts>
  requires std::is_enum_v<Number>
  [[nodiscard]] QString Count(Number number, Counts... counts) const {
    return Counted(static_cast<int>(number), {static_cast<qint64>(counts)...});
  }

 private:
  [[nodiscard]] QString Text(int number) const;
  [[nodiscard]] QString TipOf(int number) const;
  [[nodiscard]] QString Counted(int number, std::initializer_list<qint64> counts) const;

  Language language_;
};

}  // namespace ui
