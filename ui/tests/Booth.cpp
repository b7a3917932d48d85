// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tests/Booth.h"

#include <QAbstractItemModel>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QTableView>

#include "app/WorkstationView.h"

namespace ui::testing {

Booth::Booth() {
  engine.AddDevice("Main speakers");
  engine.AddDevice("USB card");
  app::Ports ports{engine, engine, tags, settings, files, workers, clock, &mixer, &visualisation};
  ports.dmx = &wire;
  ports.net_dmx = &net_lamps;
  ports.desk = &desk;
  ports.effects = &effects;
  ports.loops = &loops;
  ports.synthesisers = &synthesisers;
  ports.images = &images;
  ports.commands = &commands;
  ports.microphone = &microphone;
  ports.recorder = &recorder;
  ports.tag_editor = &tag_editor;
  ports.fixtures = {&fixture_formats, {folder / "packs"}};
  station = std::make_unique<app::Workstation>(ports, support::ProgramFolder(folder),
                                               app::Workstation::Conducting::ByHand);
  station->StartUp();
  AddTrack("one.mp3", "Anna Vogel", "First Light");
  AddTrack("two.ogg", "The Bells", "Second Wind", "120.00");
  AddTrack("three.flac", "Carlo", "Third Time", "");
  AddTrack("four.wma", "", "", "99.50");
}

void Booth::Open(QSize size) {
  // As when the program starts: parts that are made under a sheet put it on again at every change of parent.
  window.reset();
  qApp->setStyleSheet({});
  window = std::make_unique<frmMain>(*station, clock);
  window->resize(size);
  window->show();
  Settle();
}

void Booth::Advance(std::chrono::milliseconds time) {
  for (auto rest = time; rest > 0ms; rest -= 20ms) {
    clock.Advance(20ms);
    station->Tick();
    if (window) window->ShowFrame();
    QApplication::processEvents();
  }
}

void Booth::AddTrack(const std::string& path, const std::string& artist, const std::string& title,
                     const std::string& bpm) {
  const std::string_view cells[] = {artist, title, "03:00", path, bpm, "House", "Album", "2026"};
  Music().AddRow(cells);
  engine.AddFile(path);
}

QString Booth::TextOf(const char* label) {
  return Find<QLabel>(label).text();
}

void Booth::Click(const char* button) {
  QTest::mouseClick(&Find<QPushButton>(button), Qt::LeftButton);
  Settle();
}

void Booth::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(window.get(), key, modifiers);
  Settle();
}

void Booth::Choose(const char* list, int index) {
  auto& combo = Find<QComboBox>(list);
  combo.setFocus();
  while (combo.currentIndex() != index) {
    QTest::keyClick(&combo, combo.currentIndex() < index ? Qt::Key_Down : Qt::Key_Up);
  }
  // The conductor itself may hand work on: an output is opened by a worker.
  for (int i = 0; i < 2; ++i) {
    workers.RunAll();
    Settle();
  }
}

void Booth::ChooseRow(int row) {
  auto& grid = Find<QTableView>("Catalogue");
  const QRect cell = grid.visualRect(grid.model()->index(row - 1, 2));
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cell.center());
}

void Booth::DoubleClickRow(int row) {
  ChooseRow(row);
  auto& grid = Find<QTableView>("Catalogue");
  const QRect cell = grid.visualRect(grid.model()->index(row - 1, 2));
  QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, cell.center());
  Settle();
}

QWidget& Booth::Target(const char* name) {
  auto& widget = Find<QWidget>(name);
  auto* area = qobject_cast<QAbstractScrollArea*>(&widget);
  return area == nullptr ? widget : *area->viewport();
}

void Booth::Drop(const QMimeData& data, const char* target, int before, Qt::DropAction action) {
  const auto* grid = window->findChild<QTableView*>(QLatin1String(target));
  const QPoint place = grid == nullptr || before == 0 ? Target(target).rect().center()
                                                      : QPoint(20, grid->rowViewportPosition(before - 1) + 2);
  DropAt(data, Target(target), place, action);
}

void Booth::ChooseInMenu(const char* button, const char* entry) {
  QTest::mouseClick(&Find<QPushButton>(button), Qt::LeftButton);
  ChooseEntry(entry);
}

void Booth::AskForMenu(QWidget& widget, const QPoint& place) {
  QTest::mouseClick(&widget, Qt::RightButton, {}, place);
  QContextMenuEvent asked(QContextMenuEvent::Mouse, place, widget.mapToGlobal(place));
  QApplication::sendEvent(&widget, &asked);
}

void Booth::ChooseEntry(const char* entry) {
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  auto* action = menu == nullptr ? nullptr : menu->findChild<QAction*>(QLatin1String(entry));
  if (action == nullptr) throw std::runtime_error(std::string("no entry named ") + entry);
  QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
  Settle();
  // A desktop gives the keys back to the window when a menu closes; here nobody does.
  if (QApplication::activeWindow() == nullptr) QApplication::setActiveWindow(window.get());
}

void Booth::DropAt(const QMimeData& data, QWidget& widget, const QPoint& place, Qt::DropAction action) {
  QDragEnterEvent enter(place, action, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&widget, &enter);
  if (!enter.isAccepted()) return;
  QDropEvent drop(place, action, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&widget, &drop);
  Settle();
}

void Booth::DropRow(int row, const char* target) {
  DropRows("Catalogue", {row}, target);
}

void Booth::DropRows(const char* source, const std::vector<int>& rows, const char* target, int before,
                     Qt::DropAction action) {
  auto& model = *Find<QTableView>(source).model();
  QModelIndexList indexes;
  for (const int row : rows) indexes += model.index(row - 1, 0);
  const std::unique_ptr<QMimeData> data(model.mimeData(indexes));
  Drop(*data, target, before, action);
}

void Booth::BeginDroppingFiles(const QList<QUrl>& urls, const char* target, int before) {
  QMimeData data;
  data.setUrls(urls);
  Drop(data, target, before, Qt::CopyAction);
}

void Booth::DropFiles(const QList<QUrl>& urls, const char* target, int before) {
  BeginDroppingFiles(urls, target, before);
  for (int i = 0; i < 2; ++i) {
    workers.RunAll();
    Settle();
  }
}

const app::DeckView& Booth::Deck(int deck) {
  return station->View().decks[static_cast<std::size_t>(deck - 1)];
}

void Booth::LoadAndPlay(int deck, int row) {
  DropRow(row, deck == 1 ? "deck1" : "deck2");
  Click(deck == 1 ? "deck1Play" : "deck2Play");
}

}  // namespace ui::testing
