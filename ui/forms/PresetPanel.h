// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "dmx/FixtureEdit.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QVBoxLayout;

namespace ui {

class LevelEdit;

/// The presets of one channel: their list, and the fields that a preset is made with.
class PresetPanel final : public Surface {
  Q_OBJECT

 public:
  PresetPanel(dmx::FixtureEdit& edit, const Look& look, QWidget* parent = nullptr);

  /// 0: the fixture has no channel.
  void ShowChannel(int channel);

 Q_SIGNALS:
  void Changed();
  /// The lamp shall show what a preset does.
  void LevelWanted(int channel, int level);

 private:
  void MakeList();
  void MakeFields(QGridLayout& grid);
  QVBoxLayout* MakeButtons();
  void FillPictures(dmx::ChannelFunction function);
  void FillList(const dmx::FixtureChannel& channel);
  void ShowFields(const dmx::presets& preset);
  void OfferNext();
  [[nodiscard]] dmx::presets Preset() const;
  /// From 1; 0: none is chosen.
  [[nodiscard]] int ChosenPreset() const;
  [[nodiscard]] const dmx::FixtureChannel* Channel() const;
  void ShowPreset();
  void Add();
  void Replace();
  void Remove();
  void MoveUp();
  void MoveDown();
  void MoveTo(int position);

  dmx::FixtureEdit& edit_;
  const Look& look_;
  int channel_ = 0;
  QStringList effects_;
  std::string shown_name_, shown_third_;  ///< the bytes that the fields were filled from
  int pictures_of_ = -1;                  ///< the function whose pictures are in the list
  QLabel* head_;
  QTableWidget* list_;
  QComboBox* effect_ = nullptr;
  QComboBox* picture_ = nullptr;
  QLineEdit* name_ = nullptr;
  LevelEdit* start_ = nullptr;
  LevelEdit* end_ = nullptr;
  LevelEdit* third_ = nullptr;
  QPushButton* add_ = nullptr;
  QPushButton* replace_ = nullptr;
  QPushButton* remove_ = nullptr;
  QPushButton* up_ = nullptr;
  QPushButton* down_ = nullptr;
};

}  // namespace ui
