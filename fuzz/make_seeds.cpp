// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>

#include "app/files/IntakeOrder.h"
#include "app/resume/Journal.h"
#include "catalogue/FolderRecord.h"
#include "catalogue/IndexFile.h"
#include "catalogue/track_table.h"
#include "dmx/FixtureFile.h"
#include "dmx/LightGroups.h"
#include "dmx/ShowFile.h"
#include "karaoke/testing/DiscBytes.h"
#include "karaoke/testing/MidiBytes.h"
#include "platform/archive/testing/ZipMaker.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/tags/TagWriter.h"
#include "singers/RotationFile.h"

namespace {

using namespace std::chrono_literals;
using platform::codec::testing::MediaMaker;

/// A small file of every format with every kind of field, one without a tag, and one with a tag in front of
/// nothing.
void MakeTagSeeds(const std::filesystem::path& folder) {
  const MediaMaker media;
  catalogue::FileTags tags;
  tags.artist = "Artist \xC3\xA9";
  tags.title = "Title";
  tags.album = "Album";
  tags.genre = "Disco";
  tags.year = "1979";
  tags.bpm = "118";
  tags.text_block = "PEA\r\n-1.5\r\nSMP\r\n0.5";
  tags.user_items = {{"EMP", "60.000"}, {"PEA", "-2.0"}};
  for (const std::string_view extension : MediaMaker::kExtensions) {
    const std::string name = "." + std::string(extension);
    const auto tone = platform::codec::testing::Tone(60ms, {}, {22050, 1});
    const std::string bare = media.Write("bare" + name, tone, 32'000);
    const std::string tagged = media.Write("tagged" + name, tone, 32'000);
    if (!platform::tags::WriteTags(tagged, tags)) std::fprintf(stderr, "no tag in %s\n", tagged.c_str());
    for (const std::string& path : {bare, tagged}) {
      std::filesystem::copy_file(path, folder / std::filesystem::path(path).filename(),
                                 std::filesystem::copy_options::overwrite_existing);
    }
  }
}

void WriteSeed(const std::filesystem::path& path, std::string_view content) {
  std::ofstream(path, std::ios::binary) << content;
}

void MakeMixTagSeeds(const std::filesystem::path& folder) {
  WriteSeed(folder / "all", "bought in 1979\r\nPEA\r\n-1.5\r\nSMP\r\n0.5\r\nEMP\r\n60.000\r\nBPM\r\n118");
  WriteSeed(folder / "twice", "pea\n1\nPEA\n2\nSMP");
  catalogue::FolderRecordWriter record;
  record.Add({"a.mp3", {1000, -7}, true, {"Artist", "Title", "03:45"}});
  record.Add({"b.mp3", {0, 0}, false, {}});
  WriteSeed(folder / "record", record.Take());
}

void MakeGainSeeds(const std::filesystem::path& folder) {
  const std::string header = "File\tMP3 gain\tdB gain\tMax Amplitude\tMax global_gain\tMin global_gain\r\n";
  const std::string values = "\t-4\t-5.250000\t31000.500000\t178\t99\r\n";
  WriteSeed(folder / "track", header + "song.mp3" + values);
  WriteSeed(folder / "album", header + "song.mp3" + values + "\"Album\"" + values);
  WriteSeed(folder / "refusal", header + "song.mp3 is not an mp3 file\r\n");
}

void MakeMemorySeeds(const std::filesystem::path& folder) {
  const std::string numbers = "50\r\n55\r\n255\r\n1\r\n0\r\n";
  WriteSeed(folder / "two", "[K80 slow]\r\nBEAT\r\n" + numbers + "[K80]\r\nCONSTANT\r\n" + numbers);
  WriteSeed(folder / "loose", "x\r[K80]\r\r[K8]\ry\n[K80 b]]\n-1\n999");
}

void MakePresetSeeds(const std::filesystem::path& folder) {
  WriteSeed(folder / "two", "[A]\r\n0;1;2;3;4;5;-6;7;8;9;\r\n[B]\r\n12;12;12;12;12;12;12;12;12;12;\r\n");
  WriteSeed(folder / "twice", "[A]\n1;\n[A]\n2;\n[A]");
  WriteSeed(folder / "loose", "x\r[A]\r\r\r[]\r;;;\r");
}

/// An index of either kind as we write it, one with other line ends, and one with every kind of damage.
void MakeIndexSeeds(const std::filesystem::path& folder) {
  for (const auto columns : {catalogue::TrackColumns(), catalogue::KaraokeColumns()}) {
    catalogue::track_table table(columns);
    table.AddRow(std::vector<std::string_view>{"Artist", "Title", "03:45", "C:\\a\\b.mp3", "118.00"});
    table.AddRow(std::vector<std::string_view>{"tab\t", "two\r\nlines", "\\", "\xFF\xC3", ""});
    table.AddRow();
    WriteSeed(folder / (std::to_string(columns.size()) + "-columns"), catalogue::IndexText(table));
  }
  WriteSeed(folder / "line-ends", "1\t2\t3\t4\t5\t6\n1\t2\t3\t4\t5\t6\r1\t2\t3\t4\t5\t\\\\");
  WriteSeed(folder / "damaged", "a\tb\r\n1\t2\t3\t4\t5\t6\t7\r\n1\t2\t3\\x\t4\t5\t6\r\n\r\n\t\t\t\t\t\\");
}

/// A list as players write it, one with every line end and odd line, and searches.
void MakePlaylistSeeds(const std::filesystem::path& folder) {
  WriteSeed(folder / "usual",
            "#EXTM3U\r\n#EXTINF:225,Artist - Title\r\n/music/a.mp3\r\nC:\\Music\\b.ogg\r\n");
  WriteSeed(folder / "odd", "\xEF\xBB\xBF#EXTM3U\n\"q.mp3\"\r\rhttp://x/y.mp3\n\n#\n\xE9\xFF.mp3\t");
  WriteSeed(folder / "search",
            "artist:beyonc\xC3\xA9 -\"one more\" bpm:120-128 year:-1999\nBeyonce One more\n");
}

/// A song of each format, and one with every kind of event that only a bad writer makes.
void MakeKaraokeSeeds(const std::filesystem::path& folder) {
  using karaoke::testing::TrackBytes;
  const TrackBytes head = karaoke::testing::UsualHead().Tempo(480, 400'000).End();
  TrackBytes words;
  words.Name("Words")
      .Text(0, "@LENGL")
      .Text(0, "@TTitle")
      .Text(0, "@GPop")
      .Text(480, "\\Hel")
      .Text(240, "lo ");
  words.Text(240, "you").Text(4800, "/Bye").End();
  TrackBytes notes;
  notes.Event(0, {0xC0, 5}).Event(0, {0xB0, 7, 90}).Event(480, {0x90, 60, 100}).Event(240, {60, 0});
  notes.Event(0, {0xE0, 0, 70}).Event(0, {0x99, 36, 100}).Event(99, {0x89, 36, 0}).End(480);
  for (const int format : {0, 1, 2}) {
    WriteSeed(folder / ("format-" + std::to_string(format)),
              karaoke::testing::FileBytes({head, words, notes}, 480, format));
  }
  TrackBytes odd;
  odd.Event(0, {0x90, 60, 1})
      .Text(1, "x")
      .Event(1, {61, 1})
      .Event(1, {0xF2, 1, 2})
      .Event(0, {0xF0, 2, 0x41, 0xF7});
  WriteSeed(folder / "odd", karaoke::testing::FileBytes({head, words, odd}, 0xE728) + "Junk");
}

/// Words in every convention, and every fault that lost some.
void MakeLyricSeeds(const std::filesystem::path& folder) {
  using karaoke::testing::FileBytes;
  using karaoke::testing::TrackBytes;
  using karaoke::testing::Word32;
  const TrackBytes head = karaoke::testing::UsualHead().End();
  TrackBytes texts = TrackBytes().Name("Words").Text(0, "@TTitle").Text(480, "\\Hel").Text(99, "lo ");
  texts.Text(99, "you").Text(480, "/Bye").End();
  TrackBytes lyrics =
      TrackBytes().Meta(480, 5, "Hel").Meta(99, 5, "lo\r").Meta(99, 5, "\r\nyou").Meta(9, 5, "\n");
  lyrics.End();
  TrackBytes reserved =
      TrackBytes().Meta(0, 5, "{#Title=Star}").Meta(0, 5, "{@JP}").Meta(9, 5, "\x83\x5b[\x83\x5d]\\r");
  const TrackBytes cued = TrackBytes().Meta(0, 7, "$Lyrc:1:312:JP").Meta(480, 5, "/\x82\xa0").End();
  WriteSeed(folder / "texts", FileBytes({head, texts}));
  WriteSeed(folder / "lyric-events", FileBytes({head, lyrics}));
  WriteSeed(folder / "no-signature-or-tempo", FileBytes({texts}));
  WriteSeed(folder / "reserved-letters", FileBytes({head, reserved.End()}));
  WriteSeed(folder / "xf-chunk", FileBytes({head}) + "XFKM" +
                                     Word32(static_cast<std::uint32_t>(cued.Content().size())) +
                                     cued.Content());
  std::string swallows = FileBytes({head, texts, lyrics});
  swallows[FileBytes({}).size() + 6] = 0x10;
  WriteSeed(folder / "first-track-swallows-the-others", swallows);
  std::string cut = FileBytes({head, texts, lyrics});
  cut[FileBytes({head}).size() + 7] = 5;
  WriteSeed(folder / "length-too-short", cut);
  std::string endless;
  for (int i = 0; i < 40; ++i) endless += Word32(0x40FF0503).substr(0, 4) + "la ";
  WriteSeed(folder / "no-line-marks", FileBytes({head, TrackBytes().Raw(endless).End()}));
}

/// Every kind of packet; the same with the other bits set; one that ends early.
void MakeDiscSeeds(const std::filesystem::path& folder) {
  using karaoke::testing::DiscBytes;
  using Move = DiscBytes::Move;
  DiscBytes disc;
  disc.Colours(0, {0, 0xF00, 0x0F0, 0x00F, 0xFF0, 0xF0F, 0x0FF, 0xFFF}).Colours(8, {1, 2, 3, 4, 5, 6, 7, 8});
  disc.Clear(1).Clear(1, 1).Border(2).Draw(3, 4, 1, 5, {1, 2, 4, 8}).Xor(3, 4, 1, 5, {63, 2, 4, 8});
  disc.ScrollFilling(3, {Move::Forward, 2}, {Move::Back, 9}).ScrollRound({Move::Back, 0}, {Move::Forward, 0});
  disc.Transparent(3).Until(0.1).Draw(18, 50, 1, 5, {1, 2, 4, 8}).Packet(7, {1});
  const auto text = [](const DiscBytes& bytes) {
    return std::string(bytes.Content().begin(), bytes.Content().end());
  };
  WriteSeed(folder / "kinds", text(disc));
  WriteSeed(folder / "other-bits", text(DiscBytes(disc).FillOtherBits()));
  WriteSeed(folder / "cut", text(disc).substr(0, 100));
}

/// First the names and the value that the fuzzer sets (each ends with a backslash and a blank), then the
/// file.
void MakeSettingsSeeds(const std::filesystem::path& folder) {
  const std::string file =
      "\xEF\xBB\xBF; remark\r\n[TLVG/Mixer]\r\nMixTime=8\r\n???\r\n\r\n[TLVG/Setup]\r\n\\[odd=1\\\\2\n";
  WriteSeed(folder / "changed", "Mixer\\ MixTime\\ Setup\\ [odd\\ 9\\ " + file);
  WriteSeed(folder / "added", "Mixer\\ Volume\\ Other\\ ;key\\ [x]\\ " + file);
  WriteSeed(folder / "blanks", " \\  [key\\ Mixer\\ \t#\\ 9]\\ " + file);
  WriteSeed(folder / "empty", "Mixer\\ Volume\\ Mixer\\ Volume\\ 1\\ ");
}

/// A fixture with every kind of line, one with other line ends and no markers, and one that ends early.
void MakeFixtureSeeds(const std::filesystem::path& folder) {
  dmx::Fixture fixture{"Head", dmx::FixtureType::MovingHead, 270, 360, 15, {}};
  fixture.channels.Add({dmx::ChannelFunction::Dimmer, "Dimmer", {}});
  dmx::FixtureChannel& shutter = fixture.channels.Add({dmx::ChannelFunction::Shutter, "", {}});
  shutter.presets.Add({dmx::PresetEffect::Open, 0, "Open", 0, 9, "0", "", 2});
  shutter.presets.Add({dmx::PresetEffect::Strobe, 3, "Strobe", 10, 255, "2.5", "x", 2});
  const std::string text = dmx::FixtureText(fixture);
  WriteSeed(folder / "head", text);
  WriteSeed(folder / "cut", text.substr(0, text.size() / 2));
  WriteSeed(folder / "line-ends", "a\n3\r400\n-1\r\nx\n1\n\n4\r\r1\n\n9\n\n\n300\n+2\n\n\n");
}

/// Archives of every packing, one with much beside the song, and one whose directory lies.
void MakeZipSeeds(const std::filesystem::path& folder) {
  using namespace platform::archive::testing;
  const std::string sound(3000, 's'), picture(2400, '\x09');
  for (const Packing packing : {Packing::Deflated, Packing::Stored, Packing::Locked}) {
    WriteSeed(folder / ("packing-" + std::to_string(static_cast<int>(packing))),
              ZipBytes({{"a.mp3", sound, packing}, {"a.cdg", picture, packing}}));
  }
  const std::string much = ZipBytes({{"Caf\x82/2.CDG", picture},
                                     {"1.cdg", picture},
                                     {"1.ogg", sound},
                                     {"2.wav", sound},
                                     {"__MACOSX/._1.cdg", "x"},
                                     {"../1.mp3", sound},
                                     {"read me.txt", "text"}});
  WriteSeed(folder / "much", much);
  WriteSeed(folder / "lie", WithSize(much, "1.ogg", SizeField::Unpacked, 200'000'000));
}

/// A show with every kind of line, one that is spelt otherwise, and one whose counts promise too much.
void MakeShowSeeds(const std::filesystem::path& folder) {
  dmx::Show show;
  show.fixtures.Add({"C:\\DMXlibrary\\par.dmx", 5, 2, {}});
  dmx::Scene& scene = show.scenes.Add();
  scene.SceneName = "Walk-in";
  scene.Loops = 2;
  dmx::SceneStep& step = scene.Steps.Add({"00:01.5", "00:10.0", {}});
  step.SceneChannel.Add({255, -255, 0, true});
  step.SceneChannel.Add({0, 0, 255, false});
  scene.Steps.Add();
  WriteSeed(folder / "walk-in", dmx::ShowText(show));
  WriteSeed(folder / "spelt", "0\n1\n1\na\n+1\n1\n2\rx\ry\n 7\nTRUE\n-0003\n4\nz\n300\n-1\n0\n0\n");
  WriteSeed(folder / "promises", "0\r\n99999\r\n1\r\n\r\n-1\r\n99999999999\r\n3\r\n00:01.0\r\n");
}

/// A fixture with every kind of part, an older one, and one whose ranges are wrong.
void MakeQxfSeeds(const std::filesystem::path& folder) {
  const std::string head = "<FixtureDefinition><Manufacturer>A</Manufacturer><Model>B</Model>";
  WriteSeed(folder / "parts",
            head +
                "<Type>Scanner</Type><Channel Name=\"Pan\" Preset=\"PositionPan\"/>"
                "<Channel Name=\"C\"><Group Byte=\"0\">Colour</Group><Capability Min=\"0\" Max=\"255\" "
                "Preset=\"ColorDoubleMacro\" Res1=\"#ff0000\" Res2=\"#0000ff\">Two<Alias Mode=\"M\" "
                "Channel=\"C\" With=\"Pan\"/></Capability></Channel><Mode Name=\"M\"><Channel "
                "Number=\"1\">C</Channel><Channel Number=\"0\">Pan</Channel><Head/><Head/></Mode>"
                "<Physical><Focus PanMax=\"540\" TiltMax=\"270\"/></Physical></FixtureDefinition>");
  WriteSeed(
      folder / "wrong",
      head +
          "<Channel Name=\"R\"><Group Byte=\"1\">Intensity</Group><Colour>Red</Colour><Capability "
          "Min=\"9\" Max=\"-4\" Color=\"#1\"/><Capability Min=\"5\" Max=\"999\"/></Channel><Mode><Channel>"
          "R</Channel><Channel>S</Channel></Mode></FixtureDefinition>");
}

/// Pixels, wheels, fine bytes, switching channels, and a moved one.
void MakeOflSeeds(const std::filesystem::path& folder) {
  WriteSeed(folder / "moved", R"({"redirectTo": "a/b"})");
  WriteSeed(
      folder / "parts",
      R"seed({"name": "B", "categories": ["Scanner"], "matrix": {"pixelCount": [2, 2, 1], "pixelGroups": {"G": ["(1, 1)"]}},
"wheels": {"W": {"slots": [{"type": "Open"}, {"type": "Color", "colors": ["#ff0000"]}]}},
"availableChannels": {"Pan": {"fineChannelAliases": ["F"],
"capability": {"type": "Pan", "angleStart": "0deg", "angleEnd": "540deg"}},
"W": {"defaultValue": 9, "capabilities": [
{"dmxRange": [0, 9], "type": "WheelSlot", "slotNumber": 1.5, "switchChannels": {"S": "Pan"}},
{"dmxRange": [5, 255], "type": "ShutterStrobe", "shutterEffect": "Strobe"}]}},
"templateChannels": {"R $pixelKey": {"capability": {"type": "ColorIntensity", "color": "Red"}}},
"modes": [{"name": "M", "channels": ["Pan", "F", null, "W", "S", {"insert": "matrixChannels",
"repeatFor": "eachPixelYXZ", "channelOrder": "perChannel", "templateChannels": ["R $pixelKey", null]}]}]})seed");
}

/// An evening in full swing, one that has just begun, and one that says everything wrongly.
void MakeJournalSeeds(const std::filesystem::path& folder) {
  app::Journal journal;
  journal.number = 7;
  for (app::DeckInHand& deck : journal.decks) {
    deck.state = app::DeckInHand::State::Playing;
    deck.filename = "/music/100%\n.mp3";
    deck.position = 83'500ms;
    deck.marks.end = 90s;
    deck.equaliser = {-12, 0, 3.5F};
  }
  journal.mixer.mix.spent = {"a.mp3", "b.mp3"};
  journal.mixer.mix.leader = 1;
  journal.mixer.mix.next = 2;
  journal.song = {{"a.kar", "Anna", "Song"}, app::SongView::State::Paused, 10s, -3, 2.5, ""};
  journal.lights.levels = {255, 0, 7};
  journal.lights.show = "walk-in.shw";
  journal.suspects["a.mp3"] = {1, true};
  WriteSeed(folder / "full", app::JournalText(journal));
  WriteSeed(folder / "empty", app::JournalText({}));
  WriteSeed(
      folder / "wrong",
      "[deck1]\nstate=gone\nfile=%4\ntempo=1e99\nband9=nan\nposition=-1\n[lights]\nlevels=fg\nmaster=999\n"
      "[mixer]\nleader=2\nnext=2\n[suspect]\nfalls=5\nfile=\nfile=x\nfalls=-1\n");
}

void MakeRotationSeeds(const std::filesystem::path& folder) {
  singers::Evening evening;
  evening.date = "2026-11-22";
  for (const char* name : {"Anna", "Ben", "Cleo"}) {
    const singers::SingerId id = evening.rotation.Add(name);
    for (int key = -2; key < 1; ++key)
      evening.rotation.Ask(id, {"a.kar", "Artist", "Title", 200s, key, 2.5, 80, "Dora", 0});
  }
  evening.rotation.Begin();
  evening.pace.AddChangeOver(30s);
  evening.pace.AddTurn(true);
  WriteSeed(folder / "evening", singers::RotationText(evening));
  singers::SingerBook book;
  book.Note("Anna", {"a.kar", "Artist", "Title", 200s, 2, 0, 100, "", 0}, evening.date);
  WriteSeed(folder / "book", singers::SingerBookText(book));
}

void MakeLightGroupSeeds(const std::filesystem::path& folder) {
  WriteSeed(folder / "full", dmx::LightGroupsText({{"Front", {{"Par.dmx", 1}, {"Par.dmx", 8}}},
                                                   {"Heads", {{"Head.dmx", 41}}}}));
  WriteSeed(
      folder / "wrong",
      "[group]\nstart=5\nname=a\nfile=x\nfile=y\nstart=999\n[other]\nfile=z\nstart=1\n[group]\nname=\n");
}

void MakeOrderSeeds(const std::filesystem::path& folder) {
  using Source = app::IntakeOrder::Source;
  const auto order = [](app::IntakeOrder one) {
    return std::make_shared<const app::IntakeOrder>(std::move(one));
  };
  WriteSeed(folder / "full",
            app::OrdersText({order({.list = app::ListId::Catalogue, .paths = {"/music/a b.mp3", "/stick"}}),
                             order({app::ListId::Playlist3, Source::Opened, 7, {}, {"/lists/friday.m3u"}})}));
  WriteSeed(folder / "wrong",
            "\tx\r\n9 0 dropped\r\n\ty\r\n1 -1 opened\r\n0 0 dropped\r\n\tz\nw\r\n\t\r\n\tcut");
}

void MakeLibrarySeeds(const std::filesystem::path& folder) {
  WriteSeed(
      folder / "rekordbox",
      "<DJ_PLAYLISTS><COLLECTION><TRACK TrackID='1' Name='T' Location='file://localhost/C:/a%20b.mp3' "
      "Rating='204'><TEMPO Inizio='0.5' Bpm='120' Metro='4/4' Battito='2'/><POSITION_MARK Name='N' Type='4' "
      "Start='1' End='2' Num='0' Red='1' Green='2' Blue='3'/></TRACK></COLLECTION><PLAYLISTS><NODE Type='0'>"
      "<NODE Type='1' Name='L' KeyType='0'><TRACK Key='1'/></NODE></NODE></PLAYLISTS></DJ_PLAYLISTS>");
  WriteSeed(
      folder / "traktor",
      "<NML VERSION='19'><COLLECTION><ENTRY TITLE='T'><LOCATION VOLUME='C:' DIR='/:A/:' FILE='x.mp3'/><INFO "
      "RANKING='255'/><TEMPO BPM='120'/><CUE_V2 TYPE='4' START='-25' HOTCUE='0'><GRID BPM='125'/></CUE_V2>"
      "<CUE_V2 TYPE='5' START='100' LEN='200' HOTCUE='1'/></ENTRY></COLLECTION><PLAYLISTS><NODE NAME='L'>"
      "<PLAYLIST><ENTRY><PRIMARYKEY TYPE='TRACK' KEY='C:/:A/:x.mp3'/></ENTRY></PLAYLIST></NODE></PLAYLISTS>"
      "</NML>");
  WriteSeed(
      folder / "itunes",
      "<plist><dict><key>Tracks</key><dict><key>1</key><dict><key>Track ID</key><integer>1</integer>"
      "<key>Location</key><string>file:///a.mp3</string></dict></dict><key>Playlists</key><array><dict>"
      "<key>Name</key><string>L</string><key>Playlist Items</key><array><dict><key>Track ID</key><integer>1"
      "</integer></dict></array></dict></array></dict></plist>");
  WriteSeed(folder / "markers2", std::string_view("\x01\x01"
                                                  "AQFDVUUAAAAAAAAAAAAAAAAAzAAAAAAAAA\0",
                                                  37));
  WriteSeed(folder / "grid", std::string_view("\x01\0\0\0\0\x01\x3F\0\0\0\x42\xF0\0\0\0", 15));
}

}  // namespace

/// make_seeds KIND FOLDER
int main(int argc, char** argv) {
  const std::map<std::string, void (*)(const std::filesystem::path&)> kinds{
      {"tags", &MakeTagSeeds},
      {"mixtags", &MakeMixTagSeeds},
      {"index", &MakeIndexSeeds},
      {"settings", &MakeSettingsSeeds},
      {"mp3gain", &MakeGainSeeds},
      {"memories", &MakeMemorySeeds},
      {"presets", &MakePresetSeeds},
      {"fixtures", &MakeFixtureSeeds},
      {"shows", &MakeShowSeeds},
      {"karaoke", &MakeKaraokeSeeds},
      {"playlists", &MakePlaylistSeeds},
      {"zips", &MakeZipSeeds},
      {"discs", &MakeDiscSeeds},
      {"lyrics", &MakeLyricSeeds},
      {"journals", &MakeJournalSeeds},
      {"orders", &MakeOrderSeeds},
      {"rotations", &MakeRotationSeeds},
      {"lightgroups", &MakeLightGroupSeeds},
      {"qxf", &MakeQxfSeeds},
      {"ofl", &MakeOflSeeds},
      {"libraries", &MakeLibrarySeeds}};
  const auto kind = kinds.find(argc == 3 ? argv[1] : "");
  if (kind == kinds.end()) {
    std::fprintf(stderr, "Usage: make_seeds KIND FOLDER\n");
    return 2;
  }
  std::filesystem::create_directories(argv[2]);
  kind->second(argv[2]);
  return 0;
}
