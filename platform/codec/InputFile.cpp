// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/InputFile.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace platform::codec {
namespace {

constexpr int kBufferBytes = 64 * 1024;

support::Error Sentence(support::ErrorCode code, const std::string& path, const char* rest) {
  return {code, LastPart(path) + rest};
}

}  // namespace

support::Result<std::unique_ptr<InputFile>> InputFile::Open(const std::string& path) {
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
  std::FILE* file = error ? nullptr : std::fopen(path.c_str(), "rb");
  if (file == nullptr) {
    return Sentence(ErrorCode::Unreadable, path, " may not be read: the system denies access to it.");
  }
  std::setvbuf(file, nullptr, _IONBF, 0);
  const std::int64_t size = fseeko(file, 0, SEEK_END) == 0 ? ftello(file) : -1;
  std::rewind(file);
  std::unique_ptr<InputFile> input(new InputFile(file, size));
  if (size < 0) return Sentence(ErrorCode::Unreadable, path, " cannot be read.");
  if (size == 0) return Sentence(ErrorCode::Empty, path, " is empty (0 bytes).");
  if (input->context_ == nullptr) return Sentence(ErrorCode::Unavailable, path, ": there is no memory left.");
  return input;
}

InputFile::InputFile(std::FILE* file, std::int64_t size) : file_(file), size_(size) {
  auto* buffer = static_cast<unsigned char*>(av_malloc(kBufferBytes));
  if (buffer == nullptr) return;
  context_ = avio_alloc_context(buffer, kBufferBytes, 0, this, &ReadBytes, nullptr, &Seek);
  if (context_ == nullptr) av_free(buffer);
}

InputFile::~InputFile() {
  if (context_ != nullptr) av_freep(&context_->buffer);
  avio_context_free(&context_);
  std::fclose(file_);
}

int InputFile::ReadBytes(void* self, std::uint8_t* buffer, int wanted) {
  auto& input = *static_cast<InputFile*>(self);
  const std::size_t got = std::fread(buffer, 1, static_cast<std::size_t>(wanted), input.file_);
  if (got > 0) return static_cast<int>(got);
  if (std::ferror(input.file_) == 0) return AVERROR_EOF;
  input.failed_ = true;
  return AVERROR(EIO);
}

std::int64_t InputFile::Seek(void* self, std::int64_t offset, int whence) {
  auto& input = *static_cast<InputFile*>(self);
  if ((whence & AVSEEK_SIZE) != 0) return input.size_;
  if (fseeko(input.file_, offset, whence & ~AVSEEK_FORCE) != 0) return AVERROR(EINVAL);
  return ftello(input.file_);
}

}  // namespace platform::codec
