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

constexpr int kLowestRate = 8000;
constexpr int kHighestRate = 192'000;

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
  const auto wrapped = std::count_if(streams_.begin(), streams_.end(),
                                     [](const auto& one) { return one.second.decoder != 0; });
  return static_cast<int>(streams_.size() + decoders_.size()) - static_cast<int>(wrapped);
}

std::optional<int> RecordingEngine::DeviceOf(StreamHandle stream) const {
  MutexLock lock(mutex_);
  const Stream* found = At(stream);  // none of a decoder
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
  const Source* found = SourceAt(stream);
  return found == nullptr ? 0 : found->speaker;
}

bool RecordingEngine::BASS_Init(int device, int frequency, std::uint32_t flags) {
  MutexLock lock(mutex_);
  if (!Record(Line("BASS_Init", device, frequency, flags))) return false;
  if (frequency < kLowestRate || frequency > kHighestRate) return false;
  if (open_.contains(device)) return true;
  const bool there = device >= 0 && device <= static_cast<int>(devices_.size());
  if (!there || broken_.contains(device)) return false;
  open_[device] = frequency;
  return true;
}

std::optional<std::string> RecordingEngine::BASS_GetDeviceDescription(int device) {
  MutexLock lock(mutex_);
  if (!Record(Line("BASS_GetDeviceDescription", device))) return std::nullopt;
  if (device == 0) return "No sound";
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
  decoders_.clear();
  open_.clear();
}

bool RecordingEngine::BASS_SetDevice(int device) {
  MutexLock lock(mutex_);
  if (!Record(Line("BASS_SetDevice", device)) || !open_.contains(device)) {
    FailWithoutOutput();
    return false;
  }
  current_device_ = device;
  return true;
}

StreamHandle RecordingEngine::Create(std::string_view call, bool memory, const std::string& path,
                                     std::uint64_t length, std::uint32_t flags) {
  MutexLock lock(mutex_);
  if (!Record(Line(call, "0", path, "0", Hex(length), Hex(flags)))) {
    last_error_ = {support::ErrorCode::Unreadable, "\"" + path + "\" cannot be read."};
    return 0;
  }
  if (memory) return 0;
  const std::optional<FakeFile> file = Find(path);
  if (!file) {
    last_error_ = NoSuchFile(path);
    return 0;
  }
  std::uint64_t speaker = flags & kSpeakerMask;
  if (speaker == 0 && length >= kSpeakerFront && length <= kSpeakerRear2) speaker = length & kSpeakerMask;
  decoders_[next_handle_] = {*file, current_device_, static_cast<std::uint32_t>(speaker)};
  return next_handle_++;
}

StreamHandle RecordingEngine::CreateGenerated(std::shared_ptr<support::SoundGenerator> sound, int device,
                                              std::uint32_t speaker) {
  MutexLock lock(mutex_);
  const bool works = Record(Line("CreateGenerated", device, Hex(speaker)));
  const auto open = open_.find(device);
  if (!works || open == open_.end() || open->second != sound->SampleRate()) {
    FailWithoutOutput();
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

StreamHandle RecordingEngine::BASS_StreamCreateFile(bool memory, const std::string& path, std::uint64_t,
                                                    std::uint64_t length, std::uint32_t flags) {
  return Create("BASS_StreamCreateFile", memory, path, length, flags);
}

StreamHandle RecordingEngine::BASS_FLAC_StreamCreateFile(bool memory, const std::string& path, std::uint64_t,
                                                         std::uint64_t length, std::uint32_t flags) {
  return Create("BASS_FLAC_StreamCreateFile", memory, path, length, flags);
}

StreamHandle RecordingEngine::BASS_WMA_StreamCreateFile(bool memory, const std::string& path, std::uint64_t,
                                                        std::uint64_t length, std::uint32_t flags) {
  return Create("BASS_WMA_StreamCreateFile", memory, path, length, flags);
}

StreamHandle RecordingEngine::BASS_FX_TempoCreate(StreamHandle decoder, std::uint32_t flags) {
  MutexLock lock(mutex_);
  const Source* source =
      Record(Line("BASS_FX_TempoCreate", decoder, Hex(flags))) ? DecoderAt(decoder) : nullptr;
  if (source == nullptr) return 0;
  if (!open_.contains(source->device)) {
    FailWithoutOutput();
    return 0;
  }
  Stream stream;
  static_cast<Source&>(stream) = *source;
  stream.frame = 0;
  if ((flags & kTempoFreeSource) != 0) stream.decoder = decoder;
  streams_[next_handle_] = stream;
  return next_handle_++;
}

void RecordingEngine::BASS_StreamFree(StreamHandle stream) {
  MutexLock lock(mutex_);
  if (!Record(Line("BASS_StreamFree", stream))) return;
  decoders_.erase(stream);
  const auto found = streams_.find(stream);
  if (found == streams_.end()) return;
  decoders_.erase(found->second.decoder);
  streams_.erase(found);
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

void RecordingEngine::FailWithoutOutput() {
  last_error_ = {support::ErrorCode::Unavailable, "The sound output is not open."};
}

RecordingEngine::Stream* RecordingEngine::At(StreamHandle stream) {
  const auto found = streams_.find(stream);
  if (found == streams_.end()) return nullptr;
  found->second.Follow(clock_.Now());
  if (found->second.playing) BeLed(found->second);
  return &found->second;
}

void RecordingEngine::BeLed(Stream& follower) {
  const auto leader = streams_.find(follower.leader);
  if (leader == streams_.end()) return;
  leader->second.Follow(clock_.Now());
  if (!leader->second.playing) return;
  follower.frame = leader->second.frame / leader->second.file.sample_rate * follower.file.sample_rate;
  follower.SetTempo(leader->second.tempo);
}

const RecordingEngine::Stream* RecordingEngine::At(StreamHandle stream) const {
  const auto found = streams_.find(stream);
  return found == streams_.end() ? nullptr : &found->second;
}

RecordingEngine::Source* RecordingEngine::DecoderAt(StreamHandle decoder) {
  const auto found = decoders_.find(decoder);
  return found == decoders_.end() ? nullptr : &found->second;
}

RecordingEngine::Source* RecordingEngine::SourceAt(StreamHandle handle) {
  Source* decoder = DecoderAt(handle);
  return decoder != nullptr ? decoder : At(handle);
}

const RecordingEngine::Source* RecordingEngine::SourceAt(StreamHandle handle) const {
  const auto found = decoders_.find(handle);
  return found != decoders_.end() ? &found->second : At(handle);
}

}  // namespace decks::testing
