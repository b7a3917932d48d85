// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/AnalysisParts.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "catalogue/PackedBits.h"
#include "music/Cues.h"
#include "music/TrackForm.h"

namespace catalogue {
namespace {

constexpr int kVersionBits = 16;
constexpr int kCountBits = 32;
// Their own: what a hand did outlives a better finder. The first one did not tell where a point was put, the
// second knew no cues, the third no bars.
constexpr std::uint64_t kMarksVersion = 4, kMarksWithoutBar = 3, kMarksWithoutCues = 2,
                        kMarksWithoutPlaces = 1;
constexpr double kNanoseconds = 1e9;

void WriteVersion(BitWriter& out) {
  out.WriteBits(music::TrackAnalysis::kVersion, kVersionBits);
}

bool ReadVersion(BitReader& in) {
  return in.ReadBits(kVersionBits) == music::TrackAnalysis::kVersion && in.Good();
}

/// Nothing stands behind what was read but the bits that fill the last byte.
bool WasAll(const BitReader& in) {
  return in.Good() && in.BitsLeft() < 8;
}

/// The columns' values as five runs; each value as what it differs from the one that it is expected to be.
std::vector<int> Differences(const std::vector<music::WaveColumn>& columns) {
  std::vector<int> differences;
  differences.reserve(columns.size() * 5);
  const auto run = [&](auto field) {
    int before = 0;
    for (const music::WaveColumn& column : columns) {
      differences.push_back(column.*field - before);
      before = column.*field;
    }
  };
  run(&music::WaveColumn::highest);
  for (const music::WaveColumn& column : columns) differences.push_back(column.lowest + column.highest);
  run(&music::WaveColumn::low);
  run(&music::WaveColumn::mid);
  run(&music::WaveColumn::high);
  return differences;
}

bool Restore(const std::vector<int>& differences, std::vector<music::WaveColumn>& columns) {
  bool good = differences.size() == columns.size() * 5;
  std::size_t next = 0;
  const auto run = [&](auto field, int lowest, int highest) {
    int value = 0;
    for (std::size_t i = 0; i < columns.size() && good; ++i) {
      value += std::clamp(differences[next++], -1000, 1000);
      good = value >= lowest && value <= highest;
      using Field = std::remove_reference_t<decltype(columns[i].*field)>;
      columns[i].*field = static_cast<Field>(value);
    }
  };
  run(&music::WaveColumn::highest, -128, 127);
  for (std::size_t i = 0; i < columns.size() && good; ++i) {
    const int lowest = std::clamp(differences[next++], -1000, 1000) - columns[i].highest;
    good = lowest >= -128 && lowest <= 127;
    columns[i].lowest = static_cast<std::int8_t>(lowest);
  }
  run(&music::WaveColumn::low, 0, 255);
  run(&music::WaveColumn::mid, 0, 255);
  run(&music::WaveColumn::high, 0, 255);
  return good;
}

}  // namespace

std::string PackWave(const music::Wave& wave) {
  BitWriter out;
  WriteVersion(out);
  out.WriteBits(wave.fine.size(), kCountBits);
  out.WriteSmall(Differences(wave.fine));
  return out.Take();
}

std::optional<music::Wave> UnpackWave(std::string_view bytes) {
  BitReader in(bytes);
  if (!ReadVersion(in)) return std::nullopt;
  const std::size_t count = in.ReadBits(kCountBits);
  if (count > in.BitsLeft()) return std::nullopt;
  std::vector<music::WaveColumn> fine(count);
  if (!Restore(in.ReadSmall(5 * count), fine) || !WasAll(in)) return std::nullopt;
  return music::Wave::Of(std::move(fine));
}

namespace {

void WriteGrid(BitWriter& out, const music::BeatGrid& grid) {
  out.WriteReal(grid.Nominal().value);
  out.WriteReal(grid.Confidence());
  out.WriteBits(grid.Beats().size(), kCountBits);
  std::int64_t before = 0;
  for (const music::Seconds beat : grid.Beats()) {
    const std::int64_t at = std::llround(beat.count() * kNanoseconds);
    out.WriteSigned(at - before);
    before = at;
  }
}

std::optional<music::BeatGrid> ReadGrid(BitReader& in) {
  constexpr std::int64_t kAYear = 365LL * 24 * 3600 * 1'000'000'000;
  const support::Bpm nominal{in.ReadReal()};
  const double confidence = in.ReadReal();
  const std::size_t count = in.ReadBits(kCountBits);
  if (count > in.BitsLeft() || !std::isfinite(nominal.value) || !std::isfinite(confidence))
    return std::nullopt;
  std::vector<music::Seconds> beats;
  beats.reserve(count);
  std::int64_t at = 0;
  for (std::size_t i = 0; i < count; ++i) {
    at = std::clamp(at + std::clamp(in.ReadSigned(), -kAYear, kAYear), -kAYear, kAYear);
    beats.emplace_back(static_cast<double>(at) / kNanoseconds);
  }
  music::BeatGrid grid(nominal, confidence, std::move(beats));
  if (!WasAll(in) || grid.Beats().size() != count) return std::nullopt;
  return grid;
}

}  // namespace

std::string PackGrid(const music::BeatGrid& grid) {
  BitWriter out;
  WriteVersion(out);
  WriteGrid(out, grid);
  return out.Take();
}

std::optional<music::BeatGrid> UnpackGrid(std::string_view bytes) {
  BitReader in(bytes);
  return ReadVersion(in) ? ReadGrid(in) : std::nullopt;
}

namespace {

void WriteCues(BitWriter& out, const music::Cues& cues) {
  out.WriteBits(cues.main ? 1 : 0, 1);
  if (cues.main) out.WriteSigned(cues.main->count());
  for (const auto& cue : cues.hot) {
    out.WriteBits(cue ? 1 : 0, 1);
    if (!cue) continue;
    out.WriteSigned(cue->place.count());
    out.WriteSigned(cue->length.count());
    out.WriteBits(static_cast<std::uint64_t>(cue->colour), 8);
    out.WriteBits(cue->name.size(), 8);
    for (const char c : cue->name) out.WriteBits(static_cast<unsigned char>(c), 8);
  }
}

music::Cues ReadCues(BitReader& in) {
  music::Cues cues;
  if (in.ReadBits(1) != 0) cues.main = std::chrono::microseconds(in.ReadSigned());
  for (auto& cue : cues.hot) {
    if (in.ReadBits(1) == 0) continue;
    cue.emplace();
    cue->place = std::chrono::microseconds(in.ReadSigned());
    cue->length = std::chrono::microseconds(in.ReadSigned());
    cue->colour = static_cast<int>(in.ReadBits(8));
    cue->name.resize(in.ReadBits(8));
    for (char& c : cue->name) c = static_cast<char>(in.ReadBits(8));
  }
  return music::Sound(std::move(cues));
}

}  // namespace

std::string PackMarks(const FileMarks& marks) {
  BitWriter out;
  out.WriteBits(kMarksVersion, kVersionBits);
  for (const PointBy by : {marks.start, marks.end}) out.WriteBits(static_cast<std::uint64_t>(by), 2);
  for (const auto& place : {marks.start_at, marks.end_at}) {
    out.WriteBits(place ? 1 : 0, 1);
    if (place) out.WriteSigned(place->count());
  }
  out.WriteBits(marks.cues == nullptr ? 0 : 1, 1);
  if (marks.cues != nullptr) WriteCues(out, music::Sound(*marks.cues));
  out.WriteBits(marks.bar ? 1 : 0, 1);
  if (marks.bar) out.WriteSigned(marks.bar->count());
  out.WriteBits(marks.grid == nullptr ? 0 : 1, 1);
  if (marks.grid != nullptr) WriteGrid(out, *marks.grid);
  return out.Take();
}

std::optional<FileMarks> UnpackMarks(std::string_view bytes) {
  BitReader in(bytes);
  const std::uint64_t version = in.ReadBits(kVersionBits);
  if (version < kMarksWithoutPlaces || version > kMarksVersion) return std::nullopt;
  FileMarks marks;
  for (PointBy* by : {&marks.start, &marks.end}) {
    const std::uint64_t number = in.ReadBits(2);
    if (number > static_cast<std::uint64_t>(PointBy::Hand)) return std::nullopt;
    *by = static_cast<PointBy>(number);
  }
  for (auto* place : {&marks.start_at, &marks.end_at}) {
    if (version == kMarksWithoutPlaces || in.ReadBits(1) == 0) continue;
    *place = std::chrono::microseconds(in.ReadSigned());
    if (**place < std::chrono::microseconds(0)) return std::nullopt;
  }
  if (version > kMarksWithoutCues && in.ReadBits(1) != 0) {
    marks.cues = std::make_shared<const music::Cues>(ReadCues(in));
    if (!in.Good()) return std::nullopt;
  }
  if (version > kMarksWithoutBar && in.ReadBits(1) != 0) {
    marks.bar = std::chrono::microseconds(in.ReadSigned());
    if (marks.bar->count() < 0 || !in.Good()) return std::nullopt;
  }
  if (in.ReadBits(1) == 0) return WasAll(in) ? std::optional(marks) : std::nullopt;
  auto grid = ReadGrid(in);
  if (!grid) return std::nullopt;
  marks.grid = std::make_shared<const music::BeatGrid>(std::move(*grid));
  return marks;
}

namespace {

constexpr std::uint64_t kFormVersion = 1;
constexpr int kKeyBits = 5, kKindBits = 3, kSectionBits = 16;
constexpr std::int64_t kLongestTrack = 365LL * 24 * 3600 * 1'000'000'000;

std::int64_t Nanoseconds(music::Seconds time) {
  return std::llround(time.count() * kNanoseconds);
}

music::Seconds ReadTime(BitReader& in) {
  return music::Seconds(static_cast<double>(std::clamp(in.ReadSigned(), -kLongestTrack, kLongestTrack)) /
                        kNanoseconds);
}

}  // namespace

std::string PackForm(const music::TrackForm& form) {
  BitWriter out;
  out.WriteBits(kFormVersion, kVersionBits);
  out.WriteBits(form.key ? static_cast<std::uint64_t>(NumberOf(*form.key) + 1) : 0, kKeyBits);
  out.WriteReal(form.key_confidence);
  out.WriteBits(form.bar ? 1 : 0, 1);
  if (form.bar) out.WriteSigned(Nanoseconds(*form.bar));
  out.WriteReal(form.bar_confidence);
  out.WriteBits(form.sections.size(), kSectionBits);
  for (const music::Section& section : form.sections) {
    out.WriteBits(static_cast<std::uint64_t>(section.kind), kKindBits);
    out.WriteSigned(Nanoseconds(section.end));
  }
  return out.Take();
}

std::optional<music::TrackForm> UnpackForm(std::string_view bytes) {
  BitReader in(bytes);
  if (in.ReadBits(kVersionBits) != kFormVersion) return std::nullopt;
  music::TrackForm form;
  const auto key = static_cast<int>(in.ReadBits(kKeyBits));
  form.key = music::KeyOfNumber(key - 1);
  form.key_confidence = in.ReadReal();
  if (in.ReadBits(1) != 0) form.bar = ReadTime(in);
  form.bar_confidence = in.ReadReal();
  bool good =
      key <= music::kMusicalKeys && std::isfinite(form.key_confidence) && std::isfinite(form.bar_confidence);
  music::Seconds start{0};
  for (std::size_t left = in.ReadBits(kSectionBits); left > 0 && good; --left) {
    const std::uint64_t kind = in.ReadBits(kKindBits);
    const music::Seconds end = ReadTime(in);
    good = in.Good() && kind < music::kSectionKinds && end >= start;
    if (good) form.sections.push_back({start, end, static_cast<music::SectionKind>(kind)});
    start = end;
  }
  return good && WasAll(in) ? std::optional(form) : std::nullopt;
}

std::string PackFacts(const music::TrackAnalysis& analysis) {
  BitWriter out;
  WriteVersion(out);
  out.WriteSigned(analysis.length.value);
  out.WriteSigned(analysis.sample_rate);
  out.WriteSigned(analysis.channels);
  out.WriteBits(analysis.loudness.valid ? 1 : 0, 1);
  out.WriteReal(static_cast<double>(analysis.loudness.integrated.value));
  out.WriteReal(static_cast<double>(analysis.loudness.true_peak.value));
  out.WriteBits(analysis.mix_points ? 1 : 0, 1);
  if (analysis.mix_points) {
    const music::MixPoints& points = analysis.mix_points->points;
    for (const auto& position : {points.start, points.end, points.length}) out.WriteSigned(position.value);
    out.WriteReal(points.start_seconds);
    out.WriteReal(points.end_seconds);
    out.WriteSigned(analysis.mix_points->gain_percent);
  }
  return out.Take();
}

std::optional<music::TrackAnalysis> UnpackFacts(std::string_view bytes) {
  BitReader in(bytes);
  if (!ReadVersion(in)) return std::nullopt;
  music::TrackAnalysis facts;
  facts.length.value = in.ReadSigned();
  facts.sample_rate = static_cast<int>(in.ReadSigned());
  facts.channels = static_cast<int>(in.ReadSigned());
  facts.loudness.valid = in.ReadBits(1) != 0;
  facts.loudness.integrated.value = static_cast<float>(in.ReadReal());
  facts.loudness.true_peak.value = static_cast<float>(in.ReadReal());
  bool good = std::isfinite(facts.loudness.integrated.value) && std::isfinite(facts.loudness.true_peak.value);
  if (in.ReadBits(1) != 0) {
    music::FoundMixPoints& found = facts.mix_points.emplace();
    for (auto* position : {&found.points.start, &found.points.end, &found.points.length}) {
      position->value = in.ReadSigned();
    }
    found.points.start_seconds = in.ReadReal();
    found.points.end_seconds = in.ReadReal();
    found.gain_percent = static_cast<int>(in.ReadSigned());
    good = good && std::isfinite(found.points.start_seconds) && std::isfinite(found.points.end_seconds);
  }
  if (!good || !WasAll(in)) return std::nullopt;
  return facts;
}

std::optional<music::TrackAnalysis> ReadAnalysis(SideStore& store, const std::string& path,
                                                 const FileStamp& stamp) {
  const auto facts = store.Read(path, stamp, SidePart::Facts);
  const auto wave = facts ? store.Read(path, stamp, SidePart::Wave) : std::nullopt;
  const auto grid = wave ? store.Read(path, stamp, SidePart::Grid) : std::nullopt;
  if (!grid) return std::nullopt;
  auto analysis = UnpackFacts(*facts);
  auto columns = UnpackWave(*wave);
  auto beats = UnpackGrid(*grid);
  if (!analysis || !columns || !beats) return std::nullopt;
  analysis->wave = std::make_shared<const music::Wave>(std::move(*columns));
  analysis->grid = std::make_shared<const music::BeatGrid>(std::move(*beats));
  const auto packed = store.Read(path, stamp, SidePart::Form);
  if (auto form = packed ? UnpackForm(*packed) : std::nullopt) {
    analysis->form = std::make_shared<const music::TrackForm>(std::move(*form));
  }
  return analysis;
}

support::Result<void> WriteAnalysis(SideStore& store, const std::string& path, const FileStamp& stamp,
                                    const music::TrackAnalysis& analysis) {
  auto written = store.Write(path, stamp, SidePart::Wave, PackWave(*analysis.wave));
  if (written) written = store.Write(path, stamp, SidePart::Grid, PackGrid(*analysis.grid));
  if (written && analysis.form != nullptr)
    written = store.Write(path, stamp, SidePart::Form, PackForm(*analysis.form));
  return written ? WriteFacts(store, path, stamp, analysis) : written;
}

support::Result<void> WriteFacts(SideStore& store, const std::string& path, const FileStamp& stamp,
                                 const music::TrackAnalysis& analysis) {
  return store.Write(path, stamp, SidePart::Facts, PackFacts(analysis));
}

namespace {

/// All are read before one is written: the first write drops what has another stamp.
support::Result<void> Copy(SideStore& store, const std::string& from, const FileStamp& old_stamp,
                           const std::string& to, const FileStamp& new_stamp) {
  std::vector<SideEntry> entries;
  for (const SidePart part : {SidePart::Content, SidePart::Wave, SidePart::Grid, SidePart::Facts,
                              SidePart::Marks, SidePart::DiscImage, SidePart::LyricCoding, SidePart::Form}) {
    if (auto bytes = store.Read(from, old_stamp, part)) {
      entries.push_back({to, new_stamp, part, std::move(*bytes)});
    }
  }
  return store.WriteAll(entries);
}

/// What was kept under the path goes under the sound, where nothing is yet.
void MoveUnder(SideStore& store, const std::string& path, const FileStamp& stamp, const SideKey& key) {
  for (const SidePart part :
       {SidePart::Wave, SidePart::Grid, SidePart::Facts, SidePart::Marks, SidePart::Form}) {
    if (store.Read(key.path, key.stamp, part)) continue;
    const auto bytes = store.Read(path, stamp, part);
    // What cannot be kept is found out again.
    if (bytes) static_cast<void>(store.Write(key.path, key.stamp, part, *bytes));
  }
}

void NoteFile(SideStore& store, const std::string& path, const FileStamp& stamp, const std::string& content) {
  const SideKey key{PathOfContent(content), {}};
  MoveUnder(store, path, stamp, key);
  static_cast<void>(store.Write(path, stamp, SidePart::Content, content));
  static_cast<void>(store.Write(key.path, key.stamp, SidePart::LastPath, path));
}

}  // namespace

std::optional<SideKey> KeyOf(SideStore& store, const std::string& path) {
  const auto stamp = store.StampOf(path);
  if (!stamp) return std::nullopt;
  if (const auto known = store.Read(path, *stamp, SidePart::Content)) {
    return SideKey{PathOfContent(*known), {}};
  }
  const auto content = store.ContentOf(path);
  if (!content || store.StampOf(path) != stamp) return SideKey{path, *stamp};
  NoteFile(store, path, *stamp, *content);
  return SideKey{PathOfContent(*content), {}};
}

std::optional<SideKey> KeptKeyOf(SideStore& store, const std::string& path) {
  const auto stamp = store.StampOf(path);
  if (!stamp) return std::nullopt;
  if (const auto known = store.Read(path, *stamp, SidePart::Content)) {
    return SideKey{PathOfContent(*known), {}};
  }
  const auto content = store.KeptContentOf(path);
  return content ? std::optional<SideKey>({PathOfContent(*content), {}}) : std::nullopt;
}

std::string LastPathOf(SideStore& store, const SideKey& key) {
  return store.Read(key.path, key.stamp, SidePart::LastPath).value_or("");
}

FileMarks ReadMarks(SideStore& store, const SideKey& key) {
  const auto bytes = store.Read(key.path, key.stamp, SidePart::Marks);
  return bytes ? UnpackMarks(*bytes).value_or(FileMarks{}) : FileMarks{};
}

std::optional<music::Seconds> BarOf(const music::TrackForm* form, const FileMarks& marks) {
  if (marks.bar) return *marks.bar;
  return form != nullptr ? form->bar : std::nullopt;
}

support::Result<void> CarryOver(SideStore& store, const std::string& path, const FileStamp& from,
                                const FileStamp& to) {
  if (from == to) return {};
  return Copy(store, path, from, path, to);
}

support::Result<void> CarryTo(SideStore& store, const std::string& from, const std::string& to) {
  const auto stamp = store.StampOf(to);
  if (!stamp) return {};
  return Copy(store, from, *stamp, to, *stamp);
}

}  // namespace catalogue
