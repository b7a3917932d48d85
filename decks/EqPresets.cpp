// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/EqPresets.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

#include "support/Sentences.h"
#include "support/Text.h"

namespace decks {
namespace {

constexpr std::int64_t kHighestValue = 1000;
constexpr std::uintmax_t kLongestFile = 4 << 20;
constexpr std::string_view kLineEnd = "\r\n";

std::string_view NameIn(std::string_view line) {
  line.remove_prefix(1);
  return line.substr(0, line.rfind(']'));
}

bool IsName(std::string_view line) {
  return !line.empty() && line.front() == '[';
}

std::string Block(const std::string& name, const EqValues& values) {
  std::string block(1, '[');
  return block.append(name).append("]").append(kLineEnd).append(EqValueLine(values)).append(kLineEnd);
}

struct Edited {
  std::string text;
  bool found = false;
  bool loose_name =
      false;  ///< a name at the end had no values, and is left out: it would take the next lines
};

/// The text with every block of the name left out; in the place of the first stands the replacement.
Edited ReplaceBlocks(std::string_view text, std::string_view name, const std::string& replacement) {
  Edited edited;
  const auto lines = support::SplitLines(text);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const bool starts_preset = IsName(lines[i]);
    const std::size_t count = starts_preset && i + 1 < lines.size() ? 2 : 1;
    if (starts_preset && NameIn(lines[i]) == name) {
      if (!edited.found) edited.text += replacement;
      edited.found = true;
    } else if (starts_preset && count == 1) {
      edited.loose_name = true;
    } else {
      for (std::size_t j = i; j < i + count; ++j) edited.text.append(lines[j]).append(kLineEnd);
    }
    i += count - 1;
  }
  return edited;
}

std::optional<support::Error> Refusal(const std::string& name) {
  if (name.empty()) return support::Failed(support::ErrorCode::Empty, support::Sentence::PresetNeedsName);
  const bool one_line = name.find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos;
  if (one_line) return std::nullopt;
  return support::Failed(support::ErrorCode::Malformed, support::Sentence::PresetNeedsName);
}

}  // namespace

std::vector<EqPreset> ParseEqPresets(std::string_view text) {
  std::vector<EqPreset> presets;
  const auto lines = support::SplitLines(text);
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    if (!IsName(lines[i])) continue;
    presets.push_back({std::string(NameIn(lines[i])), std::string(lines[i + 1])});
    ++i;
  }
  return presets;
}

EqValues EqValuesOf(std::string_view value_line) {
  EqValues values{};
  const auto parts = support::Split(value_line, ';');
  for (std::size_t i = 0; i < std::min(values.size(), parts.size()); ++i) {
    values[i] =
        static_cast<int>(std::clamp(support::LeadingInteger(parts[i]), -kHighestValue, kHighestValue));
  }
  return values;
}

std::string EqValueLine(const EqValues& values) {
  std::string line;
  for (const int value : values) line += std::to_string(value) + ";";
  return line;
}

support::Result<std::string> EqPresetFile::Text() const {
  const std::filesystem::path path = Path();
  const support::Error unreadable = support::Failed(
      support::ErrorCode::Unreadable, support::Sentence::FileUnreadable, {"\"" + path.string() + "\""});
  std::error_code failed;
  const auto type = std::filesystem::status(path, failed).type();
  if (type == std::filesystem::file_type::not_found) return std::string();
  if (type != std::filesystem::file_type::regular) return unreadable;
  if (std::filesystem::file_size(path, failed) > kLongestFile || failed) return unreadable;
  std::ifstream file(path, std::ios::binary);
  if (!file) return unreadable;
  std::string text{std::istreambuf_iterator<char>(file), {}};
  return file.bad() ? support::Result<std::string>(unreadable) : std::move(text);
}

support::Result<std::vector<EqPreset>> EqPresetFile::Read() const {
  const auto text = Text();
  if (!text) return text.Failure();
  return ParseEqPresets(text.Value());
}

support::Result<void> EqPresetFile::Save(const std::string& name, const EqValues& values) {
  if (const auto refusal = Refusal(name)) return *refusal;
  const auto text = Text();
  if (!text) return text.Failure();  // what cannot be read is not written over
  const std::string block = Block(name, values);
  const Edited edited = ReplaceBlocks(text.Value(), name, block);
  if (edited.found) return Rewrite(text.Value(), edited.text);
  const bool ended = text.Value().empty() || text.Value().back() == '\n' || text.Value().back() == '\r';
  if (edited.loose_name) return files_.Save(Path(), edited.text + block);
  return files_.Save(Path(), text.Value() + (ended ? "" : std::string(kLineEnd)) + block);
}

support::Result<void> EqPresetFile::Delete(const std::string& name) {
  const auto text = Text();
  if (!text) return text.Failure();
  const Edited edited = ReplaceBlocks(text.Value(), name, "");
  if (edited.found) return Rewrite(text.Value(), edited.text);
  return support::Failed(support::ErrorCode::NotFound, support::Sentence::FileMissing, {"\"" + name + "\""});
}

support::Result<void> EqPresetFile::Rewrite(const std::string& old_text, const std::string& new_text) {
  const auto copied = files_.Save(folder_.Native("\\EQ2.tlv"), old_text);
  if (!copied) return copied;
  return files_.Save(Path(), new_text);
}

void ApplyEqPreset(EqBank bank, const EqPreset& preset, support::Settings& settings,
                   const std::function<void(int, int)>& set_slider) {
  const bool first = bank == EqBank::First;
  settings.SetText("EQ", first ? "Preset1" : "Preset2", preset.name);
  int slider = first ? 0 : kEqBands;
  for (const int value : EqValuesOf(preset.value_line)) set_slider(slider++, value);
}

}  // namespace decks
