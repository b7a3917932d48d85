// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "support/Settings.h"

namespace app {

enum class RecordingFormat { Flac, Wav, Ogg, Opus, Mp3 };

/// Without the dot.
[[nodiscard]] std::string_view ExtensionOf(RecordingFormat format);

/// What the evening is recorded to.
struct RecordingChoice {
  enum class Files {
    One,     ///< with a cue sheet
    OneEach  ///< a file a track
  };
  RecordingFormat format = RecordingFormat::Flac;
  int bits = 16;       ///< of Flac and Wav: 16 or 24
  int bit_rate = 192;  ///< of the others, in kbit/s
  Files files = Files::One;
  std::string folder;  ///< native path
  std::string name;    ///< before date and time; may be empty
  bool operator==(const RecordingChoice&) const = default;
};

/// What a second of it takes on the disk, roughly where that depends on the music.
[[nodiscard]] std::int64_t BytesASecond(const RecordingChoice& choice);

[[nodiscard]] RecordingChoice StoredRecordingChoice(const support::Settings& settings);
void StoreRecordingChoice(support::Settings& settings, const RecordingChoice& choice);

}  // namespace app
