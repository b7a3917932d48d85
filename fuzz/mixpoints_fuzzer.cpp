// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "decks/MixPointScan.h"
#include "engine/SoundEngine.h"
#include "engine/VirtualOutputs.h"
#include "engine/testing/FakeStretchers.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "support/Executor.h"

namespace {

/// A file of this process's own, whose name tells which creator opens it.
std::string FileOf(const std::uint8_t* data, std::size_t size) {
  static constexpr const char* kEndings[] = {".mp3", ".flac", ".wma"};
  const std::filesystem::path folder = std::filesystem::temp_directory_path();
  const std::string name = "mixpoints-" + std::to_string(getpid()) + kEndings[size % 3];
  std::ofstream file(folder / name, std::ios::binary);
  file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  return (folder / name).string();
}

class Unwatched final : public decks::ScanProgress {
 public:
  void Busy(double) override {}
};

}  // namespace

/// Any bytes are refused with a sentence, or have mix points that lie in them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string path = FileOf(data, size);
  engine::VirtualTime time;
  engine::VirtualOutputs outputs(time, {});
  platform::codec::FfmpegDecoderFactory decoders;
  engine::testing::FakeStretchers stretchers;
  support::ThreadPool workers(1);
  engine::SoundEngine engine({outputs, decoders, stretchers, workers, time},
                             engine::SoundEngine::Feeding::ByHand);
  Unwatched unwatched;
  const auto found = decks::MixPointScan(engine, engine).Run({path, 0, 3}, unwatched);
  std::filesystem::remove(path);
  if (!found) return engine.LastError().text.empty() ? abort(), 1 : 0;
  const std::int64_t length = found->length.value;
  if (found->start.value < 0 || found->start.value > length || found->start.value % 2 != 0) abort();
  if (found->end.value < 0 || found->end.value > length || found->end.value % 2 != 0) abort();
  return 0;
}
