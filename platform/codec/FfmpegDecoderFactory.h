// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/ports/PcmDecoder.h"

namespace platform::codec {

/// Decodes with FFmpeg what its demuxers recognise by content.
/// Threads: any; blocks on the disk.
class FfmpegDecoderFactory : public engine::DecoderFactory {
 public:
  FfmpegDecoderFactory();
  support::Result<std::unique_ptr<engine::PcmDecoder>> Open(const std::string& path,
                                                            engine::DecoderKind kind) override;
};

}  // namespace platform::codec
