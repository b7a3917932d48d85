// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/PlainFile.h"

#include <filesystem>
#include <system_error>

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
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    return Failed(ErrorCode::NotFound, Sentence::FileMissing, {LastPart(path)});
  }
  if (status.type() == std::filesystem::file_type::directory) {
    return Failed(ErrorCode::Malformed, Sentence::FolderNotAudio, {LastPart(path)});
  }
  if (!error && status.type() != std::filesystem::file_type::regular) {
    return Failed(ErrorCode::Malformed, Sentence::DeviceNotAudio, {LastPart(path)});
  }
  PlainFile opened;
  if (!error) opened.file.reset(std::fopen(path.c_str(), "rb"));
  if (opened.file == nullptr) {
    return Failed(ErrorCode::Unreadable, Sentence::AccessDenied, {LastPart(path)});
  }
  std::setvbuf(opened.file.get(), nullptr, _IONBF, 0);
  opened.size = fseeko(opened.file.get(), 0, SEEK_END) == 0 ? ftello(opened.file.get()) : -1;
  std::rewind(opened.file.get());
  if (opened.size < 0) return Failed(ErrorCode::Unreadable, Sentence::FileUnreadable, {LastPart(path)});
  if (opened.size == 0) return Failed(ErrorCode::Empty, Sentence::FileEmpty, {LastPart(path)});
  return opened;
}

}  // namespace platform::files
