// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace catalogue {

/// How a file's name tells artist and title where its tag does not.
struct NameRule {
  enum class Order { ArtistFirst, TitleFirst };
  Order order = Order::ArtistFirst;
  std::string separator = "-";  ///< of the two; where it is empty, no name is split
  bool use_artist = true;       ///< names give the artist
  bool use_split = true;        ///< names are split
  bool operator==(const NameRule&) const = default;
};

/// Views into the path that was split.
struct NamesOfFile {
  std::string_view artist;
  std::string_view title;
};

/// What the last part of a path, without its extension, tells: split at the first separator, blanks around
/// both taken off. The title is all of it where it is not split, or where nothing stands on one side.
[[nodiscard]] NamesOfFile SplitName(std::string_view path, const NameRule& rule);

}  // namespace catalogue
