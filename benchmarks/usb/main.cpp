// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "benchmarks/Report.h"
#include "benchmarks/usb/K8061Bench.h"
#include "platform/usb/K8062Interface.h"
#include "platform/usb/testing/EmulatedK8062.h"

// A program of its own, as it runs with the emulation preloaded.

namespace {

using platform::usb::testing::EmulatedK8062;
using platform::usb::testing::K8062Decoder;
using namespace std::chrono_literals;

/// A box at which so many channels are lit.
struct Rig {
  explicit Rig(int lit, std::chrono::milliseconds pace = 0ms) : channels(lit) {
    bus.SetPace(pace);
    bus.Plug();
    box.StartDevice();
    box.SetChannelCount(dmx::kUniverseChannels);
    for (int channel = 1; channel <= lit; ++channel) box.SetData(channel, 100);
    const bool shown = bus.WaitUntil([&](const K8062Decoder& decoder) {
      return decoder.Shown()[static_cast<std::size_t>(lit - 1)] == 100 && decoder.ShownChannels() < 512;
    });
    if (!shown) std::abort();
  }
  EmulatedK8062 bus;
  platform::usb::K8062Interface box;
  int channels;
};

/// How many packets go out after a level was set until the one that carries it.
void MeasureReaction(int lit, std::vector<bench::Figure>& figures) {
  constexpr int kMoves = 400;
  Rig rig(lit);
  std::mt19937 random(1);
  std::vector<double> packets;
  for (int i = 0; i < kMoves; ++i) {
    const int channel = 1 + static_cast<int>(random() % static_cast<unsigned>(lit));
    const auto place = static_cast<std::size_t>(channel - 1);
    const auto level = static_cast<dmx::DmxLevel>(101 + i % 100);
    const int before = rig.bus.Box().Packets();
    rig.box.SetData(channel, level);
    int after = 0;
    const bool came = rig.bus.WaitUntil([&](const K8062Decoder& decoder) {
      after = decoder.Packets();
      return decoder.Received()[place] == level;
    });
    if (!came) std::abort();
    packets.push_back(after - before);
  }
  const std::string what =
      "K8062 with " + std::to_string(lit) + " channels: SetData to the packet that carries it, ";
  for (const double share : {0.5, 0.99}) {
    figures.push_back(
        {what + (share < 0.6 ? "p50" : "p99"), "packets", bench::Percentile(packets, share), {}, ""});
  }
}

/// From frame to frame at a bus that takes a packet every 10 ms, as the real one does.
void MeasureInterval(int lit, std::vector<bench::Figure>& figures) {
  constexpr int kFrames = 60;
  Rig rig(lit, 10ms);
  std::vector<double> intervals;
  std::uint64_t last = rig.box.Status().frames;
  while (intervals.size() < kFrames) {
    std::this_thread::sleep_for(2ms);
    const dmx::DmxInterfaceStatus status = rig.box.Status();
    if (status.frames == last) continue;
    last = status.frames;
    intervals.push_back(static_cast<double>(status.frame_interval.count()) / 1000);
  }
  const std::string what = "K8062 with " + std::to_string(lit) + " channels: frame interval, ";
  for (const auto& [name, share] : {std::pair("p50", 0.5), std::pair("p99", 0.99), std::pair("largest", 1.0)})
    figures.push_back({what + name, "ms", bench::Percentile(intervals, share), {}, ""});
}

}  // namespace

int main() {
  std::vector<bench::Figure> figures;
  for (const int lit : {27, 168}) MeasureReaction(lit, figures);
  MeasureInterval(27, figures);
  bench::MeasureK8061(figures);
  bench::Print(figures);
  return 0;
}
