// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/NoticeBoard.h"

#include <algorithm>
#include <utility>

namespace app {
namespace {

constexpr std::size_t kMostNotices = 8;  ///< nobody reads more

}  // namespace

std::size_t NoticeBoard::Find(const Subject& subject) const {
  if (subject.kind == Subject::Kind::Other) return notices_.size();
  const auto found =
      std::find_if(behind_.begin(), behind_.end(), [&](const Told& told) { return told.subject == subject; });
  return static_cast<std::size_t>(found - behind_.begin());
}

void NoticeBoard::Drop(std::size_t place) {
  if (place >= notices_.size()) return;
  notices_.erase(notices_.begin() + static_cast<std::ptrdiff_t>(place));
  behind_.erase(behind_.begin() + static_cast<std::ptrdiff_t>(place));
}

std::string NoticeBoard::TextOf(const Told& told) const {
  std::string text;
  for (const support::Saying& saying : told.sayings) text += (text.empty() ? "" : " ") + say_(saying);
  return text;
}

void NoticeBoard::Add(Notice::Kind kind, Told told) {
  Drop(Find(told.subject));
  for (std::size_t i = notices_.size(); i-- > 0;) {
    const bool passed = kind == Notice::Kind::Passing && notices_[i].kind == kind;
    if (passed || behind_[i].sayings == told.sayings) Drop(i);
  }
  if (notices_.size() >= kMostNotices) Drop(0);
  notices_.push_back({++told_, kind, TextOf(told)});
  behind_.push_back(std::move(told));
}

void NoticeBoard::Tell(const Subject& subject, support::Saying told) {
  Add(Notice::Kind::Passing, {subject, {std::move(told)}});
}

void NoticeBoard::Warn(const Subject& subject, support::Saying told) {
  Add(Notice::Kind::Warning, {subject, {std::move(told)}});
}

void NoticeBoard::WarnFurther(const Subject& subject, support::Saying told) {
  const std::size_t place = Find(subject);
  const bool goes_on = place < notices_.size() && notices_[place].kind == Notice::Kind::Warning;
  Told all{subject, goes_on ? behind_[place].sayings : std::vector<support::Saying>()};
  all.sayings.push_back(std::move(told));
  Add(Notice::Kind::Warning, std::move(all));
}

void NoticeBoard::Correct(const Subject& subject, support::Saying told) {
  const std::size_t place = Find(subject);
  if (place >= notices_.size()) return;
  behind_[place].sayings = {std::move(told)};
  notices_[place].text = TextOf(behind_[place]);
}

void NoticeBoard::Settle(const Subject& subject) {
  Drop(Find(subject));
}

const std::vector<Notice>& NoticeBoard::Standing() {
  if (language_ != say_.Base()) {
    language_ = say_.Base();
    for (std::size_t i = 0; i < notices_.size(); ++i) notices_[i].text = TextOf(behind_[i]);
  }
  return notices_;
}

}  // namespace app
