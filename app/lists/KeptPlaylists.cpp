// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/KeptPlaylists.h"

#include "app/StationContext.h"
#include "catalogue/IndexFile.h"

namespace app {
namespace {

/// Not called as a playlist of the user's own may be.
std::string KeptFile(std::size_t place) {
  return "\\tlv.list" + std::to_string(place + 1);
}

}  // namespace

KeptPlaylists::KeptPlaylists(const StationContext& context, Tables& tables)
    : context_(context), tables_(tables), kept_(tables.begin(), tables.end()) {
  const auto complain = [this](const support::Error& failure) {
    context_.tell({support::Sentence::PlaylistNotSaved, {}, {SayingOf(failure)}});
  };
  for (std::size_t i = 0; i < tables.size(); ++i) {
    keepers_.emplace_back(context.files, context.workers, context.gate, context.folder.Native(KeptFile(i)),
                          complain);
  }
}

void KeptPlaylists::Read() {
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    const auto report = catalogue::LoadIndex(context_.folder.Native(KeptFile(i)), tables_[i], context_.say);
    kept_[i] = tables_[i];
    if (!report && report.Failure().code != support::ErrorCode::NotFound) {
      keepers_[i].SetAsideFirst(kUnreadable);
      context_.tell({support::Sentence::ListUnreadable, {std::to_string(i + 1)}});
    } else if (report && report.Value().Skipped() > 0) {
      keepers_[i].SetAsideFirst(kDamaged);
      context_.tell({support::Sentence::PlaylistDamaged,
                     {std::to_string(report.Value().Skipped()), std::to_string(i + 1)}});
    }
  }
}

void KeptPlaylists::Follow() {
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    if (tables_[i].IsCopyOf(kept_[i])) continue;
    kept_[i] = tables_[i];
    keepers_[i].Save(tables_[i]);
  }
}

void KeptPlaylists::Flush() {
  Follow();
  for (IndexKeeper& keeper : keepers_) keeper.Flush();
}

}  // namespace app
