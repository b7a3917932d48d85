// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Starts the real program in processes of its own, on Qt's offscreen platform and without a sound server.
#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "benchmarks/Bench.h"
#include "benchmarks/RowsBench.h"
#include "catalogue/IndexFile.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/files/DiskFileSaver.h"
#include "program/Program.h"
#include "ui/forms/frmMain.h"

namespace bench {
namespace {

namespace fs = std::filesystem;
using platform::codec::testing::MediaMaker;

constexpr int kStarts = 7, kLongStarts = 3;
constexpr int kPlaySeconds = 10;
constexpr int kSettleSeconds = 15;

std::int64_t MonotonicNow() {
  return std::chrono::steady_clock::now().time_since_epoch().count();
}

/// Notices the first painting of a window.
class FirstPaint final : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    painted_ = painted_ || event->type() == QEvent::Paint;
    return QObject::eventFilter(watched, event);
  }
  [[nodiscard]] bool Painted() const { return painted_; }

 private:
  bool painted_ = false;
};

void WriteIndex(const fs::path& folder, int rows) {
  catalogue::track_table table(catalogue::TrackColumns());
  for (int row = 1; row <= rows; ++row) {
    const std::string n = std::to_string(row);
    const std::array<std::string, 13> cells{"Artist " + n, "Title of track " + n,
                                            "03:45",       "/music/" + n + ".mp3",
                                            "124.00",      "House",
                                            "Album",       "2024",
                                            "192",         "44100",
                                            "-1.20",       "0.250",
                                            "221.500"};
    table.AddRow(std::vector<std::string_view>(cells.begin(), cells.end()));
  }
  platform::files::DiskFileSaver saver;
  static_cast<void>(catalogue::SaveIndex(saver, folder / "tlv.ndx", table));
}

struct Starts {
  std::vector<double> seconds;
  std::vector<double> megabytes;
  void Add(const fs::path& folder) {
    const auto result = RunChild("--start '" + folder.string() + "' " + std::to_string(MonotonicNow()));
    if (result.size() != 2) return;
    seconds.push_back(result[0]);
    megabytes.push_back(result[1]);
  }
};

int ShowStart(const char* folder, const char* began) {
  program::Program program{fs::path(folder)};
  FirstPaint paint;
  program.Window().installEventFilter(&paint);
  program.Window().show();
  while (!paint.Painted()) QApplication::processEvents();
  const double seconds = static_cast<double>(MonotonicNow() - std::atoll(began)) * 1e-9;
  std::printf("%f %f\n", seconds, ResidentMegabytes());
  return 0;
}

/// Until what is derived from the rows is made, too: the first paint, and the memory then and at its most.
int ShowLongStart(const char* folder, const char* began) {
  program::Program program{fs::path(folder)};
  FirstPaint paint;
  auto* rows = program.Window().findChild<QAbstractItemView*>(QStringLiteral("Catalogue"));
  rows->viewport()->installEventFilter(&paint);
  program.Window().show();
  while (!paint.Painted()) QApplication::processEvents();
  const double seconds = static_cast<double>(MonotonicNow() - std::atoll(began)) * 1e-9;
  double most = ResidentMegabytes();
  QElapsedTimer wall;
  wall.start();
  while (wall.elapsed() < kSettleSeconds * 1000) {
    QTest::qWait(10);
    most = std::max(most, ResidentMegabytes());
  }
  std::printf("%f %f %f\n", seconds, ResidentMegabytes(), most);
  std::fflush(stdout);
  return 0;
}

/// CPU of the window's thread in percent of a core while two decks play.
int ShowRepaint(const char* folder) {
  program::Program program{fs::path(folder)};
  ui::frmMain& window = program.Window();
  window.resize(1920, 1080);
  window.show();
  QTest::qWait(500);
  auto* grid = window.findChild<QWidget*>(QStringLiteral("Catalogue"));
  for (const Qt::Key play : {Qt::Key_F1, Qt::Key_F5}) {
    QTest::keyClick(grid, play == Qt::Key_F1 ? Qt::Key_Home : Qt::Key_Down);
    QTest::keyClick(grid, Qt::Key_Return);
    QTest::qWait(1000);
    QTest::keyClick(&window, play);
  }
  QTest::qWait(1000);
  const double begin = ThreadCpuSeconds();
  QElapsedTimer wall;
  wall.start();
  QTest::qWait(kPlaySeconds * 1000);
  std::printf("%f\n", 100 * (ThreadCpuSeconds() - begin) / (static_cast<double>(wall.elapsed()) / 1000));
  return 0;
}

}  // namespace

int RunWindowChild(int argc, char* argv[]) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  setenv("PULSE_SERVER", "unix:/nonexistent", 1);
  QApplication application(argc, argv);
  const std::string_view part(argv[1]);
  if (part == "--acts") return ShowActs(argv[2]);
  if (part == "--start" && argc == 4) return ShowStart(argv[2], argv[3]);
  if (part == "--long-start" && argc == 4) return ShowLongStart(argv[2], argv[3]);
  return ShowRepaint(argv[2]);
}

std::vector<Figure> MeasureRows() {
  const MediaMaker media;
  const fs::path home = media.PathOf("home");
  setenv("XDG_CONFIG_HOME", home.c_str(), 1);
  fs::create_directories(home);
  WriteRows(home / "tlv.ndx", 1'000'000);
  std::vector<double> seconds, settled, most;
  for (int run = 0; run < kLongStarts; ++run) {
    const auto start = RunChild("--long-start '" + home.string() + "' " + std::to_string(MonotonicNow()));
    if (start.size() != 3) return {};
    seconds.push_back(start[0]);
    settled.push_back(start[1]);
    most.push_back(start[2]);
  }
  std::vector<Figure> figures{
      {"start until the first of 1,000,000 rows are painted", "s", Median(seconds), {}, "under 1"},
      {"resident memory once the search index is made", "MB", Median(settled), {}, "under 400"},
      {"and at its most", "MB", Median(most), {}, "under 400"}};
  const std::vector<double> acts = RunChild("--acts '" + home.string() + "'");
  for (std::size_t i = 0; i < std::size(kActs) && 2 * i + 1 < acts.size(); ++i) {
    const std::string name = std::string("among 1,000,000 rows ") + kActs[i];
    figures.push_back({name + ": CPU of the window's thread, p99", "ms", acts[2 * i], {}, "under 16"});
    figures.push_back({"and wall", "ms", acts[2 * i + 1], {}, ""});
  }
  return figures;
}

std::vector<Figure> MeasureWindow() {
  const MediaMaker media;
  const fs::path home = media.PathOf("home");
  setenv("XDG_CONFIG_HOME", home.c_str(), 1);
  const fs::path empty = home / "empty", full = home / "full", two = home / "two";
  for (const fs::path& folder : {empty, full, two}) fs::create_directories(folder);
  WriteIndex(full, 100'000);
  catalogue::track_table table(catalogue::TrackColumns());
  for (const char* name : {"one.flac", "two.flac"}) {
    const auto noise = platform::codec::testing::Noise(platform::codec::testing::Seconds(60), 0.2);
    table.SetCell(table.AddRow(), catalogue::track::kFilename, media.Write(name, noise));
  }
  platform::files::DiskFileSaver saver;
  static_cast<void>(catalogue::SaveIndex(saver, two / "tlv.ndx", table));

  Starts with_rows, without;
  for (int i = 0; i < kStarts; ++i) {
    with_rows.Add(full);
    without.Add(empty);
  }
  const std::vector<double> repaint = RunChild("--repaint '" + two.string() + "'");
  if (with_rows.seconds.empty() || without.seconds.empty() || repaint.empty()) return {};
  return {
      {"start to the first painted window, 100,000 rows beside none", "s", Median(with_rows.seconds),
       Median(without.seconds), "ratio at most 1.5, under 0.4 s"},
      {"resident memory then", "MB", Median(with_rows.megabytes), Median(without.megabytes), "under 200 MB"},
      {"the window's thread, two decks playing, 1920 x 1080", "% of a core", repaint.front(), {}, "under 15"},
  };
}

}  // namespace bench
