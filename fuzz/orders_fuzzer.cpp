// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "app/files/IntakeOrder.h"

/// Any bytes are what the last run left to add; what is understood of them says the same when it is written
/// and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto orders = app::ReadOrders({reinterpret_cast<const char*>(data), size});
  std::vector<std::shared_ptr<const app::IntakeOrder>> kept;
  for (const app::IntakeOrder& order : orders) {
    if (order.paths.empty()) abort();
    kept.push_back(std::make_shared<const app::IntakeOrder>(order));
  }
  if (app::ReadOrders(app::OrdersText(kept)) != orders) abort();
  return 0;
}
