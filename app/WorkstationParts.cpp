// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WorkstationParts.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "app/WorkstationView.h"
#include "app/lists/BreakMusic.h"

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
      conductor([this] { rack.Tick(); }, outside.conductor_started),
      rack(Analysis(), outside.workers, gate, conductor.Box(), say, outside.desk, outside.effects,
           outside.loops),
      context(MakeContext()),
      cores(std::make_shared<IdleCores>(outside.background.threads)),
      collections(context, ports, Analysis(), {settings, prompts, rack.Notices(), cores}),
      apply(collections, settings, folder),
      equaliser(context, rack, settings),
      outputs(context, ports, rack, settings),
      headphones(context, rack, settings),
      microphone(context, outside.microphone),
      effects(context, rack, settings),
      visuals(context, outside.visualisation, rack, settings),
      lights(context, outside.dmx, outside.net_dmx),
      live(context, lights),
      organ(context, {outside.engine, [this](HeardFrom from) { return rack.StreamOf(from); }},
            outside.boards),
      songs(context, {outside.engine,
                      outside.sound,
                      rack.Deck(3),
                      {outside.synthesisers, outside.code_pages, outside.side_store},
                      outside.images}),
      singers(context, songs, outside.local_time),
      lists(context, {collections.Music().Table(), collections.Karaoke().Table(), collections.Playlists()},
            mixing, settings, outside.tags, collections.Scratch(), outside.local_time,
            [this] { collections.Music().Save(); }),
      recording(context, ports.recorder, outside.local_time),
      editors(context),
      packs(context, outside.fixtures.formats, outside.fixtures.installed),
      drafts(context),
      resume(context, {rack, lights, live, songs, lists, settings}, outside.journal),
      tags(context,
           {outside.tag_editor, &outside.tags, outside.side_store, locks,
            [this](const std::string& from, const std::string& to) {
              singers.Do(&SingerStation::FollowFile, from, to);
            }},
           collections),
      gains(outside.commands, folder, outside.workers, gate, window),
      decks({context, rack, resume, settings, collections, gains}, outside.sound) {
  rack.FollowSong([this] {
    DeckRack::SongPlaying song;
    song.stream = songs.Hear(song.heard);
    return song;
  });
  rack.FollowSaves(outside.saves);
  rack.OnTick([this](const WorkstationView& view) { Tick(view); });
  FollowAnalyses();
}

StationContext Workstation::Parts::MakeContext() {
  return {folder,
          settings,
          ports.files,
          ports.workers,
          ports.clock,
          gate,
          conductor.Box(),
          window,
          say,
          [box = conductor.Box(), this](support::Saying sentence) {
            box->Order(rack, &DeckRack::Notice, std::move(sentence));
          },
          [box = window, this](std::string sentence) {
            box->Order(prompts, &WaitingPrompts::Tell, std::move(sentence));
          }};
}

AnalysisPorts Workstation::Parts::Analysis() const {
  return {ports.engine, ports.sound, ports.analysis, ports.side_store, locks};
}

void Workstation::Parts::Tick(const WorkstationView& view) {
  microphone.Tick(view);
  live.Tick(view);
  lights.Tick(view);
  organ.Tick(view);
  songs.Tick(view);
  singers.Tick();
  cores->SetPlaying(AnyPlays(view));
  lists.Tick(view, songs.Sung(), BreakStage{songs.SoundsOrComes(), singers.AnySinger()});
  recording.Tick(view);
  resume.Tick(view);
}

void Workstation::Parts::FollowAnalyses() {
  rack.OnAnalysed([this](const std::string& filename, const music::TrackAnalysis& found,
                         const catalogue::FileMarks& marks) {
    music::TrackAnalysis facts = found;
    facts.wave.reset();
    window->Order(collections, &Collections::KeepAnalysis, filename, std::move(facts), marks);
  });
}

void Workstation::Parts::CheckProgramFolder() {
  ports.workers.Post([this, gate = gate, path = folder.Native("\\can-write.tmp"), tell = context.tell] {
    gate->Pass([&] {
      if (!ports.files.Save(path, "")) return tell({support::Sentence::FolderReadOnly});
      std::error_code ignored;
      std::filesystem::remove(path, ignored);
    });
  });
}

void Workstation::Parts::TellOfSettings() {
  for (const support::Error& notice : ports.settings.Notices(settings_notices)) {
    ++settings_notices;
    context.tell(SayingOf(notice));
  }
}

}  // namespace app
