// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "decks/EqPresets.h"
#include "decks/clsMp3Info.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

/// As the program gets it: a CR LF for every line end.
std::string AsHandedOver(std::string_view captured) {
  std::string text;
  for (std::size_t i = 0; i < captured.size(); ++i) {
    if (captured.substr(i, 2) == "\r\n") ++i;
    const char c = captured[i];
    if (c == '\n' || c == '\r') text += '\r';
    text += c == '\r' ? '\n' : c;
  }
  return text;
}

}  // namespace

/// What the gain record would hold after mp3gain printed the file's text.
ExitCode InspectMp3Gain(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const auto captured = WholeFile(arguments.words[0], err);
  if (!captured) return ExitCode::NothingRead;
  const auto info = decks::ParseMp3GainOutput(AsHandedOver(*captured));
  if (!info) {
    err << "The text gives no gain.\n";
    return ExitCode::NothingRead;
  }
  nlohmann::ordered_json record;
  record["RadiodBGain"] = info->RadiodBGain;
  record["CurrMaxAmp"] = info->CurrMaxAmp;
  record["CurrMaxGain"] = info->CurrMaxGain;
  record["CurrMinGain"] = info->CurrMinGain;
  out << record.dump(2) << '\n';
  return ExitCode::Read;
}

/// The presets of an equaliser file, in its order.
ExitCode InspectPresets(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const auto text = WholeFile(arguments.words[0], err);
  if (!text) return ExitCode::NothingRead;
  auto presets = nlohmann::ordered_json::array();
  for (const decks::EqPreset& preset : decks::ParseEqPresets(*text)) {
    presets.push_back(
        {{"name", ReadableText(preset.name)}, {"values", decks::EqValuesOf(preset.value_line)}});
  }
  out << presets.dump(2) << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
