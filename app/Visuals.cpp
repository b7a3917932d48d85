// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Visuals.h"

#include <algorithm>
#include <utility>

#include "app/DeckRack.h"
#include "app/StationContext.h"
#include "support/Settings.h"

namespace app {

void Visuals::StartUp() {
  if (visualisation_ == nullptr) return;
  context_.conductor->Post([this, plugins = context_.folder.Native("\\Plugins")] {
    constexpr int kOption = 4;
    auto names = visualisation_->BASS_VIS_FindPlugins(plugins);
    visualisation_->BASS_VIS_SetConfig(kOption, 0);
    const int rate = std::clamp(settings_.Number("Visualisation", "Resolution"), 1, 60);
    context_.window->Post([this, names = std::move(names), rate] {
      names_ = names;
      rate_ = rate;
    });
  });
}

void Visuals::SetRate(int frames_a_second) {
  rate_ = std::clamp(frames_a_second, 1, 60);
  settings_.SetNumber("Visualisation", "Resolution", rate_);
}

Picture Visuals::Show(std::string_view name) {
  return visualisation_ == nullptr ? Picture{} : visualisation_->Show(name, rack_.View().sound);
}

}  // namespace app
