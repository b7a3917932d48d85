// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/MixingTags.h"

#include <algorithm>
#include <iterator>
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

bool IsKey(std::string_view line) {
  constexpr std::string_view kKeys[] = {"PEA", "SMP", "EMP", "BPM"};
  return std::any_of(std::begin(kKeys), std::end(kKeys),
                     [line](std::string_view key) { return support::EqualsIgnoringCase(line, key); });
}

/// A value that is another key was never one: it stays.
void PutAfter(std::vector<std::string_view>& lines, std::string_view key,
              const std::optional<std::string>& value) {
  if (!value) return;
  auto found = std::find_if(lines.begin(), lines.end(),
                            [key](std::string_view line) { return support::EqualsIgnoringCase(line, key); });
  if (found == lines.end()) found = lines.insert(found, key);
  if (++found == lines.end() || IsKey(*found)) {
    lines.insert(found, *value);
  } else {
    *found = *value;
  }
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

std::string WithMixingTags(std::string_view block, const MixingTags& tags) {
  std::vector<std::string_view> lines = support::SplitLines(block);
  const std::vector<std::string_view> old = lines;
  PutAfter(lines, "PEA", tags.gain);
  PutAfter(lines, "SMP", tags.start_mix_point);
  PutAfter(lines, "EMP", tags.end_mix_point);
  PutAfter(lines, "BPM", tags.bpm);
  if (lines == old) return std::string(block);
  std::string text;
  for (const std::string_view& line : lines) {
    if (&line != &lines.front()) text += "\r\n";
    text += line;
  }
  return text;
}

std::vector<TagItem> ItemsOf(const MixingTags& tags) {
  std::vector<TagItem> items;
  if (tags.gain) items.push_back({"PEA", *tags.gain});
  if (tags.start_mix_point) items.push_back({"SMP", *tags.start_mix_point});
  if (tags.end_mix_point) items.push_back({"EMP", *tags.end_mix_point});
  return items;
}

MixingTags MixingTagsOf(const FileTags& tags) {
  return Merged(ScanUserItems(tags.user_items), ScanTextBlock(tags.text_block));
}

MixingTags MixingTagsOf(const FileTags& tags, TagScratch& scratch) {
  return Merged(ScanUserItems(tags.user_items), scratch.Read(tags.text_block));
}

}  // namespace catalogue
