// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/LyricLookPanel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/songs/SongStation.h"
#include "support/Settings.h"
#include "ui/forms/ColourChooser.h"
#include "ui/forms/Dialogs.h"
#include "ui/forms/FontChooser.h"
#include "ui/strings/Decode.h"
#include "ui/strings/LyricWords.h"
#include "ui/widgets/ColourButton.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QtDrawing.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {

LyricLookPanel::LyricLookPanel(app::SongStation& songs, support::Settings& settings, const Look& look,
                               QWidget* parent)
    : QWidget(parent), songs_(songs), settings_(settings), look_(look) {
  Name(*this, "LyricLook", look.say(SongWord::LookPart));
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0, 0.5);
  rows->addLayout(MakeRest());
  own_ = MakeOwn();
  rows->addWidget(own_);
  rows->addStretch(1);
  UseOwn(settings_.Text("Karaoke", "Look") == "described");
  ShowNames();
}

void LyricLookPanel::UseOwn(bool own) {
  own_->setVisible(own);
}

QGridLayout* LyricLookPanel::MakeColours() {
  // The settings' own reader: without a stored background it is white, where the displays are black.
  const karaoke::LyricLook present = songs_.Look(karaoke::LookReader::SettingsPage);
  const struct {
    const char* key;
    SongWord caption;
    karaoke::Colour colour;
  } kFields[] = {{"CurrentText", SongWord::CurrentText, present.fill[0]},
                 {"CurrentWord", SongWord::CurrentWord, present.fill[1]},
                 {"NextText", SongWord::NextText, present.fill[2]},
                 {"Outline", SongWord::Outline, present.outline},
                 {"BackGround", SongWord::BackGround, present.background}};
  auto* grid = new QGridLayout;
  SetSpacingEm(*grid, 0, 0.35);
  int place = 0;
  for (const auto& field : kFields) {
    auto* button = new ColourButton({}, look_.skin);
    button->SetColour(ColourOf(field.colour));
    Name(*button, field.key, look_.say(field.caption), look_.say(SongWord::LyricColourTip));
    connect(button, &QAbstractButton::clicked, this,
            [this, button, key = std::string(field.key)] { AskForColour(*button, key); });
    grid->addWidget(Caption(look_.say(field.caption), look_.skin.dim), place / 2, place % 2 * 2);
    grid->addWidget(button, place / 2, place % 2 * 2 + 1);
    ++place;
  }
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  return grid;
}

QWidget* LyricLookPanel::MakeOwn() {
  font_ = PlainButton("LyricFont", look_.say.Of(SongWord::LyricFont), [this] { AskForFont(); });
  auto* own = new QWidget;
  FillColumn(
      *own, 0, 0.5,
      {MakeColours(), Row(0.35, {Caption(look_.say(SongWord::LyricFont), look_.skin.dim),
                                 {font_, 1},
                                 PlainButton("BouncingBall", look_.say.Of(SongWord::BouncingBall), [this] {
                                   AskForPicture("BouncingBall", SongWord::BouncingBall, SongWord::BallFiles,
                                                 QStringLiteral("*.ico *.gif"), QStringLiteral("ico"));
                                 })})});
  return own;
}

QGridLayout* LyricLookPanel::MakeRest() {
  const auto& say = look_.say;
  auto* chosen = Choice(look_.skin, "LyricLookChoice", say.Of(LyricWord::Look),
                        {say(LyricWord::LookStage), say(LyricWord::LookOwn)},
                        settings_.Text("Karaoke", "Look") == "described" ? 1 : 0, [this](int index) {
                          UseOwn(index == 1);
                          Store("Look", index == 1 ? "described" : "stage");
                        });
  no_picture_ =
      PlainButton("NoPicture", look_.say.Of(SongWord::PictureNone), [this] { Store("Picture", ""); });
  auto* grid = new QGridLayout;
  SetSpacingEm(*grid, 0, 0.35);
  grid->addWidget(Caption(say(LyricWord::Look), look_.skin.dim), 0, 0);
  grid->addWidget(chosen, 0, 1, 1, 2);
  grid->addWidget(Caption(say(SongWord::SungStyle), look_.skin.dim), 1, 0);
  grid->addWidget(Choice(look_.skin, "SungStyle", say.Of(SongWord::SungStyle),
                         {say(SongWord::SungSweep), say(SongWord::SungWord)},
                         settings_.Number("Karaoke", "Style") == 1 ? 1 : 0,
                         [this](int index) { Store("Style", std::to_string(index)); }),
                  1, 1, 1, 2);
  grid->addWidget(Caption(say(SongWord::BackGround), look_.skin.dim), 2, 0);
  grid->addWidget(PlainButton("BackPicture", look_.say.Of(SongWord::BackPicture),
                              [this] {
                                AskForPicture("Picture", SongWord::BackPicture, SongWord::PictureFiles,
                                              QStringLiteral("*.png *.jpg *.jpeg *.bmp *.gif"), {});
                              }),
                  2, 1);
  grid->addWidget(no_picture_, 2, 2);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(2, 1);
  return grid;
}

void LyricLookPanel::Store(const std::string& key, const std::string& value) {
  settings_.SetText("Karaoke", key, value);
  ShowNames();
  Q_EMIT Changed();
}

void LyricLookPanel::ShowNames() {
  font_->setText(Decode(settings_.Text("Karaoke", "FontName")));
  no_picture_->setEnabled(!settings_.Text("Karaoke", "Picture").empty());
}

void LyricLookPanel::AskForColour(ColourButton& button, const std::string& key) {
  delete dialog_;
  auto* chooser = new ColourChooser(button.Colour(), look_, this);
  chooser->setWindowTitle(button.accessibleName());
  connect(chooser, &ColourChooser::Chosen, this, [this, &button, key](const QColor& colour) {
    button.SetColour(colour);
    Store(key, std::to_string(ColourFrom(colour)));
  });
  dialog_ = chooser;
  ShowDialog(*chooser, *this);
}

void LyricLookPanel::AskForFont() {
  delete dialog_;
  const karaoke::LyricLook present = songs_.Look(karaoke::LookReader::SettingsPage);
  auto* chooser =
      new FontChooser({Decode(present.font_name), present.font_bold, present.font_italic}, look_, this);
  connect(chooser, &FontChooser::Chosen, this, [this](const FontChooser::Choice& choice) {
    settings_.SetText("Karaoke", "FontName", choice.family.toStdString());
    settings_.SetFlag("Karaoke", "FontBold", choice.bold);
    settings_.SetFlag("Karaoke", "FontItalic", choice.italic);
    ShowNames();
    Q_EMIT Changed();
  });
  dialog_ = chooser;
  ShowDialog(*chooser, *this);
}

void LyricLookPanel::AskForPicture(const std::string& key, SongWord title, SongWord kind,
                                   const QString& masks, const QString& suffix) {
  delete dialog_;
  QFileDialog* dialog =
      MakeFileDialog(*window(), look_, QFileDialog::ExistingFile, Say::AddFilesTitle, Say::DialogChoose);
  dialog->setObjectName(QStringLiteral("PictureDialog"));
  dialog->setWindowTitle(look_.say(title));
  dialog->setNameFilter(QStringLiteral("%1 (%2)").arg(look_.say(kind), masks));
  dialog->setDefaultSuffix(suffix);
  connect(dialog, &QFileDialog::urlSelected, this,
          [this, key](const QUrl& url) { Store(key, PathBytes(url)); });
  dialog_ = dialog;
  ShowDialog(*dialog, *this);
}

}  // namespace ui
