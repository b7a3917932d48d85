// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ChannelColumn.h"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "dmx/ports/DmxInterface.h"
#include "ui/strings/Decode.h"
#include "ui/strings/EditorWords.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/LightIcons.h"

namespace ui {
namespace {

constexpr double kFunctionEms = 1.5;

QString FunctionName(dmx::ChannelFunction function) {
  return Decode(dmx::FunctionText(function));
}

}  // namespace

ChannelColumn::ChannelColumn(const Look& look, QWidget* parent) : QWidget(parent), look_(look) {
  head_ = new QPushButton;
  SetKind(*head_, "lamp1");
  head_->setCheckable(true);
  connect(head_, &QPushButton::clicked, this, [this] { Q_EMIT Chosen(number_); });
  counter_ = new QLabel;
  counter_->setAlignment(Qt::AlignCenter);
  SetTextColour(*counter_, look.skin.dim);
  MakeSlider();
  MakeFunction();
  MakeLabel();
  FillColumn(*this, 0.2, 0.2, {head_, counter_, {slider_, 1, Qt::AlignHCenter}, level_, function_, label_});
}

void ChannelColumn::SetNumber(int number) {
  if (number == number_) return;
  number_ = number;
  setObjectName(QStringLiteral("Channel%1").arg(number));
  const struct {
    QWidget* widget;
    const char* part;
    EditorWord tip;
  } parts[] = {{head_, "Choose%1", EditorWord::ChannelTip},
               {slider_, "Slider%1", EditorWord::SliderTip},
               {function_, "Function%1", EditorWord::FunctionTip},
               {label_, "Label%1", EditorWord::LabelTip}};
  for (const auto& part : parts) {
    const QString tip = look_.say(part.tip).arg(number);
    Name(*part.widget, QString::fromLatin1(part.part).arg(number), tip, tip);
  }
  Name(*counter_, QStringLiteral("Counter%1").arg(number), {}, look_.say(EditorWord::CounterTip));
  Name(*level_, QStringLiteral("Level%1").arg(number));
  head_->setText(QString::number(number));
  const QSignalBlocker quiet(slider_);
  slider_->setSliderDown(false);
  ShowFunctionTip();
  ShowLabelTip();
}

std::array<QWidget*, 4> ChannelColumn::Stops() const {
  return {head_, slider_, function_, label_};
}

void ChannelColumn::MakeSlider() {
  slider_ = new Fader(Qt::Vertical, look_.skin, look_.skin.decks[0]);
  slider_->setRange(0, dmx::kHighestLevel);
  slider_->installEventFilter(this);
  connect(slider_, &QSlider::valueChanged, this, [this](int level) {
    level_->setText(QString::number(level));
    Q_EMIT LevelMoved(number_, level);
  });
  level_ = new QLabel(QStringLiteral("0"));
  level_->setAlignment(Qt::AlignCenter);
}

void ChannelColumn::MakeFunction() {
  function_ = new QPushButton;
  SetKind(*function_, "tool");
  function_->installEventFilter(this);
  SetFontEm(*function_, 0.92);
  connect(function_, &QPushButton::clicked, this, &ChannelColumn::ShowFunctions);
}

void ChannelColumn::MakeLabel() {
  label_ = new QLineEdit;
  label_->installEventFilter(this);
  connect(label_, &QLineEdit::textEdited, this,
          [this](const QString& text) { Q_EMIT Labelled(number_, text); });
  connect(label_, &QLineEdit::editingFinished, this, &ChannelColumn::Settled);
}

void ChannelColumn::ShowFunctions() {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setObjectName(QStringLiteral("Functions"));
  menu->setFont(font());
  for (int index = 0; index < dmx::kChannelFunctions; ++index) {
    const auto function = static_cast<dmx::ChannelFunction>(index);
    QAction* action = menu->addAction(
        QIcon(FunctionPicture(function, Em(*this, kFunctionEms), look_.skin.text)), FunctionName(function));
    connect(action, &QAction::triggered, this,
            [this, function] { Q_EMIT FunctionChosen(number_, function); });
    if (index == shown_function_) menu->setActiveAction(action);
  }
  menu->popup(function_->mapToGlobal(QPoint(0, function_->height())));
}

void ChannelColumn::Show(const dmx::FixtureChannel& channel, int dmx_channel) {
  const bool on_the_wire = dmx_channel <= dmx::kUniverseChannels;
  SetText(*counter_, on_the_wire ? QStringLiteral("DMX %1").arg(dmx_channel) : QStringLiteral("–"));
  slider_->setEnabled(on_the_wire);
  const int function = static_cast<int>(channel.function);
  if (function != shown_function_) {
    shown_function_ = function;
    function_->setText(
        function_->fontMetrics().elidedText(FunctionName(channel.function), Qt::ElideRight, Em(*this, 6)));
    const int pixels = Em(*this, kFunctionEms);
    function_->setIconSize({pixels, pixels});
    function_->setIcon(QIcon(FunctionPicture(channel.function, pixels, look_.skin.text)));
    ShowFunctionTip();
  }
  const QString label = Decode(channel.label);
  if (label_->text() == label) return;
  label_->setText(label);
  label_->setCursorPosition(0);  // its beginning is what is seen of a long one
  ShowLabelTip();
}

void ChannelColumn::ShowFunctionTip() {
  if (shown_function_ < 0) return;
  const QString name = FunctionName(static_cast<dmx::ChannelFunction>(shown_function_));
  function_->setToolTip(name + QStringLiteral(" – ") + look_.say(EditorWord::FunctionTip).arg(number_));
}

void ChannelColumn::ShowLabelTip() {
  if (label_->text().isEmpty()) return;
  label_->setToolTip(label_->text() + QStringLiteral(" – ") + look_.say(EditorWord::LabelTip).arg(number_));
}

void ChannelColumn::ShowChosen(bool chosen) {
  head_->setChecked(chosen);
}

void ChannelColumn::ShowLevel(int level) {
  if (slider_->isSliderDown() || slider_->value() == level) return;
  const QSignalBlocker quiet(slider_);
  slider_->setValue(level);
  slider_->update();
  level_->setText(QString::number(level));
}

void ChannelColumn::ShowSlider(Slider slider) {
  slider_->setVisible(slider == Slider::Shown);
  level_->setVisible(slider == Slider::Shown);
}

bool ChannelColumn::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) Q_EMIT Chosen(number_);
  return QWidget::eventFilter(watched, event);
}

}  // namespace ui
