// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "benchmarks/Report.h"
#include "dmx/ShowFile.h"
#include "dmx/testing/ShowMaker.h"
#include "platform/files/testing/TestFolder.h"
#include "platform/usb/K8062Interface.h"
#include "platform/usb/testing/EmulatedBus.h"
#include "program/Program.h"
#include "ui/forms/frmMain.h"

// A program of its own, as it runs with the emulation preloaded.

namespace {

using platform::usb::testing::EmulatedBus;
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
  EmulatedBus bus;
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

/// A show that fades so many channels up and down without end.
void WriteShow(const std::filesystem::path& path, int lit) {
  const auto channels = static_cast<std::size_t>(lit);
  dmx::Show show;
  dmx::testing::AddScene(show.scenes, 1000,
                         {dmx::testing::StepWith("00:01.0", "00:00.0", std::vector<int>(channels, 255)),
                          dmx::testing::StepWith("00:01.0", "00:00.0", std::vector<int>(channels, 1))});
  std::ofstream(path, std::ios::binary) << dmx::ShowText(show);
}

/// Moments at which frames began to be shown, as a thread of its own saw them.
class Watch {
 public:
  explicit Watch(EmulatedBus& bus) : thread_([this, &bus] { Run(bus); }) {}
  std::vector<double> Intervals() {
    ending_ = true;
    thread_.join();
    return intervals_;
  }

 private:
  void Run(EmulatedBus& bus) {
    auto last = std::chrono::steady_clock::now();
    for (bool first = true; !ending_; first = false) {
      const int frames = bus.Box().FramesShown();
      if (!bus.WaitUntil([&](const K8062Decoder& box) { return box.FramesShown() != frames; })) std::abort();
      const auto now = std::chrono::steady_clock::now();
      if (!first) intervals_.push_back(std::chrono::duration<double, std::milli>(now - last).count());
      last = now;
    }
  }

  std::atomic<bool> ending_{false};
  std::vector<double> intervals_;
  std::thread thread_;
};

/// The same in the whole program, with the console's faders following a show on the screen.
void MeasureBehindTheWindow(int lit, std::vector<bench::Figure>& figures) {
  constexpr int kSeconds = 20;
  const platform::files::testing::TestFolder home;
  setenv("XDG_CONFIG_HOME", home.Path().c_str(), 1);
  std::filesystem::create_directories(home / "DMXShows");
  WriteShow(home / "DMXShows" / "Bench.SHW", lit);
  EmulatedBus bus;
  bus.SetPace(10ms);
  bus.Plug();
  program::Program program(home.Path());
  QWidget& window = program.Window();
  window.resize(1920, 1080);
  window.show();
  const auto click = [&](const char* name) {
    QTest::mouseClick(window.findChild<QWidget*>(QLatin1String(name)), Qt::LeftButton);
    QTest::qWait(500);
  };
  click("Page4");
  click("K8062");
  QTest::keyClick(window.findChild<QComboBox*>(QStringLiteral("ShowList")), Qt::Key_Down);
  QTest::qWait(500);
  click("ShowPlay");
  QTest::qWait(2000);
  if (bus.Box().ShownChannels() != lit) std::abort();
  Watch watch(bus);
  QTest::qWait(kSeconds * 1000);
  const std::vector<double> intervals = watch.Intervals();
  const std::string what = "the same while the window draws a show at 1920 x 1080, ";
  for (const auto& [name, share] : {std::pair("p50", 0.5), std::pair("p99", 0.99), std::pair("largest", 1.0)})
    figures.push_back({what + name, "ms", bench::Percentile(intervals, share), {}, ""});
}

}  // namespace

int main(int argc, char* argv[]) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  setenv("PULSE_SERVER", "unix:/nonexistent", 1);
  QApplication application(argc, argv);
  std::vector<bench::Figure> figures;
  for (const int lit : {27, 168}) MeasureReaction(lit, figures);
  MeasureInterval(27, figures);
  MeasureBehindTheWindow(27, figures);
  bench::Print(figures);
  return 0;
}
