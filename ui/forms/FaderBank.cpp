// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/FaderBank.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "app/lights/StagedShow.h"
#include "ui/strings/ConsoleWords.h"
#include "ui/widgets/ChannelFader.h"
#include "ui/widgets/FixtureLine.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

const app::ChannelLabel kNobody;

}  // namespace

FaderBank::FaderBank(const Look& look, QWidget* parent) : QWidget(parent), look_(look) {
  Name(*this, "FaderBank", look.say(ConsoleWord::Faders));
  names_ = new FixtureLine(look.skin);
  Name(*names_, "FixtureLine", look.say(ConsoleWord::Fixtures));
  auto* row = new QHBoxLayout;
  SetSpacingEm(*row, 0, 0);
  for (int place = 0; place < kMostFaders; ++place) {
    MakeFader(place);
    row->addWidget(faders_[static_cast<std::size_t>(place)], 1);
  }
  FillColumn(*this, 0, 0.1, {names_, {row, 1}});
  Label();
  SetStop(0);
}

void FaderBank::MakeFader(int place) {
  auto* fader = new ChannelFader(look_.skin);
  Name(*fader, QStringLiteral("Fader%1").arg(place + 1));
  connect(fader, &ChannelFader::Moved, this, &FaderBank::FaderMoved);
  connect(fader, &ChannelFader::StepWanted, this, [this, place](int by) { Step(place, by); });
  faders_[static_cast<std::size_t>(place)] = fader;
}

void FaderBank::SetColours(const std::vector<QColor>& colours) {
  size_ = std::clamp(static_cast<int>(colours.size()), 1, kMostFaders);
  for (std::size_t place = 0; place < faders_.size(); ++place) {
    faders_[place]->setVisible(place < colours.size());
  }
  colours_ = colours;
  ShowFrom(first_);
}

void FaderBank::ShowFrom(int channel) {
  first_ = std::clamp(channel, 1, dmx::kUniverseChannels - size_ + 1);
  Label();
  Q_EMIT Scrolled();
}

void FaderBank::Label() {
  for (int place = 0; place < size_; ++place) {
    ChannelFader& fader = *faders_[static_cast<std::size_t>(place)];
    const int channel = first_ + place;
    const app::ChannelLabel& label = patch_ != nullptr ? patch_->At(channel) : kNobody;
    fader.SetChannel(channel, PurposeText(label, look_.say));
    if (label.fixture != 0) {
      fader.SetColour(FunctionColour(label.function, label.label));
    } else if (static_cast<std::size_t>(place) < colours_.size()) {
      fader.SetColour(colours_[static_cast<std::size_t>(place)]);
    }
    const QString name = ChannelText(channel, label, look_.say);
    fader.setAccessibleName(name);
    fader.setToolTip(look_.say(ConsoleWord::ChannelTip).arg(name));
  }
  PlaceNames();
}

void FaderBank::PlaceNames() {
  std::vector<FixtureLine::Mark> marks;
  const int last = first_ + size_ - 1;
  for (const FixtureSpan& span : spans_) {
    if (span.last < first_ || span.first > last) continue;
    const auto* left = faders_[static_cast<std::size_t>(std::max(span.first, first_) - first_)];
    const auto* right = faders_[static_cast<std::size_t>(std::min(span.last, last) - first_)];
    const QString tip = look_.say(ConsoleWord::FixtureRange)
                            .arg(QString::number(span.first), QString::number(span.last), span.name);
    marks.push_back({left->x(), right->x() + right->width(), span.name, tip});
  }
  names_->Show(std::move(marks));
  placed_ = faders_[static_cast<std::size_t>(size_ - 1)]->geometry();
}

void FaderBank::Show(const app::LightView& view, support::TimePoint now) {
  if (view.patch != patch_) {
    patch_ = view.patch;
    spans_ = SpansOf(patch_.get());
    Label();
  }
  for (int place = 0; place < size_; ++place) {
    const auto channel = static_cast<std::size_t>(first_ + place - 1);
    faders_[static_cast<std::size_t>(place)]->Show(view.levels[channel], view.on_the_wire[channel], now);
  }
  const QRect last = faders_[static_cast<std::size_t>(size_ - 1)]->geometry();
  if (last != placed_) PlaceNames();  // the columns have moved
}

void FaderBank::Step(int place, int by) {
  int wanted = place + by;
  if (wanted < 0 || wanted >= size_) {
    const int was = first_;
    ShowFrom(first_ + by * size_);
    if (first_ == was) return;
    wanted = by > 0 ? 0 : size_ - 1;
  }
  SetStop(wanted);
  faders_[static_cast<std::size_t>(wanted)]->setFocus();
}

void FaderBank::SetStop(int place) {
  for (ChannelFader* fader : faders_) fader->setFocusPolicy(Qt::ClickFocus);
  faders_[static_cast<std::size_t>(place)]->setFocusPolicy(Qt::StrongFocus);
}

}  // namespace ui
