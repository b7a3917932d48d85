// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "dmx/LightGroups.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {

/// Saved groups of lights, each with its fixtures.
ExitCode InspectLightGroups(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  using Json = nlohmann::ordered_json;
  const auto text = WholeFile(arguments.words[0], err);
  if (!text) return ExitCode::NothingRead;
  const auto groups = dmx::ParseLightGroups(*text);
  if (!groups) {
    err << "These are no groups of lights, or not all of them.\n";
    return ExitCode::NothingRead;
  }
  Json tree{{"groups", Json::array()}};
  for (const dmx::LightGroup& group : *groups) {
    Json members = Json::array();
    for (const dmx::LightGroup::Member& member : group.members)
      members.push_back({{"file", ReadableText(member.file)}, {"start", member.start}});
    tree["groups"].push_back({{"name", ReadableText(group.name)}, {"fixtures", std::move(members)}});
  }
  out << tree.dump() << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
