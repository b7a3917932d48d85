// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "app/files/TreeScan.h"
#include "catalogue/IndexFile.h"
#include "platform/archive/testing/ZipMaker.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/files/DiskFolders.h"
#include "platform/files/testing/TestFolder.h"
#include "platform/sidestore/SqliteSideStore.h"
#include "platform/tags/TagLibTagReader.h"
#include "platform/tags/TagWriter.h"
#include "support/Executor.h"

namespace {

namespace fs = std::filesystem;
namespace track = catalogue::track;
using app::ScanFound;
using platform::codec::testing::MediaMaker;
using Names = std::vector<std::string>;

/// Counts what is really read; the test may do something before a file is.
class CountingReader final : public catalogue::TagReader {
 public:
  support::Result<catalogue::FileTags> Read(const std::string& path) override {
    ++reads;
    if (before_read) before_read(path);
    return reader_.Read(path);
  }
  std::atomic<int> reads{0};
  std::function<void(const std::string&)> before_read;

 private:
  platform::tags::TagLibTagReader reader_;
};

/// A tree of real files, scanned by real workers into a real side store.
class ScanTrees : public ::testing::Test {
 protected:
  ScanTrees() {
    for (const char* kind : {"mp3", "ogg", "flac", "wma"}) {
      media_.Write(std::string("x.") + kind, platform::codec::testing::Tone(std::chrono::milliseconds(300)));
    }
  }
  ~ScanTrees() override {
    for (const auto& entry : fs::recursive_directory_iterator(music_.Path())) {
      if (entry.is_directory() && !entry.is_symlink()) chmod(entry.path().c_str(), 0700);
    }
  }

  /// As if it had lain there for a while.
  static void Age(const fs::path& path) {
    std::error_code ignored;
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(1), ignored);
  }
  fs::path Add(const std::string& name, const std::string& title = "T") const {
    const fs::path path = music_ / name;
    fs::create_directories(path.parent_path());
    fs::copy_file(media_.PathOf("x" + path.extension().string()), path, fs::copy_options::overwrite_existing);
    catalogue::FileTags tags;
    tags.title = title;
    EXPECT_TRUE(title.empty() || platform::tags::WriteTags(path.string(), tags));
    Age(path);
    return path;
  }
  fs::path AddBytes(const std::string& name, std::string_view bytes) const {
    fs::create_directories((music_ / name).parent_path());
    music_.Write(name, bytes);
    Age(music_ / name);
    return music_ / name;
  }
  ScanFound Scan(catalogue::SideStore* store, const fs::path& folder,
                 catalogue::ScanMode mode = catalogue::ScanMode::Music) {
    support::ThreadPool workers(2);
    app::TreeScan scan({folders_, tags_, nullptr, nullptr, store}, workers, std::make_shared<app::WorkGate>(),
                       std::make_shared<app::IdleCores>(2));
    std::promise<ScanFound> found;
    const auto running =
        scan.Start({mode, folder.string()}, [&found](ScanFound all) { found.set_value(std::move(all)); });
    return found.get_future().get();
  }
  ScanFound ScanSongs() { return Scan(&store_, music_.Path(), catalogue::ScanMode::Karaoke); }
  ScanFound Scan() { return Scan(nullptr, music_.Path()); }
  ScanFound Rescan() { return Scan(&store_, music_.Path()); }
  static Names Titles(const ScanFound& found) {
    Names titles;
    for (int row = 1; row <= found.rows.Rows(); ++row)
      titles.emplace_back(found.rows.Cell(row, track::kTitle));
    return titles;
  }

  MediaMaker media_;
  platform::files::testing::TestFolder music_, program_;
  platform::files::DiskFolders folders_;
  CountingReader tags_;
  platform::sidestore::SqliteSideStore store_{program_ / "tlv.side"};
};

TEST_F(ScanTrees, RowsComeMaskByMaskDeeperFoldersFirstAndNamesInByteOrder) {
  for (const auto& [name, title] : {std::pair{"X.mp3", "X"},
                                    {"A/x.ogg", "Ax"},
                                    {"A/B/Y.mp3", "ABY"},
                                    {"A/b.mp3", "Ab"},
                                    {"A/C.mp3", "AC"},
                                    {"Z.flac", "Z"},
                                    {"a.wma", "a"}}) {
    Add(name, title);
  }
  fs::rename(music_ / "A/b.mp3", music_ / "A/b.MP3");
  EXPECT_EQ(Titles(Scan()), (Names{"ABY", "AC", "Ab", "X", "Ax", "Z", "a"}));
}

TEST_F(ScanTrees, WhatIsNoMusicIsLeftOutAndCountedAndNothingElseIs) {
  Add("good.mp3", "good");
  AddBytes("empty.mp3", "");
  AddBytes("text.ogg", "this is no music");
  AddBytes("huge-tag.mp3", std::string("ID3\x03\0\0\x7F\x7F\x7F\x7F", 10) + "TIT2");
  AddBytes("huge-flac.flac", std::string("fLaC\x84\xFF\xFF\xFF", 8) + "x");
  std::ofstream(music_ / "cut.wma", std::ios::binary)
      << MediaMaker::BytesOf(media_.PathOf("x.wma")).substr(0, 200);
  fs::create_symlink(music_ / "nowhere", music_ / "dead.mp3");
  fs::create_directories(music_ / "folder.mp3");
  mkfifo((music_ / "pipe.mp3").c_str(), 0600);
  const ScanFound found = Scan();
  EXPECT_EQ(found.end, ScanFound::End::Complete);
  EXPECT_EQ(Titles(found), Names{"good"});
  EXPECT_EQ(found.left_out, 7);
}

TEST_F(ScanTrees, SongsInArchivesComeBehindAllOthersAndTheUnchangedAreNotOpenedAgain) {
  using platform::archive::testing::ZipBytes;
  const std::string tagged = MediaMaker::BytesOf(Add("loose.mp3", "Loose").string());
  const std::string bare = MediaMaker::BytesOf(media_.PathOf("x.mp3"));
  const std::string song = ZipBytes({{"Tagged.mp3", tagged}, {"Tagged.cdg", "picture"}});
  AddBytes("A/Singer - Named.ZIP", ZipBytes({{"a.mp3", bare}, {"a.cdg", "picture"}}));
  AddBytes("tagged.zip", song);
  AddBytes("photos.zip", ZipBytes({{"a.jpg", "picture"}}));
  AddBytes("broken.zip", song.substr(0, song.size() / 2));
  for (int scan = 0; scan < 2; ++scan) {
    const ScanFound found = ScanSongs();
    EXPECT_EQ(Titles(found), (Names{"Loose", "Named", "Loose"}));
    EXPECT_EQ(found.rows.Cell(2, catalogue::karaoke::kArtist), "Singer");
    EXPECT_EQ(found.rows.Cell(3, catalogue::karaoke::kFilename), (music_ / "tagged.zip").string());
    EXPECT_EQ(found.left_out, 2);
    EXPECT_EQ(tags_.reads, 5);
  }
}

TEST_F(ScanTrees, LinksThatLoopAndOddNamesLoseNothing) {
  const std::string odd = "caf\xE9 \xFF\n\t'\"", deep(60, 'd');
  std::string path = "deep";
  for (int i = 0; i < 5; ++i) path += "/" + deep;
  Add(odd + "/" + odd + ".mp3", "odd");
  Add(path + "/" + deep + ".mp3", "deep");
  ASSERT_GT((music_ / path).string().size(), 300U);
  fs::create_directory_symlink("..", music_ / "deep" / "up");
  fs::create_directory_symlink(music_ / odd, music_ / "zz");
  const ScanFound found = Rescan();
  EXPECT_EQ(Titles(found), (Names{"odd", "deep"}));
  EXPECT_EQ(found.rows.Cell(1, track::kFilename), (music_ / (odd + "/" + odd + ".mp3")).string());
  EXPECT_EQ(Titles(Rescan()), Titles(found));
}

TEST_F(ScanTrees, AFolderThatMayNotBeReadIsPassedOverAndNamed) {
  if (geteuid() == 0) {
    // Who may read everything gets everything.
    Add("shut/a.mp3", "a");
    chmod((music_ / "shut").c_str(), 0);
    EXPECT_EQ(Titles(Scan()), Names{"a"});
    return;
  }
  Add("a.mp3", "a");
  Add("shut/b.mp3", "b");
  chmod((music_ / "shut").c_str(), 0);
  const ScanFound found = Scan();
  EXPECT_EQ(Titles(found), Names{"a"});
  EXPECT_EQ(found.unreadable, Names{(music_ / "shut").string()});
}

TEST_F(ScanTrees, ARescanReadsWhatChangedAndGivesTheRowsOfAFullScan) {
  for (int i = 0; i < 40; ++i)
    Add(std::to_string(i % 4) + "/" + std::to_string(i) + ".mp3", std::to_string(i));
  AddBytes("0/bad.mp3", "no music");
  const ScanFound first = Rescan();
  EXPECT_EQ(tags_.reads, 41);
  const auto rescan_is_full = [&](const char* what, int reads) {
    tags_.reads = 0;
    const ScanFound again = Rescan();
    EXPECT_EQ(tags_.reads, reads) << what;
    const ScanFound full = Scan();
    EXPECT_EQ(catalogue::IndexText(again.rows), catalogue::IndexText(full.rows)) << what;
    EXPECT_EQ(again.left_out, full.left_out) << what;
    EXPECT_EQ(again.bytes, full.bytes) << what;
  };
  rescan_is_full("nothing changed", 0);
  Add("1/1.mp3", "another");
  rescan_is_full("a tag is another", 1);
  fs::last_write_time(music_ / "2/2.mp3", fs::file_time_type::clock::now() - std::chrono::hours(7));
  rescan_is_full("a time is another", 1);
  Add("3/000.mp3", "new");
  Add("new/0.ogg", "new");
  rescan_is_full("files came", 2);
  fs::remove(music_ / "0/0.mp3");
  fs::remove_all(music_ / "2");
  rescan_is_full("files went", 0);
  fs::rename(music_ / "3", music_ / "4");
  rescan_is_full("a folder has another name", 11);
  Add("0/bad.mp3", "good now");
  rescan_is_full("a bad file is good", 1);
  fs::last_write_time(music_ / "0/bad.mp3", fs::file_time_type::clock::now());
  rescan_is_full("a file was written a moment ago", 1);
  rescan_is_full("and may be written again in that moment", 1);
}

TEST_F(ScanTrees, TheSoundOfAFileIsKnownWhereverItLiesAndWhateverItsTagSays) {
  for (const char* name : {"x.mp3", "x.ogg", "x.flac", "x.wma"}) {
    const fs::path path = Add(name, "T");
    const auto sound = store_.ContentOf(path.string());
    ASSERT_TRUE(sound) << name;
    EXPECT_FALSE(store_.KeptContentOf(path.string())) << name;
    ASSERT_TRUE(store_.Write(catalogue::PathOfContent(*sound), {}, catalogue::SidePart::Facts, "facts"));
    catalogue::FileTags tags;
    tags.title = std::string(500, 'T');
    tags.text_block = std::string(100'000, 'b');  // more pages than before
    ASSERT_TRUE(platform::tags::WriteTags(path.string(), tags));
    const fs::path moved = music_ / ("moved" + path.extension().string());
    fs::rename(path, moved);
    EXPECT_EQ(store_.ContentOf(moved.string()), sound) << name;
    EXPECT_EQ(store_.KeptContentOf(moved.string()), sound) << name;
  }
}

TEST_F(ScanTrees, AScanTellsWhichFilesItRead) {
  Add("a.mp3", "a");
  Add("b.ogg", "b");
  EXPECT_EQ(Rescan().fresh, (std::vector<bool>{true, true}));
  Add("b.ogg", "another");
  EXPECT_EQ(Rescan().fresh, (std::vector<bool>{false, true}));
}

TEST_F(ScanTrees, WhatIsKeptOfAFolderMayBeAnyBytes) {
  Add("a.mp3", "a");
  Add("b.mp3", "b");
  static_cast<void>(Rescan());
  const std::string folder = music_.Path().string();
  const auto kept = store_.Read(folder, {}, catalogue::SidePart::Music);
  ASSERT_TRUE(kept);
  for (std::size_t size = 0; size < kept->size(); size += 3) {
    ASSERT_TRUE(store_.Write(folder, {}, catalogue::SidePart::Music, kept->substr(0, size)));
    EXPECT_EQ(Titles(Rescan()), (Names{"a", "b"})) << size;
  }
}

TEST_F(ScanTrees, AStickThatIsPulledEndsTheScanWithItsName) {
  for (int i = 0; i < 40; ++i) Add("stick/" + std::to_string(i) + ".mp3");
  for (const char* pulled : {"", "stick"}) {
    fs::path there = music_.Path() / pulled, away = there.parent_path() / "away";
    if (*pulled == '\0') there = music_.Path(), away = music_.Path().string() + "-away";
    tags_.before_read = [&](const std::string&) {
      std::error_code ignored;
      fs::rename(there, away, ignored);
    };
    const ScanFound found = Scan();
    tags_.before_read = nullptr;
    fs::rename(away, there);
    EXPECT_EQ(found.end, ScanFound::End::FolderLost) << pulled;
    EXPECT_EQ(found.where, (music_ / "stick").string());
    EXPECT_EQ(found.rows.Rows(), 0);
  }
}

}  // namespace
