// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/TagsPanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "app/settings/NameSettings.h"
#include "support/Settings.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

constexpr const char* kSection = "Tags";

}  // namespace

TagsPanel::TagsPanel(support::Settings& settings, const Look& look, QWidget* parent)
    : QWidget(parent), settings_(settings), look_(look) {
  auto* grid = new QGridLayout;
  SetSpacingEm(*grid, 0, 0.25);
  MakeOrder(*grid);
  MakeSeparator(*grid);
  grid->setColumnStretch(1, 3);
  grid->setColumnStretch(3, 1);
  use_split_ = MakeFlag("UseSplit", ScanWord::UseSplit, ScanWord::UseSplitTip);
  use_artist_ = MakeFlag("UseArtist", ScanWord::UseArtist, ScanWord::UseArtistTip);
  QCheckBox* write = MakeFlag("Write", ScanWord::WriteTags, ScanWord::WriteTagsTip);
  grid->addWidget(use_split_, 1, 0, 1, 2);
  grid->addWidget(use_artist_, 1, 2, 1, 2);
  example_ = new QLabel;
  example_->setWordWrap(true);
  SetTextColour(*example_, look.skin.dim);
  Name(*example_, "NameExample");
  FillColumn(*this, 0, 0.15, {Heading(look.say(ScanWord::FileNames)), grid, example_, write});
  ShowExample();
}

void TagsPanel::MakeOrder(QGridLayout& grid) {
  const auto& say = look_.say;
  order_ = Choice(look_.skin, "FileFormat", say.Of(ScanWord::NameOrder),
                  {say(ScanWord::ArtistFirst), say(ScanWord::TitleFirst)},
                  settings_.Number(kSection, "FileFormat") == 1 ? 1 : 0, [this](int order) {
                    settings_.SetNumber(kSection, "FileFormat", order);
                    ShowExample();
                  });
  grid.addWidget(Caption(say(ScanWord::NameOrder), look_.skin.dim), 0, 0);
  grid.addWidget(order_, 0, 1);
}

void TagsPanel::MakeSeparator(QGridLayout& grid) {
  const auto& say = look_.say;
  constexpr int kLongest = 8;
  separator_ = new QLineEdit(Decode(settings_.Text(kSection, "SplitCharacter")));
  separator_->setMaxLength(kLongest);
  Name(*separator_, "SplitCharacter", say.Of(ScanWord::SplitAt));
  connect(separator_, &QLineEdit::textEdited, this, [this](const QString& text) {
    settings_.SetText(kSection, "SplitCharacter", text.toStdString());
    ShowExample();
  });
  grid.addWidget(Caption(say(ScanWord::SplitAt), look_.skin.dim), 0, 2);
  grid.addWidget(separator_, 0, 3);
}

QCheckBox* TagsPanel::MakeFlag(const char* key, ScanWord caption, ScanWord tip) {
  auto* flag = Check(key, {look_.say(caption), look_.say(caption), look_.say(tip)},
                     settings_.Flag(kSection, key), [this, key](bool on) {
                       settings_.SetText(kSection, key, on ? "True" : "False");
                       ShowExample();
                     });
  return flag;
}

void TagsPanel::ShowExample() {
  const auto& say = look_.say;
  const std::string file = say(ScanWord::ExampleFile).toStdString();
  const catalogue::NamesOfFile names = catalogue::SplitName(file, app::ReadNameRule(settings_));
  const QString title = Decode(names.title), artist = Decode(names.artist);
  SetText(*example_, artist.isEmpty() ? say(ScanWord::ExampleTitleOnly).arg(Decode(file), title)
                                      : say(ScanWord::Example).arg(Decode(file), artist, title));
  const bool splits = use_split_->isChecked();
  for (QWidget* control : {static_cast<QWidget*>(order_), static_cast<QWidget*>(separator_),
                           static_cast<QWidget*>(use_artist_)}) {
    control->setEnabled(splits);
  }
}

}  // namespace ui
