// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The whole program as a user has it: the real window, driven by events on its widgets, the real engine, and a
// real sound server of the test's own whose sinks are recorded.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QMimeData>
#include <QTableView>
#include <QTest>
#include <QUrl>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "app/Workstation.h"
#include "platform/audio/testing/MonitorRecorder.h"
#include "platform/audio/testing/SoundServer.h"
#include "platform/codec/testing/Measures.h"
#include "platform/codec/testing/MediaMaker.h"
#include "program/Program.h"
#include "ui/forms/frmMain.h"
#include "ui/widgets/LevelMeter.h"

namespace {

namespace fs = std::filesystem;
using platform::audio::testing::kEightChannels;
using platform::audio::testing::MonitorRecorder;
using platform::audio::testing::SoundServer;
using platform::codec::testing::Channel;
using platform::codec::testing::LevelAt;
using platform::codec::testing::MediaMaker;
using platform::codec::testing::Seconds;
using platform::codec::testing::Tones;
using platform::codec::testing::Voice;

constexpr double kLeftHz = 997, kRightHz = 1511;
constexpr double kLeftLevel = 0.2, kRightLevel = 0.4;
constexpr std::chrono::seconds kPatience(20);

/// A user at the program, with a folder and settings of their own.
class EndToEnd : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "evening-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    home_ = pattern;
    setenv("XDG_CONFIG_HOME", home_.c_str(), 1);
    const Voice voices[] = {{kLeftHz, kLeftLevel}, {kRightHz, kRightLevel}};
    track_ = media_.Write("tone.flac", Tones(Seconds(30), voices));
  }
  void TearDown() override {
    program_.reset();
    fs::remove_all(home_);
  }

  void Start(const std::string& server) {
    setenv("PULSE_SERVER", server.c_str(), 1);
    program_ = std::make_unique<program::Program>(home_);
    Window().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&Window()));
  }
  void StartWithoutServer() { Start("unix:" + (home_ / "no-server").string()); }

  ui::frmMain& Window() { return program_->Window(); }
  template <typename Widget = QWidget>
  Widget& Find(const char* name) {
    auto* widget = Window().findChild<Widget*>(QLatin1String(name));
    if (widget == nullptr) throw std::runtime_error(std::string("no widget ") + name);
    return *widget;
  }
  void Click(const char* name) { QTest::mouseClick(&Find(name), Qt::LeftButton); }
  void Choose(const char* list, const QString& text) {
    auto& box = Find<QComboBox>(list);
    const int index = box.findText(text, Qt::MatchContains);
    ASSERT_GE(index, 0) << list << " offers no " << text.toStdString();
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Home);
    for (int i = 0; i < index; ++i) QTest::keyClick(&box, Qt::Key_Down);
    ASSERT_EQ(box.currentIndex(), index);
  }
  static bool Eventually(const std::function<bool()>& holds, std::chrono::milliseconds patience = kPatience) {
    return QTest::qWaitFor(holds, static_cast<int>(patience.count()));
  }

  /// As from a file manager.
  void DropOnCatalogue(const std::string& path) {
    auto& grid = Find<QTableView>("Catalogue");
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QString::fromStdString(path))});
    const QPoint middle = grid.viewport()->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(grid.viewport(), &enter);
    QDropEvent drop(middle, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(grid.viewport(), &drop);
  }
  /// Drops the tone on the catalogue and loads it on deck 1 by a double click.
  void LoadTheTone() {
    DropOnCatalogue(track_);
    auto& grid = Find<QTableView>("Catalogue");
    ASSERT_TRUE(Eventually([&] { return grid.model()->rowCount() == 1; }));
    const QPoint row = grid.visualRect(grid.model()->index(0, 0)).center();
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, row);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, row);
    ASSERT_TRUE(Eventually([&] { return Length() == "0:30.0"; })) << Length();
  }
  std::string Text(const char* label) {
    return Find(label).property("text").toString().toStdString();
  }
  std::string Length() { return Text("Length1"); }
  /// Seconds that deck 1 shows as heard.
  double Elapsed() {
    const std::string text = Text("Elapsed1");
    const std::size_t colon = text.find(':');
    return colon == std::string::npos ? -1 : std::stod(text) * 60 + std::stod(text.substr(colon + 1));
  }

  fs::path home_;
  MediaMaker media_;
  std::string track_;
  std::unique_ptr<program::Program> program_;
};

}  // namespace

int main(int argc, char* argv[]) {
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
