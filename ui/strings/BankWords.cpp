// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/BankWords.h"

namespace ui {
namespace {

constexpr Strings::Row kBankRows[] = {
    {BankWord::BankEditor, "Pattern banks", "Patroonbanken"},
    {BankWord::BankFile, "File", "Bestand"},
    {BankWord::BankFileTip, "The bank file that is edited", "Het bankbestand dat wordt bewerkt"},
    {BankWord::BankFileIo1, "IO, 8 outputs", "IO, 8 uitgangen"},
    {BankWord::BankFileIo2, "IO, 16 outputs", "IO, 16 uitgangen"},
    {BankWord::BankFileDac1, "DAC, 8 outputs", "DAC, 8 uitgangen"},
    {BankWord::BankFileDac2, "DAC, 16 outputs", "DAC, 16 uitgangen"},
    {BankWord::Banks, "Banks", "Banken"},
    {BankWord::BanksTip, "The banks of the file", "De banken van het bestand"},
    {BankWord::BankItem, "Bank %1: %2 {2:step|steps}", "Bank %1: %2 {2:stap|stappen}"},
    {BankWord::BankNew, "New", "Nieuw"},
    {BankWord::BankNewTip, "Add a bank with one step", "Een bank met één stap toevoegen"},
    {BankWord::BankCopy, "Copy", "Kopieer"},
    {BankWord::BankCopyTip, "Add a copy of the chosen bank", "Een kopie van de gekozen bank toevoegen"},
    {BankWord::BankRemove, "Remove", "Verwijder"},
    {BankWord::BankRemoveTip, "Take the chosen bank out of the file",
     "De gekozen bank uit het bestand halen"},
    {BankWord::BankSteps, "Steps", "Stappen"},
    {BankWord::BankStepsTip, "A row is a step, a column an output. A click or Space turns an output over",
     "Een rij is een stap, een kolom een uitgang. Een klik of spatie keert een uitgang om"},
    {BankWord::BankValuesTip, "A row is a step, a column an output: type its value, 0 to 255",
     "Een rij is een stap, een kolom een uitgang: typ de waarde, 0 tot 255"},
    {BankWord::BankFurther, "Further fields", "Overige velden"},
    {BankWord::StepAdd, "Add", "Voeg toe"},
    {BankWord::StepAddTip, "Add a dark step behind the chosen one",
     "Een donkere stap na de gekozen toevoegen"},
    {BankWord::StepCopyTip, "Add a copy of the chosen step behind it",
     "Een kopie van de gekozen stap erachter toevoegen"},
    {BankWord::StepRemoveTip, "Remove the chosen step", "De gekozen stap verwijderen"},
    {BankWord::StepUp, "Up", "Omhoog"},
    {BankWord::StepUpTip, "Move the chosen step up", "De gekozen stap naar boven verplaatsen"},
    {BankWord::StepDown, "Down", "Omlaag"},
    {BankWord::StepDownTip, "Move the chosen step down", "De gekozen stap naar beneden verplaatsen"},
    {BankWord::BankPlay, "Play", "Speel"},
    {BankWord::BankPlayTip, "Play the chosen bank as it is edited",
     "De gekozen bank spelen zoals hij wordt bewerkt"},
    {BankWord::BankOtherSize,
     "This file is for another number of boards than there are, so it cannot be played now.",
     "Dit bestand is voor een ander aantal kaarten dan er zijn en kan nu niet worden gespeeld."},
    {BankWord::BankSave, "Save", "Bewaar"},
    {BankWord::BankSaveTip, "Write the file; what plays follows it",
     "Het bestand schrijven; wat speelt volgt het"},
    {BankWord::BankSaved, "Saved.", "Bewaard."},
    {BankWord::BankUnsaved, "Not saved yet.", "Nog niet bewaard."},
    {BankWord::BankAskLeave, "The changes of these banks are not saved. Leave them out?",
     "De wijzigingen van deze banken zijn niet bewaard. Laten vervallen?"},
    {BankWord::BankLeave, "Leave them out", "Laat vervallen"},
    {BankWord::BankLastStep, "The last step of the last bank is never played.",
     "De laatste stap van de laatste bank wordt nooit gespeeld."},
    {BankWord::EditBanksTip, "Edit the pattern banks in a window of their own",
     "De patroonbanken in een eigen venster bewerken"},
    {BankWord::MemoryForgetTip, "Delete the chosen memory, after a question",
     "Het gekozen geheugen verwijderen, na een vraag"},
    {BankWord::MemoryAskForget, "Delete the memory “%1”?", "Het geheugen “%1” verwijderen?"},
    {BankWord::BankClose, "Close", "Sluiten"},
    {BankWord::BankCloseTip, "Close this window", "Dit venster sluiten"},
};

}  // namespace

std::span<const Strings::Row> BankWords() {
  return kBankRows;
}

}  // namespace ui
