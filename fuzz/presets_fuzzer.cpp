// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <unistd.h>

#include "decks/EqPresets.h"

namespace {

/// Presets of a file that is read from a folder of this process's own.
class OneFile final : public support::FileSaver {
 public:
  OneFile() : folder(std::filesystem::temp_directory_path() / ("presets-" + std::to_string(getpid()))) {
    std::filesystem::create_directories(folder);
  }
  ~OneFile() override { std::filesystem::remove_all(folder); }
  support::Result<void> Save(const std::filesystem::path& path, std::string_view content) override {
    std::ofstream(path, std::ios::binary) << content;
    return {};
  }
  std::filesystem::path folder;
};

}  // namespace

/// Any bytes are a list of presets; one that is saved to it is there with its values, the others as before.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static OneFile disk;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (!disk.Save(disk.folder / "EQ.tlv", text)) return 0;
  decks::EqPresetFile file(disk, support::ProgramFolder(disk.folder));
  const auto before = file.Read();
  if (!before) abort();
  const decks::EqValues values{1, 2, 3, 4, 5, -6, 7, 8, 9, 10};
  if (!file.Save("A", values)) abort();
  const auto after = file.Read();
  if (!after) abort();
  bool there = false;
  std::size_t others = 0;
  for (const decks::EqPreset& preset : after.Value()) {
    if (preset.name != "A") ++others;
    if (preset.name == "A") there = decks::EqValuesOf(preset.value_line) == values;
  }
  if (!there) abort();
  std::size_t others_before = 0;
  for (const decks::EqPreset& preset : before.Value()) others_before += preset.name == "A" ? 0 : 1;
  if (others != others_before) abort();
  return 0;
}
