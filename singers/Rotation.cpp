// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "singers/Rotation.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "support/CleanLine.h"
#include "support/Text.h"

namespace singers {
namespace {

constexpr std::chrono::microseconds kUsualLength = std::chrono::minutes(4);
constexpr std::size_t kMostRemoved = 20;

/// When the first wish came; last of all without one.
std::uint64_t TicketOf(const Singer& singer) {
  return singer.wishes.empty() ? std::numeric_limits<std::uint64_t>::max() : singer.wishes.front().ticket;
}

bool IsNew(const Singer& singer) {
  return singer.turns == 0;
}

/// Whether one who is placed anew comes before another who stands there.
bool ComesBefore(Rule rule, const Singer& one, const Singer& other) {
  if (rule == Rule::FirstCome) return TicketOf(one) < TicketOf(other);
  if (rule == Rule::NewcomersFirst && IsNew(one) != IsNew(other)) return IsNew(one);
  return one.round < other.round;
}

}  // namespace

std::chrono::microseconds TimeOf(const Wish& wish) {
  const auto length = wish.length.count() > 0 ? wish.length : kUsualLength;
  const double speed = 1 + std::clamp(wish.percent, -50.0, 100.0) / 100;
  return std::chrono::microseconds(static_cast<std::int64_t>(static_cast<double>(length.count()) / speed));
}

std::string CleanName(std::string_view name) {
  return support::CleanLine(name, Rotation::kMostName);
}

const Singer* Rotation::Find(SingerId id) const {
  const auto place =
      std::find_if(singers_.begin(), singers_.end(), [&](const Singer& singer) { return singer.id == id; });
  return place == singers_.end() ? nullptr : &*place;
}

const Singer* Rotation::FindName(std::string_view name) const {
  const auto place = std::find_if(singers_.begin(), singers_.end(), [&](const Singer& singer) {
    return support::EqualsIgnoringCase(singer.name, name);
  });
  return place == singers_.end() ? nullptr : &*place;
}

Rotation::Place Rotation::PlaceOf(SingerId id) {
  return std::find_if(singers_.begin(), singers_.end(),
                      [&](const Singer& singer) { return singer.id == id; });
}

const Singer* Rotation::Ready() const {
  const auto ready = std::find_if(singers_.begin(), singers_.end(), [](const Singer& singer) {
    return !singer.held && !singer.wishes.empty();
  });
  return ready == singers_.end() ? nullptr : &*ready;
}

const Singer* Rotation::Next() const {
  if (!on_stage_) return Ready();
  Rotation afterwards = *this;
  afterwards.End();
  const Singer* next = afterwards.Ready();
  return next == nullptr ? nullptr : Find(next->id);
}

Rotation::Place Rotation::PlaceFor(const Singer& singer) {
  // A newcomer comes before the first who has sung, wherever a hand has put others.
  if (rule_ == Rule::NewcomersFirst && IsNew(singer)) {
    return std::find_if(singers_.begin(), singers_.end(), [](const Singer& other) { return !IsNew(other); });
  }
  // From the end: behind the last whom the singer does not come before.
  auto place = singers_.end();
  while (place != singers_.begin() && ComesBefore(rule_, singer, *std::prev(place))) --place;
  return place;
}

void Rotation::Insert(Singer singer) {
  const auto place = PlaceFor(singer);
  singers_.insert(place, std::move(singer));
}

void Rotation::PlaceAgain(SingerId id) {
  const auto place = PlaceOf(id);
  if (place == singers_.end()) return;
  Singer singer = std::move(*place);
  singers_.erase(place);
  Insert(std::move(singer));
}

void Rotation::Sort() {
  std::stable_sort(singers_.begin(), singers_.end(),
                   [this](const Singer& a, const Singer& b) { return ComesBefore(rule_, a, b); });
}

void Rotation::SetRule(enum Rule rule) {
  if (rule == rule_) return;
  rule_ = rule;
  Sort();
}

std::string Rotation::FreeName(std::string name, SingerId of) const {
  const auto taken = [&](const std::string& wanted) {
    const Singer* other = FindName(wanted);
    return other != nullptr && other->id != of;
  };
  if (!taken(name)) return name;
  for (std::size_t number = 2;; ++number) {
    const std::string end = " " + std::to_string(number);
    std::string numbered = name;
    numbered = support::CleanLine(numbered, kMostName - end.size());
    numbered += end;
    if (!taken(numbered)) return numbered;
  }
}

bool Rotation::FollowFile(std::string_view from, std::string_view to) {
  bool any = false;
  const auto follow = [&](Wish& wish) {
    if (wish.filename != from) return;
    wish.filename = to;
    any = true;
  };
  for (std::vector<Singer>* all : {&singers_, &removed_}) {
    for (Singer& singer : *all) std::for_each(singer.wishes.begin(), singer.wishes.end(), follow);
  }
  if (on_stage_) follow(on_stage_->wish);
  return any;
}

SingerId Rotation::Add(std::string_view name) {
  const std::string clean = CleanName(name);
  if (clean.empty() || singers_.size() >= kMostSingers) return 0;
  Singer singer;
  singer.id = ++newest_;
  singer.name = FreeName(clean, 0);
  singer.round = round_;
  Insert(std::move(singer));
  return newest_;
}

bool Rotation::Rename(SingerId id, std::string_view name) {
  const auto singer = PlaceOf(id);
  const std::string clean = CleanName(name);
  if (singer == singers_.end() || clean.empty()) return false;
  const Singer* other = FindName(clean);
  if (other != nullptr && other->id != id) return false;
  singer->name = clean;
  return true;
}

bool Rotation::Remove(SingerId id) {
  const auto singer = PlaceOf(id);
  if (singer == singers_.end()) return false;
  removed_.push_back(std::move(*singer));
  if (removed_.size() > kMostRemoved) removed_.erase(removed_.begin());
  singers_.erase(singer);
  return true;
}

bool Rotation::BringBack() {
  if (removed_.empty() || singers_.size() >= kMostSingers) return false;
  Singer singer = std::move(removed_.back());
  removed_.pop_back();
  singer.name = FreeName(std::move(singer.name), singer.id);
  Insert(std::move(singer));
  return true;
}

bool Rotation::Hold(SingerId id, bool held) {
  const auto singer = PlaceOf(id);
  if (singer == singers_.end()) return false;
  singer->held = held;
  return true;
}

bool Rotation::Move(SingerId id, std::size_t place) {
  const auto found = PlaceOf(id);
  if (found == singers_.end()) return false;
  Singer singer = std::move(*found);
  singers_.erase(found);
  const auto before = singers_.begin() + static_cast<std::ptrdiff_t>(std::min(place, singers_.size()));
  // The turn goes with the place, so that those who are placed later find the rounds in order.
  if (before != singers_.end()) {
    singer.round = before->round;
  } else if (!singers_.empty()) {
    singer.round = std::max(singer.round, singers_.back().round);
  }
  singers_.insert(before, std::move(singer));
  return true;
}

void Rotation::Pass(SingerId id, int sung) {
  const auto singer = PlaceOf(id);
  if (singer == singers_.end()) return;
  round_ = std::max(round_, singer->round);
  singer->round = round_ + 1;
  singer->sung += sung;
  ++singer->turns;
  PlaceAgain(id);
}

bool Rotation::Skip(SingerId id) {
  const auto singer = PlaceOf(id);
  if (singer == singers_.end()) return false;
  if (rule_ == Rule::FirstCome && !singer->wishes.empty()) singer->wishes.front().ticket = ++tickets_;
  Pass(id, 0);
  return true;
}

bool Rotation::Ask(SingerId id, Wish wish) {
  const auto singer = PlaceOf(id);
  if (singer == singers_.end() || singer->wishes.size() >= kMostWishes) return false;
  wish.ticket = ++tickets_;
  wish.partner = CleanName(wish.partner);
  singer->wishes.push_back(std::move(wish));
  if (rule_ == Rule::FirstCome && singer->wishes.size() == 1) PlaceAgain(id);
  return true;
}

bool Rotation::Withdraw(SingerId id, std::size_t wish) {
  const auto singer = PlaceOf(id);
  if (singer == singers_.end() || wish >= singer->wishes.size()) return false;
  singer->wishes.erase(singer->wishes.begin() + static_cast<std::ptrdiff_t>(wish));
  if (rule_ == Rule::FirstCome && wish == 0) PlaceAgain(id);
  return true;
}

bool Rotation::MoveWish(SingerId id, std::size_t wish, std::size_t place) {
  const auto singer = PlaceOf(id);
  if (singer == singers_.end()) return false;
  std::vector<Wish>& wishes = singer->wishes;
  if (wish >= wishes.size() || place >= wishes.size()) return false;
  const auto from = wishes.begin() + static_cast<std::ptrdiff_t>(wish);
  const auto to = wishes.begin() + static_cast<std::ptrdiff_t>(place);
  // The tickets stay where they are: another order of one's own songs moves nobody else.
  std::vector<std::uint64_t> tickets;
  for (const Wish& each : wishes) tickets.push_back(each.ticket);
  if (from < to) {
    std::rotate(from, from + 1, to + 1);
  } else {
    std::rotate(to, from, from + 1);
  }
  for (std::size_t i = 0; i < wishes.size(); ++i) wishes[i].ticket = tickets[i];
  return true;
}

bool Rotation::Change(SingerId id, std::size_t wish, const Wish& how) {
  const auto singer = PlaceOf(id);
  if (singer == singers_.end() || wish >= singer->wishes.size()) return false;
  Wish& changed = singer->wishes[wish];
  changed.semitones = std::clamp(how.semitones, -12, 12);
  changed.percent = std::clamp(how.percent, -50.0, 100.0);
  changed.volume = std::clamp(how.volume, -1, 100);
  changed.partner = CleanName(how.partner);
  return true;
}

bool Rotation::Begin() {
  End();
  const Singer* next = Ready();
  if (next == nullptr) return false;
  const auto singer = PlaceOf(next->id);
  on_stage_ = Turn{singer->id, std::move(singer->wishes.front())};
  singer->wishes.erase(singer->wishes.begin());
  round_ = std::max(round_, singer->round);
  return true;
}

void Rotation::BeginOther(Wish wish) {
  End();
  on_stage_ = Turn{0, std::move(wish)};
}

void Rotation::End() {
  if (!on_stage_) return;
  const SingerId sang = on_stage_->singer;
  on_stage_.reset();
  Pass(sang, 1);
}

void Rotation::TakeBack() {
  if (!on_stage_) return;
  const auto singer = PlaceOf(on_stage_->singer);
  if (singer != singers_.end()) singer->wishes.insert(singer->wishes.begin(), std::move(on_stage_->wish));
  on_stage_.reset();
}

Rotation Rotation::Of(enum Rule rule, int round, std::vector<Singer> singers, std::optional<Turn> on_stage) {
  Rotation rotation;
  rotation.rule_ = rule;
  rotation.round_ = std::max(round, 1);
  for (Singer& singer : singers) {
    singer.name = CleanName(singer.name);
    if (singer.name.empty() || rotation.singers_.size() >= kMostSingers) continue;
    singer.name = rotation.FreeName(std::move(singer.name), 0);
    if (singer.id == 0 || rotation.Find(singer.id) != nullptr) singer.id = rotation.newest_ + 1;
    if (singer.wishes.size() > kMostWishes) singer.wishes.resize(kMostWishes);
    for (const Wish& wish : singer.wishes) rotation.tickets_ = std::max(rotation.tickets_, wish.ticket);
    rotation.newest_ = std::max(rotation.newest_, singer.id);
    rotation.singers_.push_back(std::move(singer));
  }
  rotation.on_stage_ = std::move(on_stage);
  if (rotation.on_stage_ && rotation.Find(rotation.on_stage_->singer) == nullptr)
    rotation.on_stage_->singer = 0;
  return rotation;
}

}  // namespace singers
