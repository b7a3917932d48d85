// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/ListWords.h"

namespace ui {
namespace {

constexpr Strings::Row kListRows[] = {
    {ListWord::Find, "Find", "Zoeken"},
    {ListWord::FindTip,
     "Words in any order. Also artist: title: album: genre: year: file: before a word, bpm:120-128, "
     "year:1990-1999, -word to leave out, \"words together\". Enter goes to the list, Esc clears. (Ctrl+F)",
     "Woorden in elke volgorde. Ook artist: title: album: genre: year: file: voor een woord, bpm:120-128, "
     "year:1990-1999, -woord om weg te laten, \"woorden samen\". Enter gaat naar de lijst, Esc wist. "
     "(Ctrl+F)"},
    {ListWord::FindHint, "Find: words, artist:, genre:, year:1990-1999…",
     "Zoeken: woorden, artist:, genre:, year:1990-1999…"},
    {ListWord::Found, "%1 found", "%1 gevonden"},
    {ListWord::NothingFound, "Nothing found. Esc shows all again.", "Niets gevonden. Esc toont weer alles."},
    {ListWord::SortedUp, "%1, sorted upwards", "%1, oplopend gesorteerd"},
    {ListWord::SortedDown, "%1, sorted downwards", "%1, aflopend gesorteerd"},
    {ListWord::Played, "%1, already played tonight", "%1, vanavond al gedraaid"},
    {ListWord::Missing, "%1, the file is not there now", "%1, het bestand is er nu niet"},
    {ListWord::Total, "%1 {track|tracks}, %2", "%1 {nummer|nummers}, %2"},
    {ListWord::Open, "Open", "Openen"},
    {ListWord::OpenName, "Open tracks or playlists into playlist %1",
     "Nummers of afspeellijsten in afspeellijst %1 openen"},
    {ListWord::OpenTip, "Add a track, a playlist or an evening's history to this list",
     "Een nummer, een afspeellijst of de geschiedenis van een avond aan deze lijst toevoegen"},
    {ListWord::OpenFile, "Track or playlist…", "Nummer of afspeellijst…"},
    {ListWord::OpenTitle, "Open into playlist %1", "In afspeellijst %1 openen"},
    {ListWord::History, "History", "Geschiedenis"},
    {ListWord::NoHistory, "No evening was played yet", "Er is nog geen avond gedraaid"},
    {ListWord::Save, "Save…", "Bewaren…"},
    {ListWord::SaveName, "Save playlist %1", "Afspeellijst %1 bewaren"},
    {ListWord::SaveTip, "Save the whole list to a file", "De hele lijst in een bestand bewaren"},
    {ListWord::SaveTitle, "Save playlist %1", "Afspeellijst %1 bewaren"},
    {ListWord::Saved, "Playlist %1 is saved.", "Afspeellijst %1 is bewaard."},
    {ListWord::Automix, "Automix", "Automix"},
    {ListWord::AutomixTip,
     "Play the next track of the playlists by itself: it is loaded on the free deck, begins at its start mix "
     "point when the other deck is at its end mix point, and the crossfader goes over. Any hand on it wins. "
     "Switched on while no deck plays, it begins.",
     "Het volgende nummer van de afspeellijsten vanzelf draaien: het komt op het vrije deck, begint bij zijn "
     "beginmengpunt wanneer het andere deck bij zijn eindmengpunt is, en de crossfader gaat over. Een hand "
     "wint altijd. Ingeschakeld terwijl geen deck speelt, begint hij zelf."},
    {ListWord::AutomixNext, "next: deck %1", "straks: deck %1"},
    {ListWord::AutomixEnd, "end of the list", "einde van de lijst"},
    {ListWord::MixTime, "Length of an automatic mix", "Duur van een automatische mix"},
    {ListWord::MixTimeTip, "How long the crossfader takes at most, in seconds",
     "Hoe lang de crossfader er hoogstens over doet, in seconden"},
    {ListWord::MixPlace, "The next track begins", "Het volgende nummer begint"},
    {ListWord::MixPlaceTip, "Where the automatic mixer begins the next track",
     "Waar de automatische mixer het volgende nummer begint"},
    {ListWord::AtMixPoints, "At the mix points", "Bij de mengpunten"},
    {ListWord::BeforeTheEnd, "Before the end", "Voor het einde"},
    {ListWord::MatchTempo, "Match tempos", "Tempo's gelijk"},
    {ListWord::MatchTempoTip,
     "The next track comes in at the tempo and on the beat of the other one, and glides back to its own "
     "after the mix",
     "Het volgende nummer komt binnen in het tempo en op de tel van het andere, en glijdt na de mix terug "
     "naar zijn eigen tempo"},
    {ListWord::MatchGain, "Match levels", "Volumes gelijk"},
    {ListWord::MatchGainTip, "While automix is on, all tracks sound equally loud",
     "Zolang automix aan staat, klinken alle nummers even hard"},
    {ListWord::AutomixWaits, "waits for a track", "wacht op een nummer"},
    {ListWord::TempoReach, "How far tempos are matched", "Hoe ver tempo's worden aangepast"},
    {ListWord::TempoReachTip,
     "The furthest that a tempo is moved to match the other one, in percent: in an automatic mix and by "
     "Sync; "
     "tracks further apart keep their own tempo",
     "Hoe ver een tempo hoogstens wordt aangepast aan het andere, in procent: in een automatische mix en bij "
     "Sync; nummers die verder uit elkaar liggen houden hun eigen tempo"},
    {ListWord::GainRange, "How far levels are matched", "Hoe ver volumes worden aangepast"},
    {ListWord::GainRangeTip, "The furthest that a track is made louder or softer, in dB",
     "Hoeveel een nummer hoogstens harder of zachter wordt gemaakt, in dB"},
};

}  // namespace

std::span<const Strings::Row> ListWords() {
  return kListRows;
}

}  // namespace ui
