// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/settings/NameSettings.h"

namespace app {

catalogue::NameRule ReadNameRule(const support::Settings& settings) {
  using Order = catalogue::NameRule::Order;
  return {settings.Number("Tags", "FileFormat") == 1 ? Order::TitleFirst : Order::ArtistFirst,
          settings.Text("Tags", "SplitCharacter"), settings.Flag("Tags", "UseArtist"),
          settings.Flag("Tags", "UseSplit")};
}

}  // namespace app
