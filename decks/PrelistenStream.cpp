// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/PrelistenStream.h"

#include "decks/StreamBuild.h"

namespace decks {

void PrelistenStream::Open(const std::string& filename) {
  engine_.BASS_FX_BPM_Free(stream);
  engine_.BASS_StreamFree(stream);
  RemoveEffects(engine_, stream);
  const bool there = engine_.BASS_SetDevice(device);
  stream = there ? WrapInTempo(engine_, CreateForPair(filename)) : 0;
}

void PrelistenStream::Start(const std::string& filename, StreamHandle main) {
  if (SpeakerFlag(speaker) == 0) {
    engine_.BASS_StreamFree(stream);
    const bool there = engine_.BASS_SetDevice(device);
    stream = there ? WrapInTempo(engine_, CreateForAll(filename)) : 0;
  }
  SetVolume(0);
  Follow(main);
  FollowMain(main);
  engine_.BASS_ChannelPlay(stream, false);
}

void PrelistenStream::Resume(StreamHandle main) {
  FollowMain(main);
  engine_.BASS_ChannelPlay(stream, false);
}

void PrelistenStream::Stop() {
  engine_.BASS_ChannelStop(stream);
  engine_.BASS_StreamFree(stream);
  RemoveEffects(engine_, stream);
  stream = 0;
}

void PrelistenStream::SetVolume(int level) {
  volume = level;
  SetLevel(engine_, stream, level);
}

StreamHandle PrelistenStream::CreateForPair(const std::string& filename) {
  const StreamType type = StreamTypeOf(filename);
  const std::uint32_t pair = SpeakerFlag(speaker);
  if (type == StreamType::General) return CreateDecoder(engine_, filename, type, pair, kStreamDecode);
  return CreateDecoder(engine_, filename, type, 0, kStreamDecode | pair);
}

StreamHandle PrelistenStream::CreateForAll(const std::string& filename) {
  const StreamHandle general = CreateDecoder(engine_, filename, StreamType::General, 0, kStreamDecode);
  const StreamType type = StreamTypeOf(filename);
  if (general != 0 || type == StreamType::General) return general;
  return CreateDecoder(engine_, filename, type, 0, kStreamDecode);
}

void PrelistenStream::FollowMain(StreamHandle main) {
  engine_.BASS_ChannelSetPosition(stream, engine_.BASS_ChannelGetPosition(main));
}

}  // namespace decks
