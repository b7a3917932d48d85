// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/djinspect/verbs/Arguments.h"

#include "support/Text.h"

namespace tools::djinspect {
namespace {

struct Usage {
  std::size_t words = 0;
  std::map<std::string, bool, std::less<>> options;  ///< whether it takes a value
  std::vector<std::string> needed;                   ///< options that have to be given
};

Usage ReadUsage(std::string_view text) {
  Usage usage;
  bool is_value = false;  // the word behind an option that has to be given
  for (std::string_view word : support::Split(text, ' ')) {
    if (is_value) {
      is_value = false;
    } else if (word.starts_with("--")) {
      usage.options[std::string(word)] = is_value = true;
      usage.needed.emplace_back(word);
    } else if (word.starts_with("[")) {
      word.remove_prefix(1);
      usage.options[std::string(word.substr(0, word.find(']')))] = !word.ends_with("]");
    } else if (!word.ends_with("]") && !word.empty()) {
      ++usage.words;
    }
  }
  return usage;
}

}  // namespace

std::optional<Arguments> ParseArguments(std::string_view usage_text, std::span<const std::string> given) {
  const Usage usage = ReadUsage(usage_text);
  Arguments arguments;
  for (auto word = given.begin(); word != given.end(); ++word) {
    if (!word->starts_with("--")) {
      arguments.words.push_back(*word);
      continue;
    }
    const auto option = usage.options.find(*word);
    if (option == usage.options.end()) return std::nullopt;
    std::string& value = arguments.options[*word];
    if (!option->second) continue;
    if (++word == given.end()) return std::nullopt;
    value = *word;
  }
  if (arguments.words.size() != usage.words) return std::nullopt;
  for (const std::string& option : usage.needed) {
    if (!arguments.Has(option)) return std::nullopt;
  }
  return arguments;
}

}  // namespace tools::djinspect
