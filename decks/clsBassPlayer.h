// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "decks/LevelMeter.h"
#include "decks/MixPointScan.h"
#include "decks/PrelistenStream.h"
#include "decks/clsMp3Info.h"
#include "decks/ports/AudioEngine.h"
#include "support/Units.h"

namespace decks {

/// A deck: one file, heard through the main output and, silently until somebody listens in, through the
/// pre-listen output.
///
/// Set Filename, device, Speaker, PreDevice and PreSpeaker, then OpenFile, the levels, Play. Results of the
/// engine are ignored here: after a failure the handle is 0 and the calls on it do nothing, so the owner
/// looks at STRM() after OpenFile. Positions are bytes of the decoded file. Threads: the engine's owner.
/// Owns: both streams.
class clsBassPlayer {
 public:
  clsBassPlayer(AudioEngine& engine, const MasterControls& controls);
  ~clsBassPlayer();
  clsBassPlayer(const clsBassPlayer&) = delete;
  clsBassPlayer& operator=(const clsBassPlayer&) = delete;

  void Play();
  void StopPlay();
  void PausePlay();
  void ResumePlay();
  /// Frees what was open and opens Filename, stopped at its start: the pre-listen stream first, where there
  /// is a pre-listen output, then the main one.
  void OpenFile();

  // The halves of OpenFile and Play, for moving one output while the other one goes on, and for hearing what
  // is to come in the head-phones alone: PlayPrelisten on a deck that is stopped, then PreVolume.
  void OpenMain();
  void OpenPrelisten();
  void PlayMain();
  void PlayPrelisten();
  void PausePrelisten();
  void ClosePrelisten();

  [[nodiscard]] std::int16_t Channel() const { return channel_; }
  void Channel(std::int16_t number) { channel_ = number; }
  [[nodiscard]] StreamHandle STRM() const { return main_; }
  [[nodiscard]] StreamHandle PreSTRM() const { return prelisten_.stream; }
  [[nodiscard]] bool IsPlaying() const { return is_playing_; }
  void IsPlaying(bool playing) { is_playing_ = playing; }
  /// The combined level: the louder channel's, by the same law; silence keeps the last reading.
  [[nodiscard]] float dB();
  [[nodiscard]] bool IsPaused() const { return is_paused_; }
  void IsPaused(bool paused) { is_paused_ = paused; }
  [[nodiscard]] float BPM1() const { return bpm_; }
  void BPM1(float bpm) { bpm_ = bpm; }
  [[nodiscard]] const std::string& Filename() const { return filename_; }
  void Filename(std::string path) { filename_ = std::move(path); }
  /// 0 to 100, the engine's own scale; acts at once.
  [[nodiscard]] std::int16_t volume() const { return volume_; }
  void volume(std::int16_t level);
  /// What the stream is on its way to, without telling it.
  void NoteVolume(std::int16_t level) { volume_ = level; }
  [[nodiscard]] std::int16_t PreVolume() const { return static_cast<std::int16_t>(prelisten_.volume); }
  void PreVolume(std::int16_t level) { prelisten_.SetVolume(level); }
  /// What is heard now; setting it moves both streams.
  [[nodiscard]] support::BytePosition StreamTime() const;
  void StreamTime(support::BytePosition position);
  /// Of the main stream, as known when it was opened.
  [[nodiscard]] support::BytePosition StreamLength() const { return length_; }
  [[nodiscard]] std::int16_t device() const { return device_; }
  void device(std::int16_t number) { device_ = number; }
  [[nodiscard]] std::int16_t Speaker() const { return speaker_; }
  void Speaker(std::int16_t code) { speaker_ = code; }
  [[nodiscard]] std::int16_t PreSpeaker() const { return static_cast<std::int16_t>(prelisten_.speaker); }
  void PreSpeaker(std::int16_t code) { prelisten_.speaker = code; }
  [[nodiscard]] std::int16_t PreDevice() const { return static_cast<std::int16_t>(prelisten_.device); }
  void PreDevice(std::int16_t number) { prelisten_.device = number; }
  /// Decibels below full scale of what was heard last, scaled by the master slider; each call measures.
  [[nodiscard]] float LeftdB();
  [[nodiscard]] float RightdB();
  /// Where the sound begins and ends in the file, once a scan of ScanRequest() found it; the owner stores
  /// what it found. 0 and 0 after OpenFile.
  [[nodiscard]] support::BytePosition StartMixPoint() const { return start_mix_point_; }
  void StartMixPoint(support::BytePosition position) { start_mix_point_ = position; }
  [[nodiscard]] support::BytePosition EndMixPoint() const { return end_mix_point_; }
  void EndMixPoint(support::BytePosition position) { end_mix_point_ = position; }
  /// What a worker scans for them, by the controls as they stand now.
  [[nodiscard]] MixPointRequest ScanRequest() const;
  /// The gain to be shown, of the gain record as it is; a worker's GainAnalysis fills that in.
  [[nodiscard]] std::string Peak() const { return GainText(mp3_info_); }
  [[nodiscard]] const clsMp3Info& Mp3Info() const { return mp3_info_; }
  void Mp3Info(const clsMp3Info& info) { mp3_info_ = info; }
  [[nodiscard]] bool IsMixing() const { return is_mixing_; }
  void IsMixing(bool mixing) { is_mixing_ = mixing; }
  [[nodiscard]] support::BytePosition DummyTime() const { return dummy_time_; }
  void DummyTime(support::BytePosition position) { dummy_time_ = position; }
  [[nodiscard]] StreamHandle hBPM() const { return tempo_detection_; }
  void hBPM(StreamHandle handle) { tempo_detection_ = handle; }

 private:
  AudioEngine& engine_;
  const MasterControls& controls_;
  std::string filename_;
  StreamHandle main_ = 0;
  PrelistenStream prelisten_;
  LevelMeter left_, right_, combined_;
  support::BytePosition length_, dummy_time_, start_mix_point_, end_mix_point_;
  clsMp3Info mp3_info_;
  float bpm_ = 0;
  StreamHandle tempo_detection_ = 0;
  std::int16_t channel_ = 0;
  std::int16_t device_ = 1;
  std::int16_t speaker_ = 0;
  std::int16_t volume_ = 100;
  bool is_playing_ = false;
  bool is_paused_ = false;
  bool is_mixing_ = false;
};

}  // namespace decks
