// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Workstation.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "app/WorkstationParts.h"
#include "app/settings/FolderSettings.h"
#include "app/settings/NameSettings.h"
#include "app/sound/AnalysisRows.h"
#include "app/sound/MasterVolume.h"
#include "app/sound/TrackToLoad.h"
#include "support/Text.h"
#include "support/WordRow.h"

namespace app {
namespace {

constexpr std::string_view kHelpFile = "\\help\\djTOLVENgold.chm";
constexpr const char* kHelpTopic = "introduction.htm";

/// A command for one deck, for the conductor; nothing for a deck that is not there.
template <typename Command>
void OnDeck(Conductor& conductor, Stage& stage, int deck, Command command) {
  if (deck < 1 || deck > kDecks) return;
  conductor.Post([&stage, deck, command = std::move(command)] { command(stage.Deck(deck)); });
}

/// The same by a hand that decides what plays there.
template <typename Command>
void ByHand(Conductor& conductor, Stage& stage, ResumeDesk& resume, int deck, Command command) {
  OnDeck(conductor, stage, deck, [&resume, deck, command = std::move(command)](DeckStation& station) {
    resume.HandOn(deck);
    command(station);
  });
}

}  // namespace

Workstation::Workstation(const Ports& ports, support::ProgramFolder folder, Conducting conducting)
    : parts_(std::make_unique<Parts>(ports, folder, conducting)) {
  for (Reindex* scan : {&parts_->music_scan, &parts_->karaoke_scan}) {
    scan->LookIn(ports.side_store);
    scan->OnLoss(
        [parts = parts_.get()](const Reindex::Loss& loss, std::function<void(Reindex::Answer)> answer) {
          parts->AskBeforeRowsGo(loss, std::move(answer));
        });
  }
  if (ports.side_store != nullptr) {
    parts_->music_scan.OnMoved([store = ports.side_store, keeping = parts_->keeping](const std::string& from,
                                                                                     const std::string& to) {
      support::MutexLock held(keeping->Of(to));
      // What is not carried along is found out again.
      static_cast<void>(catalogue::CarryTo(*store, from, to));
    });
  }
  parts_->stage.OnAnalysed([parts = parts_.get()](const std::string& filename,
                                                  const music::TrackAnalysis& found,
                                                  const catalogue::FileMarks& marks) {
    music::TrackAnalysis facts = found;
    facts.wave.reset();
    parts->window->Post(
        [parts, filename, facts = std::move(facts), marks] { parts->KeepAnalysis(filename, facts, marks); });
  });
}

Workstation::~Workstation() {
  ShutDown();
  parts_->conductor.Stop();
  parts_->gate->Close();
  parts_->window->Close();
}

LightDesk& Workstation::Lights() {
  return parts_->lights;
}

OrganDesk& Workstation::Organ() {
  return parts_->organ;
}

SongDesk& Workstation::Songs() {
  return parts_->songs;
}

ListDesk& Workstation::Lists() {
  return parts_->lists;
}

EditorDesk& Workstation::Editors() {
  return parts_->editors;
}

BatchDesk& Workstation::Batch() {
  return parts_->batch;
}

void Workstation::Parts::AnalyseAll() {
  batch.Start(
      [table = catalogue] {
        std::vector<std::string> files;
        table.VisitColumn(catalogue::track::kFilename, [&files](int, std::string_view file) {
          files.emplace_back(file);
          return true;
        });
        return files;
      },
      GainPercent());
}

int Workstation::Parts::GainPercent() {
  return std::clamp(settings.Number("Settings", "GainPercent"), 0, 100);
}

void Workstation::StartBatch(std::vector<int> rows) {
  parts_->batch.Start(
      [table = parts_->catalogue, rows = std::move(rows)] {
        std::vector<std::string> files;
        for (const int row : rows) files.emplace_back(table.Cell(row, catalogue::track::kFilename));
        return files;
      },
      parts_->GainPercent());
}

void Workstation::AttachWindow(Prompts* prompts, Help* help) {
  parts_->prompts = prompts;
  parts_->help = help;
  if (prompts == nullptr) return;
  for (std::string& sentence : std::exchange(parts_->unseen_prompts, {})) {
    parts_->window->Post([this, sentence = std::move(sentence)] { parts_->Prompt(sentence); });
  }
}

const std::filesystem::path& Workstation::SkinFolder() const {
  return parts_->skin_folder;
}

std::string Workstation::Caption(std::string_view window) const {
  return "dj TOLVEN " + std::string(window);
}

const std::vector<std::string>& Workstation::Visualisers() const {
  return parts_->visualisers;
}

int Workstation::VisualisationRate() const {
  return parts_->visualisation_rate;
}

void Workstation::SetVisualisationRate(int frames_a_second) {
  parts_->visualisation_rate = std::clamp(frames_a_second, 1, 60);
  parts_->settings.SetNumber("Visualisation", "Resolution", parts_->visualisation_rate);
}

Picture Workstation::Visualise(std::string_view name) {
  Visualisation* visualisation = parts_->ports.visualisation;
  return visualisation == nullptr ? Picture{} : visualisation->Show(name, View().sound);
}

const Preferences& Workstation::Preferred() const {
  return parts_->preferences;
}

app::Settings& Workstation::Settings() {
  return parts_->settings;
}

const WorkstationView& Workstation::View() {
  return parts_->stage.View();
}

void Workstation::LoadDeck(int deck, const catalogue::track_table& table, int row) {
  auto wanted = TrackToLoad(table, row);
  if (!wanted) return;
  parts_->missing.LookAt(wanted->filename);
  ByHand(parts_->conductor, parts_->stage, parts_->resume, deck,
         [wanted = std::move(*wanted)](DeckStation& station) { station.Load(wanted); });
}

void Workstation::Play(int deck) {
  ByHand(parts_->conductor, parts_->stage, parts_->resume, deck,
         [](DeckStation& station) { station.Play(); });
}

void Workstation::Pause(int deck) {
  ByHand(parts_->conductor, parts_->stage, parts_->resume, deck,
         [](DeckStation& station) { station.Pause(); });
}

void Workstation::Resume(int deck) {
  ByHand(parts_->conductor, parts_->stage, parts_->resume, deck,
         [](DeckStation& station) { station.Resume(); });
}

void Workstation::Stop(int deck) {
  ByHand(parts_->conductor, parts_->stage, parts_->resume, deck,
         [](DeckStation& station) { station.Stop(); });
}

void Workstation::Seek(int deck, std::chrono::microseconds position) {
  ByHand(parts_->conductor, parts_->stage, parts_->resume, deck,
         [position](DeckStation& station) { station.Seek(position); });
}

void Workstation::SetVolume(int deck, int volume) {
  OnDeck(parts_->conductor, parts_->stage, deck,
         [volume](DeckStation& station) { station.SetVolume(volume); });
}

void Workstation::SetPreVolume(int deck, int volume) {
  OnDeck(parts_->conductor, parts_->stage, deck,
         [volume](DeckStation& station) { station.SetPreVolume(volume); });
}

void Workstation::SetMainVolume(int main_volume) {
  const int slider = std::clamp(main_volume, 0, 99);
  parts_->conductor.Post(
      [&stage = parts_->stage, mixer = parts_->ports.mixer, sets = parts_->volume_sets, slider] {
        stage.SetMainVolume(slider);
        if (mixer != nullptr) mixer->SetVolume(PercentOf(slider));
        ++*sets;
      });
}

void Workstation::Parts::KeepAnalysis(const std::string& filename, const music::TrackAnalysis& analysis,
                                      const catalogue::FileMarks& marks) {
  if (FillRows(filename, analysis, marks)) index.Save(catalogue);
}

void Workstation::Parts::KeepBatch(const std::string& filename, const music::TrackAnalysis& analysis,
                                   const catalogue::FileMarks& marks) {
  if (FillRows(filename, analysis, marks)) batch_filled = batch_unsorted = true;
}

void Workstation::Parts::SaveBatch() {
  if (std::exchange(batch_filled, false)) index.Save(catalogue);
}

bool Workstation::Parts::FillRows(const std::string& filename, const music::TrackAnalysis& analysis,
                                  const catalogue::FileMarks& marks) {
  for (catalogue::track_table& playlist : playlists) {
    for (const int row : playlist.RowsOf(filename)) FillIn(playlist, row, analysis, marks);
  }
  const std::vector<int> rows = catalogue.RowsOf(filename);
  bool filled = false;
  for (const int row : rows) filled = FillIn(catalogue, row, analysis, marks) || filled;
  WriteTag(filename, rows.empty() ? 0 : rows.front());
  return filled;
}

void Workstation::Apply(const ApplyWish& wish, Reindex::Done scanned) {
  Parts& parts = *parts_;
  switch (wish.mode) {
    case ApplyMode::ReindexMusic:
      return parts.Scan(parts.music_scan, wish.folder, parts.index, parts.catalogue, std::move(scanned));
    case ApplyMode::ReindexKaraoke:
      return parts.Scan(parts.karaoke_scan, wish.folder, parts.karaoke_index, parts.karaoke,
                        std::move(scanned));
    case ApplyMode::ChooseDirectory:
      if (!wish.folder.empty()) parts.settings.SetText("Settings", "Directory", wish.folder);
      return;
    case ApplyMode::ChannelColours:
      return StoreColours(parts.settings, wish.colours);
    case ApplyMode::AnalyseAll:
      return parts.AnalyseAll();
    case ApplyMode::Help:

      if (parts.help != nullptr) parts.help->Open(parts.folder.Native(kHelpFile), kHelpTopic);
      return;
  }
}

ScanProgress Workstation::Scanning() const {
  const ScanProgress music = parts_->music_scan.Progress();
  const ScanProgress karaoke = parts_->karaoke_scan.Progress();
  return {
      music.done + karaoke.done, music.total + karaoke.total, music.bytes + karaoke.bytes,
      std::chrono::duration_cast<std::chrono::milliseconds>(parts_->ports.clock.Now() - parts_->scan_began)};
}

bool Workstation::IsScanning() const {
  return parts_->music_scan.Running() || parts_->karaoke_scan.Running();
}

void Workstation::CancelScans() {
  parts_->music_scan.Cancel();
  parts_->karaoke_scan.Cancel();
}

int Workstation::StringBase() const {
  return parts_->string_base;
}

void Workstation::SetLanguage(int language) {
  parts_->settings.SetNumber("Language", "Current", static_cast<int>(support::LanguageOf(language)));
  parts_->ReadLanguage();
}

const std::vector<std::string>& Workstation::DeviceNames() const {
  return parts_->device_names;
}

SoundPriority::Level Workstation::Priority() const {
  const SoundPriority* priority = parts_->ports.priority;
  return priority == nullptr ? SoundPriority::Level::Asked : priority->Now();
}

catalogue::track_table& Workstation::Catalogue() {
  return parts_->catalogue;
}

catalogue::track_table& Workstation::Karaoke() {
  return parts_->karaoke;
}

catalogue::track_table& Workstation::Playlist(int number) {
  assert(number >= 1 && number <= kPlaylists && "there are three playlists");
  return parts_->playlists[static_cast<std::size_t>(number - 1)];
}

const LoadReport& Workstation::Loaded() const {
  return parts_->loaded;
}

void Workstation::DeleteTracks(const std::vector<int>& rows, DeletedFiles done) {
  parts_->removal.Remove(rows, [this, done = std::move(done)](int removed, auto kept) {
    if (removed > 0) parts_->index.Save(parts_->catalogue);
    if (done) done(removed, std::move(kept));
  });
}

void Workstation::DeleteKaraoke(const std::vector<int>& rows, DeletedFiles done) {
  parts_->karaoke_removal.Remove(rows, [this, done = std::move(done)](int removed, auto kept) {
    if (removed > 0) parts_->karaoke_index.Save(parts_->karaoke);
    if (done) done(removed, std::move(kept));
  });
}

bool Workstation::IsMissing(std::string_view filename) const {
  return parts_->missing.Has(filename);
}

std::size_t Workstation::MissingChecks() const {
  return parts_->missing.Answers();
}

void Workstation::LookForFiles() {
  parts_->missing.LookAgain();
}

std::vector<std::string> Workstation::Parts::FoldersToScan(const std::string& first) {
  std::vector<std::string> folders{folder.NativeOfText(first).string()};
  for (const std::string& other : OtherFolders(settings)) folders.push_back(other);
  return folders;
}

void Workstation::Parts::Scan(Reindex& scan, const std::string& first, IndexKeeper& keeper,
                              const catalogue::track_table& table, Reindex::Done done) {
  scan_began = ports.clock.Now();
  scan.Start(FoldersToScan(first), ReadNameRule(settings),
             [this, &keeper, &table, done = std::move(done)](const Reindex::Outcome& outcome) {
               if (outcome.replaced) keeper.Replace(table);
               FollowInPlaylists(outcome.moved);
               if (outcome.replaced) missing.Look();
               if (done) done(outcome);
             });
}

void Workstation::Parts::AskBeforeRowsGo(const Reindex::Loss& loss,
                                         std::function<void(Reindex::Answer)> answer) {
  using support::Sentence;
  if (prompts == nullptr) return answer(Reindex::Answer::Keep);
  const std::string gone = std::to_string(loss.gone);
  prompts->Ask(
      {say(Sentence::RowsToGo, {std::to_string(loss.rows), std::to_string(loss.found), gone, loss.first}),
       say(Sentence::TakeRowsOut, {gone}), say(Sentence::KeepRows)},
      [answer = std::move(answer)](bool yes) {
        answer(yes ? Reindex::Answer::TakeOut : Reindex::Answer::Keep);
      });
}

void Workstation::Parts::FollowInPlaylists(const std::vector<ScanRows::Moved>& moved) {
  namespace track = catalogue::track;
  for (catalogue::track_table& playlist : playlists) {
    std::unordered_map<std::string, const std::string*> places;  // of its files, which are few
    if (!moved.empty()) {
      playlist.VisitColumn(track::kFilename, [&places](int, std::string_view file) {
        places.emplace(file, nullptr);
        return true;
      });
    }
    if (places.empty()) continue;
    for (const ScanRows::Moved& file : moved) {
      if (const auto place = places.find(file.from); place != places.end()) place->second = &file.to;
    }
    for (int row = 1; row <= playlist.Rows(); ++row) {
      const std::string* to = places[std::string(playlist.Cell(row, track::kFilename))];
      if (to != nullptr) playlist.SetCell(row, track::kFilename, *to);
    }
  }
}

void Workstation::Add(IntakeOrder order, FileIntake::Done done) {
  parts_->intake.NameBy(ReadNameRule(parts_->settings));
  parts_->intake.Add(std::move(order), std::move(done));
}

AddingProgress Workstation::Adding(ListId list) const {
  return parts_->intake.Progress(list);
}

void Workstation::StopAdding(ListId list) {
  parts_->intake.Stop(list);
}

int Workstation::RemoveRows(ListId list, const std::vector<int>& rows) {
  return parts_->removed.Remove(list, rows);
}

std::optional<RemovedRows::Back> Workstation::BringRowsBack() {
  return parts_->removed.Undo();
}

void Workstation::Parts::SaveList(ListId list) {
  if (list == ListId::Catalogue) index.Save(catalogue);
  if (list == ListId::Karaoke) karaoke_index.Save(karaoke);
}

void Workstation::Parts::TellOfOldOrder(const IntakeOutcome& outcome) {
  const int rows = outcome.rows + outcome.songs;
  if (!outcome.refused.empty()) return Teller()(outcome.refused.front());
  if (rows > 0) Teller()(say(support::Sentence::AddingWentOn, {std::to_string(rows)}));
}

const MixerHands* Workstation::ResumedMixer() const {
  const Journal* journal = parts_->resume.Resumed();
  return journal == nullptr ? nullptr : &journal->mixer.hands;
}

void Workstation::PumpWindow() {
  for (const Mailbox::Job& job : parts_->window->Take()) job();
  parts_->SortAfterBatch();
  parts_->TellOfSettings();
}

/// Rows stay where they are while a batch fills them in; then they go where they belong.
void Workstation::Parts::SortAfterBatch() {
  if (batch.Progress().state == BatchProgress::State::Running) return;
  if (std::exchange(batch_unsorted, false)) lists.SortAgain();
}

void Workstation::Parts::TellOfSettings() {
  for (const support::Error& notice : ports.settings.Notices(settings_notices)) {
    ++settings_notices;
    Complainer()(notice);
  }
}

void Workstation::Parts::TellOfMissing(MissingFiles::News news, std::size_t count, const std::string& first) {
  conductor.Post(
      [this, news, count, text = say(support::Sentence::FilesMissing, {std::to_string(count), first})] {
        const NoticeBoard::Subject subject{NoticeBoard::Subject::Kind::MissingFiles, 0};
        NoticeBoard& notices = stage.Notices();
        if (count == 0) return notices.Settle(subject);
        if (news == MissingFiles::News::Worse) return notices.Warn(subject, text);
        notices.Correct(subject, text);
      });
}

void Workstation::Tick() {
  if (parts_->conducting == Conducting::ByHand) parts_->conductor.ConductOnce();
}

}  // namespace app
