// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/AutomixChoices.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QLabel>
#include <QSignalBlocker>
#include <cmath>

#include "ui/strings/ListWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

constexpr int kTimes[] = {0, 2, 4, 6, 8, 10, 12, 15, 20, 30};  // seconds
constexpr int kReaches[] = {2, 4, 6, 8, 10, 12, 16, 25, 50};   // percent
constexpr int kRanges[] = {3, 6, 9, 12, 18, 24};               // dB

/// The numbers to choose from, and the present one whether it is among them or not.
template <std::size_t kCount>
void ShowNumber(QuietCombo& list, const int (&numbers)[kCount], int present, const QString& text) {
  if (list.count() > 0 && list.currentData().toInt() == present) return;
  list.clear();
  bool there = false;
  for (const int number : numbers) {
    if (!there && number > present) list.addItem(text.arg(present), present);
    there = there || number >= present;
    list.addItem(text.arg(number), number);
  }
  if (!there) list.addItem(text.arg(present), present);
  list.setCurrentIndex(list.findData(present));
}

void ShowCheck(QCheckBox& box, bool on) {
  const QSignalBlocker quiet(box);
  box.setChecked(on);
}

}  // namespace

AutomixChoices::AutomixChoices(const QString& prefix, app::ListStation& lists, Form form, const Look& look,
                               QWidget* parent)
    : QWidget(parent), prefix_(prefix), lists_(lists), look_(look) {
  const auto& say = look.say;
  const auto caption = [&](AnyWord word) { return Caption(say(word), look.skin.dim); };
  place_ = MakePlace();
  time_ = MakeNumbers("MixTime", ListWord::MixTime, QStringLiteral("%1 s"), &app::ListStation::SetMixTime);
  tempo_ = MakeMatch("AutoBPM", ListWord::MatchTempo, &app::ListStation::SetMatchTempo);
  tempo_reach_ = MakeNumbers("BPMPercent", ListWord::TempoReach, QStringLiteral("± %1 %"),
                             &app::ListStation::SetTempoReach);
  gain_ = MakeMatch("AutoGain", ListWord::MatchGain, &app::ListStation::SetMatchGain);
  gain_range_ = MakeNumbers("GainRange", ListWord::GainRange, QStringLiteral("± %1 dB"),
                            &app::ListStation::SetGainRange);
  shown_.mix_time = std::chrono::milliseconds(-1);
  Show(lists.View().automix);
  if (form == Form::Lines) {
    FillColumn(*this, 0, 0.4,
               {Row(0.4, {{caption(ListWord::Automix), 1}, {place_, 1}, time_}),
                Row(0.8, {tempo_, tempo_reach_, Part::Room(), gain_, gain_range_})});
    return;
  }
  FillColumn(*this, 0, 0.5,
             {caption(ListWord::MixPlace), place_, caption(ListWord::MixTime), time_,
              Row(0.8, {{tempo_, 1}, tempo_reach_}), Row(0.8, {{gain_, 1}, gain_range_})});
}

QuietCombo* AutomixChoices::MakePlace() {
  return Choice(look_.skin, prefix_ + QStringLiteral("MixPlace"), look_.say.Of(ListWord::MixPlace),
                {look_.say(ListWord::AtMixPoints), look_.say(ListWord::BeforeTheEnd)}, 0,
                [this](int index) { lists_.SetAtMixPoints(index == 0); });
}

QuietCombo* AutomixChoices::MakeNumbers(const char* name, AnyWord word, const QString& text,
                                        void (app::ListStation::*choose)(int)) {
  auto* list = new QuietCombo(look_.skin);
  Name(*list, prefix_ + QLatin1String(name), look_.say.Of(word));
  list->setProperty("text", text);
  connect(list, &QComboBox::activated, this,
          [this, list, choose] { (lists_.*choose)(list->currentData().toInt()); });
  return list;
}

QCheckBox* AutomixChoices::MakeMatch(const char* name, AnyWord caption,
                                     void (app::ListStation::*choose)(bool)) {
  return Check(prefix_ + QLatin1String(name), look_.say.Of(caption), false,
               [this, choose](bool chosen) { (lists_.*choose)(chosen); });
}

void AutomixChoices::Show(const app::MixWishes& wishes) {
  if (wishes == shown_) return;  // what a hand has just chosen here comes back later
  shown_ = wishes;
  place_->setCurrentIndex(wishes.at_mix_points ? 0 : 1);
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(wishes.mix_time).count();
  ShowNumber(*time_, kTimes, static_cast<int>(seconds), time_->property("text").toString());
  ShowNumber(*tempo_reach_, kReaches, wishes.most_percent, tempo_reach_->property("text").toString());
  ShowNumber(*gain_range_, kRanges, static_cast<int>(std::lround(wishes.gain_range.value)),
             gain_range_->property("text").toString());
  ShowCheck(*tempo_, wishes.match_tempo);
  ShowCheck(*gain_, wishes.match_gain);
}

}  // namespace ui
