// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "app/files/IntakeOrder.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {

/// What the last run has left to add.
ExitCode InspectAdding(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  constexpr const char* kLists[] = {"catalogue", "karaoke", "playlist1", "playlist2", "playlist3"};
  const auto text = WholeFile(arguments.words[0], err);
  if (!text) return ExitCode::NothingRead;
  auto tree = nlohmann::ordered_json::object();
  tree["orders"] = nlohmann::ordered_json::array();
  for (const app::IntakeOrder& order : app::ReadOrders(*text)) {
    auto paths = nlohmann::ordered_json::array();
    for (const std::string& path : order.paths) paths.push_back(ReadableText(path));
    tree["orders"].push_back({{"list", kLists[static_cast<int>(order.list)]},
                              {"before", order.before},
                              {"opened", order.source == app::IntakeOrder::Source::Opened},
                              {"paths", paths}});
  }
  out << tree.dump() << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
