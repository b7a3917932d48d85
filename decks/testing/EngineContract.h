// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <limits>
#include <set>
#include <vector>

#include "decks/testing/EngineOnTrial.h"
#include "music/Spectrum.h"

namespace decks::testing {

TYPED_TEST_SUITE_P(EveryEngine);

TYPED_TEST_P(EveryEngine, NumbersItsOutputsFromOneAndHasOneWithoutSound) {
  AudioEngine& calls = this->Calls();
  EXPECT_EQ(calls.BASS_GetDeviceDescription(-1), std::nullopt);
  for (const int device : {0, 1, 2, 3}) EXPECT_NE(calls.BASS_GetDeviceDescription(device), std::nullopt);
  EXPECT_EQ(calls.BASS_GetDeviceDescription(4), std::nullopt);
  for (const int device : {0, 1, 2}) {
    EXPECT_FALSE(calls.BASS_SetDevice(device)) << "not open yet";
    EXPECT_EQ(this->Control().LastError().code, support::ErrorCode::Unavailable);
    EXPECT_FALSE(calls.BASS_Init(device, 0, 0));
    EXPECT_TRUE(calls.BASS_Init(device, 44100, 0));
    EXPECT_TRUE(calls.BASS_Init(device, 44100, 0)) << "it is open already";
    EXPECT_TRUE(calls.BASS_SetDevice(device));
  }
  for (const int device : {-1, 3, 4}) {
    EXPECT_FALSE(calls.BASS_Init(device, 44100, 0));
    EXPECT_FALSE(calls.BASS_SetDevice(device));
  }
}

TYPED_TEST_P(EveryEngine, SaysWhyThereIsNoStream) {
  AudioEngine& calls = this->Calls();
  EXPECT_EQ(this->Decoder("gone.mp3"), 0U);
  EXPECT_EQ(this->Control().LastError().code, support::ErrorCode::NotFound);
  EXPECT_EQ(calls.BASS_FLAC_StreamCreateFile(false, "gone.flac", 0, 0, kStreamDecode), 0U);
  EXPECT_EQ(calls.BASS_WMA_StreamCreateFile(false, "gone.wma", 0, 0, kStreamDecode), 0U);
  EXPECT_EQ(calls.BASS_StreamCreateFile(true, "tone.mp3", 0, 0, kStreamDecode), 0U) << "nothing in memory";
  const StreamHandle decoder = this->Decoder();
  EXPECT_NE(decoder, 0U) << "read without an output";
  EXPECT_EQ(this->Stream(decoder), 0U) << "played on none";
  EXPECT_EQ(this->Control().LastError().code, support::ErrorCode::Unavailable);
}

TYPED_TEST_P(EveryEngine, PreparesWhatIsThere) {
  int there = 0;
  int gone = 0;
  this->Control().Prepare("tone.mp3", [&](const support::Result<void>& done) { there += done ? 1 : 100; });
  this->Control().Prepare("gone.mp3", [&](const support::Result<void>& done) {
    gone += !done && done.Failure().code == support::ErrorCode::NotFound ? 1 : 100;
  });
  this->Advance(this->kSoon);
  EXPECT_EQ(there, 1);
  EXPECT_EQ(gone, 1);
}

TYPED_TEST_P(EveryEngine, DoesNothingOnAHandleThatIsNone) {
  this->OpenOutput(1);
  for (const StreamHandle none : {0U, 77U}) this->ExpectNothing(none);
}

TYPED_TEST_P(EveryEngine, PlaysOnTheOutputAndThePairOfTheDecoder) {
  struct Case {
    std::uint64_t length;
    std::uint32_t flags;
    int pair;
  };
  const Case cases[] = {{0, 0, 0},
                        {kSpeakerFront, 0, 1},
                        {kSpeakerRear, 0, 2},
                        {0, kSpeakerCentreLfe, 3},
                        {kSpeakerFront, kSpeakerRear2, 4},
                        {0x5000000, 0, 0},
                        {0xFFFFFF, 0, 0},
                        {0x100000000, 0, 0}};
  this->OpenOutput(1);
  this->OpenOutput(2);
  for (const Case& one : cases) {
    this->Calls().BASS_SetDevice(2);
    const StreamHandle decoder = this->Decoder("tone.mp3", one.length, one.flags);
    this->Calls().BASS_SetDevice(1);
    const StreamHandle stream = this->Stream(decoder);
    this->Calls().BASS_ChannelPlay(stream, false);
    this->Advance(100ms);
    EXPECT_EQ(this->given_.Where(stream), (SoundingAt{2, one.pair})) << one.length << " " << one.flags;
    this->Calls().BASS_StreamFree(stream);
    this->Advance(100ms);
  }
}

TYPED_TEST_P(EveryEngine, TellsTheStateThroughPlayingPausingStoppingAndTheEnd) {
  AudioEngine& calls = this->Calls();
  const StreamHandle stream = this->Load();
  EXPECT_EQ(this->State(stream), "0");
  this->Advance(500ms);
  EXPECT_EQ(this->State(stream), "0") << "it was not started";
  EXPECT_TRUE(calls.BASS_ChannelPlay(stream, false));
  EXPECT_EQ(this->State(stream), "active playing 0");
  this->Advance(500ms);
  EXPECT_EQ(this->State(stream), "active playing 5");
  calls.BASS_ChannelPause(stream);
  this->Advance(500ms);
  EXPECT_EQ(this->State(stream), "5");
  EXPECT_TRUE(calls.BASS_ChannelPlay(stream, false));
  this->Advance(500ms);
  EXPECT_EQ(this->State(stream), "active playing 10");
  calls.BASS_ChannelStop(stream);
  this->Advance(100ms);
  EXPECT_EQ(this->State(stream), "0") << "stopping goes back to the start";
  EXPECT_TRUE(calls.BASS_ChannelPlay(stream, false));
  this->Advance(800ms);
  EXPECT_TRUE(calls.BASS_ChannelPlay(stream, false)) << "it plays already";
  this->Advance(100ms);
  EXPECT_EQ(this->State(stream), "active playing 9");
  EXPECT_TRUE(calls.BASS_ChannelPlay(stream, true));
  this->Advance(100ms);
  EXPECT_EQ(this->State(stream), "active playing 1") << "from the start";
  this->Advance(2s);
  EXPECT_EQ(this->State(stream), "ended 20");
  EXPECT_TRUE(calls.BASS_ChannelPlay(stream, false));
  this->Advance(300ms);
  EXPECT_EQ(this->State(stream), "active playing 3") << "played again after its end";
}

TYPED_TEST_P(EveryEngine, GoesToAPlaceInEveryState) {
  AudioEngine& calls = this->Calls();
  const StreamHandle stream = this->Load();
  const auto go = [&](double seconds) {
    return calls.BASS_ChannelSetPosition(stream, {4 * std::llround(seconds * 44100)});
  };
  EXPECT_TRUE(go(1));
  this->Advance(100ms);
  EXPECT_EQ(this->State(stream), "10") << "before it plays";
  calls.BASS_ChannelPlay(stream, false);
  this->Advance(300ms);
  EXPECT_EQ(this->State(stream), "active playing 13");
  EXPECT_TRUE(go(0.5));
  this->Advance(300ms);
  EXPECT_EQ(this->State(stream), "active playing 8");
  EXPECT_FALSE(calls.BASS_ChannelSetPosition(stream, {-4}));
  EXPECT_FALSE(go(2)) << "past the end";
  calls.BASS_ChannelPause(stream);
  this->Advance(50ms);
  EXPECT_TRUE(go(1.9));
  this->Advance(100ms);
  EXPECT_EQ(this->State(stream), "19");
  calls.BASS_ChannelPlay(stream, false);
  this->Advance(500ms);
  EXPECT_EQ(this->State(stream), "ended 20");
  EXPECT_TRUE(go(1.5));
  this->Advance(100ms);
  EXPECT_EQ(this->State(stream), "15") << "after its end it stands";
  calls.BASS_ChannelPlay(stream, false);
  this->Advance(200ms);
  EXPECT_EQ(this->State(stream), "active playing 17");
}

TYPED_TEST_P(EveryEngine, CountsLengthsAndPlacesInBytesOfTheFilesOwnFrames) {
  AudioEngine& calls = this->Calls();
  struct Case {
    const char* path;
    std::int64_t bytes;
    SampleFormat format;
    double seconds;
  };
  for (const Case& one :
       {Case{"tone.mp3", 2 * this->kSecond, {44100, 2}, 2}, Case{"mono.ogg", 2 * 48'000, {48'000, 1}, 1}}) {
    const StreamHandle stream = this->Load(one.path);
    const StreamHandle decoder = this->Decoder(one.path);
    while (this->Control().DecodeFurther(decoder)) {
    }
    for (const StreamHandle handle : {stream, decoder}) {
      EXPECT_EQ(calls.BASS_ChannelGetLength(handle).value, one.bytes);
      EXPECT_EQ(calls.BASS_ChannelBytes2Seconds(handle, {one.bytes}), one.seconds);
      EXPECT_EQ(this->Control().FormatOf(handle), one.format);
    }
    const HeardStream heard = this->Control().Heard(stream);
    EXPECT_TRUE(heard.length_exact);
    EXPECT_EQ(heard.length.value, one.bytes / 2 / one.format.channels);
    EXPECT_EQ(heard.sample_rate, one.format.sample_rate);
    EXPECT_EQ(heard.channels, one.format.channels);
    EXPECT_EQ(this->Control().Heard(decoder).sample_rate, 0) << "nothing of a decoder is heard";
    const std::int64_t within = 1000 * 2 * one.format.channels;
    EXPECT_TRUE(calls.BASS_ChannelSetPosition(decoder, {within + 1}));
    EXPECT_EQ(calls.BASS_ChannelGetPosition(decoder).value, within) << "a whole frame";
    EXPECT_FALSE(calls.BASS_ChannelSetPosition(decoder, {one.bytes}));
  }
}

TYPED_TEST_P(EveryEngine, ReadsADecoderToItsEnd) {
  AudioEngine& calls = this->Calls();
  this->given_.AddFile("short.wav", ToneFile{.frames = 1000});
  const StreamHandle decoder = this->Decoder("short.wav");
  std::vector<std::int16_t> samples(1400);
  const std::span<std::int16_t> buffer(samples);
  EXPECT_FALSE(calls.BASS_ChannelPlay(decoder, false)) << "it is read, not played";
  EXPECT_TRUE(calls.BASS_ChannelIsActive(decoder));
  EXPECT_EQ(calls.BASS_ChannelGetData(decoder, buffer, 2800), 2800U);
  EXPECT_EQ(samples[2 * 111], SampleOf(ToneFile{}, 111, 0));
  EXPECT_EQ(samples[2 * 111 + 1], SampleOf(ToneFile{}, 111, 1));
  EXPECT_EQ(calls.BASS_ChannelGetData(decoder, buffer.first(4), 100), 8U) << "no more than there is room";
  EXPECT_EQ(calls.BASS_ChannelGetData(decoder, buffer, 7), 4U) << "whole frames";
  EXPECT_EQ(calls.BASS_ChannelGetPosition(decoder).value, 703 * 4);
  EXPECT_EQ(calls.BASS_ChannelGetData(decoder, buffer, 2800), 297U * 4);
  EXPECT_EQ(calls.BASS_ChannelGetData(decoder, buffer, 2800), 0U);
  EXPECT_FALSE(calls.BASS_ChannelIsActive(decoder));
  EXPECT_EQ(this->Level(decoder), std::pair(0, 0));
  EXPECT_TRUE(calls.BASS_ChannelSetPosition(decoder, {4 * 999}));
  EXPECT_TRUE(calls.BASS_ChannelIsActive(decoder));
  EXPECT_EQ(this->AttributesOf(decoder).volume, -1) << "only what plays has a volume";
  calls.BASS_StreamFree(decoder);
  this->ExpectNothing(decoder);
}

TYPED_TEST_P(EveryEngine, LeavesADecoderReadableUnderItsStream) {
  AudioEngine& calls = this->Calls();
  this->OpenOutput(1);
  const StreamHandle freed = this->Decoder();
  const StreamHandle kept = this->Decoder();
  const StreamHandle frees = this->Stream(freed);
  const StreamHandle keeps = calls.BASS_FX_TempoCreate(kept, kTempoLoop);
  EXPECT_EQ((std::set{freed, kept, frees, keeps, 0U}).size(), 5U);
  EXPECT_EQ(calls.BASS_FX_TempoCreate(frees, kTempoFreeSource), 0U) << "no stream over one that plays";
  for (const StreamHandle decoder : {freed, kept}) {
    EXPECT_EQ(calls.BASS_ChannelGetLength(decoder).value, 2 * this->kSecond);
    EXPECT_TRUE(calls.BASS_ChannelSetPosition(decoder, {this->kSecond}));
  }
  EXPECT_EQ(calls.BASS_ChannelGetPosition(frees).value, 0) << "each has a place of its own";
  std::array<std::int16_t, 4> samples{};
  EXPECT_EQ(calls.BASS_ChannelGetData(frees, std::span(samples), 8), 0U) << "what plays is not read";
  calls.BASS_StreamFree(frees);
  calls.BASS_StreamFree(keeps);
  this->ExpectNothing(freed);
  EXPECT_EQ(calls.BASS_ChannelGetLength(kept).value, 2 * this->kSecond);
}

TYPED_TEST_P(EveryEngine, KeepsAttributesWithinTheirRanges) {
  AudioEngine& calls = this->Calls();
  const StreamHandle stream = this->Load("mono.ogg");
  EXPECT_EQ(this->AttributesOf(stream), (Attributes{48'000, 100, 0}));
  calls.BASS_ChannelSetAttributes(stream, 22'050, 40, -50);
  EXPECT_EQ(this->AttributesOf(stream), (Attributes{22'050, 40, -50}));
  calls.BASS_ChannelSetAttributes(stream, -1, -1, -101);
  EXPECT_EQ(this->AttributesOf(stream), (Attributes{22'050, 40, -50}));
  calls.BASS_ChannelSetAttributes(stream, 5, 300, 101);
  EXPECT_EQ(this->AttributesOf(stream), (Attributes{1000, 100, -50}));
  calls.BASS_ChannelSetAttributes(stream, 1'000'000, 0, 100);
  EXPECT_EQ(this->AttributesOf(stream), (Attributes{768'000, 0, 100}));
  calls.BASS_ChannelSetAttributes(stream, 0, -1, -101);
  EXPECT_EQ(this->AttributesOf(stream).frequency, 48'000) << "the file's own";
  calls.BASS_FX_TempoSet(stream, kTempoUnchanged, 32'000, kTempoUnchanged);
  EXPECT_EQ(this->AttributesOf(stream).frequency, 32'000);
}

TYPED_TEST_P(EveryEngine, KeepsTempoAndRateWithinTheirRanges) {
  AudioEngine& calls = this->Calls();
  this->given_.AddFile("long.mp3", ToneFile{.frames = 10 * 44100});
  const StreamHandle stream = this->LoadAndPlay("long.mp3");
  struct Case {
    float tempo, rate;
    double speed;
  };
  constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();
  for (const Case& one : {Case{0, 0, 1}, Case{10, -1, 1.1}, Case{kTempoUnchanged, 22'050, 0.55},
                          Case{kNoNumber, -1, 0.55}, Case{0, 0, 1}, Case{500, 0, 2}, Case{-90, 0, 0.5},
                          Case{-2000, 0, 0.5}, Case{0, 44'100 * 1.5F, 1.5}}) {
    calls.BASS_FX_TempoSet(stream, one.tempo, one.rate, kTempoUnchanged);
    EXPECT_NEAR(this->SpeedOf(stream), one.speed, 0.1) << one.tempo << " " << one.rate;
  }
}

TYPED_TEST_P(EveryEngine, GivesAStreamTenBandsAndTakesThemAway) {
  AudioEngine& calls = this->Calls();
  const StreamHandle stream = this->Load();
  PeakingBand band{.band = 0, .frequency = 44100, .bandwidth = 1, .q = 0, .centre = 1000, .gain = 6};
  EXPECT_FALSE(calls.BASS_FX_DSP_SetParameters(stream, kPeakingEffect, band)) << "there is no band yet";
  EXPECT_FALSE(calls.BASS_FX_DSP_Set(stream, 3, 0)) << "of the effects there is only this one";
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(calls.BASS_FX_DSP_Set(stream, kPeakingEffect, 0));
  EXPECT_FALSE(calls.BASS_FX_DSP_Set(stream, kPeakingEffect, 0)) << "ten at most";
  band.band = 9;
  EXPECT_TRUE(calls.BASS_FX_DSP_SetParameters(stream, kPeakingEffect, band));
  EXPECT_FALSE(calls.BASS_FX_DSP_SetParameters(stream, 3, band));
  PeakingBand bad = band;
  bad.gain = std::numeric_limits<float>::infinity();
  EXPECT_FALSE(calls.BASS_FX_DSP_SetParameters(stream, kPeakingEffect, bad));
  const auto gain_of = [&](int number, int type = kPeakingEffect) {
    PeakingBand asked{.band = number, .gain = -99};
    return calls.BASS_FX_DSP_GetParameters(stream, type, asked) ? asked.gain : -1000;
  };
  EXPECT_EQ(gain_of(9), 6);
  EXPECT_EQ(gain_of(0), 0);
  EXPECT_EQ(gain_of(10), -1000);
  EXPECT_EQ(gain_of(-1), -1000);
  EXPECT_EQ(gain_of(9, 3), -1000);
  calls.BASS_FX_DSP_Remove(stream, 3);
  EXPECT_EQ(gain_of(9), 6) << "the others leave the bands alone";
  calls.BASS_FX_DSP_Remove(stream, kPeakingEffect);
  EXPECT_EQ(gain_of(9), -1000);
  EXPECT_TRUE(calls.BASS_FX_DSP_Set(stream, kPeakingEffect, 0));
  EXPECT_EQ(gain_of(0), 0);
}

TYPED_TEST_P(EveryEngine, GivesLevelsOfWhatIsHeardAlone) {
  AudioEngine& calls = this->Calls();
  const StreamHandle stream = this->Load();
  this->Advance(100ms);
  this->ExpectLevel(stream, 0, 0);
  calls.BASS_ChannelPlay(stream, false);
  calls.BASS_ChannelSetAttributes(stream, -1, 0, -101);
  this->Advance(100ms);
  this->ExpectLevel(stream, 16384, 8192);
  EXPECT_EQ(this->Control().LimiterReduction(1, 0).value, 0) << "it is not too loud";
  EXPECT_EQ(this->Control().LimiterReduction(3, kSpeakerRear).value, 0) << "not open";
  calls.BASS_ChannelPause(stream);
  this->Advance(100ms);
  this->ExpectLevel(stream, 0, 0);
  calls.BASS_ChannelPlay(stream, false);
  this->Advance(100ms);
  this->ExpectLevel(stream, 16384, 8192);
  this->Advance(3s);
  this->ExpectLevel(stream, 0, 0);
  const StreamHandle mono = this->LoadAndPlay("mono.ogg");
  this->Advance(100ms);
  this->ExpectLevel(mono, 16384, 16384);
  calls.BASS_ChannelStop(mono);
  this->Advance(100ms);
  this->ExpectLevel(mono, 0, 0);
}

TYPED_TEST_P(EveryEngine, GivesTheSamplesAndTheSpectrumOfWhatIsHeard) {
  AudioEngine& calls = this->Calls();
  const StreamHandle stream = this->LoadAndPlay();
  this->Advance(200ms);
  std::array<float, 1024> samples{};
  const std::span<float> buffer(samples);
  const auto peak = [&](std::size_t first) {
    float highest = 0;
    for (std::size_t i = first; i < 512; i += 2) highest = std::max(highest, std::abs(samples[i]));
    return highest;
  };
  EXPECT_EQ(calls.BASS_ChannelGetData(stream, buffer, kDataFloat | 2048U), 2048U);
  EXPECT_NEAR(peak(0), 0.5, 0.01);
  EXPECT_NEAR(peak(1), 0.25, 0.01);
  EXPECT_EQ(calls.BASS_ChannelGetData(stream, buffer.first(5), kDataFloat | 2048U), 16U) << "whole frames";
  EXPECT_EQ(calls.BASS_ChannelGetData(stream, buffer.first(127), kDataFft256), 0U);
  EXPECT_EQ(calls.BASS_ChannelGetData(stream, buffer.first(255), kDataFft256 | kDataFftIndividual), 0U);
  const auto tone = static_cast<std::size_t>(std::lround(1000.0 * music::kSpectrumFrames / 44100));
  EXPECT_EQ(calls.BASS_ChannelGetData(stream, buffer, kDataFft256), 512U);
  const float both = samples[tone];
  EXPECT_EQ(calls.BASS_ChannelGetData(stream, buffer, kDataFft256 | kDataFftIndividual), 1024U);
  EXPECT_GT(samples[2 * tone], 0.1F);
  EXPECT_NEAR(samples[2 * tone + 1], samples[2 * tone] / 2, samples[2 * tone] / 20);
  EXPECT_NEAR(both, samples[2 * tone] * 0.75F, samples[2 * tone] / 20);
  EXPECT_LT(samples[2 * 60], samples[2 * tone] / 100);
  calls.BASS_ChannelPause(stream);
  this->Advance(200ms);
  EXPECT_EQ(calls.BASS_ChannelGetData(stream, buffer, kDataFloat | 2048U), 2048U);
  EXPECT_EQ(peak(0), 0);
  const StreamHandle decoder = this->Decoder();
  EXPECT_EQ(calls.BASS_ChannelGetData(decoder, buffer, kDataFft256), 0U);
}

TYPED_TEST_P(EveryEngine, RunsWhatIsScheduledAtItsFrame) {
  using Kind = ScheduledCommand::Kind;
  SoundControl& control = this->Control();
  const StreamHandle stream = this->Load();
  const auto at = [&](double seconds) {
    return support::EngineFrame{control.NextFrame(stream).value + std::llround(seconds * 44100)};
  };
  EXPECT_TRUE(control.Schedule({Kind::Start, stream, at(0.5)}));
  EXPECT_TRUE(control.Schedule({Kind::Pause, stream, at(1)}));
  this->Advance(400ms);
  EXPECT_EQ(this->State(stream), "0");
  this->Advance(400ms);
  EXPECT_EQ(this->State(stream), "active playing 3");
  this->Advance(500ms);
  EXPECT_EQ(this->State(stream), "5");
  EXPECT_TRUE(control.Schedule({Kind::Tempo, stream, at(0.2), 100}));
  EXPECT_TRUE(control.Schedule({Kind::Start, stream, support::EngineFrame{0}})) << "late is at once";
  this->Advance(400ms);
  EXPECT_NEAR(this->Control().Heard(stream).ratio, 2, 0.1);
  EXPECT_EQ(this->State(stream), "active playing 11");
}

TYPED_TEST_P(EveryEngine, SchedulesNoMoreThanItKeepsAndDropsWhatIsCancelled) {
  using Kind = ScheduledCommand::Kind;
  SoundControl& control = this->Control();
  const StreamHandle stream = this->Load();
  const support::EngineFrame soon{control.NextFrame(stream).value + 4410};
  EXPECT_FALSE(control.Schedule({Kind::Ramp, stream, soon, std::numeric_limits<float>::quiet_NaN()}));
  for (int i = 0; i < 32; ++i) EXPECT_TRUE(control.Schedule({Kind::Start, stream, soon}));
  EXPECT_FALSE(control.Schedule({Kind::Start, stream, soon}));
  control.CancelScheduled(stream);
  this->Advance(500ms);
  EXPECT_EQ(this->State(stream), "0");
  EXPECT_TRUE(control.Schedule({Kind::Start, stream, soon}));
  this->Advance(100ms);
  EXPECT_EQ(this->State(stream), "active playing 1");
  const auto before = control.NextFrame(stream).value;
  this->Advance(1s);
  EXPECT_NEAR(static_cast<double>(control.NextFrame(stream).value - before), 44100, this->kFrames);
}

TYPED_TEST_P(EveryEngine, PlaysGeneratedSoundOnAnOpenOutputOfItsRate) {
  AudioEngine& calls = this->Calls();
  const auto make = [&](int rate, int device) {
    return this->Control().CreateGenerated(std::make_shared<SilentGenerator>(rate, rate), device, 0);
  };
  EXPECT_EQ(make(44100, 1), 0U);
  EXPECT_EQ(this->Control().LastError().code, support::ErrorCode::Unavailable);
  this->OpenOutput(1);
  EXPECT_EQ(make(48'000, 1), 0U);
  const StreamHandle stream = make(44100, 1);
  this->Advance(this->kSoon);
  EXPECT_EQ(calls.BASS_ChannelGetLength(stream).value, this->kSecond);
  EXPECT_TRUE(this->Control().Heard(stream).length_exact);
  EXPECT_TRUE(calls.BASS_ChannelPlay(stream, false));
  this->Advance(500ms);
  EXPECT_EQ(this->State(stream), "active playing 5");
  this->Advance(1s);
  EXPECT_EQ(this->State(stream), "ended 10");
  calls.BASS_StreamFree(stream);
  this->ExpectNothing(stream);
}

TYPED_TEST_P(EveryEngine, KeepsAFollowerAtThePlaceAndTempoOfItsLeaderWhileThatPlays) {
  AudioEngine& calls = this->Calls();
  this->given_.AddFile("long.mp3", ToneFile{.frames = 20 * 44100});
  const StreamHandle leader = this->Load("long.mp3");
  this->OpenOutput(2);
  const StreamHandle follower = this->Stream(this->Decoder("long.mp3"));
  const auto apart = [&] {
    const auto frames =
        this->Control().Heard(follower).frame.value - this->Control().Heard(leader).frame.value;
    return std::abs(static_cast<double>(frames));
  };
  calls.Follow(follower, leader);
  calls.BASS_ChannelPlay(follower, false);
  this->Advance(500ms);
  EXPECT_EQ(this->State(follower), "active playing 5") << "the leader stands: it plays by itself";
  EXPECT_EQ(this->State(leader), "0");
  calls.BASS_ChannelPause(follower);
  this->Advance(100ms);
  calls.BASS_ChannelPlay(leader, false);
  this->Advance(2s);
  calls.BASS_ChannelPlay(follower, false);
  this->Advance(300ms);
  EXPECT_EQ(this->State(follower), this->State(leader));
  EXPECT_LE(apart(), this->kFrames);
  calls.BASS_FX_TempoSet(leader, 50, 0, 0);
  this->Advance(1s);
  EXPECT_LE(apart(), this->kFrames) << "at the leader's tempo";
  calls.BASS_ChannelSetPosition(follower, {15 * this->kSecond});
  this->Advance(300ms);
  EXPECT_LE(apart(), this->kFrames) << "the leader's place wins";
  calls.Follow(follower, 0);
  calls.BASS_ChannelSetPosition(follower, {15 * this->kSecond});
  this->Advance(300ms);
  EXPECT_GT(apart(), 10 * 44100) << "it is led no more";
  calls.BASS_StreamFree(leader);
  EXPECT_EQ(this->State(follower).substr(0, 14), "active playing");
}

TYPED_TEST_P(EveryEngine, HasNothingLeftAfterItIsFreed) {
  AudioEngine& calls = this->Calls();
  const StreamHandle stream = this->LoadAndPlay();
  const StreamHandle decoder = this->Decoder();
  this->Advance(200ms);
  calls.BASS_Free();
  this->ExpectNothing(stream);
  this->ExpectNothing(decoder);
  EXPECT_FALSE(calls.BASS_SetDevice(1));
  EXPECT_NE(calls.BASS_GetDeviceDescription(1), std::nullopt);
  const StreamHandle again = this->LoadAndPlay();
  EXPECT_GT(again, decoder) << "a number stands for one stream";
  this->Advance(300ms);
  EXPECT_EQ(this->State(again), "active playing 3");
  EXPECT_TRUE(this->Control().TakeDeviceEvents().empty());
}

REGISTER_TYPED_TEST_SUITE_P(EveryEngine, NumbersItsOutputsFromOneAndHasOneWithoutSound,
                            SaysWhyThereIsNoStream, PreparesWhatIsThere, DoesNothingOnAHandleThatIsNone,
                            PlaysOnTheOutputAndThePairOfTheDecoder,
                            TellsTheStateThroughPlayingPausingStoppingAndTheEnd, GoesToAPlaceInEveryState,
                            CountsLengthsAndPlacesInBytesOfTheFilesOwnFrames, ReadsADecoderToItsEnd,
                            LeavesADecoderReadableUnderItsStream, KeepsAttributesWithinTheirRanges,
                            KeepsTempoAndRateWithinTheirRanges, GivesAStreamTenBandsAndTakesThemAway,
                            GivesLevelsOfWhatIsHeardAlone, GivesTheSamplesAndTheSpectrumOfWhatIsHeard,
                            RunsWhatIsScheduledAtItsFrame, SchedulesNoMoreThanItKeepsAndDropsWhatIsCancelled,
                            PlaysGeneratedSoundOnAnOpenOutputOfItsRate,
                            KeepsAFollowerAtThePlaceAndTempoOfItsLeaderWhileThatPlays,
                            HasNothingLeftAfterItIsFreed);

}  // namespace decks::testing
