// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/Dialogs.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>
#include <utility>

#include "ui/strings/FileWords.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr double kIconEms = 1.4;

void DressButtons(QDialog& dialog, const QWidget& window) {
  for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
    button->setIcon({});
    SetKind(*button, "plain");
    button->style()->polish(button);  // it had its looks already
  }
  const QSize icons(Em(window, kIconEms), Em(window, kIconEms));
  for (QToolButton* button : dialog.findChildren<QToolButton*>()) button->setIconSize(icons);
  for (QComboBox* combo : dialog.findChildren<QComboBox*>()) combo->setIconSize(icons);
  for (QAbstractItemView* view : dialog.findChildren<QAbstractItemView*>()) view->setIconSize(icons);
}

/// The style sheet leaves them out.
void AddArrows(QFileDialog& dialog) {
  for (QComboBox* combo : dialog.findChildren<QComboBox*>()) {
    auto* arrow = new QLabel(QStringLiteral("▾"));
    arrow->setAttribute(Qt::WA_TransparentForMouseEvents);
    FillRow(*combo, 0.4, 0, {Part::Room(), arrow});
  }
}

/// Names and sizes are enough to find a file by.
void DressFileList(QFileDialog& dialog) {
  if (auto* parts = dialog.findChild<QSplitter*>()) parts->setSizes({Em(dialog, 12), Em(dialog, 48)});
  auto* list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
  if (list == nullptr) return;
  QHeaderView& head = *list->header();
  for (int column = 1; column < head.count(); ++column) head.setSectionHidden(column, column != 1);
  head.setStretchLastSection(false);
  head.setSectionResizeMode(0, QHeaderView::Stretch);
  head.setSectionResizeMode(1, QHeaderView::ResizeToContents);
}

}  // namespace

QFileDialog* MakeFileDialog(QWidget& owner, const Look& look, QFileDialog::FileMode mode,
                            const QString& title, const QString& accept) {
  const auto& say = look.say;
  auto* dialog = new QFileDialog(&owner, title);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setOption(QFileDialog::DontUseNativeDialog);
  dialog->setOption(QFileDialog::ShowDirsOnly, mode == QFileDialog::Directory);
  dialog->setFileMode(mode);
  dialog->setViewMode(QFileDialog::Detail);
  dialog->setLabelText(QFileDialog::Accept, accept);
  dialog->setLabelText(QFileDialog::Reject, say(Say::DialogCancel));
  dialog->setLabelText(QFileDialog::LookIn, say(Say::DialogLookIn));
  dialog->setLabelText(QFileDialog::FileName, say(Say::DialogName));
  dialog->setLabelText(QFileDialog::FileType, say(Say::DialogKind));
  for (const char* unused : {"newFolderButton", "listModeButton", "detailModeButton"}) {
    if (auto* button = dialog->findChild<QToolButton*>(QLatin1String(unused))) button->hide();
  }
  AddArrows(*dialog);
  SetSpacingEm(*dialog->layout(), 0.8, 0.6);
  return dialog;
}

QFileDialog* MakeAddDialog(QWidget& owner, const Look& look, const QString& kind, const QString& masks,
                           std::function<void(std::vector<std::string>)> chosen) {
  QFileDialog* dialog =
      MakeFileDialog(owner, look, QFileDialog::ExistingFiles, Say::AddFilesTitle, Say::DialogAdd);
  dialog->setNameFilters({kind + QStringLiteral(" (") + masks + QLatin1Char(')'),
                          look.say(Say::AllFiles) + QStringLiteral(" (*)")});
  QObject::connect(dialog, &QFileDialog::filesSelected, &owner,
                   [chosen = std::move(chosen)](const QStringList& names) {
                     std::vector<std::string> paths;
                     for (const QString& name : names) paths.push_back(QFile::encodeName(name).toStdString());
                     chosen(std::move(paths));
                   });
  return dialog;
}

QString MasksText(catalogue::ScanMode mode) {
  QStringList masks;
  for (const std::string_view mask : catalogue::PlayableMasks(mode)) {
    masks += QLatin1String(mask.data(), static_cast<qsizetype>(mask.size()));
  }
  return masks.join(QLatin1Char(' '));
}

QString LeftOutText(const app::IntakeOutcome& outcome, const Strings& say) {
  return say.Count(Say::LeftOut, outcome.left_out);
}

QFileDialog* MakeAddFolderDialog(QWidget& owner, const Look& look,
                                 std::function<void(std::vector<std::string>)> chosen) {
  QFileDialog* dialog = MakeFileDialog(owner, look, QFileDialog::Directory,
                                       look.say(FileWord::AddFolderTitle), look.say(Say::DialogAdd));
  QObject::connect(
      dialog, &QFileDialog::fileSelected, &owner,
      [chosen = std::move(chosen)](const QString& name) { chosen({QFile::encodeName(name).toStdString()}); });
  return dialog;
}

void ShowDialog(QDialog& dialog, const QWidget& owner) {
  const QWidget& window = *owner.window();
  DressButtons(dialog, window);  // before the sizes: what is polished takes the font of the program again
  ApplyBaseSize(dialog, window.font().pointSizeF());
  if (auto* files = qobject_cast<QFileDialog*>(&dialog)) {
    DressFileList(*files);
    files->resize(Em(window, 60), Em(window, 32));
  } else {
    dialog.adjustSize();
  }
  const int left = (window.width() - dialog.width()) / 2;
  const int top = std::max(0, window.height() - dialog.height() - Em(window, 4));
  dialog.move(window.mapToGlobal(QPoint(left, top)));
  dialog.show();
}

void BeginBeside(QFileDialog& dialog, std::string_view file) {
  if (file.empty()) return;
  const QByteArray path(file.data(), static_cast<qsizetype>(file.size()));
  const QDir folder = QFileInfo(QFile::decodeName(path)).dir();
  if (folder.exists()) dialog.setDirectory(folder);
}

}  // namespace ui
