// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/resume/Suspects.h"

namespace app {

void Suspects::Fell(const Journal& journal) {
  start_falls_ = journal.start.fresh ? journal.start.falls + 1 : 0;
  for (const auto& [file, suspect] : journal.suspects) {
    const int falls = suspect.falls + (suspect.fresh ? 1 : 0);
    if (falls > 0) falls_[file] = falls;
  }
}

bool Suspects::IsLeftOut(const std::string& file) const {
  const auto found = falls_.find(file);
  return found != falls_.end() && found->second >= kFallsOfAFile;
}

std::vector<std::string> Suspects::LeftOut() const {
  std::vector<std::string> files;
  for (const auto& [file, falls] : falls_) {
    if (falls >= kFallsOfAFile) files.push_back(file);
  }
  return files;
}

bool Suspects::Look(const std::set<std::string>& in_hand) {
  const support::TimePoint now = clock_.Now();
  std::erase_if(since_, [&](const auto& one) { return !in_hand.contains(one.first); });
  bool came = false;
  for (const std::string& file : in_hand) {
    const auto [one, first] = since_.emplace(file, now);
    came = came || first;
    if (now - one->second >= kMoment) falls_.erase(file);
  }
  if (now - begun_ < kMoment) return came;
  // This start has gone well: what fell before it does not fall in a row.
  start_falls_ = 0;
  std::erase_if(
      falls_, [this](const auto& one) { return one.second < kFallsOfAFile && !since_.contains(one.first); });
  return came;
}

void Suspects::Note(Journal& journal) const {
  const support::TimePoint now = clock_.Now();
  journal.start = {start_falls_, now - begun_ < kMoment};
  journal.suspects.clear();
  for (const auto& [file, falls] : falls_) journal.suspects[file].falls = falls;
  for (const auto& [file, since] : since_) {
    if (now - since < kMoment) journal.suspects[file].fresh = true;
  }
}

}  // namespace app
