// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "karaoke/ports/DiscImages.h"

namespace platform::files {

/// Finds the disc image that lies beside a song under its name, with the extension cdg. Letter case counts
/// neither in the name nor in the extension; of several the one that is written as the song is taken, else
/// the first in byte order.
class LooseDiscImages final : public karaoke::DiscImages {
 public:
  support::Result<std::vector<std::uint8_t>> Of(const std::string& song) override;
};

}  // namespace platform::files
