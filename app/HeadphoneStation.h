// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace support {
class Settings;
}

namespace app {

class DeckRack;
struct StationContext;

/// What the head-phones hear, in the window's hands and stored. What came of it stands in the view.
/// Threads: the window's.
class HeadphoneStation {
 public:
  HeadphoneStation(const StationContext& context, DeckRack& rack, support::Settings& settings);

  /// As it was stored.
  void StartUp();
  /// How much of the hall is heard: 0 is what is listened to alone, 100 the hall alone.
  void SetProgramme(int percent);
  /// What is listened to on the left, the hall on the right.
  void SetSplit(bool split);
  /// Of all that the head-phones hear, 0 to 100.
  void SetLevel(int percent);

 private:
  void Send();

  const StationContext& context_;
  DeckRack& rack_;
  support::Settings& settings_;
};

}  // namespace app
