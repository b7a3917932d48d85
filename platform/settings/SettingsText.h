// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::settings {

/// Where a value stands: application and section joined as in the file ("TLVG/Mixer"), and the key.
struct SettingName {
  SettingName(std::string_view application, std::string_view section, std::string_view key_name)
      : heading(std::string(application) + "/" + std::string(section)), key(key_name) {}
  std::string heading;
  std::string key;
  auto operator<=>(const SettingName&) const = default;
};

/// The text of a settings file: "[application/section]" lines, each with its "key=value" lines.
///
/// In names and values CR, LF and "\" stand as "\r", "\n" and "\\"; a key that begins like something else
/// ("[", ";", "#") has a "\" before it. Of a key that stands twice the last one counts.
/// Law: a line that cannot be read, a remark included, is kept as it stands and where it stands; lines end
/// with CR LF. A value without hidden state.
class SettingsText {
 public:
  SettingsText() = default;
  /// Nothing when the text holds something, but not one heading: it is not a settings file.
  [[nodiscard]] static std::optional<SettingsText> Parse(std::string_view text);

  [[nodiscard]] std::optional<std::string> Get(const SettingName& name) const;
  void Set(const SettingName& name, std::string_view value);
  [[nodiscard]] std::string Text() const;

 private:
  /// A heading and what stands below it; the first one has no heading.
  struct Section {
    std::string name;
    std::vector<std::string> lines;
  };
  struct Place {
    std::size_t section;
    std::size_t line;
  };

  void AddHeading(std::string name, std::string line);
  void AddLine(std::string_view line);
  void Insert(std::size_t section, const SettingName& name, std::string line);

  std::vector<Section> sections_{1};
  std::map<SettingName, Place> places_;
  std::map<std::string, std::size_t, std::less<>> last_section_;
};

}  // namespace platform::settings
