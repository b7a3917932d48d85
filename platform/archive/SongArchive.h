// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "karaoke/ports/DiscImages.h"
#include "platform/archive/SongPairs.h"
#include "platform/files/PlainFile.h"
#include "support/Result.h"

struct zip;

namespace platform::archive {

/// More is no karaoke song, whatever an archive claims.
inline constexpr std::int64_t kLargestSound = 256LL << 20;  ///< bytes
inline constexpr std::int64_t kLargestPicture{karaoke::kLongestDiscImage};

/// Whether an open file begins as a zip archive does; it stays at its start.
[[nodiscard]] bool IsArchive(const files::PlainFile& file);

/// A zip archive with a karaoke song in it.
///
/// Of several songs the first is taken. Law: nothing is written to the disk; no more is unpacked than the
/// directory told, and what comes out otherwise than it told is damaged. Failures are Malformed, Empty or
/// Unsupported where the archive is no song that can be played, and name it. Threads: one; blocks on the
/// disk. Owns: the open file.
class SongArchive {
 public:
  /// path: for the failure's sentence.
  static support::Result<SongArchive> Open(files::PlainFile file, const std::string& path);

  [[nodiscard]] const SongPair& Song() const { return songs_.front(); }
  /// All that are there, the one that is taken first.
  [[nodiscard]] const std::vector<SongPair>& Songs() const { return songs_; }
  /// As a file in memory.
  [[nodiscard]] support::Result<files::PlainFile> UnpackSound();
  [[nodiscard]] support::Result<std::vector<std::uint8_t>> UnpackPicture();

 private:
  struct Closer {
    void operator()(zip* open) const;
  };
  using Zip = std::unique_ptr<zip, Closer>;
  /// False: there is no memory for them.
  using Sink = std::function<bool(std::span<const char>)>;

  SongArchive(Zip zip, std::string name, std::vector<SongPair> songs);
  [[nodiscard]] support::Result<void> Check(const Member& member, std::int64_t most) const;
  [[nodiscard]] support::Result<void> Unpack(const Member& member, const Sink& sink);

  Zip zip_;
  std::string name_;
  std::vector<SongPair> songs_;
};

}  // namespace platform::archive
