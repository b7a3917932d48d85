// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/WorkstationView.h"
#include "app/files/BatchDesk.h"
#include "app/files/FileIntake.h"
#include "app/files/Reindex.h"
#include "app/lights/EditorDesk.h"
#include "app/lights/LightDesk.h"
#include "app/lights/OrganDesk.h"
#include "app/lists/ListDesk.h"
#include "app/lists/RemovedRows.h"
#include "app/ports/Help.h"
#include "app/ports/Prompts.h"
#include "app/ports/ScanPort.h"
#include "app/ports/SoundPriority.h"
#include "app/ports/SystemMixer.h"
#include "app/ports/Visualisation.h"
#include "app/settings/Preferences.h"
#include "app/songs/SongDesk.h"
#include "app/sound/PresetDesk.h"
#include "catalogue/IndexFile.h"
#include "catalogue/ports/FolderReader.h"
#include "catalogue/ports/SideStore.h"
#include "catalogue/ports/TagReader.h"
#include "catalogue/ports/TagWriter.h"
#include "catalogue/track_table.h"
#include "decks/AnalysisPass.h"
#include "decks/ports/AudioEngine.h"
#include "decks/ports/CommandRunner.h"
#include "decks/ports/SoundControl.h"
#include "karaoke/ports/CodePages.h"
#include "karaoke/ports/DiscImages.h"
#include "support/Clock.h"
#include "support/Executor.h"
#include "support/ProgramFolder.h"
#include "support/ports/FileSaver.h"
#include "support/ports/SettingsStore.h"

namespace app {

class SaveWatch;

/// Workers for what takes long and may wait, and how many they are.
struct Background {
  support::Executor* workers = nullptr;  ///< null: those of all other work
  int threads = 1;
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
  lightorgan::IoBoards* boards = nullptr;               ///< null: no board can be opened
  karaoke::SynthesiserFactory* synthesisers = nullptr;  ///< null: MIDI songs make no sound
  karaoke::DiscImages* images = nullptr;                ///< null: songs on disc images show no graphics
  karaoke::CodePages* code_pages = nullptr;             ///< null: those of songs are not guessed
  catalogue::FolderReader* folders = nullptr;           ///< null: the standard library lists them
  Background background = {};                           ///< for scans and batches
  support::Executor* journal = nullptr;                 ///< null: what plays is not kept for after a fall
  LocalTime local_time = nullptr;                       ///< null: the system's
  const SaveWatch* saves = nullptr;                     ///< null: what cannot be saved is told once only
  const SoundPriority* priority = nullptr;              ///< null: nothing is known of it
  std::function<void()> conductor_started = nullptr;    ///< first on the conductor's thread
};

/// What the button of the settings page does.
enum class ApplyMode { ReindexMusic, ReindexKaraoke, ChooseDirectory, ChannelColours, Help, AnalyseAll };

struct ApplyWish {
  ApplyMode mode = ApplyMode::ReindexMusic;
  std::string folder;                 ///< to scan, or chosen; an empty choice changes nothing
  std::vector<StoredColour> colours;  ///< of the console's channels
};

inline constexpr int kPlaylists = 3;

/// How far a tempo slider may go, in percent.
inline constexpr std::array<int, 5> kTempoRanges{6, 8, 10, 16, 50};

/// What start-up read of the index files.
struct LoadReport {
  catalogue::IndexReport tracks;
  catalogue::IndexReport karaoke;
};

/// The whole program without its window: decks, catalogue, conductor.
///
/// Threads: made, used and destroyed on the window's thread. Commands are queued to the conductor, which owns
/// the decks, and return at once; what came of them stands in a later View(). The tables belong to the
/// window's thread.
class Workstation {
 public:
  /// Who calls the conductor's work every 10 ms: a thread of its own, or a test.
  enum class Conducting { OwnThread, ByHand };

  Workstation(const Ports& ports, support::ProgramFolder folder, Conducting conducting);
  ~Workstation();
  Workstation(const Workstation&) = delete;
  Workstation& operator=(const Workstation&) = delete;

  /// The described start-up: every step skips its own failure.
  void StartUp();
  /// The described shutdown; the destructor calls it when nobody did. Workers that a dead disk holds are
  /// waited for kPatience long. False when one is still held then: the engine was not freed, and neither
  /// this nor what stands behind the ports may be destroyed.
  bool ShutDown();
  static constexpr std::chrono::seconds kPatience{2};

  /// The window's side, once it is there; null takes it away again. What the user has to be told and was not
  /// yet comes with the next PumpWindow.
  void AttachWindow(Prompts* prompts, Help* help);
  /// Where the skins' pictures lie; known after StartUp.
  [[nodiscard]] const std::filesystem::path& SkinFolder() const;
  /// The caption of a window: the program's name, a blank and this.
  [[nodiscard]] std::string Caption(std::string_view window) const;
  /// Names of the visualisers, filled in by PumpWindow soon after StartUp.
  [[nodiscard]] const std::vector<std::string>& Visualisers() const;
  /// Frames a second of the visualisation.
  [[nodiscard]] int VisualisationRate() const;
  /// 1 to 60; stored.
  void SetVisualisationRate(int frames_a_second);
  /// What a visualiser makes of the sound of the newest View.
  [[nodiscard]] Picture Visualise(std::string_view name);
  /// As read at start-up.
  [[nodiscard]] const Preferences& Preferred() const;
  /// The store itself, for the controls that read and write a key of their own.
  [[nodiscard]] app::Settings& Settings();

  /// The button of the settings page. Scans run on workers; their outcome is given on the window's thread.
  void Apply(const ApplyWish& wish, Reindex::Done scanned = nullptr);
  /// Of the scan that is under way, all zero when none is.
  [[nodiscard]] ScanProgress Scanning() const;
  [[nodiscard]] bool IsScanning() const;
  /// The tables stay as they were.
  void CancelScans();

  /// The newest snapshot; valid until the next call. Never waits.
  [[nodiscard]] const WorkstationView& View();

  // Decks are numbered from 1.
  /// Opens the row's file on a deck. What plays on it goes on until the new file is ready, then fades out;
  /// the deck then stands at its start. Nothing for a row that is not there.
  void LoadDeck(int deck, const catalogue::track_table& table, int row);
  void Play(int deck);
  void Pause(int deck);
  void Resume(int deck);
  void Stop(int deck);
  void Seek(int deck, std::chrono::microseconds position);
  void SetVolume(int deck, int volume);

  // Tempo. What is set by slider holds for every file that comes onto the deck, and is stored for decks 1 and
  // 2; anything past what the engine plays is taken back to it.
  /// From the original, -50 to 100. Lets go of a sync.
  void SetTempo(int deck, float percent);
  void SetKeyLock(int deck, decks::KeyLock lock);
  /// -12 to 12.
  void SetPitch(int deck, float semitones);
  /// From the file's own rate, -50 to 100: moves tempo and pitch together, whatever the key lock.
  void SetSampleRate(int deck, float percent);
  /// How far the slider goes; one of kTempoRanges. The tempo itself stays as it is.
  void SetTempoRange(int deck, int percent);
  /// What stretches the main outputs' sound from now on, stored; also while music plays.
  void SetStretch(decks::Stretch choice);
  /// Faster or slower by so many percent for as long as it is held; 0 lets go.
  void Nudge(int deck, float percent);

  // Beats. Corrections by hand are kept with the file.
  /// A beat is heard now. From the fourth tap on they set the tempo of the file and its grid.
  void Tap(int deck);
  void ScaleBpm(int deck, music::BeatScale scale);
  /// Later by the time, or earlier where it is negative.
  void ShiftGrid(int deck, std::chrono::microseconds time);
  /// A beat lies where the deck is heard now.
  void AlignGrid(int deck);
  /// The beats are again those that were found, and the tempo what the row said.
  void ForgetGrid(int deck);
  /// Deck 1 or 2 follows the tempo and the beats of the other one until the tempo is set by hand, another
  /// file comes, or the tempos lie further apart than BPMPercent, which is said. Gently: what is heard is
  /// pulled into the beat without a jump; AtOnce: it is crossfaded there.
  void Sync(int deck, SyncStart start = SyncStart::Gently);
  void Unsync(int deck);
  /// The deck's level in the head-phones.
  void SetPreVolume(int deck, int volume);
  /// Moves the master slider, 0 (loudest) to 99, and with it the system's volume.
  void SetMainVolume(int main_volume);
  /// Moves slider 0 to 19 of the equaliser to -12 to 12 dB and stores it; the band follows on every deck that
  /// plays.
  void SetEqualiser(int slider, int decibels);
  /// The sliders as they were moved last.
  [[nodiscard]] const std::array<int, decks::kEqSliders>& Equaliser() const;
  /// Carries every slider to the decks that play; a deck begins each track flat.
  void ResendEqualiser();
  /// The presets, in the order of their file. Filled in by PumpWindow soon after StartUp.
  [[nodiscard]] const std::vector<decks::EqPreset>& EqPresets() const;
  /// Name of the preset that the bank was given last; empty for none.
  [[nodiscard]] std::string ChosenEqPreset(decks::EqBank bank) const;
  /// Moves the bank's sliders; nothing for a name that is not there.
  void ApplyEqPreset(decks::EqBank bank, const std::string& name);
  /// Under a name that is there already, its values are replaced. Asks nobody.
  void SaveEqPreset(decks::EqBank bank, const std::string& name, PresetDesk::Done done);
  void DeleteEqPreset(const std::string& name, PresetDesk::Done done);
  /// Moves a mix point of the file on a deck: in the catalogue, in the playlists and, where tags are to be
  /// written, in the file. Nothing when nothing is loaded.
  void SetMixPoint(int deck, MixPoint which, std::chrono::microseconds place);
  /// Back to the point that was found.
  void ResetMixPoint(int deck, MixPoint which);
  /// The threshold of the mix points, 0 to 100, stored; those of the files on the decks are looked for again.
  void SetGainPercent(int percent);
  struct GainAnswer {
    std::string shown;                       ///< the gain query: "89.0" where it is not known
    std::optional<support::Decibels> lacks;  ///< up to the reference, as mp3gain found; empty: no answer
  };
  /// The gain of the file on a deck by the program mp3gain. Called back on the window's thread; the file is
  /// analysed by a worker, once a run. Nothing for an empty deck.
  using GainShown = std::function<void(const GainAnswer& answer)>;
  void QueryGain(int deck, GainShown done);
  /// Routes deck 1, deck 2 or (3) the pre-listen output, while music plays, and stores the choice. Deck 2
  /// goes with deck 1 until it is given an output of its own.
  void SetOutput(int output, OutputView choice);
  /// Deck 2 goes with deck 1 again; stored.
  void ShareOutput();
  /// Deck 2 has an output of its own.
  [[nodiscard]] bool HasOwnOutput() const;
  /// Moves output 1 to 3 from its stand-in back to its own device, when the View says that it can.
  void ReturnOutput(int output);
  /// Added to the number of every text of the window, by the language chosen: see support::BaseOf.
  [[nodiscard]] int StringBase() const;
  /// By its place among the languages, 0 is English; stored, and acts on all that is said after it.
  void SetLanguage(int language);
  /// Names of the output devices, the first one is device 1. PumpWindow appends those that were plugged in;
  /// one that is pulled keeps its number.
  [[nodiscard]] const std::vector<std::string>& DeviceNames() const;
  /// How far the sound goes before other programs.
  [[nodiscard]] SoundPriority::Level Priority() const;

  // Desks, each with commands and a view of its own.
  [[nodiscard]] LightDesk& Lights();
  [[nodiscard]] OrganDesk& Organ();
  [[nodiscard]] SongDesk& Songs();
  /// The analysis of many files.
  [[nodiscard]] BatchDesk& Batch();
  /// Of these rows of the catalogue.
  void StartBatch(std::vector<int> rows);
  [[nodiscard]] ListDesk& Lists();
  [[nodiscard]] EditorDesk& Editors();

  // Tables. Rows are appended, removed and moved by catalogue/RowMoves.h; the lists are not saved by it.
  [[nodiscard]] catalogue::track_table& Catalogue();
  [[nodiscard]] catalogue::track_table& Karaoke();
  /// Requires: 1 to kPlaylists.
  [[nodiscard]] catalogue::track_table& Playlist(int number);
  [[nodiscard]] const LoadReport& Loaded() const;
  /// The file was not there when the tables' files were looked for last: at the start, after a scan, when it
  /// was to be loaded, and by LookForFiles.
  [[nodiscard]] bool IsMissing(std::string_view filename) const;
  /// Grows each time that they were looked for.
  [[nodiscard]] std::size_t MissingChecks() const;
  /// Again, unless they were less than a minute ago.
  void LookForFiles();
  /// Deletes the rows' files from the disk, then their rows, and saves the index. Asks nobody. A row stays
  /// whose file could not be deleted, or is not there. Called back on the window's thread with the number of
  /// rows removed and a sentence for each file that was not deleted.
  using DeletedFiles = std::function<void(int rows, std::vector<std::string> kept)>;
  void DeleteTracks(const std::vector<int>& rows, DeletedFiles done);
  /// The same for the karaoke table; with each file but an archive go the mp3 and the disc image of its name.
  void DeleteKaraoke(const std::vector<int>& rows, DeletedFiles done);
  /// Takes rows out of a list and brings them back; their files stay. Both save the index.
  int RemoveRows(ListId list, const std::vector<int>& rows);
  std::optional<RemovedRows::Back> BringRowsBack();

  /// Takes files and folders into a list on workers, in the order given, then saves the index. A file that is
  /// in the catalogue or the karaoke table keeps its row and gets no second one; MIDI songs come to the
  /// karaoke table whatever list is meant. Called back on the window's thread.
  void Add(IntakeOrder order, FileIntake::Done done);
  /// Of all orders of a list.
  [[nodiscard]] AddingProgress Adding(ListId list) const;
  /// What is added until then stays.
  void StopAdding(ListId list);

  /// How the hands had left the mixer when the program fell; null when nothing goes on in this run.
  [[nodiscard]] const MixerHands* ResumedMixer() const;

  /// Runs what workers left for the window's thread. Called by the window's frame timer.
  void PumpWindow();
  /// One tick of the conductor, for tests that conduct by hand.
  void Tick();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace app
