// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/MissingFiles.h"

#include <atomic>
#include <filesystem>
#include <utility>

namespace app {
namespace {

constexpr int kFilesALook = 200;
constexpr auto kNotSoonAgain = std::chrono::minutes(1);

bool FileIsThere(const std::string& file) {
  std::error_code ignored;
  return std::filesystem::exists(file, ignored);
}

}  // namespace

/// Written by one job after the other, and read when the last one has reported, but for `stop`.
struct MissingFiles::Round {
  struct Part {
    catalogue::track_table table;
    int column;
  };

  void LookAtSome() {
    Part& part = parts[next];
    for (const int end = row + kFilesALook; row < end && row <= part.table.Rows(); ++row) {
      const std::string file(part.table.Cell(row, part.column));
      if (file.empty() || FileIsThere(file)) continue;
      if (first.empty() && next == 0) first = file;
      missing.Collect(file);
    }
    if (row <= part.table.Rows()) return;
    missing.Settle();
    if (next == 0) of_the_first = missing.Size();
    part.table.Clear();
    row = 1;
    ++next;
  }

  std::atomic<bool> stop{false};
  std::vector<Part> parts;
  std::size_t next = 0;
  int row = 1;
  std::string first;
  std::size_t of_the_first = 0;
  FileSet missing;
  support::Executor* workers = nullptr;
  std::shared_ptr<WorkGate> gate;
  std::function<void()> report;
};

MissingFiles::MissingFiles(const Outside& outside, std::shared_ptr<WorkGate> gate,
                           std::shared_ptr<Mailbox> box, std::vector<Table> tables, Tell tell)
    : outside_(outside),
      gate_(std::move(gate)),
      box_(std::move(box)),
      tables_(std::move(tables)),
      tell_(std::move(tell)) {}

void MissingFiles::Look() {
  if (newest_ != nullptr) newest_->stop = true;
  looked_ = outside_.clock.Now();
  newest_ = std::make_shared<Round>();
  for (const Table& table : tables_) newest_->parts.push_back({table.table, table.filename_column});
  newest_->workers = &outside_.background;
  newest_->gate = gate_;
  newest_->report = [this, box = box_, round = std::weak_ptr<Round>(newest_)] {
    box->Post([this, round = round.lock()] {
      if (round == newest_) Take(*round);
    });
  };
  LookOn(newest_);
}

void MissingFiles::LookOn(const std::shared_ptr<Round>& round) {
  round->workers->Post([round] {
    round->gate->Pass([&] {
      if (round->stop) return;
      if (round->next == round->parts.size()) return round->report();
      round->LookAtSome();
      LookOn(round);
    });
  });
}

void MissingFiles::Take(Round& round) {
  newest_.reset();
  looked_ = outside_.clock.Now();
  const bool news = !missing_.HasAllOf(round.missing);
  missing_ = std::move(round.missing);
  ++answers_;
  const std::size_t before = std::exchange(told_, round.of_the_first);
  if (news && round.of_the_first > 0) {
    tell_(News::Worse, round.of_the_first, round.first);
  } else if (round.of_the_first != before) {
    tell_(News::Better, round.of_the_first, round.first);
  }
}

void MissingFiles::LookAgain() {
  if (newest_ != nullptr) return;
  if (looked_ && outside_.clock.Now() - *looked_ < kNotSoonAgain) return;
  Look();
}

void MissingFiles::LookAt(const catalogue::track_table& table, int column, int first_row) {
  if (newest_ != nullptr) return Look();  // which began before these rows were there
  outside_.background.Post([this, gate = gate_, box = box_, table, column, row = first_row]() mutable {
    gate->Pass([&] {
      std::vector<Seen> seen;
      for (; row <= table.Rows(); ++row) {
        std::string file(table.Cell(row, column));
        if (file.empty()) continue;
        const bool there = FileIsThere(file);
        seen.push_back({std::move(file), there});
      }
      box->Post([this, seen = std::move(seen)] { Note(seen); });
    });
  });
}

void MissingFiles::Note(const std::vector<Seen>& files) {
  bool changed = false;
  for (const Seen& one : files) {
    const bool news = one.there ? missing_.Erase(one.file) : missing_.Insert(one.file);
    changed = changed || news;
  }
  if (changed) ++answers_;
}

void MissingFiles::LookAt(const std::string& file) {
  if (file.empty()) return;
  outside_.workers.Post([this, gate = gate_, box = box_, file] {
    gate->Pass([&] { box->Post([this, file, there = FileIsThere(file)] { Note({{file, there}}); }); });
  });
}

bool MissingFiles::Has(std::string_view file) const {
  return missing_.Has(file);
}

}  // namespace app
