// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/singers/SingerStation.h"

#include <algorithm>

#include "support/NumberedFiles.h"
#include "support/PartLines.h"

namespace app {
namespace {

using singers::SingerId;
using singers::Wish;
using support::Sentence;
using SongState = SongView::State;

/// Waits are told anew so often.
constexpr std::chrono::seconds kEvery{1};
/// What the last run left on stage is taken back when nothing goes on with it for so long.
constexpr std::chrono::seconds kGoesOn{10};
/// Lists of other evenings that are kept.
constexpr int kEvenings = 3;

bool IsAsWritten(const Wish& wish) {
  return wish.semitones == 0 && wish.percent == 0 && wish.volume < 0;
}

SongRow RowOf(const Wish& wish) {
  return {wish.filename, wish.artist, wish.title};
}

template <typename Parse>
auto ReadKept(const StationContext& context, TextKeeper& keeper, std::string_view file, std::size_t most,
              Parse parse) {
  const auto text = support::ReadWholeFile(context.folder.Native(file), most);
  auto read = text ? parse(*text) : decltype(parse(*text))();
  if (text && !read) {
    keeper.SetAsideFirst("damaged");
    context.tell({Sentence::SingersDamaged, {std::string(file.substr(1))}});
  }
  return read;
}

TextKeeper MakeKeeper(const StationContext& context, std::string_view file) {
  return {context.files, context.workers, context.gate, context.folder.Native(file),
          [&context](const support::Error& why) {
            context.tell({Sentence::SingersNotSaved, {}, {SayingOf(why)}});
          }};
}

}  // namespace

SingerStation::SingerStation(const StationContext& context, SongStation& songs, LocalTime local_time)
    : context_(context),
      songs_(songs),
      local_time_(local_time ? std::move(local_time) : LocalTimeNow),
      rotation_file_(MakeKeeper(context, singers::kRotationFile)),
      book_file_(MakeKeeper(context, singers::kSingerBookFile)) {
  auto sheet = std::make_shared<SingersSheet>();
  sheet->turns = turns_;
  shown_.sheet = std::move(sheet);
  shown_.names = std::make_shared<const std::vector<std::string>>();
  for (int i = 0; i < 3; ++i) {  // each buffer
    views_.Draft() = shown_;
    views_.Publish();
  }
}

void SingerStation::StartUp() {
  const std::string date = EveningOf(local_time_());
  singers::Evening evening;
  if (auto kept = ReadKept(context_, rotation_file_, singers::kRotationFile, singers::kMostRotationBytes,
                           singers::ParseRotation)) {
    if (kept->date == date) {
      evening = std::move(*kept);
    } else {
      evening.rotation.SetRule(kept->rotation.Rule());
      static_cast<void>(
          support::KeepCopy(context_.folder.Native(singers::kRotationFile), "before", kEvenings));
    }
  }
  evening.date = date;
  singers::SingerBook book;
  if (auto kept = ReadKept(context_, book_file_, singers::kSingerBookFile, singers::kMostBookBytes,
                           singers::ParseSingerBook))
    book = std::move(*kept);
  Do(&SingerStation::Restore, evening, book);
}

void SingerStation::Restore(const singers::Evening& evening, const singers::SingerBook& book) {
  evening_ = evening;
  book_ = book;
  asked_ = context_.clock.Now();
  ShowNames();
  turns_ = std::make_shared<const singers::Rotation>(evening_.rotation);
  changed_ = true;
}

void SingerStation::ShowNames() {
  std::vector<std::string> names;
  names.reserve(book_.All().size());
  for (const auto& [key, page] : book_.All()) names.push_back(page->name);
  shown_.names = std::make_shared<const std::vector<std::string>>(std::move(names));
}

void SingerStation::ShutDown() {
  Save();
  rotation_file_.Flush();
  book_file_.Flush();
}

/// One copy a tick at most, which the sheets share.
void SingerStation::Save() {
  if (!std::exchange(unsaved_, false)) return;
  evening_.date = EveningOf(local_time_());
  const auto evening = std::make_shared<const singers::Evening>(evening_);
  turns_ = {evening, &evening->rotation};
  rotation_file_.Save([evening] { return singers::RotationText(*evening); });
}

void SingerStation::SetRule(singers::Rule rule) {
  evening_.rotation.SetRule(rule);
  Changed();
}

void SingerStation::Add(const std::string& name) {
  newest_ = evening_.rotation.Add(name);
  Changed();
}

void SingerStation::FollowFile(const std::string& from, const std::string& to) {
  if (evening_.rotation.FollowFile(from, to)) Changed();
  if (book_.FollowFile(from, to)) book_file_.Save([book = book_] { return singers::SingerBookText(book); });
}

void SingerStation::Rename(SingerId id, const std::string& name) {
  const singers::Singer* singer = evening_.rotation.Find(id);
  if (singer == nullptr) return;
  const std::string before = singer->name;
  if (!evening_.rotation.Rename(id, name)) return;
  book_.Rename(before, evening_.rotation.Find(id)->name);
  ShowNames();
  book_file_.Save([book = book_] { return singers::SingerBookText(book); });
  Changed();
}

void SingerStation::Remove(SingerId id) {
  if (evening_.rotation.Remove(id)) Changed();
}

void SingerStation::BringBack() {
  if (evening_.rotation.BringBack()) Changed();
}

void SingerStation::Hold(SingerId id, bool held) {
  if (evening_.rotation.Hold(id, held)) Changed();
}

void SingerStation::Move(SingerId id, int place) {
  singers::Rotation& rotation = evening_.rotation;
  singers::Rotation then = rotation;
  const SingerId sings = rotation.OnStage() ? rotation.OnStage()->singer : 0;
  if (id == sings) return;  // the turn that comes after this song follows from the rule
  then.End();
  then.Move(id, static_cast<std::size_t>(std::max(place, 0)));
  const auto& order = then.Singers();
  const auto moved =
      std::find_if(order.begin(), order.end(), [&](const auto& singer) { return singer.id == id; });
  if (moved == order.end()) return;
  // Before whoever stands behind the place; the one on stage still stands at the head.
  auto behind = std::next(moved);
  if (behind != order.end() && behind->id == sings) ++behind;
  std::size_t before = 0, found = rotation.Singers().size();
  for (const singers::Singer& singer : rotation.Singers()) {
    if (singer.id == id) continue;
    if (behind != order.end() && singer.id == behind->id) found = before;
    ++before;
  }
  if (rotation.Move(id, found)) Changed();
}

void SingerStation::Skip(SingerId id) {
  if (evening_.rotation.Find(id) == nullptr) return;
  const auto& turn = evening_.rotation.OnStage();
  if (turn && turn->singer == id) LeaveStage();
  evening_.pace.AddTurn(false);
  evening_.rotation.Skip(id);
  Changed();
}

/// Whoever is on stage has not sung.
void SingerStation::LeaveStage() {
  songs_.StopNow();
  evening_.rotation.TakeBack();
  begun_ = false;
}

/// For the next song: what nobody heard is not sung.
void SingerStation::ClearStage() {
  if (!evening_.rotation.OnStage()) return;
  if (begun_) return NoteSung();
  evening_.rotation.TakeBack();
}

std::optional<std::size_t> SingerStation::PlaceOf(SingerId id, const Wish& wish) const {
  const singers::Singer* singer = evening_.rotation.Find(id);
  if (singer == nullptr) return std::nullopt;
  const auto found = std::find_if(singer->wishes.begin(), singer->wishes.end(), [&](const Wish& other) {
    return other.ticket == wish.ticket && other.filename == wish.filename;
  });
  if (found == singer->wishes.end()) return std::nullopt;
  return static_cast<std::size_t>(found - singer->wishes.begin());
}

void SingerStation::Ask(SingerId id, const Wish& wish) {
  const singers::Singer* singer = evening_.rotation.Find(id);
  if (singer == nullptr || wish.filename.empty()) return;
  Wish asked = wish;
  const singers::SungSong* before = book_.Sung(singer->name, wish.filename);
  if (before != nullptr && IsAsWritten(asked)) {
    asked.semitones = before->wish.semitones;
    asked.percent = before->wish.percent;
    asked.volume = before->wish.volume;
  }
  if (evening_.rotation.Ask(id, std::move(asked))) Changed();
}

void SingerStation::Withdraw(SingerId id, const Wish& wish) {
  const auto place = PlaceOf(id, wish);
  if (place && evening_.rotation.Withdraw(id, *place)) Changed();
}

void SingerStation::SingFirst(SingerId id, const Wish& wish) {
  const auto place = PlaceOf(id, wish);
  if (place && evening_.rotation.MoveWish(id, *place, 0)) Changed();
}

void SingerStation::Change(SingerId id, const Wish& wish, const Wish& how) {
  const auto place = PlaceOf(id, wish);
  if (place && evening_.rotation.Change(id, *place, how)) Changed();
}

void SingerStation::Next() {
  const bool same_hand = started_ && context_.clock.Now() - asked_ < kOneHand;
  if (evening_.rotation.OnStage() && same_hand) return;
  ClearStage();
  if (evening_.rotation.Begin()) Start();
  Changed();
}

void SingerStation::PlayNow(const Wish& wish) {
  ClearStage();
  evening_.rotation.BeginOther(wish);
  Start();
  Changed();
}

void SingerStation::Start() {
  started_ = true;
  asked_ = context_.clock.Now();
  begun_ = false;
  reached_ = {};
  sung_volume_ = -1;
  foreseen_.clear();
  const Wish& wish = evening_.rotation.OnStage()->wish;
  songs_.PlayNow(RowOf(wish), {wish.semitones, wish.percent}, wish.volume);
}

void SingerStation::Tick() {
  Follow();
  MakeNextReady();
  Publish();
}

void SingerStation::Follow() {
  const auto& turn = evening_.rotation.OnStage();
  if (!turn) return;
  const SongInHand& song = songs_.InHand();
  const bool comes = song.coming == turn->wish.filename;
  const bool there = song.row.filename == turn->wish.filename && !comes;
  const bool plays = song.state == SongState::Playing;
  if (there && !begun_ && plays) NoteBegin();
  if (there && begun_) {
    FollowSong(song);
    if (song.state == SongState::Ended) Ended();
    return;
  }
  if (there || comes) return;
  if (begun_ && plays) return Ended();  // another song sounds
  // It could not be played, or nothing goes on with what the last run left.
  const bool over = started_ || context_.clock.Now() - asked_ > kGoesOn;
  if (begun_ || !song.coming.empty() || !over) return;
  evening_.rotation.TakeBack();
  Changed();
}

/// A song that is stopped stands at its start again, and its end is faded out by hand.
void SingerStation::FollowSong(const SongInHand& song) {
  reached_ = std::max(reached_, song.position);
  if (sung_volume_ < 0 && song.position * 2 > song.length) sung_volume_ = song.volume;
  if (song.state == SongState::Playing) {
    silent_.reset();
  } else if (!silent_) {
    silent_ = context_.clock.Now();
  }
}

void SingerStation::NoteBegin() {
  begun_ = true;
  sang_last_.clear();
  if (silent_) {
    const auto gap = context_.clock.Now() - *silent_;
    evening_.pace.AddChangeOver(std::chrono::duration_cast<std::chrono::microseconds>(gap));
  }
  silent_.reset();
  Changed();
}

void SingerStation::Ended() {
  NoteSung();
  if (!silent_) silent_ = context_.clock.Now();
  evening_.rotation.End();
  Changed();
}

/// The song on stage goes into the singer's page as it was sung in the end.
void SingerStation::NoteSung() {
  begun_ = false;
  const singers::Turn turn = *evening_.rotation.OnStage();
  const SongInHand& song = songs_.InHand();
  const bool there = song.row.filename == turn.wish.filename;
  evening_.pace.AddTurn(!there || song.state == SongState::Ended || reached_ * 2 > song.length);
  const singers::Singer* singer = evening_.rotation.Find(turn.singer);
  if (singer == nullptr) return;
  sang_last_ = singer->name;
  Wish sung = turn.wish;
  if (there) {
    sung.semitones = song.semitones;
    sung.percent = song.percent;
    sung.volume = sung_volume_ < 0 ? turn.wish.volume : sung_volume_;
  }
  const std::size_t known = book_.All().size();
  book_.Note(singer->name, sung, EveningOf(local_time_()));
  book_file_.Save([book = book_] { return singers::SingerBookText(book); });
  if (book_.All().size() == known) return;
  ShowNames();
}

/// Whoever comes next finds the song ready.
void SingerStation::MakeNextReady() {
  if (!changed_) return;
  const singers::Singer* next = evening_.rotation.Next();
  const std::string file = next == nullptr || next->wishes.empty() ? "" : next->wishes.front().filename;
  if (file == foreseen_) return;
  foreseen_ = file;
  songs_.Foresee(file.empty() ? SongRow{} : RowOf(next->wishes.front()));
}

std::chrono::microseconds SingerStation::Rest() const {
  const auto& turn = evening_.rotation.OnStage();
  if (!turn) return {};
  const SongInHand& song = songs_.InHand();
  if (!begun_ || song.length <= song.position)
    return begun_ ? std::chrono::microseconds(0) : singers::TimeOf(turn->wish);
  Wish rest = turn->wish;
  rest.length = song.length - song.position;
  rest.percent = song.percent;
  return singers::TimeOf(rest);
}

void SingerStation::Publish() {
  const support::TimePoint now = context_.clock.Now();
  Save();
  if (changed_ || now - published_ >= kEvery) {
    published_ = now;
    changed_ = false;
    auto sheet = std::make_shared<SingersSheet>();
    sheet->turns = turns_;
    sheet->waits = singers::WaitTimes(*turns_, Rest(), evening_.pace);
    sheet->on_stage_sings = begun_;
    sheet->newest = newest_;
    sheet->sang_last = sang_last_;
    shown_.sheet = std::move(sheet);
  }
  views_.Draft() = shown_;
  views_.Publish();
}

}  // namespace app
