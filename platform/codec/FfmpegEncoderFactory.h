// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/ports/Encoder.h"

namespace platform::codec {

/// Writes audio files with FFmpeg: mp3, ogg (Vorbis), flac, wma, wav, m4a (AAC).
///
/// The same samples give the same bytes: no dates, no random serial numbers.
/// Threads: any; blocks on the disk.
class FfmpegEncoderFactory : public engine::EncoderFactory {
 public:
  FfmpegEncoderFactory();
  support::Result<std::unique_ptr<engine::Encoder>> Open(const std::string& path,
                                                         const engine::EncoderFormat& format) override;
};

}  // namespace platform::codec
