// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/PlainFile.h"

#include <sys/stat.h>

#include <cerrno>

#include "support/Sentences.h"
#include "support/Text.h"

namespace platform::files {
std::string LastPart(std::string_view path) {
  while (path.size() > 1 && (path.back() == '/' || path.back() == '\\')) path.remove_suffix(1);
  const std::size_t cut = path.find_last_of("/\\");
  return std::string(cut == std::string_view::npos || cut + 1 == path.size() ? path : path.substr(cut + 1));
}

std::string ExtensionOf(std::string_view path) {
  const std::string name = LastPart(path);
  const std::size_t dot = name.find_last_of('.');
  return dot == std::string::npos ? std::string() : support::ToUpper(std::string_view(name).substr(dot + 1));
}

support::Result<PlainFile> OpenPlainFile(const std::string& path) {
  using support::ErrorCode;
  using support::Failed;
  using support::Sentence;
  struct stat status {};
  // Looked at before it is opened: opening a pipe may wait, and opening a device may do something.
  const int failed = stat(path.c_str(), &status) == 0 ? 0 : errno;
  if (failed == ENOENT || failed == ENOTDIR) {
    return Failed(ErrorCode::NotFound, Sentence::FileMissing, {LastPart(path)});
  }
  if (failed == 0 && S_ISDIR(status.st_mode)) {
    return Failed(ErrorCode::Malformed, Sentence::FolderNotAudio, {LastPart(path)});
  }
  if (failed == 0 && !S_ISREG(status.st_mode)) {
    return Failed(ErrorCode::Malformed, Sentence::DeviceNotAudio, {LastPart(path)});
  }
  PlainFile opened;
  if (failed == 0) opened.file.reset(std::fopen(path.c_str(), "rbe"));
  if (opened.file == nullptr) {
    return Failed(ErrorCode::Unreadable, Sentence::AccessDenied, {LastPart(path)});
  }
  std::setvbuf(opened.file.get(), nullptr, _IONBF, 0);
  if (fstat(fileno(opened.file.get()), &status) != 0) {
    return Failed(ErrorCode::Unreadable, Sentence::FileUnreadable, {LastPart(path)});
  }
  opened.size = status.st_size;
  if (opened.size == 0) return Failed(ErrorCode::Empty, Sentence::FileEmpty, {LastPart(path)});
  return opened;
}

}  // namespace platform::files
