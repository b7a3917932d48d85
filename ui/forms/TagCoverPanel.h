// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "catalogue/TagDraft.h"
#include "ui/widgets/Look.h"

class QLabel;
class QPushButton;

namespace app {
class TagStation;
}

namespace ui {

/// The cover of the files whose tags are edited: shown, taken from a file, a drop or the clipboard, removed.
/// Borrows the draft.
class TagCoverPanel final : public QWidget {
  Q_OBJECT

 public:
  TagCoverPanel(catalogue::TagDraft& draft, app::TagStation& tags, const Look& look,
                QWidget* parent = nullptr);

  void Show();

 Q_SIGNALS:
  void Touched();
  /// Why a picture was not taken.
  void Refused(const QString& why);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void AskForFile();
  void Paste();
  void TakeFile(const std::string& path);
  void TakeBytes(const std::string& bytes);
  void Take(const QImage& image);
  void Put(catalogue::TagPicture cover);
  void ShowPicture();

  catalogue::TagDraft& draft_;
  app::TagStation& tags_;
  Look look_;
  QLabel* picture_;
  QLabel* caption_;
  QPushButton* mark_;
  QPushButton* remove_;
  std::string shown_;  ///< bytes that the pixmap was made of
  QPixmap pixmap_;
};

}  // namespace ui
