// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "app/songs/SongView.h"
#include "app/sound/DeckView.h"
#include "karaoke/DiscImage.h"
#include "karaoke/ports/DiscImages.h"

namespace app {

struct StationContext;

/// Has the disc images of the songs on the decks looked for, and says which of them is shown.
///
/// Law: a picture stays as long as its song stands on the deck, also while another one is made ready beside
/// it, whose picture is looked for meanwhile. A deck that plays goes before one that stands, deck 3 before
/// the others, and what is shown before what could be. Only deck 3 shows its picture while it stands, and not
/// before it has begun. The newest song of a deck wins. Threads: the conductor; files are read by workers.
class DiscFinder {
 public:
  /// images: null when there are none.
  DiscFinder(const StationContext& context, karaoke::DiscImages* images)
      : context_(context), images_(images) {}

  /// decks: of the same tick.
  [[nodiscard]] DiscView Tick(const std::array<DeckView, kDecks>& decks);
  void Release();

 private:
  static constexpr std::size_t kShown = 3;  ///< deck 4 is in the head-phones alone
  struct Disc {
    std::string song;
    std::uint64_t number = 0;                         ///< of the search
    std::shared_ptr<const karaoke::DiscImage> image;  // with the window
  };
  struct OnDeck {
    Disc loaded;
    Disc coming;
  };

  void Follow(OnDeck& on, const DeckView& deck);
  void Find(Disc& disc, const std::string& song);
  void Found(std::uint64_t number, const support::Result<std::shared_ptr<const karaoke::DiscImage>>& found);
  void Choose(const std::array<DeckView, kDecks>& decks);

  const StationContext& context_;
  karaoke::DiscImages* images_;
  std::array<OnDeck, kShown> decks_;
  std::uint64_t searches_ = 0;
  std::size_t shown_ = kShown;  ///< none
};

}  // namespace app
