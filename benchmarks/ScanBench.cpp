// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <ftw.h>
#include <taglib/fileref.h>
#include <taglib/tag.h>

#include <chrono>
#include <cstdlib>
#include <future>
#include <memory>
#include <string>
#include <thread>

#include "app/files/KaraokeSongReader.h"
#include "app/files/TreeScan.h"
#include "benchmarks/Bench.h"
#include "benchmarks/MpdServer.h"
#include "benchmarks/ScanTree.h"
#include "platform/files/DiskFolders.h"
#include "platform/files/testing/TestFolder.h"
#include "platform/sidestore/SqliteSideStore.h"
#include "platform/tags/TagLibTagReader.h"
#include "support/Executor.h"

namespace bench {
namespace {

using platform::files::testing::TestFolder;

constexpr int kFiles = 10'000, kPairs = 2'000;
constexpr int kRuns = 5;

struct Cost {
  double seconds = 0;
  double cpu = 0;
};

template <typename Work>
Cost CostOf(const Work& work) {
  const double cpu = ProcessCpuSeconds();
  const auto begin = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
  return {took.count(), ProcessCpuSeconds() - cpu};
}

/// What the library itself takes for the fields of a row, one file after the other.
std::size_t ReadBare(const std::vector<std::string>& paths) {
  std::size_t letters = 0;
  for (const std::string& path : paths) {
    const TagLib::FileRef file(path.c_str());
    if (file.isNull() || file.audioProperties() == nullptr) std::abort();
    const TagLib::Tag* const tag = file.tag();
    for (const TagLib::String& text :
         {tag->artist(), tag->title(), tag->album(), tag->genre(), tag->comment()}) {
      letters += text.to8Bit(true).size();
    }
    letters += tag->year() + static_cast<std::size_t>(file.audioProperties()->lengthInMilliseconds());
  }
  return letters;
}

/// What the system itself takes to list the folders and to look at each file.
void LookAtAll(const std::filesystem::path& music) {
  constexpr int kFoldersOpen = 16;
  static int seen;
  seen = 0;
  const auto count = [](const char*, const struct stat*, int kind, FTW*) { return seen += kind == FTW_F, 0; };
  if (nftw(music.c_str(), count, kFoldersOpen, FTW_PHYS) != 0 || seen != kFiles) std::abort();
}

/// The program's scan with everything that belongs to it.
class Scanner {
 public:
  explicit Scanner(const TestFolder& folder)
      : scratch_(folder / "Tagging.tlv"), store_(folder / "tlv.side") {}

  int Scan(const std::filesystem::path& music, catalogue::ScanMode mode = catalogue::ScanMode::Music) {
    std::promise<int> rows;
    const auto running = scan_.Start(
        {mode, music.string()}, [&rows](const app::ScanFound& found) { rows.set_value(found.rows.Rows()); });
    return rows.get_future().get();
  }

 private:
  static int Cores() { return std::max(1, static_cast<int>(std::thread::hardware_concurrency())); }

  platform::files::DiskFolders folders_;
  platform::tags::TagLibTagReader tags_;
  catalogue::TagScratch scratch_;
  app::KaraokeSongReader songs_;
  platform::sidestore::SqliteSideStore store_;
  std::shared_ptr<app::WorkGate> gate_ = std::make_shared<app::WorkGate>();
  support::ThreadPool workers_{Cores()};
  app::TreeScan scan_{{folders_, tags_, &scratch_, &songs_, &store_},
                      workers_,
                      gate_,
                      std::make_shared<app::IdleCores>(Cores())};
};

void ScanAll(Scanner& scanner, const std::filesystem::path& music) {
  if (scanner.Scan(music) != kFiles) std::abort();
}

/// Songs in archives beside the same songs loose.
std::vector<Figure> MeasureSongs() {
  const TestFolder songs;
  MakeSongs(songs / "loose", songs / "packed", kPairs);
  std::vector<double> loose, packed, again;
  for (int run = 0; run < 3; ++run) {
    const TestFolder program;
    Scanner scanner(program);
    const auto scan = [&](const char* folder) {
      return CostOf([&] {
        if (scanner.Scan(songs / folder, catalogue::ScanMode::Karaoke) != kPairs) std::abort();
      });
    };
    loose.push_back(kPairs / scan("loose").seconds);
    const Cost first = scan("packed"), second = scan("packed");
    packed.push_back(kPairs / first.seconds);
    again.push_back(second.seconds / first.seconds * 100);
  }
  return {{"first scan of 2,000 zipped karaoke songs of a minute (the same loose)", "songs/s", Median(packed),
           Median(loose), ""},
          {"scan of the unchanged archives again", "% of the first", Median(again), std::nullopt, ""}};
}

}  // namespace

std::vector<Figure> MeasureScan() {
  const TestFolder music;
  const std::vector<std::string> paths = MakeCollection(music.Path(), kFiles);
  std::vector<double> first, first_cpu, again, looked, bare, bare_cpu, mpd;
  ReadBare(paths);
  for (int run = 0; run < kRuns; ++run) {
    const TestFolder program;
    Scanner scanner(program);
    const Cost loop = CostOf([&] { ReadBare(paths); });
    const Cost scan = CostOf([&] { ScanAll(scanner, music.Path()); });
    const Cost rescan = CostOf([&] { ScanAll(scanner, music.Path()); });
    const Cost look = CostOf([&] { LookAtAll(music.Path()); });
    bare.push_back(kFiles / loop.seconds);
    bare_cpu.push_back(loop.cpu / kFiles * 1e6);
    first.push_back(kFiles / scan.seconds);
    first_cpu.push_back(scan.cpu / kFiles * 1e6);
    again.push_back(rescan.seconds / scan.seconds * 100);
    looked.push_back(look.seconds / scan.seconds * 100);
    const auto update = SecondsOfMpdUpdate(music.Path(), program.Path());
    if (update) mpd.push_back(kFiles / *update);
  }
  std::vector<Figure> figures{
      {"first scan of 10,000 files (TagLib alone, in a loop)", "files/s", Median(first), Median(bare),
       "at least 0.9 of it"},
      {"CPU it takes (TagLib alone)", "µs/file", Median(first_cpu), Median(bare_cpu), ""},
      {"scan of the unchanged files again (nftw, which only lists and looks)", "% of the first",
       Median(again), Median(looked), "at most 5"}};
  if (mpd.empty()) {
    figures.push_back({"first scan beside MPD's: not installed", "files/s", Median(first), std::nullopt, ""});
  } else {
    figures.push_back({"first scan (MPD)", "files/s", Median(first), Median(mpd), "at least 5 times"});
  }
  for (Figure& figure : MeasureSongs()) figures.push_back(std::move(figure));
  return figures;
}

}  // namespace bench
