// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/OutputFile.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/files/DiskFileSaver.h"

namespace platform::codec {

support::Result<std::unique_ptr<OutputFile>> OutputFile::Create(const std::string& path, Existing existing,
                                                                files::DiskCalls& calls) {
  constexpr mode_t kRights = 0666;
  const int file =
      existing == Existing::Replaced ? calls.Replace(path, kRights) : calls.Create(path, kRights);
  if (file < 0) return files::SaveError(path, errno);
  const auto folder = std::filesystem::path(path).parent_path();
  if (existing == Existing::Refused)
    calls.SyncFolder(folder.empty() ? "." : folder);  // it is found after a power cut
  return std::unique_ptr<OutputFile>(new OutputFile(path, file, calls));
}

OutputFile::~OutputFile() {
  close(file_);
}

bool OutputFile::Note(bool done) {
  if (!done && reason_ == 0) reason_ = errno == 0 ? EIO : errno;
  return done;
}

bool OutputFile::Write(std::span<const std::uint8_t> bytes) {
  if (!WriteAt(place_, bytes)) return false;
  place_ += static_cast<std::int64_t>(bytes.size());
  return true;
}

bool OutputFile::WriteAt(std::int64_t place, std::span<const std::uint8_t> bytes) {
  const std::int64_t whole = size_;
  while (!bytes.empty()) {
    const ssize_t written =
        calls_.WriteAt(file_, reinterpret_cast<const char*>(bytes.data()), bytes.size(), place);
    if (written < 0 && errno == EINTR) continue;
    if (!Note(written > 0)) {
      if (size_ > whole) {
        std::error_code ignored;  // the end stays ragged, which players bear
        std::filesystem::resize_file(path_, static_cast<std::uintmax_t>(whole), ignored);
        size_ = whole;
      }
      return false;
    }
    bytes = bytes.subspan(static_cast<std::size_t>(written));
    place += written;
    size_ = std::max(size_, place);
  }
  return true;
}

bool OutputFile::Sync() {
  // What has no disk behind it (a pipe, a device) need not reach one.
  return Note(calls_.SyncData(file_) == 0 || errno == EINVAL);
}

support::Error OutputFile::Failure() const {
  return files::SaveError(path_, reason_);
}

}  // namespace platform::codec
