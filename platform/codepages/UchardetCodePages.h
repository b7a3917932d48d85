// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "karaoke/ports/CodePages.h"

namespace platform::codepages {

/// Guesses by uchardet, which knows how often letters stand beside each other in each language.
class UchardetCodePages final : public karaoke::CodePages {
 public:
  [[nodiscard]] std::string Guess(std::string_view text) override;
};

}  // namespace platform::codepages
