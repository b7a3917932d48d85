// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/ports/Encoder.h"
#include "platform/files/DiskCalls.h"

namespace platform::codec {

/// Writes audio files: with FFmpeg mp3, ogg (Vorbis), opus, flac, wma, m4a (AAC), by itself wav.
///
/// The same samples give the same bytes: no dates, no random serial numbers.
/// Threads: any; blocks on the disk.
class FfmpegEncoderFactory : public engine::EncoderFactory {
 public:
  /// The calls outlive the factory and its encoders.
  explicit FfmpegEncoderFactory(files::DiskCalls& calls = files::SystemDisk());
  support::Result<std::unique_ptr<engine::Encoder>> Open(const std::string& path,
                                                         const engine::EncoderFormat& format) override;
  support::Result<double> Repair(const std::string& path) override;

 private:
  files::DiskCalls& calls_;
};

}  // namespace platform::codec
