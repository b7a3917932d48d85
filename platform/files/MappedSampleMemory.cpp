// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/MappedSampleMemory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <string>

namespace platform::files {
namespace {

/// The name is taken away again at once, where the file system cannot make a file without one.
int NamelessFile(const std::filesystem::path& folder) {
  const int file = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (file >= 0) return file;
  std::string name = (folder / "djtolven-XXXXXX").string();
  const int named = mkostemp(name.data(), O_CLOEXEC);
  if (named >= 0) unlink(name.c_str());
  return named;
}

class MappedBlock final : public engine::SampleBlock {
 public:
  MappedBlock(void* memory, std::size_t samples) : memory_(memory), samples_(samples) {}
  ~MappedBlock() override { munmap(memory_, Bytes()); }
  MappedBlock(const MappedBlock&) = delete;
  MappedBlock& operator=(const MappedBlock&) = delete;

  [[nodiscard]] std::span<std::int16_t> Samples() noexcept override {
    return {static_cast<std::int16_t*>(memory_), samples_};
  }
  void Warm() {
    madvise(memory_, Bytes(), MADV_WILLNEED);
    const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / sizeof(std::int16_t);
    const volatile std::int16_t* samples = static_cast<std::int16_t*>(memory_);
    for (std::size_t i = 0; i < samples_; i += page) static_cast<void>(samples[i]);
  }

 private:
  [[nodiscard]] std::size_t Bytes() const {
    return std::max<std::size_t>(1, samples_) * sizeof(std::int16_t);
  }

  void* memory_;
  std::size_t samples_;
};

}  // namespace

std::unique_ptr<engine::SampleBlock> MappedSampleMemory::Allocate(std::size_t samples) {
  if (samples > std::numeric_limits<std::int64_t>::max() / sizeof(std::int16_t)) return nullptr;
  const std::size_t bytes = std::max<std::size_t>(1, samples) * sizeof(std::int16_t);
  const int file = NamelessFile(folder_);
  if (file < 0) return nullptr;
  int reserved = EINTR;
  while (reserved == EINTR) reserved = posix_fallocate(file, 0, static_cast<off_t>(bytes));
  void* memory = MAP_FAILED;
  if (reserved == 0) memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  close(file);
  if (memory == MAP_FAILED) return nullptr;
  return std::make_unique<MappedBlock>(memory, samples);
}

void MappedSampleMemory::Warm(engine::SampleBlock& block) {
  static_cast<MappedBlock&>(block).Warm();
}

}  // namespace platform::files
