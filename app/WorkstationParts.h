// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/Stage.h"
#include "app/Workstation.h"
#include "app/files/BatchDesk.h"
#include "app/files/FileIntake.h"
#include "app/files/FileRemoval.h"
#include "app/files/IndexKeeper.h"
#include "app/files/KaraokeSongReader.h"
#include "app/files/MissingFiles.h"
#include "app/files/Reindex.h"
#include "app/files/TagDesk.h"
#include "app/files/TreeScan.h"
#include "app/lights/EditorDesk.h"
#include "app/lights/LightDesk.h"
#include "app/lights/OrganDesk.h"
#include "app/lists/ListDesk.h"
#include "app/lists/RemovedRows.h"
#include "app/resume/ResumeDesk.h"
#include "app/settings/Preferences.h"
#include "app/settings/Settings.h"
#include "app/songs/SongDesk.h"
#include "app/sound/PresetDesk.h"
#include "app/work/Conductor.h"
#include "app/work/IdleCores.h"
#include "app/work/WorkGate.h"
#include "catalogue/IndexFile.h"
#include "catalogue/PlainFolders.h"
#include "decks/clsMp3Info.h"

namespace app {

/// What a Workstation is made of. Order matters: what is declared later uses what stands before it.
struct Workstation::Parts {
  Parts(const Ports& outside, const support::ProgramFolder& program_folder, Conducting how)
      : ports(outside),
        folder(program_folder),
        conducting(how),
        settings(outside.settings, program_folder),
        conductor([this] { stage.Tick(); }, outside.conductor_started),
        stage({outside.engine, outside.sound, outside.analysis, outside.side_store, keeping}, outside.workers,
              gate, conductor.Box(), say),
        index(outside.files, outside.workers, gate, folder.Native(catalogue::kTrackIndex), Complainer()),
        karaoke_index(outside.files, outside.workers, gate, folder.Native(catalogue::kKaraokeIndex),
                      Complainer()),
        scratch(folder.Native(catalogue::kTagScratch)),
        tags({outside.tags, outside.tag_writer, outside.side_store, outside.files, folder.Native(kTagList)},
             outside.workers, keeping, Complainer()),
        missing({Idle(), outside.workers, outside.clock}, gate, window, FileTables(),
                [this](MissingFiles::News news, std::size_t count, const std::string& first) {
                  TellOfMissing(news, count, first);
                }),
        intake({{outside.tags, song_reader, scratch, Folders(), say},
                outside.workers,
                outside.files,
                folder.Native(kOrdersFile),
                [this](ListId list) { SaveList(list); },
                [this](const IntakeOutcome& outcome) { TellOfOldOrder(outcome); },
                [this](const catalogue::track_table& playlist, int first_row) {
                  missing.LookAt(playlist, catalogue::track::kFilename, first_row);
                }},
               Lists(), gate, window),
        removed(Lists(), [this](ListId list) { SaveList(list); }),
        removal(catalogue, catalogue::track::kFilename, FileRemoval::Companion::None, outside.workers, gate,
                window, say),
        karaoke_removal(karaoke, catalogue::karaoke::kFilename, FileRemoval::Companion::Song, outside.workers,
                        gate, window, say),
        cores(std::make_shared<IdleCores>(outside.background.threads)),
        tree_scan({Folders(), outside.tags, &scratch, &song_reader, outside.side_store}, Idle(), gate, cores),
        batch(
            {outside.engine, outside.sound, outside.analysis, outside.side_store, keeping},
            {Idle(), outside.workers, outside.files, outside.clock, say}, gate, window, cores,
            folder.Native(kBatchList),
            [this](const std::string& filename, const music::TrackAnalysis& found,
                   const catalogue::FileMarks& marks) { KeepBatch(filename, found, marks); },
            [this] { SaveBatch(); }),
        music_scan(catalogue, catalogue::ScanMode::Music, Scanner(), outside.workers, gate, window, say),
        presets(outside.files, program_folder, outside.workers, gate, window, say),
        karaoke_scan(karaoke, catalogue::ScanMode::Karaoke, Scanner(), outside.workers, gate, window, say),
        lights(Context(), outside.dmx),
        organ(Context(), {outside.engine, [this](HeardFrom from) { return stage.StreamOf(from); }},
              outside.boards),
        songs(Context(), {outside.engine,
                          outside.sound,
                          stage.Deck(3),
                          {outside.synthesisers, outside.code_pages, outside.side_store},
                          outside.images}),
        lists(Context(), {catalogue, karaoke, playlists}, stage, settings, outside.tags, scratch,
              outside.local_time, [this] { SaveList(ListId::Catalogue); }),
        editors(Context()),
        resume(Context(), {stage, lights, songs, lists, settings}, outside.journal) {
    stage.FollowSong([this] {
      Stage::SongPlaying song;
      song.stream = songs.Hear(song.heard);
      return song;
    });
    stage.FollowSaves(outside.saves);
    stage.OnTick([this](const WorkstationView& view) {
      lights.Tick(view);
      organ.Tick(view);
      songs.Tick(view);
      cores->SetPlaying(AnyPlays(view));
      lists.Tick(view, songs.Sung());
      resume.Tick(view);
    });
  }

  [[nodiscard]] DeskContext Context() {
    return {folder,
            ports.settings,
            ports.files,
            ports.workers,
            ports.clock,
            gate,
            conductor.Box(),
            window,
            say,
            Teller(),
            [box = window, this](std::string sentence) {
              box->Post([this, sentence = std::move(sentence)] { Prompt(sentence); });
            }};
  }

  /// The catalogue first.
  [[nodiscard]] std::vector<MissingFiles::Table> FileTables() const {
    namespace track = catalogue::track;
    return {{catalogue, track::kFilename},
            {karaoke, catalogue::karaoke::kFilename},
            {playlists[0], track::kFilename},
            {playlists[1], track::kFilename},
            {playlists[2], track::kFilename}};
  }
  [[nodiscard]] FileIntake::Tables Lists() { return {catalogue, karaoke, playlists}; }
  /// The index of the list, where it has one.
  void SaveList(ListId list);
  void TellOfOldOrder(const IntakeOutcome& outcome);

  /// What a worker found out about a deck's file goes into its rows, on the window's thread.
  void KeepAnalysis(const std::string& filename, const music::TrackAnalysis& analysis,
                    const catalogue::FileMarks& marks);

  /// The same of a file of the batch, which saves now and then.
  void KeepBatch(const std::string& filename, const music::TrackAnalysis& analysis,
                 const catalogue::FileMarks& marks);
  void SaveBatch();
  /// And writes the tag. True when a row of the catalogue says more now.
  [[nodiscard]] bool FillRows(const std::string& filename, const music::TrackAnalysis& analysis,
                              const catalogue::FileMarks& marks);

  void TellOfMissing(MissingFiles::News news, std::size_t count, const std::string& first);

  /// Brings a warning to the status line, from any thread.
  std::function<void(std::string)> Teller() {
    return [box = conductor.Box(), this](std::string sentence) {
      box->Post([this, sentence = std::move(sentence)] { stage.Notice(sentence); });
    };
  }

  /// The same for a failure, in the language chosen.
  std::function<void(const support::Error&)> Complainer() {
    return [tell = Teller(), this](const support::Error& failure) { tell(say(failure)); };
  }
  void SortAfterBatch();
  /// Brings what the settings store has to say to the status line.
  void TellOfSettings();

  [[nodiscard]] ScanPort& Scanner() { return ports.scan != nullptr ? *ports.scan : tree_scan; }
  [[nodiscard]] catalogue::FolderReader& Folders() {
    return ports.folders != nullptr ? *ports.folders : plain_folders;
  }
  [[nodiscard]] support::Executor& Idle() {
    return ports.background.workers != nullptr ? *ports.background.workers : ports.workers;
  }
  [[nodiscard]] static bool AnyPlays(const WorkstationView& view) {
    return view.song.playing || std::any_of(view.decks.begin(), view.decks.end(), [](const DeckView& deck) {
             return deck.state == DeckView::State::Playing;
           });
  }

  // The described start-up and shutdown, a step a function.
  void ReadLanguage();
  void NameTheWindow();
  void OpenMixer();
  void LoadIndexes();
  struct LoadSentences {
    support::Sentence damaged;
    support::Sentence unreadable;
  };
  catalogue::IndexReport LoadTable(std::string_view name, catalogue::track_table& table, IndexKeeper& keeper,
                                   const LoadSentences& sentences);
  void ListOutputDevices();
  void FollowOutputDevices();
  void CheckProgramFolder();
  void InitialiseEngine();
  void StoredTempos();
  void ReadPresets();
  /// In each row of the catalogue and the playlists that holds the file.
  void StoreMixPoint(const std::string& filename, MixPoint which, std::chrono::microseconds place);
  /// What the file's row in the catalogue (0: none) or a playlist says for mixing goes into its tag, where
  /// tags are to be written.
  void WriteTag(const std::string& filename, int row);
  void FindVisualisations();
  void ShortenBuffers();
  void ReleaseDecks();
  void ReleaseEngine();
  void SaveWhatWaits();

  /// Shows a sentence in a box, or keeps it for a window that is not there yet.
  void Prompt(std::string sentence);

  /// Stores a slider of a deck's tempo and moves it.
  void MoveTempo(int deck, double decks::TempoSliders::*slider, std::string_view key, double value);
  /// A command for one deck's tempo, for the conductor; nothing for a deck that is not there.
  void OnTempo(int deck, std::function<void(DeckTempo&)> command);

  /// Rows of files that were moved name their new places.
  void FollowInPlaylists(const std::vector<ScanRows::Moved>& moved);
  /// Asks before a scan takes rows out of a table; without a window they stay.
  void AskBeforeRowsGo(const Reindex::Loss& loss, std::function<void(Reindex::Answer)> answer);
  /// The folder of the text box first.
  [[nodiscard]] std::vector<std::string> FoldersToScan(const std::string& first);
  void AnalyseAll();
  /// The threshold of the mix points.
  [[nodiscard]] int GainPercent();

  /// Starts a scan and saves the table when it was replaced.
  void Scan(Reindex& scan, const std::string& first, IndexKeeper& keeper, const catalogue::track_table& table,
            Reindex::Done done);

  enum class Life { Made, Running, Over };

  Ports ports;
  support::ProgramFolder folder;
  Conducting conducting;
  app::Settings settings;
  Life life = Life::Made;
  int string_base = 0;
  support::Sentences say;
  LoadReport loaded;
  std::filesystem::path skin_folder;
  Preferences preferences;
  /// How often the master slider moved the mixer; shared with the mixer, which outlives this.
  std::shared_ptr<std::atomic<int>> volume_sets = std::make_shared<std::atomic<int>>(0);
  std::vector<std::string> visualisers;
  int visualisation_rate = 0;
  Prompts* prompts = nullptr;
  Help* help = nullptr;
  std::vector<std::string> unseen_prompts;
  std::size_t settings_notices = 0;  ///< told so far
  std::vector<std::string> device_names;
  std::map<std::string, decks::clsMp3Info> gains;  ///< of the files that were asked for
  catalogue::track_table catalogue{catalogue::TrackColumns()};
  catalogue::track_table karaoke{catalogue::KaraokeColumns()};
  std::array<catalogue::track_table, kPlaylists> playlists{catalogue::track_table(catalogue::TrackColumns()),
                                                           catalogue::track_table(catalogue::TrackColumns()),
                                                           catalogue::track_table(catalogue::TrackColumns())};
  std::shared_ptr<WorkGate> gate = std::make_shared<WorkGate>();
  std::shared_ptr<Keeping> keeping = std::make_shared<Keeping>();
  std::shared_ptr<Mailbox> window = std::make_shared<Mailbox>();
  Conductor conductor;
  Stage stage;
  IndexKeeper index;
  IndexKeeper karaoke_index;
  catalogue::TagScratch scratch;
  TagDesk tags;
  KaraokeSongReader song_reader;
  MissingFiles missing;
  catalogue::PlainFolders plain_folders;
  FileIntake intake;
  RemovedRows removed;
  FileRemoval removal;
  FileRemoval karaoke_removal;
  std::shared_ptr<IdleCores> cores;  // with the lanes of long work
  TreeScan tree_scan;
  bool batch_filled = false;    ///< rows since the index was saved
  bool batch_unsorted = false;  ///< rows that it filled in stand where they were
  BatchDesk batch;
  Reindex music_scan;
  support::TimePoint scan_began{};
  PresetDesk presets;
  std::array<int, decks::kEqSliders> eq_sliders{};  ///< of the equaliser, as the window moved them
  Reindex karaoke_scan;
  LightDesk lights;
  OrganDesk organ;
  SongDesk songs;
  ListDesk lists;
  EditorDesk editors;
  ResumeDesk resume;
};

}  // namespace app
