// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WorkstationParts.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace app {
namespace {

bool AnyPlays(const WorkstationView& view) {
  return view.song.playing || std::any_of(view.decks.begin(), view.decks.end(), [](const DeckView& deck) {
           return deck.state == DeckView::State::Playing;
         });
}

}  // namespace

Workstation::Parts::Parts(const Ports& outside, const support::ProgramFolder& program_folder, Conducting how)
    : ports(outside),
      folder(program_folder),
      conducting(how),
      settings(outside.settings, program_folder),
      language(settings, say),
      conductor([this] { stage.Tick(); }, outside.conductor_started),
      stage(Analysis(), outside.workers, gate, conductor.Box(), say),
      context(MakeContext()),
      cores(std::make_shared<IdleCores>(outside.background.threads)),
      collections(context, ports, Analysis(), {settings, prompts, stage.Notices(), cores}),
      apply(collections, settings, folder),
      equaliser(context, stage, settings),
      outputs(context, ports, stage, settings),
      visuals(context, outside.visualisation, stage, settings),
      lights(context, outside.dmx),
      organ(context, {outside.engine, [this](HeardFrom from) { return stage.StreamOf(from); }},
            outside.boards),
      songs(context, {outside.engine,
                      outside.sound,
                      stage.Deck(3),
                      {outside.synthesisers, outside.code_pages, outside.side_store},
                      outside.images}),
      lists(context, {collections.Music().Table(), collections.Karaoke().Table(), collections.Playlists()},
            stage, settings, outside.tags, collections.Scratch(), outside.local_time,
            [this] { collections.Music().Save(); }),
      editors(context),
      resume(context, {stage, lights, songs, lists, settings}, outside.journal),
      gains(outside.commands, folder, outside.workers, gate, window),
      decks({context, stage, resume, settings, collections, gains}, outside.sound) {
  stage.FollowSong([this] {
    Stage::SongPlaying song;
    song.stream = songs.Hear(song.heard);
    return song;
  });
  stage.FollowSaves(outside.saves);
  stage.OnTick([this](const WorkstationView& view) { Tick(view); });
  FollowAnalyses();
}

DeskContext Workstation::Parts::MakeContext() {
  return {folder,
          ports.settings,
          ports.files,
          ports.workers,
          ports.clock,
          gate,
          conductor.Box(),
          window,
          say,
          [box = conductor.Box(), this](std::string sentence) {
            box->Order(stage, &Stage::Notice, std::move(sentence));
          },
          [box = window, this](std::string sentence) {
            box->Order(prompts, &WaitingPrompts::Tell, std::move(sentence));
          }};
}

AnalysisPorts Workstation::Parts::Analysis() const {
  return {ports.engine, ports.sound, ports.analysis, ports.side_store, locks};
}

void Workstation::Parts::Tick(const WorkstationView& view) {
  lights.Tick(view);
  organ.Tick(view);
  songs.Tick(view);
  cores->SetPlaying(AnyPlays(view));
  lists.Tick(view, songs.Sung());
  resume.Tick(view);
}

void Workstation::Parts::FollowAnalyses() {
  stage.OnAnalysed([this](const std::string& filename, const music::TrackAnalysis& found,
                          const catalogue::FileMarks& marks) {
    music::TrackAnalysis facts = found;
    facts.wave.reset();
    window->Order(collections, &Collections::KeepAnalysis, filename, std::move(facts), marks);
  });
}

void Workstation::Parts::CheckProgramFolder() {
  ports.workers.Post([this, gate = gate, path = folder.Native("\\can-write.tmp"), tell = context.tell] {
    gate->Pass([&] {
      if (!ports.files.Save(path, "")) return tell(say(support::Sentence::FolderReadOnly));
      std::error_code ignored;
      std::filesystem::remove(path, ignored);
    });
  });
}

void Workstation::Parts::TellOfSettings() {
  for (const support::Error& notice : ports.settings.Notices(settings_notices)) {
    ++settings_notices;
    context.tell(say(notice));
  }
}

}  // namespace app
