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
  return static_cast<std::size_t>(std::find(subjects_.begin(), subjects_.end(), subject) - subjects_.begin());
}

void NoticeBoard::Drop(std::size_t place) {
  if (place >= notices_.size()) return;
  notices_.erase(notices_.begin() + static_cast<std::ptrdiff_t>(place));
  subjects_.erase(subjects_.begin() + static_cast<std::ptrdiff_t>(place));
}

void NoticeBoard::Add(Notice::Kind kind, const Subject& subject, std::string text) {
  Drop(Find(subject));
  for (std::size_t i = notices_.size(); i-- > 0;) {
    const bool passed = kind == Notice::Kind::Passing && notices_[i].kind == kind;
    if (passed || notices_[i].text == text) Drop(i);
  }
  if (notices_.size() >= kMostNotices) Drop(0);
  notices_.push_back({++told_, kind, std::move(text)});
  subjects_.push_back(subject);
}

void NoticeBoard::Tell(const Subject& subject, std::string text) {
  Add(Notice::Kind::Passing, subject, std::move(text));
}

void NoticeBoard::Warn(const Subject& subject, std::string text) {
  Add(Notice::Kind::Warning, subject, std::move(text));
}

void NoticeBoard::WarnFurther(const Subject& subject, const std::string& text) {
  const std::size_t place = Find(subject);
  const bool goes_on = place < notices_.size() && notices_[place].kind == Notice::Kind::Warning;
  Warn(subject, goes_on ? notices_[place].text + " " + text : text);
}

void NoticeBoard::Correct(const Subject& subject, std::string text) {
  if (const std::size_t place = Find(subject); place < notices_.size())
    notices_[place].text = std::move(text);
}

void NoticeBoard::Settle(const Subject& subject) {
  Drop(Find(subject));
}

}  // namespace app
