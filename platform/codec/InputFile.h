// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "platform/archive/SoundFile.h"
#include "platform/codec/Ffmpeg.h"
#include "support/Result.h"

namespace platform::codec {

/// A sound file as the demuxers read it, also one that lies in an archive.
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
  /// What the sound is called, in its archive where it lies in one.
  [[nodiscard]] const std::string& Name() const { return sound_.name; }
  [[nodiscard]] bool IsPacked() const { return sound_.packed; }
  /// The system failed to give bytes that the file has (a stick was pulled, a disk is broken).
  [[nodiscard]] bool Failed() const { return failed_; }

 private:
  explicit InputFile(archive::SoundFile sound);
  static int ReadBytes(void* self, std::uint8_t* buffer, int wanted);
  static std::int64_t Seek(void* self, std::int64_t offset, int whence);

  archive::SoundFile sound_;
  bool failed_ = false;
  AVIOContext* context_ = nullptr;
};

}  // namespace platform::codec
