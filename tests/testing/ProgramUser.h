// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QMimeData>
#include <QTableView>
#include <QTest>
#include <QUrl>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "program/Program.h"
#include "ui/forms/frmMain.h"

namespace tests::testing {

/// A user at the whole program, with a program folder and settings of their own: what they do are events on
/// the widgets of the real window.
class ProgramUser : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "evening-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    home_ = pattern;
    setenv("XDG_CONFIG_HOME", home_.c_str(), 1);
  }
  void TearDown() override {
    program_.reset();
    std::filesystem::remove_all(home_);
  }

  /// server: what PULSE_SERVER holds.
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
  std::string TextOf(const char* label) { return Find(label).property("text").toString().toStdString(); }
  void Click(const char* name) { QTest::mouseClick(&Find(name), Qt::LeftButton); }
  static bool Eventually(const std::function<bool()>& holds,
                         std::chrono::milliseconds patience = std::chrono::seconds(20)) {
    return QTest::qWaitFor(holds, static_cast<int>(patience.count()));
  }

  void Choose(const char* list, const char* text) {
    auto& box = Find<QComboBox>(list);
    const int index = box.findText(QLatin1String(text), Qt::MatchContains);
    ASSERT_GE(index, 0) << list << " offers no " << text;
    ASSERT_TRUE(Eventually([&] { return box.isEnabled(); })) << list;
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Home);
    for (int i = 0; i < index; ++i) QTest::keyClick(&box, Qt::Key_Down);
    ASSERT_EQ(box.currentIndex(), index);
  }

  QTableView& Grid(const char* name) { return Find<QTableView>(name); }
  int Rows(const char* grid) { return Grid(grid).model()->rowCount(); }
  /// Row from 0.
  void ClickRow(const char* grid, int row) {
    QTest::mouseClick(Grid(grid).viewport(), Qt::LeftButton, {}, MiddleOf(grid, row));
  }
  void DoubleClickRow(const char* grid, int row) {
    ClickRow(grid, row);
    QTest::mouseDClick(Grid(grid).viewport(), Qt::LeftButton, {}, MiddleOf(grid, row));
  }
  /// As from a file manager.
  void DropFiles(const std::vector<std::filesystem::path>& paths, const char* target) {
    QMimeData files;
    QList<QUrl> urls;
    for (const auto& path : paths) urls += QUrl::fromLocalFile(QString::fromStdString(path.string()));
    files.setUrls(urls);
    Drop(files, target);
  }
  /// Rows from 0.
  void DropRows(const char* from, const std::vector<int>& rows, const char* to) {
    QModelIndexList indexes;
    for (const int row : rows) indexes += Grid(from).model()->index(row, 0);
    const std::unique_ptr<QMimeData> data(Grid(from).model()->mimeData(indexes));
    Drop(*data, to);
  }

  std::filesystem::path home_;
  std::unique_ptr<program::Program> program_;

 private:
  QPoint MiddleOf(const char* grid, int row) {
    QTableView& view = Grid(grid);
    return view.visualRect(view.model()->index(row, 0)).center();
  }
  void Drop(const QMimeData& data, const char* name) {
    auto* grid = qobject_cast<QTableView*>(&Find(name));
    QWidget* target = grid != nullptr ? grid->viewport() : &Find(name);
    const QPoint middle = target->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
  }
};

}  // namespace tests::testing
