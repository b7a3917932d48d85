// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/OrganWords.h"

namespace ui {
namespace {

constexpr Strings::Row kOrganRows[] = {
    {OrganWord::Mono, "Mono", "Mono"},
    {OrganWord::Stereo, "Stereo", "Stereo"},
    {OrganWord::Lo, "Organ", "Orgel"},
    {OrganWord::Pp, "Pattern", "Patroon"},
    {OrganWord::Constant, "Constant", "Vast"},
    {OrganWord::Beat, "Beat", "Beat"},
    {OrganWord::DacLo, "Organ", "Orgel"},
    {OrganWord::DacPp, "Pattern", "Patroon"},
    {OrganWord::DacConstant, "Constant", "Vast"},
    {OrganWord::MonoTip, "Outputs follow the bands of both channels together",
     "Uitgangen volgen de banden van beide kanalen samen"},
    {OrganWord::StereoTip, "Odd outputs follow the left channel, even ones the right",
     "Oneven uitgangen volgen het linkerkanaal, even het rechter"},
    {OrganWord::LoTip, "Light organ: each output follows its band, with a speed of its own",
     "Lichtorgel: elke uitgang volgt zijn band, met een eigen snelheid"},
    {OrganWord::PpTip, "Plays the steps of a pattern bank", "Speelt de stappen van een patroonbank"},
    {OrganWord::ConstantTip, "Outputs stay as their buttons are set",
     "Uitgangen blijven zoals hun knoppen staan"},
    {OrganWord::BeatTip, "All outputs flash on each beat", "Alle uitgangen flitsen op elke tel"},
    {OrganWord::DacLoTip, "Each output follows its band; the slider is its full level",
     "Elke uitgang volgt zijn band; de regelaar is het volle niveau"},
    {OrganWord::DacPpTip, "Plays the steps of a pattern bank", "Speelt de stappen van een patroonbank"},
    {OrganWord::DacConstantTip, "Outputs stay at the values of their sliders",
     "Uitgangen blijven op de waarden van hun regelaars"},
    {OrganWord::Io, "IO", "IO"},
    {OrganWord::Dac, "DAC", "DAC"},
    {OrganWord::IoName, "Switched outputs", "Geschakelde uitgangen"},
    {OrganWord::DacName, "Dimmed outputs", "Gedimde uitgangen"},
    {OrganWord::LampsTip, "What each output is told, and below it the level of its band",
     "Wat elke uitgang krijgt, met daaronder het niveau van zijn band"},
    {OrganWord::Level, "Threshold of output %1", "Drempel van uitgang %1"},
    {OrganWord::LevelTip, "The level of its band at which output %1 lights. Double click: as at first.",
     "Het niveau van zijn band waarbij uitgang %1 aangaat. Dubbelklik: als in het begin."},
    {OrganWord::Value, "Value of output %1", "Waarde van uitgang %1"},
    {OrganWord::ValueTip, "Value of output %1, 0 to 255: its full level in organ mode",
     "Waarde van uitgang %1, 0 tot 255: het volle niveau in de orgelstand"},
    {OrganWord::Button, "Output %1", "Uitgang %1"},
    {OrganWord::ButtonTip, "Switches output %1 on or off", "Schakelt uitgang %1 aan of uit"},
    {OrganWord::Speed, "Speed", "Snelheid"},
    {OrganWord::SpeedTip, "Each mode keeps its own speed: from 2 s a step to 20 ms",
     "Elke stand heeft een eigen snelheid: van 2 s per stap tot 20 ms"},
    {OrganWord::Bank, "Bank", "Bank"},
    {OrganWord::BankTip, "The pattern bank that plays", "De patroonbank die speelt"},
    {OrganWord::BankEmpty, "Bank %1 has no steps.", "Bank %1 heeft geen stappen."},
    {OrganWord::Step, "Step %1 of %2", "Stap %1 van %2"},
    {OrganWord::PatternTip, "The steps of the bank, a row each; the marked one plays",
     "De stappen van de bank, elk een rij; de gemarkeerde speelt"},
    {OrganWord::BeatGrid, "Follows the beats of deck %1: %2 BPM.", "Volgt de tellen van deck %1: %2 BPM."},
    {OrganWord::BeatSound, "Follows the sound of deck %1; its beats are not known.",
     "Volgt het geluid van deck %1; de tellen zijn niet bekend."},
    {OrganWord::BeatNothing, "Waits for a deck that is heard.", "Wacht op een deck dat te horen is."},
    {OrganWord::Boards, "Boards", "Kaarten"},
    {OrganWord::BoardsTip, "Switches the K8061 boards on or off. The lamps here work without them.",
     "Schakelt de K8061-kaarten aan of uit. De lampen hier werken ook zonder."},
    {OrganWord::BoardSize, "Number of boards", "Aantal kaarten"},
    {OrganWord::BoardSizeTip, "How many IO boards there are: eight outputs of each kind on a board",
     "Hoeveel IO-kaarten er zijn: acht uitgangen van elke soort per kaart"},
    {OrganWord::OneBoard, "One, 8 outputs", "Een, 8 uitgangen"},
    {OrganWord::TwoBoards, "Two, 16 outputs", "Twee, 16 uitgangen"},
    {OrganWord::BoardsOff, "Off: lamps on screen only.", "Uit: lampen alleen op het scherm."},
    {OrganWord::BoardsOn, "In use.", "In gebruik."},
    {OrganWord::Guard, "Flash guard", "Flitsbeveiliging"},
    {OrganWord::GuardTip, "Lets outputs flash at most four times a second, which is safe for most people",
     "Laat uitgangen hoogstens vier keer per seconde flitsen, wat voor de meeste mensen veilig is"},
    {OrganWord::GuardHolds, "Holds back", "Houdt tegen"},
    {OrganWord::GuardAsk,
     "Lift the flash guard? More than four flashes a second can cause a seizure in people with "
     "photosensitive epilepsy.",
     "Flitsbeveiliging opheffen? Meer dan vier flitsen per seconde kunnen bij mensen met lichtgevoelige "
     "epilepsie een aanval veroorzaken."},
    {OrganWord::GuardLift, "Lift the guard", "Beveiliging opheffen"},
    {OrganWord::Memories, "Memories", "Geheugens"},
    {OrganWord::MemoriesTip, "States of the light organ. Enter or a double click brings one back.",
     "Toestanden van het lichtorgel. Enter of dubbelklik haalt er een terug."},
    {OrganWord::MemoryName, "Name of the memory", "Naam van het geheugen"},
    {OrganWord::Remember, "Remember", "Onthoud"},
    {OrganWord::RememberTip, "Keeps modes, speeds and levels under this name",
     "Bewaart standen, snelheden en niveaus onder deze naam"},
    {OrganWord::Recall, "Recall", "Haal op"},
    {OrganWord::RecallTip, "Brings back the chosen memory", "Haalt het gekozen geheugen terug"},
    {OrganWord::EditBanks, "Edit banks", "Banken bewerken"},
};

}  // namespace

std::span<const Strings::Row> OrganWords() {
  return kOrganRows;
}

}  // namespace ui
