// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ApplyButton.h"

#include <utility>

#include "app/Collections.h"
#include "app/ports/Help.h"
#include "support/Settings.h"

namespace app {
namespace {

constexpr std::string_view kHelpFile = "\\help\\djTOLVENgold.chm";
constexpr const char* kHelpTopic = "introduction.htm";

}  // namespace

void ApplyButton::Press(const ApplyWish& wish, Reindex::Done scanned) {
  switch (wish.mode) {
    case ApplyMode::ReindexMusic:
      return collections_.Scan(collections_.Music(), wish.folder, std::move(scanned));
    case ApplyMode::ReindexKaraoke:
      return collections_.Scan(collections_.Karaoke(), wish.folder, std::move(scanned));
    case ApplyMode::ChooseDirectory:
      if (!wish.folder.empty()) settings_.SetText("Settings", "Directory", wish.folder);
      return;
    case ApplyMode::ChannelColours:
      return StoreColours(settings_, wish.colours);
    case ApplyMode::AnalyseAll:
      return collections_.AnalyseAll();
    case ApplyMode::Help:
      if (help_ != nullptr) help_->Open(folder_.Native(kHelpFile), kHelpTopic);
      return;
  }
}

}  // namespace app
