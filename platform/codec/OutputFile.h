// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/files/DiskCalls.h"
#include "support/Result.h"

namespace platform::codec {

/// A sound file that grows, and whose head is put right on the way.
///
/// What cannot be written whole is not written at all, so that a full disk leaves no half packet. Each
/// write goes to the system at once: it outlives the program. Threads: one at a time; blocks on the disk.
class OutputFile {
 public:
  enum class Existing { Replaced, Refused };
  static support::Result<std::unique_ptr<OutputFile>> Create(const std::string& path, Existing existing,
                                                             files::DiskCalls& calls);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// At the present place, which moves on; false when it failed.
  bool Write(std::span<const std::uint8_t> bytes);
  /// Elsewhere; the present place stays.
  bool WriteAt(std::int64_t place, std::span<const std::uint8_t> bytes);
  bool Sync();
  void Seek(std::int64_t place) { place_ = place; }
  [[nodiscard]] std::int64_t Place() const { return place_; }
  [[nodiscard]] std::int64_t Size() const { return size_; }
  /// Of the first call that failed: errno; 0 when none did.
  [[nodiscard]] int Reason() const { return reason_; }
  /// A sentence for Reason().
  [[nodiscard]] support::Error Failure() const;

 private:
  OutputFile(std::string path, int file, files::DiskCalls& calls)
      : path_(std::move(path)), file_(file), calls_(calls) {}
  bool Note(bool done);

  const std::string path_;
  const int file_;
  files::DiskCalls& calls_;
  std::int64_t place_ = 0;
  std::int64_t size_ = 0;
  int reason_ = 0;
};

}  // namespace platform::codec
