// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "support/ProgramFolder.h"

namespace support {
class Settings;
}

namespace app {

class ApplyButton;
class BatchAnalysis;
class Collections;
class Decks;
class Drafts;
class EditorFiles;
class FixturePacks;
class EffectStation;
class EqualiserStation;
class HeadphoneStation;
class Help;
class Language;
class LightStation;
class LiveLightStation;
class ListStation;
class MicrophoneStation;
class OrganStation;
class OutputStation;
class Prompts;
class RecordingStation;
class SingerStation;
class SongStation;
class TagStation;
class Visuals;
struct MixerHands;
struct Ports;
struct WorkstationView;

/// The caption of a window: the program's name, a blank and this.
[[nodiscard]] std::string Caption(std::string_view window);

/// The whole program without its window: it is started, ended, ticked and pumped here, and hands out its
/// parts, each with commands of its own.
///
/// Threads: made, used and destroyed on the window's thread. Commands are queued to the conductor, which owns
/// the decks, and return at once; what came of them stands in a later View(). The tables belong to the
/// window's thread.
class Workstation {
 public:
  /// Who calls the conductor's work every 10 ms: a thread of its own, or a test.
  enum class Conducting { OwnThread, ByHand };
  /// What the next start finds of the evening.
  enum class Leaves {
    Nothing,  ///< its user ended it
    Evening   ///< to go on with, as after a fall
  };

  Workstation(const Ports& ports, support::ProgramFolder folder, Conducting conducting);
  ~Workstation();
  Workstation(const Workstation&) = delete;
  Workstation& operator=(const Workstation&) = delete;

  /// The described start-up: every step skips its own failure.
  void StartUp();
  /// The described shutdown; the destructor calls it when nobody did. Workers that a dead disk holds are
  /// waited for kPatience long. False when one is still held then: the engine was not freed, and neither
  /// this nor what stands behind the ports may be destroyed.
  bool ShutDown(Leaves leaves = Leaves::Nothing);
  static constexpr std::chrono::seconds kPatience{2};

  /// The window's side, once it is there; null takes it away again. What the user has to be told and was not
  /// yet comes with the next PumpWindow.
  void AttachWindow(Prompts* prompts, Help* help);
  /// Runs what workers left for the window's thread. Called by the window's frame timer.
  void PumpWindow();
  /// One tick of the conductor, for tests that conduct by hand.
  void Tick();
  /// The newest snapshot; valid until the next call. Never waits.
  [[nodiscard]] const WorkstationView& View();

  // Parts.
  [[nodiscard]] app::Decks& Decks();
  [[nodiscard]] EqualiserStation& Equaliser();
  [[nodiscard]] OutputStation& Outputs();
  [[nodiscard]] HeadphoneStation& Headphones();
  [[nodiscard]] MicrophoneStation& Microphone();
  [[nodiscard]] EffectStation& Effects();
  [[nodiscard]] app::Collections& Collections();
  [[nodiscard]] ListStation& Lists();
  [[nodiscard]] LightStation& Lights();
  [[nodiscard]] LiveLightStation& LiveLights();
  [[nodiscard]] OrganStation& Organ();
  [[nodiscard]] SongStation& Songs();
  [[nodiscard]] SingerStation& Singers();
  [[nodiscard]] RecordingStation& Recording();
  [[nodiscard]] TagStation& Tags();
  [[nodiscard]] EditorFiles& Editors();
  [[nodiscard]] app::FixturePacks& FixturePacks();
  [[nodiscard]] app::Drafts& Drafts();
  [[nodiscard]] app::Visuals& Visuals();
  [[nodiscard]] app::ApplyButton& ApplyButton();
  [[nodiscard]] app::Language& Language();
  /// The store itself, for the controls that read and write a key of their own.
  [[nodiscard]] support::Settings& Settings();

  /// Where the skins' pictures lie.
  [[nodiscard]] std::filesystem::path SkinFolder() const;
  /// How the hands had left the mixer when the program fell; null when nothing goes on in this run.
  [[nodiscard]] const MixerHands* ResumedMixer() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace app
