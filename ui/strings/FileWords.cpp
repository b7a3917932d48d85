// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/FileWords.h"

namespace ui {
namespace {

constexpr Strings::Row kFileRows[] = {
    {FileWord::Add, "Add", "Toevoegen"},
    {FileWord::AddFolder, "Folder…", "Map…"},
    {FileWord::AddFolderTitle, "Add a folder and all folders in it", "Een map en alle mappen erin toevoegen"},
    {FileWord::LookingThrough, "Looking through folders: %1 files so far…",
     "Mappen doorzoeken: tot nu toe %1 bestanden…"},
    {FileWord::StopAdding, "Stop", "Stoppen"},
    {FileWord::StopAddingTip, "Stop adding; what is done stays", "Stop met toevoegen; wat gedaan is, blijft"},
    {FileWord::AddingStopped, "Stopped.", "Gestopt."},
    {FileWord::SongsAside, "%1 went to the karaoke songs.", "%1 gingen naar de karaokenummers."},
    {FileWord::SongAside, "1 went to the karaoke songs.", "1 ging naar de karaokenummers."},
    {FileWord::RemoveTip, "Take the chosen rows off the list (Delete), or delete their files",
     "De gekozen rijen van de lijst halen (Delete), of hun bestanden verwijderen"},
    {FileWord::RemoveFromList, "Remove from list", "Van de lijst halen"},
    {FileWord::DeleteFromDisk, "Delete from disk…", "Van de schijf verwijderen…"},
    {FileWord::BringBack, "Bring back what was removed", "Terughalen wat van de lijst is gehaald"},
    {FileWord::Removed, "%1 rows removed; their files stay. Ctrl+Z brings them back.",
     "%1 rijen van de lijst gehaald; hun bestanden blijven. Ctrl+Z haalt ze terug."},
    {FileWord::RemovedOne, "1 row removed; its file stays. Ctrl+Z brings it back.",
     "1 rij van de lijst gehaald; het bestand blijft. Ctrl+Z haalt haar terug."},
    {FileWord::IsBack, "%1 rows are back: %2.", "%1 rijen zijn terug: %2."},
    {FileWord::IsBackOne, "1 row is back: %1.", "1 rij is terug: %1."},
    {FileWord::IsBackAlready, "%1 have their row already.", "%1 hebben hun rij al."},
    {FileWord::NothingToBringBack, "Nothing was removed that could come back.",
     "Er is niets weggehaald dat terug kan komen."},
};

}  // namespace

std::span<const Strings::Row> FileWords() {
  return kFileRows;
}

}  // namespace ui
