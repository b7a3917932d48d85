// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "decks/ports/AudioEngine.h"
#include "decks/ports/SoundControl.h"
#include "support/Clock.h"
#include "support/Mutex.h"

namespace decks::testing {

/// What every stream of the RecordingEngine sounds like, at the left peak of its file.
inline constexpr double kHeardHertz = 1000;

/// A file that exists for the RecordingEngine.
struct FakeFile {
  double seconds = 180;
  int sample_rate = 44100;
  int channels = 2;
  int left_peak = 16384;  ///< of 32768, all the time that it plays
  int right_peak = 8192;
  /// What a decoder gives: these, interleaved, and silence after them.
  std::vector<std::int16_t> samples = {};
  bool cut_short = false;
};

/// An engine without sound: it writes down every call and lets streams play by its clock. What is mixed is
/// heard at once, a ramp changes nothing that is seen here, and files are decoded as soon as they are opened;
/// for the rest EngineContract.h holds it to what the real one does.
///
/// The log holds one line a call, "BASS_SetDevice 1", handles and numbers in decimal, flags and lengths in
/// hexadecimal, paths as they are. What is asked again and again (Heard, levels, activity, health, events),
/// roles, gains and cancelling are not logged. Threads: any, one lock around everything.
class RecordingEngine final : public AudioEngine, public SoundControl {
 public:
  explicit RecordingEngine(const support::Clock& clock) : clock_(clock) {}

  // What the test sets up.
  void AddFile(const std::string& path, const FakeFile& file = {});
  /// Streams of it live on; it cannot be opened again.
  void RemoveFile(const std::string& path);
  /// From now on every path is a file like this one.
  void AcceptAnyFile(const FakeFile& file = {});
  void AddDevice(const std::string& name);
  /// BASS_Init of this device fails.
  void BreakDevice(int device);
  /// The nth logged call from now (1 is the next one) fails: 0, false or nothing. Calls without an answer do
  /// nothing.
  void FailCall(int number);
  /// Prepare keeps its answer until FinishPreparing; otherwise it answers at once, on the caller's thread.
  void HoldPreparing();
  /// Answers the oldest held Prepare; false when there is none.
  bool FinishPreparing();
  void PostDeviceEvent(const DeviceEvent& event);
  /// The end of a stream is heard this much longer after a seek away from it; one that comes no later than
  /// this after the end plays on.
  void SetLatency(support::Duration latency);
  void SetPeaks(StreamHandle stream, int left, int right);
  /// Of every pair of every device.
  void SetLimiterReduction(support::Decibels reduction);

  // What the test reads.
  [[nodiscard]] std::vector<std::string> Log() const;
  void ClearLog();
  [[nodiscard]] int Calls() const;
  /// Told of each logged call, as it stands in the log.
  void OnCall(std::function<void(const std::string&)> listener);
  /// Streams that exist now; one that plays and the decoder that goes with it are one.
  [[nodiscard]] int Streams() const;
  [[nodiscard]] std::optional<int> DeviceOf(StreamHandle stream) const;
  [[nodiscard]] int VolumeOf(StreamHandle stream) const;
  /// What SetGain said.
  [[nodiscard]] support::Decibels GainOf(StreamHandle stream) const;
  /// The stream that it follows, 0 for none; not logged.
  [[nodiscard]] StreamHandle LeaderOf(StreamHandle stream) const;
  [[nodiscard]] float TempoOf(StreamHandle stream) const;
  /// In Hz; 0 is the file's own.
  [[nodiscard]] float RateOf(StreamHandle stream) const;
  [[nodiscard]] float SemitonesOf(StreamHandle stream) const;
  /// Gains of the equaliser bands that the stream has, in dB.
  [[nodiscard]] std::vector<float> GainsOf(StreamHandle stream) const;
  [[nodiscard]] DeviceRole RoleOf(int device) const;
  /// Devices that were asked back to their own output.
  [[nodiscard]] std::vector<int> Returned() const;
  /// Speaker flag of the stream's decoder, wherever it was passed.
  [[nodiscard]] std::uint32_t SpeakerOf(StreamHandle stream) const;

  // AudioEngine
  bool BASS_Init(int device, int frequency, std::uint32_t flags) override;
  std::optional<std::string> BASS_GetDeviceDescription(int device) override;
  void BASS_SetConfig(std::uint32_t option, std::uint32_t value) override;
  void BASS_Free() override;
  bool BASS_SetDevice(int device) override;
  StreamHandle BASS_StreamCreateFile(bool memory, const std::string& path, std::uint64_t offset,
                                     std::uint64_t length, std::uint32_t flags) override;
  StreamHandle BASS_FLAC_StreamCreateFile(bool memory, const std::string& path, std::uint64_t offset,
                                          std::uint64_t length, std::uint32_t flags) override;
  StreamHandle BASS_WMA_StreamCreateFile(bool memory, const std::string& path, std::uint64_t offset,
                                         std::uint64_t length, std::uint32_t flags) override;
  StreamHandle BASS_FX_TempoCreate(StreamHandle decoder, std::uint32_t flags) override;
  void BASS_FX_TempoSet(StreamHandle stream, float tempo_percent, float sample_rate,
                        float semitones) override;
  void BASS_StreamFree(StreamHandle stream) override;
  bool BASS_ChannelPlay(StreamHandle stream, bool restart) override;
  void Follow(StreamHandle follower, StreamHandle leader) override;
  void BASS_ChannelPause(StreamHandle stream) override;
  void BASS_ChannelStop(StreamHandle stream) override;
  void BASS_ChannelSetAttributes(StreamHandle stream, int frequency, int volume, int pan) override;
  std::uint32_t BASS_ChannelGetLevel(StreamHandle stream) override;
  support::BytePosition BASS_ChannelGetPosition(StreamHandle stream) override;
  support::BytePosition BASS_ChannelGetLength(StreamHandle stream) override;
  bool BASS_ChannelSetPosition(StreamHandle stream, support::BytePosition position) override;
  std::uint32_t BASS_ChannelGetData(StreamHandle decoder, std::span<std::int16_t> buffer,
                                    std::uint32_t bytes) override;
  std::uint32_t BASS_ChannelGetData(StreamHandle stream, std::span<float> buffer,
                                    std::uint32_t what) override;
  bool BASS_ChannelIsActive(StreamHandle stream) override;
  double BASS_ChannelBytes2Seconds(StreamHandle stream, support::BytePosition position) override;
  bool BASS_ChannelGetAttributes(StreamHandle stream, int& frequency, int& volume, int& pan) override;
  bool BASS_FX_DSP_Set(StreamHandle stream, int effect_type, int priority) override;
  bool BASS_FX_DSP_SetParameters(StreamHandle stream, int effect_type, const PeakingBand& band) override;
  bool BASS_FX_DSP_GetParameters(StreamHandle stream, int effect_type, PeakingBand& band) override;
  void BASS_FX_DSP_Remove(StreamHandle stream, int effect_type) override;
  void BASS_FX_BPM_Free(StreamHandle stream) override;

  // SoundControl
  void Prepare(const std::string& path, std::function<void(support::Result<void>)> done) override;
  support::Error LastError() const override;
  StreamHandle CreateGenerated(std::shared_ptr<support::SoundGenerator> sound, int device,
                               std::uint32_t speaker) override;
  bool DecodeFurther(StreamHandle decoder) override;
  SampleFormat FormatOf(StreamHandle stream) override;
  HeardStream Heard(StreamHandle stream) override;
  support::EngineFrame NextFrame(StreamHandle stream) override;
  bool Schedule(const ScheduledCommand& command) override;
  void CancelScheduled(StreamHandle stream) override;
  void SetGain(StreamHandle stream, support::Decibels gain) override;
  support::Decibels LimiterReduction(int device, std::uint32_t speaker) override;
  void SetDeviceRole(int device, DeviceRole role) override;
  void ReturnDevice(int device) override;
  std::vector<DeviceEvent> TakeDeviceEvents() override;
  EngineHealth Health() override;

 private:
  /// What a decoder and the stream over it have in common.
  struct Source {
    FakeFile file;
    int device = 0;
    std::uint32_t speaker = 0;
    double frame = 0;

    [[nodiscard]] double Length() const { return file.seconds * file.sample_rate; }
    [[nodiscard]] int FrameBytes() const { return file.channels * 2; }
    [[nodiscard]] int RightPeak() const { return file.channels == 1 ? file.left_peak : file.right_peak; }
  };
  /// Its frame is that of the instant `since`.
  struct Stream : Source {
    StreamHandle decoder = 0;                                      ///< goes with it, or 0
    std::shared_ptr<support::SoundGenerator> generator = nullptr;  // with the test
    int volume = 100;
    int pan = 0;
    support::Decibels gain;
    StreamHandle leader = 0;
    float tempo = 0;
    float rate = 0;
    float semitones = 0;
    std::vector<PeakingBand> bands;
    std::vector<ScheduledCommand> waiting;  ///< the earliest first
    bool playing = false;
    support::TimePoint since{};
    support::TimePoint ended_at{};
    support::TimePoint ended_until{};  ///< as heard

    /// Source seconds a second.
    [[nodiscard]] double Speed() const {
      const double played = rate == 0 ? 1 : static_cast<double>(rate) / file.sample_rate;
      return played * (1 + static_cast<double>(tempo) / 100);
    }
    void MoveTo(support::TimePoint time);
    /// Does what was scheduled until then.
    void Follow(support::TimePoint time);
    void SetTempo(float percent);
    void SetRate(float hertz);
  };

  bool Record(std::string line) DJ_REQUIRES(mutex_);
  void FailWithoutOutput() DJ_REQUIRES(mutex_);
  StreamHandle Create(std::string_view call, bool memory, const std::string& path, std::uint64_t length,
                      std::uint32_t flags) DJ_EXCLUDES(mutex_);
  std::optional<FakeFile> Find(const std::string& path) const DJ_REQUIRES(mutex_);
  /// As it is now; null when there is none that plays.
  Stream* At(StreamHandle stream) DJ_REQUIRES(mutex_);
  const Stream* At(StreamHandle stream) const DJ_REQUIRES(mutex_);
  /// Puts it where its leader is, while that one plays.
  void BeLed(Stream& follower) DJ_REQUIRES(mutex_);
  /// Null when it is no decoder.
  Source* DecoderAt(StreamHandle decoder) DJ_REQUIRES(mutex_);
  /// Either of them.
  Source* SourceAt(StreamHandle handle) DJ_REQUIRES(mutex_);
  const Source* SourceAt(StreamHandle handle) const DJ_REQUIRES(mutex_);

  const support::Clock& clock_;
  mutable support::Mutex mutex_;
  std::map<std::string, FakeFile> files_ DJ_GUARDED_BY(mutex_);
  std::optional<FakeFile> any_file_ DJ_GUARDED_BY(mutex_);
  std::vector<std::string> devices_ DJ_GUARDED_BY(mutex_);
  std::set<int> broken_ DJ_GUARDED_BY(mutex_);
  std::vector<int> returned_ DJ_GUARDED_BY(mutex_);
  std::map<int, DeviceRole> roles_ DJ_GUARDED_BY(mutex_);
  std::map<int, int> open_ DJ_GUARDED_BY(mutex_);  ///< their rates
  int current_device_ DJ_GUARDED_BY(mutex_) = 0;
  std::map<StreamHandle, Source> decoders_ DJ_GUARDED_BY(mutex_);
  std::map<StreamHandle, Stream> streams_ DJ_GUARDED_BY(mutex_);
  StreamHandle next_handle_ DJ_GUARDED_BY(mutex_) = 1;
  std::vector<std::string> log_ DJ_GUARDED_BY(mutex_);
  std::function<void(const std::string&)> listener_ DJ_GUARDED_BY(mutex_);
  int calls_ DJ_GUARDED_BY(mutex_) = 0;
  int failing_call_ DJ_GUARDED_BY(mutex_) = 0;
  bool hold_ DJ_GUARDED_BY(mutex_) = false;
  std::deque<std::pair<std::string, std::function<void(support::Result<void>)>>> held_ DJ_GUARDED_BY(mutex_);
  support::Error last_error_ DJ_GUARDED_BY(mutex_){support::ErrorCode::NotFound, "Nothing failed."};
  support::Duration latency_ DJ_GUARDED_BY(mutex_){0};
  support::Decibels reduction_ DJ_GUARDED_BY(mutex_);
  std::vector<DeviceEvent> events_ DJ_GUARDED_BY(mutex_);
};

}  // namespace decks::testing
