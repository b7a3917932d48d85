// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "decks/ports/AudioEngine.h"
#include "support/Units.h"

namespace decks {

/// A deck's second stream of the same file, for the head-phones.
///
/// Owns: its stream; the device and pair are the listener's choice and outlive it.
/// Law: with device 0 there is no pre-listen output, and nothing here asks the engine for one. A device that
/// is not open gets no stream, because the engine would put it on the device that is current: the main
/// output.
class PrelistenStream {
 public:
  explicit PrelistenStream(AudioEngine& engine) : engine_(engine) {}

  [[nodiscard]] bool InUse() const { return device != 0; }
  /// Frees the old stream and opens the file on the chosen device and pair.
  void Open(const std::string& filename);
  /// Starts beside the main stream, silent, at its place. Without a chosen pair the stream is built anew for
  /// all speakers of the device; with one it keeps its speakers.
  void Start(const std::string& filename, StreamHandle main);
  void Resume(StreamHandle main);
  /// From now on it is heard at the main stream's place, for as long as both are there.
  void Follow(StreamHandle main) { engine_.Follow(stream, main); }
  void Pause() { engine_.BASS_ChannelPause(stream); }
  /// Stops, frees and takes the effects off; the tempo detection is released by the deck, with the main one.
  void Stop();
  void SetVolume(int level);

  StreamHandle stream = 0;
  int device = 0;
  int speaker = 0;
  int volume = 0;

 private:
  /// Opened by the general creator, a pair travels in the length argument; the other creators take it as a
  /// flag. The engine reads both.
  StreamHandle CreateForPair(const std::string& filename);
  /// By the general creator first, whatever the type; an engine that refuses the type there is asked again by
  /// the type's own.
  StreamHandle CreateForAll(const std::string& filename);
  void FollowMain(StreamHandle main);

  AudioEngine& engine_;
};

}  // namespace decks
