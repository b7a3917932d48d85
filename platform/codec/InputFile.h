// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "platform/codec/Ffmpeg.h"
#include "platform/files/PlainFile.h"
#include "support/Result.h"

namespace platform::codec {

/// A plain file as the demuxers read it.
///
/// The file is opened here and not by the library, so that a name is only ever a name: "http:x.mp3" is a
/// file, and nothing in a file makes the program open another one. Threads: one at a time; blocks on the
/// disk.
class InputFile {
 public:
  static support::Result<std::unique_ptr<InputFile>> Open(const std::string& path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  [[nodiscard]] AVIOContext* Context() { return context_; }
  /// The system failed to give bytes that the file has (a stick was pulled, a disk is broken).
  [[nodiscard]] bool Failed() const { return failed_; }

 private:
  explicit InputFile(files::PlainFile file);
  static int ReadBytes(void* self, std::uint8_t* buffer, int wanted);
  static std::int64_t Seek(void* self, std::int64_t offset, int whence);

  files::PlainFile file_;
  bool failed_ = false;
  AVIOContext* context_ = nullptr;
};

}  // namespace platform::codec
