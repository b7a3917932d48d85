// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/FfmpegEncoderFactory.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include "platform/codec/FfmpegDecoder.h"
#include "platform/codec/FfmpegEncoder.h"
#include "platform/codec/RecordingRepair.h"
#include "platform/codec/WavEncoder.h"
#include "platform/files/PlainFile.h"

namespace platform::codec {
namespace {

using support::ErrorCode;
using support::Failed;
using support::Sentence;

constexpr std::array<Recipe, 7> kRecipes{{{"MP3", "mp3", "libmp3lame"},
                                          {"OGG", "ogg", "libvorbis"},
                                          {"OPUS", "opus", "libopus"},
                                          {"FLAC", "flac", "flac"},
                                          {"WMA", "asf", "wmav2"},
                                          {"WAV", "wav", "pcm_s16le"},
                                          {"M4A", "ipod", "aac"}}};

template <typename Made, typename Opened>
support::Result<std::unique_ptr<engine::Encoder>> Whole(std::unique_ptr<Made> encoder, const Opened& opened) {
  if (!opened) return opened.Failure();
  return std::unique_ptr<engine::Encoder>(std::move(encoder));
}

}  // namespace

FfmpegEncoderFactory::FfmpegEncoderFactory(files::DiskCalls& calls) : calls_(calls) {
  SilenceLibraries();
}

support::Result<std::unique_ptr<engine::Encoder>> FfmpegEncoderFactory::Open(
    const std::string& path, const engine::EncoderFormat& format) {
  const std::string extension = files::ExtensionOf(path);
  const auto recipe = std::find_if(kRecipes.begin(), kRecipes.end(),
                                   [&](const Recipe& r) { return r.extension == extension; });
  if (recipe == kRecipes.end()) {
    return Failed(ErrorCode::Unsupported, Sentence::EndingUnknown, {files::LastPart(path)});
  }
  if (format.channels < 1 || format.channels > 8 || format.sample_rate < 1) {
    return Failed(ErrorCode::Unsupported, Sentence::ChannelsNotWritable, {files::LastPart(path)});
  }
  const bool all_along = format.readable == engine::EncoderFormat::Readable::AllAlong;
  auto file = OutputFile::Create(
      path, all_along ? OutputFile::Existing::Refused : OutputFile::Existing::Replaced, calls_);
  if (!file) return file.Failure();
  if (extension == "WAV" && format.channels <= 2) {
    auto encoder = std::make_unique<WavEncoder>(std::move(file).Value(), format);
    const auto begun = encoder->Begin();
    return Whole(std::move(encoder), begun);
  }
  auto encoder = std::make_unique<FfmpegEncoder>(path, std::move(file).Value());
  const auto opened = encoder->Open(*recipe, format);
  auto whole = Whole(std::move(encoder), opened);
  std::error_code ignored;
  if (!whole) std::filesystem::remove(path, ignored);
  return whole;
}

support::Result<double> FfmpegEncoderFactory::Repair(const std::string& path) {
  RepairHead(path);
  auto opened = FfmpegDecoder::Open(path);
  if (!opened) return opened.Failure();
  const auto& decoder = *opened.Value();
  return static_cast<double>(decoder.EstimatedFrames().value_or(0)) /
         std::max(1, decoder.Format().sample_rate);
}

}  // namespace platform::codec
