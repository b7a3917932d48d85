// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/MixingTags.h"

#include <algorithm>
#include <utility>

#include "catalogue/TagScratch.h"
#include "support/Text.h"

namespace catalogue {
namespace {

std::optional<std::string> ValueAfter(std::span<const std::string_view> lines, std::string_view key) {
  const auto found = std::find_if(lines.begin(), lines.end(), [key](std::string_view line) {
    return support::EqualsIgnoringCase(line, key);
  });
  if (found == lines.end() || found + 1 == lines.end()) return std::nullopt;
  return std::string(*(found + 1));
}

MixingTags Merged(MixingTags merged, MixingTags block) {
  if (!merged.gain) merged.gain = std::move(block.gain);
  if (!merged.start_mix_point) merged.start_mix_point = std::move(block.start_mix_point);
  if (!merged.end_mix_point) merged.end_mix_point = std::move(block.end_mix_point);
  if (!merged.bpm) merged.bpm = std::move(block.bpm);
  return merged;
}

}  // namespace

MixingTags ScanTextBlock(std::string_view block) {
  const std::vector<std::string_view> lines = support::SplitLines(block);
  return {ValueAfter(lines, "PEA"), ValueAfter(lines, "SMP"), ValueAfter(lines, "EMP"),
          ValueAfter(lines, "BPM")};
}

MixingTags ScanUserItems(std::span<const TagItem> items) {
  MixingTags found;
  for (const TagItem& item : items) {
    if (item.name == "PEA") found.gain = item.value;
    if (item.name == "SMP") found.start_mix_point = item.value;
    if (item.name == "EMP") found.end_mix_point = item.value;
  }
  return found;
}

std::optional<std::string> ValueAfterKey(std::string_view block, std::string_view key) {
  return ValueAfter(support::SplitLines(block), key);
}

MixingTags MixingTagsOf(const FileTags& tags) {
  return Merged(ScanUserItems(tags.user_items), ScanTextBlock(tags.text_block));
}

MixingTags MixingTagsOf(const FileTags& tags, TagScratch& scratch) {
  return Merged(ScanUserItems(tags.user_items), scratch.Read(tags.text_block));
}

}  // namespace catalogue
