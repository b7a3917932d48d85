// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// What acts among a million rows cost the window's thread, in the real program on Qt's offscreen platform.
#include "benchmarks/RowsBench.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>

#include "app/files/Reindex.h"
#include "benchmarks/Bench.h"
#include "benchmarks/ScanTree.h"
#include "catalogue/IndexFile.h"
#include "catalogue/RowMoves.h"
#include "program/Program.h"
#include "support/Executor.h"
#include "support/Text.h"
#include "ui/forms/MusicPage.h"
#include "ui/forms/frmMain.h"

namespace bench {
namespace {

namespace fs = std::filesystem;
namespace track = catalogue::track;
using catalogue::track_table;
using namespace std::chrono_literals;

constexpr int kAddedFiles = 1000;

struct Turn {
  double cpu = 0;
  double wall = 0;
};

double Milliseconds(std::chrono::steady_clock::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

Turn TimeOf(const std::function<void()>& work) {
  const double cpu = ThreadCpuSeconds();
  const auto begin = std::chrono::steady_clock::now();
  work();
  return {(ThreadCpuSeconds() - cpu) * 1000, Milliseconds(std::chrono::steady_clock::now() - begin)};
}

/// What one act took, several times.
class Samples {
 public:
  void Add(const Turn& turn) {
    cpu_.push_back(turn.cpu);
    wall_.push_back(turn.wall);
  }
  void Print() const {
    std::printf("%f %f\n", Percentile(cpu_, 0.99), Percentile(wall_, 0.99));
    std::fflush(stdout);
  }

 private:
  std::vector<double> cpu_, wall_;
};

/// The program as somebody uses it who has a million tracks.
class User {
 public:
  explicit User(const fs::path& folder) : program_(folder) {
    program_.Window().resize(1920, 1080);
    program_.Window().show();
    grid_ = Find<QAbstractItemView>("Catalogue");
    grid_->setFocus();
    Wait(10s);
  }

  template <typename Widget>
  [[nodiscard]] Widget* Find(const char* name) {
    auto* found = program_.Window().findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) throw std::runtime_error(std::string("nothing is named ") + name);
    return found;
  }
  [[nodiscard]] QAbstractItemView& Grid() { return *grid_; }
  [[nodiscard]] int Rows() { return grid_->model()->rowCount(); }

  /// The longest turn of the window's thread: the act itself, or one of those until it is done and shown.
  Turn Do(const std::function<void()>& act, std::chrono::milliseconds rest,
          const std::function<bool()>& done = {}) {
    Turn longest = TimeOf(act);
    const auto take = [&longest](const Turn& turn) {
      longest = {std::max(longest.cpu, turn.cpu), std::max(longest.wall, turn.wall)};
    };
    const auto patience = std::chrono::steady_clock::now() + 120s;
    while (done && !done()) {
      if (std::chrono::steady_clock::now() > patience) throw std::runtime_error("an act came to no end");
      take(OneTurn());
    }
    const auto end = std::chrono::steady_clock::now() + rest;
    while (std::chrono::steady_clock::now() < end) take(OneTurn());
    return longest;
  }
  void Wait(std::chrono::milliseconds time) {
    Do([] {}, time);
  }

  void Drop(QWidget& target, const std::vector<std::string>& files) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& file : files) urls.push_back(QUrl::fromLocalFile(QString::fromStdString(file)));
    data.setUrls(urls);
    // Qt delivers a drop only to where a drag went in.
    QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&target, &enter);
    QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&target, &drop);
  }
  void Choose(int first, int last) {
    const QItemSelection rows(grid_->model()->index(first, 0), grid_->model()->index(last, 0));
    grid_->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    grid_->selectionModel()->setCurrentIndex(grid_->model()->index(last, 0), QItemSelectionModel::NoUpdate);
  }

 private:
  static Turn OneTurn() {
    const Turn turn = TimeOf([] { QApplication::processEvents(); });
    if (turn.wall < 0.1) std::this_thread::sleep_for(1ms);
    return turn;
  }

  program::Program program_;
  QAbstractItemView* grid_ = nullptr;
};

Samples TimeDrops(User& user, const std::vector<std::string>& known) {
  Samples samples;
  auto* list = user.Find<QAbstractItemView>("PlayListView1");
  for (int run = 0; run < 5; ++run) {
    const int wanted = list->model()->rowCount() + static_cast<int>(known.size());
    samples.Add(user.Do([&] { user.Drop(*list->viewport(), known); }, 1s,
                        [&] { return list->model()->rowCount() >= wanted; }));
  }
  return samples;
}

Samples TimeAdding(User& user, const std::vector<std::string>& files) {
  Samples samples;
  const int wanted = user.Rows() + static_cast<int>(files.size());
  auto* page = user.Find<QWidget>("MusicPage");
  samples.Add(user.Do([&] { user.Drop(*page, files); }, 2s, [&] { return user.Rows() >= wanted; }));
  return samples;
}

/// Of the files that were added last; those are analysed, a hundred of them.
Samples TimeAnalysis(User& user) {
  Samples samples;
  auto* begin = user.Find<QPushButton>("Analyse");
  auto* end = user.Find<QPushButton>("AnalyseEnd");
  user.Do([&] { user.Choose(user.Rows() - 100, user.Rows() - 1); }, 500ms);
  const auto over = [&] { return !end->isVisible(); };
  samples.Add(user.Do([&] { begin->click(); }, 500ms, [&] { return end->isVisible(); }));
  samples.Add(user.Do([] {}, 500ms, over));
  return samples;
}

Samples TimeAnalyseAll(User& user) {
  Samples samples;
  auto* begin = user.Find<QPushButton>("Analyse");
  auto* end = user.Find<QPushButton>("AnalyseEnd");
  for (int run = 0; run < 3; ++run) {
    samples.Add(user.Do([&] { user.Grid().selectAll(); }, 500ms));
    samples.Add(user.Do([&] { begin->click(); }, 3s));
    samples.Add(user.Do([&] { end->click(); }, 2s));
  }
  return samples;
}

Samples TimeDeleting(User& user) {
  Samples samples;
  user.Do([&] { user.Choose(user.Rows() - kAddedFiles, user.Rows() - 1); }, 500ms);
  const int wanted = user.Rows() - kAddedFiles;
  auto* page = user.Find<ui::MusicPage>("MusicPage");
  samples.Add(user.Do([&] { Q_EMIT page->DeleteWanted(); }, 500ms));
  auto* agree = user.Find<QPushButton>("DeleteTracksBoxYes");
  samples.Add(user.Do([&] { agree->click(); }, 2s, [&] { return user.Rows() <= wanted; }));
  return samples;
}

Samples TimeSearch(User& user) {
  Samples samples;
  auto* field = user.Find<QLineEdit>("Search");
  for (const char* text : {"travel", "song 12", "works vol 3", "e", "t"}) {
    for (const char letter : std::string_view(text)) {
      samples.Add(user.Do([&] { field->insert(QString(QLatin1Char(letter))); }, 300ms));
    }
    samples.Add(user.Do([&] { field->clear(); }, 500ms));
  }
  return samples;
}

Samples TimeSorting(User& user) {
  Samples samples;
  auto* head = user.Grid().findChild<QHeaderView*>();
  for (auto* other : user.Grid().findChildren<QHeaderView*>()) {
    if (other->orientation() == Qt::Horizontal) head = other;
  }
  for (int run = 0; run < 2; ++run) {
    for (int column = 1; column < head->count(); ++column) {
      if (head->isSectionHidden(column)) continue;
      const int place = head->sectionViewportPosition(column) + head->sectionSize(column) / 2;
      samples.Add(user.Do(
          [&] { QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, QPoint(place, head->height() / 2)); },
          1500ms));
    }
  }
  return samples;
}

/// Hands over a table that was made before.
class ReadyScan final : public app::ScanPort {
 public:
  explicit ReadyScan(support::Executor& workers) : workers_(workers) {}
  void Give(track_table rows) { rows_ = std::move(rows); }
  std::shared_ptr<app::RunningScan> Start(const app::ScanWish&, Done done) override {
    app::ScanFound found{app::ScanFound::End::Complete, std::move(rows_)};
    workers_.Post([done = std::move(done), found = std::move(found)]() mutable { done(std::move(found)); });
    struct Running final : app::RunningScan {
      void Cancel() override {}
      [[nodiscard]] app::ScanProgress Progress() const override { return {}; }
    };
    return std::make_shared<Running>();
  }

 private:
  support::Executor& workers_;
  track_table rows_{catalogue::TrackColumns()};
};

/// The whole table against a scan of the same files, while rows of the table are changed.
Samples TimeSwaps(const fs::path& index) {
  Samples samples;
  track_table table(catalogue::TrackColumns());
  static_cast<void>(catalogue::LoadIndex(index, table));
  support::ThreadPool workers(2);
  const support::Sentences say;
  const auto box = std::make_shared<app::Mailbox>();
  ReadyScan scans(workers);
  app::Reindex reindex(table, catalogue::ScanMode::Music, scans, workers, std::make_shared<app::WorkGate>(),
                       box, say);
  for (int run = 0; run < 5; ++run) {
    track_table found(catalogue::TrackColumns());
    static_cast<void>(catalogue::LoadIndex(index, found));
    scans.Give(std::move(found));
    bool over = false;
    samples.Add(TimeOf([&] { reindex.Start({"/"}, {}, [&](const auto&) { over = true; }); }));
    for (int row = 1; row < table.Rows(); row += 1000) table.SetCell(row, track::kGain, std::to_string(run));
    while (!over) {
      for (const auto& job : box->Take()) samples.Add(TimeOf(job));
      std::this_thread::sleep_for(1ms);
    }
  }
  return samples;
}

/// Of 2,000 files at once, and of one after the other.
std::array<Samples, 3> TimeLooks(const fs::path& index) {
  track_table table(catalogue::TrackColumns());
  static_cast<void>(catalogue::LoadIndex(index, table));
  std::mt19937 dice(1);
  std::vector<std::string> files;
  std::vector<int> rows;
  for (int i = 0; i < 2000; ++i) {
    rows.push_back(1 + static_cast<int>(dice() % static_cast<unsigned>(table.Rows())));
    files.emplace_back(table.Cell(rows.back(), track::kFilename));
  }
  std::array<Samples, 3> samples;
  for (int run = 0; run < 20; ++run) {
    samples[0].Add(TimeOf([&] { static_cast<void>(table.FirstRowsOf(files)); }));
    for (int i = 0; i < 100; ++i) {
      samples[1].Add(TimeOf([&] { static_cast<void>(table.RowsOf(files[dice() % files.size()])); }));
    }
    track_table copy = table;
    samples[2].Add(TimeOf([&] { catalogue::RemoveRows(copy, {rows.begin(), rows.begin() + 1000}); }));
  }
  return samples;
}

}  // namespace

void WriteRows(const fs::path& index, int rows) {
  std::FILE* file = std::fopen(index.c_str(), "wb");
  for (int row = 0; row < rows; ++row) {
    const std::string number = std::to_string(row);
    const std::string artist = "The Travelling Band No. " + std::to_string(row % 4000);
    const std::string album = "Collected Works Vol. " + std::to_string(row % 9000);
    const std::string name = "Another Song Of Theirs " + number;
    std::string line = artist + "\t" + name + "\t" + support::FormatMinutes(120 + row % 300);
    line += "\t/home/dj/Music/" + artist + "/" + album + "/" + name + ".mp3\t";
    line += support::FormatReal(80 + row % 9000 * 0.01, 2) + "\tDisco\t" + album + "\t";
    line += std::to_string(1960 + row % 60) + "\t320\t44100\t-3.25\t0.875\t220.125\r\n";
    std::fwrite(line.data(), 1, line.size(), file);
  }
  std::fclose(file);
}

int ShowActs(const char* folder) try {
  const fs::path home(folder);
  for (const Samples& samples : TimeLooks(home / "tlv.ndx")) samples.Print();
  TimeSwaps(home / "tlv.ndx").Print();
  const std::vector<std::string> files = MakeCollection(home / "music", kAddedFiles);
  User user(home);
  TimeAdding(user, files).Print();
  TimeDrops(user, files).Print();
  TimeAnalysis(user).Print();
  TimeDeleting(user).Print();
  TimeSearch(user).Print();
  TimeSorting(user).Print();
  TimeAnalyseAll(user).Print();
  return 0;
} catch (const std::runtime_error& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}

}  // namespace bench
