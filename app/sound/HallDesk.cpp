// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/HallDesk.h"

#include "app/WorkstationView.h"
#include "decks/StreamBuild.h"

namespace app {
namespace {

decks::SpeakerPair PairOf(const OutputView& output) {
  return {output.device, decks::SpeakerFlag(output.speaker)};
}

}  // namespace

void HallDesk::Tick(WorkstationView& view) {
  view.headphones = {mix_, false};
  view.has_meter = desk_ != nullptr;
  if (desk_ == nullptr) return;
  desk_->Direct({{PairOf(view.outputs[0]), PairOf(view.outputs[1])}, PairOf(view.outputs[2]), mix_});
  view.headphones.hear_hall = desk_->HallReachesHeadphones();
  view.master = desk_->Master();
}

}  // namespace app
