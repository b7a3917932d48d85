// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/InputFile.h"

#include <cerrno>
#include <utility>

#include "support/Sentences.h"

namespace platform::codec {
namespace {

constexpr int kBufferBytes = 64 * 1024;

}  // namespace

support::Result<std::unique_ptr<InputFile>> InputFile::Open(const std::string& path) {
  auto opened = archive::OpenSoundFile(path);
  if (!opened) return opened.Failure();
  std::unique_ptr<InputFile> input(new InputFile(std::move(opened).Value()));
  if (input->context_ == nullptr) {
    return support::Failed(support::ErrorCode::Unavailable, support::Sentence::NoMemoryToOpen,
                           {files::LastPart(path)});
  }
  return input;
}

InputFile::InputFile(archive::SoundFile sound) : sound_(std::move(sound)) {
  auto* buffer = static_cast<unsigned char*>(av_malloc(kBufferBytes));
  if (buffer == nullptr) return;
  context_ = avio_alloc_context(buffer, kBufferBytes, 0, this, &ReadBytes, nullptr, &Seek);
  if (context_ == nullptr) av_free(buffer);
}

InputFile::~InputFile() {
  if (context_ != nullptr) av_freep(&context_->buffer);
  avio_context_free(&context_);
}

int InputFile::ReadBytes(void* self, std::uint8_t* buffer, int wanted) {
  auto& input = *static_cast<InputFile*>(self);
  const std::size_t got =
      std::fread(buffer, 1, static_cast<std::size_t>(wanted), input.sound_.file.file.get());
  if (got > 0) return static_cast<int>(got);
  if (std::ferror(input.sound_.file.file.get()) == 0) return AVERROR_EOF;
  input.failed_ = true;
  return AVERROR(EIO);
}

std::int64_t InputFile::Seek(void* self, std::int64_t offset, int whence) {
  auto& input = *static_cast<InputFile*>(self);
  if ((whence & AVSEEK_SIZE) != 0) return input.sound_.file.size;
  if (fseeko(input.sound_.file.file.get(), offset, whence & ~AVSEEK_FORCE) != 0) return AVERROR(EINVAL);
  return ftello(input.sound_.file.file.get());
}

}  // namespace platform::codec
