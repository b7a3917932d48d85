// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/SettingsVocabulary.h"

#include <algorithm>
#include <array>
#include <vector>

#include "support/ports/SettingsStore.h"

namespace support {
namespace {

using Rows = std::vector<SettingKey>;

struct Words {
  std::string_view key;
  std::string_view fallback;
  std::string_view meaning;
};

void Add(Rows& rows, std::string_view section, std::span<const Words> keys) {
  for (const Words& words : keys) {
    rows.push_back({kApplication, section, words.key, words.fallback, words.meaning});
  }
}

constexpr std::array<std::string_view, 16> kOutputNumbers{"1", "2",  "3",  "4",  "5",  "6",  "7",  "8",
                                                          "9", "10", "11", "12", "13", "14", "15", "16"};

void AddOutputs(Rows& rows, std::string_view section, std::string_view fallback, std::string_view meaning) {
  for (const std::string_view number : kOutputNumbers) {
    rows.push_back({kApplication, section, number, fallback, meaning});
  }
}

constexpr Words kSettings[] = {{"Automix", "False", "the automatic mixer is on"},
                               {"AutoBPM", "False", "the automatic mixer matches tempos"},
                               {"AutoGain", "False", "tracks are levelled to the same loudness"},
                               {"MixPoints", "True", "the automatic mixer mixes at the mix points"},
                               {"BPMPercent", "8", "the furthest that tempos are matched, in percent"},
                               {"GainPercent", "3", "threshold of the mix points, 0 to 100"},
                               {"LowPowerStretch", "False", "tempo changes cost less and sound less good"},
                               {"GainRange", "12", "the furthest that tracks are levelled, in dB"},
                               {"Resume", "True", "after a fall the evening goes on where it was"}};

constexpr Words kDecks[] = {{"Quantise", "True", "cues and loops of the mixing decks lie on beats"}};

constexpr Words kMoreFolders[] = {
    {"Directory2", "", "another folder of the music collection; empty for none"},
    {"Directory3", "", "another folder of the music collection; empty for none"},
    {"Directory4", "", "another folder of the music collection; empty for none"},
    {"Directory5", "", "another folder of the music collection; empty for none"},
    {"Directory6", "", "another folder of the music collection; empty for none"},
    {"Directory7", "", "another folder of the music collection; empty for none"},
    {"Directory8", "", "another folder of the music collection; empty for none"},
    {"Directory9", "", "another folder of the music collection; empty for none"},
    {"Directory10", "", "another folder of the music collection; empty for none"},
    {"Directory11", "", "another folder of the music collection; empty for none"},
    {"Directory12", "", "another folder of the music collection; empty for none"},
    {"Directory13", "", "another folder of the music collection; empty for none"},
    {"Directory14", "", "another folder of the music collection; empty for none"},
    {"Directory15", "", "another folder of the music collection; empty for none"},
    {"Directory16", "", "another folder of the music collection; empty for none"}};

constexpr Words kMixer[] = {{"Preview", "0", "level of the headphones, 0 to 100"},
                            {"MixLeftD", "0", "slider of deck 1 that a mix moves down to"},
                            {"MixRightD", "0", "slider of deck 2 that a mix moves down to"},
                            {"MixLeftU", "100", "slider of deck 1 that a mix moves up to"},
                            {"MixRightU", "100", "slider of deck 2 that a mix moves up to"},
                            {"MixTime", "8", "length of an automatic mix in seconds"},
                            {"HeadphoneMix", "0", "how much of the hall the headphones hear, 0 to 100"},
                            {"HeadphoneSplit", "False", "they hear decks on the left, the hall on the right"},
                            {"HeadphoneLevel", "100", "level of all that the headphones hear, 0 to 100"},
                            {"CrossfaderCurve", "0", "0 smooth, 1 cut, 2 constant power"},
                            {"SeekGuard", "True", "a deck that plays is not sought in by a single click"}};

constexpr Words kMicrophone[] = {
    {"Device", "", "the system's name of the microphone; empty for its default"},
    {"DeviceName", "", "the microphone's name for the user"},
    {"Channel", "1", "channel of the microphone that is heard, from 1; 0 for the mean of all"},
    {"Gain", "0", "gain of the voice in dB, -20 to 40"},
    {"LowCut", "90", "edge of the low cut in Hz, 80 to 120; 0 for none"},
    {"Gate", "1", "0 none, 1 learns how loud the room is, 2 at its level"},
    {"GateLevel", "-45", "level in dB at which the gate opens, -80 to -10"},
    {"Bass", "0", "low band of the voice in dB, -12 to 12"},
    {"Mid", "0", "middle band of the voice in dB, -12 to 12"},
    {"High", "0", "high band of the voice in dB, -12 to 12"},
    {"Compressor", "True", "the voice is compressed"},
    {"Threshold", "-20", "level in dB above which it is compressed, -60 to 0"},
    {"Ratio", "4", "how many dB above it become one, 1 to 20"},
    {"MakeUp", "6", "gain behind the compressor in dB, 0 to 24"},
    {"Duck", "True", "the music makes way while somebody speaks"},
    {"DuckDepth", "12", "by how many dB, 0 to 40"},
    {"DuckAttack", "50", "how long it takes to, in milliseconds, 5 to 1000"},
    {"DuckHold", "400", "silence before it comes back, in milliseconds, 0 to 5000"},
    {"DuckRelease", "600", "how long it takes to come back, in milliseconds, 20 to 10000"},
    {"Swift", "True", "the outputs hold less sound while the microphone is heard, so that it is not late"}};

constexpr Words kPreferences[] = {{"Outputs", "1", "outputs that the decks use: 1 or 2"}};

constexpr Words kDevices[] = {
    {"Device1", "1", "device number of deck 1"},
    {"Device2", "1", "device number of deck 2"},
    {"Device3", "0", "device number of the headphones, 0 for none"},
    {"DeviceName1", "", "name of deck 1's device; found again, it wins over the number"},
    {"DeviceName2", "", "name of deck 2's device"},
    {"DeviceName3", "", "name of the headphones' device"}};

constexpr Words kSpeakers[] = {{"Speaker1", "1", "speaker pair of deck 1, 1 to 4"},
                               {"Speaker2", "1", "speaker pair of deck 2, 1 to 4"},
                               {"Speaker3", "1", "speaker pair of the headphones, 1 to 4"}};

constexpr Words kSpeakerChoice[] = {{"Speaker1", "False", "deck 1 plays on its speaker pair alone"},
                                    {"Speaker2", "False", "deck 2 plays on its speaker pair alone"},
                                    {"Speaker3", "False", "the headphones are its speaker pair alone"}};

constexpr Words kSetup[] = {{"UseK8000", "False", "the IO boards are opened at the start"},
                            {"UseK8062", "False", "the USB-DMX interface is opened at the start"},
                            {"IoBoardSize", "16", "outputs of the IO boards: 16 (one board) or 32 (two)"},
                            {"ConsoleSize", "32", "channels of the light console: 16 or 32"},
                            {"LastShow", "", "the show that is opened at the start"},
                            {"FixtureFolder", "", "folder of fixtures by others, beside the installed ones"}};

constexpr Words kTags[] = {{"FileFormat", "0", "order of artist and title in file names"},
                           {"SplitCharacter", "-", "what stands between artist and title in file names"},
                           {"UseArtist", "True", "file names give the artist where the tag does not"},
                           {"UseSplit", "True", "file names are split where the tag does not give a title"},
                           {"Write", "False", "mixing values are written to the files' tags"}};

constexpr Words kRecording[] = {{"Format", "flac", "what is recorded: flac, wav, ogg, opus or mp3"},
                                {"Bits", "16", "of a sample in flac and wav: 16 or 24"},
                                {"BitRate", "192", "of ogg, opus and mp3, in kbit/s"},
                                {"Name", "", "of a recording, before its date and time"},
                                {"FileATrack", "False", "each track is recorded to a file of its own"}};

constexpr Words kLanguage[] = {{"Current", "0", "language of the window: 0 English, 1 Dutch, 2 German"}};
constexpr Words kSkin[] = {{"Name", "0", "number of the skin"},
                           {"Density", "0", "rows and controls: 0 comfortable, 1 compact"}};
constexpr Words kCompactDecks[] = {{"Music", "False", "the decks are one line each over this page"},
                                   {"Playlist3", "True", "the same over the third playlist"},
                                   {"Karaoke", "True", "the same over the karaoke songs"},
                                   {"Console", "True", "the same over the light console"},
                                   {"Organ", "True", "the same over the light organ"},
                                   {"Effects", "True", "the same over the effects"},
                                   {"Recording", "True", "the same over the recording"},
                                   {"Settings", "True", "the same over the settings"}};
constexpr Words kVisualisation[] = {{"Name", "Spectrum", "visualiser that is shown; None for none"},
                                    {"Resolution", "25", "frames a second of the visualisation"}};

constexpr Words kChannels[] = {{"Color1", "255", "colour of console channel 1"},
                               {"Color2", "25855", "colour of console channel 2"},
                               {"Color3", "51455", "colour of console channel 3"},
                               {"Color4", "65535", "colour of console channel 4"},
                               {"Color5", "65480", "colour of console channel 5"},
                               {"Color6", "65380", "colour of console channel 6"},
                               {"Color7", "46848", "colour of console channel 7"},
                               {"Color8", "9895680", "colour of console channel 8"},
                               {"Color9", "14483200", "colour of console channel 9"},
                               {"Color10", "16776960", "colour of console channel 10"},
                               {"Color11", "16762880", "colour of console channel 11"},
                               {"Color12", "16737280", "colour of console channel 12"},
                               {"Color13", "16711680", "colour of console channel 13"},
                               {"Color14", "16711880", "colour of console channel 14"},
                               {"Color15", "16714495", "colour of console channel 15"},
                               {"Color16", "10748068", "colour of console channel 16"},
                               {"Color17", "255", "colour of console channel 17"},
                               {"Color18", "51455", "colour of console channel 18"},
                               {"Color19", "65480", "colour of console channel 19"},
                               {"Color20", "46848", "colour of console channel 20"},
                               {"Color21", "14483200", "colour of console channel 21"},
                               {"Color22", "16762880", "colour of console channel 22"},
                               {"Color23", "16711680", "colour of console channel 23"},
                               {"Color24", "16714495", "colour of console channel 24"},
                               {"Color25", "16714495", "colour of console channel 25"},
                               {"Color26", "16714495", "colour of console channel 26"},
                               {"Color27", "65380", "colour of console channel 27"},
                               {"Color28", "65480", "colour of console channel 28"},
                               {"Color29", "65535", "colour of console channel 29"},
                               {"Color30", "51455", "colour of console channel 30"},
                               {"Color31", "25855", "colour of console channel 31"},
                               {"Color32", "255", "colour of console channel 32"}};

constexpr Words kPlayer[] = {
    {"Echo", "False", "echo is on"},
    {"Flanger", "False", "flanger is on"},
    {"Reverb", "False", "reverb is on"},
    {"LowPass", "False", "low-pass filter is on"},
    {"Echo3", "False", "third echo is on"},
    {"Swap", "False", "left and right are exchanged"},
    {"Rotate", "False", "the sound turns between left and right"},
    {"Gain", "50", "trim, 0 to 100; 50 is 0 dB"},
    {"Equalizer", "True", "equaliser is on"},
    {"PitchTempo", "0", "tempo in percent from the original"},
    {"PitchSample", "0", "sample rate in percent from the original"},
    {"PitchScaling", "0", "pitch in semitones from the original"},
    {"KeyLock", "True", "the key stays when the tempo changes"},
    {"TempoRange", "8", "how far the tempo slider goes, in percent"},
    {"ReverbLevel", "25", "level of the reverb, 0 to 100"},
    {"ReverbDelay", "60", "decay of the reverb, 0 to 100: 0.2 to 8 s"},
    {"LowPassCut", "100", "edge of the low-pass filter, 0 to 100: 20 Hz to 20 kHz"},
    {"LowPassResonance", "12", "its resonance, 0 to 100: Q of 0.5 to 10"},
    {"Echo3DryMix", "100", "dry share of the third echo, 0 to 100"},
    {"Echo3WetMix", "40", "wet share of the third echo, 0 to 100"},
    {"Echo3Delay", "68", "delay of the third echo, 0 to 100: 10 ms to 2 s"},
    {"Echo3Beats", "0", "its delay in quarters of a beat; 0 as Echo3Delay says"},
    {"EchoLevel", "30", "level of the echo, 0 to 100"},
    {"EchoDelay", "68", "delay of the echo, 0 to 100: 10 ms to 2 s"},
    {"EchoBeats", "0", "its delay in quarters of a beat; 0 as EchoDelay says"},
    {"FlangerSpeed", "46", "speed of the flanger, 0 to 100: 0.02 to 5 Hz"},
    {"FlangerWetdry", "50", "wet share of the flanger, 0 to 100"},
    {"FlangerBeats", "0", "its turn in quarters of a beat; 0 as FlangerSpeed says"},
    {"RotateSpeed", "44", "how fast the sound turns, 0 to 100: 0.05 to 2 Hz"},
    {"RotateDepth", "70", "how far the sound turns, 0 to 100"},
    {"RotateBeats", "0", "its swing in quarters of a beat; 0 as RotateSpeed says"},
    {"Filter", "50", "filter knob, 0 to 100: low pass, none in the middle, high pass"},
    {"FilterResonance", "30", "its resonance, 0 to 100: Q of 0.7 to 4"}};

constexpr Words kEqualiser[] = {{"High", "0", "high band in dB"},     {"Mid", "0", "middle band in dB"},
                                {"Bass", "0", "bass band in dB"},     {"0", "0", "slider 1 of ten, in dB"},
                                {"1", "0", "slider 2 of ten, in dB"}, {"2", "0", "slider 3 of ten, in dB"},
                                {"3", "0", "slider 4 of ten, in dB"}, {"4", "0", "slider 5 of ten, in dB"},
                                {"5", "0", "slider 6 of ten, in dB"}, {"6", "0", "slider 7 of ten, in dB"},
                                {"7", "0", "slider 8 of ten, in dB"}, {"8", "0", "slider 9 of ten, in dB"},
                                {"9", "0", "slider 10 of ten, in dB"}};

constexpr Words kKaraoke[] = {{"BackGround", "0", "colour behind the words"},
                              {"CurrentText", "16711680", "colour of the line that is sung"},
                              {"CurrentWord", "255", "colour of the word that is sung"},
                              {"NextText", "65280", "colour of the next line"},
                              {"Outline", "16777215", "colour of the outline"},
                              {"FontName", "Verdana", "font of the words"},
                              {"FontBold", "True", "words are bold"},
                              {"FontItalic", "False", "words are italic"},
                              {"Look", "stage",
                               "look of the words: stage, or described for the colours,"
                               " font and ball of these settings"},
                              {"Style", "0", "words are sung over: 0 from side to side, 1 word by word"},
                              {"Picture", "", "picture behind the words; empty for none"},
                              {"Screen", "", "screen of the singers; empty for none"},
                              {"NextUp", "True", "the singers' screen tells who sings next"},
                              {"BreakMusic", "True", "music of playlist 3 between the singers' songs"},
                              {"BreakPause", "0", "seconds of silence before it, 0 to 60"},
                              {"Volume", "100", "level of the songs, 0 to 100"},
                              {"MelodyLevel", "100", "level of the melody in MIDI songs, 0 to 100"},
                              {"Soundfont", "", "soundfont of MIDI songs; empty for the first installed"}};

constexpr Words kLamps[] = {
    {"Net", "0", "lamps behind a network: 0 none, 1 Art-Net, 2 sACN"},
    {"Universe", "1", "under which universe number they are sent; 0 to 32767, or 1 to 63999 with sACN"},
    {"Address", "", "who is to have them, four numbers; empty for everybody or the universe's group"},
    {"Source", "", "the id of this program's sender in sACN, 32 hexadecimal digits"}};

constexpr Words kEffects[] = {{"IO", "CONSTANT", "mode of the switched outputs"},
                              {"DAC", "CONSTANT", "mode of the analogue outputs"}};

constexpr Words kBanks[] = {{"CurrentBank", "1", "number of the pattern bank"},
                            {"CurrentProgram", "1", "number of the pattern bank, as the selector wrote it"},
                            {"Timer", "60", "speed while patterns play, 0 to 100"}};

constexpr Words kTimer[] = {{"Timer", "100", "speed in this mode, 0 to 100"}};

void AddProgram(Rows& rows) {
  using enum SettingKey::Fallback;
  Add(rows, "Language", kLanguage);
  rows.push_back({kApplication, "Rip", "Directory", "\\my Music", "folder for tracks taken from CDs",
                  BelowProgramFolder});
  rows.push_back({kApplication, "Settings", "Directory", "\\MyMusic", "folder of the music collection",
                  BelowProgramFolder});
  Add(rows, "Settings", kMoreFolders);
  Add(rows, "Settings", kSettings);
  Add(rows, "Mixer", kMixer);
  Add(rows, "Decks", kDecks);
  Add(rows, "Microphone", kMicrophone);
  Add(rows, "Preferences", kPreferences);
  Add(rows, "Devices", kDevices);
  Add(rows, "Speakers", kSpeakers);
  Add(rows, "Speakerchoice", kSpeakerChoice);
  Add(rows, "Setup", kSetup);
  Add(rows, "Tags", kTags);
  rows.push_back({kApplication, "Recording", "Folder", "\\Recordings", "folder that is recorded to",
                  BelowProgramFolder});
  Add(rows, "Recording", kRecording);
  Add(rows, "Skin", kSkin);
  Add(rows, "CompactDecks", kCompactDecks);
  Add(rows, "Visualisation", kVisualisation);
  Add(rows, "Channels", kChannels);
}

void AddDecks(Rows& rows) {
  for (const std::string_view section : {"Player1", "Player2"}) Add(rows, section, kPlayer);
  for (const std::string_view section : {"Eq1", "Eq2"}) Add(rows, section, kEqualiser);
  rows.push_back({kPresetApplication, "EQ", "Preset1", "", "equaliser preset chosen last for bank 1"});
  rows.push_back({kPresetApplication, "EQ", "Preset2", "", "equaliser preset chosen last for bank 2"});
}

void AddKaraokeAndLights(Rows& rows) {
  Add(rows, "Karaoke", kKaraoke);
  rows.push_back({kApplication, "Karaoke", "BouncingBall", "\\smile.ICO", "picture of the bouncing ball",
                  SettingKey::Fallback::BelowProgramFolder});
  Add(rows, "Lamps", kLamps);
  Add(rows, "Effects", kEffects);
  for (const std::string_view section : {"Banks", "BanksDAC"}) Add(rows, section, kBanks);
  for (const std::string_view section : {"IOLO", "DACLO", "Mono", "Stereo"}) Add(rows, section, kTimer);
  AddOutputs(rows, "IOLO", "55", "level at which this output lights, 0 to 100");
  AddOutputs(rows, "DACLO", "255", "full level of this output in light-organ mode, 0 to 255");
  AddOutputs(rows, "CONSTANTIO", "0", "this output is lit in constant mode");
  AddOutputs(rows, "CONSTANTDAC", "0", "value of this output in constant mode");
}

}  // namespace

std::span<const SettingKey> SettingsVocabulary() {
  static const Rows rows = [] {
    Rows all;
    AddProgram(all);
    AddDecks(all);
    AddKaraokeAndLights(all);
    return all;
  }();
  return rows;
}

const SettingKey* FindSetting(std::string_view section, std::string_view key) {
  const auto rows = SettingsVocabulary();
  const auto found = std::find_if(rows.begin(), rows.end(), [&](const SettingKey& row) {
    return row.section == section && row.key == key;
  });
  return found == rows.end() ? nullptr : &*found;
}

}  // namespace support
