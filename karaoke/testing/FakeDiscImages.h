// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <vector>

#include "karaoke/ports/DiscImages.h"
#include "support/Sentences.h"

namespace karaoke::testing {

/// Images that a test puts beside songs.
class FakeDiscImages final : public DiscImages {
 public:
  support::Result<std::vector<std::uint8_t>> Of(const std::string& song) override {
    using support::Failed;
    ++asked;
    const auto found = beside.find(song);
    if (found == beside.end()) {
      return Failed(support::ErrorCode::NotFound, support::Sentence::DiscImageMissing, {song});
    }
    if (found->second.empty()) {
      return Failed(support::ErrorCode::Empty, support::Sentence::FileEmpty, {song});
    }
    if (found->second.size() > kLongestDiscImage) {
      return Failed(support::ErrorCode::Unsupported, support::Sentence::DiscImageTooLong, {song});
    }
    return found->second;
  }

  std::map<std::string, std::vector<std::uint8_t>> beside;  ///< by the song's path
  int asked = 0;
};

}  // namespace karaoke::testing
