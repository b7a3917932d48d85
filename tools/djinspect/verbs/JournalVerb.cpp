// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "app/resume/Journal.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using Json = nlohmann::ordered_json;

Json Milliseconds(std::chrono::microseconds time) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

Json MarkJson(const std::optional<std::chrono::microseconds>& mark) {
  return mark ? Milliseconds(*mark) : Json();
}

Json DeckTree(const app::DeckInHand& deck) {
  constexpr const char* kStates[] = {"empty", "standing", "playing", "paused"};
  return {{"state", kStates[static_cast<int>(deck.state)]},
          {"file", ReadableText(deck.filename)},
          {"artist", ReadableText(deck.artist)},
          {"title", ReadableText(deck.title)},
          {"bpm", deck.bpm},
          {"ms", Milliseconds(deck.position)},
          {"startMark", MarkJson(deck.marks.start)},
          {"endMark", MarkJson(deck.marks.end)},
          {"keyLock", deck.sliders.key_lock == decks::KeyLock::On},
          {"tempo", deck.sliders.percent},
          {"pitch", deck.sliders.semitones},
          {"rate", deck.sliders.sample_percent},
          {"synced", deck.synced},
          {"gain", deck.gain.value},
          {"equaliser", deck.equaliser},
          {"volume", deck.volume},
          {"cue", deck.pre_volume}};
}

Json MixerTree(const app::ListStation::InHand& mixer) {
  const app::MixInHand& mix = mixer.mix;
  return {{"faders", mixer.hands.faders},
          {"crossfader", mixer.hands.crossfader},
          {"mix",
           {{"leader", mix.leader},
            {"next", mix.next},
            {"mixing", mix.mixing},
            {"atMs", Milliseconds(mix.plan.at)},
            {"fadeMs", Milliseconds(mix.plan.fade)},
            {"mixedMs", Milliseconds(mix.mixed)}}}};
}

Json SongTree(const app::SongInHand& song) {
  constexpr const char* kStates[] = {"empty", "loading", "playing", "paused", "stopped", "ended"};
  return {{"state", kStates[static_cast<int>(song.state)]},
          {"file", ReadableText(song.row.filename)},
          {"ms", Milliseconds(song.position)},
          {"key", song.semitones},
          {"tempo", song.percent}};
}

Json LightsTree(const app::LightsInHand& lights) {
  constexpr const char* kStates[] = {"stopped", "playing", "paused"};
  return {{"master", lights.grand_master},
          {"blackout", lights.blackout},
          {"show", ReadableText(lights.show.string())},
          {"state", kStates[static_cast<int>(lights.state)]},
          {"ms", Milliseconds(lights.position)},
          {"repeat", lights.repeat == dmx::ShowPlayer::Repeat::ForEver},
          {"levels", lights.levels}};
}

Json SuspectTree(const app::Suspect& suspect) {
  return {{"falls", suspect.falls}, {"fresh", suspect.fresh}};
}

}  // namespace

/// What an evening would go on with.
ExitCode InspectJournal(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const auto text = WholeFile(arguments.words[0], err);
  if (!text) return ExitCode::NothingRead;
  const auto journal = app::ParseJournal(*text);
  if (!journal) {
    err << "This is no night journal, or not a whole one.\n";
    return ExitCode::NothingRead;
  }
  Json tree{{"number", journal->number}, {"start", SuspectTree(journal->start)}, {"decks", Json::array()}};
  for (const app::DeckInHand& deck : journal->decks) tree["decks"].push_back(DeckTree(deck));
  tree["mixer"] = MixerTree(journal->mixer);
  tree["song"] = SongTree(journal->song);
  tree["lights"] = LightsTree(journal->lights);
  tree["suspects"] = Json::object();
  for (const auto& [file, suspect] : journal->suspects)
    tree["suspects"][ReadableText(file)] = SuspectTree(suspect);
  out << tree.dump() << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
