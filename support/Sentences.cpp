// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Sentences.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <utility>

namespace support {
namespace {

struct Row {
  Sentence sentence;
  std::string_view english;
  std::string_view dutch;
};

constexpr Row kRows[] = {
    {Sentence::OutputNotConnected, "The sound output \"%1\" is not connected.",
     "De geluidsuitgang \"%1\" is niet aangesloten."},
    {Sentence::OutputCannotOpen,
     "The sound output \"%1\" cannot be opened. Close the program that uses it, or choose another output "
     "under Settings.",
     "De geluidsuitgang \"%1\" kan niet worden geopend. Sluit het programma dat haar gebruikt of kies een "
     "andere uitgang bij Instellingen."},
    {Sentence::NoOutputs,
     "No sound output was found: the decks run without sound. Connect one and choose it under Settings.",
     "Er is geen geluidsuitgang gevonden: de decks lopen zonder geluid. Sluit er een aan en kies haar bij "
     "Instellingen."},
    {Sentence::NoSound, "no sound", "geen geluid"},
    {Sentence::OutputNumber, "There is no sound output number %1 now. Choose another one under Settings.",
     "Er is nu geen geluidsuitgang nummer %1. Kies een andere bij Instellingen."},
    {Sentence::CatalogueDamaged,
     "%1 damaged {row|rows} of the catalogue {was|were} left out; its file is kept under a number when it is "
     "saved next.",
     "%1 beschadigde {rij|rijen} van de catalogus {is|zijn} weggelaten; het bestand blijft onder een nummer "
     "bewaard als de catalogus weer wordt opgeslagen."},
    {Sentence::KaraokeDamaged, "%1 damaged {row|rows} of the karaoke catalogue {was|were} left out.",
     "%1 beschadigde {rij|rijen} van de karaokecatalogus {is|zijn} weggelaten."},
    {Sentence::FolderReadOnly,
     "The program folder cannot be written to; changes last until the end of this run.",
     "In de programmamap kan niet worden geschreven; wijzigingen gelden tot het einde van deze sessie."},
    {Sentence::FileNotDeleted, "\"%1\" could not be deleted.", "\"%1\" kon niet worden verwijderd."},
    {Sentence::FolderMissing, "There is no folder \"%1\".", "Er is geen map \"%1\"."},
    {Sentence::FilesLeftOut, "%1 {file was|files were} left out, because {it|they} cannot be played.",
     "%1 {bestand is|bestanden zijn} weggelaten, omdat {het|ze} niet {kan|kunnen} worden afgespeeld."},
    {Sentence::TemposTooFarApart, "The tempos lie more than %1 percent apart; the deck plays on by itself.",
     "De tempo's liggen meer dan %1 procent uit elkaar; het deck speelt zelfstandig verder."},
    {Sentence::TempoUnknown, "Both decks need a file whose tempo is known.",
     "Beide decks hebben een bestand nodig waarvan het tempo bekend is."},

    {Sentence::PresetsUnreadable, "The equaliser's presets cannot be read: %1",
     "De voorinstellingen van de equalizer kunnen niet worden gelezen: %1"},
    {Sentence::PresetNotSaved, "The preset \"%1\" could not be saved: %2",
     "De voorinstelling \"%1\" kon niet worden bewaard: %2"},
    {Sentence::PresetNotDeleted, "The preset \"%1\" could not be deleted: %2",
     "De voorinstelling \"%1\" kon niet worden verwijderd: %2"},
    {Sentence::PresetNeedsName, "A preset needs a name of one line.",
     "Een voorinstelling heeft een naam van één regel nodig."},
    {Sentence::FileNotAnalysed, "%1 was left out: it is not there, or holds no sound that can be read.",
     "%1 is overgeslagen: het is er niet, of bevat geen leesbaar geluid."},
    {Sentence::FileNotThere,
     "\"%1\" is not there now, so nothing was deleted and its row stays. \"Remove from list\" takes it out.",
     "\"%1\" is er nu niet, dus er is niets verwijderd en de rij blijft. \"Van de lijst halen\" haalt haar "
     "weg."},
    {Sentence::FolderWentAway, "The folder \"%1\" went away; what was found until then is added.",
     "De map \"%1\" verdween; wat tot dan gevonden was, is toegevoegd."},
    {Sentence::AddingWentOn, "%1 {row was|rows were} added of what was left to add when the program closed.",
     "%1 {rij is|rijen zijn} toegevoegd van wat nog moest toen het programma werd gesloten."},
    {Sentence::EveningGoesOn, "The program had ended unexpectedly; the evening goes on where it was.",
     "Het programma was onverwacht gestopt; de avond gaat verder waar hij was."},
    {Sentence::JournalDamaged,
     "What played when the program ended cannot be read, so nothing goes on by itself.",
     "Wat er speelde toen het programma stopte, kan niet worden gelezen; er gaat dus niets vanzelf verder."},
    {Sentence::JournalNotKept, "What plays cannot be kept for after a power cut: %1",
     "Wat er speelt kan niet worden bewaard voor na een stroomstoring: %1"},
    {Sentence::FileFellTwice,
     "\"%1\" was left out: the program has fallen twice just after it had begun with it.",
     "\"%1\" is overgeslagen: het programma is twee keer uitgevallen vlak nadat het ermee was begonnen."},
    {Sentence::NothingGoesOn,
     "The program has fallen several times just after its start, so nothing goes on by itself.",
     "Het programma is meermaals vlak na het starten uitgevallen; er gaat dus niets vanzelf verder."},
    {Sentence::FileDoesNotGoOn, "\"%1\" does not go on: %2", "\"%1\" gaat niet verder: %2"},
    {Sentence::RunsElsewhere, "dj TOLVEN runs on this folder already, started by %1. Only one can.",
     "dj TOLVEN draait al op deze map, gestart door %1. Er kan er maar één draaien."},
    {Sentence::RunsElsewhereSince,
     "dj TOLVEN runs on this folder already, started by %1 on %2. Only one can.",
     "dj TOLVEN draait al op deze map, gestart door %1 op %2. Er kan er maar één draaien."},
    {Sentence::RunsAndIsSilent,
     "dj TOLVEN runs on this folder already, but its window does not answer. Only one can run.",
     "dj TOLVEN draait al op deze map, maar het venster antwoordt niet. Er kan er maar één draaien."},
    {Sentence::AnotherUser, "another user", "een andere gebruiker"},
    {Sentence::PlaylistIsPathList,
     "\"%1\" is no playlist of this program but a list of paths: give it the ending .m3u, then it opens.",
     "\"%1\" is geen afspeellijst van dit programma maar een lijst met paden: geef haar de extensie .m3u, "
     "dan "
     "gaat ze open."},
    {Sentence::PlaylistLinesLeftOut,
     "%2 {2:line|lines} of \"%1\" {2:was|were} left out, because {2:it is no track|they are no tracks}.",
     "%2 {2:regel|regels} van \"%1\" {2:is|zijn} weggelaten, omdat het geen {2:nummer is|nummers zijn}."},
    {Sentence::PlaylistNotSaved, "The playlist was not saved: %1", "De afspeellijst is niet bewaard: %1"},
    {Sentence::NotPlayedNext, "\"%1\" cannot be played; the next track takes its turn.",
     "\"%1\" kan niet worden afgespeeld; het volgende nummer is aan de beurt."},
    {Sentence::PlaylistDamaged, "%1 damaged {row|rows} of playlist %2 {was|were} left out.",
     "%1 beschadigde {rij|rijen} van afspeellijst %2 {is|zijn} weggelaten."},
    {Sentence::HistoryNotSaved, "The history of this evening cannot be saved: %1",
     "De geschiedenis van deze avond kan niet worden bewaard: %1"},
    {Sentence::SongNotPlayed, "\"%1\" cannot be played: %2", "\"%1\" kan niet worden gespeeld: %2"},

    {Sentence::NotSetAside,
     "\"%1\" can be neither read nor set aside, so it is not written over and nothing is saved there.",
     "\"%1\" kan niet worden gelezen en niet opzij worden gezet; er wordt dus niets overheen geschreven en "
     "daar niets bewaard."},
    {Sentence::CatalogueUnreadable,
     "The catalogue \"%1\" cannot be read; the next one that is saved sets it aside under a number.",
     "De catalogus \"%1\" kan niet worden gelezen; de volgende die wordt bewaard zet hem onder een nummer "
     "opzij."},
    {Sentence::KaraokeUnreadable,
     "The karaoke catalogue \"%1\" cannot be read; the next one that is saved sets it aside under a number.",
     "De karaokecatalogus \"%1\" kan niet worden gelezen; de volgende die wordt bewaard zet hem onder een "
     "nummer opzij."},
    {Sentence::ListUnreadable,
     "Playlist %1 cannot be read; the next one that is saved sets its file aside under a number.",
     "Afspeellijst %1 kan niet worden gelezen; de volgende die wordt bewaard zet haar bestand onder een "
     "nummer opzij."},
    {Sentence::RowsToGo,
     "The list has %1 {row|rows} and the scan found %2 {2:file|files}. %3 {3:row has a file that is|rows "
     "have "
     "files that are} not there any more, first \"%4\". Take {3:this row|these rows} out? What was found "
     "about "
     "{3:its file|their files} is kept.",
     "De lijst heeft %1 {rij|rijen} en de scan vond %2 {2:bestand|bestanden}. Van %3 {3:rij is het "
     "bestand|rijen "
     "zijn de bestanden} er niet meer, als eerste \"%4\". {3:Deze rij|Deze rijen} verwijderen? Wat over "
     "{3:haar bestand|hun bestanden} gevonden is blijft bewaard."},
    {Sentence::TakeRowsOut, "Take out %1 {row|rows}", "%1 {rij|rijen} verwijderen"},
    {Sentence::KeepRows, "Keep them", "Laten staan"},
    {Sentence::RowsStay,
     "The folder \"%1\" is not there or holds nothing now; its %2 {2:row stays|rows stay}.",
     "De map \"%1\" is er niet of is nu leeg; haar %2 {2:rij blijft|rijen blijven} staan."},
    {Sentence::RowsKept, "%1 {row stays though its file is|rows stay though their files are} not there.",
     "%1 {rij blijft staan hoewel haar bestand er niet is|rijen blijven staan hoewel hun bestanden er niet "
     "zijn}."},

    {Sentence::KaraokeSongInMusic,
     "\"%1\" is a MIDI karaoke song, which has no place in the music catalogue.",
     "\"%1\" is een MIDI-karaokenummer, dat niet in de muziekcatalogus hoort."},
    {Sentence::IndexMissing, "There is no index \"%1\".", "Er is geen index \"%1\"."},
    {Sentence::IndexUnreadable, "The index \"%1\" cannot be read.",
     "De index \"%1\" kan niet worden gelezen."},
    {Sentence::FolderUnreadable, "The folder \"%1\" cannot be read.",
     "De map \"%1\" kan niet worden gelezen."},
    {Sentence::FolderLost,
     "The folder \"%1\" went away during the scan. The catalogue stays as it was; scan again when it is "
     "back.",
     "De map \"%1\" verdween tijdens het scannen. De catalogus blijft zoals hij was; scan opnieuw als ze "
     "terug "
     "is."},
    {Sentence::FoldersLeftOut,
     "%1 {folder|folders} cannot be read and {was left out: |were left out, first }\"%2\".",
     "%1 {map kan|mappen kunnen} niet worden gelezen en {is weggelaten: |zijn weggelaten, als eerste "
     "}\"%2\"."},
    {Sentence::RowsGone,
     "%1 {row was|rows were} taken out, because {its file is|their files are} no longer there.",
     "%1 {rij is|rijen zijn} verwijderd, omdat {haar bestand er niet meer is|hun bestanden er niet meer "
     "zijn}."},
    {Sentence::FilesMoved, "%1 {file was|files were} found again in another folder.",
     "%1 {bestand is|bestanden zijn} teruggevonden in een andere map."},
    {Sentence::FilesMissing,
     "%1 {file of the catalogue is not there: |files of the catalogue are not there, first }\"%2\". Connect "
     "{its|their} disk, or scan the folder {it is|they are} in now.",
     "%1 {bestand van de catalogus is er niet: |bestanden van de catalogus zijn er niet, als eerste }\"%2\". "
     "Sluit {zijn|hun} schijf aan of scan de map waar {het nu staat|ze nu staan}."},
    {Sentence::NoSongInFile, "%1 is no MIDI song that can be read.", "%1 is geen leesbaar MIDI-nummer."},

    {Sentence::IndexTooLong, "\"%1\" is too long for an index: more than %2 MB.",
     "\"%1\" is te lang voor een index: meer dan %2 MB."},
    {Sentence::PlaylistUnreadable, "The playlist \"%1\" cannot be read.",
     "De afspeellijst \"%1\" kan niet worden gelezen."},

    {Sentence::FixtureFileEmpty, "The fixture file is empty.", "Het armatuurbestand is leeg."},
    {Sentence::ShowFileEmpty, "The show file is empty.", "Het showbestand is leeg."},
    {Sentence::LightFileMissing, "\"%1\" is not there.", "\"%1\" is er niet."},
    {Sentence::LightFileUnreadable, "\"%1\" cannot be read.", "\"%1\" kan niet worden gelezen."},
    {Sentence::LightFileTooLong, "\"%1\" is too long to be read.", "\"%1\" is te lang om te lezen."},
    {Sentence::NumberBounded, "Line %1: %2 was changed to %3.", "Regel %1: %2 is veranderd in %3."},
    {Sentence::NumberNotWhole, "Line %1: %2 should be a whole number, but \"%3\" is none.",
     "Regel %1: %2 moet een geheel getal zijn, maar \"%3\" is dat niet."},
    {Sentence::MoreNotes, "And %1 more of this kind.", "En nog %1 van deze soort."},
    {Sentence::LevelBounded, "A level of %1 was changed to %2.", "Een niveau van %1 is veranderd in %2."},
    {Sentence::FixtureLeftDark,
     "The file of \"%1\" cannot be read; its channels get the levels that the show has for them: %2",
     "Het bestand van \"%1\" kan niet worden gelezen; de kanalen krijgen de niveaus die de show ervoor "
     "heeft: "
     "%2"},
    {Sentence::FixtureEndsEarly, "\"%1\" ends early.", "\"%1\" houdt te vroeg op."},
    {Sentence::ShowTooLong, "The show has too many steps to be played.",
     "De show heeft te veel stappen om te worden afgespeeld."},
    {Sentence::TheEffect, "The effect", "Het effect"},
    {Sentence::ThePicture, "The picture", "Het plaatje"},
    {Sentence::TheStartLevel, "The start level", "Het beginniveau"},
    {Sentence::TheEndLevel, "The end level", "Het eindniveau"},
    {Sentence::TheFunction, "The function", "De functie"},
    {Sentence::ThePresetCount, "The number of presets", "Het aantal voorinstellingen"},
    {Sentence::TheType, "The type", "Het type"},
    {Sentence::TheTiltAngle, "The tilt angle", "De tilthoek"},
    {Sentence::ThePanAngle, "The pan angle", "De panhoek"},
    {Sentence::TheBeamAngle, "The beam angle", "De bundelhoek"},
    {Sentence::TheChannelCount, "The number of channels", "Het aantal kanalen"},
    {Sentence::TheLevel, "The level", "Het niveau"},
    {Sentence::TheDifference, "The difference", "Het verschil"},
    {Sentence::ThePreviousLevel, "The previous level", "Het vorige niveau"},
    {Sentence::TheLoops, "The number of loops", "Het aantal herhalingen"},
    {Sentence::TheStepCount, "The number of steps", "Het aantal stappen"},
    {Sentence::TheStartChannel, "The start channel", "Het startkanaal"},
    {Sentence::TheFixtureNumber, "The fixture's number", "Het nummer van de armatuur"},
    {Sentence::TheFixtureCount, "The number of fixtures", "Het aantal armaturen"},
    {Sentence::TheSceneCount, "The number of scenes", "Het aantal scènes"},
    {Sentence::FixtureSetAside,
     "\"%1\" is out of the show and gets no light. Its place and its levels are kept and saved with the "
     "show.",
     "\"%1\" staat buiten de show en krijgt geen licht. Plaats en niveaus blijven bewaard en worden met de "
     "show "
     "opgeslagen."},
    {Sentence::FixtureHasGrown,
     "The show has levels for %2 channels of \"%1\", whose file now describes %3. The further ones get no "
     "light "
     "until the show is repaired in the show editor.",
     "De show heeft niveaus voor %2 kanalen van \"%1\", waarvan het bestand er nu %3 beschrijft. De overige "
     "krijgen geen licht tot de show in de showeditor hersteld is."},
    {Sentence::FixtureHasShrunk,
     "The show has levels for %2 channels of \"%1\", whose file now describes only %3. Those of the last "
     "ones are "
     "kept, and sent nowhere until the show is repaired in the show editor.",
     "De show heeft niveaus voor %2 kanalen van \"%1\", waarvan het bestand er nu nog maar %3 beschrijft. "
     "Die van "
     "de laatste blijven bewaard en gaan nergens heen tot de show in de showeditor hersteld is."},

    {Sentence::NoIoBoard,
     "No IO board could be opened. Connect it and its power supply, then switch the boards off and on again. "
     "The light organ runs on without it.",
     "Er kon geen IO-kaart worden geopend. Sluit haar en haar voeding aan en zet de kaarten dan uit en weer "
     "aan. Het lichtorgel loopt zonder kaart verder."},
    {Sentence::OrganFileNotSaved, "\"%1\" could not be saved: %2", "\"%1\" kon niet worden bewaard: %2"},
    {Sentence::OrganFileUnreadable, "\"%1\" cannot be read.", "\"%1\" kan niet worden gelezen."},
    {Sentence::NotMidi, "This is not a MIDI file.", "Dit is geen MIDI-bestand."},
    {Sentence::MidiWithoutTicks, "The MIDI file does not say how long its ticks are.",
     "Het MIDI-bestand vermeldt niet hoe lang zijn tikken duren."},
    {Sentence::MidiTooLong, "The MIDI file is too long to be played.",
     "Het MIDI-bestand is te lang om te worden gespeeld."},
    {Sentence::SongMissing, "\"%1\" is not there.", "\"%1\" is er niet."},
    {Sentence::SongUnreadable, "\"%1\" cannot be read.", "\"%1\" kan niet worden gelezen."},
    {Sentence::SongEmpty, "\"%1\" is empty.", "\"%1\" is leeg."},
    {Sentence::SongTooLong, "\"%1\" is too long for a song.", "\"%1\" is te lang voor een nummer."},
    {Sentence::DiscImageMissing, "There is no disc image beside %1.", "Er is geen schijfbeeld bij %1."},
    {Sentence::DiscImageTooLong, "%1 is too long for a disc image.", "%1 is te lang voor een schijfbeeld."},
    {Sentence::DiscImageWithoutGraphics, "The disc image of %1 holds no graphics.",
     "Het schijfbeeld van %1 bevat geen beeld."},
    {Sentence::WordsInNoTrack, "The MIDI file has words that belong to no track.",
     "Het MIDI-bestand heeft woorden die bij geen spoor horen."},
    {Sentence::NoWords, "This song brings no words for the singers.",
     "Dit nummer heeft geen woorden voor de zangers."},

    {Sentence::UnplayableFormat, "%1 has a sample rate or a number of channels that cannot be played.",
     "%1 heeft een bemonsteringsfrequentie of een aantal kanalen dat niet kan worden afgespeeld."},
    {Sentence::NoMemoryForFile, "There is no memory left for the whole file.",
     "Er is geen geheugen meer voor het hele bestand."},
    {Sentence::HoldsNoSound, "%1 holds no sound.", "%1 bevat geen geluid."},
    {Sentence::OutputBusy, "This sound output cannot be opened now.",
     "Deze geluidsuitgang kan nu niet worden geopend."},
    {Sentence::OutputNotOpen, "The sound output is not open.", "De geluidsuitgang is niet open."},
    {Sentence::TooManyStreams, "Too many files play on this sound output.",
     "Er spelen te veel bestanden op deze geluidsuitgang."},
    {Sentence::HeadphonesGone, "The headphone output %1 is gone; pre-listening is silent until it is back.",
     "De hoofdtelefoonuitgang %1 is weg; voorbeluisteren blijft stil tot hij terug is."},
    {Sentence::OutputGone, "The sound output %1 is gone; another one is being looked for.",
     "De geluidsuitgang %1 is weg; er wordt een andere gezocht."},
    {Sentence::HeadphonesBack, "The headphone output %1 is back.", "De hoofdtelefoonuitgang %1 is terug."},
    {Sentence::PlayingGoesOn, "Playing goes on through %1.", "Het afspelen gaat verder via %1."},
    {Sentence::OutputCanReturn, "The sound output %1 is back; playing can be moved back to it.",
     "De geluidsuitgang %1 is er weer; het spelen kan ernaar terug."},
    {Sentence::OutputMovedByHand, "The sound was moved by the system's mixer; playing goes on through %1.",
     "Het geluid is in de mixer van het systeem verplaatst; het spelen gaat verder via %1."},
    {Sentence::PlayingIsBack, "Playing is back on %1.", "Het spelen is terug op %1."},

    {Sentence::DiskFull, "There is no room left on the disk for %1.",
     "Er is geen ruimte meer op de schijf voor %1."},
    {Sentence::NoWriteRight, "There is no permission to write %1.",
     "Er zijn geen rechten om %1 te schrijven."},
    {Sentence::FolderOfFileMissing, "The folder of %1 does not exist.", "De map van %1 bestaat niet."},
    {Sentence::NotReplaceable, "%1 is not a file that can be replaced.",
     "%1 is geen bestand dat kan worden vervangen."},
    {Sentence::NotSaved, "%1 could not be saved: %2.", "%1 kon niet worden opgeslagen: %2."},
    {Sentence::HeldByOther, "%1 is held open by another program.",
     "%1 is in gebruik bij een ander programma."},
    {Sentence::FileMissing, "%1 was not found; it may have been moved or deleted.",
     "%1 is niet gevonden; het is misschien verplaatst of verwijderd."},
    {Sentence::FolderNotAudio, "%1 is a folder, not an audio file.", "%1 is een map, geen geluidsbestand."},
    {Sentence::DeviceNotAudio, "%1 is a device or a pipe, not an audio file.",
     "%1 is een apparaat of een pijp, geen geluidsbestand."},
    {Sentence::AccessDenied, "%1 may not be read: the system denies access to it.",
     "%1 mag niet worden gelezen: het systeem weigert de toegang."},
    {Sentence::FileUnreadable, "%1 cannot be read.", "%1 kan niet worden gelezen."},
    {Sentence::FileEmpty, "%1 is empty (0 bytes).", "%1 is leeg (0 bytes)."},
    {Sentence::OtherFormat, "%1 holds %2 audio under another name; rename it to .%3 to play it.",
     "%1 bevat %2-geluid onder een andere naam; hernoem het naar .%3 om het af te spelen."},
    {Sentence::NoMemoryToOpen, "%1 cannot be opened: there is no memory left.",
     "%1 kan niet worden geopend: er is geen geheugen meer."},
    {Sentence::DiskDoesNotAnswer, "%1 cannot be read: the disk does not answer.",
     "%1 kan niet worden gelezen: de schijf antwoordt niet."},
    {Sentence::NotAudioOrDamaged, "%1 holds no sound that can be read: it is no audio file, or damaged.",
     "%1 bevat geen leesbaar geluid: het is geen geluidsbestand of het is beschadigd."},
    {Sentence::HeaderDamaged, "%1 holds no sound that can be read: its header is damaged.",
     "%1 bevat geen leesbaar geluid: de kop is beschadigd."},
    {Sentence::UnknownSound, "%1 holds sound of a kind that is not known here (%2).",
     "%1 bevat geluid van een soort die hier niet bekend is (%2)."},
    {Sentence::TooManyChannels, "%1 has more than 8 channels.", "%1 heeft meer dan 8 kanalen."},
    {Sentence::UnplayableRate, "%1 has a sample rate that cannot be played.",
     "%1 heeft een bemonsteringsfrequentie die niet kan worden afgespeeld."},
    {Sentence::DiskStopped, "%1 cannot be read any further: the disk does not answer.",
     "%1 kan niet verder worden gelezen: de schijf antwoordt niet."},
    {Sentence::NoMemoryToReadOn, "%1 cannot be read any further: there is no memory left.",
     "%1 kan niet verder worden gelezen: er is geen geheugen meer."},
    {Sentence::NoReadableAudio, "%1 is no audio file that can be read, or it is damaged.",
     "%1 is geen leesbaar geluidsbestand, of het is beschadigd."},
    {Sentence::TagNotWritten, "The tag of %1 cannot be written.",
     "De tag van %1 kan niet worden geschreven."},
    {Sentence::TagInArchive, "%1 is a zip archive; nothing is written into it.",
     "%1 is een zip-archief; daar wordt niets in geschreven."},
    {Sentence::ArchiveDamaged, "%1 cannot be unpacked: it is no zip archive, or damaged.",
     "%1 kan niet worden uitgepakt: het is geen zip-archief of het is beschadigd."},
    {Sentence::ArchiveLocked, "%1 cannot be unpacked: it is locked by a password.",
     "%1 kan niet worden uitgepakt: er zit een wachtwoord op."},
    {Sentence::ArchivePackedOtherwise,
     "%1 cannot be unpacked: it was packed in a way that is not known here.",
     "%1 kan niet worden uitgepakt: het is gemaakt op een manier die hier niet bekend is."},
    {Sentence::ArchiveWithoutPicture, "%1 is no karaoke archive: there is no picture (.cdg) in it.",
     "%1 is geen karaoke-archief: er zit geen beeld (.cdg) in."},
    {Sentence::ArchiveWithoutSound, "%1 is no karaoke archive: there is no sound to the picture in it.",
     "%1 is geen karaoke-archief: er zit geen geluid bij het beeld in."},
    {Sentence::ArchivePartEmpty, "%1 cannot be played: %2 in it is empty (0 bytes).",
     "%1 kan niet worden afgespeeld: %2 erin is leeg (0 bytes)."},
    {Sentence::ArchivePartTooLarge, "%1 cannot be played: %2 in it would be larger than %3 MB.",
     "%1 kan niet worden afgespeeld: %2 erin zou groter zijn dan %3 MB."},
    {Sentence::NoSoundThread, "The system gives no sound thread.", "Het systeem geeft geen geluidsthread."},
    {Sentence::NoOutputNow, "There is no sound output now.", "Er is nu geen geluidsuitgang."},
    {Sentence::OutputMissing, "The sound output %1 is not there.", "De geluidsuitgang %1 is er niet."},
    {Sentence::OutputRefused, "The sound output %1 could not be opened.",
     "De geluidsuitgang %1 kon niet worden geopend."},
    {Sentence::ProgramNotStarted, "The program \"%1\" cannot be started.",
     "Het programma \"%1\" kan niet worden gestart."},
    {Sentence::ProgramNoName, "A program or one of its arguments has no usable name.",
     "Een programma of een van zijn argumenten heeft geen bruikbare naam."},
    {Sentence::NoRoomForProgram, "The system has no room to run another program.",
     "Het systeem heeft geen ruimte om nog een programma te starten."},
    {Sentence::ProgramEnded, "The program \"%1\" took too long or printed too much and was ended.",
     "Het programma \"%1\" duurde te lang of schreef te veel en is beëindigd."},
    {Sentence::SettingsUnreadable, "The settings file %1 cannot be read. It is kept as it is.",
     "Het instellingenbestand %1 kan niet worden gelezen. Het blijft zoals het is."},
    {Sentence::SettingsKeptAside, "The settings file could not be read and is kept as %1.",
     "Het instellingenbestand kon niet worden gelezen en is bewaard als %1."},
    {Sentence::SettingsNotKept, "Settings are not saved: %1 can neither be read nor kept beside.",
     "Instellingen worden niet opgeslagen: %1 kan niet worden gelezen en niet apart worden bewaard."},
    {Sentence::RegistryRefuses,
     "Settings are not saved: the registry does not take them. They hold until the end.",
     "Instellingen worden niet opgeslagen: het register neemt ze niet aan. Ze gelden tot het einde."},
    {Sentence::NoSoundfont, "No soundfont is installed, so that MIDI songs cannot sound.",
     "Er is geen soundfont geïnstalleerd, zodat MIDI-nummers niet kunnen klinken."},
    {Sentence::SynthesiserNotStarted, "The synthesiser cannot be started.",
     "De synthesizer kan niet worden gestart."},
    {Sentence::SoundfontNotUsed, "The soundfont \"%1\" cannot be used.",
     "De soundfont \"%1\" kan niet worden gebruikt."},
    {Sentence::BoxNoRights,
     "The K8062 is there, but this user may not open it; see the README on USB rights.",
     "De K8062 is er, maar deze gebruiker mag hem niet openen; zie de README over USB-rechten."},
    {Sentence::BoxDoesNotAnswer, "The K8062 does not answer (%1).", "De K8062 antwoordt niet (%1)."},
    {Sentence::UsbNotUsable, "USB cannot be used (%1).", "USB kan niet worden gebruikt (%1)."},
    {Sentence::NoBox, "No K8062 is plugged in.", "Er is geen K8062 aangesloten."},
    {Sentence::BoxLibraryOtherKind, "\"%1\" was made for another kind of processor.",
     "\"%1\" is voor een ander soort processor gemaakt."},
    {Sentence::BoxLibraryMissing, "\"%1\" is not there; it comes with the K8062.",
     "\"%1\" is er niet; het wordt met de K8062 meegeleverd."},
    {Sentence::BoxLibraryUnknown, "\"%1\" is not the library of the K8062.",
     "\"%1\" is niet de bibliotheek van de K8062."},
    {Sentence::BoardNoRights,
     "A K8061 is there, but this user may not open it; see the README on USB rights.",
     "Er is een K8061, maar deze gebruiker mag hem niet openen; zie de README over USB-rechten."},
    {Sentence::BoardDoesNotAnswer, "A K8061 does not answer (%1).", "Een K8061 antwoordt niet (%1)."},
    {Sentence::NoBoard, "No K8061 is plugged in.", "Er is geen K8061 aangesloten."},
    {Sentence::BoardNoPower, "The K8061 with address %1 is there, but its 12 V supply is off.",
     "De K8061 met adres %1 is er, maar zijn 12 V-voeding staat uit."},
    {Sentence::BoardOtherAddress,
     "A K8061 is set to address %1; its jumpers have to say 0 (outputs 1 to 8) or 1 (outputs 9 to 16).",
     "Een K8061 staat op adres %1; de jumpers moeten op 0 (uitgang 1 tot 8) of 1 (uitgang 9 tot 16) staan."},
    {Sentence::BoardsAtOneAddress,
     "Two K8061 boards are set to address %1; only one of them is used until the other's jumpers change.",
     "Twee K8061-kaarten staan op adres %1; er wordt er één gebruikt tot de jumpers van de andere anders "
     "staan."},
    {Sentence::BoardMissing, "The K8061 with address %1 is not plugged in.",
     "De K8061 met adres %1 is niet aangesloten."},
    {Sentence::BoardLibraryMissing, "\"%1\" is not there; it comes with the K8061.",
     "\"%1\" is er niet; het wordt met de K8061 meegeleverd."},
    {Sentence::BoardLibraryUnknown, "\"%1\" is not the library of the K8061.",
     "\"%1\" is niet de bibliotheek van de K8061."},
};

template <typename Parts>
std::string Fill(std::string_view rest, const Parts& parts) {
  const auto part = [&parts](std::size_t place) {
    return place < parts.size() ? std::string_view(*(parts.begin() + static_cast<std::ptrdiff_t>(place)))
                                : std::string_view();
  };
  const std::string chosen = ChooseForms(rest, part);
  rest = chosen;
  std::string text;
  while (!rest.empty()) {
    const std::size_t mark = rest.find('%');
    text += rest.substr(0, mark);
    if (mark == std::string_view::npos) break;
    rest.remove_prefix(mark + 1);
    if (!rest.empty()) text += part(static_cast<std::size_t>(rest.front() - '1'));
    rest.remove_prefix(std::min<std::size_t>(1, rest.size()));
  }
  return text;
}

}  // namespace

std::string ChooseForms(std::string_view text,
                        const std::function<std::string_view(std::size_t place)>& part) {
  std::string chosen;
  for (;;) {
    const std::size_t open = text.find('{');
    chosen += text.substr(0, open);
    if (open == std::string_view::npos) return chosen;
    text.remove_prefix(open + 1);
    const std::size_t close = text.find('}');
    std::string_view forms = text.substr(0, close);
    text.remove_prefix(close == std::string_view::npos ? text.size() : close + 1);
    std::size_t place = 0;
    if (forms.size() > 1 && forms[1] == ':') {
      place = static_cast<std::size_t>(forms.front() - '1');
      forms.remove_prefix(2);
    }
    const std::size_t bar = std::min(forms.find('|'), forms.size());
    chosen += part(place) == "1" ? forms.substr(0, bar) : forms.substr(std::min(bar + 1, forms.size()));
  }
}

std::string_view SentenceText(int number) {
  const bool dutch = number > Sentences::kDutchBase;
  const auto wanted = static_cast<Sentence>(dutch ? number - Sentences::kDutchBase : number);
  const auto* const row = std::find_if(std::begin(kRows), std::end(kRows),
                                       [wanted](const Row& one) { return one.sentence == wanted; });
  if (row == std::end(kRows)) return {};
  return dutch ? row->dutch : row->english;
}

std::string Sentences::operator()(Sentence sentence, std::initializer_list<std::string_view> parts) const {
  return Fill(SentenceText(static_cast<int>(sentence) + base_), parts);
}

std::string Sentences::operator()(const Saying& saying) const {
  return Fill(SentenceText(static_cast<int>(saying.sentence) + base_), saying.parts);
}

std::string Sentences::operator()(const Error& error) const {
  return error.saying.sentence == Sentence{} ? error.text : (*this)(error.saying);
}

const Sentences& English() {
  static const Sentences kEnglish;
  return kEnglish;
}

Error Failed(ErrorCode code, Sentence sentence, std::vector<std::string> parts) {
  Saying saying{sentence, std::move(parts)};
  std::string text = Sentences()(saying);
  return {code, std::move(text), std::move(saying)};
}

}  // namespace support
