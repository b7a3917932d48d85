// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/AnalysisParts.h"

#include <gtest/gtest.h>

#include <cmath>

#include "catalogue/testing/MemorySideStore.h"
#include "catalogue/testing/SideStoreContract.h"
#include "music/Cues.h"
#include "music/TrackForm.h"

namespace catalogue::testing {
namespace {

struct Memory {
  MemorySideStore& Store() { return store; }
  MemorySideStore store;
};
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, EverySideStore, Memory);

/// Loud music, as it looks: every column near the one before, with jumps at the beats.
music::Wave Music(std::size_t columns) {
  std::vector<music::WaveColumn> fine;
  unsigned dice = 1;
  for (std::size_t i = 0; i < columns; ++i) {
    dice = dice * 1664525 + 1013904223;
    const int jitter = static_cast<int>(dice >> 28);
    const int level = 100 - static_cast<int>(i % 70) / 2 + jitter;
    fine.push_back({static_cast<std::int8_t>(-level + jitter / 2), static_cast<std::int8_t>(level),
                    static_cast<std::uint8_t>(level), static_cast<std::uint8_t>(level / 2 + jitter),
                    static_cast<std::uint8_t>(jitter)});
  }
  return music::Wave::Of(std::move(fine));
}

music::TrackAnalysis Known() {
  music::TrackAnalysis known;
  known.wave = std::make_shared<const music::Wave>(Music(240 * music::Wave::kColumnsASecond));
  known.grid = std::make_shared<const music::BeatGrid>(
      music::BeatGrid::Even({127.97}, 0.75, music::Seconds(0.123456789), music::Seconds(240)));
  known.loudness = {true, {-9.25F}, {0.5F}};
  known.mix_points = {{{4}, {3LL << 32}, {3LL << 33}, 0.25, 240.5}, 3};
  known.length = {240 * 44100};
  known.sample_rate = 44100;
  known.channels = 2;
  return known;
}

TEST(AnalysisParts, ComeBackAsTheyWere) {
  MemorySideStore store;
  const music::TrackAnalysis known = Known();
  ASSERT_TRUE(WriteAnalysis(store, "a", {1, 1}, known).Ok());
  const auto back = ReadAnalysis(store, "a", {1, 1});
  ASSERT_TRUE(back);
  EXPECT_EQ(back->wave->fine, known.wave->fine);
  EXPECT_EQ(back->wave->overview, known.wave->overview);
  ASSERT_EQ(back->grid->Beats().size(), known.grid->Beats().size());
  EXPECT_NEAR(back->grid->Beats().back().count(), known.grid->Beats().back().count(), 1e-9);
  EXPECT_EQ(back->grid->Nominal().value, 127.97);
  EXPECT_EQ(back->loudness, known.loudness);
  EXPECT_EQ(back->mix_points, known.mix_points);
  EXPECT_EQ(back->length, known.length);
}

TEST(AnalysisParts, MarksTellWhereAHandPutThePoints) {
  FileMarks marks;
  marks.start = PointBy::Hand;
  marks.start_at = std::chrono::milliseconds(1500);
  marks.grid = Known().grid;
  const auto back = UnpackMarks(PackMarks(marks));
  ASSERT_TRUE(back);
  EXPECT_EQ(back->start_at, marks.start_at);
  EXPECT_FALSE(back->end_at);
  EXPECT_EQ(back->grid->Beats().size(), marks.grid->Beats().size());
  const auto old = UnpackMarks(std::string("\x01\0\x02", 3));
  ASSERT_TRUE(old) << "as they were kept before";
  EXPECT_EQ(old->start, PointBy::Hand);
  EXPECT_FALSE(old->start_at);
}

TEST(AnalysisParts, CuesAreKeptWithTheMarksAndWhatIsNoneIsNotBelieved) {
  using std::chrono::microseconds;
  music::Cues cues;
  cues.main = std::chrono::seconds(3);
  cues.hot[0] = music::Cue{microseconds(1), microseconds(500'000), 7, "Refrein é"};
  FileMarks marks;
  marks.grid = Known().grid;
  marks.cues = std::make_shared<const music::Cues>(cues);
  const auto back = UnpackMarks(PackMarks(marks));
  ASSERT_TRUE(back && back->cues && back->grid);
  EXPECT_EQ(*back->cues, cues);
  const auto older = UnpackMarks(std::string("\x02\0\x02", 3));
  ASSERT_TRUE(older) << "as they were kept before";
  EXPECT_EQ(older->cues, nullptr);

  cues.main = microseconds::min();
  cues.hot[1] = music::Cue{microseconds::max(), {}, 0, ""};
  cues.hot[2] = music::Cue{microseconds(5), microseconds(-5), -3, "a\x1b[0m\nb"};
  cues.hot[3] = music::Cue{microseconds(6), {}, 300, std::string(39, 'x') + "é"};
  const music::Cues sound = music::Sound(cues);
  EXPECT_FALSE(sound.main || sound.hot[1]);
  EXPECT_EQ(sound.hot[2], (music::Cue{microseconds(5), {}, 0, "a [0m b"}));
  EXPECT_EQ(sound.hot[3], (music::Cue{microseconds(6), {}, 0, std::string(39, 'x')}));
  std::string bytes = PackMarks(marks);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (const char wrong : {'\xFF', '\0', '\x80'}) {
      std::string damaged = bytes;
      damaged[i] = wrong;
      const auto read = UnpackMarks(damaged);
      if (read && read->cues) {
        EXPECT_EQ(*read->cues, music::Sound(*read->cues));
      }
    }
  }
}

TEST(AnalysisParts, KeyBarsAndSectionsComeBackAndOlderFindingsHaveNone) {
  using music::Seconds;
  MemorySideStore store;
  music::TrackAnalysis known = Known();
  ASSERT_TRUE(WriteAnalysis(store, "a", {1, 1}, known).Ok());
  auto back = ReadAnalysis(store, "a", {1, 1});
  ASSERT_TRUE(back) << "as it was kept before";
  EXPECT_EQ(back->form, nullptr);

  music::TrackForm form{music::MusicalKey{9, true}, 0.5, Seconds(1.25), 0.75, {}};
  form.sections = {{Seconds(0), Seconds(30), music::SectionKind::Intro},
                   {Seconds(30), Seconds(240), music::SectionKind::Other}};
  known.form = std::make_shared<const music::TrackForm>(form);
  ASSERT_TRUE(WriteAnalysis(store, "a", {1, 1}, known).Ok());
  back = ReadAnalysis(store, "a", {1, 1});
  ASSERT_TRUE(back && back->form);
  EXPECT_EQ(*back->form, form);
  EXPECT_EQ(UnpackForm(PackForm({})), music::TrackForm{});
  ASSERT_TRUE(CarryOver(store, "a", {1, 1}, {2, 2}).Ok());
  EXPECT_TRUE(store.Read("a", {2, 2}, SidePart::Form)) << "its tag was edited";

  const std::string bytes = PackForm(form);
  for (std::size_t size = 0; size < bytes.size(); ++size) EXPECT_FALSE(UnpackForm(bytes.substr(0, size)));
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    std::string damaged = bytes;
    damaged[i] = '\xFF';
    const auto read = UnpackForm(damaged);
    for (std::size_t at = 1; read && at < read->sections.size(); ++at)
      EXPECT_EQ(read->sections[at].start, read->sections[at - 1].end);
  }
}

TEST(AnalysisParts, TheBarThatAHandSetIsKeptWithTheMarks) {
  FileMarks marks;
  marks.bar = std::chrono::milliseconds(2500);
  marks.grid = Known().grid;
  const auto back = UnpackMarks(PackMarks(marks));
  ASSERT_TRUE(back && back->grid);
  EXPECT_EQ(back->bar, marks.bar);
  const auto older = UnpackMarks(std::string("\x03\0\x02", 3));
  ASSERT_TRUE(older) << "as they were kept before";
  EXPECT_EQ(older->start, PointBy::Hand);
  EXPECT_FALSE(older->bar);
}

TEST(AnalysisParts, WhatWasKeptUnderThePathGoesUnderTheSound) {
  MemorySideStore store;
  ASSERT_TRUE(store.Write("a", {1, 1}, SidePart::Marks, "as it was").Ok());
  const auto key = KeyOf(store, "a");
  ASSERT_TRUE(key);
  EXPECT_EQ(store.Read(key->path, key->stamp, SidePart::Marks), "as it was");
  store.SetContent("b", "a|1|1");
  EXPECT_EQ(KeyOf(store, "b"), key);
  EXPECT_EQ(LastPathOf(store, *key), "b");
}

TEST(AnalysisParts, AFourMinuteTrackTakesLessThan150Kilobytes) {
  const music::TrackAnalysis known = Known();
  EXPECT_LT(PackWave(*known.wave).size() + PackGrid(*known.grid).size() + PackFacts(known).size(), 150'000U);
}

TEST(AnalysisParts, AnyWaveComesBackWhateverItsColumns) {
  std::vector<music::WaveColumn> fine(200);
  for (std::size_t i = 0; i < fine.size(); i += 2) fine[i] = {-128, 127, 255, 255, 255};
  for (std::size_t i = 1; i < fine.size(); i += 8) fine[i] = {127, -128, 0, 255, 0};
  EXPECT_EQ(UnpackWave(PackWave(music::Wave::Of(fine)))->fine, fine);
  EXPECT_TRUE(UnpackWave(PackWave({}))->fine.empty());
  EXPECT_TRUE(UnpackGrid(PackGrid({}))->Empty());
}

TEST(AnalysisParts, APartThatIsMissingCutOrOfAnotherVersionIsNone) {
  const music::TrackAnalysis known = Known();
  const std::string grid = PackGrid(*known.grid);
  const std::string facts = PackFacts(known);
  const std::string wave = PackWave(Music(100));
  for (std::size_t size = 0; size < grid.size(); size += 7) EXPECT_FALSE(UnpackGrid(grid.substr(0, size)));
  for (std::size_t size = 0; size < facts.size(); ++size) EXPECT_FALSE(UnpackFacts(facts.substr(0, size)));
  for (std::size_t size = 0; size < wave.size(); ++size) EXPECT_FALSE(UnpackWave(wave.substr(0, size)));
  EXPECT_FALSE(UnpackWave(wave + "x"));
  EXPECT_FALSE(UnpackGrid("\x63" + grid.substr(1)));
  MemorySideStore store;
  ASSERT_TRUE(store.Write("a", {1, 1}, SidePart::Wave, wave).Ok());
  ASSERT_TRUE(store.Write("a", {1, 1}, SidePart::Facts, facts).Ok());
  EXPECT_FALSE(ReadAnalysis(store, "a", {1, 1}));
}

}  // namespace
}  // namespace catalogue::testing
