// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <malloc.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <string_view>

#include "benchmarks/Bench.h"
#include "benchmarks/SqliteTable.h"
#include "catalogue/FoldText.h"
#include "catalogue/SearchIndex.h"
#include "catalogue/SortOrder.h"
#include "catalogue/track_table.h"
#include "support/Text.h"

namespace bench {
namespace {

using catalogue::track_table;
namespace track = catalogue::track;

constexpr int kSearchRows = 1'000'000;
const std::atomic<bool> kNeverStop{false};

/// A collection whose words are as often as those of a language are: few everywhere, most of them rare.
class WordyCollection {
 public:
  WordyCollection() {
    static constexpr std::string_view kSyllables[] = {"la", "ri", "no", "the", "ma", "ter", "ing", "so",
                                                      "de", "ka", "lo", "ve",  "an", "mi",  "do",  "st"};
    for (int i = 0; i < 60'000; ++i) {
      std::string word;
      for (int syllables = 1 + i % 4; syllables > 0; --syllables) word += kSyllables[dice_() % 16];
      if (i > 200) word += static_cast<char>('a' + dice_() % 26);
      words_.push_back(word);
    }
    for (int i = 0; i < 40'000; ++i) artists_.push_back(Text(1 + i % 3));
    for (int i = 0; i < 120'000; ++i) albums_.push_back(Text(1 + i % 4));
    for (int i = 0; i < 60; ++i) genres_.push_back(Text(1));
  }

  track_table Make(int rows) {
    track_table table(catalogue::TrackColumns());
    for (int row = 0; row < rows; ++row) {
      const std::string& artist = artists_[dice_() % artists_.size()];
      const std::string& album = albums_[dice_() % albums_.size()];
      const std::string title = Text(1 + static_cast<int>(dice_() % 5));
      const std::string file = "/home/dj/Music/" + artist + "/" + album + "/" + std::to_string(row % 20) +
                               " " + artist + " - " + title + ".mp3";
      const std::string bpm = support::FormatReal(80 + static_cast<double>(dice_() % 9000) * 0.01, 2);
      table.AddRow(std::vector<std::string_view>{artist, title, support::FormatMinutes(120 + row % 300), file,
                                                 bpm, genres_[dice_() % genres_.size()], album,
                                                 std::to_string(1960 + row % 60), "320", "44100", "-3.25"});
    }
    return table;
  }

  /// What is in the field after each key when somebody looks for a row.
  std::vector<std::string> Keystrokes(const track_table& table, int wanted) {
    std::vector<std::string> typed;
    while (static_cast<int>(typed.size()) < wanted) {
      const int row = 1 + static_cast<int>(dice_() % static_cast<unsigned>(table.Rows()));
      std::string text;
      for (const int column : {track::kArtist, track::kTitle}) {
        const auto words = support::Split(table.Cell(row, column), ' ');
        text += (text.empty() ? "" : " ") + std::string(words[dice_() % words.size()]);
      }
      for (std::size_t keys = 1; keys <= text.size(); ++keys) typed.push_back(text.substr(0, keys));
    }
    return typed;
  }

 private:
  std::string Text(int words) {
    std::string text;
    for (; words > 0; --words) {
      const double chance = static_cast<double>(dice_() % 1'000'000) / 1e6;
      const auto rank = static_cast<std::size_t>(std::pow(60'000.0, chance)) - 1;
      text += (text.empty() ? "" : " ") + words_[rank];
    }
    return text;
  }

  std::mt19937 dice_{1};
  std::vector<std::string> words_, artists_, albums_, genres_;
};

double MillisecondsOf(const std::function<void()>& job) {
  const auto begin = std::chrono::steady_clock::now();
  job();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

/// The plain way: each row's folded text in one line, each word looked for in all of it.
class FlatText {
 public:
  explicit FlatText(const track_table& table) {
    for (int row = 1; row <= table.Rows(); ++row) {
      for (const int column : catalogue::kTrackSearch.fields) {
        catalogue::AppendFolded(text_, table.Cell(row, column));
        text_ += ' ';
      }
      text_ += '\n';
      ends_.push_back(text_.size());
    }
  }
  std::vector<int> Find(const std::string& query) const {
    std::vector<int> rows;
    const auto words = support::Split(query, ' ');
    const char* const text = text_.data();
    for (std::size_t at = 0; at < text_.size();) {
      const void* found = memmem(text + at, text_.size() - at, words[0].data(), words[0].size());
      if (found == nullptr) break;
      const auto place = static_cast<std::size_t>(static_cast<const char*>(found) - text);
      const auto end = std::upper_bound(ends_.begin(), ends_.end(), place);
      const std::size_t start = end == ends_.begin() ? 0 : *(end - 1);
      bool all = true;
      for (const std::string_view word : words) {
        all =
            all && (word.empty() || memmem(text + start, *end - start, word.data(), word.size()) != nullptr);
      }
      if (all) rows.push_back(static_cast<int>(end - ends_.begin()) + 1);
      at = *end;
    }
    return rows;
  }

 private:
  std::string text_;
  std::vector<std::size_t> ends_;
};

struct Answers {
  std::vector<double> ours, cpu, like, plain;
};

Answers TimeKeystrokes(const track_table& table, const catalogue::SearchIndex& index,
                       const std::vector<std::string>& typed) {
  Answers answers;
  for (const std::string& text : typed) {
    const double before = ThreadCpuSeconds();
    answers.ours.push_back(
        MillisecondsOf([&] { static_cast<void>(index.Find(catalogue::ParseQuery(text))); }));
    answers.cpu.push_back((ThreadCpuSeconds() - before) * 1000);
  }
  const FlatText flat(table);
  const SqliteSearch sqlite(table);
  for (std::size_t i = 0; i < typed.size(); i += 101) {
    std::size_t plainly = 0, by_like = 0;
    answers.plain.push_back(MillisecondsOf([&] { plainly = flat.Find(typed[i]).size(); }));
    answers.like.push_back(MillisecondsOf([&] { by_like = sqlite.Like(typed[i]); }));
    const std::size_t ours = index.Find(catalogue::ParseQuery(typed[i])).size();
    if (ours > plainly || ours > by_like || ours == 0) std::abort();
  }
  return answers;
}

void TimeSorts(const track_table& table, std::vector<Figure>& figures) {
  using catalogue::SortAs;
  const SqliteSearch sqlite(table);
  const struct {
    const char* name;
    int column;
    SortAs as;
  } kColumns[] = {{"artist", track::kArtist, SortAs::Text},
                  {"title", track::kTitle, SortAs::Text},
                  {"tempo", track::kBpm, SortAs::Number},
                  {"time", track::kTime, SortAs::Time}};
  for (const auto& column : kColumns) {
    std::vector<double> ours, reference;
    for (int run = 0; run < 3; ++run) {
      ours.push_back(MillisecondsOf([&] {
        static_cast<void>(catalogue::OrderBy(table, {column.column, column.as}, kNeverStop));
      }));
      reference.push_back(
          MillisecondsOf([&] { sqlite.OrderBy(column.column, column.as == SortAs::Number); }));
    }
    figures.push_back({std::string("sort them by ") + column.name + " (SQLite, ORDER BY)", "ms", Median(ours),
                       Median(reference), "at most 0.33 of it"});
  }
}

}  // namespace

std::vector<Figure> MeasureSearch() {
  WordyCollection words;
  const track_table table = words.Make(kSearchRows);
  const std::vector<std::string> typed = words.Keystrokes(table, 4000);
  std::vector<Figure> figures;
  catalogue::SearchIndex index(catalogue::kTrackSearch);
  malloc_trim(0);
  const double before = ResidentMegabytes();
  const double build = MillisecondsOf([&] { index.Follow(table, kNeverStop); });
  malloc_trim(0);
  const double megabytes = ResidentMegabytes() - before;
  const Answers answers = TimeKeystrokes(table, index, typed);
  const auto row = [&](const std::string& name, double share, const std::vector<double>& reference,
                       const std::string& aim) {
    figures.push_back({name, "ms", Percentile(answers.ours, share), Percentile(reference, share), aim});
  };
  row("from a key to the list of 1,000,000 rows, p50 (SQLite LIKE)", 0.5, answers.like, "");
  row("p99 (SQLite LIKE)", 0.99, answers.like, "under 10");
  row("the same, p50 (memmem over flat text)", 0.5, answers.plain, "");
  row("p99 (memmem over flat text)", 0.99, answers.plain, "under 10");
  figures.push_back(
      {"worst of " + std::to_string(typed.size()) + " keys", "ms", Percentile(answers.ours, 1), {}, ""});
  figures.push_back({"CPU time for a key, p50", "ms", Percentile(answers.cpu, 0.5), {}, ""});
  figures.push_back({"CPU time for a key, p99", "ms", Percentile(answers.cpu, 0.99), {}, "under 10"});
  figures.push_back({"memory of the index, a row", "bytes", megabytes * 1024 * 1024 / kSearchRows, {}, ""});
  figures.push_back({"making it", "ms", build, {}, ""});
  track_table changed = table;
  changed.SetCell(kSearchRows / 2, track::kTitle, "another one");
  figures.push_back({"following one row that changed",
                     "ms",
                     MillisecondsOf([&] { index.Follow(changed, kNeverStop); }),
                     {},
                     ""});
  TimeSorts(table, figures);
  return figures;
}

}  // namespace bench
