// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string>

namespace platform::sidestore {

/// Where the sound lies in a file, between its tags.
struct SoundSpan {
  enum class Kind { Plain, OggPages };
  Kind kind = Kind::Plain;
  std::uint64_t begin = 0;
  std::uint64_t size = 0;
};

/// By the content alone: MPEG between ID3, APE and Lyrics3 tags, FLAC behind its metadata, Ogg behind its
/// comments, ASF behind its header, the data of MP4 and WAV; of anything else all of it. Reads heads only. A
/// file that is damaged gives some span, the same each time.
[[nodiscard]] SoundSpan FindSound(std::istream& file, std::uint64_t file_size);

/// The size of the sound as eight bytes, the first ones of every such text.
[[nodiscard]] std::string SizeText(const SoundSpan& sound);

/// The size and a checksum of the beginning, the middle and the end, which no change of a tag touches.
/// Nothing when it cannot be read.
[[nodiscard]] std::optional<std::string> ContentText(std::istream& file, const SoundSpan& sound);

}  // namespace platform::sidestore
