// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "support/Text.h"
#include "tools/djinspect/verbs/DecodingEngine.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
ExitCode InspectMixPoints(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  constexpr std::optional<std::int64_t> kDefaultPercent = 3;
  constexpr int kHighestPercent = 100;
  const auto given = arguments.options.find("--gain-percent");
  const auto percent =
      given == arguments.options.end() ? kDefaultPercent : support::ParseInteger(given->second);
  if (!percent || *percent < 0 || *percent > kHighestPercent) {
    return ExitCode::WrongUse;
  }
  DecodingEngine decoding;
  if (const auto prepared = decoding.Prepare(arguments.words[0]); !prepared) {
    err << prepared.Failure().text << '\n';
    return ExitCode::NothingRead;
  }
  NoIndicator nobody;
  decks::MixPointScan scan(decoding.engine, decoding.engine);
  const auto found = scan.Run({arguments.words[0], 0, static_cast<int>(*percent)}, nobody);
  if (!found) {
    err << decoding.engine.LastError().text << '\n';
    return ExitCode::NothingRead;
  }
  nlohmann::ordered_json points;
  points["startBytes"] = found->start.value;
  points["endBytes"] = found->end.value;
  points["startSeconds"] = found->start_seconds;
  points["endSeconds"] = found->end_seconds;
  points["lengthBytes"] = found->length.value;
  out << points.dump(2) << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
