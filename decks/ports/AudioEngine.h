// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "support/Units.h"

namespace decks {

/// A stream of the engine; 0 is none, and every call on 0 does nothing.
using StreamHandle = std::uint32_t;

/// Flags of stream creation, as the engine's callers combine them.
inline constexpr std::uint32_t kStreamDecode = 0x200000;   ///< a decoder: read by the caller, not played
inline constexpr std::uint32_t kSpeakerFront = 0x1000000;  ///< pair codes 1 to 4, one flag value each
inline constexpr std::uint32_t kSpeakerRear = 0x2000000;
inline constexpr std::uint32_t kSpeakerCentreLfe = 0x3000000;
inline constexpr std::uint32_t kSpeakerRear2 = 0x4000000;
inline constexpr std::uint32_t kSpeakerMask = 0xF000000;
inline constexpr std::uint32_t kTempoFreeSource =
    0x10000;                                      ///< the tempo stream frees its decoder with itself
inline constexpr std::uint32_t kTempoLoop = 0x4;  ///< recorded; a stream ends with its decoder all the same
inline constexpr std::uint32_t kInitSpeakers = 2048;  ///< open the device for speaker assignment

/// Options of BASS_SetConfig.
inline constexpr std::uint32_t kConfigBuffer = 0;        ///< playback buffer in ms
inline constexpr std::uint32_t kConfigUpdatePeriod = 1;  ///< in ms

/// What BASS_ChannelGetData reads of a playing stream.
inline constexpr std::uint32_t kDataFft256 = 0x80000000;   ///< 128 magnitudes, see music::Spectrum
inline constexpr std::uint32_t kDataFftIndividual = 0x10;  ///< with it: left and right by turns, 256
inline constexpr std::uint32_t kDataFloat = 0x40000000;    ///< or-ed with a number of bytes: the samples

/// Effect type of an equaliser band.
inline constexpr int kPeakingEffect = 5;

/// Parameters of one equaliser band, in the order in which the engine takes them.
struct PeakingBand {
  std::int32_t band = 0;       ///< 0 to 9
  std::int32_t frequency = 0;  ///< the stream's sample rate in Hz
  float bandwidth = 0;         ///< in octaves; where it is 0, Q counts
  float q = 0;
  float centre = 0;  ///< in Hz
  float gain = 0;    ///< in dB
};

/// The sound engine in the words its callers were given: handles, devices by number, positions in bytes of
/// the decoded 16-bit samples. A call never fails loudly: creators return 0 and the rest does nothing.
///
/// Threads: all calls from one thread, the owner's (the conductor in the running program), with two
/// exceptions. BASS_Init and BASS_GetDeviceDescription may come from any thread. Creating, reading, placing,
/// asking and freeing decoding streams may come from worker threads, each stream from one at a time; it must
/// not be one of the engine's own workers for long, they decode what is playing. No call waits for a disk or
/// a device when the file was prepared (see SoundControl) and the device is open.
class AudioEngine {
 public:
  virtual ~AudioEngine() = default;

  // Devices. Numbers start at 1 and are stable within a run; 0 is "no sound", which keeps time all the same.

  /// Opens a device at a rate in Hz (44100 is the engine's); false when it cannot be opened. May block for
  /// some hundred milliseconds, so a device that is added while music plays is opened by a worker: the owner
  /// goes on making other calls meanwhile, but does not use this device and does not call BASS_Free. The
  /// current device stays what it is.
  virtual bool BASS_Init(int device, int frequency, std::uint32_t flags) = 0;
  /// Nothing past the last device.
  virtual std::optional<std::string> BASS_GetDeviceDescription(int device) = 0;
  virtual void BASS_SetConfig(std::uint32_t option, std::uint32_t value) = 0;
  /// Frees all streams and closes all devices.
  virtual void BASS_Free() = 0;
  /// Makes a device current for the next stream creation; false when it is not open.
  virtual bool BASS_SetDevice(int device) = 0;

  // Streams.

  /// A decoding stream of a general type (mp3, ogg, wav, m4a ...); 0 when the file cannot be opened or holds
  /// no sound (SoundControl::LastError says why). A length from 0x1000000 to 0x4000000 is a speaker pair,
  /// never a byte count; 0 is the whole file.
  virtual StreamHandle BASS_StreamCreateFile(bool memory, const std::string& path, std::uint64_t offset,
                                             std::uint64_t length, std::uint32_t flags) = 0;
  virtual StreamHandle BASS_FLAC_StreamCreateFile(bool memory, const std::string& path, std::uint64_t offset,
                                                  std::uint64_t length, std::uint32_t flags) = 0;
  virtual StreamHandle BASS_WMA_StreamCreateFile(bool memory, const std::string& path, std::uint64_t offset,
                                                 std::uint64_t length, std::uint32_t flags) = 0;
  /// A playable stream over a decoding stream, on the device that was current when the decoder was made.
  virtual StreamHandle BASS_FX_TempoCreate(StreamHandle decoder, std::uint32_t flags) = 0;
  /// Tempo in percent from the original (-50 to 100), sample rate in Hz (0 = the file's), pitch in semitones.
  /// A value of kTempoUnchanged leaves that one as it is.
  virtual void BASS_FX_TempoSet(StreamHandle stream, float tempo_percent, float sample_rate,
                                float semitones) = 0;
  /// A playing stream fades out in 5 ms; its handle is gone at once.
  virtual void BASS_StreamFree(StreamHandle stream) = 0;

  // Playing.

  /// Starts or resumes; from the start of the file when restart is set. False on a handle that cannot play.
  virtual bool BASS_ChannelPlay(StreamHandle stream, bool restart) = 0;
  /// From now on a stream is heard at the place in the file where another one of the same file is heard, on
  /// whatever device: it begins there when it is played, placed or resumed while the leader plays, takes the
  /// leader's tempo, gain and equaliser, and stays there however the two devices' clocks differ. While the
  /// leader stands still it plays by itself. The leader is never touched. A leader of 0 ends it, and so does
  /// the end of either.
  virtual void Follow(StreamHandle follower, StreamHandle leader) = 0;
  virtual void BASS_ChannelPause(StreamHandle stream) = 0;
  virtual void BASS_ChannelStop(StreamHandle stream) = 0;
  /// Frequency -1, volume -1 and pan -101 leave theirs unchanged; volume is 0 to 100.
  virtual void BASS_ChannelSetAttributes(StreamHandle stream, int frequency, int volume, int pan) = 0;
  /// Peaks of the last 20 ms that were heard, before volume: low 16 bits left, high 16 bits right, 0 to
  /// 32768.
  [[nodiscard]] virtual std::uint32_t BASS_ChannelGetLevel(StreamHandle stream) = 0;
  /// A playing stream: what is heard now. A decoder: where the next BASS_ChannelGetData reads.
  [[nodiscard]] virtual support::BytePosition BASS_ChannelGetPosition(StreamHandle stream) = 0;
  /// Exact once the file is decoded, the container's estimate before that.
  [[nodiscard]] virtual support::BytePosition BASS_ChannelGetLength(StreamHandle stream) = 0;
  /// Never cuts what is heard: the old place fades into the new one. Past the end does nothing and is false.
  virtual bool BASS_ChannelSetPosition(StreamHandle stream, support::BytePosition position) = 0;

  /// Of a position in this stream's file; 0 on a handle of 0.
  [[nodiscard]] virtual double BASS_ChannelBytes2Seconds(StreamHandle stream,
                                                         support::BytePosition position) = 0;

  // Decoders.

  /// Copies the next 16-bit interleaved samples and returns the bytes delivered; waits for the decoding
  /// worker, so only workers call it.
  virtual std::uint32_t BASS_ChannelGetData(StreamHandle decoder, std::span<std::int16_t> buffer,
                                            std::uint32_t bytes) = 0;
  /// Of a playing stream: what was heard last, before volume, left and right by turns at the rate of its
  /// device; or the spectrum of that, of all channels together unless asked for individually. Returns the
  /// bytes given: 0 when the buffer is too small for a spectrum, or the handle is none that plays. The
  /// owner's thread.
  virtual std::uint32_t BASS_ChannelGetData(StreamHandle stream, std::span<float> buffer,
                                            std::uint32_t what) = 0;
  /// A decoder: true while there is more to read. A playing stream: true until its end was heard.
  [[nodiscard]] virtual bool BASS_ChannelIsActive(StreamHandle stream) = 0;

  // Effects and tempo detection. A change of an effect acts in the next block, without a click.
  /// The file's sample rate, unless another one was set, in Hz; volume 0 to 100; pan -100 to 100. Leaves all
  /// three as they are, and is false, on a handle of 0.
  virtual bool BASS_ChannelGetAttributes(StreamHandle stream, int& frequency, int& volume, int& pan) = 0;
  /// Creates one effect on a playing stream. Each call of type 5 creates the next of ten equaliser bands.
  virtual bool BASS_FX_DSP_Set(StreamHandle stream, int effect_type, int priority) = 0;
  /// Of the band that the record names; false when the stream has no such band.
  virtual bool BASS_FX_DSP_SetParameters(StreamHandle stream, int effect_type, const PeakingBand& band) = 0;
  /// Fills in the rest of the record; false, and unchanged, when the stream has no such band.
  virtual bool BASS_FX_DSP_GetParameters(StreamHandle stream, int effect_type, PeakingBand& band) = 0;
  virtual void BASS_FX_DSP_Remove(StreamHandle stream, int effect_type) = 0;
  virtual void BASS_FX_BPM_Free(StreamHandle stream) = 0;
};

inline constexpr float kTempoUnchanged = -1000.0F;

}  // namespace decks
