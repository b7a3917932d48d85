// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <chrono>
#include <cstdlib>
#include <string>

#include "app/files/FileIntake.h"
#include "app/files/KaraokeSongReader.h"
#include "benchmarks/Bench.h"
#include "catalogue/IndexFile.h"
#include "catalogue/PlainFolders.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/files/testing/TestFolder.h"
#include "support/Executor.h"

namespace bench {
namespace {

constexpr int kEntries = 10'000;

/// The rows of the catalogue need no tags.
class NoTags final : public catalogue::TagReader {
 public:
  support::Result<catalogue::FileTags> Read(const std::string&) override {
    return support::Error{support::ErrorCode::NotFound, "no tags here"};
  }
};

/// Opens a playlist as its button does, with a worker and the window's box.
class OpenButton {
 public:
  OpenButton(const std::filesystem::path& folder, catalogue::track_table& catalogue)
      : scratch_(folder / "Tagging.tlv"),
        tables_{catalogue, karaoke_, playlists_},
        intake_({{tags_, songs_, scratch_, folders_, say_}, workers_, saver_, folder / "tlv.adding", {}, {}},
                tables_, std::make_shared<app::WorkGate>(), box_) {}
  double MillisecondsFor(const std::string& path) {
    catalogue::track_table& playlist = playlists_[0];
    playlist.Clear();
    bool done = false;
    const auto begin = std::chrono::steady_clock::now();
    intake_.Add({.list = app::ListId::Playlist1, .source = app::IntakeOrder::Source::Opened, .paths = {path}},
                [&done](const app::IntakeOutcome&) { done = true; });
    while (!done) {
      box_->WaitUntil(begin + std::chrono::seconds(10));
      for (const auto& job : box_->Take()) job();
    }
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    if (playlist.Rows() != kEntries) std::abort();
    return took.count();
  }

 private:
  NoTags tags_;
  app::KaraokeSongReader songs_;
  catalogue::PlainFolders folders_;
  platform::files::DiskFileSaver saver_;
  support::Sentences say_;
  catalogue::TagScratch scratch_;
  catalogue::track_table karaoke_{catalogue::KaraokeColumns()};
  std::array<catalogue::track_table, 3> playlists_{catalogue::track_table(catalogue::TrackColumns()),
                                                   catalogue::track_table(catalogue::TrackColumns()),
                                                   catalogue::track_table(catalogue::TrackColumns())};
  app::FileIntake::Tables tables_;
  std::shared_ptr<app::Mailbox> box_ = std::make_shared<app::Mailbox>();
  support::ThreadPool workers_{1};
  app::FileIntake intake_;
};

}  // namespace

std::vector<Figure> MeasurePlaylists() {
  const platform::files::testing::TestFolder folder;
  catalogue::track_table catalogue(catalogue::TrackColumns());
  std::string list = "#EXTM3U\r\n";
  for (int i = 0; i < kEntries; ++i) {
    const std::string name = "music-" + std::to_string(i) + ".mp3";
    folder.Write(name, "");
    const std::string path = (folder / name).string();
    catalogue.AddRow(std::vector<std::string_view>{"An artist", "A title " + name, "03:45", path, "128.00",
                                                   "Disco", "An album", "1994", "320", "44100", "-3.25"});
    list += path + "\r\n";
  }
  folder.Write("list.tpl", catalogue::IndexText(catalogue));
  folder.Write("list.m3u", list);
  OpenButton button(folder / "", catalogue);
  std::vector<double> own, paths;
  for (int run = 0; run < 7; ++run) {
    own.push_back(button.MillisecondsFor((folder / "list.tpl").string()));
    paths.push_back(button.MillisecondsFor((folder / "list.m3u").string()));
  }
  return {{"open a playlist of 10,000 entries (TPL)", "ms", Median(own), {}, "under 50"},
          {"the same as M3U, of files that the catalogue knows", "ms", Median(paths), {}, "under 50"}};
}

}  // namespace bench
