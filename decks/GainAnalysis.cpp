// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/GainAnalysis.h"

#include <filesystem>
#include <system_error>

namespace decks {

Command GainAnalysis::CommandFor(const std::string& filename) const {
  const std::filesystem::path beside_us = folder_.Native("\\mp3gain");
  std::error_code ignored;
  const bool there = std::filesystem::is_regular_file(beside_us, ignored);
  return {there ? beside_us.string() : "mp3gain", {"/o", "/s", "s", filename}};
}

support::Result<void> GainAnalysis::Analyse(const std::string& filename, clsMp3Info& info) {
  info.ResetVals();
  const auto output = commands_.Run(CommandFor(filename));
  if (!output) return output.Failure();
  const auto parsed = ParseMp3GainOutput(output.Value());
  if (!parsed) {
    return support::Error{support::ErrorCode::Malformed, "mp3gain gave no gain for \"" + filename + "\"."};
  }
  info = *parsed;
  return {};
}

std::string GainAnalysis::Query(const std::string& filename, clsMp3Info& info) {
  if (!info.Analysed())
    static_cast<void>(Analyse(filename, info));  // without one, the reset values are shown
  return GainText(info);
}

}  // namespace decks
