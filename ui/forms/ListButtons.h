// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include "ui/widgets/Look.h"

class QHBoxLayout;
class QMenu;
class QPushButton;

namespace ui {

class TrackGrid;

/// The two buttons of a list of files, each with a menu: files and folders come in, rows go out and come
/// back, files are deleted. What takes rows out stands in the menu on the rows too.
class ListButtons final : public QObject {
  Q_OBJECT

 public:
  struct Texts {
    QString add_name, add_tip, delete_name;
  };
  /// Object names begin with this one. The grid outlives them.
  ListButtons(const QString& name, const Texts& texts, TrackGrid& grid, const Look& look);

  void PutInto(QHBoxLayout& row);
  /// What the button that takes rows out offers, for the rows' own menu.
  void FillRemove(QMenu& menu);

 Q_SIGNALS:
  void FilesWanted();
  void FolderWanted();
  void RemoveWanted();
  void DeleteWanted();
  void BringBackWanted();

 private:
  [[nodiscard]] QPushButton* MakeButton(const QString& name, const QString& caption, const QString& long_name,
                                        const QString& tip);
  void PopUpAdd();
  void PopUpRemove();
  [[nodiscard]] QMenu* MakeMenu(const char* name);

  const QString name_;
  const Texts texts_;
  TrackGrid& grid_;
  Look look_;
  QPushButton* add_;
  QPushButton* remove_;
};

}  // namespace ui
