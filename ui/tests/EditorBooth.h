// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <string>

#include "dmx/show.h"
#include "ui/forms/EditorWindow.h"
#include "ui/tests/Booth.h"

namespace ui::testing {

/// The main window with a fixture library on the disk and one editor open.
class EditorBooth : public Booth {
 protected:
  EditorBooth();
  ~EditorBooth() override;

  template <class Widget>
  Widget& In(const char* name) {
    auto* widget = editor->findChild<Widget*>(QLatin1String(name));
    if (widget == nullptr) throw std::runtime_error(std::string("no widget in the editor named ") + name);
    return *widget;
  }
  /// A click of the mouse into the middle of a control; it counts.
  void Click(const char* control);
  void ClickAt(QWidget& widget, const QPoint& place, Qt::KeyboardModifiers modifiers = {});
  /// What the editor asks or tells just now; empty for nothing.
  [[nodiscard]] QString Asked();
  /// Types a name into the file dialog that is open, or takes what it offers, and lets the file be read or
  /// written.
  void ChooseFile(const std::string& name);
  void Work();
  /// Text of a file that was saved in the program folder.
  [[nodiscard]] std::string Saved(const char* name);
  void AddFixture(const char* file,
                  const std::vector<std::pair<dmx::ChannelFunction, const char*>>& channels);
  /// How often the interface was called so since the last time.
  [[nodiscard]] int Calls(const std::string& call);

  EditorWindow* editor = nullptr;
  int clicks = 0;
};

}  // namespace ui::testing
