// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <random>

#include "catalogue/FoldText.h"
#include "catalogue/RowMoves.h"
#include "catalogue/SearchIndex.h"
#include "catalogue/SortOrder.h"

namespace catalogue {
namespace {

const std::atomic<bool> kGoOn{false};

TEST(FoldTextTest, LettersLoseCaseAndAccentsAndSignsBecomeOneBlank) {
  const struct {
    const char* text;
    const char* folded;
  } kTexts[] = {
      {"Beyoncé — HALO!", "beyonce halo"},
      {"Trịnh Công Sơn, Điệu Hát", "trinh cong son dieu hat"},
      {"ŞIMARIK ığüöç İstanbul", "simarik iguoc istanbul"},
      {"Straße Æther Œuvre ﬁn Þór Ørsted", "strasse aether oeuvre fin thor orsted"},
      {"Don't / Don’t", "dont dont"},
      {"AC/DC - T.N.T.", "ac dc t n t"},
      {"Άλφα ΏΡΑ ὦ ΟΔΟΣ οδός", "αλφα ωρα ω οδοσ οδοσ"},
      {"ЁЛКА ёлка Їжак ЎЗБЕК", "елка елка іжак узбек"},
      {"夜に駆ける・ＡＢＣ１", "夜に駆ける abc1"},
      {"e\xCC\x81t\xC3\xA9", "ete"},  // combining accent
      {"Beyonc\xE9 \xDC"
       "ber",
       "beyonce uber"},  // Latin-1
      {"  ...  ", ""},
      {"🎉 party", "🎉 party"},
      {"\xF4\x90\x80\x80", "o"},  // beyond the last character, so it is Latin-1
  };
  for (const auto& text : kTexts) {
    EXPECT_EQ(Folded(text.text), text.folded) << text.text;
  }
}

/// A table of few songs that a test searches, told by their titles' first letters.
class SearchTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Song("Beyoncé", "A Halo", "I Am... Sasha Fierce", "Pop", "2008", "/m/Beyonce - Halo.mp3", "80.00");
    Song("Daft Punk", "B One More Time", "Discovery", "House", "2001", "/m/omt.flac", "122.70");
    Song("AC/DC", "C Back In Black", "Back In Black", "Rock", "1980-07-25", "C:\\m\\acdc_bib.mp3", "188.00");
    Song("Queen", "D Don't Stop Me Now", "Jazz", "Rock", "1978", "/m/queen/now.ogg", "156.30");
    Song("Дискотека Авария", "E Ёлки", "", "Pop", "", "/m/punk/e.mp3", "");
    Song("Time", "F One", "More House", "House", "1999", "/m/f.mp3", "128.00");
  }
  void Song(std::string_view artist, std::string_view title, std::string_view album, std::string_view genre,
            std::string_view year, std::string_view file, std::string_view bpm) {
    table_.AddRow(std::vector<std::string_view>{artist, title, "03:00", file, bpm, genre, album, year});
  }
  std::string Found(std::string_view query, const std::vector<int>* order = nullptr) {
    EXPECT_TRUE(index_.Follow(table_, kGoOn));
    std::string letters;
    for (const int row : index_.Find(ParseQuery(query), order)) letters += table_.Cell(row, track::kTitle)[0];
    return letters;
  }
  track_table table_{TrackColumns()};
  SearchIndex index_{kTrackSearch};
};

TEST_F(SearchTest, AQueryFindsWhatItSays) {
  const struct {
    const char* query;
    const char* found;
  } kQueries[] = {
      {"", "ABCDEF"},
      {"   ", "ABCDEF"},
      {"beyonce", "A"},
      {"BEYONCÉ HALO", "A"},
      {"halo beyonce", "A"},
      {"eyon", "A"},
      {"time", "BF"},
      {"time one", "BF"},
      {"\"one more\"", "B"},
      {"\"one mor\"", ""},
      {"\"one mor", "B"},
      {"\"more time\" punk", "B"},
      {"ac/dc", "C"},
      {"acdc", "C"},
      {"dont", "D"},
      {"don't stop", "D"},
      {"елки", "E"},
      {"ёлк", "E"},
      {"artist:time", "F"},
      {"ARTIST:time", "F"},
      {"artist:\"daft punk\"", "B"},
      {"punk", "B"},  // a folder is no name
      {"file:omt", "B"},
      {"file:mp3 -halo", "CEF"},
      {"genre:rock", "CD"},
      {"genre:rock -queen", "C"},
      {"house", "BF"},
      {"-genre:house -genre:rock", "AE"},
      {"-\"back in black\" rock", "D"},
      {"bpm:120-128", "BF"},
      {"bpm:128", "F"},
      {"bpm:156.3", "D"},
      {"bpm:156", "D"},
      {"bpm:150-", "CD"},
      {"bpm:-100", "A"},
      {"bpm:120-12", "BCDF"},  // while it is typed
      {"bpm:", "ABCDEF"},
      {"-bpm:120-128", "ACDE"},
      {"year:1990-1999", "F"},
      {"year:1980", "C"},
      {"year:19", ""},
      {"year:200x", ""},
      {"album:black", "C"},
      {"2008", "A"},
      {"a", "ABCD"},
      {"!!!", "ABCDEF"},
      {"- -", "ABCDEF"},
      {"nothing like it", ""},
  };
  for (const auto& query : kQueries) EXPECT_EQ(Found(query.query), query.found) << query.query;
}

TEST_F(SearchTest, OrdersAreKeptAndGoBothWays) {
  const auto order = [&](int column, SortAs as, SortDirection direction) {
    return OrderBy(table_, {column, as, direction}, kGoOn);
  };
  const auto by_artist = order(track::kArtist, SortAs::Text, SortDirection::Up);
  EXPECT_EQ(Found("", &by_artist), "CABDFE");
  EXPECT_EQ(Found("k", &by_artist), "CBD");
  const auto by_tempo = order(track::kBpm, SortAs::Number, SortDirection::Down);
  EXPECT_EQ(Found("", &by_tempo), "CDFBAE");
  const auto by_year = order(track::kYear, SortAs::Number, SortDirection::Up);
  EXPECT_EQ(Found("", &by_year), "DCFBAE");
  const auto by_genre = order(track::kGenre, SortAs::Text, SortDirection::Down);
  EXPECT_EQ(Found("", &by_genre), "CDAEBF");
  table_.SetCell(3, track::kTime, "103:00");
  table_.SetCell(5, track::kTime, "");
  const auto by_time = order(track::kTime, SortAs::Time, SortDirection::Down);
  EXPECT_EQ(Found("", &by_time), "CABDFE");
}

TEST_F(SearchTest, ItFollowsWhatChangesInTheTable) {
  EXPECT_EQ(Found("queen"), "D");
  table_.SetCell(1, track::kArtist, "Queens of the Stone Age");
  EXPECT_EQ(Found("queen"), "AD");
  table_.RemoveRow(4);
  EXPECT_EQ(Found("queen"), "A");
  Song("Queen", "G Innuendo", "", "", "", "", "");
  EXPECT_EQ(Found("queen"), "AG");
  table_.Clear();
  EXPECT_EQ(Found("queen"), "");
}

/// Words as they come by chance, few enough to meet again.
class RandomSearchTest : public ::testing::Test {
 protected:
  std::string Word() {
    std::string word;
    for (int letter = Number(1, 4); letter > 0; --letter) word += static_cast<char>('a' + Number(0, 3));
    return word;
  }
  std::string Text() {
    std::string text;
    for (int words = Number(0, 3); words > 0; --words) text += (text.empty() ? "" : " ") + Word();
    return text;
  }
  int Number(int least, int most) { return std::uniform_int_distribution<int>(least, most)(dice_); }
  std::vector<std::string> RandomRow() {
    return {Text(), Text(), "03:00", "/aa/" + Word(), std::to_string(Number(0, 200)), Word(), Text(), "1990"};
  }
  void Change() {
    const std::vector<std::string> row = RandomRow();
    const std::vector<std::string_view> cells(row.begin(), row.end());
    const int kind = Number(0, 5);
    if (kind > 2 || table_.Rows() == 0) {
      table_.AddRow(cells);
    } else if (kind == 2) {
      table_.SetCell(Number(1, table_.Rows()), track::kTitle, cells[0]);
    } else if (kind == 1) {
      table_.RemoveRow(Number(1, table_.Rows()));
    } else {
      MoveRows(table_, {Number(1, table_.Rows())}, Number(1, table_.Rows()));
    }
  }
  std::vector<int> Plainly(const std::string& a, const std::string& b) {
    std::vector<int> rows;
    for (int row = 1; row <= table_.Rows(); ++row) {
      std::string all;
      for (const int column : {1, 2, 6, 7, 8}) all += std::string(table_.Cell(row, column)) + "|";
      all += table_.Cell(row, track::kFilename).substr(4);
      if (all.find(a) != std::string::npos && all.find(b) == std::string::npos) rows.push_back(row);
    }
    return rows;
  }
  std::mt19937 dice_{7};
  track_table table_{TrackColumns()};
};

TEST_F(RandomSearchTest, WhatIsFoundIsWhatLookingThroughAllRowsFinds) {
  SearchIndex index(kTrackSearch);
  for (int step = 0; step < 300; ++step) {
    for (int changes = Number(0, 40); changes > 0; --changes) Change();
    ASSERT_TRUE(index.Follow(table_, kGoOn));
    const std::string a = Word(), b = Word();
    ASSERT_EQ(index.Find(ParseQuery(a + " -" + b)), Plainly(a, b)) << step << " " << a << " -" << b;
    const auto sorted = OrderBy(table_, {track::kArtist}, kGoOn);
    for (std::size_t i = 1; i < sorted.size(); ++i) {
      const auto one = table_.Cell(sorted[i - 1], 1), next = table_.Cell(sorted[i], 1);
      ASSERT_TRUE(next.empty() ||
                  (!one.empty() && (one < next || (one == next && sorted[i - 1] < sorted[i]))));
    }
  }
}

TEST(SearchIndexTest, ManyRowsAreReadInPartsAndASearchThatIsStoppedLeavesTheOldOne) {
  static constexpr std::string_view kManyWords =
      "b c d e f g h i j k l m n o p q r s t u v w x y z ab cd ef gh ij kl mn op qr st uv wx yz";
  track_table table(TrackColumns());
  const auto add = [&table](int count, std::string_view artist) {
    for (int i = 0; i < count; ++i) {
      table.AddRow(std::vector<std::string_view>{
          artist, "same beginning of a long title " + std::to_string(i % 7), "", "", "", "", kManyWords});
    }
  };
  add(20'000, "first");
  SearchIndex index(kTrackSearch);
  ASSERT_TRUE(index.Follow(table, kGoOn));
  table.SetCell(9'000, track::kArtist, "middle");
  add(1'000, "last");
  ASSERT_TRUE(index.Follow(table, kGoOn));
  EXPECT_EQ(index.Find(ParseQuery("middle")), std::vector<int>{9'000});
  EXPECT_EQ(index.Find(ParseQuery("last")).size(), 1'000u);
  EXPECT_EQ(index.Find(ParseQuery("\"beginning of a\"")).size(), 21'000u);
  EXPECT_EQ(index.Find(ParseQuery("album:yz")).size(), 21'000u);
  const std::vector<int> sevenths = index.Find(ParseQuery("title:3"));
  ASSERT_EQ(sevenths.size(), 3'000u);
  for (std::size_t i = 0; i < sevenths.size(); ++i) EXPECT_EQ(sevenths[i] % 7, sevenths[i] <= 20'000 ? 4 : 5);
  const auto by_title = OrderBy(table, {track::kTitle, SortAs::Text, SortDirection::Down}, kGoOn);
  EXPECT_EQ(by_title.front(), 7);
  EXPECT_EQ(by_title.back(), 21'000 - 999 + 994);
  table.RemoveRow(1);
  const std::atomic<bool> stopped{true};
  EXPECT_FALSE(index.Follow(table, stopped));
  EXPECT_EQ(index.Find(ParseQuery("middle")), std::vector<int>{9'000});
  EXPECT_TRUE(OrderBy(table, {track::kTitle}, stopped).empty());
}

}  // namespace
}  // namespace catalogue
