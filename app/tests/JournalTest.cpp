// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/resume/Journal.h"

#include <gtest/gtest.h>

#include <fstream>

#include "app/resume/JournalKeeper.h"
#include "app/resume/Suspects.h"
#include "support/testing/FakeClock.h"
#include "support/testing/ManualExecutor.h"
#include "support/testing/MemoryFiles.h"
#include "support/testing/TemporaryFolder.h"

namespace app {
namespace {

using namespace std::chrono_literals;

Journal FullJournal() {
  Journal journal;
  journal.number = 12;
  DeckInHand& deck = journal.decks[0];
  deck.state = DeckInHand::State::Paused;
  deck.filename = "/a 100%\n=[x].mp3";
  deck.artist = "Mot\xF6rhead";
  deck.bpm = 120.25;
  deck.position = 83'512'345us;
  deck.marks.end = 95s;
  deck.sliders = {decks::KeyLock::Off, -3.25, 2, 1.5};
  deck.synced = true;
  deck.gain = {-4.5F};
  deck.equaliser = {0, 6, 0, 0, 0, 0, 0, 0, 0, -12};
  deck.volume = 70;
  deck.pre_volume = 55;
  journal.mixer.hands = {{80, 20}, -33, decks::CrossfaderCurve::Cut};
  journal.mixer.mix = {{"s1.mp3", "s2.mp3"}, 1, 2, true, true, {60s, 8s}, -100, 2s, true};
  journal.song = {{"a.kar", "Anna", "Song"}, SongView::State::Playing, 10s, -3, 2.5, ""};
  journal.lights.grand_master = 200;
  journal.lights.blackout = true;
  journal.lights.levels = {0, 255, 0, 17};
  journal.lights.show = "/shows/walk-in.shw";
  journal.lights.state = dmx::ShowPlayer::State::Paused;
  journal.lights.position = 4s;
  journal.lights.repeat = dmx::ShowPlayer::Repeat::ForEver;
  journal.start = {2, true};
  journal.suspects = {{"/a.mp3", {1, false}}, {"/b.mp3", {0, true}}};
  return journal;
}

TEST(JournalTest, WhatIsWrittenIsReadToTheLastValue) {
  const Journal journal = FullJournal();
  const auto read = ParseJournal(JournalText(journal));
  ASSERT_TRUE(read);
  EXPECT_EQ(JournalText(*read), JournalText(journal));
  const DeckInHand& deck = read->decks[0];
  EXPECT_EQ(deck.state, DeckInHand::State::Paused);
  EXPECT_EQ(deck.filename, "/a 100%\n=[x].mp3");
  EXPECT_EQ(deck.position, 83'512'345us);
  EXPECT_EQ(deck.marks.start, std::nullopt);
  EXPECT_EQ(deck.sliders, journal.decks[0].sliders);
  EXPECT_EQ(deck.equaliser, journal.decks[0].equaliser);
  EXPECT_EQ(read->mixer, journal.mixer);
  EXPECT_EQ(read->song.row.title, "Song");
  EXPECT_EQ(read->lights, journal.lights);
  EXPECT_TRUE(read->start.fresh);
  EXPECT_EQ(read->suspects.at("/a.mp3").falls, 1);
}

TEST(JournalTest, WhateverIsCutOffOrChangedIsFound) {
  const std::string whole = JournalText(FullJournal());
  for (std::size_t length = 0; length + 2 < whole.size(); ++length)
    ASSERT_FALSE(ParseJournal(std::string_view(whole).substr(0, length))) << length;
  for (std::size_t place = 0; place + 2 < whole.size(); ++place) {
    std::string changed = whole;
    changed[place] ^= 1;
    ASSERT_FALSE(ParseJournal(changed)) << place;
  }
  EXPECT_FALSE(ParseJournal(std::string(whole.size(), '\0'))) << "as a power cut may leave it";
}

TEST(JournalTest, ValuesOutOfBoundsAreBroughtIntoThem) {
  const Journal read = ParseJournalLines(
      "[deck1]\nstate=playing\n[deck2]\nfile=b\nstate=gone\ntempo=1e99\nband9=nan\nposition=-5\nvolume=x\n"
      "[mixer]\nleader=2\nnext=2\nfader1=900\n[lights]\nlevels=0g11\nmaster=-4\n[other]\nfile=c\n");
  EXPECT_EQ(read.decks[0].state, DeckInHand::State::Empty) << "without a file it plays nothing";
  EXPECT_EQ(read.decks[1].sliders.percent, 100);
  EXPECT_EQ(read.decks[1].equaliser[9], 0);
  EXPECT_EQ(read.decks[1].position, 0us);
  EXPECT_EQ(read.decks[1].volume, 100);
  EXPECT_EQ(read.mixer.mix.next, 0);
  EXPECT_EQ(read.mixer.hands.faders[0], 100);
  EXPECT_EQ(read.lights.levels[0], 0);
  EXPECT_EQ(read.lights.levels[1], 0x11);
  EXPECT_EQ(read.lights.grand_master, 0);
}

/// Both files on the disk.
class StoredJournalTest : public ::testing::Test {
 protected:
  void Write(std::size_t file, const std::string& text) const {
    std::ofstream(folder_.Path() / std::string(kJournalFiles[file].substr(1)), std::ios::binary) << text;
  }
  static std::string Numbered(std::uint64_t number) {
    Journal journal;
    journal.number = number;
    return JournalText(journal);
  }
  [[nodiscard]] StoredJournal Read() const { return ReadJournal(support::ProgramFolder(folder_.Path())); }
  support::testing::TemporaryFolder folder_;
};

TEST_F(StoredJournalTest, TheNewerOneThatIsWholeIsTaken) {
  EXPECT_FALSE(Read().newest || Read().damaged);
  Write(1, Numbered(5));
  EXPECT_EQ(Read().newest->number, 5U);
  Write(0, Numbered(9));
  EXPECT_EQ(Read().newest->number, 9U);
  Write(0, Numbered(10).substr(0, 40));
  EXPECT_EQ(Read().newest->number, 5U) << "the power went while the swift one was written";
  Write(1, "");
  EXPECT_FALSE(Read().newest);
  EXPECT_TRUE(Read().damaged);
  Write(0, std::string(3 << 20, 'x'));
  EXPECT_TRUE(Read().damaged) << "however long";
}

/// A keeper whose worker is the test.
class JournalKeeperTest : public ::testing::Test {
 protected:
  void Keep(int leader) {
    Journal journal;
    journal.mixer.mix.leader = leader;
    keeper_.Keep(std::move(journal));
  }
  /// The leader in a file, -1 where there is none.
  [[nodiscard]] int In(std::size_t file) const {
    const auto text = files_.Content(folder_.Native(kJournalFiles[file]));
    return text ? ParseJournal(*text)->mixer.mix.leader : -1;
  }
  support::testing::FakeClock clock_;
  support::testing::MemoryFiles files_;
  support::testing::ManualExecutor writer_;
  support::ProgramFolder folder_{"/none"};
  std::vector<std::string> complaints_;
  JournalKeeper keeper_{
      files_,  writer_,
      clock_,  std::make_shared<WorkGate>(),
      folder_, [this](const support::Error& failure) { complaints_.push_back(failure.text); }};
};

TEST_F(JournalKeeperTest, TheSwiftFileIsAlwaysNewAndTheSafeOneNowAndThen) {
  Keep(1);
  writer_.RunAll();
  EXPECT_EQ(In(0), 1);
  EXPECT_EQ(In(1), 1);
  clock_.Advance(1s);
  Keep(2);
  writer_.RunAll();
  EXPECT_EQ(In(0), 2);
  EXPECT_EQ(In(1), 1) << "a stick is spared";
  clock_.Advance(JournalKeeper::kSafe);
  keeper_.Tick();
  writer_.RunAll();
  EXPECT_EQ(In(1), 2) << "also where nothing changes any more";
  const int saves = files_.Saves();
  clock_.Advance(60s);
  keeper_.Tick();
  writer_.RunAll();
  EXPECT_EQ(files_.Saves(), saves);
}

TEST_F(JournalKeeperTest, ADiskThatIsSlowGetsTheNewestAlone) {
  for (const int leader : {1, 2, 1, 2}) Keep(leader);
  EXPECT_EQ(writer_.Waiting(), 2U);
  writer_.RunAll();
  EXPECT_EQ(In(0), 2);
  EXPECT_EQ(files_.Saves(), 2);
}

TEST_F(JournalKeeperTest, ADiskThatFailsIsToldOnceAndTriedAgain) {
  files_.SetFull(true);
  for (int i = 0; i < 20; ++i) {
    Keep(i % 2 + 1);
    writer_.RunAll();
    clock_.Advance(500ms);
  }
  EXPECT_EQ(complaints_.size(), 1U);
  EXPECT_LE(files_.Saves(), 8) << "it is left in peace between";
  files_.SetFull(false);
  clock_.Advance(JournalKeeper::kRetry);
  Keep(1);
  writer_.RunAll();
  EXPECT_EQ(In(0), 1);
}

/// Runs of a program that ends unexpectedly.
class SuspectsTest : public ::testing::Test {
 protected:
  /// Files are in hand for so long; then the program falls, and starts again.
  void Run(const std::set<std::string>& files, support::Duration time) {
    Suspects run(clock_);
    if (journal_) run.Fell(*journal_);
    run.Begin();
    left_out_ = run.LeftOut();
    start_is_left_out_ = run.StartIsLeftOut();
    for (support::Duration passed{}; passed <= time; passed += 1s) {
      static_cast<void>(run.Look(files));
      journal_.emplace();
      run.Note(*journal_);
      clock_.Advance(1s);
    }
  }
  [[nodiscard]] std::vector<std::string> LeftOut() {
    Run({}, 0s);
    return left_out_;
  }
  support::testing::FakeClock clock_;
  std::optional<Journal> journal_;
  std::vector<std::string> left_out_;
  bool start_is_left_out_ = false;
};

using Names = std::vector<std::string>;

TEST_F(SuspectsTest, AFileThatTheProgramFallsOverTwiceIsLeftOut) {
  Run({"bad.mp3"}, 2s);
  Run({"bad.mp3"}, 2s);
  EXPECT_EQ(left_out_, Names{}) << "once may be anything";
  EXPECT_EQ(LeftOut(), Names{"bad.mp3"});
  EXPECT_EQ(LeftOut(), Names{"bad.mp3"}) << "and stays so";
}

TEST_F(SuspectsTest, WhatHasGoneOnForAWhileIsNotToBlame) {
  const struct {
    const char* what;
    std::vector<std::pair<std::string, support::Duration>> runs;
    Names left_out;
  } kEvenings[] = {
      {"two power cuts with three hours between", {{"a", 3s}, {"a", 3h}, {"a", 5s}}, {}},
      {"cuts in the middle of it", {{"a", 60s}, {"a", 60s}, {"a", 60s}}, {}},
      {"the first fall deep in the file", {{"a", 60s}, {"a", 2s}}, {}},
      {"and it falls again", {{"a", 60s}, {"a", 2s}, {"a", 2s}}, {"a"}},
      {"another file each time", {{"a", 2s}, {"b", 2s}, {"c", 2s}}, {}},
      {"one between that went well", {{"a", 2s}, {"b", 60s}, {"a", 2s}}, {}},
  };
  for (const auto& evening : kEvenings) {
    journal_.reset();
    for (const auto& [file, time] : evening.runs) Run({file}, time);
    EXPECT_EQ(LeftOut(), evening.left_out) << evening.what;
  }
}

TEST_F(SuspectsTest, AStartThatFallsOverSomethingElseDoesNotGoOnForEver) {
  for (int fall = 0; fall < Suspects::kFallsOfTheStart; ++fall) {
    Run({}, 1s);
    EXPECT_FALSE(start_is_left_out_);
  }
  Run({}, 60s);
  EXPECT_TRUE(start_is_left_out_);
  Run({}, 1s);
  EXPECT_FALSE(start_is_left_out_) << "it went well for a minute";
}

}  // namespace
}  // namespace app
