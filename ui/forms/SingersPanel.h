// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/singers/SingersView.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QStringListModel;
class QTableWidget;

namespace app {
class ListStation;
class SingerStation;
}  // namespace app

namespace support {
class Settings;
}  // namespace support

namespace ui {

class ElidedLabel;
class QuietCombo;

/// The singers in the order of their turns, with what they sing and how long they wait, and what a host does
/// with them. As long as there are none it is one line high.
class SingersPanel final : public Surface {
  Q_OBJECT

 public:
  SingersPanel(app::SingerStation& host, app::ListStation& lists, support::Settings& settings,
               const Look& look, QWidget* parent = nullptr);

  /// Once a frame.
  void Show(const app::SingersView& view);
  /// The keys go to the name of a new singer.
  void TakeName();
  void Next();
  /// The singer that a song is for; 0: none is chosen.
  [[nodiscard]] singers::SingerId ChosenSinger() const;
  /// For the eye.
  [[nodiscard]] QString NameOf(singers::SingerId id) const;
  [[nodiscard]] bool IsEmpty() const;

 Q_SIGNALS:
  /// Singers came in, or the last one left.
  void Filled(bool any);

 private:
  /// One line of the table.
  struct Line {
    singers::SingerId id = 0;
    bool on_stage = false;
    bool operator==(const Line&) const = default;
  };

  [[nodiscard]] QHBoxLayout* MakeHead();
  [[nodiscard]] QHBoxLayout* MakeBreaks();
  [[nodiscard]] QHBoxLayout* MakeActs();
  [[nodiscard]] QHBoxLayout* MakeWish();
  QPushButton* Act(const char* name, const Texts& texts, std::function<void(singers::SingerId)> act);
  void Fill();
  void FillRow(int row, const Line& line);
  void Choose(const Line& wanted);
  void ShowChosen();
  void AddTyped();
  void MoveBy(singers::SingerId id, int steps);
  void Change(const std::function<void(singers::Wish&)>& change);
  void ChangePartner();
  void FillMenu(QMenu& menu);
  void AskForName(singers::SingerId id);
  [[nodiscard]] const singers::Singer* Chosen() const;
  [[nodiscard]] QString SongText(const singers::Wish& wish) const;
  [[nodiscard]] QString WaitText(singers::SingerId id) const;

  app::SingerStation& host_;
  app::ListStation& lists_;
  support::Settings& settings_;
  Look look_;
  QLineEdit* name_;
  QStringListModel* known_;
  QuietCombo* rule_;
  ElidedLabel* rule_text_;
  QPushButton* next_;
  QTableWidget* table_;
  QWidget* below_;
  QPushButton* hold_;
  QPushButton* bring_back_;
  std::vector<QPushButton*> needs_choice_;
  std::vector<QPushButton*> moves_;
  QPushButton* skip_;
  ElidedLabel* wish_;
  QuietCombo* key_;
  QuietCombo* tempo_;
  QLineEdit* partner_;
  std::shared_ptr<const app::SingersSheet> sheet_;
  std::shared_ptr<const std::vector<std::string>> names_;
  std::vector<Line> lines_;
  Line chosen_;
  /// What the controls of the next song are about.
  struct {
    singers::SingerId id = 0;
    singers::Wish wish{};
  } shown_;
  singers::SingerId newest_ = 0;  ///< chosen when it came
};

}  // namespace ui
