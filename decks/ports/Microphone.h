// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "support/Saying.h"

namespace decks {

/// Something that can be spoken into.
struct InputInfo {
  std::string id;    ///< the system's own name, stable over restarts
  std::string name;  ///< for the user
  int channels = 1;
  bool is_default = false;
  bool monitor = false;  ///< it hears what an output plays
  bool loop = false;     ///< and that is an output in use: it would howl, and is refused
};

enum class GateMode {
  Off,
  Automatic,  ///< learns how loud the room is
  Fixed
};

/// What is done to a voice on its way.
struct VoiceSettings {
  float gain = 0;      ///< dB, -20 to 40, before all else
  float low_cut = 90;  ///< Hz, 80 to 120; 0 is none
  GateMode gate = GateMode::Automatic;
  float gate_level = -45;  ///< dB of full scale at which a fixed gate opens, -80 to -10
  float bass = 0;          ///< dB, -12 to 12, as the next two
  float middle = 0;
  float treble = 0;
  bool compress = true;
  float threshold = -20;  ///< dB of full scale, -60 to 0
  float ratio = 4;        ///< 1 to 20
  float makeup = 6;       ///< dB, 0 to 24, behind the compressor
};

/// How the music makes way for a voice.
struct DuckSettings {
  bool on = true;
  float depth = 12;                        ///< dB, 0 to 40
  std::chrono::milliseconds attack{50};    ///< 5 to 1000
  std::chrono::milliseconds hold{400};     ///< of silence before the music comes back, 0 to 5000
  std::chrono::milliseconds release{600};  ///< 20 to 10000
};

/// Where a voice is heard.
struct HallPlace {
  int device = 0;  ///< engine device number
  int pair = 0;    ///< 1 to 4; any other: all speakers of the device
  bool operator==(const HallPlace&) const = default;
};

/// All that is asked of the microphone.
struct MicrophoneWish {
  std::string device;      ///< id of the input; empty: the system's default
  int channel = 1;         ///< of the input, from 1; 0 is the mean of all
  bool on = false;         ///< it is heard in the hall
  bool talk_over = false;  ///< it is heard, its gate open and the music low, spoken or not
  bool check = false;      ///< it listens for its level alone
  bool swift = true;  ///< the hall's outputs are given less ahead meanwhile, so that the voice is not late
  VoiceSettings voice{};
  DuckSettings duck{};
  std::vector<HallPlace> hall{};
};

/// What it does now.
struct MicrophoneState {
  bool open = false;   ///< an input records
  bool heard = false;  ///< and is let into the hall
  bool gate_open = false;
  float input = -120;                    ///< dB of full scale, as it comes from the input
  float level = -120;                    ///< the same, behind all that is done to the voice
  float reduction = 0;                   ///< dB by which the compressor turns down, at least 0
  float ducking = 0;                     ///< dB by which the music is turned down, at least 0
  std::chrono::microseconds latency{0};  ///< from mouth to hall, 0 when unknown
  std::uint64_t gaps = 0;                ///< times that the voice broke off since the input was opened
  std::string device{};                  ///< id of the input that is open
  support::Saying trouble{};             ///< why it cannot be heard, though it is asked for
  std::shared_ptr<const std::vector<InputInfo>> inputs{};  ///< as listed last, never null
};

/// Somebody speaks over the music.
///
/// Law: no input is open while none of on, talk_over and check is asked for. Threads: one, which never waits
/// for a device.
class Microphone {
 public:
  virtual ~Microphone() = default;
  /// The newest wish counts.
  virtual void Ask(const MicrophoneWish& wish) = 0;
  /// The list of inputs is made anew, soon.
  virtual void LookForInputs() = 0;
  /// Looks at the devices; every 10 ms or so.
  virtual void Watch() = 0;
  [[nodiscard]] virtual MicrophoneState Now() = 0;
};

}  // namespace decks
