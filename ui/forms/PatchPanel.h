// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "app/lights/EditorFiles.h"
#include "dmx/ShowEdit.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QLineEdit;
class QListWidget;
class QPushButton;
class QTableWidget;

namespace ui {

/// Which fixtures a show has, and where they lie on the universe.
class PatchPanel final : public Surface {
  Q_OBJECT

 public:
  PatchPanel(dmx::ShowEdit& edit, app::EditorFiles& files, const Look& look, QWidget* parent = nullptr);

  void ShowLibrary(std::vector<app::LibraryFixture> fixtures);
  void ShowDocument();
  /// Positions in the show, from 1, in order.
  [[nodiscard]] std::vector<int> Chosen() const;
  /// Of the fixtures that were set aside, which stand below the others; from 1, in order.
  [[nodiscard]] std::vector<int> ChosenAside() const;
  void Choose(int position);
  /// Patches a fixture of the library at the lowest place where it fits.
  void PatchNext(const app::LibraryFixture& fixture);

 Q_SIGNALS:
  /// The show has other fixtures.
  void Changed();
  void Refused(const QString& why);
  void ChoiceChanged();
  /// From somebody else's library.
  void BrowseWanted();
  void LocateWanted(int position);
  void RepairWanted(int position);
  void DropWanted(int aside);

 private:
  void MakeLibrary();
  void MakeList();
  void SuggestStart();
  void ShowButtons();
  void PatchChosen();
  void PatchAt(const app::LibraryFixture& fixture, int start);
  void MoveChosen();
  void RemoveChosen();
  void Locate();
  void Repair();
  void ShowRow(int row, const dmx::DMXfilename& fixture, const QString& trouble);
  [[nodiscard]] QString TroubleOf(int position) const;
  [[nodiscard]] std::vector<int> ChosenRows() const;
  void Finish(const support::Result<void>& result);

  dmx::ShowEdit& edit_;
  app::EditorFiles& files_;
  const Look& look_;
  std::vector<app::LibraryFixture> fixtures_;
  QListWidget* library_ = nullptr;
  QLineEdit* start_ = nullptr;
  QTableWidget* list_ = nullptr;
  QPushButton* browse_ = nullptr;
  QPushButton* patch_ = nullptr;
  QPushButton* move_ = nullptr;
  QPushButton* remove_ = nullptr;
  QPushButton* locate_ = nullptr;
  QPushButton* repair_ = nullptr;
};

}  // namespace ui
