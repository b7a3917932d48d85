// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "app/WorkstationView.h"
#include "app/tests/Evening.h"
#include "dmx/testing/RecordingDmxInterface.h"
#include "lightorgan/testing/RecordingBoards.h"

namespace app {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

/// Writes one list of what is asked of engine, visualisation and settings.
class StartUpOrderTest : public testing::Evening {
 protected:
  StartUpOrderTest() {
    const auto note = [this](const std::string& call) { calls_.push_back(call); };
    engine_.OnCall(note);
    visualisation_.OnCall(note);
    settings_.OnRead(note);
    wire_.OnCall(note);
    dmx_ = &wire_;
    visualisation_.SetNames({"Spectrum", "Wave"});
  }
  ~StartUpOrderTest() override { station_.reset(); }  // its shutdown still writes to the list

  /// Of the list, the first one that begins with each of these words.
  [[nodiscard]] Lines Order(const Lines& words) const {
    Lines order;
    for (const std::string& call : calls_) {
      const auto word = std::find_if(words.begin(), words.end(),
                                     [&](const std::string& start) { return call.starts_with(start); });
      const bool first = word != words.end() && std::find(order.begin(), order.end(), *word) == order.end();
      if (first) order.push_back(*word);
    }
    return order;
  }

  Lines calls_;
  dmx::testing::RecordingDmxInterface wire_;
};

const Lines kSteps = {"Language/Current",
                      "BASS_GetDeviceDescription",
                      "Mixer/MixTime",
                      "BASS_Free",
                      "BASS_Init",
                      "BASS_VIS_FindPlugins Plugins",
                      "BASS_VIS_SetConfig 4 0",
                      "Visualisation/Resolution",
                      "BASS_SetConfig 1 20",
                      "BASS_SetConfig 0 60"};

TEST_F(StartUpOrderTest, StepsComeInTheirOrder) {
  StartUp();
  EXPECT_EQ(Order(kSteps), kSteps);
}

TEST_F(StartUpOrderTest, SettingsAreReadInTheirOrder) {
  StartUp();
  const Lines groups = {"Mixer/MixTime",
                        "Settings/Auto",
                        "Settings/MixPoints",
                        "Settings/BPMPercent",
                        "Settings/GainPercent",
                        "Player1/",
                        "Eq1/",
                        "Player2/",
                        "Eq2/",
                        "Devices/"};
  EXPECT_EQ(Order(groups), groups);
}

TEST_F(StartUpOrderTest, WhicheverEngineCallFailsTheLaterStepsFollowAndADeckPlays) {
  StartUp();
  const int calls = engine_.Calls();
  for (int failing = 1; failing <= calls; ++failing) {
    station_.reset();
    calls_.clear();
    engine_.FailCall(failing);
    StartUp();
    EXPECT_EQ(Order(kSteps), kSteps) << "call " << failing;
    Load(1, "a.mp3");
    Play(1);
    EXPECT_EQ(Deck(1).state, testing::State::Playing) << "after call " << failing;
  }
}

TEST_F(StartUpOrderTest, EachStepSkipsItsOwnFailure) {
  const struct {
    const char* what;
    std::function<void()> fail;
  } steps[] = {
      {"the language is none", [this] { Store("Language", "Current", "?"); }},
      {"the index is a folder", [this] { fs::create_directories(folder_ / "tlv.ndx"); }},
      {"the karaoke index is broken", [this] { std::ofstream(folder_ / "tlvkaraoke.ndx") << "\\x\n"; }},
      {"nothing can be written", [this] { files_.SetFull(true); }},
      {"the first device does not open", [this] { engine_.BreakDevice(1); }},
      {"there is no visualiser", [this] { visualisation_.SetNames({}); }},
  };
  for (const auto& step : steps) {  // those before it stay broken
    station_.reset();
    calls_.clear();
    step.fail();
    StartUp();
    EXPECT_EQ(Order(kSteps), kSteps) << step.what;
    Load(1, "a.mp3");
    Play(1);
    EXPECT_EQ(Deck(1).state, testing::State::Playing) << step.what;
  }
  fs::remove_all(folder_);
}

TEST_F(StartUpOrderTest, DecksAreReleasedBeforeTheEngineAndTheLightsGoOutAfterIt) {
  Store("Setup", "UseK8062", "True");
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  calls_.clear();
  station_->ShutDown();
  const Lines order = {"BASS_StreamFree", "BASS_Free", "StopDevice"};
  EXPECT_EQ(Order(order), order);
}

TEST_F(StartUpOrderTest, BoardsThatAreInUseAreClearedAndClosedBehindTheEngine) {
  for (const char* in_use : {"True", "False"}) {
    lightorgan::testing::RecordingBoards boards;
    boards_ = &boards;
    Store("Setup", "UseK8000", in_use);
    Store("Setup", "IoBoardSize", "32");
    StartUp();
    boards.calls.clear();
    std::size_t before_engine = 99;
    engine_.OnCall([&](const std::string& call) {
      if (call == "BASS_Free") before_engine = boards.calls.size();
    });
    station_.reset();
    engine_.OnCall(nullptr);
    EXPECT_EQ(before_engine, 0U);
    const Lines dark = {"ClearAllDigital 0", "ClearAllAnalog 0", "ClearAllDigital 1", "ClearAllAnalog 1",
                        "CloseDevices"};
    EXPECT_EQ(boards.calls, std::string(in_use) == "True" ? dark : Lines{});
  }
}

TEST_F(StartUpOrderTest, ADeviceThatDoesNotOpenIsShownInABoxAsSoonAsThereIsAWindow) {
  engine_.BreakDevice(1);
  StartUp();
  station_->PumpWindow();
  station_->AttachWindow(&window_, &window_);
  EXPECT_EQ(window_.Sentences(), Lines{}) << "the window is still being made";
  station_->PumpWindow();
  EXPECT_EQ(window_.Sentences(), Lines{say_(support::Sentence::OutputCannotOpen, {"Main"})});
}

TEST_F(StartUpOrderTest, AFolderThatCannotBeWrittenToIsTold) {
  files_.SetFull(true);
  StartUp();
  EXPECT_TRUE(station_->View().notice.starts_with("The program folder cannot be written to"));
}

TEST_F(StartUpOrderTest, TheWindowFindsItsNamesAndItsVisualisers) {
  Store("Visualisation", "Resolution", "500");
  StartUp();
  station_->PumpWindow();
  EXPECT_EQ(app::Caption("Library"), "dj TOLVEN Library");
  EXPECT_EQ(station_->SkinFolder(), folder_ / "Skins");
  EXPECT_EQ(station_->Visuals().Names(), (Lines{"Spectrum", "Wave"}));
  EXPECT_EQ(station_->Visuals().Rate(), 60);
}

TEST_F(StartUpOrderTest, ADeviceThatIsPluggedInLaterGetsTheNextNumber) {
  StartUp();
  engine_.AddDevice("Late");
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::Listed, 3, ""});
  Settle();
  station_->PumpWindow();
  EXPECT_EQ(station_->Outputs().DeviceNames(), (Lines{"Main", "Phones", "Late"}));
  EXPECT_EQ(station_->View().notice, "");
}

}  // namespace
}  // namespace app
