// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <malloc.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "benchmarks/Bench.h"
#include "dmx/LightEffects.h"
#include "dmx/ShowFile.h"
#include "dmx/ShowPlayer.h"
#include "dmx/testing/Rig.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/files/testing/TestFolder.h"
#include "platform/usb/K8062Frame.h"
#include "platform/usb/testing/K8062Decoder.h"

namespace bench {
namespace {

using platform::files::testing::RunInChild;
using platform::files::testing::TestFolder;
using Clock = std::chrono::steady_clock;
using Universe512 = std::array<dmx::DmxLevel, dmx::kUniverseChannels>;

constexpr int kLightRuns = 7;

double SecondsFrom(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// The largest show that the editors are made for: every record differs from its neighbours.
dmx::Show LargeShow() {
  constexpr int kScenes = 100;
  constexpr int kSteps = 20;
  dmx::Show show;
  std::mt19937 random(1);
  for (int s = 0; s < kScenes; ++s) {
    dmx::Scene& scene = show.scenes.Add();
    scene.SceneName = "Scene " + std::to_string(s);
    for (int t = 0; t < kSteps; ++t) {
      dmx::SceneStep& step = scene.Steps.Add({"00:02.0", "00:01.0", {}});
      for (int channel = 0; channel < dmx::kUniverseChannels; ++channel) {
        const auto value = static_cast<std::int16_t>(random() % 256);
        const auto before = static_cast<std::int16_t>(random() % 256);
        step.SceneChannel.Add({value, static_cast<std::int16_t>(value - before), before, value != before});
      }
    }
  }
  return show;
}

void MeasureShowFile(std::vector<Figure>& figures) {
  const TestFolder folder;
  const std::filesystem::path path = folder / "large.SHW";
  platform::files::DiskFileSaver saver;
  std::vector<double> save, open;
  double megabytes = 0;
  for (int run = 0; run < kLightRuns; ++run) {
    const dmx::Show show = LargeShow();
    auto begin = Clock::now();
    if (!dmx::SaveShow(saver, path, show)) std::abort();
    save.push_back(SecondsFrom(begin));
    megabytes = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
    begin = Clock::now();
    const auto reading = dmx::OpenShow(path);
    open.push_back(SecondsFrom(begin));
    if (!reading || !(reading.Value().show == show)) std::abort();
  }
  RunInChild([&] {
    malloc_trim(0);
    const double before = ResidentMegabytes();
    const auto kept = dmx::OpenShow(path);
    malloc_trim(0);
    folder.Write("memory", std::to_string(ResidentMegabytes() - before));
  });
  const std::string what = "show of 100 scenes x 20 steps x 512 channels: ";
  figures.push_back({what + "file", "MB", megabytes, {}, ""});
  figures.push_back({what + "save, flushed to the disk", "MB/s", megabytes / Median(save), {}, ""});
  figures.push_back({what + "open", "MB/s", megabytes / Median(open), {}, "at least 200"});
  figures.push_back({what + "memory", "MB", std::stod(folder.Read("memory")), {}, ""});
}

class NoBox final : public dmx::DmxInterface {
  void StartDevice() override {}
  void SetChannelCount(int) override {}
  void SetData(int, dmx::DmxLevel) override {}
  void StopDevice() override {}
};

/// The player on all faders for a minute of fades, looked at every 10 ms as the conductor does.
Figure StepEngineShare() {
  constexpr int kPlayedSeconds = 60;
  std::vector<int> channels(dmx::kUniverseChannels);
  std::iota(channels.begin(), channels.end(), 1);
  auto plan = dmx::ShowPlan::Make(LargeShow().scenes, channels);
  if (!plan) std::abort();
  const auto shared = std::make_shared<const dmx::ShowPlan>(std::move(plan).Value());
  std::vector<double> shares;
  for (int run = 0; run < kLightRuns; ++run) {
    NoBox no_box;
    dmx::Universe universe(no_box);
    dmx::ShowPlayer player(universe);
    support::TimePoint now{};
    player.Play(shared, dmx::ShowPlayer::Repeat::Once, now);
    const double begin = ThreadCpuSeconds();
    for (int tick = 0; tick < kPlayedSeconds * 100; ++tick) player.Tick(now += std::chrono::milliseconds(10));
    shares.push_back((ThreadCpuSeconds() - begin) / kPlayedSeconds * 100);
  }
  return {
      "step engine, 512 channels fading, 44 looks a second", "% of a core", Median(shares), {}, "below 1"};
}

/// Colour chase, pulse and circle on 48 moving heads, as they are merged each tick of the conductor.
Figure EffectsOfATick() {
  constexpr int kHeads = 48;
  constexpr int kTicks = 1000;
  dmx::DMXname rig;
  std::vector<dmx::LightEffect> effects(3);
  constexpr std::array kKinds{dmx::EffectKind::ColourChase, dmx::EffectKind::Pulse, dmx::EffectKind::Circle};
  for (std::size_t i = 0; i < kKinds.size(); ++i) effects[i].kind = kKinds[i];
  for (int head = 0; head < kHeads; ++head) {
    dmx::testing::AddHead(rig, 1 + 6 * head);
    for (dmx::LightEffect& effect : effects) effect.fixtures.push_back(head + 1);
  }
  std::vector<dmx::FaderMove> moves;
  const double begin = ThreadCpuSeconds();
  for (int tick = 0; tick < kTicks; ++tick) {
    moves.clear();
    const dmx::MusicPlace music{tick * 0.02, 120};
    for (std::size_t place = 0; place < kHeads; ++place) {
      const dmx::DMXfilename& head = *rig.Item(static_cast<int>(place) + 1);
      for (const dmx::LightEffect& effect : effects) {
        const double rounds = dmx::RoundsAt(effect, music, 0, dmx::Flashing::Guarded);
        dmx::AddMoves(moves, head, dmx::Share(head, {}, dmx::LookAt(effect, place, rounds, {})).effect);
      }
    }
  }
  const double seconds = ThreadCpuSeconds() - begin;
  return {"three effects on 48 heads, a tick", "us", seconds / kTicks * 1e6, {}, "below 1000"};
}

void MeasureEncoder(std::vector<Figure>& figures) {
  const auto measure = [&](const std::string& name, auto make) {
    constexpr int kFrames = 3000;
    std::mt19937 random(1);
    double ours = 0, greedy = 0, seconds = 0;
    for (int i = 0; i < kFrames; ++i) {
      const Universe512 levels = make(random);
      const double begin = ThreadCpuSeconds();
      ours += static_cast<double>(platform::usb::EncodeK8062Frame(levels, dmx::kUniverseChannels).size());
      seconds += ThreadCpuSeconds() - begin;
      greedy += platform::usb::testing::GreedyK8062Packets(levels, dmx::kUniverseChannels);
    }
    figures.push_back({"K8062 frame, " + name, "packets", ours / kFrames, greedy / kFrames, "never more"});
    figures.push_back({"encoding it", "us", seconds / kFrames * 1e6, {}, ""});
  };
  measure("half of all channels lit at random", [](std::mt19937& random) {
    Universe512 levels{};
    for (auto& level : levels)
      level = random() % 2 == 0 ? dmx::DmxLevel{0} : static_cast<dmx::DmxLevel>(random());
    return levels;
  });
  measure("twelve fixtures of 14 channels with some at rest", [](std::mt19937& random) {
    Universe512 levels{};
    for (std::size_t channel = 0; channel < 168; ++channel)
      levels[channel] = random() % 10 < 4 ? dmx::DmxLevel{0} : static_cast<dmx::DmxLevel>(random());
    return levels;
  });
}

}  // namespace

std::vector<Figure> MeasureLights() {
  std::vector<Figure> figures;
  MeasureShowFile(figures);
  figures.push_back(StepEngineShare());
  figures.push_back(EffectsOfATick());
  MeasureEncoder(figures);
  return figures;
}

}  // namespace bench
