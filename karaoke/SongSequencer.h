// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "karaoke/SongSound.h"
#include "karaoke/ports/MidiSequencer.h"
#include "karaoke/ports/SongOutput.h"

namespace karaoke {

/// Our own sequencer behind the commands: songs that were made ready on a worker, played on the sound engine.
///
/// Threads: one; no call blocks, as whatever takes long happened before Offer. Law: positions and the length
/// are those of the song, in milliseconds, at whatever speed it plays.
class SongSequencer final : public MidiSequencer {
 public:
  explicit SongSequencer(SongOutput& output) : output_(output) {}

  /// The song that opening this file finds, once; one at a time, the newest counts. To be opened again it is
  /// made ready again: the engine may still fade the old one.
  void Offer(std::string path, std::shared_ptr<SongSound> sound);
  /// The song that is open, for key and melody; null when none is.
  [[nodiscard]] SongSound* Open() const { return sound_.get(); }

  std::uint32_t mciSendCommandA(std::uint32_t device, std::uint32_t command, std::uint32_t flags,
                                MciParameters& parameters) override;
  std::uint32_t midiOutGetVolume(std::uint32_t device, std::uint32_t& volume) override;
  std::uint32_t midiOutSetVolume(std::uint32_t device, std::uint32_t volume) override;
  std::uint32_t SetSpeed(std::uint32_t device, double factor) override;

 private:
  std::uint32_t OpenSong(MciParameters& parameters);
  std::uint32_t CloseSong();
  std::uint32_t Seek(std::uint32_t flags, const MciParameters& parameters);
  std::uint32_t Status(std::uint32_t flags, MciParameters& parameters);
  [[nodiscard]] std::uint32_t Milliseconds(std::int64_t frames) const;
  [[nodiscard]] std::uint32_t Mode();

  SongOutput& output_;
  std::string offered_path_;
  std::shared_ptr<SongSound> offered_;  // with the worker's mail
  std::shared_ptr<SongSound> sound_;    // with the engine
  std::uint32_t device_ = 0;            ///< the last number given
  std::uint32_t volume_ = 0xFFFF'FFFF;
  bool paused_ = false;
};

}  // namespace karaoke
