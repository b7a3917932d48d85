// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of RecordingEngine on what plays and what is read.

#include <algorithm>
#include <cmath>

#include "decks/testing/CallText.h"
#include "decks/testing/RecordingEngine.h"

namespace decks::testing {
namespace {

using support::MutexLock;

constexpr double kDeviceRate = 44100;
constexpr std::size_t kScheduled = 32;

support::TimePoint TimeOf(support::EngineFrame frame) {
  const std::chrono::duration<double> time(static_cast<double>(frame.value) / kDeviceRate);
  return support::TimePoint(std::chrono::ceil<support::Duration>(time));
}

}  // namespace

void RecordingEngine::Stream::MoveTo(support::TimePoint time) {
  const std::chrono::duration<double> passed = time - since;
  since = time;
  if (!playing) return;
  frame += passed.count() * file.sample_rate * Speed();
  if (frame < Length()) return;
  const std::chrono::duration<double> ago((frame - Length()) / file.sample_rate / Speed());
  ended_at = time - std::chrono::duration_cast<support::Duration>(ago);
  frame = Length();
  playing = false;
}

void RecordingEngine::Stream::Follow(support::TimePoint time) {
  while (!waiting.empty() && TimeOf(waiting.front().at) <= time) {
    const ScheduledCommand command = waiting.front();
    waiting.erase(waiting.begin());
    MoveTo(std::max(since, TimeOf(command.at)));
    if (command.kind == ScheduledCommand::Kind::Start) playing = frame < Length();
    if (command.kind == ScheduledCommand::Kind::Pause) playing = false;
    if (command.kind == ScheduledCommand::Kind::Tempo) SetTempo(command.value);
  }
  MoveTo(time);
}

void RecordingEngine::Stream::SetTempo(float percent) {
  if (percent != kTempoUnchanged && std::isfinite(percent)) tempo = std::clamp(percent, -50.0F, 100.0F);
}

void RecordingEngine::Stream::SetRate(float hertz) {
  if (hertz >= 0) rate = hertz == 0 ? 0 : std::clamp(hertz, 1000.0F, 768'000.0F);
}

void RecordingEngine::BASS_FX_TempoSet(StreamHandle stream, float tempo_percent, float sample_rate,
                                       float semitones) {
  MutexLock lock(mutex_);
  const bool works = Record(Line("BASS_FX_TempoSet", stream, tempo_percent, sample_rate, semitones));
  Stream* found = works ? At(stream) : nullptr;
  if (found == nullptr) return;
  found->SetTempo(tempo_percent);
  found->SetRate(sample_rate);
  if (semitones != kTempoUnchanged && std::isfinite(semitones)) {
    found->semitones = std::clamp(semitones, -12.0F, 12.0F);
  }
}

bool RecordingEngine::BASS_ChannelPlay(StreamHandle stream, bool restart) {
  MutexLock lock(mutex_);
  Stream* found = Record(Line("BASS_ChannelPlay", stream, restart ? 1 : 0)) ? At(stream) : nullptr;
  if (found == nullptr) return false;
  if (restart || found->frame >= found->Length()) found->frame = 0;
  found->playing = true;
  return true;
}

void RecordingEngine::BASS_ChannelPause(StreamHandle stream) {
  MutexLock lock(mutex_);
  Stream* found = Record(Line("BASS_ChannelPause", stream)) ? At(stream) : nullptr;
  if (found != nullptr) found->playing = false;
}

void RecordingEngine::BASS_ChannelStop(StreamHandle stream) {
  MutexLock lock(mutex_);
  Stream* found = Record(Line("BASS_ChannelStop", stream)) ? At(stream) : nullptr;
  if (found == nullptr) return;
  found->playing = false;
  found->frame = 0;
}

void RecordingEngine::BASS_ChannelSetAttributes(StreamHandle stream, int frequency, int volume, int pan) {
  MutexLock lock(mutex_);
  Stream* found =
      Record(Line("BASS_ChannelSetAttributes", stream, frequency, volume, pan)) ? At(stream) : nullptr;
  if (found == nullptr) return;
  found->SetRate(static_cast<float>(frequency));
  if (volume >= 0) found->volume = std::min(volume, 100);
  if (pan >= -100 && pan <= 100) found->pan = pan;
}

bool RecordingEngine::BASS_ChannelGetAttributes(StreamHandle stream, int& frequency, int& volume, int& pan) {
  MutexLock lock(mutex_);
  const Stream* found = Record(Line("BASS_ChannelGetAttributes", stream)) ? At(stream) : nullptr;
  if (found == nullptr) return false;
  frequency = found->rate == 0 ? found->file.sample_rate : static_cast<int>(std::lround(found->rate));
  volume = found->volume;
  pan = found->pan;
  return true;
}

std::uint32_t RecordingEngine::BASS_ChannelGetLevel(StreamHandle stream) {
  MutexLock lock(mutex_);
  const Stream* found = At(stream);
  if (found == nullptr || !found->playing) return 0;
  return static_cast<std::uint32_t>(found->file.left_peak) | static_cast<std::uint32_t>(found->RightPeak())
                                                                 << 16;
}

support::BytePosition RecordingEngine::BASS_ChannelGetPosition(StreamHandle stream) {
  MutexLock lock(mutex_);
  const Source* found = Record(Line("BASS_ChannelGetPosition", stream)) ? SourceAt(stream) : nullptr;
  return {found == nullptr ? 0 : static_cast<std::int64_t>(found->frame) * found->FrameBytes()};
}

support::BytePosition RecordingEngine::BASS_ChannelGetLength(StreamHandle stream) {
  MutexLock lock(mutex_);
  const Source* found = Record(Line("BASS_ChannelGetLength", stream)) ? SourceAt(stream) : nullptr;
  return {found == nullptr ? 0 : std::llround(found->Length()) * found->FrameBytes()};
}

bool RecordingEngine::BASS_ChannelSetPosition(StreamHandle stream, support::BytePosition position) {
  MutexLock lock(mutex_);
  Source* found =
      Record(Line("BASS_ChannelSetPosition", stream, position.value)) ? SourceAt(stream) : nullptr;
  if (found == nullptr || position.value < 0) return false;
  const auto frame = static_cast<double>(position.value / found->FrameBytes());
  if (frame >= found->Length()) return false;
  if (Stream* playing = At(stream); playing != nullptr && playing->frame >= playing->Length()) {
    playing->ended_until = clock_.Now() + latency_;
    playing->playing = clock_.Now() < playing->ended_at + latency_;
  }
  found->frame = frame;
  return true;
}

std::uint32_t RecordingEngine::BASS_ChannelGetData(StreamHandle decoder, std::span<std::int16_t> buffer,
                                                   std::uint32_t bytes) {
  MutexLock lock(mutex_);
  Source* found = Record(Line("BASS_ChannelGetData", decoder, bytes)) ? DecoderAt(decoder) : nullptr;
  if (found == nullptr) return 0;
  const double left = found->Length() - found->frame;
  const auto frame_bytes = static_cast<std::uint32_t>(found->FrameBytes());
  const auto fitting = std::min<std::size_t>(bytes, buffer.size() * 2) / frame_bytes;
  const auto frames = static_cast<std::uint32_t>(std::clamp(left, 0.0, static_cast<double>(fitting)));
  const auto channels = static_cast<std::size_t>(found->file.channels);
  const std::size_t first = static_cast<std::size_t>(found->frame) * channels;
  const std::vector<std::int16_t>& samples = found->file.samples;
  for (std::size_t i = 0; i < frames * channels; ++i) {
    const int peak = i % channels == 0 ? found->file.left_peak : found->file.right_peak;
    const int silent = first + i < samples.size() ? samples[first + i] : 0;
    buffer[i] = static_cast<std::int16_t>(samples.empty() ? std::min(peak, 32767) : silent);
  }
  found->frame += frames;
  return frames * frame_bytes;
}

bool RecordingEngine::BASS_ChannelIsActive(StreamHandle stream) {
  MutexLock lock(mutex_);
  if (const Source* decoder = DecoderAt(stream)) return decoder->frame < decoder->Length();
  const Stream* found = At(stream);
  return found != nullptr && found->playing;
}

double RecordingEngine::BASS_ChannelBytes2Seconds(StreamHandle stream, support::BytePosition position) {
  MutexLock lock(mutex_);
  const Source* found = SourceAt(stream);
  if (found == nullptr) return 0;
  return static_cast<double>(position.value) / found->FrameBytes() / found->file.sample_rate;
}

SampleFormat RecordingEngine::FormatOf(StreamHandle stream) {
  MutexLock lock(mutex_);
  const Source* found = SourceAt(stream);
  return found == nullptr ? SampleFormat{} : SampleFormat{found->file.sample_rate, found->file.channels};
}

HeardStream RecordingEngine::Heard(StreamHandle stream) {
  MutexLock lock(mutex_);
  HeardStream heard;
  const Stream* found = At(stream);
  if (found == nullptr) return heard;
  const double length = found->Length();
  const double frame = clock_.Now() < found->ended_until ? length : found->frame;
  heard.ended = frame >= length;
  heard.playing = found->playing && !heard.ended;
  heard.frame = {static_cast<std::int64_t>(frame)};
  heard.length = {std::llround(length)};
  heard.length_exact = true;
  heard.cut_short = found->file.cut_short;
  heard.sample_rate = found->file.sample_rate;
  heard.channels = found->file.channels;
  heard.ratio = found->Speed();
  heard.left_peak = heard.playing ? static_cast<float>(found->file.left_peak) / 32768 : 0;
  heard.right_peak = heard.playing ? static_cast<float>(found->RightPeak()) / 32768 : 0;
  return heard;
}

support::EngineFrame RecordingEngine::NextFrame(StreamHandle stream) {
  MutexLock lock(mutex_);
  if (At(stream) == nullptr) return {0};
  const std::chrono::duration<double> now = clock_.Now().time_since_epoch();
  return {static_cast<std::int64_t>(now.count() * kDeviceRate)};
}

bool RecordingEngine::Schedule(const ScheduledCommand& command) {
  MutexLock lock(mutex_);
  Stream* found = Record(Line("Schedule", command.stream, command.at.value)) ? At(command.stream) : nullptr;
  if (found == nullptr || !std::isfinite(command.value) || found->waiting.size() >= kScheduled) return false;
  const auto later = std::find_if(found->waiting.begin(), found->waiting.end(),
                                  [&](const auto& other) { return other.at.value > command.at.value; });
  found->waiting.insert(later, command);
  return true;
}

void RecordingEngine::CancelScheduled(StreamHandle stream) {
  MutexLock lock(mutex_);
  if (Stream* found = At(stream)) found->waiting.clear();
}

}  // namespace decks::testing
