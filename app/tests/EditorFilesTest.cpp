// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/EditorFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "app/tests/Evening.h"

namespace app {
namespace {

namespace fs = std::filesystem;

/// The editors' files in a folder of the disk.
class EditorFilesTest : public testing::Evening {
 protected:
  EditorFilesTest() {
    folder_ = fs::path(::testing::TempDir()) / "editors";
    fs::remove_all(folder_);
    fs::create_directories(folder_ / "DMXlibrary");
    fs::create_directories(folder_ / "stick");
    StartUp();
  }
  ~EditorFilesTest() override {
    station_.reset();
    fs::remove_all(folder_);
  }

  static void Put(const fs::path& path, const std::string& name) {
    std::ofstream(path, std::ios::binary)
        << name << "\r\n1\r\n0\r\n0\r\n0\r\n1\r\nChannel1\r\n3\r\n\r\n0\r\n";
  }
  void Work() {
    workers_.RunAll();
    station_->PumpWindow();
  }
  /// The name that it has in the library, or why it has none.
  std::string Brought(const fs::path& path) {
    std::string told;
    station_->Editors().BringFixture(
        path, [&](const auto& brought) { told = brought ? brought.Value().file : "no"; });
    Work();
    return told;
  }
};

TEST_F(EditorFilesTest, AFixtureIsBroughtBesideAnotherOneOfItsName) {
  Put(folder_ / "DMXlibrary" / "Par.dmx", "Mine");
  Put(folder_ / "stick" / "Par.dmx", "Theirs");
  Put(folder_ / "stick" / "New.dmx", "New");
  EXPECT_EQ(Brought(folder_ / "DMXlibrary" / "Par.dmx"), "Par.dmx") << "it is there";
  EXPECT_EQ(Brought(folder_ / "stick" / "Par.dmx"), "Par 2.dmx");
  EXPECT_EQ(Brought(folder_ / "stick" / "New.dmx"), "New.dmx");
  EXPECT_EQ(Brought(folder_ / "stick" / "None.dmx"), "no");
  files_.SetFull(true);
  EXPECT_EQ(Brought(folder_ / "stick" / "New.dmx"), "no");
}

TEST_F(EditorFilesTest, TheLibraryListsWhatCanBeReadByName) {
  Put(folder_ / "DMXlibrary" / "b.DMX", "B");
  Put(folder_ / "DMXlibrary" / "a.dmx", "A");
  std::ofstream(folder_ / "DMXlibrary" / "bad.dmx", std::ios::binary) << "Bad\r\n1\r\n0\r\n0\r\n0\r\nx\r\n";
  std::ofstream(folder_ / "DMXlibrary" / "note.txt", std::ios::binary) << "A\r\n";
  std::string names;
  station_->Editors().ListFixtures([&](const auto& fixtures) {
    for (const LibraryFixture& fixture : fixtures) names += fixture.file + " " + fixture.name + ";";
  });
  Work();
  EXPECT_EQ(names, "a.dmx A;b.DMX B;");
}

TEST_F(EditorFilesTest, NothingIsToldAfterTheEnd) {
  bool told = false;
  station_->Editors().ListFixtures([&](const auto&) { told = true; });
  station_->ShutDown();
  Work();
  EXPECT_FALSE(told);
}

}  // namespace
}  // namespace app
