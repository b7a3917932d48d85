// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/SeenTags.h"

#include <array>
#include <utility>

namespace app {
namespace {

namespace column = catalogue::track;

constexpr std::array<int, 4> kColumns{column::kGain, column::kStartMixPoint, column::kEndMixPoint,
                                      column::kBpm};
constexpr std::size_t kMostRemembered = 100'000;

}  // namespace

SeenTags::SeenTags(catalogue::track_table& table, catalogue::TagReader& tags, catalogue::TagScratch& scratch,
                   support::Executor& workers, std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box,
                   std::function<void()> filled)
    : table_(table),
      tags_(tags),
      scratch_(scratch),
      workers_(workers),
      gate_(std::move(gate)),
      box_(std::move(box)),
      filled_(std::move(filled)) {}

bool SeenTags::SaysAll(int row) const {
  for (const int which : kColumns) {
    if (table_.Cell(row, which).empty()) return false;
  }
  return true;
}

void SeenTags::Look(const std::vector<int>& rows) {
  if (rows == seen_) return;
  seen_ = rows;
  wishes_.clear();
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    std::string file(table_.Cell(*row, column::kFilename));
    if (file.empty() || read_.contains(file) || SaysAll(*row)) continue;
    wishes_.push_back({std::move(file), *row});
  }
  if (!reading_) ReadNext();
}

void SeenTags::ReadNext() {
  reading_ = !wishes_.empty();
  if (!reading_) {
    if (std::exchange(fuller_, false)) filled_();
    return;
  }
  Wish wish = std::move(wishes_.back());
  wishes_.pop_back();
  if (read_.size() >= kMostRemembered) read_.clear();
  read_.insert(wish.file);
  workers_.Post([this, gate = gate_, box = box_, wish = std::move(wish)] {
    gate->Pass([&] {
      const auto tags = tags_.Read(wish.file);
      auto mixing = tags ? catalogue::MixingTagsOf(tags.Value(), scratch_) : catalogue::MixingTags();
      box->Post([this, wish, mixing = std::move(mixing)] { Take(wish, mixing); });
    });
  });
}

void SeenTags::Take(const Wish& wish, const catalogue::MixingTags& tags) {
  const std::array<const std::optional<std::string>*, 4> values{&tags.gain, &tags.start_mix_point,
                                                                &tags.end_mix_point, &tags.bpm};
  // Rows that moved meanwhile are read when they are seen at their new place.
  const bool moved = table_.Cell(wish.row, column::kFilename) != wish.file;
  if (moved) read_.erase(wish.file);
  for (std::size_t i = 0; i < kColumns.size() && !moved; ++i) {
    if (!values[i]->has_value() || !table_.Cell(wish.row, kColumns[i]).empty()) continue;
    table_.SetCell(wish.row, kColumns[i], **values[i]);
    fuller_ = true;
    ++cells_;
  }
  ReadNext();
}

}  // namespace app
