// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/StreamBuild.h"

#include "support/Text.h"

namespace decks {

StreamType StreamTypeOf(std::string_view filename) {
  if (support::UpperTail(filename, 4) == "FLAC") return StreamType::Flac;
  if (support::UpperTail(filename, 3) == "WMA") return StreamType::Wma;
  return StreamType::General;
}

std::uint32_t SpeakerFlag(int code) {
  switch (code) {
    case 1:
      return kSpeakerFront;
    case 2:
      return kSpeakerRear;
    case 3:
      return kSpeakerCentreLfe;
    case 4:
      return kSpeakerRear2;
    default:
      return 0;
  }
}

StreamHandle CreateDecoder(AudioEngine& engine, const std::string& filename, StreamType type,
                           std::uint64_t length, std::uint32_t flags) {
  switch (type) {
    case StreamType::Flac:
      return engine.BASS_FLAC_StreamCreateFile(false, filename, 0, length, flags);
    case StreamType::Wma:
      return engine.BASS_WMA_StreamCreateFile(false, filename, 0, length, flags);
    case StreamType::General:
      break;
  }
  return engine.BASS_StreamCreateFile(false, filename, 0, length, flags);
}

StreamHandle WrapInTempo(AudioEngine& engine, StreamHandle decoder) {
  return engine.BASS_FX_TempoCreate(decoder, kTempoFreeSource | kTempoLoop);
}

void RemoveEffects(AudioEngine& engine, StreamHandle stream) {
  for (const int type : {3, 2, 1, 0, 7, 5, 4}) engine.BASS_FX_DSP_Remove(stream, type);
}

void SetLevel(AudioEngine& engine, StreamHandle stream, int volume) {
  constexpr int kSameFrequency = -1;
  constexpr int kSamePan = -101;
  engine.BASS_ChannelSetAttributes(stream, kSameFrequency, volume, kSamePan);
}

}  // namespace decks
