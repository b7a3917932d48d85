// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "singers/RotationFile.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "support/PartLines.h"

namespace singers {
namespace {

using support::PartValue;
using support::PartWriter;

constexpr std::string_view kRotationHead = "dj TOLVEN singers 1";
constexpr std::string_view kBookHead = "dj TOLVEN singer book 1";
constexpr std::int64_t kMostTickets = 1'000'000'000'000;
constexpr std::int64_t kMostId = 1'000'000'000;
constexpr int kMostCount = 1'000'000;
constexpr std::array<std::string_view, 3> kRules{"turns", "newcomers-first", "first-come"};

void WriteWish(const Wish& wish, PartWriter& lines) {
  lines.Text("file", wish.filename);
  lines.Text("artist", wish.artist);
  lines.Text("title", wish.title);
  lines.Time("length", wish.length);
  if (wish.semitones != 0) lines.Number("key", wish.semitones);
  if (wish.percent != 0) lines.Real("tempo", wish.percent);
  if (wish.volume >= 0) lines.Number("volume", wish.volume);
  lines.Text("partner", wish.partner);
  if (wish.ticket != 0) lines.Number("ticket", static_cast<std::int64_t>(wish.ticket));
}

void ReadWish(std::string_view key, const PartValue& value, Wish& wish) {
  if (key == "file") wish.filename = value.Text();
  if (key == "artist") wish.artist = value.Text();
  if (key == "title") wish.title = value.Text();
  if (key == "length") value.Time(wish.length);
  if (key == "key") value.Number(wish.semitones, -12, 12);
  if (key == "tempo") value.Real(wish.percent, -50, 100);
  if (key == "volume") value.Number(wish.volume, -1, 100);
  if (key == "partner") wish.partner = CleanName(value.Text());
  if (key == "ticket") value.Number(wish.ticket, 0, kMostTickets);
}

/// The parts of a rotation's file. A singer's wishes stand below the singer.
class RotationReader {
 public:
  void Begin(std::string_view part) {
    if (part == "singer") singers_.emplace_back();
    if (part == "wish" && !singers_.empty()) singers_.back().wishes.emplace_back();
    if (part == "stage") on_stage_.emplace();
  }
  void Take(std::string_view part, std::string_view key, const PartValue& value) {
    if (part == "evening") TakeEvening(key, value);
    if (part == "singer") TakeSinger(key, value, singers_.back());
    if (part == "wish" && !singers_.empty()) ReadWish(key, value, singers_.back().wishes.back());
    if (part != "stage") return;
    if (key == "singer") value.Number(on_stage_->singer, 0, kMostId);
    ReadWish(key, value, on_stage_->wish);
  }
  [[nodiscard]] Evening Done() {
    for (Singer& singer : singers_)
      std::erase_if(singer.wishes, [](const Wish& wish) { return wish.filename.empty(); });
    if (on_stage_ && on_stage_->wish.filename.empty()) on_stage_.reset();
    return {std::move(date_), Rotation::Of(rule_, round_, std::move(singers_), std::move(on_stage_)),
            std::move(pace_)};
  }

 private:
  void TakeEvening(std::string_view key, const PartValue& value) {
    if (key == "date") date_ = value.Text();
    if (key == "rule") value.Word(rule_, kRules);
    if (key == "round") value.Number(round_, 1, kMostCount);
    std::chrono::microseconds gap{-1};
    if (key == "changeover") {
      value.Time(gap);
      pace_.AddChangeOver(gap);
    }
    bool sung = true;
    if (key == "turn") {
      value.Word(sung, support::kNoYes);
      pace_.AddTurn(sung);
    }
  }
  static void TakeSinger(std::string_view key, const PartValue& value, Singer& singer) {
    if (key == "id") value.Number(singer.id, 0, kMostId);
    if (key == "name") singer.name = value.Text();
    if (key == "held") value.Word(singer.held, support::kNoYes);
    if (key == "sung") value.Number(singer.sung, 0, kMostCount);
    if (key == "turns") value.Number(singer.turns, 0, kMostCount);
    if (key == "round") value.Number(singer.round, 1, kMostCount);
  }

  std::string date_;
  Rule rule_ = Rule::Turns;
  int round_ = 1;
  Pace pace_;
  std::vector<Singer> singers_;
  std::optional<Turn> on_stage_;
};

/// The pages of a singer book, with the songs of each below it.
class BookReader {
 public:
  void Begin(std::string_view part) {
    if (part == "singer") {
      Finish();
      page_.emplace();
    }
    if (part == "song" && page_) page_->songs.emplace_back();
  }
  void Take(std::string_view part, std::string_view key, const PartValue& value) {
    if (!page_) return;
    if (part == "singer" && key == "name") page_->name = value.Text();
    if (part == "singer" && key == "last") page_->last = value.Text();
    if (part != "song") return;
    SungSong& song = page_->songs.back();
    ReadWish(key, value, song.wish);
    if (key == "times") value.Number(song.times, 0, kMostCount);
    if (key == "last") song.last = value.Text();
  }
  [[nodiscard]] SingerBook Done() {
    Finish();
    return std::move(book_);
  }

 private:
  void Finish() {
    if (!page_) return;
    std::erase_if(page_->songs, [](const SungSong& song) { return song.wish.filename.empty(); });
    book_.Add(std::move(*page_));
    page_.reset();
  }

  SingerBook book_;
  std::optional<SingerBook::Page> page_;
};

template <typename Reader>
auto ReadAll(std::string_view lines) {
  Reader reader;
  support::ReadParts(lines, {[&](std::string_view part) { reader.Begin(part); },
                             [&](std::string_view part, std::string_view key, const PartValue& value) {
                               reader.Take(part, key, value);
                             }});
  return reader.Done();
}

}  // namespace

std::string RotationText(const Evening& evening) {
  PartWriter lines;
  lines.Part("evening");
  lines.Text("date", evening.date);
  lines.Word("rule", evening.rotation.Rule(), kRules);
  lines.Number("round", evening.rotation.Round());
  for (const auto gap : evening.pace.ChangeOvers()) lines.Time("changeover", gap);
  for (const bool sung : evening.pace.Turns()) lines.Flag("turn", sung);
  if (const auto& turn = evening.rotation.OnStage()) {
    lines.Part("stage");
    lines.Number("singer", turn->singer);
    WriteWish(turn->wish, lines);
  }
  for (const Singer& singer : evening.rotation.Singers()) {
    lines.Part("singer");
    lines.Number("id", singer.id);
    lines.Text("name", singer.name);
    if (singer.held) lines.Flag("held", true);
    lines.Number("sung", singer.sung);
    lines.Number("turns", singer.turns);
    lines.Number("round", singer.round);
    for (const Wish& wish : singer.wishes) {
      lines.Part("wish");
      WriteWish(wish, lines);
    }
  }
  return support::SealedText(kRotationHead, lines.Take());
}

std::string SingerBookText(const SingerBook& book) {
  PartWriter lines;
  // What the reader would not take is left out: those who were not here for longest.
  std::vector<const SingerBook::Page*> pages;
  for (const auto& [key, page] : book.All()) pages.push_back(page.get());
  std::stable_sort(pages.begin(), pages.end(),
                   [](const auto* a, const auto* b) { return a->last > b->last; });
  for (const SingerBook::Page* page : pages) {
    if (lines.Size() > kMostBookBytes - kMostBookBytes / 8) break;
    lines.Part("singer");
    lines.Text("name", page->name);
    lines.Text("last", page->last);
    for (const SungSong& song : page->songs) {
      lines.Part("song");
      WriteWish(song.wish, lines);
      lines.Number("times", song.times);
      lines.Text("last", song.last);
    }
  }
  return support::SealedText(kBookHead, lines.Take());
}

Evening ParseRotationLines(std::string_view lines) {
  return ReadAll<RotationReader>(lines);
}

SingerBook ParseSingerBookLines(std::string_view lines) {
  return ReadAll<BookReader>(lines);
}

std::optional<Evening> ParseRotation(std::string_view text) {
  const auto lines = support::LinesOfSealed(kRotationHead, text);
  if (!lines || text.size() > kMostRotationBytes) return std::nullopt;
  return ParseRotationLines(*lines);
}

std::optional<SingerBook> ParseSingerBook(std::string_view text) {
  const auto lines = support::LinesOfSealed(kBookHead, text);
  if (!lines || text.size() > kMostBookBytes) return std::nullopt;
  return ParseSingerBookLines(*lines);
}

}  // namespace singers
