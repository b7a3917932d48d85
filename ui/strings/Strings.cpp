// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/Strings.h"

#include <algorithm>

namespace ui {
namespace {

// In the order of the numbers, which the look-up relies on.
constexpr Strings::Row kRows[] = {
    {Say::Caption, "dj TOLVEN workstation", "dj TOLVEN werkplek"},

    {Say::OutputOf, "%1: %2", "%1: %2"},
    {Say::NoSound, "No sound", "Geen geluid"},
    {Say::SoundLoad, "Sound load %1 %", "Geluidslast %1 %"},
    {Say::LateBlocks, "Late blocks %1", "Te late blokken %1"},
    {Say::SoundLoadTip, "Share of its time that the sound engine needed in the last second",
     "Deel van zijn tijd dat de geluidsmotor in de laatste seconde nodig had"},
    {Say::LateBlocksTip, "How often sound came too late since the start; 0 is what it should be",
     "Hoe vaak geluid te laat kwam sinds de start; 0 is zoals het hoort"},
    {Say::ClockTip, "Time of day", "Tijd van de dag"},

    {Say::Deck, "Deck %1", "Deck %1"},
    {Say::DeckEmpty, "No track", "Geen nummer"},
    {Say::DeckEmptyHint, "Double-click a track or drag it here",
     "Dubbelklik op een nummer of sleep het hierheen"},
    {Say::Loading, "Loading", "Laden"},
    {Say::Stopped, "Ready", "Gereed"},
    {Say::Playing, "Playing", "Speelt"},
    {Say::Paused, "Paused", "Gepauzeerd"},
    {Say::Ended, "Ended", "Afgelopen"},
    {Say::Play, "Play deck %1", "Deck %1 afspelen"},
    {Say::Pause, "Pause deck %1", "Deck %1 pauzeren"},
    {Say::Stop, "Stop deck %1", "Deck %1 stoppen"},
    {Say::ToStart, "Deck %1 to the start", "Deck %1 naar het begin"},
    {Say::PlayTip, "Play or pause", "Afspelen of pauzeren"},
    {Say::StopTip, "Stop", "Stoppen"},
    {Say::ToStartTip, "To the start of the track", "Naar het begin van het nummer"},
    {Say::Tempo, "Tempo", "Tempo"},
    {Say::TempoTip, "Tempo of the deck, the pitch stays; double-click: original tempo",
     "Tempo van het deck, de toonhoogte blijft; dubbelklik: oorspronkelijk tempo"},
    {Say::TempoReset, "Reset", "Terug"},
    {Say::TempoResetTip, "Back to the original tempo", "Terug naar het oorspronkelijke tempo"},
    {Say::BpmCaption, "BPM", "BPM"},
    {Say::BpmTip, "Beats a minute as heard; the track itself has %1",
     "Tellen per minuut zoals te horen; het nummer zelf heeft %1"},
    {Say::Remaining, "Remaining time", "Resterende tijd"},
    {Say::Elapsed, "Elapsed and total time", "Verstreken en totale tijd"},
    {Say::Overview, "Position on deck %1", "Positie op deck %1"},
    {Say::OverviewTip, "The whole track: click or drag to go to a place; Left and Right move by five seconds",
     "Het hele nummer: klik of sleep naar een plek; Links en Rechts verplaatsen vijf seconden"},
    {Say::UnknownArtist, "Unknown artist", "Onbekende artiest"},
    {Say::KeyHint, "%1 (%2)", "%1 (%2)"},
    {Say::Wave, "Running wave of deck %1", "Lopende golfvorm van deck %1"},
    {Say::WaveTip, "What is heard now and next: drag it to go to another place",
     "Wat nu en straks klinkt: sleep om naar een andere plek te gaan"},

    {Say::Volume, "Volume of deck %1", "Volume van deck %1"},
    {Say::VolumeTip, "Volume of the deck; drag anywhere on the fader",
     "Volume van het deck; sleep ergens op de schuif"},
    {Say::Level, "Level of deck %1", "Niveau van deck %1"},
    {Say::LevelTip, "Level of the deck in dB, left and right, before its fader",
     "Niveau van het deck in dB, links en rechts, vóór de schuif"},
    {Say::Cue, "Listen %1", "Luister %1"},
    {Say::CueName, "Deck %1 in the head-phones", "Deck %1 in de hoofdtelefoon"},
    {Say::CueTip, "Hear the deck in the head-phones; each start of the deck switches it off",
     "Het deck in de hoofdtelefoon horen; elke start van het deck schakelt het uit"},
    {Say::CueNoDevice, "Choose a device for the head-phones under Settings first",
     "Kies eerst een apparaat voor de hoofdtelefoon bij Instellingen"},
    {Say::Crossfader, "Crossfader", "Crossfader"},
    {Say::CrossfaderTip, "Fades between the decks (Ctrl+Left, Ctrl+Right); double-click: middle",
     "Mengt tussen de decks (Ctrl+Links, Ctrl+Rechts); dubbelklik: midden"},
    {Say::Curve, "Crossfader curve", "Verloop van de crossfader"},
    {Say::CurveTip, "How the crossfader fades", "Hoe de crossfader mengt"},
    {Say::CurveSmooth, "Smooth", "Vloeiend"},
    {Say::CurveCut, "Cut", "Scherp"},
    {Say::CurvePower, "Constant power", "Gelijk vermogen"},

    {Say::Music, "Music", "Muziek"},
    {Say::MusicTip, "The catalogue", "De catalogus"},
    {Say::Tracks, "%1 tracks", "%1 nummers"},
    {Say::OneTrack, "1 track", "1 nummer"},
    {Say::Catalogue, "Catalogue", "Catalogus"},
    {Say::CatalogueTip, "Double-click or Enter: load on the free deck",
     "Dubbelklik of Enter: op het vrije deck laden"},
    {Say::AddFiles, "Add files…", "Bestanden toevoegen…"},
    {Say::AddFilesTip, "Add music files to the catalogue; they can be dropped on it too",
     "Muziekbestanden aan de catalogus toevoegen; erop slepen kan ook"},
    {Say::AddFilesTitle, "Add music files", "Muziekbestanden toevoegen"},
    {Say::DialogAdd, "Add", "Toevoegen"},
    {Say::DialogCancel, "Cancel", "Annuleren"},
    {Say::DialogLookIn, "Folder:", "Map:"},
    {Say::DialogName, "File name:", "Bestandsnaam:"},
    {Say::DialogKind, "Kind of file:", "Bestandstype:"},
    {Say::MusicFiles, "Music files", "Muziekbestanden"},
    {Say::AllFiles, "All files", "Alle bestanden"},
    {Say::AddingFiles, "Adding files: %1 of %2…", "Bestanden toevoegen: %1 van %2…"},
    {Say::Added, "%1 tracks added.", "%1 nummers toegevoegd."},
    {Say::AddedOne, "1 track added.", "1 nummer toegevoegd."},
    {Say::AddedNone, "No track added.", "Geen nummer toegevoegd."},
    {Say::AlreadyThere, "%1 were in the catalogue already.", "%1 stonden al in de catalogus."},
    {Say::AlreadyThereOne, "1 was in the catalogue already.", "1 stond al in de catalogus."},
    {Say::LeftOut, "%1 files were left out:", "%1 bestanden zijn overgeslagen:"},
    {Say::LeftOutOne, "1 file was left out:", "1 bestand is overgeslagen:"},
    {Say::Close, "Close", "Sluiten"},
    {Say::CloseTip, "Close this list", "Deze lijst sluiten"},
    {Say::EmptyCatalogue, "The catalogue is empty.\nDrop music files here, or choose “Add files…”.",
     "De catalogus is leeg.\nSleep muziekbestanden hierheen of kies “Bestanden toevoegen…”."},
    {Say::OnDeck, "On deck %1", "Op deck %1"},
    {Say::LoadOn, "To deck %1", "Naar deck %1"},
    {Say::LoadOnTip, "Load the chosen track on deck %1", "Het gekozen nummer op deck %1 laden"},

    {Say::ColumnDeck, "Deck", "Deck"},
    {Say::ColumnArtist, "Artist", "Artiest"},
    {Say::ColumnTitle, "Title", "Titel"},
    {Say::ColumnTime, "Time", "Duur"},
    {Say::ColumnBpm, "BPM", "BPM"},
    {Say::ColumnGenre, "Genre", "Genre"},
    {Say::ColumnAlbum, "Album", "Album"},
    {Say::ColumnYear, "Year", "Jaar"},

    {Say::DeckIsPlaying, "Deck %1 is playing. Pause or stop it before you load another track on it.",
     "Deck %1 speelt. Pauzeer of stop het voordat u er een ander nummer op laadt."},
    {Say::BothDecksPlay, "Both decks are playing. Pause or stop one before you load another track.",
     "Beide decks spelen. Pauzeer of stop er een voordat u een ander nummer laadt."},
    {Say::NoRowChosen, "No track is chosen in the catalogue.", "Er is geen nummer gekozen in de catalogus."},

    {Say::Settings, "Settings", "Instellingen"},
    {Say::SettingsTip, "Outputs, language and colours", "Uitgangen, taal en kleuren"},
    {Say::Outputs, "Sound outputs", "Geluidsuitgangen"},
    {Say::OutputsHint, "A choice acts at once and is kept, also while music plays.",
     "Een keuze werkt meteen en blijft bewaard, ook terwijl er muziek speelt."},
    {Say::OutputDeck, "Deck %1", "Deck %1"},
    {Say::OutputHeadphones, "Head-phones", "Hoofdtelefoon"},
    {Say::Device, "Device", "Apparaat"},
    {Say::DeviceTip, "Device that this output plays on", "Apparaat waarop deze uitgang speelt"},
    {Say::Pair, "Loudspeakers", "Luidsprekers"},
    {Say::PairTip, "Pair of loudspeakers of the device", "Luidsprekerpaar van het apparaat"},
    {Say::PairAll, "All", "Alle"},
    {Say::PairFront, "Front", "Voor"},
    {Say::PairRear, "Rear", "Achter"},
    {Say::PairCentre, "Centre and bass", "Midden en bas"},
    {Say::PairRear2, "Second rear", "Tweede achter"},
    {Say::DeviceMissing, "Device %1 (not there)", "Apparaat %1 (afwezig)"},
    {Say::Window, "Window", "Venster"},
    {Say::Language, "Language", "Taal"},
    {Say::LanguageTip, "Language of the window", "Taal van het venster"},
    {Say::Skin, "Colours", "Kleuren"},
    {Say::SkinTip, "Dark for the evening, light for the day", "Donker voor de avond, licht voor overdag"},
    {Say::SkinDark, "Dark", "Donker"},
    {Say::SkinLight, "Light", "Licht"},
};

}  // namespace

QString Strings::operator()(Say number) const {
  const auto* row = std::lower_bound(std::begin(kRows), std::end(kRows), number,
                                     [](const Row& a, Say b) { return a.number < b; });
  if (row == std::end(kRows) || row->number != number) return {};
  return QString::fromUtf8(language_ == Language::Dutch ? row->dutch : row->english);
}

std::span<const Strings::Row> Strings::Table() {
  return kRows;
}

}  // namespace ui
