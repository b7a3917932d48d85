// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/TagToolsPanel.h"

#include <QEvent>
#include <QLineEdit>

#include "catalogue/TagText.h"
#include "ui/strings/TagWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

using catalogue::LetterCase;
using catalogue::TagField;

constexpr TagField kRepaired[] = {TagField::Artist, TagField::Title, TagField::Album, TagField::Genre,
                                  TagField::Comment};

}  // namespace

TagToolsPanel::TagToolsPanel(catalogue::TagDraft& draft, TagFilesModel& files, const Look& look,
                             QWidget* parent)
    : QWidget(parent), draft_(draft), files_(files), look_(look) {
  const auto& say = look.say;
  from_ = MakePattern("FromNamePattern", TagWord::FromNamePattern, "%artist% - %title%");
  to_ = MakePattern("ToNamePattern", TagWord::ToNamePattern, "%artist% - %title%");
  auto* patterns = Row(0.4, {{from_, 1},
                             PlainButton("FromName", say.Of(TagWord::FromName), [this] { ReadNames(); }),
                             {to_, 1},
                             PlainButton("ToName", say.Of(TagWord::ToName), [this] {
                               ShowPreview(to_);
                               Q_EMIT RenameWanted();
                             })});
  FillColumn(*this, 0, 0.4, {patterns, MakeRepairs(), MakeReplacing()});
}

QLineEdit* TagToolsPanel::MakePattern(const char* name, TagWord word, const char* text) {
  auto* pattern = new QLineEdit(QString::fromLatin1(text));
  Name(*pattern, name, look_.say.Of(word));
  pattern->setPlaceholderText(look_.say(word));
  pattern->installEventFilter(this);
  connect(pattern, &QLineEdit::textEdited, this, [this, pattern] { ShowPreview(pattern); });
  return pattern;
}

QHBoxLayout* TagToolsPanel::MakeRepairs() {
  const auto& say = look_.say;
  QStringList fields{say(TagWord::AllTexts)};
  for (const TagField field : kRepaired) fields += WordOf(field, say);
  field_ = Choice(look_.skin, "RepairField", say.Of(TagWord::RepairField), fields);
  const auto letters = [this](const char* name, TagWord word, LetterCase wanted) {
    return ToolButton(name, look_.say.Of(word), [this, wanted] {
      Repair([wanted](std::string_view text) { return catalogue::InCase(text, wanted); });
    });
  };
  return Row(0.3, {field_, letters("CaseTitle", TagWord::CaseTitle, LetterCase::Title),
                   letters("CaseSentence", TagWord::CaseSentence, LetterCase::Sentence),
                   letters("CaseUpper", TagWord::CaseUpper, LetterCase::Upper),
                   letters("CaseLower", TagWord::CaseLower, LetterCase::Lower),
                   ToolButton("CleanSpaces", say.Of(TagWord::CleanSpaces),
                              [this] { Repair(catalogue::WithCleanSpaces); }),
                   Part::Room()});
}

QHBoxLayout* TagToolsPanel::MakeReplacing() {
  const auto& say = look_.say;
  find_ = new QLineEdit;
  Name(*find_, "FindText", say.Of(TagWord::FindText));
  find_->setPlaceholderText(say(TagWord::FindText));
  replace_ = new QLineEdit;
  Name(*replace_, "ReplaceText", say.Of(TagWord::ReplaceText));
  replace_->setPlaceholderText(say(TagWord::ReplaceText));
  return Row(0.4, {{find_, 1}, {replace_, 1}, ToolButton("ReplaceAll", say.Of(TagWord::ReplaceAll), [this] {
                     const std::string find = find_->text().toStdString(),
                                       by = replace_->text().toStdString();
                     Repair([&](std::string_view text) { return catalogue::Replaced(text, find, by); });
                   })});
}

bool TagToolsPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) ShowPreview(watched);
  return QWidget::eventFilter(watched, event);
}

void TagToolsPanel::ShowPreview(const QObject* pattern) {
  const bool reads = pattern == from_;
  files_.Show(reads ? TagFilesModel::Shows::ReadNames : TagFilesModel::Shows::NewNames,
              catalogue::NamePattern((reads ? from_ : to_)->text().toStdString()));
}

void TagToolsPanel::ShowChanges() {
  files_.Show(TagFilesModel::Shows::Changes, catalogue::NamePattern(""));
}

void TagToolsPanel::ReadNames() {
  const catalogue::NamePattern pattern(from_->text().toStdString());
  for (std::size_t i = 0; i < draft_.Size(); ++i) {
    const auto fields = pattern.Read(catalogue::BareName(draft_.At(i).path));
    if (!fields) continue;
    for (const auto& [field, text] : *fields) draft_.Set(i, field, text);
  }
  ShowChanges();
  Q_EMIT Touched();
}

std::vector<TagField> TagToolsPanel::ChosenFields() const {
  if (field_->currentIndex() > 0) return {kRepaired[field_->currentIndex() - 1]};
  return {std::begin(kRepaired), std::end(kRepaired)};
}

void TagToolsPanel::Repair(const std::function<std::string(std::string_view)>& change) {
  for (const TagField field : ChosenFields()) draft_.Change(field, change);
  ShowChanges();
  Q_EMIT Touched();
}

}  // namespace ui
