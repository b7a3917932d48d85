// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "decks/ports/AudioEngine.h"
#include "decks/ports/SoundControl.h"
#include "engine/DeviceTable.h"
#include "engine/EngineDesk.h"
#include "engine/EngineEffects.h"
#include "engine/EngineLoops.h"
#include "engine/Feeder.h"
#include "engine/PcmStorePool.h"
#include "engine/Players.h"
#include "engine/Stream.h"
#include "engine/ports/OutputDevice.h"
#include "engine/ports/PcmDecoder.h"
#include "engine/ports/SampleMemory.h"
#include "engine/ports/Stretcher.h"
#include "support/Clock.h"
#include "support/Executor.h"
#include "support/Mutex.h"

namespace engine {

/// The outside things that the engine stands on. All outlive it, and the workers end before the rest goes.
struct SoundEnginePorts {
  OutputDevices& outputs;
  DecoderFactory& decoders;
  StretcherFactory& stretchers;
  support::Executor& workers;  ///< for decoding above all: what blocks there for long delays what plays
  const support::Clock& clock;
  SampleMemory* memory = nullptr;           ///< for what lies beyond half an hour; null is the heap
  SilentOutputMaker make_silent = nullptr;  ///< null is the timed NullDevice
  std::function<void()> thread_started =
      nullptr;  ///< first on each thread of the engine's, e.g. for its priority
  /// Whether other programs may keep the feeder waiting, which then makes more sound ahead, on two threads:
  /// a system that is just gives each as much as any other program's. Threads: the feeder, four times a
  /// second; null is never.
  std::function<bool()> kept_waiting = nullptr;
  support::Executor* device_workers = nullptr;  ///< for looking for outputs; null is workers
};

/// The sound engine: files in memory, streams fed to the outputs, and the clock of what is heard.
///
/// Threads: as the two ports say; Pump by one thread. Owns: its streams, open devices, the feeder's thread.
class SoundEngine final : public decks::AudioEngine, public decks::SoundControl {
 public:
  /// Who keeps the rings full: a thread of the engine's, or whoever calls Pump between two blocks.
  enum class Feeding { OwnThread, ByHand };

  SoundEngine(SoundEnginePorts ports, Feeding feeding);
  ~SoundEngine() override;

  /// One pass of the feeder and a look at the devices; true when there is more to do at once.
  bool Pump();
  /// What is turned by hand. Threads: the owner's.
  [[nodiscard]] decks::SoundDesk& Desk() { return desk_; }
  [[nodiscard]] decks::DeckEffects& Effects() { return effects_; }
  [[nodiscard]] decks::DeckLoops& Loops() { return loops_; }
  [[nodiscard]] const std::shared_ptr<DeviceTable>& Devices() const { return devices_; }

  bool BASS_Init(int device, int frequency, std::uint32_t flags) override;
  std::optional<std::string> BASS_GetDeviceDescription(int device) override;
  void BASS_SetConfig(std::uint32_t option, std::uint32_t value) override;
  void BASS_Free() override;
  bool BASS_SetDevice(int device) override;

  decks::StreamHandle BASS_StreamCreateFile(bool memory, const std::string& path, std::uint64_t offset,
                                            std::uint64_t length, std::uint32_t flags) override;
  decks::StreamHandle BASS_FLAC_StreamCreateFile(bool memory, const std::string& path, std::uint64_t offset,
                                                 std::uint64_t length, std::uint32_t flags) override;
  decks::StreamHandle BASS_WMA_StreamCreateFile(bool memory, const std::string& path, std::uint64_t offset,
                                                std::uint64_t length, std::uint32_t flags) override;
  decks::StreamHandle BASS_FX_TempoCreate(decks::StreamHandle decoder, std::uint32_t flags) override;
  void BASS_FX_TempoSet(decks::StreamHandle stream, float tempo_percent, float sample_rate,
                        float semitones) override;
  void BASS_StreamFree(decks::StreamHandle stream) override;

  bool BASS_ChannelPlay(decks::StreamHandle stream, bool restart) override;
  void Follow(decks::StreamHandle follower, decks::StreamHandle leader) override;
  void BASS_ChannelPause(decks::StreamHandle stream) override;
  void BASS_ChannelStop(decks::StreamHandle stream) override;
  void BASS_ChannelSetAttributes(decks::StreamHandle stream, int frequency, int volume, int pan) override;
  std::uint32_t BASS_ChannelGetLevel(decks::StreamHandle stream) override;
  support::BytePosition BASS_ChannelGetPosition(decks::StreamHandle stream) override;
  support::BytePosition BASS_ChannelGetLength(decks::StreamHandle stream) override;
  bool BASS_ChannelSetPosition(decks::StreamHandle stream, support::BytePosition position) override;

  std::uint32_t BASS_ChannelGetData(decks::StreamHandle decoder, std::span<std::int16_t> buffer,
                                    std::uint32_t bytes) override;
  std::uint32_t BASS_ChannelGetData(decks::StreamHandle stream, std::span<float> buffer,
                                    std::uint32_t what) override;
  bool BASS_ChannelIsActive(decks::StreamHandle stream) override;
  double BASS_ChannelBytes2Seconds(decks::StreamHandle stream, support::BytePosition position) override;
  bool BASS_ChannelGetAttributes(decks::StreamHandle stream, int& frequency, int& volume, int& pan) override;
  bool BASS_FX_DSP_Set(decks::StreamHandle stream, int effect_type, int priority) override;
  bool BASS_FX_DSP_SetParameters(decks::StreamHandle stream, int effect_type,
                                 const decks::PeakingBand& band) override;
  bool BASS_FX_DSP_GetParameters(decks::StreamHandle stream, int effect_type,
                                 decks::PeakingBand& band) override;
  void BASS_FX_DSP_Remove(decks::StreamHandle stream, int effect_type) override;
  void BASS_FX_BPM_Free(decks::StreamHandle stream) override;

  void Prepare(const std::string& path, std::function<void(support::Result<void>)> done) override;
  support::Error LastError() const override;
  decks::StreamHandle CreateGenerated(std::shared_ptr<support::SoundGenerator> sound, int device,
                                      std::uint32_t speaker) override;
  bool DecodeFurther(decks::StreamHandle decoder) override;
  decks::SampleFormat FormatOf(decks::StreamHandle handle) override;
  decks::HeardStream Heard(decks::StreamHandle stream) override;
  support::EngineFrame NextFrame(decks::StreamHandle stream) override;
  bool Schedule(const decks::ScheduledCommand& command) override;
  void CancelScheduled(decks::StreamHandle stream) override;
  void SetGain(decks::StreamHandle stream, support::Decibels gain) override;
  support::Decibels LimiterReduction(int device, std::uint32_t speaker) override;
  void SetDeviceRole(int device, decks::DeviceRole role) override;
  void ReturnDevice(int device) override;
  void SetStretch(decks::Stretch choice) override;
  std::vector<decks::DeviceEvent> TakeDeviceEvents() override;
  decks::EngineHealth Health() override;

 private:
  struct Decoder {
    std::shared_ptr<PcmStore> store;  // with the streams of the same file
    int device = 0;
    int pair = 0;
    std::int64_t cursor = 0;
  };
  using Decoders = std::map<decks::StreamHandle, std::shared_ptr<Decoder>>;  // with the worker that reads it

  decks::StreamHandle CreateDecoder(const std::string& path, DecoderKind kind, std::uint64_t length,
                                    std::uint32_t flags) DJ_EXCLUDES(mutex_);
  /// The handle of a stream that the slot and the feeder know now; 0 when there is no place for it.
  decks::StreamHandle Join(std::shared_ptr<Stream> stream, std::shared_ptr<DeviceSlot> slot,
                           decks::StreamHandle decoder);
  /// False when it is no decoder.
  bool FreeDecoder(decks::StreamHandle handle) DJ_EXCLUDES(mutex_);
  [[nodiscard]] std::shared_ptr<Decoder> FindDecoder(decks::StreamHandle handle) const DJ_EXCLUDES(mutex_);
  void Wake();
  void BeginFeeding();
  void Fail(support::Error error) DJ_EXCLUDES(mutex_);

  SoundEnginePorts ports_;
  const std::shared_ptr<PcmStorePool> pool_;    // with its jobs on the workers
  const std::shared_ptr<DeviceTable> devices_;  // as the pool
  Feeder feeder_;
  std::atomic<int> current_device_{0};
  std::atomic<int> buffer_ms_{60};
  std::atomic<int> period_ms_{20};
  std::atomic<decks::StreamHandle> next_handle_{1};
  Players players_;
  EngineDesk desk_;
  EngineEffects effects_{players_};
  EngineLoops loops_{players_, [this] { Wake(); }};
  support::TimePoint next_sweep_{};
  std::atomic<Feeder::Reach> reach_{Feeder::Reach::Usual};
  support::TimePoint next_look_{};
  mutable support::Mutex mutex_;
  Decoders decoders_ DJ_GUARDED_BY(mutex_);
  support::Error last_error_ DJ_GUARDED_BY(mutex_){support::ErrorCode::NotFound, ""};
  Feeder::Turn turn_;
  std::unique_ptr<PollingThread> thread_, second_;  // last: they use all of the above
};

}  // namespace engine
