// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/Workstation.h"
#include "ui/widgets/Look.h"

namespace support {
class Clock;
}  // namespace support

namespace ui {

class DMX;
class EditorWindow;
class Library;
class frmTags;

/// The windows of the fixture editor, the show editor and the tag editor: at most one of each, beside the
/// main window.
class Editors {
 public:
  Editors(app::Workstation& workstation, const support::Clock& clock);
  ~Editors();
  Editors(const Editors&) = delete;
  Editors& operator=(const Editors&) = delete;

  /// Before language or colours go, and with the new ones; points: size of the type.
  void ClearSheet();
  void ApplySheet(const Look& look, double points);
  void OpenLibrary();
  void OpenShowEditor();
  /// The tags of these files.
  void OpenTags(std::vector<std::string> files);
  void ShowFrame();
  /// Anything that is not saved.
  [[nodiscard]] bool Changed() const;
  /// Asks for each what to do with it, then comes what is to be done when both are closed.
  void LeaveThen(std::function<void()> then);
  void Close();

  /// Null while they are closed.
  [[nodiscard]] Library* FixtureEditor() const;
  [[nodiscard]] DMX* ShowEditor() const;
  [[nodiscard]] frmTags* TagEditor() const;

 private:
  template <typename Window>
  void Open(std::unique_ptr<Window>& window);

  app::Workstation& workstation_;
  const support::Clock& clock_;
  std::unique_ptr<Look> look_;
  double points_ = 0;
  std::unique_ptr<Library> library_;
  std::unique_ptr<DMX> show_;
  std::unique_ptr<frmTags> tags_;
};

}  // namespace ui
