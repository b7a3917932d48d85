// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/FontChooser.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>

#include "ui/strings/SongWords.h"
#include "ui/widgets/Kit.h"

namespace ui {

FontChooser::FontChooser(const Choice& present, const Look& look, QWidget* parent) : QDialog(parent) {
  const auto& say = look.say;
  setObjectName(QStringLiteral("FontDialog"));
  setWindowTitle(say(SongWord::LyricFont));
  setAttribute(Qt::WA_DeleteOnClose);
  families_ = new QListWidget;
  Name(*families_, "FontFamilies", say.Of(SongWord::LyricFont));
  for (const QString& family : QFontDatabase::families()) {
    if (!QFontDatabase::isPrivateFamily(family)) families_->addItem(family);
  }
  const auto found = families_->findItems(present.family, Qt::MatchFixedString);
  if (found.isEmpty()) families_->insertItem(0, present.family);
  families_->setCurrentItem(found.isEmpty() ? families_->item(0) : found.front());
  const auto box = [&](const char* name, SongWord caption, bool on) {
    auto* made = new QCheckBox(say(caption));
    Name(*made, name, say(caption), say(caption));
    made->setChecked(on);
    connect(made, &QCheckBox::toggled, this, &FontChooser::Tell);
    return made;
  };
  bold_ = box("FontBold", SongWord::FontBold, present.bold);
  italic_ = box("FontItalic", SongWord::FontItalic, present.italic);
  connect(families_, &QListWidget::currentRowChanged, this, &FontChooser::Tell);
  FillColumn(*this, 0.8, 0.6,
             {{families_, 1},
              Row(0.8, {bold_, italic_, Part::Room(),
                        PlainButton("FontClose", {say(Say::Close), say(Say::Close), say(Say::Close)},
                                    [this] { close(); })})});
}

void FontChooser::Tell() {
  const QListWidgetItem* family = families_->currentItem();
  if (family != nullptr) Q_EMIT Chosen({family->text(), bold_->isChecked(), italic_->isChecked()});
}

}  // namespace ui
