// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Sentences.h"

#include <algorithm>
#include <iterator>

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
    {Sentence::CatalogueDamaged, "%1 damaged rows of the catalogue were left out.",
     "%1 beschadigde rijen van de catalogus zijn weggelaten."},
    {Sentence::KaraokeDamaged, "%1 damaged rows of the karaoke catalogue were left out.",
     "%1 beschadigde rijen van de karaokecatalogus zijn weggelaten."},
    {Sentence::FolderReadOnly,
     "The program folder cannot be written to; changes last until the end of this run.",
     "In de programmamap kan niet worden geschreven; wijzigingen gelden tot het einde van deze sessie."},
    {Sentence::FileNotDeleted, "\"%1\" could not be deleted.", "\"%1\" kon niet worden verwijderd."},
    {Sentence::FolderMissing, "There is no folder \"%1\".", "Er is geen map \"%1\"."},
    {Sentence::FilesLeftOut, "%1 files were left out, because they cannot be played.",
     "%1 bestanden zijn weggelaten, omdat ze niet kunnen worden afgespeeld."},
    {Sentence::TemposTooFarApart, "The tempos lie more than %1 percent apart; the deck plays on by itself.",
     "De tempo's liggen meer dan %1 procent uit elkaar; het deck speelt zelfstandig verder."},
    {Sentence::TempoUnknown, "Both decks need a file whose tempo is known.",
     "Beide decks hebben een bestand nodig waarvan het tempo bekend is."},
    {Sentence::FileNotFound, "%1 was not found; it may have been moved or deleted.",
     "%1 is er niet; misschien is het verplaatst of verwijderd."},
    {Sentence::FileUnreadable, "%1 cannot be read.", "%1 kan niet worden gelezen."},
    {Sentence::FileEmpty, "%1 is empty.", "%1 is leeg."},
    {Sentence::FileMalformed, "%1 holds no sound that can be read.",
     "%1 bevat geen geluid dat te lezen is; het is geen muziekbestand of het is beschadigd."},
    {Sentence::FileUnsupported, "%1 holds sound of a kind that is not known here.",
     "%1 bevat geluid van een soort die hier niet bekend is."},
    {Sentence::FileUnavailable, "%1 cannot be opened now.", "%1 kan nu niet worden geopend."},

    {Sentence::PresetsUnreadable, "The equaliser's presets cannot be read: %1",
     "De voorinstellingen van de equalizer kunnen niet worden gelezen: %1"},
    {Sentence::PresetNotSaved, "The preset \"%1\" could not be saved: %2",
     "De voorinstelling \"%1\" kon niet worden bewaard: %2"},
    {Sentence::PresetNotDeleted, "The preset \"%1\" could not be deleted: %2",
     "De voorinstelling \"%1\" kon niet worden verwijderd: %2"},
    {Sentence::PresetNeedsName, "A preset needs a name of one line.",
     "Een voorinstelling heeft een naam van één regel nodig."},
    {Sentence::KaraokeSongInMusic,
     "\"%1\" is a MIDI karaoke song, which has no place in the music catalogue.",
     "\"%1\" is een MIDI-karaokenummer, dat niet in de muziekcatalogus hoort."},
    {Sentence::IndexMissing, "There is no index \"%1\".", "Er is geen index \"%1\"."},
    {Sentence::IndexUnreadable, "The index \"%1\" cannot be read.",
     "De index \"%1\" kan niet worden gelezen."},
};

}  // namespace

std::string_view SentenceText(int number) {
  const bool dutch = number > Sentences::kDutchBase;
  const auto wanted = static_cast<Sentence>(dutch ? number - Sentences::kDutchBase : number);
  const auto* const row = std::find_if(std::begin(kRows), std::end(kRows),
                                       [wanted](const Row& one) { return one.sentence == wanted; });
  if (row == std::end(kRows)) return {};
  return dutch ? row->dutch : row->english;
}

std::string Sentences::operator()(Sentence sentence, std::initializer_list<std::string_view> parts) const {
  std::string_view rest = SentenceText(static_cast<int>(sentence) + base_);
  std::string text;
  while (!rest.empty()) {
    const std::size_t mark = rest.find('%');
    text += rest.substr(0, mark);
    if (mark == std::string_view::npos) break;
    rest.remove_prefix(mark + 1);
    const std::size_t part = rest.empty() ? 0 : static_cast<std::size_t>(rest.front() - '1');
    if (part < parts.size()) text += parts.begin()[part];
    rest.remove_prefix(std::min<std::size_t>(1, rest.size()));
  }
  return text;
}

}  // namespace support
