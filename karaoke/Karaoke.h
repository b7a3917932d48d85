// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "karaoke/SongReader.h"
#include "karaoke/ports/MidiSequencer.h"
#include "support/Result.h"

namespace karaoke {

/// One MIDI song: what its file tells, its words, and its playing on a sequencer.
///
/// Threads: one. Law: whatever a sequencer refuses comes back as the text of its error number.
class Karaoke {
 public:
  explicit Karaoke(MidiSequencer& sequencer) : sequencer_(sequencer) {}
  ~Karaoke() { static_cast<void>(CloseDevice()); }
  Karaoke(const Karaoke&) = delete;
  Karaoke& operator=(const Karaoke&) = delete;

  /// Reads a file before it is played; fails only when it cannot be read. Blocks on the disk.
  support::Result<void> ReadFile(const std::string& path);
  /// The same with a song that was read elsewhere, on a worker for example.
  void TakeSong(std::string path, Song song);
  [[nodiscard]] const Song& GetSong() const { return song_; }

  [[nodiscard]] std::string TextLyric() const { return song_.text_lyric.value_or(""); }
  [[nodiscard]] std::string Genre() const { return song_.genre.value_or(""); }
  /// Low word left, high word right, 0xFFFF is full; 0 when the system does not tell.
  [[nodiscard]] std::uint32_t GetMusicVolume();
  support::Result<void> SetMusicVolume(std::uint32_t volume);
  /// In milliseconds, as the sequencer says after KarOpenDevice.
  [[nodiscard]] std::uint32_t MusicTimeLength() const { return time_length_; }
  void MusicTimeLength(std::uint32_t milliseconds) { time_length_ = milliseconds; }
  /// "03:45".
  [[nodiscard]] std::string MusicLength() const { return length_; }
  void MusicLength(std::string text) { length_ = std::move(text); }
  [[nodiscard]] float midiBPM() const { return song_.bpm.value_or(0); }
  void midiBPM(float bpm) { song_.bpm = bpm; }
  /// 1 is as written, 1.1 a tenth faster; 0.5 to 2. Holds for the next song too.
  [[nodiscard]] double Velocity() const { return velocity_; }
  support::Result<void> Velocity(double factor);
  [[nodiscard]] int QuarterNote() const { return song_.quarter_note.value_or(0); }
  [[nodiscard]] bool IsLyric() const { return song_.is_lyric; }
  [[nodiscard]] std::string Titles() const { return song_.titles.value_or(""); }
  void Titles(std::string text) { song_.titles = std::move(text); }

  support::Result<void> CloseDevice();
  /// Opens the file that was read, and asks for its length.
  support::Result<void> KarOpenDevice();
  support::Result<void> Pause();
  support::Result<void> Play();
  support::Result<void> SeekEnd();
  support::Result<void> SeekIni();
  support::Result<void> SetPosition(std::uint32_t milliseconds);
  support::Result<void> StopPlay();

  /// What is heard now, in milliseconds; 0 without a device.
  [[nodiscard]] std::uint32_t Position();
  [[nodiscard]] bool IsPlaying();

 private:
  support::Result<void> Send(std::uint32_t command, std::uint32_t flags, MciParameters& parameters);
  support::Result<void> Send(std::uint32_t command, std::uint32_t flags);
  [[nodiscard]] std::uint32_t Query(std::uint32_t item);

  MidiSequencer& sequencer_;
  std::string path_;
  Song song_;
  std::uint32_t device_ = 0;
  std::uint32_t time_length_ = 0;
  std::string length_;
  double velocity_ = 1;
};

}  // namespace karaoke
