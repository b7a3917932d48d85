// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/ports/TagReader.h"

namespace catalogue {

/// Values for mixing that an earlier analysis left in a file's tag. Each is text as it stood there.
struct MixingTags {
  std::optional<std::string> gain;             ///< "PEA"
  std::optional<std::string> start_mix_point;  ///< "SMP"
  std::optional<std::string> end_mix_point;    ///< "EMP"
  std::optional<std::string> bpm;              ///< "BPM"
  bool operator==(const MixingTags&) const = default;
};

/// From a block of text lines: a line that is a key, in any letter case, is followed by its value. The first
/// line that is the key wins; a key on the last line has no value.
[[nodiscard]] MixingTags ScanTextBlock(std::string_view block);

/// From a tag's user items, where "PEA", "SMP" and "EMP" are names.
[[nodiscard]] MixingTags ScanUserItems(std::span<const TagItem> items);

/// The line after the first one that is the key, in any letter case.
[[nodiscard]] std::optional<std::string> ValueAfterKey(std::string_view block, std::string_view key);

/// The block with these values in place of its own, all other lines as they were; a key that it does not hold
/// comes to its end. Line ends become CR LF where anything changes.
[[nodiscard]] std::string WithMixingTags(std::string_view block, const MixingTags& tags);

/// The values that a tag's user items carry, under the items' names.
[[nodiscard]] std::vector<TagItem> ItemsOf(const MixingTags& tags);

class TagScratch;

/// Both ways, the block by way of the scratch file; a value from the items wins.
[[nodiscard]] MixingTags MixingTagsOf(const FileTags& tags, TagScratch& scratch);

/// Both ways; a value from the items wins.
[[nodiscard]] MixingTags MixingTagsOf(const FileTags& tags);

}  // namespace catalogue
