// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/NameRule.h"

#include <utility>

#include "support/Text.h"

namespace catalogue {
namespace {

std::string_view Stem(std::string_view path) {
  const std::size_t separator = path.find_last_of("/\\");
  const std::string_view name = separator == std::string_view::npos ? path : path.substr(separator + 1);
  const std::size_t point = name.rfind('.');
  return point == std::string_view::npos || point == 0 ? name : name.substr(0, point);
}

}  // namespace

NamesOfFile SplitName(std::string_view path, const NameRule& rule) {
  const std::string_view name = Stem(path);
  const std::size_t at = rule.separator.empty() ? std::string_view::npos : name.find(rule.separator);
  if (!rule.use_split || at == std::string_view::npos) return {{}, name};
  NamesOfFile names{support::Trim(name.substr(0, at)),
                    support::Trim(name.substr(at + rule.separator.size()))};
  if (names.artist.empty() || names.title.empty()) return {{}, name};
  if (rule.order == NameRule::Order::TitleFirst) std::swap(names.artist, names.title);
  if (!rule.use_artist) names.artist = {};
  return names;
}

}  // namespace catalogue
