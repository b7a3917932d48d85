// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/FormSongs.h"

#include <array>
#include <cmath>
#include <span>
#include <string_view>

#include "benchmarks/SongDice.h"
#include "benchmarks/TempoBand.h"

namespace bench {
namespace {

/// i intro, v verse, b break, u build, d drop, o outro, with its bars.
struct PartOfSong {
  char kind;
  int bars;
};
using Layout = std::array<PartOfSong, 9>;
constexpr std::array<Layout, 4> kLayouts{
    {{{{'i', 8}, {'v', 16}, {'b', 8}, {'u', 8}, {'d', 16}, {'b', 8}, {'u', 8}, {'d', 16}, {'o', 8}}},
     {{{'i', 16}, {'d', 16}, {'b', 16}, {'u', 8}, {'d', 32}, {'o', 16}, {'o', 0}, {'o', 0}, {'o', 0}}},
     {{{'i', 4}, {'v', 16}, {'u', 4}, {'d', 16}, {'v', 16}, {'b', 8}, {'d', 16}, {'o', 8}, {'o', 0}}},
     {{{'i', 8}, {'v', 8}, {'d', 8}, {'v', 16}, {'d', 8}, {'b', 4}, {'d', 16}, {'o', 4}, {'o', 0}}}}};

constexpr std::array<std::array<int, 4>, 5> kMajorChords{
    {{0, 3, 4, 0}, {0, 4, 5, 3}, {0, 5, 3, 4}, {5, 3, 0, 4}, {0, 3, 0, 4}}};
constexpr std::array<std::array<int, 4>, 5> kMinorChords{
    {{0, 5, 2, 6}, {0, 3, 4, 0}, {0, 6, 5, 4}, {0, 2, 6, 5}, {0, 5, 6, 0}}};
constexpr std::array<int, 7> kMajor{0, 2, 4, 5, 7, 9, 11}, kMinor{0, 2, 3, 5, 7, 8, 10};

constexpr double kMostSeconds = 280;

class FormWriter {
 public:
  FormWriter(std::uint64_t seed, FormKind kind)
      : dice_(seed * 0x9E3779B97F4A7C15U + 1234),
        plain_(kind == FormKind::Plain),
        early_(!plain_ && seed % 2 == 1 ? 0.5 : 0),
        style_(TempoStyles()[static_cast<std::size_t>(dice_.Below(3))]),
        layout_(kLayouts[static_cast<std::size_t>(dice_.Below(4))]),
        tonic_(dice_.Below(12)),
        minor_(dice_.Chance(0.5)),
        chords_((minor_ ? kMinorChords : kMajorChords)[static_cast<std::size_t>(dice_.Below(5))]),
        broken_(dice_.Chance(0.3)),
        bpm_(std::round(dice_.Real(98, 174) * 2) / 2),
        begin_(dice_.Real(0.02, 1.2)),
        band_(style_, static_cast<std::size_t>(kMostSeconds * tools::composer::kRate), dice_.Next()) {}

  FormSong Write() {
    FormSong song;
    song.tonic = tonic_, song.minor = minor_, song.bpm = bpm_;
    for (int& tone : tune_) tone = dice_.Below(7);
    int bar = 0;
    for (const PartOfSong& part : layout_) {
      if (part.bars > 0 && bar > 0) song.edges.push_back(At(bar, 0));
      for (int in_part = 0; in_part < part.bars; ++in_part) PlayBar(bar++, part, in_part);
    }
    for (int beat = 0; beat < 4 * bar; ++beat) song.beats.push_back(At(0, beat));
    song.samples = band_.Mix(ChooseMix(dice_, style_.duck));
    song.samples.resize(std::min(song.samples.size(), static_cast<std::size_t>(At(bar, 4) * 44'100) * 2));
    return song;
  }

 private:
  [[nodiscard]] double At(int bar, double beat) const { return begin_ + (4 * bar + beat) * 60 / bpm_; }
  [[nodiscard]] int Pitch(int degree) const {
    return tonic_ + 12 * (degree / 7) + (minor_ ? kMinor : kMajor)[static_cast<std::size_t>(degree % 7)];
  }
  /// In the octave from a note up.
  [[nodiscard]] static int Within(int lowest, int pitch) { return lowest + (pitch + 120 - lowest) % 12; }

  void PlayBar(int bar, const PartOfSong& part, int in_part) {
    const std::string_view has(&part.kind, 1);
    const auto in = [&](std::string_view kinds) { return kinds.find(has) != std::string_view::npos; };
    const bool last = in_part + 1 == part.bars;
    if (in("vdio") || (in("u") && 2 * in_part >= part.bars)) PlayKick(bar);
    if (in("vd")) {
      for (const int beat : {1, 3}) band_.Hit(Drum::Clap, At(bar, beat), 0.7);
    }
    if (in("vdio")) {
      for (int beat = 0; beat < 4; ++beat) band_.Hit(Drum::Closed, At(bar, beat + 0.5), 0.7);
    }
    if (in("u")) {
      const int strokes = 2 * in_part < part.bars ? 8 : 16;
      for (int i = 0; i < strokes; ++i)
        band_.Hit(Drum::Snare, At(bar, 4.0 * i / strokes), 0.5 * (in_part + 1) / part.bars);
    }
    if (plain_ && last && !in("b")) {
      for (int i = 0; i < 4; ++i) band_.Hit(Drum::Snare, At(bar, 3 + i / 4.0), 0.5);
    }
    if (plain_ && in_part == 0 && in("vd")) band_.Hit(Drum::Crash, At(bar, 0), 0.7);
    PlayTones(bar, in("bduv"), in("dv"), in("d"));
  }

  void PlayKick(int bar) {
    if (!broken_) {
      for (int beat = 0; beat < 4; ++beat) band_.Hit(Drum::Kick, At(bar, beat), 1);
      return;
    }
    for (const double beat : {0.0, 2.5}) band_.Hit(Drum::Kick, At(bar, beat), 1);
  }

  void PlayTones(int bar, bool pad, bool bass, bool lead) {
    const int degree = chords_[static_cast<std::size_t>(bar % 4)];
    const double beat = 60 / bpm_;
    const double early = bar > 0 ? early_ : 0;
    for (int voice = 0; pad && voice < 3; ++voice)
      band_.Note(Part::Pad, At(bar, -early), 3.9 * beat, Within(52, Pitch(degree + 2 * voice)), 1);
    for (int i = 0; bass && i < 8; ++i)
      band_.Note(Part::Bass, At(bar, i / 2.0 - early), 0.45 * beat, Within(30, Pitch(degree)), 1);
    for (int i = 0; lead && i < 8; ++i) {
      const int tone = tune_[static_cast<std::size_t>((i + bar % 2 * 3) % 8)];
      band_.Note(Part::Lead, At(bar, i / 2.0 - early), 0.4 * beat, Within(67, Pitch(tone)), 1);
    }
  }

  SongDice dice_;
  const bool plain_;
  const double early_;  ///< beats
  const TempoStyle& style_;
  const Layout& layout_;
  const int tonic_;
  const bool minor_;
  const std::array<int, 4> chords_;
  const bool broken_;
  const double bpm_, begin_;
  std::array<int, 8> tune_{};
  TempoBand band_;
};

}  // namespace

FormSong MakeFormSong(std::uint64_t seed, FormKind kind) {
  return FormWriter(seed, kind).Write();
}

}  // namespace bench
