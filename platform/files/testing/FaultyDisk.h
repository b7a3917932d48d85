// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <signal.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "platform/files/DiskCalls.h"

namespace platform::files::testing {

/// The real disk, on which a call of a test's choice fails or the program dies. Writes take at most a hundred
/// bytes a call, so that a file is written in several.
/// Threads: one.
class FaultyDisk final : public DiskCalls {
 public:
  /// The nth call from now, Remove left out, fails so.
  void FailOn(int nth, int reason) {
    fail_at_ = calls_ + nth;
    reason_ = reason;
  }
  /// The process ends, as by a power cut, instead of the nth call from now.
  void DieOn(int nth) { die_at_ = calls_ + nth; }
  /// How many calls there were, Remove left out.
  [[nodiscard]] int Calls() const { return calls_; }
  /// Their names in order, several of the same one after another once.
  [[nodiscard]] const std::vector<std::string>& Log() const { return log_; }

  int Create(const std::filesystem::path& path, mode_t mode) override {
    return Fails("Create") ? -1 : DiskCalls::Create(path, mode);
  }
  ssize_t Write(int file, const char* data, std::size_t size) override {
    constexpr std::size_t kMost = 100;
    return Fails("Write") ? -1 : DiskCalls::Write(file, data, std::min(size, kMost));
  }
  int CopyRights(int file, const struct stat& from) override {
    return Fails("CopyRights") ? -1 : DiskCalls::CopyRights(file, from);
  }
  int Sync(int file) override { return Fails("Sync") ? -1 : DiskCalls::Sync(file); }
  int Rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    return Fails("Rename") ? -1 : DiskCalls::Rename(from, to);
  }
  int SyncFolder(const std::filesystem::path& folder) override {
    return Fails("SyncFolder") ? -1 : DiskCalls::SyncFolder(folder);
  }

 private:
  bool Fails(const char* call) {
    ++calls_;
    if (log_.empty() || log_.back() != call) log_.emplace_back(call);
    if (calls_ == die_at_) raise(SIGKILL);
    if (calls_ != fail_at_) return false;
    errno = reason_;
    return true;
  }

  int calls_ = 0;
  int fail_at_ = 0;
  int die_at_ = 0;
  int reason_ = 0;
  std::vector<std::string> log_;
};

}  // namespace platform::files::testing
