// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <malloc.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>

#include "benchmarks/Bench.h"
#include "benchmarks/SqliteTable.h"
#include "catalogue/IndexFile.h"
#include "catalogue/track_table.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/files/testing/TestFolder.h"
#include "support/Text.h"

namespace bench {
namespace {

using catalogue::track_table;
using platform::files::testing::RunInChild;
using platform::files::testing::TestFolder;

/// A collection such as a DJ has one: every cell filled, about 200 bytes a row.
track_table Collection(int rows) {
  track_table table(catalogue::TrackColumns());
  for (int row = 0; row < rows; ++row) {
    const std::string number = std::to_string(row);
    const std::string artist = "The Travelling Band No. " + std::to_string(row % 4000);
    const std::string title = "Another Song Of Theirs " + number;
    const std::string album = "Collected Works Vol. " + std::to_string(row % 9000);
    const std::string time = support::FormatMinutes(120 + row % 300);
    const std::string file = "/home/dj/Music/" + artist + "/" + album + "/" + number + " " + title + ".mp3";
    const std::string bpm = support::FormatReal(80 + row % 9000 * 0.01, 2);
    const std::string year = std::to_string(1960 + row % 60);
    const std::string end = support::FormatReal(100 + row % 250 + 0.125, 3);
    table.AddRow(std::vector<std::string_view>{artist, title, time, file, bpm, "Disco", album, year, "320",
                                               "44100", "-3.25", "0.875", end});
  }
  return table;
}

double SecondsOf(const std::function<void()>& job) {
  const auto begin = std::chrono::steady_clock::now();
  job();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

struct Cost {
  double seconds = 0;
  double megabytes = 0;
};

/// What it costs a fresh process to load a collection; letting go of it again does not count.
template <typename Load>
Cost CostOf(const TestFolder& folder, const Load& load) {
  RunInChild([&] {
    const double before = ResidentMegabytes();
    const auto begin = std::chrono::steady_clock::now();
    const auto kept = load();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    malloc_trim(0);
    folder.Write("cost", std::to_string(took.count()) + " " + std::to_string(ResidentMegabytes() - before));
  });
  std::istringstream read(folder.Read("cost"));
  Cost cost;
  read >> cost.seconds >> cost.megabytes;
  return cost;
}

track_table LoadOurs(const std::filesystem::path& path, int rows) {
  track_table table(catalogue::TrackColumns());
  const auto report = catalogue::LoadIndex(path, table);
  if (!report || report.Value().rows != rows) std::abort();
  return table;
}

std::vector<Figure> MeasureRows(int rows, const std::string& name, int runs, const std::string& memory_aim) {
  const TestFolder folder;
  const auto ours = folder / "tlv.ndx", reference = folder / "tlv.sqlite";
  platform::files::DiskFileSaver saver;
  std::vector<double> save, save_reference, load, load_reference, memory, memory_reference;
  {
    const track_table table = Collection(rows);
    for (int run = 0; run < runs; ++run) {
      save.push_back(SecondsOf([&] { static_cast<void>(catalogue::SaveIndex(saver, ours, table)); }));
      save_reference.push_back(SecondsOf([&] { SaveWithSqlite(reference, table); }));
    }
  }
  malloc_trim(0);
  for (int run = 0; run < runs; ++run) {
    const Cost cost = CostOf(folder, [&] { return LoadOurs(ours, rows); });
    load.push_back(cost.seconds);
    memory.push_back(cost.megabytes);
    const Cost cost_reference = CostOf(folder, [&] { return LoadWithSqlite(reference); });
    load_reference.push_back(cost_reference.seconds);
    memory_reference.push_back(cost_reference.megabytes);
  }
  return {{"load an index of " + name + " rows (SQLite into structs)", "s", Median(load),
           Median(load_reference), "at most 0.125 of it"},
          {"save it, flushed (SQLite, one transaction)", "s", Median(save), Median(save_reference),
           "at most 0.25 of it"},
          {"memory that it takes (structs of strings)", "MB", Median(memory), Median(memory_reference),
           memory_aim}};
}

}  // namespace

std::vector<Figure> MeasureIndex() {
  std::vector<Figure> figures = MeasureRows(100'000, "100,000", 7, "");
  for (Figure& figure : MeasureRows(1'000'000, "1,000,000", 5, "under 300"))
    figures.push_back(std::move(figure));
  return figures;
}

}  // namespace bench
