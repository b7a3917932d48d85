// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <filesystem>
#include <memory>
#include <random>
#include <string>

#include "app/sound/BuiltInVisualisation.h"
#include "app/testing/AllParts.h"
#include "app/testing/FakeMixer.h"
#include "catalogue/testing/FakeTagEditor.h"
#include "catalogue/testing/FakeTagReader.h"
#include "decks/testing/FakeCommandRunner.h"
#include "decks/testing/FakeMicrophone.h"
#include "decks/testing/FakeRecorder.h"
#include "decks/testing/RecordingDesk.h"
#include "decks/testing/RecordingEffects.h"
#include "decks/testing/RecordingEngine.h"
#include "decks/testing/RecordingLoops.h"
#include "dmx/testing/FakeFixtureFormats.h"
#include "dmx/testing/RecordingDmxInterface.h"
#include "dmx/testing/RecordingNetOutput.h"
#include "karaoke/testing/FakeDiscImages.h"
#include "karaoke/testing/RecordingSynthesiser.h"
#include "support/testing/FakeClock.h"
#include "support/testing/ManualExecutor.h"
#include "support/testing/MemoryFiles.h"
#include "support/testing/MemorySettings.h"
#include "ui/forms/frmMain.h"

namespace ui::testing {

using namespace std::chrono_literals;
using State = app::DeckView::State;

/// The whole window on a workstation without sound: four tracks stand in the catalogue, time moves by
/// Advance() only.
class Booth : public ::testing::Test {
 protected:
  Booth();

  /// Opens the window; before it, settings and catalogue can be prepared.
  void Open(QSize size = {1366, 768});
  /// Time goes by in steps of a frame: the conductor ticks, the window draws.
  void Advance(std::chrono::milliseconds time);
  void Settle() { Advance(60ms); }
  /// Appends a row for a file that can be played.
  void AddTrack(const std::string& path, const std::string& artist, const std::string& title,
                const std::string& bpm = "128.00");

  template <class Widget>
  Widget& Find(const char* name) {
    auto* widget = window->findChild<Widget*>(QLatin1String(name));
    if (widget == nullptr) throw std::runtime_error(std::string("no widget named ") + name);
    return *widget;
  }
  [[nodiscard]] QString TextOf(const char* label);
  void Click(const char* button);
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void Choose(const char* list, int index);
  /// Puts the cursor on a row of the catalogue, from 1.
  void ChooseRow(int row);
  void DoubleClickRow(int row);
  void DropRow(int row, const char* target);
  /// Rows of a grid onto a widget; onto a grid, before one of its rows where one is named.
  void DropRows(const char* source, const std::vector<int>& rows, const char* target, int before = 0,
                Qt::DropAction action = Qt::CopyAction);
  /// Their analysis waits for the workers to run.
  void BeginDroppingFiles(const QList<QUrl>& urls, const char* target, int before = 0);
  void DropFiles(const QList<QUrl>& urls, const char* target, int before = 0);
  /// Presses a button and clicks an entry of the menu that it opens.
  void ChooseInMenu(const char* button, const char* entry);
  /// By a right click.
  void AskForMenu(QWidget& widget, const QPoint& place);
  /// Of the menu that is open.
  void ChooseEntry(const char* entry);
  [[nodiscard]] catalogue::track_table& Music() { return station->Collections().Music().Table(); }
  [[nodiscard]] catalogue::track_table& Karaoke() { return station->Collections().Karaoke().Table(); }
  [[nodiscard]] catalogue::track_table& Playlist(int number) {
    return station->Collections().Playlist(number);
  }
  [[nodiscard]] const app::DeckView& Deck(int deck);
  void LoadAndPlay(int deck, int row);

  /// A test that needs files there makes it, and takes it away again.
  const std::filesystem::path folder =
      std::filesystem::path(::testing::TempDir()) / ("booth-" + std::to_string(std::random_device()()));
  support::testing::FakeClock clock;
  decks::testing::RecordingEngine engine{clock};
  decks::testing::RecordingDesk desk;
  decks::testing::RecordingEffects effects;
  decks::testing::RecordingLoops loops{100 * 44'100};
  support::testing::ManualExecutor workers;
  catalogue::testing::FakeTagReader tags;
  catalogue::testing::FakeTagEditor tag_editor{tags};
  app::testing::FakeMixer mixer;
  app::BuiltInVisualisation visualisation;
  karaoke::testing::RecordingSynthesisers synthesisers;
  karaoke::testing::FakeDiscImages images;
  support::testing::MemorySettings settings;
  support::testing::MemoryFiles files;
  dmx::testing::RecordingDmxInterface wire;
  dmx::testing::RecordingNetOutput net_lamps;
  dmx::testing::FakeFixtureFormats fixture_formats;
  decks::testing::FakeCommandRunner commands;
  decks::testing::FakeMicrophone microphone;
  decks::testing::FakeRecorder recorder;
  std::unique_ptr<app::Workstation> station;
  std::unique_ptr<frmMain> window;

 private:
  /// Where events for a widget go.
  QWidget& Target(const char* name);
  void Drop(const QMimeData& data, const char* target, int before, Qt::DropAction action);
  void DropAt(const QMimeData& data, QWidget& widget, const QPoint& place, Qt::DropAction action);
};

}  // namespace ui::testing
