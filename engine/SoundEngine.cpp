// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/SoundEngine.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engine/NullDevice.h"
#include "support/Sentences.h"
#include "support/Text.h"

namespace engine {
namespace {

SoundEnginePorts Completed(SoundEnginePorts ports) {
  if (ports.device_workers == nullptr) ports.device_workers = &ports.workers;
  if (ports.make_silent == nullptr) {
    ports.make_silent = [started = ports.thread_started](const OutputDeviceInfo& info,
                                                         const OutputRequest& request, RenderSource& source) {
      return std::unique_ptr<OutputDevice>(std::make_unique<NullDevice>(info, request, source, started));
    };
  }
  return ports;
}

/// The same rule by which callers choose among the creators.
DecoderKind KindOf(const std::string& path) {
  if (support::UpperTail(path, 4) == "FLAC") return DecoderKind::Flac;
  return support::UpperTail(path, 3) == "WMA" ? DecoderKind::Wma : DecoderKind::General;
}

std::int64_t FrameBytes(const PcmStore& store) {
  return 2 * store.Format().channels;
}

}  // namespace

SoundEngine::SoundEngine(SoundEnginePorts ports, Feeding feeding)
    : ports_(Completed(std::move(ports))),
      pool_(std::make_shared<PcmStorePool>(ports_.decoders, ports_.memory, ports_.workers, ports_.clock)),
      devices_(std::make_shared<DeviceTable>(ports_.outputs, ports_.make_silent, *ports_.device_workers,
                                             ports_.clock)),
      feeder_(ports_.stretchers, pool_),
      desk_(players_, *devices_) {
  devices_->Start();
  if (feeding == Feeding::OwnThread) BeginFeeding();
}

void SoundEngine::BeginFeeding() {
  using std::chrono::milliseconds;
  constexpr milliseconds kUsualPause{5}, kNoPause{0}, kLongPause{250};
  thread_ = std::make_unique<PollingThread>([=, this] { return Pump() ? kNoPause : kUsualPause; },
                                            ports_.thread_started);
  if (ports_.kept_waiting == nullptr) return;
  second_ = std::make_unique<PollingThread>(
      [=, this, turn = Feeder::Turn()]() mutable {
        if (reach_ == Feeder::Reach::Usual) return kLongPause;
        return feeder_.Pump(turn, Feeder::Reach::Further) ? kNoPause : kUsualPause;
      },
      ports_.thread_started);
}

SoundEngine::~SoundEngine() {
  second_.reset();
  thread_.reset();
  BASS_Free();
}

bool SoundEngine::Pump() {
  const support::TimePoint now = ports_.clock.Now();
  if (ports_.kept_waiting && now >= next_look_) {
    next_look_ = now + std::chrono::milliseconds(250);
    reach_ = ports_.kept_waiting() ? Feeder::Reach::Further : Feeder::Reach::Usual;
  }
  devices_->Watch();
  const bool more = feeder_.Pump(turn_, reach_);
  if (now >= next_sweep_) {
    next_sweep_ = now + std::chrono::seconds(1);
    ports_.workers.Post([pool = pool_] { pool->DropOld(); });
  }
  return more;
}

void SoundEngine::Wake() {
  if (thread_ != nullptr) thread_->Wake();
}

void SoundEngine::Fail(support::Error error) {
  support::MutexLock lock(mutex_);
  last_error_ = std::move(error);
}

support::Error SoundEngine::LastError() const {
  support::MutexLock lock(mutex_);
  return last_error_;
}

bool SoundEngine::BASS_Init(int device, int frequency, std::uint32_t /*flags*/) {
  constexpr int kLowestRate = 8000;
  constexpr int kHighestRate = 192'000;
  OutputRequest request;
  request.sample_rate = frequency;
  request.buffer_ms = buffer_ms_;
  request.period_ms = period_ms_;
  return frequency >= kLowestRate && frequency <= kHighestRate && devices_->Open(device, request);
}

std::optional<std::string> SoundEngine::BASS_GetDeviceDescription(int device) {
  return devices_->Description(device);
}

void SoundEngine::BASS_SetConfig(std::uint32_t option, std::uint32_t value) {
  constexpr std::uint32_t kLongest = 500;
  if (option == decks::kConfigBuffer)
    buffer_ms_ = static_cast<int>(std::clamp<std::uint32_t>(value, 10, kLongest));
  if (option == decks::kConfigUpdatePeriod) {
    period_ms_ = static_cast<int>(std::clamp<std::uint32_t>(value, 5, kLongest / 10));
  }
}

void SoundEngine::BASS_Free() {
  for (const auto& [handle, playing] : players_.All()) feeder_.Remove(handle);
  devices_->CloseAll();
  players_.Clear();
  support::MutexLock lock(mutex_);
  decoders_.clear();
}

bool SoundEngine::BASS_SetDevice(int device) {
  if (devices_->Find(device) == nullptr) {
    Fail(support::Failed(support::ErrorCode::Unavailable, support::Sentence::OutputNotOpen));
    return false;
  }
  current_device_ = device;
  return true;
}

decks::StreamHandle SoundEngine::BASS_StreamCreateFile(bool memory, const std::string& path,
                                                       std::uint64_t /*offset*/, std::uint64_t length,
                                                       std::uint32_t flags) {
  return memory ? 0 : CreateDecoder(path, DecoderKind::General, length, flags);
}

decks::StreamHandle SoundEngine::BASS_FLAC_StreamCreateFile(bool memory, const std::string& path,
                                                            std::uint64_t /*offset*/, std::uint64_t length,
                                                            std::uint32_t flags) {
  return memory ? 0 : CreateDecoder(path, DecoderKind::Flac, length, flags);
}

decks::StreamHandle SoundEngine::BASS_WMA_StreamCreateFile(bool memory, const std::string& path,
                                                           std::uint64_t /*offset*/, std::uint64_t length,
                                                           std::uint32_t flags) {
  return memory ? 0 : CreateDecoder(path, DecoderKind::Wma, length, flags);
}

decks::StreamHandle SoundEngine::CreateDecoder(const std::string& path, DecoderKind kind,
                                               std::uint64_t length, std::uint32_t flags) {
  auto store = pool_->Get(path, kind);
  if (!store) {
    Fail(store.Failure());
    return 0;
  }
  auto decoder = std::make_shared<Decoder>();
  decoder->store = std::move(store).Value();
  decoder->device = current_device_;
  std::uint64_t speaker = flags & decks::kSpeakerMask;
  if (speaker == 0 && length >= decks::kSpeakerFront && length <= decks::kSpeakerRear2) speaker = length;
  decoder->pair = PairOf(static_cast<std::uint32_t>(speaker));
  const decks::StreamHandle handle = next_handle_++;
  support::MutexLock lock(mutex_);
  decoders_[handle] = std::move(decoder);
  return handle;
}

decks::StreamHandle SoundEngine::BASS_FX_TempoCreate(decks::StreamHandle decoder, std::uint32_t flags) {
  const auto source = FindDecoder(decoder);
  if (source == nullptr) return 0;
  players_.Sweep(ports_.workers);
  const auto slot = devices_->Find(source->device);
  if (slot == nullptr) {
    Fail(support::Failed(support::ErrorCode::Unavailable, support::Sentence::OutputNotOpen));
    return 0;
  }
  auto stream = std::make_shared<Stream>(next_handle_++, source->store, source->device, source->pair);
  return Join(std::move(stream), slot, (flags & decks::kTempoFreeSource) != 0 ? decoder : 0);
}

decks::StreamHandle SoundEngine::CreateGenerated(std::shared_ptr<support::SoundGenerator> sound, int device,
                                                 std::uint32_t speaker) {
  players_.Sweep(ports_.workers);
  const auto slot = devices_->Find(device);
  if (slot == nullptr || slot->Core().SampleRate() != sound->SampleRate()) {
    Fail(support::Failed(support::ErrorCode::Unavailable, support::Sentence::OutputNotOpen));
    return 0;
  }
  return Join(std::make_shared<Stream>(next_handle_++, std::move(sound), device, PairOf(speaker)), slot, 0);
}

decks::StreamHandle SoundEngine::Join(std::shared_ptr<Stream> stream, std::shared_ptr<DeviceSlot> slot,
                                      decks::StreamHandle decoder) {
  const decks::StreamHandle handle = stream->Id();
  Tempo tempo;
  tempo.quality = devices_->Quality(stream->Device());
  stream->SetTempo(tempo);
  if (!slot->Core().Attach(*stream)) {
    Fail(support::Failed(support::ErrorCode::Unavailable, support::Sentence::TooManyStreams));
    return 0;
  }
  feeder_.Add(stream, slot);
  players_.All()[handle] = {std::move(stream), std::move(slot), decoder, nullptr};
  Wake();
  return handle;
}

void SoundEngine::BASS_StreamFree(decks::StreamHandle handle) {
  if (FreeDecoder(handle)) return;
  const auto found = players_.All().find(handle);
  if (found == players_.All().end()) return;
  FreeDecoder(found->second.decoder);
  found->second.stream->Ask(Stream::Transport::Free);
  feeder_.Remove(handle);
  players_.Leave(found);
  players_.Sweep(ports_.workers);
}

bool SoundEngine::FreeDecoder(decks::StreamHandle handle) {
  Decoders::node_type freed;  // goes after the lock: the last one to hold a long file takes a while
  support::MutexLock lock(mutex_);
  freed = decoders_.extract(handle);
  return !freed.empty();
}

std::shared_ptr<SoundEngine::Decoder> SoundEngine::FindDecoder(decks::StreamHandle handle) const {
  support::MutexLock lock(mutex_);
  const auto found = decoders_.find(handle);
  return found == decoders_.end() ? nullptr : found->second;
}

std::uint32_t SoundEngine::BASS_ChannelGetData(decks::StreamHandle handle, std::span<std::int16_t> buffer,
                                               std::uint32_t bytes) {
  const auto decoder = FindDecoder(handle);
  if (decoder == nullptr) return 0;
  PcmStore& store = *decoder->store;
  const std::size_t channels = static_cast<std::size_t>(store.Format().channels);
  const std::size_t frames = std::min<std::size_t>(bytes / 2, buffer.size()) / channels;
  store.DecodeUpTo(decoder->cursor + static_cast<std::int64_t>(frames));
  const std::int64_t got = store.Read(decoder->cursor, buffer.first(frames * channels));
  decoder->cursor += got;
  return static_cast<std::uint32_t>(got * FrameBytes(store));
}

void SoundEngine::Prepare(const std::string& path, std::function<void(support::Result<void>)> done) {
  pool_->Prepare(path, KindOf(path), std::move(done));
}

bool SoundEngine::DecodeFurther(decks::StreamHandle handle) {
  const auto decoder = FindDecoder(handle);
  if (decoder == nullptr || decoder->store->Complete()) return false;
  decoder->store->DecodeUpTo(decoder->store->Ready() + PcmStore::kChunkFrames);
  return true;
}

void SoundEngine::ReturnDevice(int device) {
  devices_->Return(device);
}

void SoundEngine::SetDeviceRole(int device, decks::DeviceRole role) {
  devices_->SetRole(device, role);
}

std::vector<decks::DeviceEvent> SoundEngine::TakeDeviceEvents() {
  players_.Sweep(ports_.workers);
  return devices_->TakeEvents();
}

support::Decibels SoundEngine::LimiterReduction(int device, std::uint32_t speaker) {
  const auto slot = devices_->Find(device);
  const float gain = slot == nullptr ? 1 : slot->Core().LimiterGain(PairOf(speaker));
  return {gain < 1 ? -20 * std::log10(gain) : 0};
}

decks::EngineHealth SoundEngine::Health() {
  decks::EngineHealth health;
  for (const auto& slot : devices_->All()) {
    health.callbacks += slot->Core().Callbacks();
    health.late_blocks += slot->Core().LateBlocks() + slot->Gaps();
    health.bad_samples += slot->Core().BadSamples();
    health.load = std::max(health.load, slot->Core().Load());
  }
  return health;
}

}  // namespace engine
