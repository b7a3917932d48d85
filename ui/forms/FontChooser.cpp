// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/FontChooser.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>

#include "ui/strings/SongWords.h"

namespace ui {

FontChooser::FontChooser(const Choice& present, const Look& look, QWidget* parent) : QDialog(parent) {
  const auto& say = look.say;
  setObjectName(QStringLiteral("FontDialog"));
  setWindowTitle(say(SongWord::LyricFont));
  setAttribute(Qt::WA_DeleteOnClose);
  families_ = new QListWidget;
  Name(*families_, QStringLiteral("FontFamilies"), say(SongWord::LyricFont), say(SongWord::LyricFontTip));
  for (const QString& family : QFontDatabase::families()) {
    if (!QFontDatabase::isPrivateFamily(family)) families_->addItem(family);
  }
  const auto found = families_->findItems(present.family, Qt::MatchFixedString);
  if (found.isEmpty()) families_->insertItem(0, present.family);
  families_->setCurrentItem(found.isEmpty() ? families_->item(0) : found.front());
  const auto box = [&](const char* name, SongWord caption, bool on) {
    auto* made = new QCheckBox(say(caption));
    Name(*made, QLatin1String(name), say(caption), say(caption));
    made->setChecked(on);
    connect(made, &QCheckBox::toggled, this, &FontChooser::Tell);
    return made;
  };
  bold_ = box("FontBold", SongWord::FontBold, present.bold);
  italic_ = box("FontItalic", SongWord::FontItalic, present.italic);
  connect(families_, &QListWidget::currentRowChanged, this, &FontChooser::Tell);
  auto* leave = new QPushButton(say(Say::Close));
  SetKind(*leave, "plain");
  Name(*leave, QStringLiteral("FontClose"), say(Say::Close), say(Say::Close));
  connect(leave, &QPushButton::clicked, this, &QDialog::close);
  auto* boxes = new QHBoxLayout;
  SetSpacingEm(*boxes, 0, 0.8);
  boxes->addWidget(bold_);
  boxes->addWidget(italic_);
  boxes->addStretch(1);
  boxes->addWidget(leave);
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0.8, 0.6);
  rows->addWidget(families_, 1);
  rows->addLayout(boxes);
}

void FontChooser::Tell() {
  const QListWidgetItem* family = families_->currentItem();
  if (family != nullptr) Q_EMIT Chosen({family->text(), bold_->isChecked(), italic_->isChecked()});
}

}  // namespace ui
