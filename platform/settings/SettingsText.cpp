// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/settings/SettingsText.h"

#include "support/Text.h"

namespace platform::settings {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '\\':
        escaped += "\\\\";
        break;
      case '\r':
        escaped += "\\r";
        break;
      case '\n':
        escaped += "\\n";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

/// Blanks before it do not help: a heading may be indented.
bool BeginsLikeAnotherLine(std::string_view text) {
  text = support::Trim(text);
  return !text.empty() && std::string_view("[;#").find(text.front()) != std::string_view::npos;
}

std::string EscapedKey(std::string_view key) {
  return (BeginsLikeAnotherLine(key) ? "\\" : "") + Escaped(key);
}

/// A "\" before any other letter is one that somebody wrote by hand and stays.
std::string Unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
    switch (next) {
      case '\\':
        plain += '\\';
        break;
      case 'r':
        plain += '\r';
        break;
      case 'n':
        plain += '\n';
        break;
      default:
        plain += text[i];
        continue;
    }
    ++i;
  }
  return plain;
}

std::string UnescapedKey(std::string_view text) {
  if (text.size() > 1 && text[0] == '\\' && BeginsLikeAnotherLine(text.substr(1))) text.remove_prefix(1);
  return Unescaped(text);
}

std::optional<std::string> HeadingOf(std::string_view line) {
  line = support::Trim(line);
  if (line.size() < 2 || line.front() != '[' || line.back() != ']') return std::nullopt;
  return Unescaped(line.substr(1, line.size() - 2));
}

/// Where the "=" of a key and value stands; nothing for a line of another kind.
std::optional<std::size_t> EqualsSignOf(std::string_view line) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos || BeginsLikeAnotherLine(line)) return std::nullopt;
  if (line.find('\0') != std::string_view::npos) return std::nullopt;
  return equals;
}

SettingName NameIn(std::string_view heading, std::string_view key) {
  SettingName name("", "", key);
  name.heading = heading;
  return name;
}

}  // namespace

std::optional<SettingsText> SettingsText::Parse(std::string_view text) {
  while (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  SettingsText parsed;
  bool holds_something = false;
  for (std::string_view line : support::SplitLines(text)) {
    holds_something |= !support::Trim(line).empty();
    if (auto heading = HeadingOf(line)) {
      parsed.AddHeading(*std::move(heading), std::string(line));
    } else {
      parsed.AddLine(line);
    }
  }
  if (holds_something && parsed.sections_.size() == 1) return std::nullopt;
  return parsed;
}

void SettingsText::AddHeading(std::string name, std::string line) {
  last_section_[name] = sections_.size();
  sections_.push_back({std::move(name), {std::move(line)}});
}

void SettingsText::AddLine(std::string_view line) {
  Section& section = sections_.back();
  const auto equals = EqualsSignOf(line);
  if (equals && sections_.size() > 1) {
    places_[NameIn(section.name, UnescapedKey(line.substr(0, *equals)))] = {sections_.size() - 1,
                                                                            section.lines.size()};
  }
  section.lines.emplace_back(line);
}

std::optional<std::string> SettingsText::Get(const SettingName& name) const {
  const auto place = places_.find(name);
  if (place == places_.end()) return std::nullopt;
  const std::string& line = sections_[place->second.section].lines[place->second.line];
  return Unescaped(std::string_view(line).substr(line.find('=') + 1));
}

void SettingsText::Set(const SettingName& name, std::string_view value) {
  std::string line = EscapedKey(name.key) + "=" + Escaped(value);
  if (const auto place = places_.find(name); place != places_.end()) {
    sections_[place->second.section].lines[place->second.line] = std::move(line);
    return;
  }
  if (last_section_.count(name.heading) == 0) {
    Section& last = sections_.back();
    if (!last.lines.empty() && !support::Trim(last.lines.back()).empty()) last.lines.emplace_back();
    AddHeading(name.heading, "[" + Escaped(name.heading) + "]");
  }
  Insert(last_section_[name.heading], name, std::move(line));
}

void SettingsText::Insert(std::size_t section, const SettingName& name, std::string line) {
  // Before the blank lines that part it from the next heading; no place points at those.
  std::vector<std::string>& lines = sections_[section].lines;
  std::size_t at = lines.size();
  while (at > 0 && support::Trim(lines[at - 1]).empty()) --at;
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), std::move(line));
  places_[name] = {section, at};
}

std::string SettingsText::Text() const {
  std::string text;
  for (const Section& section : sections_) {
    for (const std::string& line : section.lines) text.append(line).append(kLineEnd);
  }
  return text;
}

}  // namespace platform::settings
