// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "karaoke/ports/CodePages.h"

namespace karaoke::testing {

/// Words long enough to be told by, in Windows-1251.
inline constexpr const char* kRussianWords =
    "\xcf\xee\xe4\xec\xee\xf1\xea\xee\xe2\xed\xfb\xe5 \xe2\xe5\xf7\xe5\xf0\xe0 \xed\xe5 "
    "\xf1\xeb\xfb\xf8\xed\xfb \xe2 \xf1\xe0\xe4\xf3 \xe4\xe0\xe6\xe5 \xf8\xee\xf0\xee\xf5\xe8";

/// Takes every text for the same code page.
class FakeCodePages final : public CodePages {
 public:
  std::string Guess(std::string_view text) override {
    ++asked;
    return text.empty() ? "" : guess;
  }

  std::string guess = "WINDOWS-1251";
  int asked = 0;
};

}  // namespace karaoke::testing
