// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <sys/resource.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <utility>

#include "benchmarks/Bench.h"
#include "benchmarks/TempoSongs.h"
#include "decks/AnalysisPass.h"
#include "decks/MixPointScan.h"
#include "decks/StreamBuild.h"
#include "engine/SoundEngine.h"
#include "engine/VirtualOutputs.h"
#include "platform/analysis/EburLoudnessMeters.h"
#include "platform/analysis/QmBeatTrackers.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "support/testing/ManualExecutor.h"

namespace bench {
namespace {

constexpr int kAnalysisRuns = 3;
constexpr int kTrackSeconds = 240;

/// The engine with one file, on this thread alone.
struct OpenFile {
  explicit OpenFile(std::string file) : path(std::move(file)) {}
  /// Decoded to its end, and held.
  bool Decode() {
    held = decks::CreateDecoder(engine, path, decks::StreamTypeOf(path), 0, decks::kStreamDecode);
    while (engine.DecodeFurther(held)) {
    }
    return held != 0;
  }
  std::string path;
  engine::VirtualTime time;
  engine::VirtualOutputs outputs{time, {}};
  platform::codec::FfmpegDecoderFactory decoders;
  platform::stretch::LibraryStretcherFactory stretchers;
  support::testing::ManualExecutor workers;
  engine::SoundEngine engine{{outputs, decoders, stretchers, workers, time},
                             engine::SoundEngine::Feeding::ByHand};
  decks::StreamHandle held = 0;
};

class Unwatched final : public decks::ScanProgress {
 public:
  void Busy(double) override {}
};

double CpuOf(const std::function<void()>& work) {
  std::vector<double> runs;
  for (int run = 0; run < kAnalysisRuns; ++run) {
    const double begin = ProcessCpuSeconds();
    work();
    runs.push_back(ProcessCpuSeconds() - begin);
  }
  return Median(runs);
}

double ChildCpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// CPU seconds of a command; nothing when it fails.
std::optional<double> CpuOfCommand(const std::string& command) {
  std::vector<double> runs;
  for (int run = 0; run < kAnalysisRuns; ++run) {
    const double begin = ChildCpuSeconds();
    if (std::system((command + " >/dev/null 2>&1").c_str()) != 0) return std::nullopt;
    runs.push_back(ChildCpuSeconds() - begin);
  }
  return Median(runs);
}

std::string Ffmpeg(const std::string& path, const std::string& filter) {
  return "ffmpeg -nostdin -i '" + path + "' -af '" + filter + "' -f null -";
}

double DecodingCpu(const std::string& path) {
  return CpuOf([&] { OpenFile(path).Decode(); });
}

/// Of the file on a deck: it is decoded anyway.
double MixPointsCpu(OpenFile& file) {
  Unwatched nobody;
  return CpuOf([&] { decks::MixPointScan(file.engine, file.engine).Run({file.path}, nobody); });
}

/// The pass over a decoded file with these parts.
double PassCpu(OpenFile& file, const decks::AnalysisTools& tools) {
  return CpuOf([&] {
    decks::AnalysisPass pass(file.engine, file.engine, tools, file.path);
    while (pass.Step()) {
    }
    static_cast<void>(pass.Finish());
  });
}

double LoudnessAloneCpu(const std::string& path) {
  return CpuOf([&] {
    platform::codec::FfmpegDecoderFactory decoders;
    const auto decoder = decoders.Open(path, engine::DecoderKind::General);
    const auto format = decoder.Value()->Format();
    const auto meter = platform::analysis::EburLoudnessMeters().Make(format.sample_rate, format.channels);
    std::vector<std::int16_t> samples(16384 * static_cast<std::size_t>(format.channels));
    while (true) {
      const auto frames = decoder.Value()->Read(samples);
      if (!frames || frames.Value() == 0) break;
      meter->Add(std::span(samples).first(static_cast<std::size_t>(frames.Value() * format.channels)));
    }
    static_cast<void>(meter->Finish());
  });
}

platform::codec::testing::Sound FourMinutes() {
  const TempoSong song = MakeTempoSong(0);
  platform::codec::testing::Sound sound;
  sound.samples.reserve(kTrackSeconds * 88'200);
  while (sound.samples.size() < kTrackSeconds * 88'200) {
    sound.samples.insert(sound.samples.end(), song.samples.begin(), song.samples.end());
  }
  sound.samples.resize(kTrackSeconds * 88'200);
  return sound;
}

void AddMixPoints(std::vector<Figure>& figures, const std::string& name, const std::string& path) {
  OpenFile file(path);
  if (!file.Decode()) return;
  figures.push_back({"Both mix points of a " + name + " on a deck", "ms CPU", 1e3 * MixPointsCpu(file),
                     CpuOfCommand(Ffmpeg(path, "silencedetect=noise=-40dB:d=0.1")), "30 times faster"});
  if (figures.back().reference) *figures.back().reference *= 1e3;
}

/// What the scan adds to the decoding that a deck needs anyway.
void AddSharedMixPoints(std::vector<Figure>& figures, const std::string& name, const std::string& path) {
  OpenFile file(path);
  if (!file.Decode()) return;
  figures.push_back({"Both mix points of a " + name + " from the shared decode, beside decoding alone",
                     "ms CPU", 1e3 * MixPointsCpu(file), 1e3 * DecodingCpu(path), ""});
}

}  // namespace

std::vector<Figure> MeasureAnalysis() {
  const platform::codec::testing::MediaMaker media;
  const auto sound = FourMinutes();
  const std::string mp3 = media.Write("track.mp3", sound);
  const std::string flac = media.Write("track.flac", sound);
  std::vector<Figure> figures;
  AddMixPoints(figures, "4-minute mp3", mp3);
  AddMixPoints(figures, "4-minute flac", flac);
  for (const std::string extension : {"ogg", "wma", "mp3", "flac"}) {
    AddSharedMixPoints(figures, "4-minute " + extension, media.Write("shared." + extension, sound));
  }

  platform::analysis::EburLoudnessMeters meters;
  platform::analysis::QmBeatTrackers trackers;
  OpenFile file(mp3);
  if (!file.Decode()) return figures;
  const double plain = PassCpu(file, {});
  const double with_loudness = PassCpu(file, {&meters, nullptr});
  const double whole = PassCpu(file, {&meters, &trackers});
  const auto gain = CpuOfCommand("mp3gain /o /s s '" + mp3 + "'");
  const auto r128 = CpuOfCommand(Ffmpeg(mp3, "ebur128=peak=true"));
  const double alone = LoudnessAloneCpu(mp3);
  figures.push_back(
      {"Loudness and true peak, cost within the pass", "ms CPU", 1e3 * (with_loudness - plain), {}, ""});
  if (gain) {
    figures.push_back(
        {"Loudness alone, beside mp3gain", "ms CPU", 1e3 * alone, 1e3 * *gain, "1.5 times faster"});
  }
  if (r128) {
    figures.push_back({"Loudness alone, beside ffmpeg ebur128 with true peak", "ms CPU", 1e3 * alone,
                       1e3 * *r128, "1.5 times faster"});
  }
  figures.push_back({"Whole analysis of a decoded track", "x real time", kTrackSeconds / whole, {}, "100"});
  figures.push_back(
      {"Decoding and whole analysis", "x real time", kTrackSeconds / (whole + DecodingCpu(mp3)), {}, "100"});
  return figures;
}

}  // namespace bench
