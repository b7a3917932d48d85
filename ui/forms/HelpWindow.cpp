// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/HelpWindow.h"

#include <QFileInfo>
#include <QShortcut>
#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>

#include "ui/widgets/Look.h"

namespace ui {
namespace {

QString FileName(const std::filesystem::path& path) {
  return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

}  // namespace

void HelpWindow::Open(const std::filesystem::path& file, const std::string& topic) {
  QString page = FileName(file.parent_path() / (*say_)(Say::HelpFolder).toStdString() / topic);
  if (!QFileInfo::exists(page)) page = FileName(file.parent_path() / topic);
  if (viewer_.isNull()) viewer_ = MakeViewer();
  viewer_->setWindowTitle((*say_)(Say::HelpCaption));
  if (QFileInfo::exists(page)) {
    viewer_->setSource(QUrl::fromLocalFile(page));
  } else {
    viewer_->setPlainText((*say_)(Say::HelpMissing).arg(page));
  }
  viewer_->show();
  viewer_->raise();
  viewer_->activateWindow();
}

void HelpWindow::Close() {
  delete viewer_;
}

QTextBrowser* HelpWindow::MakeViewer() {
  auto* viewer = new QTextBrowser(&owner_);
  viewer->setWindowFlag(Qt::Window);
  viewer->setAttribute(Qt::WA_DeleteOnClose);
  viewer->setOpenExternalLinks(false);
  ApplyBaseSize(*viewer, owner_.font().pointSizeF());
  viewer->document()->setDocumentMargin(Em(owner_, 2));
  viewer->resize(Em(owner_, 56), Em(owner_, 48));
  Name(*viewer, "Manual", (*say_)(Say::HelpCaption), (*say_)(Say::HelpTip));
  auto* close = new QShortcut(QKeySequence(Qt::Key_Escape), viewer);
  QObject::connect(close, &QShortcut::activated, viewer, &QWidget::close);
  return viewer;
}

}  // namespace ui
