// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "karaoke/SongEvents.h"
#include "karaoke/ports/Synthesiser.h"
#include "support/ports/SoundGenerator.h"

namespace karaoke {

/// What the singer wants of a song that plays.
/// Threads: set by one, read by the sequencers before each block.
struct SingerWishes {
  std::atomic<int> semitones{0};       ///< -12 to 12; drums stay
  std::atomic<float> melody_level{1};  ///< 0 to 1: how loud the channel is that plays what is sung
};

/// Plays a song's events into a synthesiser on a clock of rendered frames.
///
/// Threads: the feeder. Law: an event sounds at the frame of the synthesiser's grid next to the one it is due
/// at; a note-off ends the key that its note-on sounded, whatever the key change does between them; after
/// Begin everything is as if the song had been played up to there.
class EventSequencer final : public support::GeneratorVoice {
 public:
  EventSequencer(std::shared_ptr<const SongEvents> song, std::unique_ptr<Synthesiser> synthesiser,
                 std::shared_ptr<const SingerWishes> wishes, std::optional<std::size_t> melody_channel,
                 int sample_rate);

  void Begin(std::int64_t frame) override;
  void SetSpeed(double speed) override { speed_ = speed; }
  void Make(std::span<float> left, std::span<float> right) override;

 private:
  static constexpr std::size_t kKeys = 128;
  static constexpr std::int8_t kSilent = -1;
  using Keys = std::array<std::int8_t, kKeys>;  ///< the key that sounds for each key of the song

  [[nodiscard]] double FrameOf(const SongEvent& event) const;
  void Play(const SongEvent& event);
  void PlayNoteOn(const ChannelMessage& message);
  void PlayNoteOff(const ChannelMessage& message);
  void PlayControl(const ChannelMessage& message);
  void SendMelodyVolume();
  void FollowWishes();
  void RenderBlock();
  [[nodiscard]] std::uint8_t KeyFor(const ChannelMessage& message) const;

  const std::shared_ptr<const SongEvents> song_;  // with the other voice
  const std::unique_ptr<Synthesiser> synthesiser_;
  const std::shared_ptr<const SingerWishes> wishes_;  // with whoever sets them
  const std::optional<std::size_t> melody_channel_;
  const int sample_rate_;
  DrumChannels drums_;
  std::array<Keys, 16> sounding_{};
  std::uint8_t melody_volume_ = 100;  ///< as the song wants it
  float melody_level_ = 1;            ///< as sent
  double speed_ = 1;
  double source_ = 0;                ///< the song's frame under the next block
  std::size_t next_ = 0;             ///< the first event not yet played
  std::vector<float> left_, right_;  ///< one block of the grid
  std::size_t used_ = 0;             ///< frames of it that were taken
};

}  // namespace karaoke
