// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of SoundEngine on a single channel: playing, placing, asking.

#include <algorithm>
#include <cmath>

#include "engine/SoundEngine.h"

namespace engine {
namespace {

std::int64_t BytesOf(std::int64_t frames, const PcmFormat& format) {
  return frames * 2 * format.channels;
}

std::uint32_t LevelWord(float peak) {
  constexpr float kFullScale = 32768;
  return static_cast<std::uint32_t>(std::lround(std::min(peak, 1.0F) * kFullScale));
}

/// In Hz; 0 stays, it means the file's own.
double PlayableRate(double asked) {
  return asked == 0 ? 0 : std::clamp(asked, 1000.0, 768'000.0);
}

bool IsPlaying(const Stream& stream) {
  const std::uint64_t asked = stream.TransportAsked();
  if (asked != stream.transport_seen.load(std::memory_order_acquire)) {
    return Stream::TransportOf(asked) == Stream::Transport::Play;
  }
  return stream.playing.load(std::memory_order_acquire);
}

bool HasUnheardEnd(const Stream& stream, const HeardPlace& place) {
  return stream.ended_place.load(std::memory_order_acquire) != 0 && !place.ended;
}

/// Orders it to a place, or to its leader's, while that one plays.
void Place(Stream& stream, const Stream* leader, std::int64_t frame) {
  const bool led = leader != nullptr && IsPlaying(*leader);
  stream.Seek(frame, led ? Stream::Where::WithLeader : Stream::Where::Here);
}

/// The place that is heard has come, or was sent, to what is not decoded yet.
bool IsWaiting(const Stream& stream, const HeardPlace& place) {
  constexpr std::int64_t kShortOf = 1024;  // of what a stretcher takes at once
  if (stream.LengthIsExact() || place.ended) return false;
  return std::max(stream.View().frame, place.source + kShortOf) >= stream.Store()->Ready();
}

}  // namespace

void SoundEngine::Follow(decks::StreamHandle follower, decks::StreamHandle leader) {
  Playing* playing = players_.Find(follower);
  if (playing == nullptr || follower == leader) return;
  feeder_.Follow(follower, players_.Follow(*playing, leader));
}

bool SoundEngine::BASS_ChannelPlay(decks::StreamHandle handle, bool restart) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr) return false;
  Stream& stream = *playing->stream;
  const bool at_end = stream.ended_place.load(std::memory_order_acquire) == stream.PlaceWanted();
  const Stream* leader = players_.LeaderOf(*playing);
  const bool joins = leader != nullptr && IsPlaying(*leader) && !IsPlaying(stream);
  if (restart || at_end || joins) Place(stream, leader, restart || at_end ? 0 : PlaceOf(*playing).source);
  stream.Ask(Stream::Transport::Play);
  Wake();
  return true;
}

void SoundEngine::BASS_ChannelPause(decks::StreamHandle handle) {
  if (Playing* playing = players_.Find(handle)) playing->stream->Ask(Stream::Transport::Pause);
}

void SoundEngine::BASS_ChannelStop(decks::StreamHandle handle) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr) return;
  playing->stream->Ask(Stream::Transport::Pause);
  playing->stream->Seek(0);
  Wake();
}

void SoundEngine::BASS_ChannelSetAttributes(decks::StreamHandle handle, int frequency, int volume, int pan) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr) return;
  Stream& stream = *playing->stream;
  if (frequency >= 0) {
    Tempo tempo = stream.GetTempo();
    tempo.sample_rate = PlayableRate(frequency);
    stream.SetTempo(tempo);
  }
  if (volume >= 0) {
    const float level = static_cast<float>(std::min(volume, 100)) / 100.0F;
    stream.SetVolume(level);
    players_.TellLeaving(*playing, level);
  }
  if (pan >= -100 && pan <= 100) stream.SetPan(static_cast<float>(pan) / 100.0F);
}

void SoundEngine::SetGain(decks::StreamHandle handle, support::Decibels gain) {
  constexpr float kFurthest = 24;
  Playing* playing = players_.Find(handle);
  if (playing == nullptr || !std::isfinite(gain.value)) return;
  const float factor = std::pow(10.0F, std::clamp(gain.value, -kFurthest, kFurthest) / 20);
  playing->stream->SetGain(factor);
  players_.TellFollowers(handle);
}

void SoundEngine::BASS_FX_TempoSet(decks::StreamHandle handle, float tempo_percent, float sample_rate,
                                   float semitones) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr) return;
  Tempo tempo = playing->stream->GetTempo();
  if (tempo_percent != decks::kTempoUnchanged && std::isfinite(tempo_percent)) {
    tempo.speed = 1 + std::clamp(static_cast<double>(tempo_percent), -50.0, 100.0) / 100;
  }
  if (sample_rate >= 0) tempo.sample_rate = PlayableRate(sample_rate);
  if (semitones != decks::kTempoUnchanged && std::isfinite(semitones)) {
    tempo.semitones = std::clamp(semitones, -12.0F, 12.0F);
  }
  playing->stream->SetTempo(tempo);
  Wake();
}

void SoundEngine::SetStretch(decks::Stretch choice) {
  devices_->SetStretch(choice);
  for (const auto& [handle, playing] : players_.All()) {
    Tempo tempo = playing.stream->GetTempo();
    tempo.quality = devices_->Quality(playing.stream->Device());
    playing.stream->SetTempo(tempo);
  }
  Wake();
}

std::uint32_t SoundEngine::BASS_ChannelGetLevel(decks::StreamHandle handle) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr) return 0;
  const HeardPlace place = PlaceOf(*playing);
  return LevelWord(place.left_peak) | LevelWord(place.right_peak) << 16;
}

// Decoders are looked for first: their callers may be workers, and the playing streams belong to the owner.

support::BytePosition SoundEngine::BASS_ChannelGetPosition(decks::StreamHandle handle) {
  if (const auto decoder = FindDecoder(handle)) return {BytesOf(decoder->cursor, decoder->store->Format())};
  Playing* playing = players_.Find(handle);
  return {playing == nullptr ? 0 : BytesOf(PlaceOf(*playing).source, playing->stream->Format())};
}

support::BytePosition SoundEngine::BASS_ChannelGetLength(decks::StreamHandle handle) {
  if (const auto decoder = FindDecoder(handle))
    return {BytesOf(decoder->store->Length(), decoder->store->Format())};
  Playing* playing = players_.Find(handle);
  return {playing == nullptr ? 0 : BytesOf(playing->stream->Length(), playing->stream->Format())};
}

bool SoundEngine::BASS_ChannelSetPosition(decks::StreamHandle handle, support::BytePosition position) {
  const auto decoder = FindDecoder(handle);
  Playing* playing = decoder == nullptr ? players_.Find(handle) : nullptr;
  if (playing == nullptr && decoder == nullptr) return false;
  const PcmFormat format = playing != nullptr ? playing->stream->Format() : decoder->store->Format();
  const std::int64_t length = playing != nullptr ? playing->stream->Length() : decoder->store->Length();
  const std::int64_t frame = position.value / BytesOf(1, format);
  if (position.value < 0 || frame >= length) return false;
  if (decoder != nullptr) {
    decoder->cursor = frame;
    return true;
  }
  // Its end is mixed but not heard yet: for whoever listens it still plays.
  const bool plays_on = HasUnheardEnd(*playing->stream, PlaceOf(*playing));
  Place(*playing->stream, players_.LeaderOf(*playing), frame);
  if (plays_on) playing->stream->Ask(Stream::Transport::Play);
  Wake();
  return true;
}

bool SoundEngine::BASS_ChannelIsActive(decks::StreamHandle handle) {
  if (const auto decoder = FindDecoder(handle)) {
    return !decoder->store->Complete() || decoder->cursor < decoder->store->Length();
  }
  Playing* playing = players_.Find(handle);
  return playing != nullptr &&
         (IsPlaying(*playing->stream) || HasUnheardEnd(*playing->stream, PlaceOf(*playing)));
}

double SoundEngine::BASS_ChannelBytes2Seconds(decks::StreamHandle handle, support::BytePosition position) {
  const auto decoder = FindDecoder(handle);
  Playing* playing = decoder == nullptr ? players_.Find(handle) : nullptr;
  if (decoder == nullptr && playing == nullptr) return 0;
  const PcmFormat format = playing != nullptr ? playing->stream->Format() : decoder->store->Format();
  return static_cast<double>(position.value) / static_cast<double>(BytesOf(format.sample_rate, format));
}

decks::SampleFormat SoundEngine::FormatOf(decks::StreamHandle handle) {
  const auto decoder = FindDecoder(handle);
  Playing* playing = decoder == nullptr ? players_.Find(handle) : nullptr;
  if (decoder == nullptr && playing == nullptr) return {};
  const PcmFormat format = playing != nullptr ? playing->stream->Format() : decoder->store->Format();
  return {format.sample_rate, format.channels};
}

decks::HeardStream SoundEngine::Heard(decks::StreamHandle handle) {
  decks::HeardStream heard;
  Playing* playing = players_.Find(handle);
  if (playing == nullptr) return heard;
  const Stream& stream = *playing->stream;
  const HeardPlace place = PlaceOf(*playing);
  heard.playing = IsPlaying(stream) || HasUnheardEnd(stream, place);
  heard.ended = place.ended;
  heard.frame = {place.source};
  heard.length_exact = stream.LengthIsExact();
  heard.length = {stream.Length()};
  heard.cut_short = stream.Store() != nullptr && stream.Store()->CutShort();
  heard.sample_rate = stream.Format().sample_rate;
  heard.channels = stream.Format().channels;
  const RenderCore& core = playing->slot->Core();
  heard.ratio = place.ratio * core.SampleRate() / heard.sample_rate;
  if (const std::int64_t frame = playing->slot->HeardFrame(); frame != kNothingHeard) {
    heard.lag = static_cast<double>(core.Frames() - frame) / core.SampleRate();
  }
  heard.waiting = IsWaiting(stream, place);
  heard.left_peak = place.left_peak;
  heard.right_peak = place.right_peak;
  return heard;
}

support::EngineFrame SoundEngine::NextFrame(decks::StreamHandle handle) {
  Playing* playing = players_.Find(handle);
  return {playing == nullptr ? 0 : playing->slot->Core().Frames()};
}

bool SoundEngine::Schedule(const decks::ScheduledCommand& command) {
  Playing* playing = players_.Find(command.stream);
  if (playing == nullptr || !std::isfinite(command.value)) return false;
  RenderCore& core = playing->slot->Core();
  RenderCore::Command timed;
  timed.at = command.at.value;
  switch (command.kind) {
    case decks::ScheduledCommand::Kind::Tempo:
      return playing->stream->AddTimedTempo(
          {command.at.value, 1 + std::clamp(static_cast<double>(command.value), -50.0, 100.0) / 100});
    case decks::ScheduledCommand::Kind::Start:
      timed.kind = RenderCore::Command::Kind::Start;
      break;
    case decks::ScheduledCommand::Kind::Pause:
      timed.kind = RenderCore::Command::Kind::Pause;
      break;
    case decks::ScheduledCommand::Kind::Ramp:
      timed.kind = RenderCore::Command::Kind::Ramp;
      timed.volume = std::clamp(command.value, 0.0F, 100.0F) / 100.0F;
      const double seconds = std::chrono::duration<double>(command.duration).count();
      timed.frames = static_cast<int>(std::clamp(seconds, 0.005, 3600.0) * core.SampleRate());
      break;
  }
  if (!core.Schedule(*playing->stream, timed)) return false;
  if (timed.kind == RenderCore::Command::Kind::Ramp) players_.TellLeaving(*playing, timed.volume);
  return true;
}

void SoundEngine::CancelScheduled(decks::StreamHandle handle) {
  if (Playing* playing = players_.Find(handle)) playing->stream->CancelScheduled();
}

}  // namespace engine
