// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/FixturePacks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "app/tests/Evening.h"
#include "dmx/testing/FakeFixtureFormats.h"

namespace app {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// An installed library and one on a stick.
class FixturePacksTest : public testing::Evening {
 protected:
  FixturePacksTest() {
    folder_ = fs::path(::testing::TempDir()) / "fixture-packs";
    fs::remove_all(folder_);
    for (const char* folder : {"DMXlibrary", "installed/Acme", "stick"})
      fs::create_directories(folder_ / folder);
    Put("installed/Acme/sun.qxf", "Acme|Sun|Short:Dimmer|Full:Dimmer,Pan");
    Put("installed/bad.qxf", "no fixture");
    Put("installed/read me.txt", "no fixture either");
    Put("stick/moon.JSON", "Moonlight|Half|One:Dimmer");
    fixtures_ = {&formats_, {folder_ / "installed", folder_ / "none"}};
    StartUp();
  }
  ~FixturePacksTest() override {
    station_.reset();
    fs::remove_all(folder_);
  }

  void Put(const std::string& name, const std::string& text) const {
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }
  FixturePacks& Packs() { return station_->FixturePacks(); }
  void Work() {
    workers_.RunAll();
    station_->PumpWindow();
  }
  /// "Acme Sun Full" for each that is found.
  std::vector<std::string> Found(std::string_view text) {
    std::vector<std::string> names;
    for (const dmx::PackEntry* entry : dmx::FindInIndex(*Packs().Index(), text, 100).entries)
      names.push_back(entry->maker + " " + entry->model + " " + entry->mode);
    return names;
  }
  /// The file of the first that is found, or why there is none.
  std::string Bring(std::string_view text) {
    std::string told = "nothing yet";
    const dmx::PackEntry entry = *dmx::FindInIndex(*Packs().Index(), text, 1).entries.at(0);
    Packs().Bring(entry, [&](const auto& brought) {
      told = brought ? brought.Value().fixture.file : brought.Failure().text;
    });
    Work();
    return told;
  }

  dmx::testing::FakeFixtureFormats formats_;
};

TEST_F(FixturePacksTest, TheInstalledLibraryIsFoundByPartsOfItsNames) {
  EXPECT_THAT(Found(""), IsEmpty()) << "nothing is read before somebody asks";
  Packs().Open();
  Packs().Open();
  EXPECT_TRUE(Packs().Now().busy);
  Work();
  EXPECT_FALSE(Packs().Now().busy);
  EXPECT_THAT(Found(""), ElementsAre("Acme Sun Full", "Acme Sun Short"));
  EXPECT_THAT(Found("  fu acm"), ElementsAre("Acme Sun Full"));
  EXPECT_THAT(Found("moon"), IsEmpty());
  EXPECT_EQ(Packs().Index()->left_out, 1U);
  EXPECT_THAT(Packs().Index()->notes, ElementsAre(HasSubstr("bad.qxf was left out.")));
}

TEST_F(FixturePacksTest, AChosenFolderAndFilesComeBesideIt) {
  Packs().Open();
  Packs().ChooseFolder(folder_ / "stick");  // while the first is still being read
  Work();
  EXPECT_THAT(Found(""), ElementsAre("Acme Sun Full", "Acme Sun Short", "Moonlight Half One"));
  EXPECT_EQ(station_->Settings().Text("Setup", "FixtureFolder"), (folder_ / "stick").string());
  Put("dropped.json", "Zeta|Ray|One:Dimmer");
  Packs().AddFiles({folder_ / "dropped.json", folder_ / "gone.json"});
  Work();
  EXPECT_EQ(Found("").at(0), "Zeta Ray One");
  EXPECT_EQ(Found("").size(), 4U);
  EXPECT_EQ(Packs().Index()->left_out, 1U);
}

TEST_F(FixturePacksTest, AChosenFolderThatIsGoneIsToldAndAnInstalledOneIsNot) {
  Store("Setup", "FixtureFolder", (folder_ / "pulled").string());
  Packs().Open();
  Work();
  EXPECT_EQ(Found("").size(), 2U);
  EXPECT_THAT(Packs().Index()->notes, ElementsAre(HasSubstr("pulled cannot be read"), HasSubstr("bad.qxf")));
}

TEST_F(FixturePacksTest, WhoStopsHasWhatWasReadUntilThen) {
  for (int i = 0; i < 100; ++i) Put("installed/a" + std::to_string(i) + ".qxf", "A|B|C:Dimmer");
  Packs().Open();
  workers_.RunOne();  // lists the files
  workers_.RunOne();
  station_->PumpWindow();
  EXPECT_EQ(Packs().Now().files, 102U);
  const std::size_t read = Packs().Now().read;
  EXPECT_GT(read, 0U);
  Packs().Stop();
  Work();
  EXPECT_FALSE(Packs().Now().busy);
  EXPECT_EQ(Found("").size() + 0U, read + 1) << "the one of Acme has two modes";
}

TEST_F(FixturePacksTest, AFixtureThatIsBroughtTakesNoOtherFilesPlace) {
  Packs().Open();
  Work();
  EXPECT_EQ(Bring("full"), "Acme Sun (Full).dmx");
  const std::string text = files_.Content(folder_ / "DMXlibrary" / "Acme Sun (Full).dmx").value_or("");
  EXPECT_THAT(text, HasSubstr("Acme Sun (Full)\r\n3\r\n"));
  Put("DMXlibrary/Acme Sun (Full).dmx", text);
  EXPECT_EQ(Bring("full"), "Acme Sun (Full).dmx") << "it is the very same";
  Put("DMXlibrary/Acme Sun (Full).dmx", text + "mine");
  EXPECT_EQ(Bring("full"), "Acme Sun (Full) 2.dmx");
  Put("installed/Acme/sun.qxf", "Acme|Sun|Full:Dimmer");
  EXPECT_EQ(Bring("full"), "Acme Sun (Full) 2.dmx") << "the mode has another place in its file now";
  Put("installed/Acme/sun.qxf", "Acme|Sun|Other:Dimmer");
  EXPECT_THAT(Bring("full"), HasSubstr("has no mode \"Full\""));
  files_.SetFull(true);
  EXPECT_NE(Bring("short"), "Acme Sun (Short).dmx");
}

}  // namespace
}  // namespace app
