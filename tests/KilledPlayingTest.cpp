// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// A process that plays an evening by itself is killed at any moment, and started again on what it left.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "app/resume/Journal.h"
#include "app/testing/AllParts.h"
#include "catalogue/IndexFile.h"
#include "catalogue/testing/FakeTagReader.h"
#include "engine/NullDevice.h"
#include "engine/SoundEngine.h"
#include "engine/testing/SoundStage.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/files/testing/TestFolder.h"
#include "platform/sidestore/SqliteSideStore.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "support/testing/MemorySettings.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Seconds = std::chrono::duration<double>;

/// One output in real time that nobody hears.
class TimedOutputs final : public engine::OutputDevices {
 public:
  std::vector<engine::OutputDeviceInfo> List() override {
    return {engine::testing::StereoOutput("hall", true)};
  }
  support::Result<std::unique_ptr<engine::OutputDevice>> Open(const engine::OutputRequest& request,
                                                              engine::RenderSource& source) override {
    return std::unique_ptr<engine::OutputDevice>(
        std::make_unique<engine::NullDevice>(List().front(), request, source, nullptr));
  }
  void OnChange(std::function<void()> /*changed*/) override {}
};

/// What the process says of itself a hundred times a second.
struct Report {
  struct Deck {
    bool sounds = false;
    int track = 0;     ///< the first number in the file's name
    double place = 0;  ///< in seconds
  } decks[2];
  [[nodiscard]] bool Sounds() const { return decks[0].sounds || decks[1].sounds; }
};

Report ReportOf(const app::WorkstationView& view) {
  constexpr float kAudible = -60;
  Report report;
  for (std::size_t i = 0; i < 2; ++i) {
    const app::DeckView& deck = view.decks[i];
    report.decks[i].sounds = deck.state == app::DeckView::State::Playing && deck.left_db > kAudible;
    report.decks[i].track = std::atoi(fs::path(deck.filename).filename().c_str());
    report.decks[i].place = Seconds(deck.position).count();
  }
  return report;
}

/// Plays until it is killed: what it finds in the folder, or the tracks where there is nothing yet.
void PlayTheEvening(const fs::path& folder, const std::vector<std::string>& tracks, int pipe) {
  const support::SteadyClock clock;
  platform::files::DiskFileSaver files;
  support::testing::MemorySettings settings;
  settings.Set(support::kApplication, "Settings", "Automix", "True");
  settings.Set(support::kApplication, "Settings", "MixPoints", "False");
  settings.Set(support::kApplication, "Mixer", "MixTime", "2");
  catalogue::testing::FakeTagReader tags;
  TimedOutputs outputs;
  platform::codec::FfmpegDecoderFactory decoders;
  platform::stretch::LibraryStretcherFactory stretchers;
  platform::sidestore::SqliteSideStore store(folder / "tlv.side");
  support::ThreadPool decoding(2), workers(2), journal(2);
  engine::SoundEngine engine({outputs, decoders, stretchers, decoding, clock},
                             engine::SoundEngine::Feeding::OwnThread);
  app::Ports ports{engine, engine, tags, settings, files, workers, clock};
  ports.side_store = &store;
  ports.journal = &journal;
  app::Workstation station(ports, support::ProgramFolder(folder), app::Workstation::Conducting::OwnThread);
  station.StartUp();
  if (station.Collections().Playlist(1).Rows() == 0) {
    for (const std::string& track : tracks)
      station.Collections().Playlist(1).AddRow(std::vector<std::string_view>{"", track, "", track});
    station.Lists().Follow();
    station.Lists().SetAutomix(true);
  }
  while (true) {
    station.PumpWindow();
    station.Lists().Follow();
    const Report report = ReportOf(station.View());
    if (write(pipe, &report, sizeof report) != sizeof report) _exit(1);
    std::this_thread::sleep_for(10ms);
  }
}

/// The process, as it is seen from outside.
class Player {
 public:
  Player(const fs::path& folder, const std::vector<std::string>& tracks)
      : started_(std::chrono::steady_clock::now()) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    process_ = fork();
    if (process_ == 0) PlayTheEvening(folder, tracks, ends[1]);
    close(ends[1]);
    pipe_ = ends[0];
  }
  ~Player() {
    if (process_ > 0) Kill();
    if (pipe_ >= 0) close(pipe_);
  }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  /// False when it says nothing for ten seconds.
  bool Read(Report& report) const {
    pollfd ready{pipe_, POLLIN, 0};
    return poll(&ready, 1, 10'000) == 1 && read(pipe_, &report, sizeof report) == sizeof report;
  }
  /// When it was heard first after its start; it was not where this is negative.
  double UntilItSounds(Report& report) const {
    while (Since() < 10 && Read(report)) {
      if (report.Sounds()) return Since();
    }
    return -1;
  }
  void Kill() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    process_ = -1;
  }
  [[nodiscard]] double Since() const { return Seconds(std::chrono::steady_clock::now() - started_).count(); }

 private:
  std::chrono::steady_clock::time_point started_;
  pid_t process_ = -1;
  int pipe_ = -1;
};

class KilledPlaying : public ::testing::Test {
 protected:
  static int Kills() {
    const char* wanted = std::getenv("DJ_KILLS");
    return wanted == nullptr ? 10 : std::max(1, std::atoi(wanted));
  }
  /// Short tracks, so that every second kill falls into a mix or just beside it.
  KilledPlaying() {
    using platform::codec::testing::Tone;
    const std::string first = media_.Write("first.flac", Tone(7s, {400, 0.4}));
    for (int track = 1; track <= 8 + Kills() / 2; ++track) {
      tracks_.push_back(media_.PathOf(std::to_string(track) + ".flac"));
      fs::copy_file(first, tracks_.back());
    }
  }
  /// Each kill stands for itself here; what the program falls over twice is another test's.
  void ForgetFalls() const {
    auto journal = app::ReadJournal(support::ProgramFolder(folder_.Path())).newest;
    ASSERT_TRUE(journal) << "nothing whole was left";
    journal->suspects.clear();
    journal->start = {};
    ++journal->number;
    for (const std::string_view name : app::kJournalFiles)
      folder_.Write(name.substr(1), app::JournalText(*journal));
  }
  void ExpectTheListWhole() const {
    catalogue::track_table list(catalogue::TrackColumns());
    const auto read = catalogue::LoadIndex(folder_ / "tlv.list1", list);
    ASSERT_TRUE(read.Ok());
    EXPECT_EQ(read.Value().Skipped(), 0);
    EXPECT_EQ(list.Rows(), static_cast<int>(tracks_.size()));
  }
  /// The median, what one of a hundred passes, and the largest.
  static std::string Spread(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const auto at = [&values](double share) {
      return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
    };
    char text[64];
    std::snprintf(text, sizeof text, "%.2f, %.2f, %.2f s", at(0.5), at(0.99), at(1));
    return text;
  }

  platform::codec::testing::MediaMaker media_;
  platform::files::testing::TestFolder folder_;
  std::vector<std::string> tracks_;
};

TEST_F(KilledPlaying, GoesOnWithinThreeSecondsAndASecondOfItsPlaceWheneverItIsKilled) {
  std::mt19937 seed(std::random_device{}());
  std::uniform_real_distribution<double> later(0.2, 2);
  std::vector<double> until_sound, off;
  int mixes = 0;
  Report last;
  for (int kill = 0; kill <= Kills(); ++kill) {
    SCOPED_TRACE("after kill " + std::to_string(kill));
    Player player(folder_.Path(), tracks_);
    Report first;
    const double heard = player.UntilItSounds(first);
    ASSERT_GE(heard, 0) << "silence";
    if (kill > 0) {
      until_sound.push_back(heard);
      for (int deck = 0; deck < 2; ++deck) {
        if (!last.decks[deck].sounds || !first.decks[deck].sounds) continue;
        EXPECT_EQ(first.decks[deck].track, last.decks[deck].track);
        off.push_back(std::abs(first.decks[deck].place - last.decks[deck].place));
      }
    }
    mixes += first.decks[0].sounds && first.decks[1].sounds ? 1 : 0;
    last = first;
    const double until = player.Since() + later(seed);
    while (player.Since() < until) ASSERT_TRUE(player.Read(last));
    player.Kill();
    ExpectTheListWhole();
    ForgetFalls();
    if (HasFatalFailure()) return;
  }
  EXPECT_LT(*std::max_element(until_sound.begin(), until_sound.end()), 3);
  EXPECT_LT(*std::max_element(off.begin(), off.end()), 1);
  EXPECT_GE(off.size(), until_sound.size()) << "a place was compared after each kill";
  std::printf("%zu kills, %d in a mix; p50, p99, largest: sound after %s; off its place %s\n",
              until_sound.size(), mixes, Spread(until_sound).c_str(), Spread(off).c_str());
}

}  // namespace
