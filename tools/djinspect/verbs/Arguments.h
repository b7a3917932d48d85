// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tools::djinspect {

/// What stands behind the verb on the command line.
struct Arguments {
  std::vector<std::string> words;
  std::map<std::string, std::string, std::less<>> options;  ///< "--name" and its value, empty for a switch

  [[nodiscard]] bool Has(std::string_view option) const { return options.find(option) != options.end(); }
};

/// Reads arguments as a usage line asks for them: "FILE --needed VALUE [--switch] [--option VALUE]". Options
/// may stand anywhere, the last of two equal ones counts. Nothing for any other use.
[[nodiscard]] std::optional<Arguments> ParseArguments(std::string_view usage,
                                                      std::span<const std::string> given);

}  // namespace tools::djinspect
