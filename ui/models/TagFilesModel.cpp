// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/TagFilesModel.h"

#include <QStringList>

#include "ui/strings/Decode.h"
#include "ui/strings/TagWords.h"

namespace ui {
namespace {

using catalogue::PlannedName;
using catalogue::TagField;

QString FileName(const std::string& path) {
  return Decode(std::string_view(path).substr(path.find_last_of('/') + 1));
}

}  // namespace

QString WordOf(TagField field, const Strings& say) {
  constexpr TagWord kWords[catalogue::kTagFields] = {
      TagWord::TagArtist, TagWord::TagTitle,   TagWord::TagAlbum, TagWord::TagGenre, TagWord::TagYear,
      TagWord::TagTrack,  TagWord::TagComment, TagWord::TagKey,   TagWord::TagBpm};
  return say(kWords[static_cast<std::size_t>(field)]);
}

TagFilesModel::TagFilesModel(const catalogue::TagDraft& draft, const Look& look, QObject* parent)
    : QAbstractTableModel(parent), draft_(draft), look_(look) {}

void TagFilesModel::Show(Shows shows, const catalogue::NamePattern& pattern) {
  shows_ = shows;
  pattern_ = pattern;
  Q_EMIT headerDataChanged(Qt::Horizontal, 1, 1);
  Renew();
}

void TagFilesModel::Renew() {
  names_.clear();
  if (shows_ == Shows::NewNames) names_ = catalogue::PlanNames(draft_, pattern_);
  const int rows = static_cast<int>(draft_.Size());
  if (rows != rows_) {
    beginResetModel();
    rows_ = rows;
    endResetModel();
  } else if (rows > 0) {
    Q_EMIT dataChanged(index(0, 0), index(rows - 1, 1));
  }
}

int TagFilesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int TagFilesModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : 2;
}

QVariant TagFilesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  if (section == 0) return look_.say(TagWord::FileColumn);
  return look_.say(shows_ == Shows::Changes     ? TagWord::WillBe
                   : shows_ == Shows::ReadNames ? TagWord::WillRead
                                                : TagWord::WillName);
}

QVariant TagFilesModel::data(const QModelIndex& index, int role) const {
  const auto file = static_cast<std::size_t>(index.row());
  if (!index.isValid() || file >= draft_.Size()) return {};
  if (role == Qt::DisplayRole) return index.column() == 0 ? FileName(draft_.At(file).path) : Preview(file);
  if (role == Qt::ToolTipRole) return index.column() == 0 ? Decode(draft_.At(file).path) : Preview(file);
  if (role != Qt::ForegroundRole || index.column() == 0) return {};
  const bool warns =
      shows_ == Shows::NewNames && file < names_.size() && names_[file].state != PlannedName::State::Renamed;
  return warns ? look_.skin.warning : look_.skin.text;
}

QString TagFilesModel::Preview(std::size_t file) const {
  switch (shows_) {
    case Shows::ReadNames:
      return ReadName(file);
    case Shows::NewNames:
      return NewName(file);
    case Shows::Changes:
      break;
  }
  return Changes(file);
}

QString TagFilesModel::Changes(std::size_t file) const {
  QStringList changes;
  for (std::size_t i = 0; i < catalogue::kTagFields; ++i) {
    const auto field = static_cast<TagField>(i);
    if (!draft_.At(file).edit[field]) continue;
    changes +=
        WordOf(field, look_.say) + QStringLiteral(": ") + Decode(*draft_.At(file).edit[field]).simplified();
  }
  if (draft_.CoverTouched()) changes += look_.say(TagWord::TagCover);
  return changes.join(QStringLiteral(" · "));
}

QString TagFilesModel::ReadName(std::size_t file) const {
  const auto fields = pattern_.Read(catalogue::BareName(draft_.At(file).path));
  if (!fields) return look_.say(TagWord::NotLikeThat);
  QStringList read;
  for (const auto& [field, text] : *fields)
    read += WordOf(field, look_.say) + QStringLiteral(": ") + Decode(text);
  return read.join(QStringLiteral(" · "));
}

QString TagFilesModel::NewName(std::size_t file) const {
  if (file >= names_.size()) return {};
  const PlannedName& name = names_[file];
  if (name.state == PlannedName::State::Empty) return look_.say(TagWord::NameEmpty);
  if (name.state == PlannedName::State::Stays) return look_.say(TagWord::NameStays);
  const QString made = FileName(name.to);
  if (name.state == PlannedName::State::Taken)
    return made + QLatin1Char(' ') + look_.say(TagWord::NameTakenHere);
  return name.changed_signs ? made + QLatin1Char(' ') + look_.say(TagWord::NameMended) : made;
}

}  // namespace ui
