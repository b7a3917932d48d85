// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/ShowFile.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "dmx/DataFile.h"
#include "dmx/LineReader.h"
#include "support/Text.h"

namespace dmx {
namespace {

using support::Sentence;

constexpr std::uintmax_t kLongestShowFile = 512 << 20;
constexpr int kLowest16 = std::numeric_limits<std::int16_t>::min();
constexpr int kHighest16 = std::numeric_limits<std::int16_t>::max();

std::int16_t To16(int value) {
  return static_cast<std::int16_t>(value);
}

std::int16_t Strict16(LineReader& lines, Sentence what, int lowest = kLowest16, int highest = kHighest16) {
  return To16(lines.Strict(what, lowest, highest).value_or(0));
}

std::int16_t Lenient16(LineReader& lines, Sentence what) {
  return To16(lines.Lenient(what, kLowest16, kHighest16).value_or(0));
}

/// The line of a boolean; numbers are false when they are 0.
bool Boolean(std::string_view line) {
  line = support::Trim(line);
  return support::EqualsIgnoringCase(line, "True") || support::LeadingInteger(line) != 0;
}

/// A number of at most four digits with CR LF behind it; nullptr for anything else. Looks at nine bytes.
const char* ShortNumber(const char* at, std::int16_t& value) {
  const bool negative = *at == '-';
  if (negative) ++at;
  int number = *at - '0';
  if (number < 0 || number > 9) return nullptr;
  ++at;
  for (int more = 0; more < 3; ++more, ++at) {
    const int digit = *at - '0';
    if (digit < 0 || digit > 9) break;
    number = number * 10 + digit;
  }
  if (at[0] != '\r' || at[1] != '\n') return nullptr;
  value = To16(negative ? -number : number);
  return at + 2;
}

/// Takes a record that stands there as this program writes it; else nothing is taken.
bool TakePlainRecord(LineReader& lines, Sliders& record) {
  constexpr std::size_t kLongest = 40;  // what is looked at below, and more
  constexpr std::string_view kTrue = "True\r\n";
  constexpr std::string_view kFalse = "False\r\n";
  const std::string_view rest = lines.Rest();
  if (rest.size() < kLongest) return false;
  Sliders plain;
  const char* at = ShortNumber(rest.data(), plain.ChannelValue);
  if (at == nullptr) return false;
  plain.Changed = std::memcmp(at, kTrue.data(), kTrue.size()) == 0;
  if (!plain.Changed && std::memcmp(at, kFalse.data(), kFalse.size()) != 0) return false;
  at = ShortNumber(at + (plain.Changed ? kTrue : kFalse).size(), plain.Dif);
  if (at == nullptr) return false;
  at = ShortNumber(at, plain.Prev);
  if (at == nullptr || at[0] != '\r' || at[1] != '\n') return false;
  constexpr int kLines = 5;
  lines.Take(static_cast<std::size_t>(at + 2 - rest.data()), kLines);
  record = plain;
  return true;
}

void ReadRecord(LineReader& lines, Sliders& record) {
  record.ChannelValue = Strict16(lines, Sentence::TheLevel);
  record.Changed = Boolean(lines.Line().value_or(""));
  record.Dif = Strict16(lines, Sentence::TheDifference);
  record.Prev = Strict16(lines, Sentence::ThePreviousLevel);
  lines.Line();
}

void BoundLevel(LineReader& lines, Sliders& record) {
  const int level = std::clamp<int>(record.ChannelValue, 0, kHighestLevel);
  if (level == record.ChannelValue) return;
  lines.NoteLevel(record.ChannelValue, level);
  record.ChannelValue = To16(level);
}

/// How many of the things that a count promises can be in the text at all.
std::size_t Believable(const LineReader& lines, int count, std::size_t fewest_bytes) {
  return std::min(static_cast<std::size_t>(count), lines.Left() / fewest_bytes + 1);
}

void ReadRecords(LineReader& lines, int count, SceneChannel& channels) {
  constexpr std::size_t kFewestBytes = 9;  // "0", "True", "0", "0" and nothing, with one byte a line end
  channels.Reserve(Believable(lines, count, kFewestBytes));
  for (int i = 0; i < count; ++i) {
    if (lines.AtEnd()) {
      lines.Line();  // notes that it is missing
      return;
    }
    Sliders& record = channels.Add();
    if (!TakePlainRecord(lines, record)) ReadRecord(lines, record);
    BoundLevel(lines, record);
  }
}

/// Calls read for each of the promised things while there is text.
template <typename Read>
void ForEach(LineReader& lines, int count, const Read& read) {
  for (int i = 0; i < count; ++i) {
    if (lines.AtEnd()) {
      lines.Line();
      return;
    }
    read();
  }
}

void ReadStep(LineReader& lines, SceneStep& step) {
  const int records = lines.Count(Sentence::TheChannelCount).value_or(0);
  lines.Text(step.FadeTime);
  lines.Text(step.WaitTime);
  ReadRecords(lines, records, step.SceneChannel);
}

void ReadScene(LineReader& lines, Scene& scene) {
  lines.Line();  // the number of scenes once more
  lines.Text(scene.SceneName);
  scene.Loops = Strict16(lines, Sentence::TheLoops);
  const int steps = lines.Count(Sentence::TheStepCount).value_or(0);
  ForEach(lines, steps, [&] { ReadStep(lines, scene.Steps.Add()); });
}

void ReadPatched(LineReader& lines, DMXfilename& fixture) {
  lines.Text(fixture.Filename);
  fixture.StartChannel = Lenient16(lines, Sentence::TheStartChannel);
  fixture.NumberOf = Lenient16(lines, Sentence::TheFixtureNumber);
}

void AppendRecord(std::string& text, const Sliders& record) {
  AppendLine(text, record.ChannelValue);
  text += record.Changed ? "True\r\n" : "False\r\n";
  AppendLine(text, record.Dif);
  AppendLine(text, record.Prev);
  text += "\r\n";
}

void AppendScene(std::string& text, const Scene& scene, int scenes) {
  AppendLine(text, scenes);
  AppendLine(text, scene.SceneName);
  AppendLine(text, scene.Loops);
  AppendLine(text, scene.Steps.count());
  for (const SceneStep& step : scene.Steps) {
    AppendLine(text, step.SceneChannel.count());
    AppendLine(text, step.FadeTime);
    AppendLine(text, step.WaitTime);
    for (const Sliders& record : step.SceneChannel) AppendRecord(text, record);
  }
}

void AppendPatched(std::string& text, const DMXfilename& fixture) {
  AppendLine(text, NameWithoutFolder(fixture.Filename));
  AppendLine(text, fixture.StartChannel);
  AppendLine(text, fixture.NumberOf);
}

/// Those that were set aside stand where they stood.
void AppendHead(std::string& text, const Show& show) {
  AppendLine(text, show.fixtures.count() + static_cast<int>(show.aside.size()));
  auto aside = show.aside.begin();
  int position = 0;
  for (const DMXfilename& fixture : show.fixtures) {
    for (; aside != show.aside.end() && aside->behind <= position; ++aside)
      AppendPatched(text, aside->fixture);
    AppendPatched(text, fixture);
    ++position;
  }
  for (; aside != show.aside.end(); ++aside) AppendPatched(text, aside->fixture);
  AppendLine(text, show.scenes.count());
}

}  // namespace

support::Result<ShowReading> ReadShow(std::string_view text, const support::Sentences& say) {
  if (text.empty()) return support::Failed(support::ErrorCode::Empty, Sentence::ShowFileEmpty);
  LineReader lines(text, say);
  ShowReading reading;
  Show& show = reading.show;
  const int fixtures = lines.Count(Sentence::TheFixtureCount).value_or(0);
  ForEach(lines, fixtures, [&] { ReadPatched(lines, show.fixtures.Add()); });
  const int scenes = lines.Count(Sentence::TheSceneCount).value_or(0);
  ForEach(lines, scenes, [&] { ReadScene(lines, show.scenes.Add()); });
  if (!lines.Failure().empty()) return support::Error{support::ErrorCode::Malformed, lines.Failure()};
  reading.ended_early = lines.EndedEarly();
  reading.notes = lines.notes.Sentences();
  return reading;
}

std::string ShowText(const Show& show) {
  std::string text;
  AppendHead(text, show);
  for (const Scene& scene : show.scenes) AppendScene(text, scene, show.scenes.count());
  return text;
}

support::Result<ShowReading> OpenShow(const std::filesystem::path& path, const support::Sentences& say) {
  const auto text = WholeDataFile(path, kLongestShowFile);
  if (!text) return text.Failure();
  return ReadShow(text.Value(), say);
}

support::Result<void> SaveShow(support::FileSaver& files, const std::filesystem::path& path,
                               const Show& show) {
  if (show.scenes.count() == 0) {
    return support::Error{support::ErrorCode::Empty, "You don't have any Scene"};
  }
  std::string piece;
  int next = 0;
  return files.SavePieces(path, [&]() -> std::string_view {
    piece.clear();
    if (next == 0) {
      AppendHead(piece, show);
    } else if (const Scene* scene = show.scenes.Item(next)) {
      AppendScene(piece, *scene, show.scenes.count());
    }
    ++next;
    return piece;
  });
}

}  // namespace dmx
