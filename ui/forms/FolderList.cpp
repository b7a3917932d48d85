// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/FolderList.h"

#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/settings/FolderSettings.h"
#include "support/Settings.h"
#include "ui/forms/Dialogs.h"
#include "ui/strings/Decode.h"
#include "ui/strings/ScanWords.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr double kFolderListEms = 5.5;

}  // namespace

FolderList::FolderList(support::Settings& settings, const Look& look, QWidget* parent)
    : QWidget(parent), settings_(settings), look_(look) {
  const auto& say = look.say;
  list_ = new QListWidget;
  Name(*list_, "MoreFolders", say.Of(ScanWord::MoreFolders));
  SetHeightEm(*list_, kFolderListEms);
  list_->setTextElideMode(Qt::ElideMiddle);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* buttons = new QHBoxLayout;
  SetSpacingEm(*buttons, 0, 0.6);
  const auto make = [&](const char* name, ScanWord caption, ScanWord tip) {
    auto* button = PlainButton(name, {say(caption), say(caption), say(tip)});
    buttons->addWidget(button);
    return button;
  };
  auto* add = make("AddFolder", ScanWord::AddFolder, ScanWord::AddFolderTip);
  remove_ = make("RemoveFolder", ScanWord::RemoveFolder, ScanWord::RemoveFolderTip);
  buttons->addStretch(1);
  connect(add, &QPushButton::clicked, this, &FolderList::AskForFolder);
  connect(remove_, &QPushButton::clicked, this, &FolderList::RemoveChosen);
  connect(list_, &QListWidget::itemSelectionChanged, this,
          [this] { remove_->setEnabled(!list_->selectedItems().isEmpty()); });
  FillColumn(*this, 0, 0.3, {Caption(say(ScanWord::MoreFolders), look.skin.dim), list_, buttons});
  Fill(app::OtherFolders(settings));
}

void FolderList::Fill(const std::vector<std::string>& folders) {
  list_->clear();
  for (const std::string& folder : folders) {
    auto* item = new QListWidgetItem(Decode(folder), list_);
    item->setData(Qt::UserRole, QByteArray::fromStdString(folder));  // which need not be text
    item->setToolTip(item->text());
  }
  remove_->setEnabled(false);
}

std::vector<std::string> FolderList::Folders() const {
  std::vector<std::string> folders;
  for (int row = 0; row < list_->count(); ++row) {
    folders.push_back(list_->item(row)->data(Qt::UserRole).toByteArray().toStdString());
  }
  return folders;
}

// Not modal: the decks stay in reach while somebody looks for a folder.
void FolderList::AskForFolder() {
  delete dialog_;
  dialog_ = MakeFileDialog(*this, look_, QFileDialog::Directory, Say::ChooseDirectory, Say::DialogChoose);
  dialog_->setObjectName(QStringLiteral("MoreFoldersDialog"));
  connect(dialog_, &QFileDialog::fileSelected, this,
          [this](const QString& name) { Add(QFile::encodeName(name).toStdString()); });
  ShowDialog(*dialog_, *this);
}

void FolderList::Add(const std::string& folder) {
  if (folder.empty()) return;
  std::vector<std::string> folders = Folders();
  folders.push_back(folder);
  Store(folders);
}

void FolderList::RemoveChosen() {
  std::vector<std::string> folders = Folders();
  if (list_->currentRow() < 0) return;
  folders.erase(folders.begin() + list_->currentRow());
  Store(folders);
}

void FolderList::Store(const std::vector<std::string>& folders) {
  app::StoreOtherFolders(settings_, folders);
  Fill(app::OtherFolders(settings_));
}

}  // namespace ui
