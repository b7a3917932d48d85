// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>

#include "lightorgan/BankBook.h"
#include "ui/widgets/Look.h"

namespace ui {

/// The bank editor's work: it outlives the window's rebuilds, so that no change is lost by them.
struct BankDraft {
  lightorgan::BankBook book;
  bool open = false;
};

/// The steps of one bank as a table: a row a step, a column an output, and behind those of the DAC side the
/// further fields.
class BankModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// Of an output's cell, 0 to 1.
  static constexpr int kLightRole = Qt::UserRole;

  BankModel(lightorgan::BankBook& book, const Look& look, QObject* parent = nullptr);

  /// The bank that is shown; also when the book was changed elsewhere.
  void Show(std::size_t bank);
  /// The step that is played, from 1; 0 for none.
  void ShowRunning(int step);
  [[nodiscard]] std::size_t Bank() const { return bank_; }
  [[nodiscard]] bool IsOutput(const QModelIndex& index) const { return index.column() < book_.Outputs(); }
  void Toggle(const QModelIndex& index);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  [[nodiscard]] bool Io() const { return book_.WhichSide() == lightorgan::Side::Io; }
  [[nodiscard]] std::size_t Step(const QModelIndex& index) const { return std::size_t(index.row()); }

  lightorgan::BankBook& book_;
  Look look_;
  std::size_t bank_ = 0;
  int running_ = 0;
};

}  // namespace ui
