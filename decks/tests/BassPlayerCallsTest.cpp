// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "decks/clsBassPlayer.h"
#include "decks/testing/RecordingEngine.h"
#include "support/testing/FakeClock.h"

namespace decks {
namespace {

using Calls = std::vector<std::string>;

/// "a; b; c" as a list of calls. "effects N" stands for the seven removals from stream N.
Calls Expect(const std::string& text) {
  Calls calls;
  std::istringstream stream(text);
  for (std::string call; std::getline(stream >> std::ws, call, ';');) {
    if (call.rfind("effects ", 0) != 0) {
      calls.push_back(call);
      continue;
    }
    for (const char* type : {"3", "2", "1", "0", "7", "5", "4"}) {
      calls.push_back("BASS_FX_DSP_Remove " + call.substr(8) + " " + type);
    }
  }
  return calls;
}

/// A deck on device 1 with its pre-listen output on device 2, or on none.
class BassPlayerCallsTest : public ::testing::Test {
 protected:
  BassPlayerCallsTest() {
    engine_.AcceptAnyFile();
    for (const char* name : {"Main", "Phones"}) engine_.AddDevice(name);
    for (const int device : {1, 2}) engine_.BASS_Init(device, 44100, 0);
    engine_.ClearLog();
    deck_.device(1);
  }
  void Phones(std::int16_t pair) {
    deck_.PreDevice(2);
    deck_.PreSpeaker(pair);
  }
  Calls Open(const std::string& file) {
    deck_.Filename(file);
    deck_.OpenFile();
    return Taken();
  }
  Calls Taken() {
    const Calls calls = engine_.Log();
    engine_.ClearLog();
    return calls;
  }
  Calls After(void (clsBassPlayer::*operation)()) {
    (deck_.*operation)();
    return Taken();
  }

  support::testing::FakeClock clock_;
  testing::RecordingEngine engine_{clock_};
  MasterControls controls_;
  clsBassPlayer deck_{engine_, controls_};
};

TEST_F(BassPlayerCallsTest, OpenFileWithoutPhonesOpensTheMainStreamAlone) {
  EXPECT_EQ(Open("a.mp3"), Expect("BASS_FX_BPM_Free 0; BASS_StreamFree 0; effects 0; BASS_SetDevice 1;"
                                  "BASS_StreamCreateFile 0 a.mp3 0 0x0 0x200000; BASS_ChannelGetLength 1;"
                                  "BASS_FX_TempoCreate 1 0x10004"));
  EXPECT_EQ(deck_.STRM(), 2U);
  EXPECT_EQ(deck_.PreSTRM(), 0U);
}

TEST_F(BassPlayerCallsTest, OpenFileWithPhonesOpensThePrelistenStreamFirst) {
  Phones(0);
  EXPECT_EQ(Open("a.mp3"),
            Expect("BASS_FX_BPM_Free 0; BASS_StreamFree 0; effects 0; BASS_SetDevice 2;"
                   "BASS_StreamCreateFile 0 a.mp3 0 0x0 0x200000; BASS_FX_TempoCreate 1 0x10004;"
                   "BASS_FX_BPM_Free 0; BASS_StreamFree 0; effects 0; BASS_SetDevice 1;"
                   "BASS_StreamCreateFile 0 a.mp3 0 0x0 0x200000; BASS_ChannelGetLength 3;"
                   "BASS_FX_TempoCreate 3 0x10004"));
  EXPECT_EQ(deck_.PreSTRM(), 2U);
  EXPECT_EQ(deck_.STRM(), 4U);
}

TEST_F(BassPlayerCallsTest, ASecondOpenFileReleasesTheFirstOnesStreams) {
  Phones(0);
  Open("a.mp3");
  EXPECT_EQ(Open("b.wma"),
            Expect("BASS_FX_BPM_Free 2; BASS_StreamFree 2; effects 2; BASS_SetDevice 2;"
                   "BASS_WMA_StreamCreateFile 0 b.wma 0 0x0 0x200000; BASS_FX_TempoCreate 5 0x10004;"
                   "BASS_FX_BPM_Free 4; BASS_StreamFree 4; effects 4; BASS_SetDevice 1;"
                   "BASS_WMA_StreamCreateFile 0 b.wma 0 0x0 0x200000; BASS_ChannelGetLength 7;"
                   "BASS_FX_TempoCreate 7 0x10004"));
}

TEST_F(BassPlayerCallsTest, PlayWithoutPhonesStartsTheMainStream) {
  Open("a.mp3");
  EXPECT_EQ(After(&clsBassPlayer::Play), Expect("BASS_SetDevice 1; BASS_ChannelPlay 2 0"));
}

TEST_F(BassPlayerCallsTest, PlayBuildsThePrelistenStreamAnewWhereNoPairIsChosen) {
  Phones(7);
  Open("a.flac");
  EXPECT_EQ(After(&clsBassPlayer::Play),
            Expect("BASS_SetDevice 1; BASS_ChannelPlay 4 0; BASS_StreamFree 2; BASS_SetDevice 2;"
                   "BASS_StreamCreateFile 0 a.flac 0 0x0 0x200000; BASS_FX_TempoCreate 5 0x10004;"
                   "BASS_ChannelSetAttributes 6 -1 0 -101; BASS_ChannelGetPosition 4;"
                   "BASS_ChannelSetPosition 6 0; BASS_ChannelPlay 6 0"));
}

TEST_F(BassPlayerCallsTest, PlayKeepsThePrelistenStreamOnItsChosenPair) {
  Phones(2);
  Open("a.mp3");
  EXPECT_EQ(After(&clsBassPlayer::Play),
            Expect("BASS_SetDevice 1; BASS_ChannelPlay 4 0; BASS_ChannelSetAttributes 2 -1 0 -101;"
                   "BASS_ChannelGetPosition 4; BASS_ChannelSetPosition 2 0; BASS_ChannelPlay 2 0"));
  EXPECT_EQ(engine_.SpeakerOf(deck_.PreSTRM()), kSpeakerRear);
}

TEST_F(BassPlayerCallsTest, APrelistenFileThatTheGeneralCreatorRefusesIsOpenedByItsOwn) {
  Phones(0);
  Open("a.flac");
  engine_.FailCall(5);
  deck_.Play();
  EXPECT_NE(deck_.PreSTRM(), 0U);
}

TEST_F(BassPlayerCallsTest, AMainOutputThatIsNotThereOpensNoStreamOnAnother) {
  Open("a.mp3");
  engine_.FailCall(10);
  EXPECT_EQ(Open("b.mp3"), Expect("BASS_FX_BPM_Free 2; BASS_StreamFree 2; effects 2; BASS_SetDevice 1"));
  EXPECT_EQ(deck_.STRM(), 0U);
}

TEST_F(BassPlayerCallsTest, PauseAndResumeActOnBothStreams) {
  Phones(0);
  Open("a.mp3");
  deck_.Play();
  Taken();
  EXPECT_EQ(After(&clsBassPlayer::PausePlay), Expect("BASS_ChannelPause 4; BASS_ChannelPause 6"));
  EXPECT_EQ(After(&clsBassPlayer::ResumePlay),
            Expect("BASS_ChannelPlay 4 0; BASS_ChannelGetPosition 4; BASS_ChannelSetPosition 6 0;"
                   "BASS_ChannelPlay 6 0"));
}

TEST_F(BassPlayerCallsTest, StopPlayFreesTheMainStreamAndThenThePrelistenStream) {
  Phones(0);
  Open("a.mp3");
  EXPECT_EQ(After(&clsBassPlayer::StopPlay),
            Expect("BASS_ChannelStop 4; BASS_StreamFree 4; BASS_FX_BPM_Free 4; BASS_FX_BPM_Free 2;"
                   "effects 4; BASS_ChannelStop 2; BASS_StreamFree 2; effects 2"));
  EXPECT_EQ(engine_.Streams(), 0);
}

TEST_F(BassPlayerCallsTest, LevelsAreSetAloneAndAtOnce) {
  Phones(0);
  Open("a.mp3");
  deck_.volume(40);
  deck_.PreVolume(70);
  EXPECT_EQ(Taken(),
            Expect("BASS_ChannelSetAttributes 4 -1 40 -101; BASS_ChannelSetAttributes 2 -1 70 -101"));
}

struct Routing {
  const char* file;
  const char* creator;
  std::int16_t code;
  const char* flag;       ///< in the flags of the main stream
  const char* prelisten;  ///< length and flags of the pre-listen stream
};

class RoutingTest : public BassPlayerCallsTest, public ::testing::WithParamInterface<Routing> {};

TEST_P(RoutingTest, ThePairTravelsWithTheStream) {
  const Routing& routing = GetParam();
  Phones(routing.code);
  deck_.Speaker(routing.code);
  const Calls calls = Open(routing.file);
  const std::string start = std::string(routing.creator) + " 0 " + routing.file + " 0 ";
  EXPECT_EQ(calls[10], start + routing.prelisten);
  EXPECT_EQ(calls[22], start + "0x0 " + routing.flag);
}

INSTANTIATE_TEST_SUITE_P(
    TypesAndPairs, RoutingTest,
    ::testing::Values(Routing{"a.mp3", "BASS_StreamCreateFile", 1, "0x1200000", "0x1000000 0x200000"},
                      Routing{"a.ogg", "BASS_StreamCreateFile", 2, "0x2200000", "0x2000000 0x200000"},
                      Routing{"a.wav", "BASS_StreamCreateFile", 3, "0x3200000", "0x3000000 0x200000"},
                      Routing{"a", "BASS_StreamCreateFile", 4, "0x4200000", "0x4000000 0x200000"},
                      Routing{"a.mp3", "BASS_StreamCreateFile", 0, "0x200000", "0x0 0x200000"},
                      Routing{"a.mp3", "BASS_StreamCreateFile", 5, "0x200000", "0x0 0x200000"},
                      Routing{"a.flac", "BASS_FLAC_StreamCreateFile", 1, "0x1200000", "0x0 0x1200000"},
                      Routing{"A.FLAC", "BASS_FLAC_StreamCreateFile", 2, "0x2200000", "0x0 0x2200000"},
                      Routing{"aflac", "BASS_FLAC_StreamCreateFile", 3, "0x3200000", "0x0 0x3200000"},
                      Routing{"a.Flac", "BASS_FLAC_StreamCreateFile", 4, "0x4200000", "0x0 0x4200000"},
                      Routing{"a.flac", "BASS_FLAC_StreamCreateFile", -1, "0x200000", "0x0 0x200000"},
                      Routing{"a.wma", "BASS_WMA_StreamCreateFile", 1, "0x1200000", "0x0 0x1200000"},
                      Routing{"A.WMA", "BASS_WMA_StreamCreateFile", 2, "0x2200000", "0x0 0x2200000"},
                      Routing{"a.Wma", "BASS_WMA_StreamCreateFile", 3, "0x3200000", "0x0 0x3200000"},
                      Routing{"awma", "BASS_WMA_StreamCreateFile", 4, "0x4200000", "0x0 0x4200000"},
                      Routing{"a.wma", "BASS_WMA_StreamCreateFile", 0, "0x200000", "0x0 0x200000"}));

/// File, its creator, and a pair code for both outputs.
using Evening = std::tuple<std::pair<const char*, const char*>, int, bool>;
class WholeEveningTest : public BassPlayerCallsTest, public ::testing::WithParamInterface<Evening> {
 protected:
  [[nodiscard]] std::string File() const { return std::get<0>(GetParam()).first; }
  [[nodiscard]] std::string Creator() const { return std::get<0>(GetParam()).second; }
  [[nodiscard]] int Code() const { return std::get<1>(GetParam()); }
  [[nodiscard]] bool HasPhones() const { return std::get<2>(GetParam()); }
  [[nodiscard]] bool General() const { return Creator() == "BASS_StreamCreateFile"; }
  [[nodiscard]] std::string Pair() const { return Code() == 0 ? "" : std::to_string(Code()); }
  /// What becomes of OpenFile while the streams prelisten and main exist; next is the next handle.
  [[nodiscard]] std::string Opening(int prelisten, int main, int next) const {
    const std::string flags = Code() == 0 ? "0x200000" : "0x" + Pair() + "200000";
    const std::string length = Code() == 0 ? "0x0" : "0x" + Pair() + "000000";
    const auto freed = [](int stream) {
      const std::string n = std::to_string(stream);
      return "BASS_FX_BPM_Free " + n + ";BASS_StreamFree " + n + ";effects " + n + ";";
    };
    std::string calls;
    if (HasPhones()) {
      calls += freed(prelisten) + "BASS_SetDevice 2;" + Creator() + " 0 " + File() + " 0 ";
      calls += General() ? length + " 0x200000;" : "0x0 " + flags + ";";
      calls += "BASS_FX_TempoCreate " + std::to_string(next) + " 0x10004;";
      next += 2;
    }
    const std::string n = std::to_string(next);
    return calls + freed(main) + "BASS_SetDevice 1;" + Creator() + " 0 " + File() + " 0 0x0 " + flags +
           ";BASS_ChannelGetLength " + n + ";BASS_FX_TempoCreate " + n + " 0x10004;";
  }
};

TEST_P(WholeEveningTest, MakesTheDescribedCallsInTheirOrder) {
  if (HasPhones()) Phones(static_cast<std::int16_t>(Code()));
  deck_.Speaker(static_cast<std::int16_t>(Code()));
  const int first = HasPhones() ? 5 : 3;
  EXPECT_EQ(Open(File()), Expect(Opening(0, 0, 1)));
  EXPECT_EQ(Open(File()), Expect(Opening(2, HasPhones() ? 4 : 2, first)));
  const bool anew = HasPhones() && Code() == 0;
  const std::string main = HasPhones() ? "8" : "4";
  const std::string pre = !HasPhones() ? "0" : anew ? "10" : "6";
  const std::string play = "BASS_SetDevice 1;BASS_ChannelPlay " + main + " 0;";
  const std::string rebuild = "BASS_StreamFree 6;BASS_SetDevice 2;BASS_StreamCreateFile 0 " + File() +
                              " 0 0x0 0x200000;BASS_FX_TempoCreate 9 0x10004;";
  const std::string follow = "BASS_ChannelGetPosition " + main + ";BASS_ChannelSetPosition " + pre +
                             " 0;BASS_ChannelPlay " + pre + " 0;";
  const std::string silent = "BASS_ChannelSetAttributes " + pre + " -1 0 -101;";
  EXPECT_EQ(After(&clsBassPlayer::Play),
            Expect(play + (anew ? rebuild : "") + (HasPhones() ? silent + follow : "")));
  EXPECT_EQ(After(&clsBassPlayer::PausePlay),
            Expect("BASS_ChannelPause " + main + ";BASS_ChannelPause " + pre));
  EXPECT_EQ(After(&clsBassPlayer::ResumePlay), Expect("BASS_ChannelPlay " + main + " 0;" + follow));
  EXPECT_EQ(After(&clsBassPlayer::StopPlay),
            Expect("BASS_ChannelStop " + main + ";BASS_StreamFree " + main + ";BASS_FX_BPM_Free " + main +
                   ";BASS_FX_BPM_Free " + pre + ";effects " + main + ";BASS_ChannelStop " + pre +
                   ";BASS_StreamFree " + pre + ";effects " + pre));
}

INSTANTIATE_TEST_SUITE_P(
    TypesPairsAndPhones, WholeEveningTest,
    ::testing::Combine(::testing::Values(std::pair{"a.mp3", "BASS_StreamCreateFile"},
                                         std::pair{"a.flac", "BASS_FLAC_StreamCreateFile"},
                                         std::pair{"a.wma", "BASS_WMA_StreamCreateFile"}),
                       ::testing::Range(0, 5), ::testing::Bool()));

}  // namespace
}  // namespace decks
