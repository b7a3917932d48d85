// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/resume/Journal.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "support/PartLines.h"

namespace app {
namespace {

using std::chrono::microseconds;
using support::kNoYes;
using support::PartValue;
using support::PartWriter;

constexpr std::string_view kHead = "dj TOLVEN night journal 1";
constexpr std::size_t kMostBytes = std::size_t{1} << 20;  // bytes of a file that is taken for a journal
constexpr std::size_t kMostSuspects = 64;
constexpr int kMostFalls = 99;
constexpr std::int64_t kMostNumber = 1'000'000'000'000'000;

// What a value may be, word by number.
constexpr std::array<std::string_view, 4> kDeckStates{"empty", "standing", "playing", "paused"};
constexpr std::array<std::string_view, 6> kSongStates{"empty",  "loading", "playing",
                                                      "paused", "stopped", "ended"};
constexpr std::size_t kMostEffects = 50;
constexpr std::array<std::string_view, dmx::kEffectKinds> kEffects{"colours", "chase", "pulse", "circle",
                                                                   "eight",   "fan",   "sweep"};
constexpr std::array<std::string_view, 2> kRateUnits{"beats", "hertz"};
constexpr std::array<std::string_view, 3> kShowStates{"stopped", "playing", "paused"};

void WriteDeck(const DeckInHand& deck, PartWriter& lines) {
  lines.Text("state", kDeckStates[static_cast<std::size_t>(deck.state)]);
  lines.Text("file", deck.filename);
  lines.Text("artist", deck.artist);
  lines.Text("title", deck.title);
  lines.Real("bpm", deck.bpm);
  lines.Time("position", deck.position);
  if (deck.marks.start) lines.Time("start", *deck.marks.start);
  if (deck.marks.end) lines.Time("end", *deck.marks.end);
  lines.Flag("keylock", deck.sliders.key_lock == decks::KeyLock::On);
  lines.Real("tempo", deck.sliders.percent);
  lines.Real("pitch", deck.sliders.semitones);
  lines.Real("rate", deck.sliders.sample_percent);
  lines.Flag("synced", deck.synced);
  lines.Real("gain", static_cast<double>(deck.gain.value));
  for (std::size_t band = 0; band < deck.equaliser.size(); ++band) {
    if (std::abs(deck.equaliser[band]) >= 0.01F)
      lines.Real("band" + std::to_string(band), static_cast<double>(deck.equaliser[band]));
  }
  lines.Number("volume", deck.volume);
  lines.Number("cue", deck.pre_volume);
}

void ReadDeck(std::string_view key, const PartValue& value, DeckInHand& deck) {
  constexpr double kMostGain = 60;
  if (key == "state") return value.Word(deck.state, kDeckStates);
  if (key == "file") deck.filename = value.Text();
  if (key == "artist") deck.artist = value.Text();
  if (key == "title") deck.title = value.Text();
  if (key == "bpm") return value.Real(deck.bpm, 0, 1000);
  if (key == "position") return value.Time(deck.position);
  if (key == "start") return value.Time(deck.marks.start);
  if (key == "end") return value.Time(deck.marks.end);
  if (key == "keylock") return value.Word(deck.sliders.key_lock, kNoYes);
  if (key == "tempo") return value.Real(deck.sliders.percent, -50, 100);
  if (key == "pitch") return value.Real(deck.sliders.semitones, -12, 12);
  if (key == "rate") return value.Real(deck.sliders.sample_percent, -50, 100);
  if (key == "synced") return value.Word(deck.synced, kNoYes);
  if (key == "gain") return value.Real(deck.gain.value, -kMostGain, kMostGain);
  if (key == "volume") return value.Number(deck.volume, 0, 100);
  if (key == "cue") return value.Number(deck.pre_volume, 0, 100);
  if (key.size() == 5 && key.starts_with("band") && key[4] >= '0' && key[4] <= '9')
    value.Real(deck.equaliser[static_cast<std::size_t>(key[4] - '0')], -kMostEqGain, kMostEqGain);
}

void WriteMixer(const ListStation::InHand& mixer, PartWriter& lines) {
  lines.Number("fader1", mixer.hands.faders[0]);
  lines.Number("fader2", mixer.hands.faders[1]);
  lines.Number("crossfader", mixer.hands.crossfader);
  lines.Number("curve", static_cast<int>(mixer.hands.curve));
  const MixInHand& mix = mixer.mix;
  lines.Text("spent1", mix.spent[0]);
  lines.Text("spent2", mix.spent[1]);
  lines.Number("leader", mix.leader);
  lines.Number("next", mix.next);
  lines.Flag("placed", mix.placed);
  lines.Flag("mixing", mix.mixing);
  lines.Time("at", mix.plan.at);
  lines.Time("fade", mix.plan.fade);
  lines.Number("from", mix.fade_from);
  lines.Time("mixed", mix.mixed);
  lines.Flag("byhand", mix.hand_has_crossfader);
  lines.Number("breakdeck", mixer.breaks.deck);
  lines.Text("breakfile", mixer.breaks.file);
  lines.Flag("breakplays", mixer.breaks.plays);
  lines.Flag("breakdue", mixer.breaks.due);
}

void ReadMixer(std::string_view key, const PartValue& value, ListStation::InHand& mixer) {
  MixInHand& mix = mixer.mix;
  if (key == "fader1") return value.Number(mixer.hands.faders[0], 0, 100);
  if (key == "fader2") return value.Number(mixer.hands.faders[1], 0, 100);
  if (key == "crossfader") return value.Number(mixer.hands.crossfader, -100, 100);
  if (key == "curve") return value.Number(mixer.hands.curve, 0, 2);
  if (key == "spent1") mix.spent[0] = value.Text();
  if (key == "spent2") mix.spent[1] = value.Text();
  if (key == "leader") return value.Number(mix.leader, 0, 2);
  if (key == "next") return value.Number(mix.next, 0, 2);
  if (key == "placed") return value.Word(mix.placed, kNoYes);
  if (key == "mixing") return value.Word(mix.mixing, kNoYes);
  if (key == "at") return value.Time(mix.plan.at);
  if (key == "fade") return value.Time(mix.plan.fade);
  if (key == "from") return value.Number(mix.fade_from, -100, 100);
  if (key == "mixed") return value.Time(mix.mixed);
  if (key == "byhand") return value.Word(mix.hand_has_crossfader, kNoYes);
  if (key == "breakdeck") return value.Number(mixer.breaks.deck, 0, 2);
  if (key == "breakfile") mixer.breaks.file = value.Text();
  if (key == "breakplays") return value.Word(mixer.breaks.plays, kNoYes);
  if (key == "breakdue") return value.Word(mixer.breaks.due, kNoYes);
}

void WriteSong(const SongInHand& song, PartWriter& lines) {
  lines.Text("state", kSongStates[static_cast<std::size_t>(song.state)]);
  lines.Text("file", song.row.filename);
  lines.Text("artist", song.row.artist);
  lines.Text("title", song.row.title);
  lines.Time("position", song.position);
  lines.Number("key", song.semitones);
  lines.Real("tempo", song.percent);
}

void ReadSong(std::string_view key, const PartValue& value, SongInHand& song) {
  if (key == "state") return value.Word(song.state, kSongStates);
  if (key == "file") song.row.filename = value.Text();
  if (key == "artist") song.row.artist = value.Text();
  if (key == "title") song.row.title = value.Text();
  if (key == "position") return value.Time(song.position);
  if (key == "key") return value.Number(song.semitones, -12, 12);
  if (key == "tempo") return value.Real(song.percent, -50, 100);
}

void WriteLights(const LightsInHand& lights, PartWriter& lines) {
  lines.Number("master", lights.grand_master);
  lines.Flag("blackout", lights.blackout);
  const auto last =
      std::find_if(lights.levels.rbegin(), lights.levels.rend(), [](auto level) { return level; });
  std::string levels;
  for (auto level = lights.levels.begin(); level != last.base(); ++level) support::AppendHex(levels, *level);
  lines.Text("levels", levels);
  std::string hands;
  for (const dmx::FaderMove& hand : lights.hands) {
    support::AppendHex(hands, static_cast<unsigned char>(hand.channel / 256));
    support::AppendHex(hands, static_cast<unsigned char>(hand.channel % 256));
    support::AppendHex(hands, hand.level);
  }
  lines.Text("hands", hands);
  lines.Text("show", lights.show.string());
  lines.Text("state", kShowStates[static_cast<std::size_t>(lights.state)]);
  lines.Time("position", lights.position);
  lines.Flag("repeat", lights.repeat == dmx::ShowPlayer::Repeat::ForEver);
}

/// Two bytes of the channel and one of the level, each.
void ReadHands(const std::string& text, LightsInHand& lights) {
  constexpr std::size_t kDigits = 6;
  lights.hands.clear();
  for (std::size_t at = 0; at < text.size() && lights.hands.size() < lights.levels.size(); at += kDigits) {
    const auto high = support::HexAt(text, at), low = support::HexAt(text, at + 2),
               level = support::HexAt(text, at + 4);
    if (!high || !low || !level) return;
    const int channel = *high * 256 + *low;
    if (channel >= 1 && channel <= dmx::kUniverseChannels) lights.hands.push_back({channel, *level});
  }
}

void ReadLights(std::string_view key, const PartValue& value, LightsInHand& lights) {
  if (key == "master") return value.Number(lights.grand_master, 0, dmx::OutputStage::kFullMaster);
  if (key == "blackout") return value.Word(lights.blackout, kNoYes);
  if (key == "show") lights.show = value.Text();
  if (key == "state") return value.Word(lights.state, kShowStates);
  if (key == "position") return value.Time(lights.position);
  if (key == "repeat") return value.Word(lights.repeat, kNoYes);
  if (key == "hands") return ReadHands(value.Text(), lights);
  if (key != "levels") return;
  const std::string levels = value.Text();
  for (std::size_t place = 0; place < lights.levels.size(); ++place)
    lights.levels[place] = support::HexAt(levels, 2 * place).value_or(0);
}

void WriteEffect(const dmx::LightEffect& effect, PartWriter& lines) {
  lines.Word("kind", effect.kind, kEffects);
  lines.Word("unit", effect.rate.unit, kRateUnits);
  lines.Real("rate", effect.rate.value);
  lines.Real("size", effect.size);
  for (const int fixture : effect.fixtures) lines.Number("fixture", fixture);
}

void ReadEffect(std::string_view key, const PartValue& value, dmx::LightEffect& effect) {
  if (key == "kind") return value.Word(effect.kind, kEffects);
  if (key == "unit") return value.Word(effect.rate.unit, kRateUnits);
  if (key == "rate") return value.Real(effect.rate.value, 0.01, 64);
  if (key == "size") return value.Real(effect.size, 0, 1);
  if (key != "fixture" || effect.fixtures.size() >= dmx::kUniverseChannels) return;
  value.Number(effect.fixtures.emplace_back(1), 1, dmx::kUniverseChannels);
}

void ReadSuspect(std::string_view key, const PartValue& value, Suspect& suspect) {
  if (key == "falls") return value.Number(suspect.falls, 0, kMostFalls);
  if (key == "fresh") return value.Word(suspect.fresh, kNoYes);
}

void WriteSuspect(const Suspect& suspect, PartWriter& lines) {
  lines.Number("falls", suspect.falls);
  lines.Flag("fresh", suspect.fresh);
}

/// The parts of a journal, one line at a time.
class JournalReader {
 public:
  void Take(std::string_view part, std::string_view key, const PartValue& value) {
    if (part == "journal" && key == "number") value.Number(read_.number, 0, kMostNumber);
    if (part == "start") ReadSuspect(key, value, read_.start);
    if (part == "deck1") ReadDeck(key, value, read_.decks[0]);
    if (part == "deck2") ReadDeck(key, value, read_.decks[1]);
    if (part == "mixer") ReadMixer(key, value, read_.mixer);
    if (part == "song") ReadSong(key, value, read_.song);
    if (part == "lights") ReadLights(key, value, read_.lights);
    if (part == "effect" && !read_.live.effects.empty()) ReadEffect(key, value, read_.live.effects.back());
    if (part == "suspect") TakeSuspect(key, value);
  }
  void Begin(std::string_view part) {
    file_.clear();
    if (part == "effect" && read_.live.effects.size() < kMostEffects) read_.live.effects.emplace_back();
  }
  [[nodiscard]] Journal Done() {
    for (DeckInHand& deck : read_.decks) {
      if (deck.filename.empty()) deck.state = DeckInHand::State::Empty;
    }
    std::erase_if(read_.live.effects, [](const auto& effect) { return effect.fixtures.empty(); });
    // Two decks that hand over to each other are two.
    MixInHand& mix = read_.mixer.mix;
    if (mix.leader == mix.next) mix.leader = mix.next = 0;
    return std::move(read_);
  }

 private:
  void TakeSuspect(std::string_view key, const PartValue& value) {
    if (key == "file") file_ = value.Text();
    const bool room = read_.suspects.size() < kMostSuspects || read_.suspects.contains(file_);
    if (!file_.empty() && room) ReadSuspect(key, value, read_.suspects[file_]);
  }

  Journal read_;
  std::string file_;  ///< of the suspect
};

}  // namespace

std::string JournalText(const Journal& journal) {
  PartWriter lines;
  lines.Part("journal");
  lines.Number("number", static_cast<std::int64_t>(journal.number));
  lines.Part("start");
  WriteSuspect(journal.start, lines);
  for (std::size_t i = 0; i < journal.decks.size(); ++i) {
    lines.Part("deck" + std::to_string(i + 1));
    WriteDeck(journal.decks[i], lines);
  }
  lines.Part("mixer");
  WriteMixer(journal.mixer, lines);
  lines.Part("song");
  WriteSong(journal.song, lines);
  lines.Part("lights");
  WriteLights(journal.lights, lines);
  for (const dmx::LightEffect& effect : journal.live.effects) {
    lines.Part("effect");
    WriteEffect(effect, lines);
  }
  for (const auto& [file, suspect] : journal.suspects) {
    lines.Part("suspect");
    lines.Text("file", file);
    WriteSuspect(suspect, lines);
  }
  return support::SealedText(kHead, lines.Take());
}

Journal ParseJournalLines(std::string_view lines) {
  JournalReader reader;
  support::ReadParts(lines, {[&](std::string_view part) { reader.Begin(part); },
                             [&](std::string_view part, std::string_view key, const PartValue& value) {
                               reader.Take(part, key, value);
                             }});
  return reader.Done();
}

std::optional<Journal> ParseJournal(std::string_view text) {
  if (text.size() > kMostBytes) return std::nullopt;
  const auto lines = support::LinesOfSealed(kHead, text);
  if (!lines) return std::nullopt;
  return ParseJournalLines(*lines);
}

StoredJournal ReadJournal(const support::ProgramFolder& folder) {
  StoredJournal stored;
  for (const std::string_view name : kJournalFiles) {
    const auto text = support::ReadWholeFile(folder.Native(name), kMostBytes);
    if (!text) continue;
    auto journal = ParseJournal(*text);
    stored.damaged = stored.damaged || !journal;
    const bool newer = journal && (!stored.newest || journal->number > stored.newest->number);
    if (newer) stored.newest = std::move(journal);
  }
  return stored;
}

}  // namespace app
