// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "karaoke/ports/DiscImages.h"

namespace platform::archive {

/// Finds the disc image that lies in an archive together with its song. For any other file the finder of
/// loose images is asked, which outlives this one.
class PackedDiscImages final : public karaoke::DiscImages {
 public:
  explicit PackedDiscImages(karaoke::DiscImages& loose) : loose_(loose) {}

  support::Result<std::vector<std::uint8_t>> Of(const std::string& song) override;

 private:
  karaoke::DiscImages& loose_;
};

}  // namespace platform::archive
