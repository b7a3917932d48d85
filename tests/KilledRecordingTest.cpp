// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <signal.h>
#include <sndfile.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <new>
#include <numeric>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "engine/Recorder.h"
#include "platform/codec/FfmpegDecoder.h"
#include "platform/codec/FfmpegEncoderFactory.h"
#include "platform/files/DiskSpace.h"
#include "platform/files/testing/TestFolder.h"

namespace {

using platform::files::testing::TestFolder;

constexpr int kHallRate = 44100;

int Kills() {
  const char* told = std::getenv("DJ_KILLS");
  return std::max(1, told == nullptr ? 20 : std::atoi(told));
}

/// Frames that the dying process has handed over.
class SharedFrames {
 public:
  SharedFrames()
      : frames_(new (mmap(nullptr, sizeof(Count), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
                    Count(0)) {}
  ~SharedFrames() { munmap(frames_, sizeof(Count)); }
  SharedFrames(const SharedFrames&) = delete;
  SharedFrames& operator=(const SharedFrames&) = delete;
  std::atomic<std::int64_t>& operator*() { return *frames_; }

 private:
  using Count = std::atomic<std::int64_t>;
  Count* frames_;
};

using Recorders = std::vector<std::unique_ptr<engine::Recorder>>;

/// A hall that plays as fast as all recorders follow: what is measured is what they hold back, not how busy
/// the machine is.
class Hall final : public engine::ProgrammeSource {
 public:
  std::unique_ptr<engine::ProgrammeReader> Open(int, std::uint32_t) override {
    return std::make_unique<engine::ProgrammeReader>(tap_, kHallRate);
  }
  std::int64_t Heard(int) override { return written_; }
  /// Never comes back.
  [[noreturn]] void Play(Recorders& recorders, std::atomic<std::int64_t>& told) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> noise(-0.1F, 0.1F);
    std::array<float, 2 * 441> block{};
    while (true) {
      WaitFor(recorders);
      for (std::size_t i = 0; i < block.size(); i += 2) {
        block[i] = 0.4F * std::sin(0.03F * static_cast<float>(written_++)) + noise(random);
        block[i + 1] = block[i] + noise(random);
      }
      tap_->Write(written_ - 441, block);
      told = written_;
    }
  }

 private:
  /// Until each has given its encoder all but the newest moments.
  void WaitFor(Recorders& recorders) const {
    constexpr std::chrono::milliseconds kBehind(350);  // 200 that it holds, and its next turn
    const std::chrono::microseconds played(written_ * 1'000'000 / kHallRate);
    for (auto& recorder : recorders) {
      while (recorder->Progress().length + kBehind < played) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      }
    }
  }

  std::shared_ptr<engine::ProgrammeTap> tap_ = std::make_shared<engine::ProgrammeTap>();
  std::int64_t written_ = 0;
};

/// All formats are recorded at once by a process that is killed at a random moment.
class KilledRecording : public ::testing::Test {
 protected:
  static constexpr std::array<const char*, 6> kFiles{"a.wav",  "a.flac", "a.ogg",
                                                     "a.opus", "a.mp3",  "deep.flac"};

  static void RecordUntilKilled(const std::filesystem::path& folder, std::atomic<std::int64_t>& told) {
    Hall hall;
    platform::codec::FfmpegEncoderFactory encoders;
    platform::files::DiskSpace space;
    support::SteadyClock clock;
    Recorders recorders;
    for (const char* file : kFiles) {
      recorders.push_back(std::make_unique<engine::Recorder>(
          engine::RecorderPorts{hall, encoders, space, clock}, engine::Recorder::Running::OwnThread));
      decks::RecordingWish wish{.file = {(folder / file).string()}};
      wish.file.title = "The evening";
      if (std::string_view(file).starts_with("deep")) wish.bits = 24;
      recorders.back()->Start(wish);
    }
    for (auto& recorder : recorders) {
      while (!recorder->Progress().recording) std::this_thread::yield();
    }
    hall.Play(recorders, told);
  }
  static void KillAfter(std::chrono::milliseconds time, const TestFolder& folder,
                        std::atomic<std::int64_t>& told) {
    told = 0;
    const pid_t child = fork();
    if (child == 0) RecordUntilKilled(folder.Path(), told);
    const auto frames = static_cast<std::int64_t>(time.count()) * kHallRate / 1000;
    while (told < frames) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
  }
  static double SecondsByOurs(const std::string& path) {
    auto opened = platform::codec::FfmpegDecoder::Open(path);
    if (!opened) return 0;
    std::vector<std::int16_t> piece(1 << 16);
    std::int64_t frames = 0;
    for (auto read = opened.Value()->Read(piece); read && read.Value() > 0;
         read = opened.Value()->Read(piece)) {
      frames += read.Value();
    }
    return static_cast<double>(frames) / opened.Value()->Format().sample_rate;
  }
  /// By a library with decoders of other makers.
  static double SecondsByOthers(const std::string& path) {
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (file == nullptr) return 0;
    std::vector<float> piece(1 << 16);
    sf_count_t frames = 0;
    for (sf_count_t read = 1; read > 0; frames += read) {
      read = sf_readf_float(file, piece.data(), static_cast<sf_count_t>(piece.size()) / 2);
    }
    sf_close(file);
    return static_cast<double>(frames) / info.samplerate;
  }

  SharedFrames told;
};

TEST_F(KilledRecording, LosesAtMostItsLastSecondInEveryFormatForEveryPlayer) {
  std::mt19937 random(5);
  std::uniform_int_distribution<int> moments(1200, 4000);
  std::map<std::string, std::vector<double>> lost;
  for (int i = 0; i < Kills(); ++i) {
    const TestFolder folder;
    KillAfter(std::chrono::milliseconds(moments(random)), folder, *told);
    const double played = static_cast<double>(*told) / kHallRate;
    for (const char* file : kFiles) {
      const std::string path = (folder / file).string();
      for (const bool repaired : {false, true}) {
        if (repaired) {
          ASSERT_TRUE(platform::codec::FfmpegEncoderFactory().Repair(path)) << file;
        }
        const std::string as = std::string(file) + (repaired ? " repaired" : "");
        lost[as].push_back(played - SecondsByOurs(path));
        lost[as + " by others"].push_back(played - SecondsByOthers(path));
      }
    }
  }
  for (auto& [file, seconds] : lost) {
    const double most = *std::max_element(seconds.begin(), seconds.end());
    const double sum = std::accumulate(seconds.begin(), seconds.end(), 0.0);
    std::printf("%-28s lost %.2f s on average, %.2f at most of %zu kills\n", file.c_str(),
                sum / static_cast<double>(seconds.size()), most, seconds.size());
    EXPECT_LE(most, 1) << file;
  }
}

}  // namespace
