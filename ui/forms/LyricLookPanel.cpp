// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/LyricLookPanel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/settings/Settings.h"
#include "app/songs/SongStation.h"
#include "ui/forms/ColourChooser.h"
#include "ui/forms/Dialogs.h"
#include "ui/forms/FontChooser.h"
#include "ui/strings/Decode.h"
#include "ui/strings/LyricWords.h"
#include "ui/widgets/ColourButton.h"
#include "ui/widgets/QtDrawing.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {

LyricLookPanel::LyricLookPanel(app::SongStation& songs, app::Settings& settings, const Look& look,
                               QWidget* parent)
    : QWidget(parent), songs_(songs), settings_(settings), look_(look) {
  Name(*this, QStringLiteral("LyricLook"), look.say(SongWord::LookPart));
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
    Name(*button, QLatin1String(field.key), look_.say(field.caption), look_.say(SongWord::LyricColourTip));
    connect(button, &QAbstractButton::clicked, this,
            [this, button, key = std::string(field.key)] { AskForColour(*button, key); });
    grid->addWidget(MakeCaption(look_.say(field.caption)), place / 2, place % 2 * 2);
    grid->addWidget(button, place / 2, place % 2 * 2 + 1);
    ++place;
  }
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  return grid;
}

QPushButton* LyricLookPanel::MakeButton(const char* name, SongWord caption, SongWord tip) {
  auto* button = new QPushButton(look_.say(caption));
  SetKind(*button, "plain");
  Name(*button, QLatin1String(name), look_.say(caption), look_.say(tip));
  return button;
}

QLabel* LyricLookPanel::MakeCaption(const QString& text) {
  auto* label = new QLabel(text);
  SetTextColour(*label, look_.skin.dim);
  return label;
}

QuietCombo* LyricLookPanel::MakeChoice(const char* name, const QString& caption, const QString& tip,
                                       const QStringList& choices) {
  auto* list = new QuietCombo(look_.skin);
  list->addItems(choices);
  Name(*list, QLatin1String(name), caption, tip);
  return list;
}

QWidget* LyricLookPanel::MakeOwn() {
  font_ = MakeButton("LyricFont", SongWord::LyricFont, SongWord::LyricFontTip);
  connect(font_, &QPushButton::clicked, this, &LyricLookPanel::AskForFont);
  auto* ball = MakeButton("BouncingBall", SongWord::BouncingBall, SongWord::BouncingBallTip);
  connect(ball, &QPushButton::clicked, this, [this] {
    AskForPicture("BouncingBall", SongWord::BouncingBall, SongWord::BallFiles, QStringLiteral("*.ico *.gif"),
                  QStringLiteral("ico"));
  });
  auto* line = new QHBoxLayout;
  SetSpacingEm(*line, 0, 0.35);
  line->addWidget(MakeCaption(look_.say(SongWord::LyricFont)));
  line->addWidget(font_, 1);
  line->addWidget(ball);
  auto* own = new QWidget;
  auto* rows = new QVBoxLayout(own);
  SetSpacingEm(*rows, 0, 0.5);
  rows->addLayout(MakeColours());
  rows->addLayout(line);
  return own;
}

QGridLayout* LyricLookPanel::MakeRest() {
  const auto& say = look_.say;
  QuietCombo* chosen = MakeChoice("LyricLookChoice", say(LyricWord::Look), say(LyricWord::LookTip),
                                  {say(LyricWord::LookStage), say(LyricWord::LookOwn)});
  chosen->setCurrentIndex(settings_.Text("Karaoke", "Look") == "described" ? 1 : 0);
  connect(chosen, &QComboBox::activated, this, [this](int index) {
    UseOwn(index == 1);
    Store("Look", index == 1 ? "described" : "stage");
  });
  QuietCombo* style = MakeChoice("SungStyle", say(SongWord::SungStyle), say(SongWord::SungStyleTip),
                                 {say(SongWord::SungSweep), say(SongWord::SungWord)});
  style->setCurrentIndex(settings_.Number("Karaoke", "Style") == 1 ? 1 : 0);
  connect(style, &QComboBox::activated, this, [this](int index) { Store("Style", std::to_string(index)); });
  auto* picture = MakeButton("BackPicture", SongWord::BackPicture, SongWord::BackPictureTip);
  connect(picture, &QPushButton::clicked, this, [this] {
    AskForPicture("Picture", SongWord::BackPicture, SongWord::PictureFiles,
                  QStringLiteral("*.png *.jpg *.jpeg *.bmp *.gif"), {});
  });
  no_picture_ = MakeButton("NoPicture", SongWord::PictureNone, SongWord::PictureNoneTip);
  connect(no_picture_, &QPushButton::clicked, this, [this] { Store("Picture", ""); });
  auto* grid = new QGridLayout;
  SetSpacingEm(*grid, 0, 0.35);
  grid->addWidget(MakeCaption(say(LyricWord::Look)), 0, 0);
  grid->addWidget(chosen, 0, 1, 1, 2);
  grid->addWidget(MakeCaption(say(SongWord::SungStyle)), 1, 0);
  grid->addWidget(style, 1, 1, 1, 2);
  grid->addWidget(MakeCaption(say(SongWord::BackGround)), 2, 0);
  grid->addWidget(picture, 2, 1);
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
