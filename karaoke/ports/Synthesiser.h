// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/Result.h"

namespace karaoke {

/// Numbers of controllers.
namespace controller {
inline constexpr std::uint8_t kBank = 0;
inline constexpr std::uint8_t kVolume = 7;
inline constexpr std::uint8_t kSustain = 64;
inline constexpr std::uint8_t kSoundOff = 120;  ///< from here on they are commands
inline constexpr std::uint8_t kResetControls = 121;
}  // namespace controller

/// A channel message; the status holds kind and channel.
struct ChannelMessage {
  std::uint8_t status = 0;
  std::uint8_t data1 = 0;
  std::uint8_t data2 = 0;

  [[nodiscard]] int Kind() const { return status & 0xF0; }
  [[nodiscard]] std::size_t Channel() const { return status & 0x0F; }
  /// A note-on without velocity is a note-off.
  [[nodiscard]] bool IsNoteOn() const { return Kind() == 0x90 && data2 > 0; }
  [[nodiscard]] bool IsNoteOff() const { return Kind() == 0x80 || (Kind() == 0x90 && data2 == 0); }
  bool operator==(const ChannelMessage&) const = default;
};

/// Sixteen channels of instruments.
/// Threads: one at a time; no heap in Send and Render, as far as a library allows.
class Synthesiser {
 public:
  virtual ~Synthesiser() = default;
  /// Silence at once, and everything as it was new.
  virtual void Reset() = 0;
  virtual void Send(const ChannelMessage& message) = 0;
  /// Without the leading F0.
  virtual void SendExclusive(std::string_view message) = 0;
  /// What is sent sounds from the next frame on as long as frames are rendered in multiples of this.
  [[nodiscard]] virtual int Grid() const = 0;
  virtual void Render(std::span<float> left, std::span<float> right) = 0;
};

struct Soundfont {
  std::string name;  ///< for the user
  std::string path;
};

/// Threads: any; blocks on the disk.
class SynthesiserFactory {
 public:
  virtual ~SynthesiserFactory() = default;
  /// What is installed, the best known first.
  [[nodiscard]] virtual std::vector<Soundfont> Soundfonts() = 0;
  /// soundfont: a path, or empty for the first one installed.
  virtual support::Result<std::unique_ptr<Synthesiser>> Make(const std::string& soundfont,
                                                             int sample_rate) = 0;
};

}  // namespace karaoke
