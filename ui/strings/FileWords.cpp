// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/FileWords.h"

namespace ui {
namespace {

constexpr Strings::Row kFileRows[] = {
    {FileWord::Add, "Add", "Toevoegen"},
    {FileWord::AddFolder, "Folder…", "Map…"},
    {FileWord::AddFolderTitle, "Add a folder and all folders in it", "Een map en alle mappen erin toevoegen"},
    {FileWord::LookingThrough, "Looking through folders: %1 {file|files} so far…",
     "Mappen doorzoeken: tot nu toe %1 {bestand|bestanden}…"},
    {FileWord::StopAdding, "Stop", "Stoppen"},
    {FileWord::StopAddingTip, "Stop adding; what is done stays", "Stop met toevoegen; wat gedaan is, blijft"},
    {FileWord::AddingStopped, "Stopped.", "Gestopt."},
    {FileWord::SongsAside, "%1 went to the karaoke songs.", "%1 {ging|gingen} naar de karaokenummers."},
    {FileWord::RemoveTip, "Take the chosen rows off the list (Delete), or delete their files",
     "De gekozen rijen van de lijst halen (Delete), of hun bestanden verwijderen"},
    {FileWord::RemoveFromList, "Remove from list", "Van de lijst halen"},
    {FileWord::DeleteFromDisk, "Delete from disk…", "Van de schijf verwijderen…"},
    {FileWord::BringBack, "Bring back what was removed", "Terughalen wat van de lijst is gehaald"},
    {FileWord::Removed,
     "%1 {row|rows} removed; {its file stays|their files stay}. Ctrl+Z brings {it|them} back.",
     "%1 {rij|rijen} van de lijst gehaald; {het bestand blijft|hun bestanden blijven}. Ctrl+Z haalt "
     "{haar|ze} terug."},
    {FileWord::IsBack, "%1 {row is|rows are} back: %2.", "%1 {rij is|rijen zijn} terug: %2."},
    {FileWord::IsBackAlready, "%1 {has its|have their} row already.", "%1 {heeft zijn|hebben hun} rij al."},
    {FileWord::NothingToBringBack, "Nothing was removed that could come back.",
     "Er is niets weggehaald dat terug kan komen."},
};

}  // namespace

std::span<const Strings::Row> FileWords() {
  return kFileRows;
}

}  // namespace ui
