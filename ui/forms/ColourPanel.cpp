// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ColourPanel.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "support/Settings.h"
#include "ui/forms/ColourChooser.h"
#include "ui/forms/Dialogs.h"
#include "ui/models/ChannelText.h"
#include "ui/widgets/ColourButton.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

constexpr int kChannels = 32;
constexpr int kInARow = 8;

app::StoredColour Stored(const QColor& colour) {
  return app::StoredColour(colour.red()) | app::StoredColour(colour.green()) << 8 |
         app::StoredColour(colour.blue()) << 16;
}

}  // namespace

ColourPanel::ColourPanel(support::Settings& settings, const Look& look, QWidget* parent)
    : QWidget(parent), settings_(settings), look_(look) {
  const auto& say = look.say;
  size_ = new QuietCombo(look.skin);
  for (const int channels : {16, 32}) size_->addItem(say(Say::Channels).arg(channels), channels);
  Name(*size_, "ConsoleSize", say.Of(Say::ConsoleSize));
  connect(size_, &QComboBox::activated, this, [this] { ChangeSize(size_->currentData().toInt()); });
  auto* line = new QHBoxLayout;
  line->addWidget(Heading(say(Say::ChannelColours)), 1);
  line->addWidget(size_);
  grid_ = new QGridLayout;
  SetSpacingEm(*grid_, 0, 0.25);
  auto* kept = Sentence("ColoursKept", look.skin.dim);
  auto* keep = PlainButton("KeepColours", say.Of(Say::KeepColours), [this, kept] {
    Q_EMIT KeepWanted();
    kept->Show(look_.say(Say::ColoursKept));
  });
  FillColumn(*this, 0, 0.6, {line, grid_, Row(0.6, {keep, {kept, 1}}), Part::Room()});
  MakeButtons();
}

void ColourPanel::MakeButtons() {
  const auto colours = app::ReadColours(settings_);
  size_->setCurrentIndex(colours.size() > 16 ? 1 : 0);
  for (int channel = 1; channel <= kChannels; ++channel) {
    auto* button = new ColourButton(QString::number(channel), look_.skin);
    Name(*button, QStringLiteral("Color%1").arg(channel), look_.say(Say::ColourOf).arg(channel),
         look_.say(Say::ColourTip));
    connect(button, &QAbstractButton::clicked, this, [this, button] { AskForColour(*button); });
    grid_->addWidget(button, (channel - 1) / kInARow, (channel - 1) % kInARow);
    buttons_.push_back(button);
    const auto place = static_cast<std::size_t>(channel - 1);
    button->setVisible(place < colours.size());
    if (place < colours.size()) button->SetColour(ShownColour(colours[place]));
  }
}

void ColourPanel::ChangeSize(int channels) {
  settings_.SetNumber("Setup", "ConsoleSize", channels);
  const auto colours = app::ReadColours(settings_);
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    buttons_[i]->setVisible(i < colours.size());
    if (i < colours.size()) buttons_[i]->SetColour(ShownColour(colours[i]));
  }
}

std::vector<app::StoredColour> ColourPanel::Colours() const {
  std::vector<app::StoredColour> colours;
  for (const ColourButton* button : buttons_) {
    if (!button->isHidden()) colours.push_back(Stored(button->Colour()));
  }
  return colours;
}

void ColourPanel::AskForColour(ColourButton& button) {
  delete dialog_;
  auto* chooser = new ColourChooser(button.Colour(), look_, this);
  chooser->setWindowTitle(button.accessibleName());
  connect(chooser, &ColourChooser::Chosen, &button, &ColourButton::SetColour);
  dialog_ = chooser;
  ShowDialog(*chooser, *this);
}

}  // namespace ui
