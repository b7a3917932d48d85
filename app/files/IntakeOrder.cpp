// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/IntakeOrder.h"

#include <optional>

#include "support/Text.h"

namespace app {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

bool FitsALine(std::string_view path) {
  return path.find_first_of(kLineEnd) == std::string_view::npos;
}

std::optional<IntakeOrder> HeadOf(std::string_view line) {
  const auto parts = support::Split(line, ' ');
  if (parts.size() != 3) return std::nullopt;
  const auto list = support::ParseInteger(parts[0]);
  const auto before = support::ParseInteger(parts[1]);
  const bool opened = parts[2] == "opened";
  if (!list || *list < 0 || *list >= static_cast<int>(kLists)) return std::nullopt;
  if (!before || *before < 0 || *before > INT32_MAX) return std::nullopt;
  if (!opened && parts[2] != "dropped") return std::nullopt;
  using Source = IntakeOrder::Source;
  return IntakeOrder{static_cast<ListId>(*list), opened ? Source::Opened : Source::Dropped,
                     static_cast<int>(*before)};
}

}  // namespace

std::string OrdersText(const std::vector<std::shared_ptr<const IntakeOrder>>& orders) {
  std::string text;
  for (const auto& order : orders) {
    const bool opened = order->source == IntakeOrder::Source::Opened;
    text += std::to_string(static_cast<int>(order->list)) + ' ' + std::to_string(order->before);
    text.append(opened ? " opened" : " dropped").append(kLineEnd);
    for (const std::string& path : order->paths) {
      if (FitsALine(path)) text.append("\t").append(path).append(kLineEnd);
    }
  }
  return text;
}

std::vector<IntakeOrder> ReadOrders(std::string_view text) {
  std::vector<IntakeOrder> orders;
  bool understood = false;
  while (!text.empty()) {
    const std::size_t end = text.find(kLineEnd);
    if (end == std::string_view::npos) break;  // a save is whole, so this is none of ours
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end + kLineEnd.size());
    if (line.starts_with('\t')) {
      if (understood && line.size() > 1 && FitsALine(line)) orders.back().paths.emplace_back(line.substr(1));
      continue;
    }
    auto head = HeadOf(line);
    understood = head.has_value();
    if (understood) orders.push_back(std::move(*head));
  }
  std::erase_if(orders, [](const IntakeOrder& order) { return order.paths.empty(); });
  return orders;
}

}  // namespace app
