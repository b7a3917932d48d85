// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/Strings.h"

#include <algorithm>
#include <cassert>
#include <string>
#include <vector>

#include "support/Sentences.h"
#include "ui/strings/BankWords.h"
#include "ui/strings/ConsoleWords.h"
#include "ui/strings/EditorWords.h"
#include "ui/strings/EveningWords.h"
#include "ui/strings/FileWords.h"
#include "ui/strings/ListWords.h"
#include "ui/strings/LyricWords.h"
#include "ui/strings/OrganWords.h"
#include "ui/strings/ScanWords.h"
#include "ui/strings/SongWords.h"
#include "ui/strings/ToolWords.h"

namespace ui {
namespace {

// In the order of the numbers, which the look-up relies on.
constexpr Strings::Row kRows[] = {
    {Say::Caption, "workstation", "werkplek"},

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
    {Say::OverviewTip,
     "The whole track: click or drag to go to a place; Left and Right move by five seconds. While the deck "
     "plays, a double click or Shift is needed for it (see Effects)",
     "Het hele nummer: klik of sleep naar een plek; Links en Rechts verplaatsen vijf seconden. Terwijl het "
     "deck speelt, is daarvoor een dubbelklik of Shift nodig (zie Effecten)"},
    {Say::UnknownArtist, "Unknown artist", "Onbekende artiest"},
    {Say::KeyHint, "%1 (%2)", "%1 (%2)"},
    {Say::Wave, "Running wave of deck %1", "Lopende golfvorm van deck %1"},
    {Say::WaveTip,
     "What is heard now and next: drag it to go to another place; while the deck plays, with a double click "
     "or Shift",
     "Wat nu en straks klinkt: sleep om naar een andere plek te gaan; terwijl het deck speelt, met een "
     "dubbelklik of Shift"},

    {Say::Volume, "Volume of deck %1", "Volume van deck %1"},
    {Say::VolumeTip, "Volume of the deck; drag anywhere on the fader",
     "Volume van het deck; sleep ergens op de schuif"},
    {Say::Level, "Level of deck %1", "Niveau van deck %1"},
    {Say::LevelTip,
     "Level of the deck in dB, left and right, before its fader; the mark on top stays lit after an "
     "overload, "
     "a click or Space clears it",
     "Niveau van het deck in dB, links en rechts, vóór de schuif; de markering bovenaan blijft branden na "
     "oversturing, een klik of Spatie wist haar"},
    {Say::Cue, "Listen %1", "Luister %1"},
    {Say::CueName, "Deck %1 in the headphones", "Deck %1 in de hoofdtelefoon"},
    {Say::CueTip,
     "Hear the deck in the headphones; drag sideways or use the arrow keys for the level; each start of the "
     "deck switches it off",
     "Het deck in de hoofdtelefoon horen; sleep opzij of gebruik de pijltoetsen voor het niveau; elke start "
     "van het deck schakelt het uit"},
    {Say::CueNoDevice, "Choose a device for the headphones under Settings first",
     "Kies eerst een apparaat voor de hoofdtelefoon bij Instellingen"},
    {Say::Crossfader, "Crossfader", "Crossfader"},
    {Say::CrossfaderTip, "Fades between the decks (Ctrl+Left, Ctrl+Right); double-click: middle",
     "Mengt tussen de decks (Ctrl+Links, Ctrl+Rechts); dubbelklik: midden"},
    {Say::Curve, "Crossfader curve", "Verloop van de crossfader"},
    {Say::CurveTip, "How the crossfader fades", "Hoe de crossfader mengt"},
    {Say::CurveSmooth, "Smooth", "Vloeiend"},
    {Say::CurveCut, "Cut", "Scherp"},
    {Say::CurvePower, "Constant power", "Gelijk vermogen"},
    {Say::MainVolume, "Main volume", "Mastervolume"},
    {Say::MainVolumeHead, "Main", "Master"},
    {Say::MainVolumeTip, "Volume of the whole system", "Volume van het hele systeem"},
    {Say::MainVolumeNone, "This system has no volume that can be set here",
     "Dit systeem heeft geen volume dat hier te regelen is"},

    {Say::Music, "Music", "Muziek"},
    {Say::MusicTip, "The catalogue and the playlists of the decks",
     "De catalogus en de afspeellijsten van de decks"},
    {Say::Tracks, "%1 {track|tracks}", "%1 {nummer|nummers}"},
    {Say::Catalogue, "Catalogue", "Catalogus"},
    {Say::CatalogueTip, "Double-click or Enter: load on the free deck",
     "Dubbelklik of Enter: op het vrije deck laden"},
    {Say::AddFiles, "Files…", "Bestanden…"},
    {Say::AddFilesTip, "Add music files or folders to the catalogue; they can be dropped on it too",
     "Muziekbestanden of mappen aan de catalogus toevoegen; erop slepen kan ook"},
    {Say::AddFilesTitle, "Add music files", "Muziekbestanden toevoegen"},
    {Say::DialogAdd, "Add", "Toevoegen"},
    {Say::DialogCancel, "Cancel", "Annuleren"},
    {Say::DialogLookIn, "Folder:", "Map:"},
    {Say::DialogName, "File name:", "Bestandsnaam:"},
    {Say::DialogKind, "Kind of file:", "Bestandstype:"},
    {Say::MusicFiles, "Music files", "Muziekbestanden"},
    {Say::AllFiles, "All files", "Alle bestanden"},
    {Say::AddingFiles, "Adding files: %1 of %2…", "Bestanden toevoegen: %1 van %2…"},
    {Say::Added, "%1 {track|tracks} added.", "%1 {nummer|nummers} toegevoegd."},
    {Say::AddedNone, "No track added.", "Geen nummer toegevoegd."},
    {Say::AlreadyThere, "%1 {was|were} in the list already.", "%1 {stond|stonden} al in de lijst."},
    {Say::LeftOut, "%1 {file was|files were} left out:", "%1 {bestand is|bestanden zijn} overgeslagen:"},
    {Say::Close, "Close", "Sluiten"},
    {Say::CloseTip, "Close this list", "Deze lijst sluiten"},
    {Say::EmptyCatalogue, "The catalogue is empty.\nDrop music files or folders here, or choose “Add”.",
     "De catalogus is leeg.\nSleep muziekbestanden of mappen hierheen of kies “Toevoegen”."},
    {Say::OnDeck, "On deck %1", "Op deck %1"},
    {Say::LoadOn, "To deck %1", "Op deck %1"},
    {Say::LoadOnTip, "Load the chosen track on deck %1", "Het gekozen nummer op deck %1 laden"},
    {Say::DeleteTracksName, "Delete tracks and their files", "Nummers en hun bestanden verwijderen"},

    {Say::ColumnDeck, "Deck", "Deck"},
    {Say::ColumnArtist, "Artist", "Artiest"},
    {Say::ColumnTitle, "Title", "Titel"},
    {Say::ColumnTime, "Time", "Duur"},
    {Say::ColumnBpm, "BPM", "BPM"},
    {Say::ColumnGenre, "Genre", "Genre"},
    {Say::ColumnAlbum, "Album", "Album"},
    {Say::ColumnYear, "Year", "Jaar"},
    {Say::ColumnOrigin, "Origin", "Herkomst"},

    {Say::DeckIsPlaying, "Deck %1 is playing. Pause or stop it before you load another track on it.",
     "Deck %1 speelt. Pauzeer of stop het voordat u er een ander nummer op laadt."},
    {Say::BothDecksPlay, "Both decks are playing. Pause or stop one before you load another track.",
     "Beide decks spelen. Pauzeer of stop er een voordat u een ander nummer laadt."},
    {Say::NoRowChosen, "No track is chosen.", "Er is geen nummer gekozen."},
    {Say::PutIntoPlaylist, "%1 {track|tracks} put into playlist %2.",
     "%1 {nummer|nummers} in afspeellijst %2 gezet."},

    {Say::AskDelete, "Delete %1 tracks?\n\nTheir files are deleted from the disk. This cannot be undone.",
     "%1 nummers verwijderen?\n\nHun bestanden worden van de schijf verwijderd. Dit kan niet ongedaan worden "
     "gemaakt."},
    {Say::AskDeleteOne,
     "Delete this track?\n\n%1\n\nThe file is deleted from the disk. This cannot be undone.",
     "Dit nummer verwijderen?\n\n%1\n\nHet bestand wordt van de schijf verwijderd. Dit kan niet ongedaan "
     "worden "
     "gemaakt."},
    {Say::AskDeleteSongs,
     "Delete %1 karaoke songs?\n\nTheir files are deleted from the disk, with the sound and the disc image "
     "that belong to them. This cannot be undone.",
     "%1 karaokenummers verwijderen?\n\nHun bestanden worden van de schijf verwijderd, met het geluid en het "
     "beeld dat erbij hoort. Dit kan niet ongedaan worden gemaakt."},
    {Say::AskDeleteSong,
     "Delete this karaoke song?\n\n%1\n\nThe file is deleted from the disk, with the sound and the disc "
     "image that belong to it. This cannot be undone.",
     "Dit karaokenummer verwijderen?\n\n%1\n\nHet bestand wordt van de schijf verwijderd, met het geluid en "
     "het beeld dat erbij hoort. Dit kan niet ongedaan worden gemaakt."},
    {Say::DeleteFiles, "Delete files", "Bestanden verwijderen"},
    {Say::DeleteFile, "Delete file", "Bestand verwijderen"},
    {Say::Deleted, "%1 {track|tracks} deleted.", "%1 {nummer|nummers} verwijderd."},
    {Say::NotDeleted,
     "%1 {file was|files were} not deleted:", "%1 {bestand is|bestanden zijn} niet verwijderd:"},

    {Say::Playlist, "Playlist %1", "Afspeellijst %1"},
    {Say::PlaylistTip,
     "Drag tracks in, out and about; Delete removes them from the list; Enter loads on the free deck",
     "Sleep nummers erin, eruit en heen en weer; Delete haalt ze van de lijst; Enter laadt op het vrije "
     "deck"},
    {Say::EmptyPlaylist, "Drag tracks, files, folders or playlists here.",
     "Sleep nummers, bestanden, mappen of afspeellijsten hierheen."},
    {Say::RemoveRows, "Remove", "Weghalen"},
    {Say::RemoveRowsName, "Remove the chosen tracks from playlist %1",
     "De gekozen nummers van afspeellijst %1 halen"},
    {Say::RemoveRowsTip, "Remove the chosen tracks from the list; their files stay (Delete)",
     "De gekozen nummers van de lijst halen; hun bestanden blijven (Delete)"},
    {Say::Playlist3, "Playlist 3", "Afspeellijst 3"},
    {Say::Playlist3Tip, "The list of music for breaks; tracks can be dropped on this button",
     "De lijst met muziek voor pauzes; nummers kunnen op deze knop worden gesleept"},

    {Say::Karaoke, "Karaoke", "Karaoke"},
    {Say::KaraokePageTip, "The karaoke songs", "De karaokenummers"},
    {Say::KaraokeTip, "The karaoke songs; Delete takes them off the list, their files stay",
     "De karaokenummers; Delete haalt ze van de lijst, hun bestanden blijven"},
    {Say::EmptyKaraoke,
     "There are no karaoke songs. Drop some here, or choose “Scan the folder for karaoke” under Settings.",
     "Er zijn geen karaokenummers. Sleep ze hierheen, of kies “De map op karaoke doorzoeken” bij "
     "Instellingen."},
    {Say::Songs, "%1 {song|songs}", "%1 {nummer|nummers}"},
    {Say::DeleteKaraokeName, "Delete karaoke songs and their files",
     "Karaokenummers en hun bestanden verwijderen"},

    {Say::Console, "Light console", "Lichttafel"},
    {Say::ConsoleTip, "The light console", "De lichttafel"},
    {Say::Organ, "Light organ", "Lichtorgel"},
    {Say::OrganTip, "The light organ", "Het lichtorgel"},
    {Say::Effects, "Effects", "Effecten"},
    {Say::EffectsTip, "Equaliser, presets and mixing", "Equalizer, voorinstellingen en mengen"},
    {Say::Recording, "Recording", "Opnemen"},
    {Say::RecordingTip, "Recording the evening", "De avond opnemen"},
    {Say::RecordingLater, "This version does not record yet.", "Deze versie neemt nog niet op."},

    {Say::HelpCaption, "dj TOLVEN manual", "dj TOLVEN handleiding"},
    {Say::HelpTip, "The manual (Escape closes it)", "De handleiding (Escape sluit haar)"},
    {Say::HelpMissing, "The manual is not there: %1", "De handleiding is er niet: %1"},
    {Say::HelpFolder, ".", "nl"},

    {Say::Settings, "Settings", "Instellingen"},
    {Say::SettingsTip, "Outputs, folders, language and colours", "Uitgangen, mappen, taal en kleuren"},
    {Say::Outputs, "Sound outputs", "Geluidsuitgangen"},
    {Say::OutputsHint, "A choice acts at once and is kept, also while music plays.",
     "Een keuze werkt meteen en blijft bewaard, ook terwijl er muziek speelt."},
    {Say::PriorityRealTime, "The system runs the sound before all other programs.",
     "Het systeem laat het geluid voor alle andere programma's gaan."},
    {Say::PriorityRaised,
     "The system runs the sound before most programs, but not in real time: it may drop out while the "
     "computer is "
     "busy. Install the package rtkit, then start dj TOLVEN again.",
     "Het systeem laat het geluid voor de meeste programma's gaan, maar niet in real time: het kan haperen "
     "als de "
     "computer het druk heeft. Installeer het pakket rtkit en start dj TOLVEN opnieuw."},
    {Say::PriorityNormal,
     "The system does not run the sound before other programs: it may drop out while the computer is busy. "
     "Install "
     "the package rtkit, then start dj TOLVEN again.",
     "Het systeem laat het geluid niet voor andere programma's gaan: het kan haperen als de computer het "
     "druk "
     "heeft. Installeer het pakket rtkit en start dj TOLVEN opnieuw."},
    {Say::OutputDeck, "Deck %1", "Deck %1"},
    {Say::OutputHeadphones, "Headphones", "Hoofdtelefoon"},
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

    {Say::Collection, "Collection and help", "Verzameling en hulp"},
    {Say::ReindexMusic, "Scan the folder for music", "De map op muziek doorzoeken"},
    {Say::ReindexMusicTip, "The catalogue becomes what the folder and all folders in it hold",
     "De catalogus wordt wat er in de map en alle mappen daarin staat"},
    {Say::ReindexKaraoke, "Scan the folder for karaoke", "De map op karaoke doorzoeken"},
    {Say::ReindexKaraokeTip, "The karaoke songs become what the folder and all folders in it hold",
     "De karaokenummers worden wat er in de map en alle mappen daarin staat"},
    {Say::ChooseDirectory, "Choose the music folder…", "De muziekmap kiezen…"},
    {Say::ChooseDirectoryTip, "Choose another folder and keep it as that of the music",
     "Een andere map kiezen en als muziekmap bewaren"},
    {Say::KeepColours, "Keep the channel colours", "De kanaalkleuren bewaren"},
    {Say::KeepColoursTip, "Keep the colours of the light console's channels as they are shown here",
     "De kleuren van de kanalen van de lichttafel bewaren zoals ze hier staan"},
    {Say::OpenHelp, "Open the manual", "De handleiding openen"},
    {Say::OpenHelpTip, "Open the manual at its introduction (F12)",
     "De handleiding bij de inleiding openen (F12)"},
    {Say::Folder, "Folder", "Map"},
    {Say::FolderTip, "The folder that is scanned", "De map die wordt doorzocht"},
    {Say::Apply, "Apply", "Uitvoeren"},
    {Say::ApplyTip, "Do what is chosen above", "Doen wat hierboven is gekozen"},
    {Say::CancelScan, "Cancel", "Afbreken"},
    {Say::CancelScanTip, "Stop the scan; the tables stay as they were",
     "Het doorzoeken stoppen; de tabellen blijven zoals ze waren"},
    {Say::ScanListing, "Looking for files…", "Bestanden zoeken…"},
    {Say::ScanGoes, "Reading files: %1 of %2…", "Bestanden lezen: %1 van %2…"},
    {Say::ScanFound, "%1 found.", "%1 gevonden."},
    {Say::ScanChangedNothing, "Nothing was changed.", "Er is niets veranderd."},
    {Say::ColoursKept, "The colours are kept.", "De kleuren zijn bewaard."},
    {Say::DialogChoose, "Choose", "Kiezen"},

    {Say::ChannelColours, "Channel colours", "Kanaalkleuren"},
    {Say::Channels, "%1 channels", "%1 kanalen"},
    {Say::ConsoleSize, "Channels of the light console", "Kanalen van de lichttafel"},
    {Say::ConsoleSizeTip, "How many channels the light console has", "Hoeveel kanalen de lichttafel heeft"},
    {Say::ColourOf, "Colour of channel %1", "Kleur van kanaal %1"},
    {Say::ColourTip, "Choose another colour; “Keep the channel colours” keeps it",
     "Een andere kleur kiezen; “De kanaalkleuren bewaren” bewaart haar"},

    {Say::Visualiser, "Visualiser", "Visualisatie"},
    {Say::VisualiserTip, "What is drawn of the music beside this list",
     "Wat er naast deze lijst van de muziek wordt getekend"},
    {Say::VisualNone, "No picture", "Geen beeld"},
    {Say::VisualSpectrum, "Spectrum", "Spectrum"},
    {Say::VisualWave, "Wave", "Golf"},
    {Say::Visual, "Picture of the music", "Beeld van de muziek"},
    {Say::VisualTip, "The loudest deck or song as it is heard now, in the deck's colour",
     "Het luidste deck of nummer zoals het nu klinkt, in de kleur van het deck"},
    {Say::VisualRate, "Pictures a second", "Beelden per seconde"},
    {Say::VisualRateTip, "How often the picture is drawn: fewer spare an old computer",
     "Hoe vaak het beeld wordt getekend: minder spaart een oude computer"},
};

}  // namespace

const char* Strings::Find(int number) const {
  for (const auto table : Tables()) {
    const auto row = std::lower_bound(table.begin(), table.end(), number,
                                      [](const Row& a, int b) { return a.number < b; });
    if (row == table.end() || row->number != number) continue;
    return language_ == Language::Dutch ? row->dutch : row->english;
  }
  return "";
}

QString Strings::Text(int number) const {
  const char* const text = Find(number);
  assert(std::string_view(text).find('{') == std::string_view::npos && "this text takes a number");
  return QString::fromUtf8(text);
}

QString Strings::Counted(int number, std::initializer_list<qint64> counts) const {
  std::vector<std::string> parts;
  for (const qint64 count : counts) parts.push_back(std::to_string(count));
  const std::string chosen = support::ChooseForms(Find(number), [&parts](std::size_t place) {
    return place < parts.size() ? std::string_view(parts[place]) : std::string_view();
  });
  QString text = QString::fromUtf8(chosen.data(), static_cast<qsizetype>(chosen.size()));
  for (const std::string& part : parts) text = text.arg(QString::fromStdString(part));
  return text;
}

std::array<std::span<const Strings::Row>, 12> Strings::Tables() {
  return {kRows,       BankWords(),  EveningWords(), LyricWords(),   ToolWords(),   ListWords(),
          ScanWords(), OrganWords(), SongWords(),    ConsoleWords(), EditorWords(), FileWords()};
}

}  // namespace ui
