// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "catalogue/NamePattern.h"
#include "ui/widgets/Look.h"

namespace ui {

/// A field's word by its number in catalogue::TagField.
[[nodiscard]] QString WordOf(catalogue::TagField field, const Strings& say);

/// The files whose tags are edited, and beside each what will become of it. Borrows the draft, which tells it
/// of every change by Renew.
class TagFilesModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum class Shows { Changes, ReadNames, NewNames };

  TagFilesModel(const catalogue::TagDraft& draft, const Look& look, QObject* parent);

  void Show(Shows shows, const catalogue::NamePattern& pattern);
  /// The draft has other files, or other texts.
  void Renew();
  [[nodiscard]] const std::vector<catalogue::PlannedName>& Names() const { return names_; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] QString Changes(std::size_t file) const;
  [[nodiscard]] QString ReadName(std::size_t file) const;
  [[nodiscard]] QString NewName(std::size_t file) const;
  [[nodiscard]] QString Preview(std::size_t file) const;

  const catalogue::TagDraft& draft_;
  Look look_;
  Shows shows_ = Shows::Changes;
  catalogue::NamePattern pattern_{""};
  std::vector<catalogue::PlannedName> names_;
  int rows_ = 0;
};

}  // namespace ui
