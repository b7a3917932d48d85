// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "decks/ports/AudioEngine.h"
#include "support/Result.h"
#include "support/Units.h"
#include "support/ports/SoundGenerator.h"

namespace decks {

/// What a stream is doing, as heard: everything here belongs to the same instant of one device.
struct HeardStream {
  bool playing = false;            ///< sound comes out of it, or would
  bool ended = false;              ///< its last sample was heard
  support::SourceFrame frame{0};   ///< the file's frame at the loudspeaker now
  support::SourceFrame length{0};  ///< exact when length_exact
  bool length_exact = false;
  bool cut_short = false;  ///< its file could be read no further: it ends there
  int sample_rate = 0;     ///< of the file, in Hz
  int channels = 0;        ///< of the file
  double ratio = 1;        ///< source seconds a second, as heard
  float left_peak = 0;     ///< of the last 20 ms heard, before volume, 1 is full scale
  float right_peak = 0;
  bool waiting = false;  ///< its place is not decoded yet, so it stands still
  double lag = 0;        ///< seconds from the mixing to the loudspeaker: how late a change made now is heard
};

/// What a file's samples are.
struct SampleFormat {
  int sample_rate = 0;  ///< Hz
  int channels = 0;
  bool operator==(const SampleFormat&) const = default;
};

/// What the engine's callbacks report of themselves.
struct EngineHealth {
  std::uint64_t callbacks = 0;
  /// Times that a playing stream's ring ran dry, or the system ran out of a device's samples.
  std::uint64_t late_blocks = 0;
  std::uint64_t bad_samples = 0;  ///< made by an effect, no numbers, silenced
  float load = 0;                 ///< largest share of the period that a callback of the last second took
};

/// A place that a deck can play on, as the user sees it.
struct DeviceEvent {
  /// Listed: there is a new device, which has the next number; its text is empty. CanReturn: what was
  /// replaced works again, see ReturnDevice; CannotReturn: not any more, its text is empty. Moved: the user
  /// put it onto another device with means of the system's; its streams belong there now, and it is its own
  /// output again a moment later.
  enum class Kind { Lost, Replaced, Muted, Returned, Listed, CanReturn, CannotReturn, Moved } kind;
  int device;        ///< the number that the streams were opened on
  std::string text;  ///< one sentence for the user in English, or empty
  support::Saying saying{};
  int moved_to = 0;  ///< Moved: the number of that device
};

/// What a device is for. Head-phones that go away fall silent until they come back; they are never moved to
/// another output, and no other device is moved to theirs.
enum class DeviceRole { Main, Headphones };

/// What changes the tempo of the main outputs while the key stays: the better sound, or the one that costs
/// least. Head-phones make do with the latter.
enum class Stretch { Best, LowPower };

/// A change that happens at an exact frame of the device's clock.
struct ScheduledCommand {
  enum class Kind { Start, Pause, Ramp, Tempo } kind;
  StreamHandle stream = 0;
  support::EngineFrame at{0};  ///< a frame in the past means: in the next block
  /// Ramp: volume 0 to 100, unless a volume is set after this was scheduled. Tempo: percent from the
  /// original.
  float value = 0;
  std::chrono::milliseconds duration{5};  ///< Ramp only
};

/// The part of the engine that has no name in its callers' old vocabulary: the heard clock, preparation of
/// files, scheduled commands and the health of the devices. One object implements this and AudioEngine.
///
/// Threads: as AudioEngine, unless a call says otherwise.
class SoundControl {
 public:
  virtual ~SoundControl() = default;

  /// Opens a file on a worker, so that creating streams of it afterwards does not wait for the disk. done is
  /// called once, on that worker, with success as soon as the first sound can be played; the engine keeps the
  /// file for at least ten seconds, so that the creators find it. Any thread.
  virtual void Prepare(const std::string& path, std::function<void(support::Result<void>)> done) = 0;
  /// Why the last creator returned 0; a sentence for the user.
  [[nodiscard]] virtual support::Error LastError() const = 0;

  /// A playable stream of generated sound on a device that is open and has the generator's rate; it is
  /// played, placed, faded and freed like a file's. 0 and LastError() when that fails. speaker: a flag of the
  /// pair, or 0. A worker frees the generator once it has faded.
  virtual StreamHandle CreateGenerated(std::shared_ptr<support::SoundGenerator> /*sound*/, int /*device*/,
                                       std::uint32_t /*speaker*/) {
    return 0;
  }

  /// Decodes another second or so of the file under a decoding stream; false when nothing was left to do, so
  /// that its length is exact. May block on the disk: workers only.
  virtual bool DecodeFurther(StreamHandle decoder) = 0;

  /// Of the file under a stream, decoding or playing; all 0 on a handle of 0. Any thread for a decoder.
  [[nodiscard]] virtual SampleFormat FormatOf(StreamHandle /*stream*/) { return {}; }

  [[nodiscard]] virtual HeardStream Heard(StreamHandle stream) = 0;
  /// The next frame that the device of this stream will be given.
  [[nodiscard]] virtual support::EngineFrame NextFrame(StreamHandle stream) = 0;
  /// False when too many commands of the stream wait already, or it is unknown. What waits when the stream is
  /// freed is dropped.
  virtual bool Schedule(const ScheduledCommand& command) = 0;
  /// What was scheduled for the stream so far happens no more.
  virtual void CancelScheduled(StreamHandle /*stream*/) {}

  /// On top of the volume, at most 24 dB up or down; 0 dB until told otherwise. Acts in the next block,
  /// without a click; what it makes too loud, the limiter of its pair of speakers takes back.
  virtual void SetGain(StreamHandle /*stream*/, support::Decibels /*gain*/) {}
  /// How much the limiter of a pair of speakers turns the sum down now, 0 when it does not: dB, at least 0.
  /// speaker: a flag of the pair; 0 is all of the device's, the most of them.
  [[nodiscard]] virtual support::Decibels LimiterReduction(int device, std::uint32_t speaker) = 0;
  /// Main until told otherwise; before or after the device is opened. Any thread.
  virtual void SetDeviceRole(int /*device*/, DeviceRole /*role*/) {}
  /// Also of what plays already, without a click. Best until told otherwise; any time.
  virtual void SetStretch(Stretch /*choice*/) {}
  /// Back to the output that the number stands for, after CanReturn; comes as Returned, or not at all when
  /// the output cannot be opened. Any thread.
  virtual void ReturnDevice(int /*device*/) {}
  /// What happened to devices since the last call.
  [[nodiscard]] virtual std::vector<DeviceEvent> TakeDeviceEvents() = 0;
  [[nodiscard]] virtual EngineHealth Health() = 0;
};

}  // namespace decks
