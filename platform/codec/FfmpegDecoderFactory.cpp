// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/FfmpegDecoderFactory.h"

#include "platform/codec/FfmpegDecoder.h"
#include "support/Sentences.h"

namespace platform::codec {

FfmpegDecoderFactory::FfmpegDecoderFactory() {
  SilenceLibraries();
}

support::Result<std::unique_ptr<engine::PcmDecoder>> FfmpegDecoderFactory::Open(const std::string& path,
                                                                                engine::DecoderKind kind) {
  auto opened = FfmpegDecoder::Open(path);
  if (!opened) return opened.Failure();
  std::unique_ptr<FfmpegDecoder> decoder = std::move(opened).Value();
  if (decoder->Kind() != kind && !decoder->IsPacked()) {
    return support::Failed(support::ErrorCode::Malformed, support::Sentence::OtherFormat,
                           {files::LastPart(path), decoder->ContentName(), decoder->UsualExtension()});
  }
  return std::unique_ptr<engine::PcmDecoder>(std::move(decoder));
}

}  // namespace platform::codec
