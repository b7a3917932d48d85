// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tests/EditorBooth.h"

#include <QFileDialog>
#include <QLineEdit>
#include <algorithm>
#include <fstream>

#include "dmx/FixtureFile.h"
#include "ui/forms/MessageBox.h"

namespace ui::testing {

using Function = dmx::ChannelFunction;

EditorBooth::EditorBooth() {
  std::filesystem::create_directories(folder / "DMXlibrary");
  std::filesystem::create_directories(folder / "DMXShows");
  AddFixture("Par.dmx", {{Function::Dimmer, "Red"}, {Function::Dimmer, "Green"}, {Function::Dimmer, "Blue"}});
  AddFixture("Head.dmx",
             {{Function::Pan, ""}, {Function::Tilt, ""}, {Function::Dimmer, ""}, {Function::Gobo, ""}});
  AddFixture("Spot.dmx", {{Function::Dimmer, "Dimmer"}});
  Open();
}

EditorBooth::~EditorBooth() {
  window.reset();
  std::filesystem::remove_all(folder);
}

void EditorBooth::AddFixture(const char* file,
                             const std::vector<std::pair<Function, const char*>>& channels) {
  dmx::Fixture fixture;
  fixture.name = file;
  for (const auto& [function, label] : channels) fixture.channels.Add({function, label, {}});
  std::ofstream(folder / "DMXlibrary" / file, std::ios::binary) << dmx::FixtureText(fixture);
}

void EditorBooth::ClickAt(QWidget& widget, const QPoint& place, Qt::KeyboardModifiers modifiers) {
  ++clicks;
  QTest::mouseClick(&widget, Qt::LeftButton, modifiers, place);
  Settle();
}

void EditorBooth::Click(const char* control) {
  auto& widget = In<QWidget>(control);
  ClickAt(widget, widget.rect().center());
}

QString EditorBooth::Asked() {
  for (const MessageBox* box : editor->findChildren<MessageBox*>()) {
    if (box->isVisible()) return box->Text();
  }
  return {};
}

void EditorBooth::ChooseFile(const std::string& name) {
  auto* dialog = editor->findChild<QFileDialog*>();
  if (dialog == nullptr) throw std::runtime_error("no file dialog is open");
  auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  edit->setFocus();
  if (!name.empty()) {
    edit->selectAll();
    QTest::keyClicks(edit, QString::fromStdString(name));
  }
  QTest::keyClick(edit, Qt::Key_Return);
  Work();
}

void EditorBooth::Work() {
  for (int i = 0; i < 3; ++i) {
    workers.RunAll();
    Settle();
  }
}

std::string EditorBooth::Saved(const char* name) {
  return files.Content(folder / name).value_or("");
}

int EditorBooth::Calls(const std::string& call) {
  const auto calls = wire.TakeCalls();
  return static_cast<int>(std::count(calls.begin(), calls.end(), call));
}

}  // namespace ui::testing
