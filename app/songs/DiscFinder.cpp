// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/songs/DiscFinder.h"

#include <filesystem>
#include <utility>

#include "app/StationContext.h"

namespace app {
namespace {

constexpr std::size_t kCompanionDeck = 2;

using FoundDisc = support::Result<std::shared_ptr<const karaoke::DiscImage>>;

/// Blocks on the disk: workers only.
FoundDisc FindDisc(karaoke::DiscImages& images, const std::string& song) {
  auto bytes = images.Of(song);
  if (!bytes) return bytes.Failure();
  return karaoke::DiscImage::Read(std::move(bytes).Value(), std::filesystem::path(song).filename().string());
}

bool HasBegun(const DeckView& deck) {
  using State = DeckView::State;
  if (deck.loaded_state == State::Empty) return false;
  return deck.loaded_state != State::Stopped || deck.position.count() > 0;
}

}  // namespace

void DiscFinder::Follow(OnDeck& on, const DeckView& deck) {
  if (deck.loaded != on.loaded.song) {
    if (deck.loaded == on.coming.song) {
      on.loaded = std::exchange(on.coming, {});
    } else {
      Find(on.loaded, deck.loaded);
    }
  }
  const bool comes = deck.state == DeckView::State::Loading && deck.filename != deck.loaded;
  const std::string coming = comes ? deck.filename : "";
  if (coming != on.coming.song) Find(on.coming, coming);
}

void DiscFinder::Find(Disc& disc, const std::string& song) {
  disc = {song, ++searches_, nullptr};
  if (images_ == nullptr || song.empty()) return;
  context_.workers.Post([this, song, number = disc.number, gate = context_.gate, box = context_.conductor] {
    gate->Pass(
        [&] { box->Post([this, number, found = FindDisc(*images_, song)] { Found(number, found); }); });
  });
}

void DiscFinder::Found(std::uint64_t number, const FoundDisc& found) {
  for (OnDeck& on : decks_) {
    for (Disc* disc : {&on.loaded, &on.coming}) {
      if (disc->number != number) continue;
      if (found) {
        disc->image = found.Value();
      } else if (found.Failure().code != support::ErrorCode::NotFound) {
        context_.tell(SayingOf(found.Failure()));
      }
    }
  }
}

void DiscFinder::Choose(const std::array<DeckView, kDecks>& decks) {
  constexpr std::size_t kOrder[] = {kCompanionDeck, 0, 1};
  const auto plays = [&](std::size_t deck) {
    return deck < kShown && decks_[deck].loaded.image != nullptr &&
           decks[deck].loaded_state == DeckView::State::Playing;
  };
  if (plays(shown_) && !plays(kCompanionDeck)) return;
  for (const std::size_t deck : kOrder) {
    if (plays(deck)) {
      shown_ = deck;
      return;
    }
  }
  const bool stands = decks_[kCompanionDeck].loaded.image != nullptr && HasBegun(decks[kCompanionDeck]);
  shown_ = stands ? kCompanionDeck : kShown;
}

DiscView DiscFinder::Tick(const std::array<DeckView, kDecks>& decks) {
  for (std::size_t deck = 0; deck < kShown; ++deck) Follow(decks_[deck], decks[deck]);
  Choose(decks);
  if (shown_ == kShown) return {};
  const DeckView& deck = decks[shown_];
  return {decks_[shown_].loaded.image,
          {deck.position, context_.clock.Now(),
           deck.loaded_state == DeckView::State::Playing ? deck.speed : 0, deck.length}};
}

void DiscFinder::Release() {
  decks_ = {};
  shown_ = kShown;
}

}  // namespace app
