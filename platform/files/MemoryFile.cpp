// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/MemoryFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace platform::files {

MemoryFile::MemoryFile() {
  const int handle = memfd_create("unpacked", MFD_CLOEXEC);
  if (handle < 0) return;
  file_.file.reset(fdopen(handle, "w+"));
  if (file_.file == nullptr) {
    close(handle);
  } else {
    std::setvbuf(file_.file.get(), nullptr, _IONBF, 0);
  }
}

bool MemoryFile::Append(std::span<const char> bytes) {
  whole_ = whole_ && file_.file != nullptr;
  while (whole_ && !bytes.empty()) {
    const ssize_t written = write(fileno(file_.file.get()), bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    whole_ = written > 0;
    if (!whole_) break;
    file_.size += written;
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return whole_;
}

std::optional<PlainFile> MemoryFile::Take() {
  if (!whole_ || file_.file == nullptr || fseeko(file_.file.get(), 0, SEEK_SET) != 0) return std::nullopt;
  return std::move(file_);
}

}  // namespace platform::files
