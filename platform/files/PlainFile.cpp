// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/PlainFile.h"

#include <filesystem>
#include <system_error>

#include "support/Text.h"

namespace platform::files {
namespace {

support::Error Sentence(support::ErrorCode code, const std::string& path, const char* rest) {
  return {code, LastPart(path) + rest};
}

}  // namespace

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
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    return Sentence(ErrorCode::NotFound, path, " was not found; it may have been moved or deleted.");
  }
  if (status.type() == std::filesystem::file_type::directory) {
    return Sentence(ErrorCode::Malformed, path, " is a folder, not an audio file.");
  }
  if (!error && status.type() != std::filesystem::file_type::regular) {
    return Sentence(ErrorCode::Malformed, path, " is a device or a pipe, not an audio file.");
  }
  PlainFile opened;
  if (!error) opened.file.reset(std::fopen(path.c_str(), "rb"));
  if (opened.file == nullptr) {
    return Sentence(ErrorCode::Unreadable, path, " may not be read: the system denies access to it.");
  }
  std::setvbuf(opened.file.get(), nullptr, _IONBF, 0);
  opened.size = fseeko(opened.file.get(), 0, SEEK_END) == 0 ? ftello(opened.file.get()) : -1;
  std::rewind(opened.file.get());
  if (opened.size < 0) return Sentence(ErrorCode::Unreadable, path, " cannot be read.");
  if (opened.size == 0) return Sentence(ErrorCode::Empty, path, " is empty (0 bytes).");
  return opened;
}

}  // namespace platform::files
