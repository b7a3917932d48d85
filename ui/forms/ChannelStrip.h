// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QScrollArea>
#include <functional>
#include <vector>

#include "ui/widgets/Look.h"

namespace ui {

class ChannelColumn;

/// The channels of a fixture side by side. Only those that are seen have a column, and their neighbours,
/// which the Tab key reaches next; the columns move along with the view.
class ChannelStrip final : public QScrollArea {
  Q_OBJECT

 public:
  using Act = std::function<void(ChannelColumn&)>;
  /// made: once for each column; show: whenever one stands for another channel, and by Refresh().
  ChannelStrip(const Look& look, Act made, Act show, QWidget* parent = nullptr);

  void SetChannels(int count);
  void Refresh();
  /// In no order.
  [[nodiscard]] const std::vector<ChannelColumn*>& Columns() const { return columns_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int x, int y) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Measure {
    int margin;
    int width;
    int step;
  };
  [[nodiscard]] Measure Measured() const;
  /// The first and the last one that are to have a column.
  [[nodiscard]] std::pair<int, int> Seen() const;
  void Place();
  void PlaceColumns();
  [[nodiscard]] bool GiveColumns();
  ChannelColumn* MakeColumn();
  void OrderStops();

  const Look& look_;
  const Act made_;
  const Act show_;
  QWidget* ground_;
  int count_ = 0;
  std::vector<ChannelColumn*> columns_;
  std::vector<ChannelColumn*> spare_;  ///< hidden
};

}  // namespace ui
