// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace app {

/// The lists that files and rows go into and come out of.
enum class ListId { Catalogue, Karaoke, Playlist1, Playlist2, Playlist3 };
inline constexpr std::size_t kLists = 5;
inline constexpr int kPlaylists = 3;
[[nodiscard]] constexpr bool IsPlaylist(ListId list) {
  return list >= ListId::Playlist1;
}
/// Requires: 1 to 3.
[[nodiscard]] constexpr ListId PlaylistNumber(int number) {
  return static_cast<ListId>(static_cast<int>(ListId::Karaoke) + number);
}

/// Files and folders that somebody handed over.
struct IntakeOrder {
  /// Opened: through a playlist's open button, where only what is described does anything. Dropped: meant as
  /// they are, and new to the catalogue too.
  enum class Source { Dropped, Opened };
  ListId list = ListId::Catalogue;
  Source source = Source::Dropped;
  /// Row of a playlist before which they come; 0 is its end.
  int before = 0;
  /// File of the row above that place then; rows may have moved when they come. Not kept.
  std::string below{};
  std::vector<std::string> paths{};
  bool operator==(const IntakeOrder&) const = default;
};

/// As text: a line that names list, place and source, and a line for each path with a tab before it. A path
/// that no line can hold is left out; what cannot be understood is passed over when it is read.
[[nodiscard]] std::string OrdersText(const std::vector<std::shared_ptr<const IntakeOrder>>& orders);
[[nodiscard]] std::vector<IntakeOrder> ReadOrders(std::string_view text);

/// Data file of the orders that the last run has left to do.
inline constexpr std::string_view kOrdersFile = "\\tlv.adding";

}  // namespace app
