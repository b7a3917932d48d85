// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codec/testing/Sounds.h"

namespace platform::codec::testing {

/// Makes audio files, whole and broken ones, in a folder of its own that goes away with it.
/// Threads: one at a time. Owns: the folder.
class MediaMaker {
 public:
  MediaMaker();
  ~MediaMaker();
  MediaMaker(const MediaMaker&) = delete;
  MediaMaker& operator=(const MediaMaker&) = delete;

  /// Every extension that Write knows.
  static constexpr std::string_view kExtensions[] = {"mp3", "ogg", "flac", "wma", "wav", "m4a"};

  [[nodiscard]] std::string PathOf(std::string_view name) const;
  /// Writes the sound in the format of the name's extension; returns the path.
  std::string Write(std::string_view name, const Sound& sound, int bit_rate = 192'000) const;
  std::string WriteBytes(std::string_view name, std::string_view bytes) const;
  [[nodiscard]] static std::string BytesOf(const std::string& path);

  // Broken variants: each writes a new file and returns its path.
  std::string Empty(std::string_view name) const;
  std::string Random(std::string_view name, std::size_t bytes) const;
  std::string Text(std::string_view name) const;
  /// The first part of a file; 1 is the whole.
  std::string CutAt(const std::string& whole, std::string_view name, double part) const;
  std::string FirstBytes(const std::string& whole, std::string_view name, std::size_t bytes) const;
  /// The middle tenth overwritten with noise.
  std::string DamagedMiddle(const std::string& whole, std::string_view name) const;
  std::string JunkInFront(const std::string& whole, std::string_view name, std::size_t bytes) const;
  /// The same bytes under another name.
  std::string Renamed(const std::string& whole, std::string_view name) const;

 private:
  std::filesystem::path folder_;
};

/// A mono WAV file of 32-bit floats as bytes: holds what 16-bit samples cannot.
[[nodiscard]] std::string FloatWavBytes(const std::vector<float>& samples, int sample_rate = 44100);
/// Bytes that look like nothing, the same on every run.
[[nodiscard]] std::string JunkBytes(std::size_t count);

}  // namespace platform::codec::testing
