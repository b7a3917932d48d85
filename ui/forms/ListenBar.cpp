// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ListenBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>

#include "app/Deck.h"
#include "app/WorkstationView.h"
#include "app/sound/DeckStation.h"
#include "catalogue/track_table.h"
#include "ui/models/DeckChoice.h"
#include "ui/models/KeyMap.h"
#include "ui/models/TimeText.h"
#include "ui/models/TrackText.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/ListenButton.h"
#include "ui/widgets/WaveOverview.h"

namespace ui {
namespace {

constexpr std::size_t kListenPlace = 2;  ///< of its level

}  // namespace

ListenBar::ListenBar(app::Deck& deck, MixerState& state, const Look& look, QWidget* parent)
    : QWidget(parent), commands_(deck), state_(state), look_(look) {
  const auto& say = look.say;
  Name(*this, "ListenBar", say(Say::ListenRow));
  button_ = new ListenButton(say(Say::Listen), look.skin, look.skin.text);
  button_->SetLevel(state.listen[kListenPlace]);
  Name(*button_, "ListenRow", say(Say::ListenRow), ButtonTip());
  connect(button_, &ListenButton::clicked, this, &ListenBar::Pressed);
  connect(button_, &ListenButton::LevelMoved, this, [this](int level) {
    state_.listen[kListenPlace] = level;
    commands_.Adjust(&app::DeckStation::SetVolume, level);
    Q_EMIT LevelMoved(level);
  });
  title_ = Sentence("ListenTitle");
  overview_ = new WaveOverview(look.skin, look.skin.text);
  Name(*overview_, "ListenOverview", say(Say::ListenPlace), say(Say::OverviewTip));
  connect(overview_, &WaveOverview::SeekWanted, this,
          [this](std::chrono::microseconds place) { commands_.Do(&app::DeckStation::Seek, place); });
  time_ = Reading("ListenTime", Qt::AlignRight | Qt::AlignVCenter, "00:00 / 00:00");
  FillRow(*this, 0, 0.6, {{title_, 1}, {overview_, 2}, time_});
  SetHeightEm(*this, 3.8);
  hide();
}

void ListenBar::Toggle(const catalogue::track_table& table, int row) {
  const std::string file(table.Cell(row, catalogue::track::kFilename));
  if (file.empty() || file == file_) return End();
  if (!has_output_) {
    End();
    return Q_EMIT Unheard(look_.say(Say::CueNoDevice));
  }
  file_ = file;
  begun_ = false;
  commands_.Load(table, row);
  commands_.Adjust(&app::DeckStation::SetVolume, state_.listen[kListenPlace]);
  commands_.Do(&app::DeckStation::Play);
}

void ListenBar::End() {
  button_->setChecked(false);
  if (file_.empty()) return;
  file_.clear();
  commands_.Do(&app::DeckStation::Stop);
}

void ListenBar::SeekBy(std::chrono::microseconds step) {
  if (!Listening()) return;
  const auto place = std::clamp(deck_.position + step, std::chrono::microseconds(0),
                                std::max(deck_.length, std::chrono::microseconds(0)));
  commands_.Do(&app::DeckStation::Seek, place);
}

QString ListenBar::ButtonTip() const {
  return look_.say(Say::KeyHint).arg(look_.say(Say::ListenRowTip), KeyText(KeyOfListening()));
}

void ListenBar::ShowButton() {
  if (button_->isEnabled() != has_output_) button_->setEnabled(has_output_);
  const QString tip = has_output_ ? ButtonTip() : look_.say(Say::CueNoDevice);
  if (button_->toolTip() != tip) button_->setToolTip(tip);
}

void ListenBar::Show(const app::WorkstationView& view) {
  deck_ = view.decks[kDeck - 1];
  has_output_ = view.outputs[2].device != 0;
  begun_ = begun_ || (deck_.filename == file_ && deck_.state == DeckState::Playing);
  const bool broken = Listening() && deck_.state == DeckState::Empty && !deck_.message.empty();
  if (broken) Q_EMIT Unheard(Decode(deck_.message));
  const bool over = deck_.state == DeckState::Ended || deck_.state == DeckState::Stopped;
  if (broken || !has_output_ || (begun_ && over)) End();
  ShowButton();
  if (button_->isChecked() != Listening()) button_->setChecked(Listening());
  if (isVisibleTo(parentWidget()) != Listening()) setVisible(Listening());
  if (!Listening()) return;
  title_->Show(TitleText(deck_.title, deck_.filename));
  overview_->Show(deck_.position, deck_.length, deck_.wave);
  SetText(*time_, MinutesText(deck_.position) + QStringLiteral(" / ") + MinutesText(deck_.length));
}

}  // namespace ui
