// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include "decks/ports/SoundDesk.h"

namespace decks::testing {

/// A desk without sound: it keeps what it was told and gives the readings that a test sets. Threads: one.
class RecordingDesk final : public SoundDesk {
 public:
  void SetTone(StreamHandle stream, const Tone& tone) override {
    if (stream != 0) tones[stream] = tone;
  }
  void Direct(const DeskLines& told) override { lines = told; }
  bool HallReachesHeadphones() override {
    const SpeakerPair& headphones = lines.headphones;
    const auto fits = [&headphones](const SpeakerPair& pair) {
      if (pair.device == 0 || headphones.device == 0) return false;
      const bool own_pair =
          pair.speaker != 0 && headphones.speaker != 0 && pair.speaker != headphones.speaker;
      return pair.device != headphones.device || own_pair;
    };
    return fits(lines.hall[0]) && fits(lines.hall[1]);
  }
  MasterReading Master() override { return reading; }

  /// Flat until told otherwise.
  [[nodiscard]] Tone ToneOf(StreamHandle stream) const {
    const auto found = tones.find(stream);
    return found == tones.end() ? Tone{} : found->second;
  }

  std::map<StreamHandle, Tone> tones;
  DeskLines lines;
  MasterReading reading;
};

}  // namespace decks::testing
