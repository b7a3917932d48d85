// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/BankModel.h"

#include <algorithm>
#include <utility>

#include "ui/strings/BankWords.h"
#include "ui/strings/Decode.h"

namespace ui {

BankModel::BankModel(lightorgan::BankBook& book, const Look& look, QObject* parent)
    : QAbstractTableModel(parent), book_(book), look_(look) {}

void BankModel::Show(std::size_t bank) {
  beginResetModel();
  bank_ = bank;
  running_ = 0;
  endResetModel();
}

void BankModel::ShowRunning(int step) {
  if (step == running_) return;
  const int before = std::exchange(running_, step);
  for (const int changed : {before, step}) {
    if (changed >= 1 && changed <= rowCount()) {
      Q_EMIT headerDataChanged(Qt::Vertical, changed - 1, changed - 1);
    }
  }
}

int BankModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid() || bank_ >= book_.Banks().size()) return 0;
  return static_cast<int>(book_.Banks()[bank_].steps.size());
}

int BankModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : book_.Outputs() + (Io() ? 0 : 1);
}

QVariant BankModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (!IsOutput(index)) {
    const bool text = role == Qt::DisplayRole || role == Qt::EditRole;
    return text ? QVariant(Decode(book_.Further(bank_, Step(index)))) : QVariant();
  }
  const int value = book_.Value(bank_, Step(index), index.column() + 1);
  switch (role) {
    case kLightRole:
      return Io() ? (value == 1 ? 1.0 : 0.0) : std::clamp(value, 0, 255) / 255.0;
    case Qt::DisplayRole:
      return Io() ? QVariant() : QVariant(QString::number(value));
    case Qt::EditRole:
    case Qt::AccessibleTextRole:
      return QString::number(value);
    default:
      return {};
  }
}

QVariant BankModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool step = orientation == Qt::Vertical;
  if (role == Qt::DisplayRole) {
    if (step && section + 1 == running_) return QStringLiteral("▶ %1").arg(section + 1);
    if (!step && section >= book_.Outputs()) return look_.say(BankWord::BankFurther);
    return QString::number(section + 1);
  }
  if (!step || !book_.NeverPlayed(bank_, static_cast<std::size_t>(section))) return {};
  if (role == Qt::ForegroundRole) return look_.skin.faint;
  return role == Qt::ToolTipRole ? QVariant(look_.say(BankWord::BankLastStep)) : QVariant();
}

Qt::ItemFlags BankModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags plain = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  return Io() || !index.isValid() ? plain : plain | Qt::ItemIsEditable;
}

bool BankModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid()) return false;
  if (IsOutput(index)) {
    bool number = false;
    const int typed = value.toString().toInt(&number);
    if (!number) return false;
    book_.SetValue(bank_, Step(index), index.column() + 1, typed);
  } else {
    book_.SetFurther(bank_, Step(index), value.toString().toStdString());
  }
  Q_EMIT dataChanged(index, index);
  return true;
}

void BankModel::Toggle(const QModelIndex& index) {
  if (!Io() || !index.isValid()) return;
  setData(index, book_.Value(bank_, Step(index), index.column() + 1) == 1 ? 0 : 1, Qt::EditRole);
}

}  // namespace ui
