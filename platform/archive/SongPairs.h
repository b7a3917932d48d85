// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform::archive {

/// A file in an archive, as the archive's directory tells of it.
struct Member {
  std::string name;         ///< with the folders it lies in, in UTF-8
  std::int64_t bytes = 0;   ///< unpacked
  std::uint64_t place = 0;  ///< in the directory
  bool locked = false;      ///< by a password
};

/// The sound and the picture of a karaoke song.
struct SongPair {
  Member sound;
  Member picture;
};

/// A picture counts whose sound has the same name, whatever the letter case; one in the same folder goes
/// before one elsewhere, and the kinds of sound go in a fixed order. A single picture and a single sound
/// belong together whatever they are called. What systems put beside files, and names that lead upwards, are
/// no members. In order of the pictures' names.
[[nodiscard]] std::vector<SongPair> PairSongs(const std::vector<Member>& members);

/// Whether there is any picture at all.
[[nodiscard]] bool HasPicture(const std::vector<Member>& members);

}  // namespace platform::archive
