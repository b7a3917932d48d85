// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace karaoke {

/// Knows code pages by the letters that are frequent in them. Threads: any.
class CodePages {
 public:
  virtual ~CodePages() = default;
  /// The name of the code page that a text is written in, as iconv knows it; empty when that cannot be told.
  [[nodiscard]] virtual std::string Guess(std::string_view text) = 0;
};

}  // namespace karaoke
