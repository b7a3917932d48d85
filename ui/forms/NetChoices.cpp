// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/NetChoices.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include "app/lights/LightStation.h"
#include "ui/strings/Decode.h"
#include "ui/strings/NetWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"
#include "ui/widgets/Surface.h"

namespace ui {
namespace {

using Protocol = dmx::NetWish::Protocol;

}  // namespace

NetChoices::NetChoices(app::LightStation& lights, const Look& look, QWidget* parent)
    : QWidget(parent), lights_(lights), look_(look), wish_(lights.Net()) {
  popup_ = MakeBox();
  button_ = ToolButton("NetLamps", look.say.Of(NetWord::Net), [this] {
    ShowWish();
    ShowBelow(*popup_, *button_);
    protocol_->setFocus();
  });
  button_->setCheckable(true);
  SetKind(*button_, "lamp1");
  FillRow(*this, 0, 0, {button_});
  ShowWish();
}

QWidget* NetChoices::MakeBox() {
  const auto& say = look_.say;
  auto* box = new Surface(look_.skin.ground, this);
  box->SetStripe(look_.skin.dim);
  box->setWindowFlag(Qt::Popup);
  Name(*box, "NetLampsBox", say(NetWord::NetProtocol));
  protocol_ = Choice(look_.skin, "NetProtocol", say.Of(NetWord::NetProtocol),
                     {say(NetWord::NetNone), QStringLiteral("Art-Net"), QStringLiteral("sACN")},
                     static_cast<int>(wish_.protocol), [this](int) { Choose(); });
  universe_ = new QSpinBox;
  Name(*universe_, "NetUniverse", say.Of(NetWord::NetUniverse));
  universe_->setKeyboardTracking(false);
  connect(universe_, &QSpinBox::editingFinished, this, [this] { Choose(); });  // not each one passed
  address_ = new QLineEdit;
  Name(*address_, "NetAddress", say.Of(NetWord::NetAddress));
  address_->setPlaceholderText(say(NetWord::NetEverybody));
  connect(address_, &QLineEdit::editingFinished, this, [this] { Choose(); });
  const auto caption = [&](AnyWord word) { return Caption(say(word), look_.skin.dim); };
  FillColumn(*box, 0.8, 0.5,
             {Heading(say(NetWord::NetProtocol)), protocol_, caption(NetWord::NetUniverse), universe_,
              caption(NetWord::NetAddress), address_});
  box->hide();
  return box;
}

void NetChoices::Choose() {
  dmx::NetWish wish = wish_;
  wish.protocol = static_cast<Protocol>(protocol_->currentIndex());
  wish.universe = universe_->value();
  wish.address = address_->text().trimmed().toStdString();
  if (wish == wish_) return;
  lights_.ChooseNet(wish);
  wish_ = lights_.Net();
  ShowWish();
}

void NetChoices::ShowWish() {
  const QSignalBlocker quiet(universe_);
  const bool sacn = wish_.protocol == Protocol::Sacn;
  protocol_->setCurrentIndex(static_cast<int>(wish_.protocol));
  universe_->setRange(sacn ? 1 : 0, sacn ? dmx::NetWish::kLastSacn : dmx::NetWish::kLastArtNet);
  universe_->setValue(wish_.universe);
  if (address_->text() != Decode(wish_.address)) address_->setText(Decode(wish_.address));
  for (QWidget* field : {static_cast<QWidget*>(universe_), static_cast<QWidget*>(address_)})
    field->setEnabled(Sends());
  button_->setChecked(Sends());
}

}  // namespace ui
