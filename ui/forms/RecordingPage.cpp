// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/RecordingPage.h"

#include <QLabel>
#include <QPushButton>

#include "app/WorkstationView.h"
#include "app/recording/RecordingStation.h"
#include "ui/forms/RecordingChoices.h"
#include "ui/models/KeyMap.h"
#include "ui/models/RecordingText.h"
#include "ui/strings/Decode.h"
#include "ui/strings/RecordingWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/LevelMeter.h"
#include "ui/widgets/RecordedWaveView.h"

namespace ui {
namespace {

using State = app::RecordingView::State;

constexpr auto kLookAgain = std::chrono::seconds(20);  ///< while the page is shown
constexpr int kFrontPair = 1;
constexpr int kPairs = 4;

/// What is recorded is the sum of deck 1's pair, and the front one's where it plays on all of them.
bool HearsDeck2(const app::OutputView& deck1, const app::OutputView& deck2) {
  const auto all = [](const app::OutputView& output) {
    return output.speaker < 1 || output.speaker > kPairs;
  };
  if (deck1.device != deck2.device) return false;
  return all(deck2) || deck2.speaker == (all(deck1) ? kFrontPair : deck1.speaker);
}

}  // namespace

RecordingPage::RecordingPage(app::RecordingStation& station, const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent), station_(station), look_(look) {
  const auto& say = look.say;
  Name(*this, "RecordingPage", say(Say::Recording));
  record_ = Lamp(
      "RecordButton", say.Of(RecordingWord::Record), [this](bool) { Q_EMIT Pressed(); }, "alarm");
  SetFontEm(*record_, 1.4, Weight::Bold);
  SetHeightEm(*record_, 3.2);
  time_ = Reading("RecordedTime", Qt::AlignRight | Qt::AlignVCenter, "00:00:00");
  SetFontEm(*time_, 2, Weight::Bold);
  size_ = Reading("RecordedSize", Qt::AlignRight | Qt::AlignVCenter, "000.0 MB");
  SetTextColour(*size_, look.skin.dim);
  state_ = Reading("RecordingState");
  state_->setWordWrap(true);
  only_ = Caption(say(RecordingWord::OnlyDeck1), look.skin.warning);
  only_->setWordWrap(true);
  Name(*only_, "RecordsOnlyDeck1");
  only_->hide();
  meter_ = new LevelMeter(look.skin);
  Name(*meter_, "RecordedLevel", say.Of(RecordingWord::RecordedLevel));
  wave_ = new RecordedWaveView(look.skin);
  Name(*wave_, "RecordedWave", say.Of(RecordingWord::RecordedSoFar));
  list_ = new RecordingList(station, look);
  connect(list_, &RecordingList::LoadWanted, this, &RecordingPage::LoadWanted);
  connect(list_, &RecordingList::PlayWanted, this, &RecordingPage::PlayWanted);
  auto* now = Column(0.5, {Row(0.8, {{record_, 1}, Column(0, {time_, size_})}), state_, only_,
                           new RecordingChoices(station, look), Part::Room()});
  FillRow(*this, 0.8, 1.2, {{now, 5}, meter_, {Column(0.5, {wave_, {list_, 1}}), 8}});
}

void RecordingPage::Show(const app::WorkstationView& decks, support::TimePoint now) {
  const app::RecordingView& view = station_.View();
  if (!isVisible()) {
    was_shown_ = false;
    return;
  }
  if (!was_shown_ || now - looked_ >= kLookAgain) {
    looked_ = now;
    station_.Look();
  }
  was_shown_ = true;
  ShowButton(view);
  const bool only = decks.outputs[1].device != 0 && !HearsDeck2(decks.outputs[0], decks.outputs[1]);
  if (only_->isHidden() == only) only_->setVisible(only);
  SetText(*time_, HoursText(view.length));
  SetText(*size_, view.bytes > 0 ? SizeText(view.bytes, look_.say) : QString());
  SetText(*state_, StateText(view));
  const bool bad = view.state == State::Idle && (!view.failure.empty() || !view.possible);
  SetTextColour(*state_, bad ? look_.skin.warning : look_.skin.dim);
  meter_->Show(view.left_db, view.right_db, now);
  ShowWave(view);
  list_->Show(view);
}

void RecordingPage::ShowButton(const app::RecordingView& view) {
  const bool on = view.state != State::Idle;
  record_->setEnabled(view.possible);
  if (!record_->isDown() && record_->isChecked() != on) record_->setChecked(on);
  const auto word = on ? RecordingWord::StopRecording : RecordingWord::Record;
  const QString caption = look_.say(word);
  if (record_->text() == caption) return;
  record_->setText(caption);
  record_->setAccessibleName(caption);
  record_->setToolTip(look_.say(Say::KeyHint).arg(look_.say.Tip(word), KeyText(KeyOfRecording())));
}

void RecordingPage::ShowWave(const app::RecordingView& view) {
  std::vector<std::chrono::microseconds> marks;
  if (view.tracks != nullptr) {
    for (const app::RecordedTrack& track : *view.tracks) marks.push_back(track.place);
  }
  wave_->Show(view.wave, marks);
}

QString RecordingPage::StateText(const app::RecordingView& view) const {
  const auto& say = look_.say;
  if (!view.possible) return say(RecordingWord::NotPossible);
  if (view.state == State::Starting) return say(RecordingWord::StartsSoon);
  if (view.state == State::Idle && !view.failure.empty()) return Decode(view.failure);
  const auto room = view.state == State::Recording && view.room ? view.room : station_.OnTheShelf().room;
  return room ? RoomText(*room, say) : QString();
}

}  // namespace ui
