// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/ConsoleWords.h"

namespace ui {
namespace {

constexpr Strings::Row kConsoleRows[] = {
    // The switch, and what there is behind it
    {ConsoleWord::SwitchedOn, "K8062 on", "K8062 aan"},
    {ConsoleWord::SwitchedOff, "K8062 off", "K8062 uit"},
    {ConsoleWord::BoxSends, "sending", "zendt"},
    {ConsoleWord::BoxFound, "found", "gevonden"},
    {ConsoleWord::BoxMissing, "not found", "niet gevonden"},
    {ConsoleWord::BoxTip, "The box itself, whatever the switch says",
     "Het kastje zelf, wat de schakelaar ook zegt"},
    {ConsoleWord::OffButSent, "Switched off here, but an editor is sending",
     "Hier uitgeschakeld, maar een editor zendt"},
    {ConsoleWord::Stage, "Stage", "Podium"},
    {ConsoleWord::StageTip, "The stage as it is lit now. A click brings the faders of the fixture.",
     "Het podium zoals het nu verlicht is. Een klik brengt de schuiven van het armatuur."},
    // The console
    {ConsoleWord::Master, "Master", "Master"},
    {ConsoleWord::MasterTip, "All lamps together: what faders and shows say, times this",
     "Alle lampen samen: wat schuiven en shows zeggen, maal dit"},
    {ConsoleWord::Output, "K8062", "K8062"},
    {ConsoleWord::OutputTip, "Turn the DMX output on or off; it is remembered for the next start",
     "De DMX-uitgang aan- of uitzetten; dit wordt onthouden voor de volgende start"},
    {ConsoleWord::OutputOff, "Output off: no lamp is lit from here",
     "Uitgang uit: van hier brandt geen lamp"},
    {ConsoleWord::OutputNone, "This computer has no DMX output", "Deze computer heeft geen DMX-uitgang"},
    {ConsoleWord::OutputStarting, "Looking for the K8062", "Zoekt de K8062"},
    {ConsoleWord::OutputRate, "%1 {frame|frames} a second, %2 {2:packet|packets} each",
     "%1 {frame|frames} per seconde, elk %2 {2:pakket|pakketten}"},
    {ConsoleWord::Blackout, "Blackout", "Black-out"},
    {ConsoleWord::BlackoutTip, "All lamps dark until it is pressed again; the faders stay where they are",
     "Alle lampen donker tot nog een keer drukken; de schuiven blijven staan"},
    {ConsoleWord::Guard, "Strobe guard", "Flitswacht"},
    {ConsoleWord::GuardTip, "While it is lit, no preset flashes: open light takes the place of its strobe",
     "Zolang hij brandt, flitst geen voorinstelling: in plaats van de stroboscoop komt open licht"},
    {ConsoleWord::GuardAsk,
     "Lift the strobe guard? Strobe light can bring on fits in people with epilepsy. Announce it to the "
     "guests first. The guard is on again at the next start.",
     "De flitswacht opheffen? Stroboscooplicht kan bij mensen met epilepsie een aanval veroorzaken. Kondig "
     "het eerst aan bij de gasten. Bij de volgende start is de wacht weer aan."},
    {ConsoleWord::GuardLift, "Lift the guard", "Wacht opheffen"},
    {ConsoleWord::AllDown, "All to 0", "Alles op 0"},
    {ConsoleWord::AllDownTip, "All 512 faders to 0; a show that plays goes on",
     "Alle 512 schuiven op 0; een show die speelt gaat door"},
    {ConsoleWord::PageBack, "Faders before these", "Schuiven hiervoor"},
    {ConsoleWord::PageOn, "Faders after these", "Schuiven hierna"},
    {ConsoleWord::Range, "Channels %1 to %2", "Kanalen %1 tot %2"},
    {ConsoleWord::Fixture, "Go to a fixture", "Naar een armatuur"},
    {ConsoleWord::FixtureTip, "Brings the faders of a fixture", "Brengt de schuiven van een armatuur"},
    {ConsoleWord::NoFixtures, "No fixture patched", "Geen armatuur"},
    {ConsoleWord::Faders, "Channel faders", "Kanaalschuiven"},
    {ConsoleWord::Fixtures, "Fixtures of these channels", "Armaturen van deze kanalen"},
    {ConsoleWord::FixtureRange, "%1 to %2: %3", "%1 tot %2: %3"},
    {ConsoleWord::Channel, "Channel %1", "Kanaal %1"},
    {ConsoleWord::ChannelOf, "Channel %1: %2, %3", "Kanaal %1: %2, %3"},
    {ConsoleWord::ChannelTip,
     "%1. Drag, wheel or arrows; type a level and press Enter; double-click: the other end. The bar beside "
     "it is on the wire.",
     "%1. Sleep, wiel of pijlen; typ een niveau en druk op Enter; dubbelklik: het andere eind. De balk "
     "ernaast staat op de lijn."},
    {ConsoleWord::Wire, "On the wire", "Op de lijn"},
    {ConsoleWord::WireCell, "Channel %1: %2 on the wire", "Kanaal %1: %2 op de lijn"},
    {ConsoleWord::ShowList, "Show", "Show"},
    {ConsoleWord::ShowListTip,
     "The shows of the folder DMXShows; one that is chosen while another plays waits for Play",
     "De shows van de map DMXShows; wie er een kiest terwijl een andere speelt, start haar met Afspelen"},
    {ConsoleWord::ShowListHint, "Choose a show", "Kies een show"},
    {ConsoleWord::ShowOpen, "Open…", "Openen…"},
    {ConsoleWord::ShowOpenTip, "Open a show from anywhere", "Een show van elders openen"},
    {ConsoleWord::ShowOpenTitle, "Open a show", "Een show openen"},
    {ConsoleWord::ShowFiles, "DMX Show File (*.SHW)", "DMX-showbestand (*.SHW)"},
    {ConsoleWord::ShowPlay, "Play the show", "De show afspelen"},
    {ConsoleWord::ShowPause, "Hold the show", "De show stilzetten"},
    {ConsoleWord::ShowStop, "Stop the show; the lamps stay as they are",
     "De show stoppen; de lampen blijven zoals ze zijn"},
    {ConsoleWord::ShowRepeat, "Repeat", "Herhalen"},
    {ConsoleWord::ShowRepeatTip, "Begin the show again when it ends",
     "De show opnieuw beginnen als zij afgelopen is"},
    {ConsoleWord::ShowPosition, "Place in the show", "Plaats in de show"},
    {ConsoleWord::ShowPositionTip, "Drag to another moment of the show",
     "Sleep naar een ander moment van de show"},
    {ConsoleWord::ShowPlace, "Scene %1 of %2: %3, step %4", "Scène %1 van %2: %3, stap %4"},
    {ConsoleWord::ShowNext, "Next: %1, with Play", "Hierna: %1, met Afspelen"},
    {ConsoleWord::ShowNone, "No show is open", "Er is geen show open"},
    {ConsoleWord::ShowNotes, "%1 is open. To note:", "%1 is open. Let op:"},
    {ConsoleWord::ShowFailed, "%1 cannot be opened:", "%1 kan niet worden geopend:"},
    {ConsoleWord::ShowEndsEarly, "The file ends early; what could be read is there.",
     "Het bestand houdt te vroeg op; wat gelezen kon worden is er."},
    // The console
};

}  // namespace

std::span<const Strings::Row> ConsoleWords() {
  return kConsoleRows;
}

}  // namespace ui
