// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/usb/K8061Bench.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <numeric>
#include <optional>
#include <string>

#include "platform/usb/K8061Boards.h"
#include "platform/usb/testing/EmulatedK8061.h"

namespace bench {
namespace {

using lightorgan::IoBoards;
using platform::usb::testing::EmulatedK8061;
using Lamps = EmulatedK8061::Lamps;

/// What a refresh shows on both boards, and the calls that say so.
struct Pattern {
  const char* name;
  std::function<Lamps(int refresh)> lamps;
  bool singly;  ///< one call a switched output, as the modes that follow the music make them
};

Lamps Chase(int refresh) {
  return {static_cast<std::uint8_t>(1 << refresh % 8), {}};
}
Lamps Followed(int refresh) {
  Lamps lamps{static_cast<std::uint8_t>(refresh * 37), {}};
  for (std::size_t i = 0; i < lamps.dimmed.size(); ++i)
    lamps.dimmed[i] = static_cast<std::uint8_t>(refresh * 31 + static_cast<int>(i) * 17);
  return lamps;
}
Lamps Still(int) {
  return {0x55, {1, 2, 3, 4, 5, 6, 7, 8}};
}

struct TwoBoards {
  TwoBoards() {
    first.Plug();
    second.Plug();
    std::optional<std::int32_t> answer;
    boards.OpenDevice([&](std::int32_t result) { answer = result; });
    while (!answer) (void)boards.Trouble();
    Show(Still(0), false);
  }
  void Show(const Lamps& lamps, bool singly) {
    for (int board = 0; board < 2; ++board) {
      if (!singly) boards.OutputAllDigital(board, lamps.switched);
      for (int channel = 1; channel <= 8; ++channel) {
        const bool on = ((lamps.switched >> (channel - 1)) & 1) != 0;
        if (singly && on) boards.SetDigitalChannel(board, channel);
        if (singly && !on) boards.ClearDigitalChannel(board, channel);
        boards.OutputAnalogChannel(board, channel, lamps.dimmed[static_cast<std::size_t>(channel - 1)]);
      }
    }
    if (!first.Shows(lamps) || !second.Shows(lamps)) std::abort();
  }

  platform::usb::testing::EmulatedBus bus;
  EmulatedK8061 first{bus, 2, 0};
  EmulatedK8061 second{bus, 3, 1};
  platform::usb::K8061Boards boards;
};

void MeasureExchanges(const Pattern& pattern, std::vector<Figure>& figures) {
  constexpr int kRefreshes = 500;
  TwoBoards rig;
  std::vector<double> exchanges;
  (void)rig.first.TakeCounts(), (void)rig.second.TakeCounts();
  for (int i = 1; i <= kRefreshes; ++i) {
    rig.Show(pattern.lamps(i), pattern.singly);
    const auto first = rig.first.TakeCounts();
    const auto second = rig.second.TakeCounts();
    exchanges.push_back(std::max(first.switched + first.dimmed, second.switched + second.dimmed));
  }
  const std::string what =
      std::string("K8061, two boards, ") + pattern.name + ": exchanges a board and refresh, ";
  figures.push_back({what + "mean",
                     "",
                     std::accumulate(exchanges.begin(), exchanges.end(), 0.0) / kRefreshes,
                     {},
                     "at most 2"});
  figures.push_back({what + "largest", "", Percentile(exchanges, 1.0), {}, ""});
}

void MeasureCallToLamp(std::vector<Figure>& figures) {
  constexpr int kRefreshes = 500;
  TwoBoards rig;
  std::vector<double> times;
  for (int i = 1; i <= kRefreshes; ++i) {
    const auto began = std::chrono::steady_clock::now();
    rig.Show(Followed(i), true);
    times.push_back(
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - began).count());
  }
  const std::string what = "K8061, two emulated boards, all outputs: from the first call to the last lamp, ";
  for (const auto& [name, share] : {std::pair("p50", 0.5), std::pair("p99", 0.99)})
    figures.push_back({what + name, "ms", Percentile(times, share), {}, ""});
}

}  // namespace

void MeasureK8061(std::vector<Figure>& figures) {
  const Pattern patterns[] = {{"a chase", Chase, false},
                              {"all outputs following the music", Followed, true},
                              {"nothing changed", Still, true}};
  for (const Pattern& pattern : patterns) MeasureExchanges(pattern, figures);
  MeasureCallToLamp(figures);
}

}  // namespace bench
