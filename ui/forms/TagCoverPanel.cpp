// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/TagCoverPanel.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QImage>
#include <QMimeData>
#include <QPointer>

#include "app/tags/TagStation.h"
#include "ui/forms/Dialogs.h"
#include "ui/strings/Decode.h"
#include "ui/strings/TagWords.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr int kJpegQuality = 92;

QImage ImageOf(const std::string& bytes) {
  return QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size()));
}

/// Of the two kinds that every player shows.
const char* KindOf(const std::string& bytes) {
  if (bytes.starts_with("\xFF\xD8\xFF")) return "image/jpeg";
  return bytes.starts_with("\x89PNG") ? "image/png" : nullptr;
}

}  // namespace

TagCoverPanel::TagCoverPanel(catalogue::TagDraft& draft, app::TagStation& tags, const Look& look,
                             QWidget* parent)
    : QWidget(parent), draft_(draft), tags_(tags), look_(look) {
  const auto& say = look.say;
  setAcceptDrops(true);
  picture_ = Reading("TagCover", Qt::AlignCenter);
  picture_->setToolTip(say.Tip(TagWord::TagCover));
  picture_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
  caption_ = Caption(say(TagWord::TagCover), look.skin.dim);
  const QString tip = say(TagWord::TouchedTip).arg(say(TagWord::TagCover));
  mark_ = ToolButton("TagCoverMark", {QStringLiteral("↶"), tip, tip}, [this] {
    draft_.RevertCover();
    Show();
    Q_EMIT Touched();
  });
  QSizePolicy place = mark_->sizePolicy();
  place.setRetainSizeWhenHidden(true);
  mark_->setSizePolicy(place);
  remove_ = PlainButton("CoverRemove", say.Of(TagWord::CoverRemove), [this] { Put({}); });
  auto* buttons = Column(0.3, {Row(0.3, {caption_, Part::Room(), mark_}),
                               PlainButton("CoverFile", say.Of(TagWord::CoverFile), [this] { AskForFile(); }),
                               PlainButton("CoverPaste", say.Of(TagWord::CoverPaste), [this] { Paste(); }),
                               remove_, Part::Room()});
  FillRow(*this, 0, 0.5, {{picture_, 1}, buttons});
}

void TagCoverPanel::Show() {
  remove_->setEnabled(!draft_.Cover().bytes.empty() || draft_.CoversDiffer());
  mark_->setVisible(draft_.CoverTouched());
  const std::string& bytes = draft_.Cover().bytes;
  if (shown_ != bytes || pixmap_.isNull()) {
    shown_ = bytes;
    pixmap_ = QPixmap::fromImage(ImageOf(bytes));
  }
  ShowPicture();
}

void TagCoverPanel::ShowPicture() {
  if (draft_.CoversDiffer()) return picture_->setText(look_.say(TagWord::CoverDiffers));
  if (pixmap_.isNull()) return picture_->setText(look_.say(TagWord::CoverNone));
  picture_->setPixmap(pixmap_.scaled(picture_->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void TagCoverPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ShowPicture();
}

void TagCoverPanel::AskForFile() {
  QFileDialog* dialog = MakeFileDialog(*window(), look_, QFileDialog::ExistingFile,
                                       look_.say(TagWord::TagCover), look_.say(TagWord::CoverFile));
  dialog->setObjectName(QStringLiteral("CoverDialog"));
  dialog->setNameFilter(QStringLiteral("JPEG, PNG (*.jpg *.jpeg *.png *.JPG *.JPEG *.PNG)"));
  connect(dialog, &QFileDialog::fileSelected, this,
          [this](const QString& name) { TakeFile(QFile::encodeName(name).toStdString()); });
  ShowDialog(*dialog, *window());
}

void TagCoverPanel::Paste() {
  const QMimeData* copied = QApplication::clipboard()->mimeData();
  if (copied == nullptr) return;
  if (copied->hasImage()) return Take(qvariant_cast<QImage>(copied->imageData()));
  for (const QUrl& url : copied->urls()) {
    if (url.isLocalFile()) return TakeFile(PathBytes(url));
  }
  Q_EMIT Refused(look_.say(TagWord::CoverNotRead));
}

void TagCoverPanel::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasImage() || event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void TagCoverPanel::dropEvent(QDropEvent* event) {
  const QMimeData& dropped = *event->mimeData();
  event->acceptProposedAction();
  if (dropped.hasUrls() && dropped.urls().front().isLocalFile())
    return TakeFile(PathBytes(dropped.urls().front()));
  if (dropped.hasImage()) Take(qvariant_cast<QImage>(dropped.imageData()));
}

void TagCoverPanel::TakeFile(const std::string& path) {
  tags_.ReadPicture(
      path, [panel = QPointer<TagCoverPanel>(this)](const std::string& bytes, const std::string& why) {
        if (panel.isNull()) return;
        if (!why.empty()) return Q_EMIT panel->Refused(Decode(why));
        panel->TakeBytes(bytes);
      });
}

/// What is in a file counts, not what it is called.
void TagCoverPanel::TakeBytes(const std::string& bytes) {
  const QImage image = ImageOf(bytes);
  const char* kind = KindOf(bytes);
  if (image.isNull() || kind == nullptr) return Take(image);
  Put({kind, bytes});
}

void TagCoverPanel::Take(const QImage& image) {
  if (image.isNull()) return Q_EMIT Refused(look_.say(TagWord::CoverNotRead));
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  const bool clear = image.hasAlphaChannel();
  if (!image.save(&buffer, clear ? "PNG" : "JPEG", clear ? -1 : kJpegQuality))
    return Q_EMIT Refused(look_.say(TagWord::CoverNotRead));
  Put({clear ? "image/png" : "image/jpeg", bytes.toStdString()});
}

void TagCoverPanel::Put(catalogue::TagPicture cover) {
  if (draft_.Size() == 0) return;
  draft_.SetCover(std::move(cover));
  Show();
  Q_EMIT Touched();
}

}  // namespace ui
