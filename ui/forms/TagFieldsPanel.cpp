// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/TagFieldsPanel.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpressionValidator>
#include <utility>

#include "ui/models/TagFilesModel.h"
#include "ui/strings/Decode.h"
#include "ui/strings/TagWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

using catalogue::TagField;

/// A few that a party needs; any other can be typed. Genres are not translated in tags.
constexpr const char* kGenres[] = {
    "",       "Acoustic",   "Blues",    "Children", "Christmas",  "Classical", "Country", "Dance",
    "Disco",  "Electronic", "Folk",     "Funk",     "Hip-Hop",    "House",     "Jazz",    "Karaoke",
    "Latin",  "Levenslied", "Metal",    "Oldies",   "Pop",        "Punk",      "R&B",     "Rap",
    "Reggae", "Rock",       "Schlager", "Soul",     "Soundtrack", "Swing",     "Techno",  "Trance"};

const char* ObjectNameOf(TagField field) {
  constexpr const char* kNames[catalogue::kTagFields] = {"TagArtist",  "TagTitle", "TagAlbum",
                                                         "TagGenre",   "TagYear",  "TagTrack",
                                                         "TagComment", "TagKey",   "TagBpm"};
  return kNames[static_cast<std::size_t>(field)];
}

const char* PatternOf(TagField field) {
  switch (field) {
    case TagField::Year:
      return "[0-9]{0,4}";
    case TagField::Track:
      return "[0-9]{0,4}(/[0-9]{0,4})?";
    case TagField::Bpm:
      return "[0-9]{0,3}([.][0-9]{0,2})?";
    default:
      return nullptr;
  }
}

Texts TextsOf(TagField field, const Strings& say) {
  constexpr TagWord kWords[catalogue::kTagFields] = {
      TagWord::TagArtist, TagWord::TagTitle,   TagWord::TagAlbum, TagWord::TagGenre, TagWord::TagYear,
      TagWord::TagTrack,  TagWord::TagComment, TagWord::TagKey,   TagWord::TagBpm};
  return say.Of(kWords[static_cast<std::size_t>(field)]);
}

}  // namespace

TagFieldsPanel::TagFieldsPanel(catalogue::TagDraft& draft, const Look& look, QWidget* parent)
    : QWidget(parent), draft_(draft), look_(look) {
  auto* grid = new QGridLayout(this);
  SetSpacingEm(*grid, 0, 0.4);
  grid->setColumnStretch(1, 1);
  constexpr TagField kOrder[] = {TagField::Artist, TagField::Title, TagField::Album,
                                 TagField::Genre,  TagField::Year,  TagField::Track,
                                 TagField::Key,    TagField::Bpm,   TagField::Comment};
  for (const TagField field : kOrder) MakeLine(*grid, field);
}

void TagFieldsPanel::MakeLine(QGridLayout& grid, TagField field) {
  Line& made = lines_[static_cast<std::size_t>(field)];
  const Texts texts = TextsOf(field, look_.say);
  const int row = grid.rowCount();
  QWidget* edit = MakeEdit(field, made);
  Name(*edit, ObjectNameOf(field), texts);
  QLabel* caption = Caption(texts.caption, look_.skin.dim);
  caption->setBuddy(edit);
  const QString tip = look_.say(TagWord::TouchedTip).arg(texts.caption);
  made.mark = ToolButton(QString::fromLatin1(ObjectNameOf(field)) + QStringLiteral("Mark"),
                         {QStringLiteral("↶"), tip, tip}, [this, field] {
                           draft_.Revert(field);
                           ShowAll();
                           Q_EMIT Touched();
                         });
  QSizePolicy place = made.mark->sizePolicy();
  place.setRetainSizeWhenHidden(true);
  made.mark->setSizePolicy(place);
  grid.addWidget(caption, row, 0);
  grid.addWidget(edit, row, 1);
  grid.addWidget(made.mark, row, 2, Qt::AlignTop);
}

QWidget* TagFieldsPanel::MakeEdit(TagField field, Line& made) {
  if (field == TagField::Comment) {
    made.text = new QPlainTextEdit;
    made.text->setTabChangesFocus(true);
    SetHeightEm(*made.text, 5);
    connect(made.text, &QPlainTextEdit::textChanged, this, [this, text = made.text] {
      if (!showing_) Type(TagField::Comment, text->toPlainText());
    });
    return made.text;
  }
  if (field == TagField::Genre) {
    auto* list = new QuietCombo(look_.skin);
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    for (const char* genre : kGenres) list->addItem(QString::fromLatin1(genre));
    made.line = list->lineEdit();
    connect(list, &QComboBox::textActivated, this,
            [this](const QString& text) { Type(TagField::Genre, text); });
    connect(made.line, &QLineEdit::textEdited, this,
            [this](const QString& text) { Type(TagField::Genre, text); });
    return list;
  }
  made.line = new QLineEdit;
  if (const char* pattern = PatternOf(field)) {
    made.line->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QString::fromLatin1(pattern)), made.line));
  }
  connect(made.line, &QLineEdit::textEdited, this, [this, field](const QString& text) { Type(field, text); });
  return made.line;
}

void TagFieldsPanel::Type(TagField field, const QString& text) {
  draft_.SetAll(field, text.toStdString());
  lines_[static_cast<std::size_t>(field)].mark->setVisible(draft_.All(field).touched);
  Q_EMIT Touched();
}

void TagFieldsPanel::Show() {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const Line& made = lines_[i];
    const bool typing = made.line != nullptr ? made.line->hasFocus() : made.text->hasFocus();
    if (!typing) ShowLine(i);
  }
}

void TagFieldsPanel::ShowAll() {
  for (std::size_t i = 0; i < lines_.size(); ++i) ShowLine(i);
}

void TagFieldsPanel::ShowLine(std::size_t field) {
  const Line& made = lines_[field];
  const auto all = draft_.All(static_cast<TagField>(field));
  const QString text = all.differs ? QString() : Decode(all.text);
  const QString hint = all.differs ? look_.say(TagWord::Differs) : QString();
  showing_ = true;
  if (made.line != nullptr) {
    // What was typed before a writing is not what Ctrl+Z takes back after it.
    if (made.line->text() != text || made.line->isUndoAvailable()) made.line->setText(text);
    made.line->setPlaceholderText(hint);
  } else {
    const bool typed = made.text->document()->isUndoAvailable();
    if (made.text->toPlainText() != text || typed) made.text->setPlainText(text);
    made.text->setPlaceholderText(hint);
  }
  showing_ = false;
  made.mark->setVisible(all.touched);
}

}  // namespace ui
