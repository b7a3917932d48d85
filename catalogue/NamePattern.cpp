// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/NamePattern.h"

#include <algorithm>
#include <unordered_set>

#include "catalogue/TagText.h"
#include "support/Text.h"

namespace catalogue {
namespace {

constexpr std::string_view kFieldNames[kTagFields] = {"artist", "title",   "album", "genre", "year",
                                                      "track",  "comment", "key",   "bpm"};
constexpr std::string_view kRefusedSigns = "/\\:*?\"<>|";
constexpr std::size_t kLongestName = 240;  ///< bytes, so that an extension has room

std::optional<TagField> FieldCalled(std::string_view name) {
  for (std::size_t i = 0; i < kTagFields; ++i) {
    if (support::EqualsIgnoringCase(name, kFieldNames[i])) return static_cast<TagField>(i);
  }
  return std::nullopt;
}

/// Cut between characters.
std::string Shortened(std::string name) {
  if (name.size() <= kLongestName) return name;
  std::size_t end = kLongestName;
  while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end;
  name.resize(end);
  return name;
}

/// Names that Windows keeps for devices.
bool IsDevice(std::string_view name) {
  const std::string_view stem = name.substr(0, name.find('.'));
  for (const std::string_view device : {"CON", "PRN", "AUX", "NUL"}) {
    if (support::EqualsIgnoringCase(stem, device)) return true;
  }
  const bool port = stem.size() == 4 && stem[3] >= '1' && stem[3] <= '9';
  return port && (support::EqualsIgnoringCase(stem.substr(0, 3), "COM") ||
                  support::EqualsIgnoringCase(stem.substr(0, 3), "LPT"));
}

std::string AllowedSigns(std::string_view text) {
  std::string allowed;
  for (const char sign : text) {
    const bool control = static_cast<unsigned char>(sign) < 32 || sign == 127;
    allowed += control || kRefusedSigns.find(sign) != std::string_view::npos ? '_' : sign;
  }
  return allowed;
}

std::string_view WithoutEnds(std::string_view name) {
  while (!name.empty() && (name.back() == ' ' || name.back() == '.')) name.remove_suffix(1);
  while (!name.empty() && (name.front() == ' ' || name.front() == '.')) name.remove_prefix(1);
  return name;
}

}  // namespace

std::string_view NameOf(TagField field) {
  return kFieldNames[static_cast<std::size_t>(field)];
}

std::string_view BareName(std::string_view path) {
  if (const auto slash = path.find_last_of("/\\"); slash != std::string_view::npos)
    path.remove_prefix(slash + 1);
  const auto dot = path.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? path : path.substr(0, dot);
}

NamePattern::NamePattern(std::string_view pattern) {
  while (!pattern.empty()) {
    const std::size_t end = pattern.front() == '%' ? pattern.find('%', 1) : std::string_view::npos;
    const auto field = end == std::string_view::npos ? std::nullopt : FieldCalled(pattern.substr(1, end - 1));
    if (field) {
      parts_.push_back({{}, field});
      pattern.remove_prefix(end + 1);
      continue;
    }
    if (parts_.empty() || parts_.back().field) parts_.push_back({});
    parts_.back().text += pattern.front();
    pattern.remove_prefix(1);
  }
}

bool NamePattern::NamesFields() const {
  return std::any_of(parts_.begin(), parts_.end(), [](const Part& part) { return part.field.has_value(); });
}

bool NamePattern::CanRead() const {
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    if (!parts_[i].field) continue;
    if (i > 0 && parts_[i - 1].field) return false;
    for (std::size_t other = 0; other < i; ++other) {
      if (parts_[other].field == parts_[i].field) return false;
    }
  }
  return NamesFields();
}

std::optional<NamePattern::Fields> NamePattern::Read(std::string_view name) const {
  if (!CanRead()) return std::nullopt;
  Fields fields;
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    if (!parts_[i].field) {
      if (!name.starts_with(parts_[i].text)) return std::nullopt;
      name.remove_prefix(parts_[i].text.size());
      continue;
    }
    // Up to where the text behind the field stands first; what ends the name must stand at its end.
    std::size_t end = name.size();
    if (i + 1 < parts_.size()) {
      const std::string& next = parts_[i + 1].text;
      end = i + 2 == parts_.size() ? name.rfind(next) : name.find(next);
      if (end == std::string_view::npos) return std::nullopt;
    }
    const std::string_view text = support::Trim(name.substr(0, end));
    if (text.empty()) return std::nullopt;
    fields.emplace_back(*parts_[i].field, std::string(text));
    name.remove_prefix(end);
  }
  if (!name.empty()) return std::nullopt;
  return fields;
}

std::string NamePattern::NameFor(const TagSheet& sheet) const {
  std::string name;
  bool any = false;
  for (const Part& part : parts_) {
    std::string text = part.text;
    if (part.field) {
      text = sheet[*part.field];
      any = any || !text.empty();
      // "3/12" is the third: so much of it belongs into a name.
      if (part.field == TagField::Track) {
        text = text.substr(0, text.find('/'));
        if (text.size() == 1) text.insert(0, "0");
      }
    }
    name += text;
  }
  if (!any) return {};
  name = Shortened(std::string(WithoutEnds(AllowedSigns(name))));
  name = WithoutEnds(name);
  return IsDevice(name) ? "_" + name : name;
}

std::vector<PlannedName> PlanNames(const TagDraft& draft, const NamePattern& pattern) {
  std::vector<PlannedName> names;
  std::unordered_set<std::string> taken;
  for (std::size_t i = 0; i < draft.Size(); ++i) {
    PlannedName planned{draft.At(i).path, {}, PlannedName::State::Stays, false};
    const std::string_view from = planned.from;
    const std::string_view bare = BareName(from);
    const std::string name = pattern.NameFor(draft.Planned(i));
    const auto at = static_cast<std::size_t>(bare.data() - from.data());
    planned.to = std::string(from.substr(0, at)) + name + std::string(from.substr(at + bare.size()));
    if (name.empty()) {
      planned.state = PlannedName::State::Empty;
    } else if (!taken.insert(InCase(planned.to, LetterCase::Lower)).second) {
      planned.state = PlannedName::State::Taken;
    } else if (planned.to != planned.from) {
      planned.state = PlannedName::State::Renamed;
    }
    for (std::size_t field = 0; field < kTagFields; ++field) {
      const std::string& text = draft.Text(i, static_cast<TagField>(field));
      planned.changed_signs = planned.changed_signs || text.find_first_of(kRefusedSigns) != std::string::npos;
    }
    // What the pattern does not name does not count.
    planned.changed_signs = planned.changed_signs && name.find('_') != std::string::npos;
    names.push_back(std::move(planned));
  }
  return names;
}

}  // namespace catalogue
