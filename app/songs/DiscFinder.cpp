// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/songs/DiscFinder.h"

#include <filesystem>
#include <utility>

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
  if (deck.state == State::Empty || deck.state == State::Loading) return false;
  return deck.state != State::Stopped || deck.position.count() > 0;
}

}  // namespace

void DiscFinder::Find(std::size_t deck, const std::string& song) {
  OnDeck& on = decks_[deck];
  on.song = song;
  on.image.reset();
  ++on.newest;
  if (images_ == nullptr || song.empty()) return;
  context_.workers.Post(
      [this, deck, song, number = on.newest, gate = context_.gate, box = context_.conductor] {
        gate->Pass([&] {
          FoundDisc found = FindDisc(*images_, song);
          box->Post([this, deck, number, found = std::move(found)] {
            if (number != decks_[deck].newest) return;
            if (found) {
              decks_[deck].image = found.Value();
            } else if (found.Failure().code != support::ErrorCode::NotFound) {
              context_.tell(context_.say(found.Failure()));
            }
          });
        });
      });
}

void DiscFinder::Choose(const std::array<DeckView, kDecks>& decks) {
  constexpr std::size_t kOrder[] = {kCompanionDeck, 0, 1};
  const auto plays = [&](std::size_t deck) {
    return deck < kShown && decks_[deck].image != nullptr && decks[deck].state == DeckView::State::Playing;
  };
  if (plays(shown_) && !plays(kCompanionDeck)) return;
  for (const std::size_t deck : kOrder) {
    if (plays(deck)) {
      shown_ = deck;
      return;
    }
  }
  const bool stands = decks_[kCompanionDeck].image != nullptr && HasBegun(decks[kCompanionDeck]);
  shown_ = stands ? kCompanionDeck : kShown;
}

DiscView DiscFinder::Tick(const std::array<DeckView, kDecks>& decks) {
  for (std::size_t deck = 0; deck < kShown; ++deck) {
    if (decks[deck].filename != decks_[deck].song) Find(deck, decks[deck].filename);
  }
  Choose(decks);
  if (shown_ == kShown) return {};
  const DeckView& deck = decks[shown_];
  return {decks_[shown_].image,
          {deck.position, context_.clock.Now(), deck.state == DeckView::State::Playing ? deck.speed : 0,
           deck.length}};
}

void DiscFinder::Release() {
  for (OnDeck& deck : decks_) {
    ++deck.newest;
    deck.image.reset();
  }
  shown_ = kShown;
}

}  // namespace app
