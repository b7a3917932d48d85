// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/archive/SongPairs.h"

#include <algorithm>
#include <array>
#include <map>
#include <tuple>
#include <utility>

#include "support/Text.h"

namespace platform::archive {
namespace {

constexpr std::string_view kPicture = "CDG";
/// The usual one first.
constexpr std::array<std::string_view, 10> kSounds{"MP3", "OGG", "WAV",  "FLAC", "M4A",
                                                   "WMA", "AAC", "OPUS", "AIF",  "AIFF"};

/// A member's name in capitals, taken apart.
struct PartedName {
  std::string folder;
  std::string stem;
  std::string extension;
};

/// Whether it is a file that somebody put there. Some programs write a backslash between folders.
bool IsFile(std::string_view name) {
  for (std::size_t cut = 0; (cut = name.find_first_of("/\\")) != std::string_view::npos;) {
    if (const std::string_view folder = name.substr(0, cut); folder == ".." || folder == "__MACOSX")
      return false;
    name.remove_prefix(cut + 1);
  }
  return !name.empty() && name.front() != '.';
}

PartedName TakeApart(std::string_view name) {
  const std::string all = support::ToUpper(name);
  const std::size_t cut = all.find_last_of("/\\");
  const std::size_t from = cut == std::string::npos ? 0 : cut + 1;
  const std::size_t dot = all.rfind('.');
  if (dot == std::string::npos || dot < from) return {all.substr(0, from), all.substr(from), {}};
  return {all.substr(0, from), all.substr(from, dot - from), all.substr(dot + 1)};
}

/// Smaller is better; as many as there are for what is no sound.
std::size_t RankOf(std::string_view extension) {
  return static_cast<std::size_t>(std::find(kSounds.begin(), kSounds.end(), extension) - kSounds.begin());
}

struct Sound {
  const Member* member;
  std::string folder;
  std::size_t rank;
};

struct Sorted {
  std::map<std::string, std::vector<Sound>> sounds;  ///< by their stems
  std::vector<std::pair<PartedName, const Member*>> pictures;
};

Sorted Sort(const std::vector<Member>& members) {
  Sorted sorted;
  for (const Member& member : members) {
    if (!IsFile(member.name)) continue;
    PartedName name = TakeApart(member.name);
    if (name.extension == kPicture) {
      sorted.pictures.emplace_back(std::move(name), &member);
    } else if (const std::size_t rank = RankOf(name.extension); rank < kSounds.size()) {
      sorted.sounds[name.stem].push_back({&member, std::move(name.folder), rank});
    }
  }
  return sorted;
}

const Sound& BestFor(const PartedName& picture, const std::vector<Sound>& sounds) {
  return *std::min_element(sounds.begin(), sounds.end(), [&](const Sound& one, const Sound& other) {
    return std::tuple(one.folder != picture.folder, one.rank) <
           std::tuple(other.folder != picture.folder, other.rank);
  });
}

}  // namespace

std::vector<SongPair> PairSongs(const std::vector<Member>& members) {
  const Sorted sorted = Sort(members);
  std::vector<SongPair> pairs;
  for (const auto& [name, picture] : sorted.pictures) {
    const auto found = sorted.sounds.find(name.stem);
    if (found != sorted.sounds.end()) pairs.push_back({*BestFor(name, found->second).member, *picture});
  }
  const auto& sounds = sorted.sounds;
  if (pairs.empty() && sorted.pictures.size() == 1 && sounds.size() == 1 &&
      sounds.begin()->second.size() == 1) {
    pairs.push_back({*sounds.begin()->second.front().member, *sorted.pictures.front().second});
  }
  std::sort(pairs.begin(), pairs.end(), [](const SongPair& one, const SongPair& other) {
    return std::tie(one.picture.name, one.picture.place) < std::tie(other.picture.name, other.picture.place);
  });
  return pairs;
}

bool HasPicture(const std::vector<Member>& members) {
  return !Sort(members).pictures.empty();
}

}  // namespace platform::archive
