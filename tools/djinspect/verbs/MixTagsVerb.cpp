// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "catalogue/MixingTags.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {

/// The values for mixing in a text block as a tag keeps it, by their columns' keys.
ExitCode InspectMixTags(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const auto block = WholeFile(arguments.words[0], err);
  if (!block) return ExitCode::NothingRead;
  const catalogue::MixingTags tags = catalogue::ScanTextBlock(*block);
  nlohmann::ordered_json told = nlohmann::ordered_json::object();
  const auto add = [&told](const char* key, const std::optional<std::string>& value) {
    if (value) told[key] = ReadableText(*value);
  };
  add("Gain", tags.gain);
  add("StartMixPoint", tags.start_mix_point);
  add("EndMixPoint", tags.end_mix_point);
  add("BPM", tags.bpm);
  out << told.dump(1) << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
