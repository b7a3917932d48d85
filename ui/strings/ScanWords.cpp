// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/ScanWords.h"

namespace ui {
namespace {

constexpr Strings::Row kScanRows[] = {
    {ScanWord::FileNames, "File names and tags", "Bestandsnamen en tags"},
    {ScanWord::NameOrder, "Order", "Volgorde"},
    {ScanWord::NameOrderTip, "What comes first in your file names",
     "Wat er in uw bestandsnamen het eerst komt"},
    {ScanWord::ArtistFirst, "Artist, then title", "Artiest, dan titel"},
    {ScanWord::TitleFirst, "Title, then artist", "Titel, dan artiest"},
    {ScanWord::SplitAt, "Split at", "Splitsen bij"},
    {ScanWord::SplitAtTip, "What stands between artist and title in your file names; the first one counts",
     "Wat er in uw bestandsnamen tussen artiest en titel staat; het eerste telt"},
    {ScanWord::UseSplit, "Split names", "Namen splitsen"},
    {ScanWord::UseSplitTip, "Where a tag has no title; off: the whole file name is the title",
     "Als een tag geen titel heeft; uit: de hele bestandsnaam is de titel"},
    {ScanWord::UseArtist, "Names give the artist", "Namen geven de artiest"},
    {ScanWord::UseArtistTip, "Off: a tag without an artist leaves the artist empty",
     "Uit: een tag zonder artiest laat de artiest leeg"},
    {ScanWord::WriteTags, "Write mixing values to the files", "Mixwaarden in de bestanden schrijven"},
    {ScanWord::WriteTagsTip,
     "Gain, mix points and tempo go into the tag, so that another computer finds them too",
     "Versterking, mixpunten en tempo komen in de tag, zodat ook een andere computer ze vindt"},
    {ScanWord::ExampleFile, "Nora Vale - Night Train.mp3", "Nora Vale - Night Train.mp3"},
    {ScanWord::Example, "%1 gives artist \"%2\", title \"%3\".", "%1 geeft artiest \"%2\", titel \"%3\"."},
    {ScanWord::ExampleTitleOnly, "%1 gives no artist, title \"%2\".", "%1 geeft geen artiest, titel \"%2\"."},
    {ScanWord::Analyse, "Analyse", "Analyseren"},
    {ScanWord::AnalyseTip, "Find gain, mix points and tempo of the chosen tracks",
     "Zoek versterking, mixpunten en tempo van de gekozen nummers"},
    {ScanWord::AnalysePause, "Pause", "Pauze"},
    {ScanWord::AnalysePauseTip, "Let the analysis wait", "Laat de analyse wachten"},
    {ScanWord::AnalyseGoOn, "Go on", "Verder"},
    {ScanWord::AnalyseGoOnTip, "Go on with the analysis", "Ga verder met de analyse"},
    {ScanWord::AnalyseEnd, "End", "Stoppen"},
    {ScanWord::AnalyseEndTip, "End the analysis; what was found is kept",
     "Beëindig de analyse; wat gevonden is blijft bewaard"},
    {ScanWord::AnalyseGoes, "%1 of %2 analysed: %3", "%1 van %2 geanalyseerd: %3"},
    {ScanWord::AnalyseRest, "%1 of %2 analysed, %3: %4", "%1 van %2 geanalyseerd, %3: %4"},
    {ScanWord::AnalysePaused, "Paused: %1 of %2 analysed", "Gepauzeerd: %1 van %2 geanalyseerd"},
    {ScanWord::AnalysisLeftOut, "%1 {file|files} could not be analysed",
     "%1 {bestand kon|bestanden konden} niet worden geanalyseerd"},
    {ScanWord::TracksChosen, "%1 {track|tracks} chosen", "%1 {nummer|nummers} gekozen"},
    {ScanWord::AnalyseAll, "Analyse the whole collection", "De hele verzameling analyseren"},
    {ScanWord::AnalyseAllTip, "Find gain, mix points and tempo of every track; decks that play come first",
     "Zoek versterking, mixpunten en tempo van elk nummer; decks die spelen gaan voor"},
    {ScanWord::ScanRate, "%1 {file|files} a second, %2.", "%1 {bestand|bestanden} per seconde, %2."},
    {ScanWord::MinutesLeft, "%1 min left", "nog %1 min"},
    {ScanWord::SecondsLeft, "%1 s left", "nog %1 s"},
    {ScanWord::MoreFolders, "More folders, scanned after this one", "Meer mappen, gescand na deze"},
    {ScanWord::MoreFoldersTip, "Folders of other disks or sticks; one that is not there keeps its rows",
     "Mappen van andere schijven of sticks; een map die er niet is houdt haar rijen"},
    {ScanWord::AddFolder, "Add folder…", "Map toevoegen…"},
    {ScanWord::AddFolderTip, "Choose one more folder to be scanned", "Kies nog een map om te scannen"},
    {ScanWord::RemoveFolder, "Remove folder", "Map weghalen"},
    {ScanWord::RemoveFolderTip, "Scan this folder no more; its rows stay",
     "Deze map niet meer scannen; haar rijen blijven staan"},
};

}  // namespace

std::span<const Strings::Row> ScanWords() {
  return kScanRows;
}

}  // namespace ui
