// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>
#include <set>
#include <vector>

#include "ui/forms/LiveColumn.h"

class QHBoxLayout;
class QLineEdit;

namespace ui {

/// All fixtures, the saved groups and each fixture side by side; those that are chosen are what the rest of
/// the console steers.
class LiveGroups final : public QWidget {
  Q_OBJECT

 public:
  LiveGroups(app::LiveLightStation& live, const Look& look, QWidget* parent = nullptr);

  void Show(const app::LiveView& view);
  /// Positions of the fixtures that are chosen; all of them where no group is.
  [[nodiscard]] const std::vector<int>& Targets() const { return targets_; }
  /// As a click on its column.
  void ChooseFixture(int position);

 Q_SIGNALS:
  void TargetsChanged();

 private:
  [[nodiscard]] std::vector<LiveColumn::Group> GroupsOf(const app::StagePatch* patch) const;
  void MakeColumns();
  void Choose(std::size_t column);
  void FindTargets();
  void Keep();

  app::LiveLightStation& live_;
  Look look_;
  QHBoxLayout* row_;
  QLineEdit* name_;
  QPushButton* keep_;
  QPushButton* drop_;
  std::vector<LiveColumn::Group> groups_;
  std::vector<LiveColumn*> columns_;
  std::set<std::size_t> chosen_;  ///< columns; none: the first, which is all
  std::vector<int> targets_;
  std::shared_ptr<const app::StagePatch> patch_;
  std::vector<dmx::LightGroup> saved_;  ///< as the columns show them
};

}  // namespace ui
