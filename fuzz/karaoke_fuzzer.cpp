// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "karaoke/LyricShow.h"
#include "karaoke/SongBeats.h"
#include "karaoke/SongSound.h"
#include "karaoke/testing/RecordingSynthesiser.h"

namespace {

/// What is shown at any time stands in the text that is shown.
void CheckShow(const karaoke::LyricShow& show, std::int64_t at) {
  const karaoke::LyricFrame frame = show.At(karaoke::Microseconds(at));
  if (!frame.current) return;
  const karaoke::ShownLine& line = show.Lines()[*frame.current];
  if (frame.word_begin > frame.word_end || frame.word_end > line.text.size()) abort();
  if (frame.sweep < 0 || frame.sweep > 1) abort();
  if (frame.ball && frame.ball->to >= line.syllables.size()) abort();
  for (const karaoke::ShownSyllable& syllable : line.syllables) {
    if (syllable.begin > syllable.end || syllable.end > line.text.size()) abort();
  }
}

void CheckBeats(const karaoke::Song& song) {
  const music::BeatGrid beats = karaoke::BeatsOf(song);
  for (const music::Seconds beat : beats.Beats()) {
    const auto at = std::chrono::round<karaoke::Microseconds>(beat);
    if (at < karaoke::Microseconds(0) || at > song.length) abort();
  }
}

/// A synthesiser that hears and says nothing.
class Deaf final : public karaoke::SynthesiserFactory {
 public:
  std::vector<karaoke::Soundfont> Soundfonts() override { return {}; }
  support::Result<std::unique_ptr<karaoke::Synthesiser>> Make(const std::string&, int) override {
    return std::unique_ptr<karaoke::Synthesiser>(std::make_unique<karaoke::testing::RecordingSynthesiser>());
  }
};

}  // namespace

/// Any bytes are read, shown and played without leaving them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const karaoke::Song song = karaoke::ReadSong(bytes);
  for (const karaoke::Syllable& syllable : song.syllables) {
    if (syllable.at < karaoke::Microseconds(0) || syllable.line < 0) abort();
    if (static_cast<std::size_t>(syllable.line) >= song.lines.size()) abort();
  }
  CheckBeats(song);
  const karaoke::LyricShow show(karaoke::ReadLyric(bytes));
  const std::int64_t length = song.length.count();
  for (std::int64_t part = 0; part <= 16; ++part) CheckShow(show, length / 16 * part);
  for (const karaoke::ShownLine& line : show.Lines()) CheckShow(show, line.Begin().count());
  Deaf synthesisers;
  auto sound = karaoke::SongSound::Open(bytes, song.syllables, synthesisers, "", 8000);
  if (!sound) return 0;
  std::array<float, 640> left, right;
  sound.Value()->Wishes().semitones = 7;
  for (const std::int64_t place : {std::int64_t{0}, sound.Value()->Length() / 2}) {
    sound.Value()->Voice(0).Begin(place);
    sound.Value()->Voice(0).Make(left, right);
  }
  return 0;
}
