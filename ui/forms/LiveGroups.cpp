// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/LiveGroups.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <algorithm>
#include <numeric>

#include "app/lights/StagedShow.h"
#include "ui/strings/Decode.h"
#include "ui/strings/LiveWords.h"
#include "ui/widgets/Kit.h"

namespace ui {

LiveGroups::LiveGroups(app::LiveLightStation& live, const Look& look, QWidget* parent)
    : QWidget(parent), live_(live), look_(look) {
  const auto& say = look.say;
  auto* inside = new QWidget;
  row_ = new QHBoxLayout(inside);
  SetSpacingEm(*row_, 0, 0.4);
  row_->addStretch(1);
  auto* area = new QScrollArea;
  area->setObjectName(QStringLiteral("LiveColumns"));
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setWidget(inside);
  area->setFocusPolicy(Qt::NoFocus);
  area->viewport()->setAutoFillBackground(false);
  inside->setAutoFillBackground(false);
  name_ = new QLineEdit;
  name_->setPlaceholderText(say(LiveWord::GroupName));
  name_->setMaxLength(60);
  Name(*name_, "GroupName", say.Of(LiveWord::GroupName));
  keep_ = PlainButton("KeepGroup", say.Of(LiveWord::KeepGroup), [this] { Keep(); });
  drop_ = PlainButton("DropGroup", say.Of(LiveWord::DropGroup), [this] {
    live_.DropGroup(name_->text().trimmed().toStdString());
    chosen_.clear();
  });
  for (QWidget* part :
       {static_cast<QWidget*>(name_), static_cast<QWidget*>(keep_), static_cast<QWidget*>(drop_)})
    SetHeightEm(*part, LiveColumn::kButtonEms);
  FillColumn(*this, 0, 0.35, {{area, 1}, Row(0.4, {{name_, 1}, keep_, drop_})});
}

void LiveGroups::Keep() {
  const QString name = name_->text().trimmed();
  if (name.isEmpty() || patch_ == nullptr) return;
  live_.KeepGroup(dmx::MakeGroup(name.toStdString(), patch_->fixtures, targets_));
}

std::vector<LiveColumn::Group> LiveGroups::GroupsOf(const app::StagePatch* patch) const {
  std::vector<LiveColumn::Group> groups(1);
  groups[0].name = look_.say(LiveWord::AllFixtures);
  const dmx::DMXname nobody;
  const dmx::DMXname& fixtures = patch == nullptr ? nobody : patch->fixtures;
  groups[0].fixtures.resize(static_cast<std::size_t>(fixtures.count()));
  std::iota(groups[0].fixtures.begin(), groups[0].fixtures.end(), 1);
  for (const dmx::LightGroup& saved : live_.Groups()) {
    dmx::FoundGroup found = dmx::Find(saved, fixtures);
    groups.push_back({Decode(saved.name), std::move(found.positions), found.missing, true});
  }
  for (const int position : groups[0].fixtures) {
    // Two that overlap have each their own column, whoever holds the channels.
    const int start = fixtures.Item(position)->StartChannel;
    const bool named = start >= 1 && start <= dmx::kUniverseChannels && patch->At(start).fixture == position;
    const QString name = named ? Decode(patch->At(start).fixture_name) : QString::number(position);
    groups.push_back({name, {position}, 0, false});
  }
  return groups;
}

void LiveGroups::MakeColumns() {
  qDeleteAll(columns_);
  columns_.clear();
  for (std::size_t place = 0; place < groups_.size(); ++place) {
    auto* column = new LiveColumn(groups_[place], QStringLiteral("Group%1").arg(place), look_);
    connect(column, &LiveColumn::Chosen, this, [this, place] { Choose(place); });
    connect(column, &LiveColumn::LightWanted, this, [this, place](double light) {
      dmx::LiveLook look;
      look.light = light;
      live_.Ask(groups_[place].fixtures, look);
    });
    connect(column, &LiveColumn::LetGoWanted, this, [this, place] { live_.LetGo(groups_[place].fixtures); });
    row_->insertWidget(static_cast<int>(place), column);
    ApplyBaseSize(*column, font().pointSizeF());
    columns_.push_back(column);
  }
}

void LiveGroups::Choose(std::size_t column) {
  if (column == 0) {
    chosen_.clear();
  } else if (!chosen_.erase(column)) {
    chosen_.insert(column);
  }
  if (column > 0 && groups_[column].saved) name_->setText(groups_[column].name);
  FindTargets();
}

void LiveGroups::ChooseFixture(int position) {
  for (std::size_t place = 1; place < groups_.size(); ++place) {
    if (!groups_[place].saved && groups_[place].fixtures.front() == position) return Choose(place);
  }
}

void LiveGroups::FindTargets() {
  std::set<int> targets;
  for (std::size_t place = 0; place < groups_.size(); ++place) {
    const bool chosen = chosen_.empty() ? place == 0 : chosen_.contains(place);
    if (chosen) targets.insert(groups_[place].fixtures.begin(), groups_[place].fixtures.end());
  }
  targets_.assign(targets.begin(), targets.end());
  Q_EMIT TargetsChanged();
}

void LiveGroups::Show(const app::LiveView& view) {
  if (view.patch != patch_ || live_.Groups() != saved_ || columns_.empty()) {
    patch_ = view.patch;
    saved_ = live_.Groups();
    auto groups = GroupsOf(patch_.get());
    if (groups != groups_ || columns_.empty()) {
      // Who has chosen some goes on with them, and does not light all by the next touch.
      std::set<std::size_t> chosen;
      for (const std::size_t place : chosen_) {
        const auto same = std::find_if(groups.begin(), groups.end(), [&](const auto& group) {
          return group.name == groups_[place].name && group.saved == groups_[place].saved;
        });
        if (same != groups.end()) chosen.insert(static_cast<std::size_t>(same - groups.begin()));
      }
      groups_ = std::move(groups);
      chosen_ = std::move(chosen);
      MakeColumns();
    }
    FindTargets();
  }
  for (std::size_t place = 0; place < columns_.size(); ++place)
    columns_[place]->Show(view.fixtures, chosen_.empty() ? place == 0 : chosen_.contains(place));
  const QString name = name_->text().trimmed();
  const auto has_name = [&](const auto& group) { return group.saved && group.name == name; };
  keep_->setEnabled(!name.isEmpty() && !targets_.empty());
  drop_->setEnabled(std::any_of(groups_.begin(), groups_.end(), has_name));
}

}  // namespace ui
