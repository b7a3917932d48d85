// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Somebody speaks while the evening is recorded and the hall is listened to in the head-phones.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "engine/Programme.h"
#include "engine/testing/SpokenHall.h"

namespace engine::testing {
namespace {

constexpr double kVoice = 300, kMusic = 5000;
constexpr double kTalk = 0.3, kLoud = 0.25;

struct Layout {
  const char* name;
  decks::SpeakerPair hall, phones;
  const char* phones_id;
  std::size_t ear, channels;  ///< of that output
};
const Layout kLayouts[] = {
    {"one card", {1, decks::kSpeakerFront}, {1, decks::kSpeakerRear}, "wide", 2, 8},
    {"two cards", {1, decks::kSpeakerFront}, {2, 0}, "phones", 0, 2},
};

TEST(SpokenOver, TheVoiceIsRecordedOverLowMusicAndTheHeadphonesKeepTheMusicAlone) {
  for (const Layout& at : kLayouts) {
    SpokenHall hall({Microphone("desk", true)}, {EightChannelOutput("wide"), StereoOutput("phones")});
    SoundStage& stage = hall.stage;
    stage.engine->BASS_Init(2, kRate, decks::kInitSpeakers);
    stage.files.Add("music.mp3", ToneFile(60 * kRate, kMusic, kLoud));
    stage.engine->BASS_ChannelPlay(stage.Load("music.mp3", 1, at.hall.speaker), false);
    stage.engine->Desk().Direct({{at.hall, at.hall}, at.phones, {.programme = 1}});
    EngineProgramme programme(stage.engine->Devices());
    const auto reader = programme.Open(1, at.hall.speaker);
    hall.inputs.Hear(
        [](double now) { return static_cast<float>(kTalk * std::sin(2 * std::numbers::pi * kVoice * now)); });
    hall.SpeakPlainly();
    hall.wish.duck.on = true;
    hall.wish.hall = {{1, 1}};
    std::vector<float> recorded, block(4096);
    const auto go_on = [&](int tenths) {
      for (int i = 0; i < 10 * tenths; ++i) {
        hall.Advance(10ms);
        EXPECT_TRUE(i < 5 || stage.engine->Desk().HallReachesHeadphones()) << at.name;
        const auto taken = reader->Read(block);
        for (std::size_t frame = 0; frame < taken.frames; ++frame) recorded.push_back(block[2 * frame]);
      }
    };
    const auto expect = [&](double voice, double music, const char* when) {
      const auto newest = [](const std::vector<float>& samples, double hertz) {
        // Short, because head-phones that follow another crystal are bent.
        return ToneLevel(samples, samples.size() - kRate / 100, kRate / 100, hertz);
      };
      const auto ear = stage.Channel(at.phones_id, at.ear, at.channels);
      const auto front = stage.Channel("wide", 0, 8);
      for (const auto& heard : {recorded, front}) {
        EXPECT_NEAR(newest(heard, kVoice), voice, 0.01) << at.name << ", " << when;
        EXPECT_NEAR(newest(heard, kMusic), music, 0.01) << at.name << ", " << when;
      }
      EXPECT_NEAR(newest(ear, kVoice), 0, 5e-3) << at.name << ", " << when;
      EXPECT_NEAR(newest(ear, kMusic), kLoud, 0.01) << at.name << ", " << when;
    };
    go_on(30);
    expect(0, kLoud, "before");
    hall.wish.talk_over = true;
    hall.Ask();
    go_on(30);
    expect(kTalk, kLoud * std::pow(10.0, -12.0 / 20), "while somebody speaks");
    hall.wish.talk_over = false;
    hall.Ask();
    go_on(40);
    expect(0, kLoud, "afterwards");
  }
}

}  // namespace
}  // namespace engine::testing
