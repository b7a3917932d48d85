// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/testing/RecordingEngine.h"

#include <algorithm>
#include <cmath>

#include "decks/testing/CallText.h"
#include "support/Text.h"

namespace decks::testing {
namespace {

using support::MutexLock;

support::Error NoSuchFile(const std::string& path) {
  return {support::ErrorCode::NotFound, "There is no file \"" + path + "\"."};
}

}  // namespace

void RecordingEngine::AddFile(const std::string& path, const FakeFile& file) {
  MutexLock lock(mutex_);
  files_[path] = file;
}

void RecordingEngine::RemoveFile(const std::string& path) {
  MutexLock lock(mutex_);
  files_.erase(path);
}

void RecordingEngine::AcceptAnyFile(const FakeFile& file) {
  MutexLock lock(mutex_);
  any_file_ = file;
}

void RecordingEngine::AddDevice(const std::string& name) {
  MutexLock lock(mutex_);
  devices_.push_back(name);
}

void RecordingEngine::BreakDevice(int device) {
  MutexLock lock(mutex_);
  broken_.insert(device);
}

void RecordingEngine::FailCall(int number) {
  MutexLock lock(mutex_);
  failing_call_ = calls_ + number;
}

void RecordingEngine::HoldPreparing() {
  MutexLock lock(mutex_);
  hold_ = true;
}

bool RecordingEngine::FinishPreparing() {
  std::pair<std::string, std::function<void(support::Result<void>)>> oldest;
  support::Result<void> answer;
  {
    MutexLock lock(mutex_);
    if (held_.empty()) return false;
    oldest = std::move(held_.front());
    held_.pop_front();
    if (!Find(oldest.first)) answer = NoSuchFile(oldest.first);
  }
  oldest.second(answer);
  return true;
}

void RecordingEngine::PostDeviceEvent(const DeviceEvent& event) {
  MutexLock lock(mutex_);
  events_.push_back(event);
}

void RecordingEngine::SetLatency(support::Duration latency) {
  MutexLock lock(mutex_);
  latency_ = latency;
}

void RecordingEngine::SetPeaks(StreamHandle stream, int left, int right) {
  MutexLock lock(mutex_);
  if (Stream* found = At(stream)) {
    found->file.left_peak = left;
    found->file.right_peak = right;
  }
}

std::vector<std::string> RecordingEngine::Log() const {
  MutexLock lock(mutex_);
  return log_;
}

void RecordingEngine::ClearLog() {
  MutexLock lock(mutex_);
  log_.clear();
}

int RecordingEngine::Calls() const {
  MutexLock lock(mutex_);
  return calls_;
}

void RecordingEngine::OnCall(std::function<void(const std::string&)> listener) {
  MutexLock lock(mutex_);
  listener_ = std::move(listener);
}

int RecordingEngine::Streams() const {
  MutexLock lock(mutex_);
  return static_cast<int>(streams_.size());
}

std::optional<int> RecordingEngine::DeviceOf(StreamHandle stream) const {
  MutexLock lock(mutex_);
  const Stream* found = At(stream);
  return found == nullptr ? std::nullopt : std::optional<int>(found->device);
}

int RecordingEngine::VolumeOf(StreamHandle stream) const {
  MutexLock lock(mutex_);
  const Stream* found = At(stream);
  return found == nullptr ? 0 : found->volume;
}

float RecordingEngine::TempoOf(StreamHandle stream) const {
  MutexLock lock(mutex_);
  const Stream* found = At(stream);
  return found == nullptr ? 0 : found->tempo;
}

float RecordingEngine::RateOf(StreamHandle stream) const {
  MutexLock lock(mutex_);
  const Stream* found = At(stream);
  return found == nullptr ? 0 : found->rate;
}

float RecordingEngine::SemitonesOf(StreamHandle stream) const {
  MutexLock lock(mutex_);
  const Stream* found = At(stream);
  return found == nullptr ? 0 : found->semitones;
}

std::uint32_t RecordingEngine::SpeakerOf(StreamHandle stream) const {
  MutexLock lock(mutex_);
  const Stream* found = At(stream);
  return found == nullptr ? 0 : found->speaker;
}

bool RecordingEngine::BASS_Init(int device, int frequency, std::uint32_t flags) {
  MutexLock lock(mutex_);
  if (!Record(Line("BASS_Init", device, frequency, flags))) return false;
  const bool there = device >= 0 && device <= static_cast<int>(devices_.size());
  if (!there || broken_.contains(device)) return false;
  open_.insert(device);
  return true;
}

std::optional<std::string> RecordingEngine::BASS_GetDeviceDescription(int device) {
  MutexLock lock(mutex_);
  if (!Record(Line("BASS_GetDeviceDescription", device))) return std::nullopt;
  if (device < 1 || device > static_cast<int>(devices_.size())) return std::nullopt;
  return devices_[static_cast<std::size_t>(device - 1)];
}

void RecordingEngine::BASS_SetConfig(std::uint32_t option, std::uint32_t value) {
  MutexLock lock(mutex_);
  Record(Line("BASS_SetConfig", option, value));
}

void RecordingEngine::BASS_Free() {
  MutexLock lock(mutex_);
  if (!Record("BASS_Free")) return;
  streams_.clear();
  open_.clear();
}

bool RecordingEngine::BASS_SetDevice(int device) {
  MutexLock lock(mutex_);
  if (!Record(Line("BASS_SetDevice", device)) || !open_.contains(device)) return false;
  current_device_ = device;
  return true;
}

StreamHandle RecordingEngine::Create(std::string_view call, const std::string& path, std::uint64_t length,
                                     std::uint32_t flags) {
  MutexLock lock(mutex_);
  if (!Record(Line(call, "0", path, "0", Hex(length), Hex(flags)))) {
    last_error_ = {support::ErrorCode::Unreadable, "\"" + path + "\" cannot be read."};
    return 0;
  }
  const std::optional<FakeFile> file = Find(path);
  if (!file) {
    last_error_ = NoSuchFile(path);
    return 0;
  }
  Stream stream;
  stream.file = *file;
  stream.device = current_device_;
  const std::uint64_t in_length = length & kSpeakerMask;
  stream.speaker = in_length != 0 ? static_cast<std::uint32_t>(in_length) : flags & kSpeakerMask;
  streams_[next_handle_] = stream;
  return next_handle_++;
}

StreamHandle RecordingEngine::CreateGenerated(std::shared_ptr<support::SoundGenerator> sound, int device,
                                              std::uint32_t speaker) {
  MutexLock lock(mutex_);
  if (!Record(Line("CreateGenerated", device, Hex(speaker)))) {
    last_error_ = {support::ErrorCode::Unavailable, "The sound output is not open."};
    return 0;
  }
  Stream stream;
  stream.file.sample_rate = sound->SampleRate();
  stream.file.seconds = static_cast<double>(sound->Length()) / sound->SampleRate();
  stream.device = device;
  stream.speaker = speaker;
  stream.generator = std::move(sound);
  streams_[next_handle_] = stream;
  return next_handle_++;
}

StreamHandle RecordingEngine::BASS_StreamCreateFile(bool, const std::string& path, std::uint64_t,
                                                    std::uint64_t length, std::uint32_t flags) {
  return Create("BASS_StreamCreateFile", path, length, flags);
}

StreamHandle RecordingEngine::BASS_FLAC_StreamCreateFile(bool, const std::string& path, std::uint64_t,
                                                         std::uint64_t length, std::uint32_t flags) {
  return Create("BASS_FLAC_StreamCreateFile", path, length, flags);
}

StreamHandle RecordingEngine::BASS_WMA_StreamCreateFile(bool, const std::string& path, std::uint64_t,
                                                        std::uint64_t length, std::uint32_t flags) {
  return Create("BASS_WMA_StreamCreateFile", path, length, flags);
}

StreamHandle RecordingEngine::BASS_FX_TempoCreate(StreamHandle decoder, std::uint32_t flags) {
  MutexLock lock(mutex_);
  if (!Record(Line("BASS_FX_TempoCreate", decoder, Hex(flags)))) return 0;
  const auto source = streams_.find(decoder);
  if (source == streams_.end()) return 0;
  const Stream stream = source->second;
  streams_.erase(source);
  streams_[next_handle_] = stream;
  return next_handle_++;
}

void RecordingEngine::BASS_FX_TempoSet(StreamHandle stream, float tempo_percent, float sample_rate,
                                       float semitones) {
  MutexLock lock(mutex_);
  if (!Record(Line("BASS_FX_TempoSet", stream, tempo_percent, sample_rate, semitones))) return;
  Stream* found = At(stream);
  if (found == nullptr) return;
  Settle(*found);
  if (tempo_percent > kTempoUnchanged) found->tempo = tempo_percent;
  if (sample_rate >= 0) found->rate = sample_rate;
  if (semitones > kTempoUnchanged) found->semitones = semitones;
}

void RecordingEngine::BASS_StreamFree(StreamHandle stream) {
  MutexLock lock(mutex_);
  if (Record(Line("BASS_StreamFree", stream))) streams_.erase(stream);
}

bool RecordingEngine::BASS_ChannelPlay(StreamHandle stream, bool restart) {
  MutexLock lock(mutex_);
  Stream* found = Record(Line("BASS_ChannelPlay", stream, restart ? 1 : 0)) ? At(stream) : nullptr;
  if (found == nullptr) return false;
  Settle(*found);
  if (restart) found->frame = 0;
  found->playing = true;
  return true;
}

void RecordingEngine::BASS_ChannelPause(StreamHandle stream) {
  MutexLock lock(mutex_);
  Stream* found = Record(Line("BASS_ChannelPause", stream)) ? At(stream) : nullptr;
  if (found == nullptr) return;
  Settle(*found);
  found->playing = false;
}

void RecordingEngine::BASS_ChannelStop(StreamHandle stream) {
  MutexLock lock(mutex_);
  Stream* found = Record(Line("BASS_ChannelStop", stream)) ? At(stream) : nullptr;
  if (found == nullptr) return;
  Settle(*found);
  found->playing = false;
}

void RecordingEngine::BASS_ChannelSetAttributes(StreamHandle stream, int frequency, int volume, int pan) {
  MutexLock lock(mutex_);
  Stream* found =
      Record(Line("BASS_ChannelSetAttributes", stream, frequency, volume, pan)) ? At(stream) : nullptr;
  if (found != nullptr && volume >= 0) found->volume = volume;
}

std::uint32_t RecordingEngine::BASS_ChannelGetLevel(StreamHandle stream) {
  MutexLock lock(mutex_);
  const Stream* found = At(stream);
  if (found == nullptr || !found->playing) return 0;
  return static_cast<std::uint32_t>(found->file.left_peak) |
         static_cast<std::uint32_t>(found->file.right_peak) << 16;
}

support::BytePosition RecordingEngine::BASS_ChannelGetPosition(StreamHandle stream) {
  MutexLock lock(mutex_);
  const Stream* found = Record(Line("BASS_ChannelGetPosition", stream)) ? At(stream) : nullptr;
  if (found == nullptr) return {};
  return {static_cast<std::int64_t>(FrameOf(*found)) * found->file.channels * 2};
}

support::BytePosition RecordingEngine::BASS_ChannelGetLength(StreamHandle stream) {
  MutexLock lock(mutex_);
  const Stream* found = Record(Line("BASS_ChannelGetLength", stream)) ? At(stream) : nullptr;
  if (found == nullptr) return {};
  return {std::llround(found->file.seconds * found->file.sample_rate) * found->file.channels * 2};
}

bool RecordingEngine::BASS_ChannelSetPosition(StreamHandle stream, support::BytePosition position) {
  MutexLock lock(mutex_);
  Stream* found = Record(Line("BASS_ChannelSetPosition", stream, position.value)) ? At(stream) : nullptr;
  if (found == nullptr || position.value < 0) return false;
  const double frame = static_cast<double>(position.value / (found->file.channels * 2));
  if (frame >= found->file.seconds * found->file.sample_rate) return false;
  Settle(*found);
  if (found->frame >= found->file.seconds * found->file.sample_rate) {
    found->ended_until = clock_.Now() + latency_;
  }
  found->frame = frame;
  return true;
}

std::uint32_t RecordingEngine::BASS_ChannelGetData(StreamHandle decoder, std::span<std::int16_t> buffer,
                                                   std::uint32_t bytes) {
  MutexLock lock(mutex_);
  Stream* found = Record(Line("BASS_ChannelGetData", decoder, bytes)) ? At(decoder) : nullptr;
  if (found == nullptr) return 0;
  const double left = found->file.seconds * found->file.sample_rate - found->frame;
  const auto frame_bytes = static_cast<std::uint32_t>(found->file.channels * 2);
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
  const Stream* found = At(stream);
  return found != nullptr && FrameOf(*found) < found->file.seconds * found->file.sample_rate;
}

double RecordingEngine::BASS_ChannelBytes2Seconds(StreamHandle stream, support::BytePosition position) {
  MutexLock lock(mutex_);
  const Stream* found = At(stream);
  if (found == nullptr) return 0;
  return static_cast<double>(position.value) / (2 * found->file.channels) / found->file.sample_rate;
}

bool RecordingEngine::DecodeFurther(StreamHandle decoder) {
  MutexLock lock(mutex_);
  Record(Line("DecodeFurther", decoder));
  return false;
}

void RecordingEngine::Prepare(const std::string& path, std::function<void(support::Result<void>)> done) {
  support::Result<void> answer;
  {
    MutexLock lock(mutex_);
    const bool works = Record(Line("Prepare", path));
    if (hold_) {
      held_.emplace_back(path, std::move(done));
      return;
    }
    if (!works) answer = support::Error{support::ErrorCode::Unreadable, "\"" + path + "\" cannot be read."};
    if (works && !Find(path)) answer = NoSuchFile(path);
  }
  done(answer);
}

support::Error RecordingEngine::LastError() const {
  MutexLock lock(mutex_);
  return last_error_;
}

SampleFormat RecordingEngine::FormatOf(StreamHandle stream) {
  MutexLock lock(mutex_);
  const Stream* found = At(stream);
  return found == nullptr ? SampleFormat{} : SampleFormat{found->file.sample_rate, found->file.channels};
}

HeardStream RecordingEngine::Heard(StreamHandle stream) {
  MutexLock lock(mutex_);
  HeardStream heard;
  const Stream* found = At(stream);
  if (found == nullptr) return heard;
  const double length = found->file.seconds * found->file.sample_rate;
  const double frame = clock_.Now() < found->ended_until ? length : FrameOf(*found);
  heard.ended = frame >= length;
  heard.playing = found->playing && !heard.ended;
  heard.frame = {static_cast<std::int64_t>(frame)};
  heard.length = {std::llround(length)};
  heard.length_exact = true;
  heard.sample_rate = found->file.sample_rate;
  heard.channels = found->file.channels;
  heard.ratio = found->Speed();
  heard.left_peak = heard.playing ? static_cast<float>(found->file.left_peak) / 32768 : 0;
  heard.right_peak = heard.playing ? static_cast<float>(found->file.right_peak) / 32768 : 0;
  return heard;
}

support::EngineFrame RecordingEngine::NextFrame(StreamHandle) {
  const std::chrono::duration<double> now = clock_.Now().time_since_epoch();
  return {static_cast<std::int64_t>(now.count() * 44100)};
}

bool RecordingEngine::Schedule(const ScheduledCommand& command) {
  MutexLock lock(mutex_);
  return Record(Line("Schedule", command.stream, command.at.value)) && At(command.stream) != nullptr;
}

void RecordingEngine::ReturnDevice(int device) {
  MutexLock lock(mutex_);
  returned_.push_back(device);
}

std::vector<int> RecordingEngine::Returned() const {
  MutexLock lock(mutex_);
  return returned_;
}

void RecordingEngine::SetDeviceRole(int device, DeviceRole role) {
  MutexLock lock(mutex_);
  roles_[device] = role;
}

DeviceRole RecordingEngine::RoleOf(int device) const {
  MutexLock lock(mutex_);
  const auto found = roles_.find(device);
  return found == roles_.end() ? DeviceRole::Main : found->second;
}

std::vector<DeviceEvent> RecordingEngine::TakeDeviceEvents() {
  MutexLock lock(mutex_);
  return std::exchange(events_, {});
}

EngineHealth RecordingEngine::Health() {
  return {};
}

bool RecordingEngine::Record(std::string line) {
  if (listener_) listener_(line);
  log_.push_back(std::move(line));
  ++calls_;
  return calls_ != failing_call_;
}

std::optional<FakeFile> RecordingEngine::Find(const std::string& path) const {
  const auto found = files_.find(path);
  return found == files_.end() ? any_file_ : std::optional<FakeFile>(found->second);
}

RecordingEngine::Stream* RecordingEngine::At(StreamHandle stream) {
  const auto found = streams_.find(stream);
  return found == streams_.end() ? nullptr : &found->second;
}

const RecordingEngine::Stream* RecordingEngine::At(StreamHandle stream) const {
  const auto found = streams_.find(stream);
  return found == streams_.end() ? nullptr : &found->second;
}

double RecordingEngine::FrameOf(const Stream& stream) const {
  const double length = stream.file.seconds * stream.file.sample_rate;
  if (!stream.playing) return stream.frame;
  const std::chrono::duration<double> passed = clock_.Now() - stream.since;
  const double ratio = stream.Speed();
  return std::min(length, stream.frame + passed.count() * stream.file.sample_rate * ratio);
}

void RecordingEngine::Settle(Stream& stream) const {
  stream.frame = FrameOf(stream);
  stream.since = clock_.Now();
}

}  // namespace decks::testing
