// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "karaoke/ports/CodePages.h"

namespace karaoke::testing {

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
