// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "app/lights/FixturePacks.h"
#include "ui/widgets/DropSurface.h"
#include "ui/widgets/Look.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace ui {

/// Finds a mode of a fixture in the libraries of others, and takes it into this program's. Over its editor,
/// until Escape or a fixture that was taken.
class FixtureBrowser final : public DropSurface {
  Q_OBJECT

 public:
  FixtureBrowser(app::FixturePacks& packs, const Look& look, QWidget& editor);

  /// Shows it, with what was typed the last time ready to be typed over.
  void Open();
  /// With the editor's frame: what was read meanwhile.
  void ShowFrame();

 Q_SIGNALS:
  /// The file is in the program's own library.
  void Brought(const app::BroughtFixture& fixture);
  void Refused(const support::Error& why);

 protected:
  /// The arrows of the search move through what was found.
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void MakeControls();
  void ShowRows();
  void ShowState();
  void ShowButtons();
  void Take();
  void ChooseFolder();

  app::FixturePacks& packs_;
  const Look& look_;
  std::shared_ptr<const dmx::PackIndex> index_;  ///< that the rows are of
  std::vector<const dmx::PackEntry*> rows_;
  std::size_t changes_ = 0;  ///< of the libraries, as shown
  bool taking_ = false;

  QLineEdit* search_ = nullptr;
  QListWidget* list_ = nullptr;
  QLabel* state_ = nullptr;
  QPushButton* take_ = nullptr;
  QPushButton* folder_ = nullptr;
  QPushButton* stop_ = nullptr;
};

}  // namespace ui
