// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ListButtons.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>

#include "ui/forms/Menus.h"
#include "ui/models/KeyMap.h"
#include "ui/strings/FileWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/TrackGrid.h"

namespace ui {

ListButtons::ListButtons(const QString& name, const Texts& texts, TrackGrid& grid, const Look& look)
    : QObject(&grid), name_(name), texts_(texts), grid_(grid), look_(look) {
  const auto& say = look.say;
  const QString arrow = QStringLiteral(" ▾");
  add_ = MakeButton(QStringLiteral("Add"), say(FileWord::Add) + arrow, texts.add_name, texts.add_tip);
  connect(add_, &QPushButton::clicked, this, &ListButtons::PopUpAdd);
  remove_ = MakeButton(QStringLiteral("Remove"), say(Say::RemoveRows) + arrow, say(FileWord::RemoveFromList),
                       say(FileWord::RemoveTip));
  connect(remove_, &QPushButton::clicked, this, &ListButtons::PopUpRemove);
}

QPushButton* ListButtons::MakeButton(const QString& name, const QString& caption, const QString& long_name,
                                     const QString& tip) {
  return PlainButton(name_ + name, {caption, long_name, tip});
}

void ListButtons::PutInto(QHBoxLayout& row) {
  row.addWidget(add_);
  row.addWidget(remove_);
}

QMenu* ListButtons::MakeMenu(const char* name) {
  return NewMenu(*add_, name_ + QLatin1String(name));
}

void ListButtons::PopUpAdd() {
  QMenu* menu = MakeMenu("AddMenu");
  menu->addAction(look_.say(Say::AddFiles), this, &ListButtons::FilesWanted)
      ->setObjectName(name_ + QStringLiteral("AddFiles"));
  menu->addAction(look_.say(FileWord::AddFolder), this, &ListButtons::FolderWanted)
      ->setObjectName(name_ + QStringLiteral("AddFolder"));
  menu->popup(add_->mapToGlobal(QPoint(0, add_->height())));
}

void ListButtons::PopUpRemove() {
  QMenu* menu = MakeMenu("RemoveMenu");
  FillRemove(*menu);
  menu->popup(remove_->mapToGlobal(QPoint(0, remove_->height())));
}

void ListButtons::FillRemove(QMenu& menu) {
  const auto& say = look_.say;
  const bool chosen = grid_.selectionModel()->hasSelection();
  const auto add = [&](const char* name, const QString& text, const QKeySequence& key, auto wanted) {
    return AddAct(menu, name_ + QLatin1String(name), text, key, [this, wanted] { (this->*wanted)(); });
  };
  add("RemoveRows", say(FileWord::RemoveFromList), Qt::Key_Delete, &ListButtons::RemoveWanted)
      ->setEnabled(chosen);
  add("BringBack", say(FileWord::BringBack), KeyOfUndo(), &ListButtons::BringBackWanted);
  menu.addSeparator();
  QAction* gone = add("DeleteFiles", say(FileWord::DeleteFromDisk), {}, &ListButtons::DeleteWanted);
  gone->setEnabled(chosen);
  gone->setToolTip(texts_.delete_name);
}

}  // namespace ui
