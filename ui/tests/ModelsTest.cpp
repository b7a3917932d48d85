// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QMimeData>
#include <limits>

#include "app/WorkstationView.h"
#include "support/Languages.h"
#include "ui/models/DeckChoice.h"
#include "ui/models/OutputText.h"
#include "ui/models/SentEcho.h"
#include "ui/models/TrackModel.h"

namespace ui {
namespace {

using namespace std::chrono_literals;
using State = app::DeckView::State;

TEST(DeckChoice, TakesTheFirstFreeDeckAndNeverOneThatPlays) {
  const struct {
    State first, second;
    int deck;
  } cases[] = {{State::Empty, State::Empty, 1},     {State::Stopped, State::Empty, 2},
               {State::Playing, State::Empty, 2},   {State::Playing, State::Stopped, 2},
               {State::Stopped, State::Ended, 2},   {State::Paused, State::Stopped, 2},
               {State::Paused, State::Playing, 1},  {State::Playing, State::Playing, 0},
               {State::Loading, State::Playing, 0}, {State::Loading, State::Empty, 2}};
  for (const auto& each : cases) {
    app::WorkstationView view;
    view.decks[0].state = each.first;
    view.decks[1].state = each.second;
    EXPECT_EQ(DeckForLoading(view).value_or(0), each.deck);
  }
}

TEST(SentEcho, AnEchoOfAnOlderStepDoesNotMoveTheSlider) {
  SentEcho echo;
  const support::TimePoint start{};
  echo.Sent(2, start);
  EXPECT_FALSE(echo.Believe(1, start + 20ms));
  EXPECT_TRUE(echo.Believe(2, start + 40ms));
  EXPECT_TRUE(echo.Believe(3, start + 60ms));
  echo.Sent(2, start);
  EXPECT_TRUE(echo.Believe(0, start + 600ms)) << "it was never taken";
}

TEST(OutputText, NamesDeviceAndPairAndADeviceThatIsGone) {
  const Strings say(Strings::Language::English);
  const std::vector<std::string> devices = {"Main", "USB"};
  const struct {
    app::OutputView output;
    const char* text;
  } cases[] = {{{0, 0}, "No sound"},
               {{0, 2}, "No sound"},
               {{1, 0}, "Main"},
               {{2, 2}, "USB, Rear"},
               {{1, 9}, "Main"},
               {{5, 0}, "Device 5 (not there)"},
               {{-1, 0}, "Device -1 (not there)"}};
  for (const auto& each : cases) {
    EXPECT_EQ(OutputText(each.output, devices, say).toStdString(), each.text);
  }
}

class TrackModelTest : public ::testing::Test {
 protected:
  void Add(std::string_view artist, std::string_view title, std::string_view file) {
    const std::string_view cells[] = {artist, title, "03:45", file};
    table.AddRow(cells);
  }
  QString At(int row, int column) { return model.index(row, column).data().toString(); }

  catalogue::track_table table{catalogue::TrackColumns()};
  Strings say{Strings::Language::English};
  TrackModel model{table, TableId::Catalogue, CatalogueShape(), Look{SkinOf(Skin::Name::Dark), say}};
};

TEST_F(TrackModelTest, ShowsTheRowsThatWereThereWhenItLooked) {
  Add("Anna", "Light", "/m/a.mp3");
  EXPECT_EQ(model.rowCount(), 0);
  model.Sync();
  EXPECT_EQ(model.rowCount(), 1);
  EXPECT_EQ(At(0, TrackModel::Artist), QStringLiteral("Anna"));
  EXPECT_EQ(At(0, TrackModel::Time), QStringLiteral("03:45"));
  table.Clear();
  model.Sync();
  EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(TrackModelTest, ATrackWithoutTitleIsCalledByItsFile) {
  Add("", "", "C:\\music\\b.ogg");
  Add("", "", "/m/c.ogg");
  model.Sync();
  EXPECT_EQ(At(0, TrackModel::Title), QStringLiteral("b.ogg"));
  EXPECT_EQ(At(1, TrackModel::Title), QStringLiteral("c.ogg"));
}

TEST_F(TrackModelTest, MarksTheRowsThatAreOnDecks) {
  Add("Anna", "Light", "/m/a.mp3");
  Add("Ben", "Wind", "/m/b.mp3");
  model.Sync();
  app::WorkstationView view;
  view.decks[1].filename = "/m/a.mp3";
  model.ShowDecks(view);
  EXPECT_EQ(At(0, TrackModel::Deck), QString()) << "it could not be opened";
  view.decks[1].state = app::DeckView::State::Stopped;
  model.ShowDecks(view);
  EXPECT_EQ(At(0, TrackModel::Deck), QStringLiteral("2"));
  EXPECT_EQ(At(1, TrackModel::Deck), QString());
}

TEST_F(TrackModelTest, DraggedRowsAreFoundAgain) {
  for (const char* file : {"/m/a.mp3", "/m/b.mp3", "/m/c.mp3"}) Add("Anna", "Light", file);
  model.Sync();
  const std::unique_ptr<QMimeData> data(
      model.mimeData({model.index(2, 0), model.index(0, 0), model.index(0, 1)}));
  const auto rows = TrackRowsIn(*data);
  ASSERT_TRUE(rows);
  EXPECT_EQ(rows->table, TableId::Catalogue);
  EXPECT_EQ(rows->rows, (std::vector<int>{1, 3}));
}

TEST_F(TrackModelTest, ATempoIsShownWithOneDecimalAndOtherTextAsItStands) {
  const struct {
    const char* cell;
    const char* shown;
  } cases[] = {{"128.00", "128.0"}, {"99.46", "99.5"}, {"fast", "fast"}, {"", "?"}};
  for (const auto& each : cases) {
    const std::string_view cells[] = {"A", "B", "03:45", "/m/a.mp3", each.cell};
    table.AddRow(cells);
    model.Sync();
    EXPECT_EQ(At(model.rowCount() - 1, TrackModel::Bpm).toStdString(), each.shown);
  }
}

TEST(TrackRows, AMillionRowsThatFollowEachOtherAreAFewLetters) {
  TrackRows rows{TableId::Playlist1, {2, 4, 5, 6}};
  for (int row = 10; row <= 1'000'000; ++row) rows.rows.push_back(row);
  QMimeData data;
  PutInto(data, rows);
  EXPECT_EQ(data.data(TrackRowsType()), "1 2 4-6 10-1000000");
  const auto read = TrackRowsIn(data);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->rows, rows.rows);
}

TEST(TrackRows, GarbageIsNoRows) {
  for (const char* text : {"", "0", "0 ", "0 0", "0 -3", "0 1x", "4 1", "-1 1", "x 1", "0 1 99999999999999",
                           "0 3-2", "0 1-", "0 -", "0 1-2147483647", "0 1-9000000 1-9000000"}) {
    QMimeData data;
    data.setData(TrackRowsType(), text);
    EXPECT_FALSE(TrackRowsIn(data)) << text;
  }
}

}  // namespace
}  // namespace ui
