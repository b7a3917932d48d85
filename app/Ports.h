// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "app/lists/EveningLog.h"
#include "decks/AnalysisPass.h"

namespace catalogue {
class FolderReader;
class SideStore;
class TagEditor;
class TagReader;
class TagWriter;
}  // namespace catalogue
namespace decks {
class AudioEngine;
class CommandRunner;
class ProgrammeRecorder;
class Microphone;
class SoundControl;
class DeckEffects;
class DeckLoops;
class SoundDesk;
}  // namespace decks
namespace dmx {
class DmxInterface;
class FixtureFormats;
class NetOutput;
}  // namespace dmx
namespace karaoke {
class CodePages;
class DiscImages;
class SynthesiserFactory;
}  // namespace karaoke
namespace lightorgan {
class IoBoards;
}
namespace support {
class Clock;
class Executor;
class FileSaver;
class SettingsStore;
}  // namespace support

namespace app {

class SaveWatch;
class ScanPort;
class SoundPriority;
class SystemMixer;
class Visualisation;

/// Workers for what takes long and may wait, and how many they are.
struct Background {
  support::Executor* workers = nullptr;  ///< null: those of all other work
  int threads = 1;
};

/// The fixture libraries of others.
struct FixtureSources {
  const dmx::FixtureFormats* formats = nullptr;    ///< null: none can be read
  std::vector<std::filesystem::path> installed{};  ///< folders that the system keeps them in
};

/// The outside things, each behind its port.
struct Ports {
  decks::AudioEngine& engine;
  decks::SoundControl& sound;
  catalogue::TagReader& tags;
  support::SettingsStore& settings;
  support::FileSaver& files;
  support::Executor& workers;
  const support::Clock& clock;
  SystemMixer* mixer = nullptr;                         ///< null: no master volume
  Visualisation* visualisation = nullptr;               ///< null: none
  ScanPort* scan = nullptr;                             ///< null: by the folders and the side store
  decks::AnalysisTools analysis = {};                   ///< what is null is not measured
  decks::CommandRunner* commands = nullptr;             ///< null: mp3gain is not there
  catalogue::SideStore* side_store = nullptr;           ///< null: analyses are not kept
  catalogue::TagWriter* tag_writer = nullptr;           ///< null: tags are not written
  dmx::DmxInterface* dmx = nullptr;                     ///< null: stage lighting has no wire
  dmx::NetOutput* net_dmx = nullptr;                    ///< the part of it that goes over a network, if any
  lightorgan::IoBoards* boards = nullptr;               ///< null: no board can be opened
  karaoke::SynthesiserFactory* synthesisers = nullptr;  ///< null: MIDI songs make no sound
  karaoke::DiscImages* images = nullptr;                ///< null: songs on disc images show no graphics
  karaoke::CodePages* code_pages = nullptr;             ///< null: those of songs are not guessed
  catalogue::FolderReader* folders = nullptr;           ///< null: the standard library lists them
  Background background = {};                           ///< for scans and batches
  decks::ProgrammeRecorder* recorder = nullptr;         ///< null: nothing can be recorded
  support::Executor* journal = nullptr;                 ///< null: what plays is not kept for after a fall
  LocalTime local_time = nullptr;                       ///< null: the system's
  const SaveWatch* saves = nullptr;                     ///< null: what cannot be saved is told once only
  decks::Microphone* microphone = nullptr;              ///< null: nobody can speak
  const SoundPriority* priority = nullptr;              ///< null: nothing is known of it
  decks::DeckEffects* effects = nullptr;                ///< null: decks have none
  decks::DeckLoops* loops = nullptr;                    ///< null: nothing loops
  decks::SoundDesk* desk = nullptr;                     ///< null: no bands, no meter, no mix in head-phones
  catalogue::TagEditor* tag_editor = nullptr;           ///< null: tags are not edited
  FixtureSources fixtures = {};                         ///< for the editors' fixture browser
  std::function<void()> conductor_started = nullptr;    ///< first on the conductor's thread
};

}  // namespace app
